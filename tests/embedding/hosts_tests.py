#!/usr/bin/env python3
"""The hosts without a window: the one on the page, and the example.

    FILE SMALLEST_HOST HEADLESS_HOST [unittest arguments]
"""

import os
import subprocess
import sys
import tempfile
import unittest

PATIENCE = 60


class Hosts(unittest.TestCase):
    smallest_host = headless_host = ''  # set by main

    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix='veldrin-hosts-')
        self.addCleanup(scratch.cleanup)
        self.folder = scratch.name
        self.directory = os.path.join(self.folder, 'kept')
        os.mkdir(self.directory)

    def file(self, name):
        path = os.path.join(self.folder, name)
        with open(path, 'wb'):
            return path

    def run_host(self, *command):
        """The lines of both outputs."""
        done = subprocess.run(command, timeout=PATIENCE, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout.decode().splitlines(), done.stderr.decode().splitlines()

    def saved(self):
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), encoding='utf-8') as file:
            return file.read()

    def test_the_page_plays_a_file_and_ends(self):
        song = self.file('söng.mp3')
        output, errors = self.run_host(self.smallest_host, self.directory, song)
        self.assertEqual(output, [f'plays {song}', 'the end'])
        self.assertEqual(errors, [])
        self.assertIn(song, self.saved())

    def test_the_page_tells_of_a_directory_that_is_not_there(self):
        missing = os.path.join(self.folder, 'missing')
        song = self.file('song.mp3')
        output, errors = self.run_host(self.smallest_host, missing, song)
        self.assertEqual(output, [f'plays {song}', 'the end'])
        self.assertEqual(errors, [f'nothing will be kept in {missing}'])
        self.assertFalse(os.path.exists(missing))

    def test_what_cannot_be_played_is_not_waited_for(self):
        missing = os.path.join(self.folder, 'missing.mp3')
        self.assertEqual(self.run_host(self.smallest_host, self.directory, missing),
                         (['the end'], []))
        self.assertEqual(self.run_host(self.headless_host, self.directory, missing),
                         (['played for 0 s'], []))

    # Three seconds of the virtual clock for each.
    def test_the_example_plays_its_files_in_order(self):
        songs = [self.file(name) for name in ('b.mp3', 'a.mp3', 'notes.txt', 'c.mp3')]
        output, errors = self.run_host(self.headless_host, self.directory, *songs)
        played = [song for song in songs if song.endswith('.mp3')]
        self.assertEqual(output, [f'open {song}' for song in played] + ['played for 9 s'])
        self.assertEqual(errors, [])
        for song in played:
            self.assertIn(song, self.saved())
        self.assertNotIn('notes', self.saved())


if __name__ == '__main__':
    Hosts.smallest_host, Hosts.headless_host = sys.argv[1:3]
    del sys.argv[1:3]
    unittest.main()
