"""The looks that are drawn: the palette of a skin and what its controls take in each state.

They come from a looks file, plain Python that gives values to the names below. One run of the
program draws one skin, so there is one set of looks, LOOKS.
"""

from collections import namedtuple
from runpy import run_path
from types import SimpleNamespace

# face: colours from top to bottom; gloss and shine: strength of the upper sheen and of the
# bright line at the upper edge; glow: strength of the light around a latched control; rim: the
# outline; ink and shade: a word or sign and what lies below it; down: how far it has gone down
Look = namedtuple('Look', 'face rim gloss shine glow ink shade down')

LOOKS = SimpleNamespace()

BUTTON_STATES = 'NORMAL', 'PRESSED', 'DISABLED'
TOGGLE_STATES = BUTTON_STATES + ('LATCHED', 'LATCHED_PRESSED', 'LATCHED_DISABLED')

# How many colours each name of a looks file stands for. assets/README.md tells what they are.
COLOURS = {
    1: '''FLOOR TEXT GLOW SHEEN INK WELL_SHADE GLINT FRAME_TOP FRAME_LEFT WELL_EDGE ENGRAVED
          PILL_SHADOW PILL_LIT PILL_SUNK PILL_FOOT DOME_SHADOW DOME_LIT DOME_SUNK TIP_SHADE
          DRIVE_GLEAM DRIVE_SLIT FOLDER_TAB FOLDER_GLEAM PAPER_FOLD NOTE_INK
          TITLE_TEXT DISPLAY_TEXT LIST_TEXT TIP_TEXT FOCUS THUMB_EDGE
          MENU_GROUND MENU_TEXT MENU_SELECTED_TEXT MENU_HEADER_TEXT'''.split(),
    2: '''BODY SOCKET SILK DRIVE_LID DRIVE_FRONT FOLDER_BACK FOLDER_FRONT PAPER
          SELECTION PULSE THUMB MENU_DISABLED MENU_SELECTION MENU_HEADER MENU_SEPARATOR'''.split(),
    3: ['TIP'],
    8: ['IN_USE', 'OUT_OF_USE'],
}
FONTS = 'TITLE_FONT', 'DISPLAY_FONT', 'LIST_FONT', 'MENU_FONT'


def _is_name(value):
    return isinstance(value, str) and value.strip() != '' and not set(value) & set('|#\n')


def _is_colour(value):
    return (isinstance(value, tuple) and len(value) == 3
            and all(type(c) is int and 0 <= c <= 255 for c in value))


def _are_colours(value, count=None):
    return (isinstance(value, tuple) and (len(value) == count if count else len(value) > 1)
            and all(_is_colour(one) for one in value))


def _is_share(value):
    return type(value) in (int, float) and 0 <= value <= 1


def _is_font(value):
    return (isinstance(value, tuple) and [type(part) for part in value] == [str, int, bool, bool]
            and value[0].strip() != '' and '|' not in value[0] and value[1] > 0)


def _is_stick(value):
    return (isinstance(value, tuple) and len(value) == 3 and _are_colours(value[0], 4)
            and _is_colour(value[1]) and _is_share(value[2]))


def _is_look(value):
    return (isinstance(value, Look) and _are_colours(value.face) and value.down in (0, 1)
            and all(map(_is_colour, (value.rim, value.ink, value.shade)))
            and all(map(_is_share, (value.gloss, value.shine, value.glow))))


def _rules():
    """(name, whether a value will do, what is wanted)"""
    yield 'NAME', _is_name, 'a name, without | and #'
    for count, names in COLOURS.items():
        for name in names:
            if count == 1:
                yield name, _is_colour, 'a colour: (red, green, blue), each from 0 to 255'
            else:
                yield (name, lambda value, count=count: _are_colours(value, count),
                       f'{count} colours: ((red, green, blue), ...), each from 0 to 255')
    for name in FONTS:
        yield name, _is_font, 'a font: (name, size, italic, bold)'
    yield ('STICKS', lambda value: isinstance(value, tuple) and len(value) == 3
           and all(map(_is_stick, value)), 'three times (four colours, rim, strength of the spark)')
    for state in TOGGLE_STATES:
        yield state, _is_look, 'a Look, its shares from 0 to 1'


def _traps(looks):
    """What would only show later, as a control that looks wrong."""
    if any(low > high for low, high in zip(*looks['PULSE'])):
        yield 'PULSE: no channel of the first colour may be above that of the second'
    if looks['FLOOR'] not in looks['OUT_OF_USE'] + looks['IN_USE']:
        yield 'OUT_OF_USE: one of the tracks\' sixteen colours has to be FLOOR, on which they lie'


def faults(values):
    """What is wrong with the values of a looks file, a line each."""
    wrong = []
    for name, fits, wanted in _rules():
        if name not in values:
            wrong.append(f'{name} is missing: {wanted}')
        elif not fits(values[name]):
            wrong.append(f'{name} is {values[name]!r} instead of {wanted}')
    return wrong or list(_traps(values))


def use(path):
    """Takes the looks from a file; ends the program where they are not whole."""
    values = run_path(str(path), {'Look': Look})
    wrong = faults(values)
    if wrong:
        raise SystemExit('\n'.join(f'{path}: {fault}' for fault in wrong))
    vars(LOOKS).update((name, value) for name, value in values.items() if name.isupper())
    LOOKS.BUTTON_LOOKS = tuple(values[state] for state in BUTTON_STATES)
    LOOKS.TOGGLE_LOOKS = tuple(values[state] for state in TOGGLE_STATES)
