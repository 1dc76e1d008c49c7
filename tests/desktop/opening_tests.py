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

    def write_slow_list(self):
        with open(self.at('slow.m3u'), 'w') as file:
            file.write('b.wav\nc.wav\n')

    def test_a_playlist_that_hangs_holds_up_neither_start_nor_window(self):
        self.write_slow_list()
        self.open(self.at('a.wav'), self.at('slow.m3u'), self.at('b.wav'))
        self.wait_for_title(self.at('a.wav'))
        self.wait_until_asked('slow.m3u')
        before = self.shown(CLOCK).data
        wait_for(lambda: self.shown(CLOCK).data != before, 'time that passes')
        self.answer()
        wait_for(lambda: self.shows_row(3), 'a fourth row')
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(self.player), 0)
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav', b'b.wav'])

    def test_a_dropped_playlist_that_hangs_does_not_hold_up_the_window(self):
        self.write_slow_list()
        self.open(self.at('a.wav'))
        self.drop(self.row(3), self.at('slow.m3u'))
        self.wait_until_asked('slow.m3u')
        self.drop(self.row(3), self.at('a.wav'))
        before = self.shown(CLOCK).data
        wait_for(lambda: self.shown(CLOCK).data != before, 'time that passes')
        self.assertFalse(self.shows_row(1))
        self.answer()
        wait_for(lambda: self.shows_row(3), 'a fourth row')
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(self.player), 0)
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav', b'a.wav'])

    def test_an_end_does_not_wait_for_playlists_that_hang(self):
        self.write_slow_list()
        self.open(self.at('a.wav'), self.at('slow.m3u'))
        self.drop(self.row(3), self.at('slow.m3u'))
        self.wait_until_asked('slow.m3u')
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(self.player), 0)
        self.assertEqual(self.paths_saved(), [b'a.wav'])

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
