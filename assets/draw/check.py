"""Compares the written pictures with the table of their sizes and depths."""

from . import layout
from .bmp import Picture
from .looks import SLATE


def _faults(number, picture):
    width, height, bits, compressed = layout.PICTURES[number]
    found = (picture.width, picture.height, picture.bits, bool(picture.compression))
    if found != (width, height, bits, compressed):
        yield f'{found} instead of {(width, height, bits, compressed)}'
    if bits < 24 and len(picture.palette) != 1 << bits:
        yield f'{len(picture.palette)} palette entries'
    if bits == 1 and picture.palette != [(0, 0, 0), (255, 255, 255)]:
        yield 'a mask must be black and white'


def _flat(picture, left, top, width, height):
    return all(picture.rows[y][x] == SLATE
               for y in range(top, top + height) for x in range(left, left + width))


def run(folder):
    """0 when every picture is there and right, else 1, with a line for each fault."""
    faults, total = [], 0
    for number in layout.PICTURES:
        try:
            data = (folder / f'{number}.bmp').read_bytes()
            picture = Picture(data)
            total += len(data)
            faults += [f'{number}: {fault}' for fault in _faults(number, picture)]
            if number == 100:
                faults += [f'100: the rectangle {place} is not flat'
                           for place in (layout.TITLE, layout.LIST, layout.DISPLAY)
                           if not _flat(picture, *place)]
        except (OSError, ValueError) as error:
            faults.append(f'{number}: {error}')
    extra = {f.name for f in folder.iterdir()} - {f'{n}.bmp' for n in layout.PICTURES}
    faults += [f'{name}: not in the table' for name in sorted(extra)]
    print('\n'.join(faults or [f'{len(layout.PICTURES)} pictures, {total} bytes, all right']))
    return 1 if faults else 0
