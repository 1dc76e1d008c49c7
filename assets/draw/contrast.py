"""How well the skin's texts stand out from what lies under them, in a table."""

from . import layout, signs, small
from .buttons import panel_ground, pill
from .canvas import mix
from .looks import TIP, TOGGLE_LOOKS

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


def _table(path):
    """The rows of a skin table that are numbers, as colours."""
    colours = {}
    for line in path.read_text(encoding='utf-8').splitlines():
        cells = [cell.strip() for cell in line.split('|')]
        if len(cells) == 3 and cells[1].isdigit():
            value = int(cells[1])
            colours[int(cells[0])] = value & 255, value >> 8 & 255, value >> 16 & 255
    return colours


def _on_buttons():
    """Each state of a word: from its cap line to its base line, and to its lowest tail."""
    for state, look in zip(STATES, TOGGLE_LOOKS):
        canvas = panel_ground(*layout.PICTURES[206][:2], 4)
        pill(canvas, 1, 0, canvas.width - 2, canvas.height - 1, look)
        _, top = signs.centred(canvas, 0, signs.CAPITAL)
        middle = [row[len(row) // 2] for row in canvas.rows]
        for name, below in (('words', signs.CAPITAL), ('tails', signs.CAPITAL + 2)):
            rows = middle[round(4 * (top + look.down)):round(4 * (top + look.down + below))]
            yield f'{name} on buttons, {state}', min(contrast(look.ink, c) for c in rows)


def _from_the_table(c):
    """What the player paints with the colours of the table, and where it is weakest."""
    menu = small.MENU_PALETTE
    pairs = (
        ('title', c[134], c[133]), ('information', c[275], c[274]), ('list', c[153], c[147]),
        ('tooltip, at its top', c[107], TIP[0]),
        ('selected row, left, pulse high', c[152], c[149]),
        ('selected row, middle, pulse high', c[152], mix(c[149], c[150], 0.5)),
        ('selected row, right, pulse high', c[152], c[150]),
        ('selected row, left, pulse low', c[151], c[149]),
        ('selected row, right, pulse low', c[151], c[150]),
        ('playing row, pulse high', c[152], c[147]), ('playing row, pulse low', c[151], c[147]),
        ('menu, lightest ground', c[170], menu[10]), ('menu, selected, left', c[175], c[173]),
        ('menu, selected, right', c[175], c[174]),
        ('menu, disabled, lower layer', c[171], menu[10]),
        ('menu, disabled, upper layer on lower', c[172], c[171]),
        ('menu, header, top', c[178], c[176]), ('menu, header, bottom', c[178], c[177]),
    )
    for name, text, ground in pairs:
        yield name, contrast(text, ground)


def faults():
    """The states in which words on buttons do not stand out, which is up to the looks alone."""
    return [f'{name}: only {value:.2f} to 1' for name, value in _on_buttons() if value < ENOUGH]


def write(table):
    """Prints the table; the weak ones are marked."""
    for name, value in [*_on_buttons(), *_from_the_table(_table(table))]:
        print(f'{name:<42}{value:6.1f}{"" if value >= ENOUGH else "  weak"}')
