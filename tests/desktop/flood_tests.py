#!/usr/bin/env python3
"""The finished program under a flood of keys."""

import ctypes
import os
import signal
import struct

from desktop import main, wait_for
from player import AT_REST, Player

IN_CLOSE_NOWRITE = 0x10
IN_OPEN = 0x20
EVENT = 'iIII'
PRESSES = 1000


class Openings:
    """How often a file has been opened, by whomever. Told of openings alone, one would hear of a row
    of them as of one."""

    def __init__(self, path):
        libc = ctypes.CDLL(None, use_errno=True)
        self.descriptor = libc.inotify_init1(os.O_NONBLOCK | os.O_CLOEXEC)
        assert libc.inotify_add_watch(self.descriptor, os.fsencode(path),
                                      IN_OPEN | IN_CLOSE_NOWRITE) > 0
        self.count = 0

    def so_far(self):
        try:
            while True:
                data = os.read(self.descriptor, 65536)
                self.count += sum(mask == IN_OPEN for _, mask, _, _ in
                                  struct.iter_unpack(EVENT, data))
        except BlockingIOError:
            return self.count


class Flood(Player):
    def test_of_a_key_that_opens_a_file(self):
        self.songs('a')
        self.open(self.at('a.wav'))
        wait_for(lambda: 'a.wav' in self.title(), 'the title')
        openings = Openings(self.at('a.wav'))
        self.addCleanup(os.close, openings.descriptor)
        self.key('x')
        wait_for(lambda: openings.so_far() > 0, 'an opening')
        # All of them wait for the player, however busy the machine is.
        self.player.send_signal(signal.SIGSTOP)
        self.key('--delay', '0', *['x'] * PRESSES, 'v')
        self.player.send_signal(signal.SIGCONT)
        self.wait_for_title(AT_REST)
        # Many presses were there while one file was being opened, and then counted as one.
        self.assertLess(openings.so_far(), PRESSES)


if __name__ == '__main__':
    main()
