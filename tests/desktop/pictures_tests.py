#!/usr/bin/env python3
"""The pictures of the documentation can be made anew, at a scale at which nothing falls on whole pixels."""

import os
import subprocess
import sys

from desktop import main
from player import Player
from world import World

TOOL = os.path.join(os.path.dirname(__file__), '..', '..', 'tools', 'pictures.py')
SCALE = 1.5
WINDOW = (293, 277)
SIDE = 3  # windows in a row of the sheet, and rows


class Pictures(Player):
    def test_a_sheet_of_all_that_the_window_shows(self):
        subprocess.run([sys.executable, TOOL, World.program, self.folder, str(SCALE)], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        size = subprocess.run(['identify', '-format', '%w %h',
                               os.path.join(self.folder, f'screens-{SCALE}.png')], check=True,
                              stdout=subprocess.PIPE).stdout.split()
        for length, window in zip(size, WINDOW):
            self.assertGreater(int(length), SIDE * window * SCALE)


if __name__ == '__main__':
    main()
