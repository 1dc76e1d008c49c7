"""Raised pills: the wide buttons with words and the small ones beside the title."""

from . import layout, pixelfont
from .canvas import Canvas, spread, stack
from .looks import BRIGHT, BUTTON_LOOKS, SLATE, TOGGLE_LOOKS
from .shapes import rounded

CROSS = ('##....##', '.##..##.', '..####..', '..####..', '.##..##.', '##....##')
BAR = ('', '', '', '#######', '#######')
LINES = ('########', '', '########', '', '########')
PIN_LYING = ('...#...#', '...#####', '####.###', '...#####', '...#...#')
PIN_UP = ('#####', '.###.', '.#.#.', '.###.', '#####', '..#..', '..#..')


def pill(canvas, left, top, width, height, look):
    """A pill that stands out of the surface; the shadow takes one more row below."""
    top += look.down
    radius = height / 2
    body = rounded(left, top, width, height, radius)
    if look.glow:
        canvas.halo(body, BRIGHT, look.glow, 2.2)
    if not look.down:
        canvas.paint(body.shift(0, 1), (10, 12, 34), 0.45)
    canvas.paint(body, look.rim)
    face = body.grow(-1)
    canvas.paint(face, spread(top + 1, height - 2, look.face))
    if look.gloss:
        half = rounded(left + 3, top + 1.5, width - 6, height / 2 - 1.5, height / 4)
        canvas.paint(half.cut(face), (255, 255, 255), look.gloss)
    edge = face.without(face.shift(0.35, 1.0))
    canvas.paint(edge, (226, 229, 255), look.shine)
    if look.down:
        canvas.paint(edge, (8, 10, 36), 0.5)
    else:
        canvas.paint(face.without(face.shift(-0.2, -1.0)), (0, 0, 50), 0.18)


def _on_ground(ground, inset, look):
    """A canvas with the ground and the pill on it, ready for a word or an icon."""
    canvas = ground.crop(0, 0, ground.width, ground.height)
    pill(canvas, inset, 0, canvas.width - 2 * inset, canvas.height - 1, look)
    return canvas


def word_state(ground, word, look):
    """One image of a wide button."""
    canvas = _on_ground(ground, layout.WORD_INSET, look)
    left = (canvas.width - pixelfont.measure(word)) // 2
    pixelfont.write_raised(canvas, left, 4 + look.down, word, look.ink, look.shade)
    return canvas


def icon_state(ground, icon, look):
    """One image of a small button beside the title."""
    canvas = _on_ground(ground, layout.ICON_INSET, look)
    left = (canvas.width - max(len(row) for row in icon)) // 2
    top = (canvas.height - len(icon)) // 2 + look.down
    canvas.bits(left, top + 1, icon, look.shade)
    canvas.bits(left, top, icon, look.ink)
    return canvas


def word_strip(ground, number):
    looks = TOGGLE_LOOKS if number in layout.TOGGLES else BUTTON_LOOKS
    return stack([word_state(ground, layout.WORDS[number], look) for look in looks])


def icon_strip(ground, number):
    if number in layout.TOGGLES:
        icons = [PIN_LYING] * 3 + [PIN_UP] * 3
        return stack([icon_state(ground, i, k) for i, k in zip(icons, TOGGLE_LOOKS)])
    icon = {109: CROSS, 114: BAR, 119: LINES}[number]
    return stack([icon_state(ground, icon, look) for look in BUTTON_LOOKS])


def panel_ground(width, height):
    """What lies under a button on one of the flat panels."""
    return Canvas(width, height, SLATE)


def pill_mask(width, height, inset, glowing=False):
    """Rows of 0 and 1: wherever a state of the pill may touch its ground."""
    rest = rounded(inset, 0, width - 2 * inset, height - 1, (height - 1) / 2)
    shapes = [rest, rest.shift(0, 1)] + ([rest.grow(1)] if glowing else [])
    return [[int(any(s.coverage(x, y) > 0.03 for s in shapes)) for x in range(width)]
            for y in range(height)]
