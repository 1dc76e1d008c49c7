"""The rows of a skin in the table of skins: what each says, and a file of them."""

from collections import namedtuple

from . import layout
from .looks import LOOKS
from .skin import FIRST

# offset: from the skin's base; kind: 'colour', 'number', 'boolean', 'text' or 'picture'
Row = namedtuple('Row', 'offset kind value note')

HEAD = '''\
# The rows of the skin "{name}", written by assets/draw_skin.py from its looks and from where
# assets/draw/layout.py puts things. A line is a row of the table of skins: its number | its text |
# what it is. Blanks around a text do not count. Rows that are not here are empty, and reading one
# fails.
#
# Colours are red + 256 x green + 65536 x blue. Positions and sizes are pixels. Numbers of pictures
# are names of files. Pictures {window} and {menu} to {tip} belong to the skin by their numbers:
# window, menu, three images of the file browser, the left end, middle and right end of the tooltip.

base | {base} | where the skin begins; the build makes the head of the table of it
'''

# offset: (the control and what it is for, tip)
BUTTONS = {
    9: ('btnSkin(0), exit', 'Exit'), 14: ('btnSkin(1), minimise', 'Minimize'),
    19: ('btnSkin(2), menu', 'Open menu'), 24: ('tglSkin(0), always on top', 'Always on top'),
    90: ('btnSkin(8), add', 'Add items'), 95: ('btnSkin(9), remove', 'Remove items'),
    100: ('btnSkin(10), misc', 'Misc stuff'), 105: ('tglSkin(1), lyrics', 'Lyrics'),
    110: ('tglSkin(3), item information', 'File info'),
    140: ('btnSkin(3), previous', 'Previous item'), 145: ('btnSkin(4), play', 'Play'),
    150: ('btnSkin(5), pause', 'Pause'), 155: ('btnSkin(6), stop', 'Stop'),
    160: ('btnSkin(7), next', 'Next item'), 190: ('tglSkin(2), audio effects', 'Audio Effects'),
    265: ('btnSkin(12), reset of the effects', 'Reset all effects'),
    270: ('btnSkin(11), playlists', 'Playlists'),
}
EFFECTS = 'tempo', 'pitch', 'echo', 'reverb', 'bass', 'mid', 'treble'


def _run(offset, *entries):
    """Rows that follow one another: (kind, value, note)."""
    return [Row(offset + i, *entry) for i, entry in enumerate(entries)]


def _colours(offset, *entries):
    return _run(offset, *(('colour', colour, note) for colour, note in entries))


def _places(offset, values, notes=('left', 'top', 'width', 'height')):
    return _run(offset, *(('number', value, note) for value, note in zip(values, notes)))


def _font(offset, font):
    return _run(offset, *zip(('text', 'number', 'boolean', 'boolean'), font,
                             ('font name', 'font size', 'italic', 'bold')))


def _button(offset):
    title, tip = BUTTONS[offset]
    strip = offset if offset in layout.TRANSPORT else offset + FIRST  # as pictures were numbered
    mask, *place = layout.ON_WINDOW.get(strip, (366, *layout.RESET))
    return title, _run(offset, ('picture', strip, 'picture'), ('picture', mask, 'mask picture'),
                       ('text', tip, 'tooltip')) + _places(offset + 3, place)


def _slider(offset, title, track, place, vertical=False):
    return title, _run(offset, ('picture', track, 'picture'), ('picture', 221, 'stick picture'),
                       ('picture', 222, 'stick mask picture'), ('number', 0, 'stick position'),
                       ('boolean', vertical, 'vertical')) + _places(offset + 5, place)


def _panel(offset, title, place, text, font):
    return title, (_places(offset, place) + _colours(offset + 4, (LOOKS.FLOOR, 'back colour'),
                                                     (text, 'text colour'))
                   + _font(offset + 6, font))


def _list():
    return 'The lists, and the panels that lie over the playlist', (
        _places(39, layout.LIST) + _font(43, LOOKS.LIST_FONT) + _colours(
            47, (LOOKS.FLOOR, 'back colour, also of the search box'),
            (LOOKS.FOCUS, 'focus rectangle'),
            (LOOKS.SELECTION[0], 'selection, left'), (LOOKS.SELECTION[1], 'selection, right'),
            (LOOKS.PULSE[0], 'low end of the pulse: no byte above that of the high end'),
            (LOOKS.PULSE[1], 'selected text, and high end of the pulse'),
            (LOOKS.LIST_TEXT, 'text, also of the search box'),
            (LOOKS.THUMB_EDGE, 'thumb border'),
            (LOOKS.THUMB[1], 'thumb, right'), (LOOKS.THUMB[0], 'thumb, left')))


def _menu():
    disabled, selection = LOOKS.MENU_DISABLED, LOOKS.MENU_SELECTION
    header, separator = LOOKS.MENU_HEADER, LOOKS.MENU_SEPARATOR
    return 'The popup menu', _font(65, LOOKS.MENU_FONT) + _colours(
        69, (LOOKS.MENU_GROUND, 'background without a picture'), (LOOKS.MENU_TEXT, 'text'),
        (disabled[0], 'disabled text, lower layer'), (disabled[1], 'disabled text, upper layer'),
        (selection[0], 'selection, left'), (selection[1], 'selection, right'),
        (LOOKS.MENU_SELECTED_TEXT, 'selected text'),
        (header[0], 'header, top'), (header[1], 'header, bottom'),
        (LOOKS.MENU_HEADER_TEXT, 'header text'),
        (separator[0], 'separator, left'), (separator[1], 'separator, right'))


def sections():
    """(title, rows) of the skin with the looks in force, in the order of their offsets."""
    lyrics = (0, 0, 28, layout.LIST[3])
    found = [
        ('The skin itself', _colours(7, (LOOKS.TIP_TEXT, 'tooltip text colour'))
         + _run(8, ('text', LOOKS.NAME, 'name'))),
        _panel(29, 'picScrollText, the scrolling title', layout.TITLE, LOOKS.TITLE_TEXT,
               LOOKS.TITLE_FONT),
        _list(), _menu(),
        _slider(120, 'sldSkin(0), position. A height of 0: half the picture\'s.', 220,
                (*layout.SEEK[:3], 0)),
        _slider(130, 'sldSkin(1), volume', 230, (*layout.VOLUME[:3], 0)),
        _panel(170, 'picInfoDisplay, the one-line fact', layout.DISPLAY, LOOKS.DISPLAY_TEXT,
               LOOKS.DISPLAY_FONT),
        _slider(180, 'sldSkin(2), lyrics', 280, lyrics, vertical=True),
        *(_slider(195 + 10 * i, f'sldSkin({3 + i}), {effect}', 230, layout.EFFECT_SLIDERS[i])
          for i, effect in enumerate(EFFECTS)),
        *(_button(offset) for offset in BUTTONS),
    ]
    return sorted(found, key=lambda section: section[1][0].offset)


def _as_text(row, skin):
    if row.kind == 'colour':
        red, green, blue = row.value
        return str(red + 256 * green + 65536 * blue)
    return str(skin.number(row.value) if row.kind == 'picture' else row.value)


def write(skin):
    """The file of the skin's rows, with the looks in force."""
    number = skin.number
    text = HEAD.format(name=LOOKS.NAME, base=skin.base, window=number(100), menu=number(102),
                       tip=number(108))
    for title, rows in sections():
        lines = ''.join(f'{skin.base + row.offset} | {_as_text(row, skin):<18} | {row.note}\n'
                        for row in rows)
        text += f'\n# {title}\n{lines}'
    skin.rows().write_text(text, encoding='utf-8')


def read(path):
    """(base, {number: text}) of such a file; as with the player, the last line of a row counts."""
    base, texts = None, {}
    for line in path.read_text(encoding='utf-8').splitlines():
        cells = [cell.strip() for cell in line.split('|')]
        if line.startswith('#') or len(cells) < 2:
            continue
        if cells[0] == 'base' and cells[1].isdigit():
            base = int(cells[1])
        elif cells[0].lstrip('-').isdigit() and cells[1]:
            texts[int(cells[0])] = cells[1]
    return base, texts


def colour(text):
    """The colour that a row's text stands for."""
    value = int(text)
    return value & 255, value >> 8 & 255, value >> 16 & 255
