"""How well the skin's texts stand out from what lies under them, in a table."""

from . import layout, rows, signs, small
from .buttons import panel_ground, pill
from .canvas import mix
from .looks import LOOKS

ENOUGH = 4.5
STATES = ('normal', 'pressed', 'disabled', 'latched', 'latched and pressed',
          'latched and disabled')


def _light(colour):
    """How light a colour looks, 0 to 1."""
    shares = [c / 255 for c in colour]
    r, g, b = (c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in shares)
    return 0.2126 * r + 0.7152 * g + 0.0722 * b


def contrast(one, other):
    """From 1, the same, to 21, black and white."""
    low, high = sorted((_light(one), _light(other)))
    return (high + 0.05) / (low + 0.05)


def _on_buttons():
    """Each state of a word: from its cap line to its base line, and to its lowest tail."""
    for state, look in zip(STATES, LOOKS.TOGGLE_LOOKS):
        canvas = panel_ground(*layout.PICTURES[206][:2], 4)
        pill(canvas, 1, 0, canvas.width - 2, canvas.height - 1, look)
        _, top = signs.centred(canvas, 0, signs.CAPITAL)
        middle = [row[len(row) // 2] for row in canvas.rows]
        for name, below in (('words', signs.CAPITAL), ('tails', signs.CAPITAL + 2)):
            rows = middle[round(4 * (top + look.down)):round(4 * (top + look.down + below))]
            yield f'{name} on buttons, {state}', min(contrast(look.ink, c) for c in rows)


def _from_the_rows(skin):
    """What the player paints with the colours of the rows, and where it is weakest."""
    _, texts = rows.read(skin.rows())
    c = {row.offset: rows.colour(texts[skin.base + row.offset])
         for _, group in rows.sections() for row in group if row.kind == 'colour'}
    menu = small.menu_palette()
    pairs = (
        ('title', c[34], c[33]), ('information', c[175], c[174]), ('list', c[53], c[47]),
        ('tooltip, at its top', c[7], LOOKS.TIP[0]),
        ('selected row, left, pulse high', c[52], c[49]),
        ('selected row, middle, pulse high', c[52], mix(c[49], c[50], 0.5)),
        ('selected row, right, pulse high', c[52], c[50]),
        ('selected row, left, pulse low', c[51], c[49]),
        ('selected row, right, pulse low', c[51], c[50]),
        ('playing row, pulse high', c[52], c[47]), ('playing row, pulse low', c[51], c[47]),
        ('menu, lightest ground', c[70], menu[10]), ('menu, selected, left', c[75], c[73]),
        ('menu, selected, right', c[75], c[74]),
        ('menu, disabled, lower layer', c[71], menu[10]),
        ('menu, disabled, upper layer on lower', c[72], c[71]),
        ('menu, header, top', c[78], c[76]), ('menu, header, bottom', c[78], c[77]),
    )
    for name, text, ground in pairs:
        yield name, contrast(text, ground)


def faults():
    """The states in which words on buttons do not stand out, which is up to the looks alone."""
    return [f'{name}: only {value:.2f} to 1' for name, value in _on_buttons() if value < ENOUGH]


def write(skin):
    """Prints the table; the weak ones are marked."""
    for name, value in [*_on_buttons(), *_from_the_rows(skin)]:
        print(f'{name:<42}{value:6.1f}{"" if value >= ENOUGH else "  weak"}')
