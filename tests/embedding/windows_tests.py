#!/usr/bin/env python3
"""The example host with a window, on a display without a window manager.

    FILE WINDOW_HOST [unittest arguments]
"""

import os
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'desktop'))
from desktop import Display, OnDisplay  # noqa: E402
from world import PATIENCE, World  # noqa: E402


class Hosts(OnDisplay):
    window_host = ''  # set by main

    # A manager would take Alt+F4 for itself.
    @staticmethod
    def make_display():
        return Display(manager=None)

    def song(self, name):
        path = self.at(name)
        with open(path, 'wb'):
            return path

    def start_host(self, program, *files):
        os.makedirs(self.directory, exist_ok=True)
        host = self.start_lines(program, self.directory, *files)
        for file in files:
            host.expect(f'open {file}')
        return host

    def end_of_host(self, host):
        return host.process.wait(timeout=PATIENCE)

    def saved(self):
        return [os.fsdecode(path) for _, path in self.playlist()[1]]


class WindowHost(Hosts):
    def test_a_second_start_hands_its_file_over(self):
        one, two = self.song('one.mp3'), self.song('two.mp3')
        host = self.start_host(self.window_host, one)
        second = subprocess.run([self.window_host, self.directory, two], env=self.environment,
                                timeout=PATIENCE)
        self.assertEqual(second.returncode, 0)
        host.expect(f'open {two}')
        self.assertIsNone(host.process.poll())

    def test_exit_ends_it_and_the_list_is_saved(self):
        one = self.song('one.mp3')
        host = self.start_host(self.window_host, one)
        window = self.display.window('one.*')
        self.display.tool('windowfocus', '--sync', window, 'key', 'alt+F4')
        self.assertEqual(self.end_of_host(host), 0)
        self.assertEqual(self.saved(), [one])


if __name__ == '__main__':
    Hosts.window_host = sys.argv.pop(1)
    with tempfile.TemporaryDirectory(prefix='veldrin-shared-') as World.shared:
        unittest.main()
