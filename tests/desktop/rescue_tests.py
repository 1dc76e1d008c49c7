#!/usr/bin/env python3
"""The finished program on a display, behind runs that did not end in order."""

import glob
import os

from desktop import main, wait_for
from player import AT_REST, Player


class Rescue(Player):
    def kill(self):
        self.player.kill()
        self.player.communicate()

    def complaints(self):
        """Ends the run in order; answers what it said."""
        self.player.terminate()
        _, errors = self.player.communicate()
        self.assertEqual(self.player.returncode, 0)
        return errors

    def copied_rows(self):
        copies = glob.glob(os.path.join(self.environment['XDG_STATE_HOME'], 'veldrin', '*.omk'))
        if not copies:
            return []
        with open(copies[0], 'rb') as file:
            return file.read().split(b'\r\n')[3:-1:2]

    def test_rows_of_a_killed_window_come_back(self):
        self.songs('a', 'b', 'c')
        self.open(self.music)
        self.wait_for_title('a.wav')
        self.key('End', 'Delete')
        wait_for(lambda: self.copied_rows() == [b'a.wav', b'b.wav'], 'the copy')
        self.kill()
        self.open()
        self.assertEqual(self.complaints(),
                         b'veldrin: the playlist is that of its rescue copy\n')
        self.assertEqual([title for title, _ in self.playlist()[1]], [b'a.wav', b'b.wav'])

    def test_after_three_starts_that_broke_off_nothing_is_played(self):
        self.songs('a')
        self.write_settings(PlayAtStartup='True')
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
            file.write(f'OMK v1.1\r\n 1 \r\n 0 \r\na.wav\r\n{self.at("a.wav")}\r\n')
        for _ in range(3):
            self.open()
            self.wait_for_title('a.wav')
            self.kill()
        self.open()
        self.assertEqual(self.title(), AT_REST)
        self.assertEqual(self.complaints(), b'veldrin: the last 3 starts broke off at once: '
                                            b'nothing is played at this one\n')
        self.open()
        self.wait_for_title('a.wav')


if __name__ == '__main__':
    main()
