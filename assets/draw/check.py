"""Looks over a skin as written: its rows, its pictures, and the fine ones beside the plain."""

from . import check_rows, contrast, layout
from .bmp import Picture
from .looks import LOOKS

# How far the mean of what stands for a unit may be from the plain pixel, in levels, on an average
# of all pixels. Signs are other shapes where there is room for curves, all else is the same.
OFF, OFF_WITH_SIGNS = 4, 25
WITHOUT_SIGNS = (100, 102, 103, 104, 106, 107, 108, 220, 230, 280)
FINE_BYTES = 560_000  # what all fine pictures together may take in the program
STEP = 16  # between a button and the window where its mask ends, in levels


def _format_faults(number, picture, density):
    width, height, bits, compressed = layout.PICTURES[number]
    found = picture.width, picture.height
    wanted = width * density, height * density
    if density == 1 or bits == 1:
        found += (picture.bits, bool(picture.compression))
        wanted += (bits, compressed)
        if bits < 24 and len(picture.palette) != 1 << bits:
            yield f'{len(picture.palette)} palette entries'
    if found != wanted:
        yield f'{found} instead of {wanted}'
    if bits == 1 and picture.palette != [(0, 0, 0), (255, 255, 255)]:
        yield 'a mask must be black and white'


def _flat_faults(picture, density):
    for place in (layout.TITLE, layout.LIST, layout.DISPLAY):
        left, top, width, height = (density * side for side in place)
        floor = [LOOKS.FLOOR] * width
        if any(row[left:left + width] != floor for row in picture.rows[top:top + height]):
            yield f'the rectangle {place} is not flat'


def _block(picture, x, y, density):
    """The stored pixels of a unit."""
    return [pixel for row in picture.rows[y * density:(y + 1) * density]
            for pixel in row[x * density:(x + 1) * density]]


def _mean_faults(number, picture, plain, density):
    total = 0
    for y, row in enumerate(plain.rows):
        for x, colour in enumerate(row):
            block = _block(picture, x, y, density)
            total += max(abs(sum(channel) / len(block) - c) for channel, c in
                         zip(zip(*block), colour))
    off = total / (plain.width * plain.height)
    if off > (OFF if number in WITHOUT_SIGNS else OFF_WITH_SIGNS):
        yield f'{off:.1f} levels off the plain picture'


def _mask_faults(picture, plain, density):
    """Away from its edge a fine mask shows what the plain one does."""
    for y in range(1, plain.height - 1):
        for x in range(1, plain.width - 1):
            around = {pixel for row in plain.rows[y - 1:y + 2] for pixel in row[x - 1:x + 2]}
            if len(around) == 1 and set(_block(picture, x, y, density)) != around:
                yield f'another mask at {x}, {y}'


def _seam_faults(picture):
    """A tile's opposite edges differ no more than neighbours anywhere in it."""
    for lines in (picture.rows, [list(column) for column in zip(*picture.rows)]):
        steps = [max(abs(a[0] - b[0]) for a, b in zip(one, other))
                 for one, other in zip(lines, lines[1:] + lines[:1])]
        if steps[-1] > max(steps[:-1]):
            yield 'a seam'


def _edge_faults(strip, mask, window, left, top, density):
    """Right outside its mask a button at rest is the window, so that nothing of it is cut off."""
    shown = [[pixel == (255, 255, 255) for pixel in row] for row in mask.rows]
    for j in range(mask.height):
        for i in range(mask.width):
            beside = [shown[y][x] for x, y in ((i - 1, j), (i + 1, j), (i, j - 1), (i, j + 1))
                      if 0 <= x < mask.width and 0 <= y < mask.height]
            below = window.rows[top * density + j][left * density + i]
            if not shown[j][i] and any(beside) and any(
                    abs(a - b) > STEP for a, b in zip(strip.rows[j][i], below)):
                yield f'a hard edge at {i}, {j}'
                return


def _faults(skin, density, plain, read):
    """(number, fault) of every picture of the density; those of the right format come into read."""
    for number, (_, _, bits, _) in layout.PICTURES.items():
        try:
            picture = Picture(skin.path(number, density).read_bytes())
            wrong = list(_format_faults(number, picture, density))
        except (OSError, ValueError) as error:
            wrong = [str(error)]
        if not wrong:
            read[number] = picture
            if number == 100:
                wrong += _flat_faults(picture, density)
            if number == 102:
                wrong += _seam_faults(picture)
            if density > 1 and number in plain:
                wrong += (_mask_faults(picture, plain[number], density) if bits == 1 else
                          _mean_faults(number, picture, plain[number], density))
        yield from ((number, fault) for fault in wrong)
    for number, (mask, left, top) in layout.ON_WINDOW.items():
        if density > 1 and read.keys() >= {number, mask, 100}:
            for fault in _edge_faults(read[number], read[mask], read[100], left, top, density):
                yield number, fault


def run(skin):
    """0 when every row and picture is there and right, else 1, with a line for each fault."""
    faults, plain, wanted = check_rows.faults(skin), {}, set()
    for density in skin.densities():
        read = plain if density == 1 else {}
        faults += [f'{skin.number(number)} at {density}: {fault}'
                   for number, fault in _faults(skin, density, plain, read)]
        wanted |= {skin.path(number, density) for number in layout.PICTURES}
    there = set(skin.folder.rglob('*.bmp'))
    faults += [f'{path}: no picture of the skin' for path in sorted(there - wanted)]
    sizes = {density: sum(path.stat().st_size for path in there
                          if path.parent == skin.of_density(density))
             for density in skin.densities()}
    fine = sum(sizes.values()) - sizes[1]
    if fine > FINE_BYTES:
        faults.append(f'{fine} bytes of fine pictures, more than {FINE_BYTES}')
    faults += contrast.faults()
    told = ', '.join(f'{size} bytes at {density}' for density, size in sizes.items())
    print('\n'.join(faults or [f'{len(wanted)} pictures, all right: {told}']))
    return 1 if faults else 0
