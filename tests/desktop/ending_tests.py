#!/usr/bin/env python3
"""The end of the finished program, whatever it is in the middle of: in order by each way to end it,
and at once when the display goes away. The list is saved each time."""

import os
import signal

from desktop import Display, main, wait_for
from situations import ENDS, LOSSES, SITUATIONS, WAITING, Situations


class End(Situations):
    def try_all(self, pairs):
        for situation, end in pairs:
            with self.subTest(situation=situation, end=end):
                self.try_end(situation, end)
            self.clear()

    def test_in_order(self):
        ends = list(ENDS)
        self.try_all((situation, ends[number % len(ends)])
                     for number, situation in enumerate(SITUATIONS))

    def test_without_a_display(self):
        self.try_all((situation, loss) for number, situation in enumerate(SITUATIONS)
                     for loss in (LOSSES if situation in WAITING else [list(LOSSES)[number % 2]]))


class Server(Situations):
    def test_the_window_server_ends(self):
        shared, self.display = self.display, Display()
        self.addCleanup(self.display.end)
        self.environment['DISPLAY'] = self.display.name
        self.begin()
        self.display.server.kill()
        self.display = shared
        self.assertEqual(self.end_of(self.player), 1)
        self.assertEqual(self.player.complaints, b'veldrin: the display has gone\n')
        self.assert_nothing_lost()

    def test_an_output_file_is_whole(self):
        output = os.path.join(self.folder, 'out.wav')
        self.open('--output', 'file:' + output, self.song)
        wait_for(lambda: os.path.getsize(output) > 100, 'sound in it')
        LOSSES['cut off'](self)
        self.assertEqual(self.end_of(self.player), 1)
        with open(output, 'rb') as file:
            data = file.read()
        self.assertEqual(int.from_bytes(data[40:44], 'little'), len(data) - 44)

    def test_displays_that_are_none(self):
        for kind, fault in (('nonsense', 'no display is to be had by QT_QPA_PLATFORM=nonsense'),
                            ('nonsense;eglfs',
                             'no display is to be had by QT_QPA_PLATFORM=nonsense;eglfs'),
                            ('xcb', 'there is no display')):
            self.environment.pop('DISPLAY', None)
            self.environment['QT_QPA_PLATFORM'] = kind
            done = self.run_program('--output', 'null')
            self.assertEqual((done.returncode, done.stderr.decode()),
                             (1, f'veldrin: cannot show a window: {fault}; --no-window plays in the '
                                 'terminal\n'))

    def test_the_first_display_of_several_that_there_is(self):
        self.environment['QT_QPA_PLATFORM'] = 'nonsense;xcb'
        self.begin()
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(self.player), 0)


if __name__ == '__main__':
    main()
