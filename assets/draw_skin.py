#!/usr/bin/env python3
"""Draws a skin: its pictures and its rows, into a folder. Without arguments, the player's own."""

import argparse
import sys
from concurrent.futures import ProcessPoolExecutor
from pathlib import Path

from draw import check, contrast, layout, looks, pictures, preview, rows
from draw.skin import FIRST, Skin

OWN = Path(__file__).resolve().parent / 'funky_blue'
# The rows up to 15 are the head of the table of skins, and those up to 99 were never used.
BASES = range(FIRST, 2 ** 31 - 1000)


def write(skin, looks_file, densities):
    # The processes that draw do not share what this one knows, except on some systems.
    with ProcessPoolExecutor(initializer=looks.use, initargs=(looks_file,)) as pool:
        coarsest_last = sorted(densities, reverse=True)
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
            path = skin.path(number, density)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(data if number == 100 else data.result())
    rows.write(skin)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--looks', metavar='FILE', type=Path,
                        help='the colours, fonts and name; else looks.py in the folder')
    parser.add_argument('--base', type=int,
                        help='number of the skin\'s first row and picture; else that in the folder')
    parser.add_argument('--out', metavar='DIR', type=Path, default=OWN, help='the skin\'s folder')
    parser.add_argument('--plain', action='store_true',
                        help='draw no fine pictures: quicker, for trying colours')
    parser.add_argument('--preview', metavar='OUT.png', type=Path,
                        help='compose previews of the pictures in the folder')
    parser.add_argument('--scale', type=int, default=1, help='size of a pixel in the previews')
    parser.add_argument('--check', action='store_true',
                        help='say what is wrong with the rows and pictures in the folder')
    parser.add_argument('--contrast', action='store_true', help='tell how well texts stand out')
    options = parser.parse_args()
    options.looks = options.looks or options.out / 'looks.py'
    if not options.looks.is_file():
        parser.error(f'{options.looks}: no such file; --looks names the looks')
    if options.base is None:
        skin = Skin(options.out, None)
        options.base = rows.read(skin.rows())[0] if skin.rows().is_file() else None
    reads = options.preview or options.check or options.contrast
    if options.plain and not reads and Skin(options.out, None).densities() != [1]:
        parser.error(f'{options.out}: has fine pictures, which would be of other looks')
    if options.base is None or options.base not in BASES:
        parser.error(f'--base has to be told, from {BASES[0]} on')
    return options


def main():
    options = arguments()
    looks.use(options.looks)
    skin = Skin(options.out, options.base)
    if options.preview:
        preview.write(skin, options.preview, options.scale)
    elif options.check:
        return check.run(skin)
    elif options.contrast:
        contrast.write(skin)
    else:
        write(skin, options.looks, layout.DENSITIES[:1] if options.plain else layout.DENSITIES)
    return 0


if __name__ == '__main__':
    sys.exit(main())
