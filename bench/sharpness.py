#!/usr/bin/env python3
"""Measures how sharp the rows of the list are on the screen, at every factor, against the same words
as the toolkit by itself draws them at that size.

    sharpness.py BUILD [FACTOR...]

BUILD is a build folder with the benchmarks in it. The measure is the sum of the squared differences
between neighbouring pixels, across and down: of a picture that was enlarged or smoothed there is
less of it. Prints a table; nothing is asserted.
"""

import argparse
import os
import signal
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests',
                                'desktop'))
from desktop import Display, wait_for  # noqa: E402

FACTORS = (1, 1.25, 1.5, 1.75, 2, 2.5, 3, 4)
LIST = (6, 27)       # of the window, units
ROW = 15
# What is looked at: neither the playing row and the selected one nor the bar; units.
FIRST, LAST, WIDTH = 2, 12, 240
TITLES = ('Slow Morning', 'Ways of the Harbour', 'Evening Sun', 'Tin Roof, Light Rain',
          'The Ferry Home', 'Letters to Nobody', 'Paper Boats', 'Before the Snow',
          'Wolfgang Amadeus Mozart - Eine kleine', 'The quick brown fox jumps over it',
          'Johann Sebastian Bach - Toccata & Fuge', 'Morning Stairs, part 1042')


def sharpness(pixels, width):
    """Of rows of three bytes a pixel."""
    stride = 3 * width
    across = sum((pixels[i] - pixels[i + 3]) ** 2
                 for start in range(0, len(pixels), stride)
                 for i in range(start, start + stride - 3))
    down = sum((a - b) ** 2 for a, b in zip(pixels, pixels[stride:]))
    return across + down


def colours(pixels):
    """Of the ground, which is most, and of the letters, which differ most from it."""
    found = {}
    for i in range(0, len(pixels), 3):
        one = pixels[i:i + 3]
        found[one] = found.get(one, 0) + 1
    ground = max(found, key=found.get)
    ink = max(found, key=lambda one: sum((a - b) ** 2 for a, b in zip(one, ground)))
    return ink, ground


class Bench:
    def __init__(self, build, folder):
        self.build, self.folder = os.path.abspath(build), folder
        self.display = Display((1400, 1300))
        self.environment = {**self.display.environment, 'XDG_RUNTIME_DIR': folder,
                            'XDG_CACHE_HOME': os.path.join(folder, 'cache'),
                            'XDG_STATE_HOME': os.path.join(folder, 'state'),
                            'GST_REGISTRY': os.path.join(folder, 'registry')}
        with open(os.path.join(folder, 'Sarnel.Ambrisor.ini'), 'w') as file:
            file.write('[Memory]\r\nX=10\r\nY=10\r\n')
        lines = ['OMK v1.1', str(len(TITLES)), '0']
        for title in TITLES:
            lines += [title, f'/nowhere/{title}.mp3']
        with open(os.path.join(folder, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
            file.write('\r\n'.join(lines) + '\r\n')

    def shown(self, factor):
        """The rows' pixels on the screen, and how many there are in a row."""
        player = subprocess.Popen(
            [os.path.join(self.build, 'host', 'veldrin'), '--output', 'null', '--scale',
             str(factor), '--dir', self.folder], env=self.environment)
        try:
            window = wait_for(lambda: self.display.windows_of(player), 'the window')[0]
            left, top, _, _ = self.display.geometry(window)
            self.display.point_at(1390, 1290)
            part = (left + round(LIST[0] * factor), top + round((LIST[1] + FIRST * ROW) * factor),
                    round(WIDTH * factor), round((LAST - FIRST) * ROW * factor))
            former = None

            def settled():
                nonlocal former
                data = self.display.part(*part).data
                same = data == former and len(set(data)) > 8
                former = data
                return data if same else None
            return wait_for(settled, 'the rows'), part[2]
        finally:
            player.send_signal(signal.SIGTERM)
            player.wait()

    def alone(self, factor, ink, ground):
        """The same by the toolkit alone."""
        rows = [f'{number}. {title}' for number, title in enumerate(TITLES, 1)][FIRST:LAST]
        done = subprocess.run(
            [os.path.join(self.build, 'bench', 'toolkit_text'), str(factor), str(WIDTH),
             str((LAST - FIRST) * ROW), str(ROW), ink.hex(), ground.hex()],
            input='\n'.join(rows).encode(),
            stdout=subprocess.PIPE, env=self.environment, check=True)
        return done.stdout

    def table(self, factors):
        print('factor   on the screen       by itself    share')
        for factor in factors:
            pixels, width = self.shown(factor)
            ink, ground = colours(pixels)
            shown = sharpness(pixels, width)
            alone = sharpness(self.alone(factor, ink, ground), width)
            print(f'{factor:6}  {shown:14}  {alone:14}  {shown / alone:7.3f}')


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('build')
    parser.add_argument('factors', nargs='*', type=float, default=FACTORS)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix='veldrin-bench-') as folder:
        bench = Bench(options.build, folder)
        try:
            bench.table(options.factors)
        finally:
            bench.display.end()


if __name__ == '__main__':
    main()
