#!/usr/bin/env python3
"""Draws the pictures of the skin Funky Blue into assets/funky_blue, or previews of them."""

import argparse
import sys
from concurrent.futures import ProcessPoolExecutor
from pathlib import Path

from draw import check, contrast, layout, pictures, preview

FOLDER = Path(__file__).resolve().parent / 'funky_blue'


def write():
    with ProcessPoolExecutor() as pool:
        coarsest_last = sorted(layout.DENSITIES, reverse=True)
        windows = {d: pool.submit(pictures.window_picture, d) for d in coarsest_last}
        written = {}
        for density, window in windows.items():
            written[100, density], shown = window.result()
            for number in layout.PICTURES:
                if number != 100:
                    ground = pictures.ground_of(number, shown)
                    written[number, density] = pool.submit(
                        pictures.picture, number, density, ground)
        for (number, density), data in written.items():
            path = layout.path(FOLDER, number, density)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(data if number == 100 else data.result())


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--preview', metavar='OUT.png', help='compose previews of the pictures')
    parser.add_argument('--scale', type=int, default=1, help='size of a pixel in the previews')
    parser.add_argument('--check', action='store_true', help='compare the pictures with the table')
    parser.add_argument('--contrast', action='store_true', help='tell how well texts stand out')
    options = parser.parse_args()
    if options.preview:
        preview.write(FOLDER, Path(options.preview), options.scale)
    elif options.check:
        return check.run(FOLDER)
    elif options.contrast:
        contrast.write(FOLDER.parent / 'skintable.txt')
    else:
        write()
    return 0


if __name__ == '__main__':
    sys.exit(main())
