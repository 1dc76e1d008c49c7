#!/usr/bin/env python3
"""The window while a file takes long to open, as on a share that has gone: it lives, keeps what is
pressed for later, and ends when it is told to."""

import signal

from desktop import main, wait_for
from situations import LOSSES, Situations
from slow import Slow

NAMES = ('a.wav', 'slow 1.wav', 'b.wav', 'c.wav')
CLOCK = (126, 248, 72, 20)


class Opening(Slow, Situations):
    def setUp(self):
        super().setUp()
        self.songs(*(name[:-4] for name in NAMES))

    def begin(self):
        self.save_list(*NAMES)
        self.open()
        self.key('x')
        self.wait_for_title('a.wav')
        self.key('b')
        self.wait_until_asked('slow 1.wav')

    def assert_nothing_lost(self):
        self.assertEqual(self.playlist()[0], 1)
        self.assertEqual(self.paths_saved(), [name.encode() for name in NAMES])

    def test_pictures_go_on_and_impatience_counts_once(self):
        self.begin()
        before = self.shown(CLOCK).data
        wait_for(lambda: self.shown(CLOCK).data != before, 'time that passes')
        self.key('b', 'b', 'b', 'b', 'b')
        self.assertEqual(self.title(), 'a.wav')
        self.answer()
        self.wait_for_title('b.wav')
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(self.player), 0)
        self.assertEqual(self.playlist()[0], 2)

    def test_ends(self):
        for end in ('session', 'close', 'quit', 'SIGTERM', *LOSSES):
            with self.subTest(end):
                self.try_end('begins', end)
            self.clear()
            self.forget()

    def begins(self):
        """It has, already."""


if __name__ == '__main__':
    main()
