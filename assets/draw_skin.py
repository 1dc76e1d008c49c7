#!/usr/bin/env python3
"""Draws the pictures of the skin Funky Blue into assets/funky_blue, or previews of them."""

import argparse
import sys
from pathlib import Path

from draw import bmp, buttons, check, layout, preview, quantise, sliders, small, transport, window
from draw.canvas import Canvas
from draw.looks import SLATE

FOLDER = Path(__file__).resolve().parent / 'funky_blue'
BLACK_AND_WHITE = ((0, 0, 0), (255, 255, 255))


def indexed_window():
    """The window's bytes, and the window as it looks once its palette is chosen."""
    rows = window.draw().rounded()
    palette, indices = quantise.adaptive(rows, 256, pinned=(SLATE,))
    shown = Canvas(*layout.WINDOW)
    shown.rows = [[palette[i] for i in row] for row in indices]
    return bmp.indexed(indices, palette, 8, compress=True), shown


def strips(shown):
    """Every strip of a button, drawn on the very pixels of the window that it lies on."""
    groups = ((layout.CAPTION_BUTTONS, buttons.icon_strip), (layout.TRANSPORT, transport.strip),
              (layout.WORD_BUTTONS, buttons.word_strip))
    for group, draw in groups:
        for number, (mask, left, top) in group.items():
            width, height = layout.PICTURES[mask][:2]
            yield number, draw(shown.crop(left, top, width, height), number)
    width, height = layout.PICTURES[366][:2]
    yield 365, buttons.word_strip(buttons.panel_ground(width, height), 365)
    yield 221, sliders.stick()


def masks():
    toggles = {mask for group in (layout.CAPTION_BUTTONS, layout.WORD_BUTTONS)
               for number, (mask, _, _) in group.items() if number in layout.TOGGLES}
    for number in (110, 191, 206, 211, 291, 366, 371):
        width, height = layout.PICTURES[number][:2]
        inset = layout.ICON_INSET if number == 110 else layout.WORD_INSET
        yield number, buttons.pill_mask(width, height, inset, number in toggles)
    yield 141, transport.mask(21)
    yield 222, sliders.stick_mask()


def pictures():
    """All pictures as (id, bytes of the file)."""
    window_bytes, shown = indexed_window()
    yield 100, window_bytes
    palette, rows = small.menu_tile()
    yield 102, bmp.indexed(rows, palette, 4)
    for number, draw in ((103, small.drive_icon), (104, small.folder_icon),
                         (105, small.music_icon)):
        yield number, bmp.true_colour(draw().rounded())
    pieces = list(zip((106, 107, 108), small.tip_pieces()))
    for number, canvas in pieces + list(strips(shown)):
        palette, rows = quantise.adaptive(canvas.rounded(), 256, pinned=(SLATE,))
        yield number, bmp.indexed(rows, palette, 8, compress=layout.PICTURES[number][3])
    for number, rows in masks():
        yield number, bmp.indexed(rows, BLACK_AND_WHITE, 1)
    tracks = ((220, sliders.horizontal(270)), (230, sliders.horizontal(85)),
              (280, sliders.vertical(181)))
    for number, canvas in tracks:
        rows = quantise.nearest(canvas.rounded(), sliders.PALETTE)
        yield number, bmp.indexed(rows, sliders.PALETTE, 4)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--preview', metavar='OUT.png', help='compose previews of the pictures')
    parser.add_argument('--scale', type=int, default=1, help='size of a pixel in the previews')
    parser.add_argument('--check', action='store_true', help='compare the pictures with the table')
    options = parser.parse_args()
    if options.preview:
        preview.write(FOLDER, Path(options.preview), options.scale)
    elif options.check:
        return check.run(FOLDER)
    else:
        FOLDER.mkdir(exist_ok=True)
        for number, data in pictures():
            (FOLDER / f'{number}.bmp').write_bytes(data)
    return 0


if __name__ == '__main__':
    sys.exit(main())
