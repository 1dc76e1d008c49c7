"""Looks over a skin's rows: each there, each what it has to be, each fitting the pictures."""

from . import layout, rows
from .bmp import Picture
from .skin import ROWS

NUMBER = range(-2 ** 31, 2 ** 31)
# offset of the place of what stands on a flat floor, and of the floor's colour
FLOORS = {29: 33, 39: 47, 170: 174}
IN_PANELS = range(180, 190), range(195, 270)  # not on the window itself
PULSE = 51, 52


def _is_number(text):
    return text.lstrip('-').isdigit() and int(text) in NUMBER


def _kind_fault(row, text):
    """Why the text will not do for the row, or nothing."""
    if row.kind == 'boolean' and text not in ('True', 'False'):
        return 'neither True nor False'
    if row.kind in ('number', 'picture') and not _is_number(text):
        return 'no number'
    if row.kind == 'colour' and not (_is_number(text) and 0 <= int(text) <= 0xFFFFFF):
        return 'no colour: red + 256 x green + 65536 x blue'
    return None


class Table:
    """The rows of one skin; `told` gathers what is wrong with them."""

    def __init__(self, skin):
        self.skin, self.told = skin, []
        self.sections = rows.sections()
        self.base, self.texts = rows.read(skin.rows())
        self.known = {row.offset: (title, row) for title, group in self.sections for row in group}

    def fault(self, offset, why):
        title, row = self.known[offset]
        says = self.texts.get(self.skin.base + offset)
        self.told.append(f'row {self.skin.base + offset} ({title}: {row.note})'
                         + (f' says "{says}": {why}' if says else f' {why}'))

    def value(self, offset):
        """The row as a number; nothing if it is none."""
        text = self.texts.get(self.skin.base + offset, '')
        return int(text) if _is_number(text) else None


def _each_row(table):
    for offset, (_, row) in table.known.items():
        text = table.texts.get(table.skin.base + offset)
        why = 'is missing' if text is None else _kind_fault(row, text)
        if why:
            table.fault(offset, why)
    block = range(table.skin.base, table.skin.base + ROWS)
    for number in sorted(table.texts):
        if number not in block:
            table.told.append(f'row {number}: outside the skin, rows {block[0]} to {block[-1]}')
        elif number - table.skin.base not in table.known:
            table.told.append(f'row {number}: nobody reads it')


def _picture(table, offset):
    """The plain picture that the row names, if it is one of this skin."""
    number = table.value(offset)
    if number is None or number not in range(table.skin.base, table.skin.base + ROWS):
        return None  # faulty, or another skin's
    try:
        return Picture((table.skin.folder / f'{number}.bmp').read_bytes())
    except OSError:
        table.fault(offset, 'there is no such picture')
    except ValueError as error:
        table.fault(offset, f'the picture is damaged: {error}')
    return None


def _strips(table):
    """Buttons hold 3 images, toggles 6, and a mask has the size of one of them."""
    for offset in rows.BUTTONS:
        strip, mask = _picture(table, offset), _picture(table, offset + 1)
        title, _ = table.known[offset]
        images = 6 if title.startswith('tgl') else 3
        if strip and mask and (strip.width, strip.height) != (mask.width, images * mask.height):
            table.fault(offset, f'the picture is {strip.width} x {strip.height}, '
                        f'not {images} times the mask of {mask.width} x {mask.height}')


def _places(table, window):
    """Whatever lies on the window lies within it."""
    for offset, (_, row) in table.known.items():
        limit = {'left': window.width, 'top': window.height}.get(row.note)
        in_panel = any(offset in panel for panel in IN_PANELS)
        place = table.value(offset)
        if limit and not in_panel and place is not None and not 0 <= place < limit:
            table.fault(offset, f'beside the window of {window.width} x {window.height}')


def _floors(table, window):
    """Where a text is painted on its back colour, the window's picture shows the same."""
    for place, colour in FLOORS.items():
        left, top, width, height = (table.value(place + i) for i in range(4))
        if None in (left, top, width, height, table.value(colour)):
            continue
        floor = rows.colour(table.texts[table.skin.base + colour])
        others = {pixel for row in window.rows[max(top, 0):top + height]
                  for pixel in row[max(left, 0):left + width]} - {floor}
        if others:
            table.fault(colour, f'this is {floor}, '
                        f'but the window\'s picture has {min(others)} there')


def _pulse(table):
    low, high = (table.texts.get(table.skin.base + offset, '') for offset in PULSE)
    if _is_number(low) and _is_number(high):
        for name, one, other in zip(('red', 'green', 'blue'), rows.colour(low), rows.colour(high)):
            if one > other:
                table.fault(PULSE[0], f'its {name}, {one}, is above that of the high end, {other}')


def faults(skin):
    """A line for each."""
    try:
        table = Table(skin)
    except (OSError, ValueError) as error:
        return [str(error)]
    if table.base != skin.base:
        table.told.append(f'base | {table.base}: the skin begins at {skin.base}')
    _each_row(table)
    _strips(table)
    _pulse(table)
    try:
        window = Picture(skin.path(100, 1).read_bytes())
    except (OSError, ValueError):
        return table.told  # the check of the pictures tells it
    _places(table, window)
    _floors(table, window)
    return table.told
