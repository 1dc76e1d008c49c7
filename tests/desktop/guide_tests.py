#!/usr/bin/env python3
"""The user guide, as the finished program opens it: where it was built, where it is installed, and
where it is missing."""

import os
import select
import shutil
import subprocess
import time

from desktop import main
from player import AT_REST, Player
from world import PATIENCE, World

GUIDE = os.path.join('share', 'doc', 'veldrin', 'guide', 'index.html')


class Guide(Player):
    def setUp(self):
        super().setUp()
        self.catch_documents()
        self.addCleanup(setattr, World, 'program', World.program)

    def ask(self):
        self.open()
        self.key('F1')

    def opened_file(self):
        document = self.opened_document()
        self.assertTrue(document.startswith('file:///'), document)
        return document[len('file://'):]

    def read_complaint(self):
        said, end = b'', time.monotonic() + PATIENCE
        while not said.endswith(b'\n') and time.monotonic() < end:
            if select.select([self.player.stderr], [], [], PATIENCE)[0]:
                said += os.read(self.player.stderr.fileno(), 4096)
        return said.decode()

    def test_in_the_tree_it_is_that_of_the_sources(self):
        self.ask()
        with open(self.opened_file()) as file:
            self.assertIn('<title>Veldrin user guide</title>', file.read())

    def test_it_is_installed_with_the_program(self):
        prefix = os.path.join(self.folder, 'prefix')
        build = os.path.dirname(os.path.dirname(os.fsdecode(self.program)))
        subprocess.run(['cmake', '--install', build, '--prefix', prefix], check=True,
                       stdout=subprocess.DEVNULL)
        World.program = os.fsencode(os.path.join(prefix, 'bin', 'veldrin'))
        self.ask()
        self.assertEqual(self.opened_file(), os.path.join(prefix, GUIDE))
        self.assertTrue(os.path.isfile(os.path.join(prefix, GUIDE)))

    def test_a_missing_one_is_told(self):
        elsewhere = os.path.join(self.folder, 'elsewhere', 'bin')
        os.makedirs(elsewhere)
        World.program = os.fsencode(shutil.copy(os.fsdecode(self.program), elsewhere))
        self.ask()
        missing = os.path.join(self.folder, 'elsewhere', GUIDE)
        self.assertEqual(self.read_complaint(), f"veldrin: '{missing}' is not there\n")
        self.assertEqual(self.title(), AT_REST)
        self.assertFalse(os.path.exists(self.opened))


if __name__ == '__main__':
    main()
