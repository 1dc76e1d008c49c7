#!/usr/bin/env python3
"""The example hosts with windows, on a display without a window manager.

    FILE WINDOW_HOST QT_HOST [unittest arguments]
"""

import os
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'desktop'))
from desktop import Display, OnDisplay, wait_for  # noqa: E402
from world import PATIENCE, World, shared_folder  # noqa: E402

WHITE = (255, 255, 255)


class Hosts(OnDisplay):
    window_host = qt_host = ''  # set by main

    # A manager would take Alt+F4 for itself.
    @staticmethod
    def make_display():
        return Display(manager=None)

    # In a program that has the toolkit already the driver keeps its hands off the environment: the
    # toolkit would start a bus of its own.
    def setUp(self):
        super().setUp()
        self.environment['DBUS_SESSION_BUS_ADDRESS'] = 'disabled:'

    def song(self, name):
        path = self.at(name)
        with open(path, 'wb'):
            return path

    def start_host(self, program, *files):
        os.makedirs(self.directory, exist_ok=True)
        host = self.start_lines(program, self.directory, *files, patience=0)
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
        window = self.display.window('.*one.mp3')
        self.display.tool('windowfocus', '--sync', window, 'key', 'alt+F4')
        self.assertEqual(self.end_of_host(host), 0)
        self.assertEqual(self.saved(), [one])


class QtHost(Hosts):
    def test_both_windows_live_and_the_programs_own_ends_it(self):
        one = self.song('one.mp3')
        host = self.start_host(self.qt_host, one)
        self.display.window('.*one.mp3')
        own = self.display.window('Own window')
        left, top, _, _ = self.display.geometry(own)
        self.display.tool('windowraise', own)
        wait_for(lambda: self.display.pixel(left + 3, top + 3) == WHITE,
                 'the own window on the screen')
        self.display.click(left + 3, top + 3)
        self.assertEqual(self.end_of_host(host), 0)
        self.assertEqual(self.saved(), [one])

    def test_the_components_window_ends_it_too(self):
        host = self.start_host(self.qt_host, self.song('one.mp3'))
        window = self.display.window('.*one.mp3')
        self.display.tool('windowfocus', '--sync', window, 'key', 'alt+F4')
        self.assertEqual(self.end_of_host(host), 0)


if __name__ == '__main__':
    Hosts.window_host, Hosts.qt_host = sys.argv[1:3]
    del sys.argv[1:3]
    with shared_folder():
        unittest.main()
