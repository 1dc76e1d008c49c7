#!/usr/bin/env python3
"""The window while a file takes long to open, as on a share that has gone: it lives, keeps what is
pressed for later, and can be ended."""

import signal

from desktop import main, wait_for
from player import Player
from slow import Slow

NAMES = ('a.wav', 'slow 1.wav', 'b.wav', 'c.wav')
CLOCK = (126, 248, 72, 20)


class Opening(Slow, Player):
    def setUp(self):
        super().setUp()
        self.songs(*(name[:-4] for name in NAMES))
        self.save_list(*NAMES)
        self.open()
        self.key('x')
        self.wait_for_title('a.wav')
        self.key('b')
        self.wait_until_asked('slow 1.wav')

    def assert_list_is_whole(self):
        self.assertEqual(self.playlist()[0], 1)
        self.assertEqual(self.paths_saved(), [name.encode() for name in NAMES])

    def test_pictures_go_on_and_impatience_counts_once(self):
        before = self.shown(CLOCK).data
        wait_for(lambda: self.shown(CLOCK).data != before, 'time that passes')
        self.key('b', 'b', 'b', 'b', 'b')
        self.assertEqual(self.title(), 'a.wav')
        self.answer()
        self.wait_for_title('b.wav')
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(self.player), 0)
        self.assertEqual(self.playlist()[0], 2)

    def test_the_desktop_closes_it(self):
        self.display.run('wmctrl', '-ic', str(self.window))
        self.assertEqual(self.end_of(self.player), 0)
        self.assert_list_is_whole()

    def test_a_signal_ends_it(self):
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(self.player), 0)
        self.assert_list_is_whole()

    def test_another_start_ends_it(self):
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(self.player), 0)
        self.assert_list_is_whole()


if __name__ == '__main__':
    main()
