"""Raised pills: the wide buttons with words and the small ones beside the title."""

from . import icons, layout, signs
from .canvas import Canvas, spread, stack
from .looks import LOOKS
from .shapes import coverage_mask, rounded


def _sheen(strength, top):
    """White light on the upper half that has faded where the words begin."""
    return lambda x, y: strength * max(1.0 - (y - top) / 4.5, 0.0)


def pill(canvas, left, top, width, height, look):
    """A pill that stands out of the surface; the shadow takes one more row below."""
    top += look.down
    body = rounded(left, top, width, height, height / 2)
    if look.glow:
        canvas.halo(body, LOOKS.GLOW, look.glow, 2.2)
    if not look.down:
        canvas.paint(body.shift(0, 1).soft(), LOOKS.PILL_SHADOW, 0.45)
    canvas.paint(body, look.rim)
    face = body.grow(-1)
    canvas.paint(face, spread(top + 1, height - 2, look.face))
    if look.gloss:
        half = rounded(left + 3, top + 1.5, width - 6, height / 2 - 1.5, height / 4)
        canvas.paint(half.soft().cut(face), LOOKS.SHEEN, _sheen(look.gloss, top))
    edge = face.without(face.shift(0.35, 1.0).soft())
    canvas.paint(edge, LOOKS.PILL_LIT, look.shine)
    if look.down:
        canvas.paint(edge, LOOKS.PILL_SUNK, 0.5)
    else:
        canvas.paint(face.without(face.shift(-0.2, -1.0).soft()), LOOKS.PILL_FOOT, 0.18)


def _on_ground(ground, inset, look):
    """A canvas with the ground and the pill on it, ready for a word or an icon."""
    canvas = ground.crop(0, 0, ground.width, ground.height)
    pill(canvas, inset, 0, canvas.width - 2 * inset, canvas.height - 1, look)
    return canvas


def _raised(canvas, write, look):
    """What `write` puts down (rise, colour), with a shade below it as if it stood out."""
    write(1 if canvas.density == 1 else 0.5, look.shade)
    write(0, look.ink)


def word_state(ground, word, look):
    """One image of a wide button."""
    canvas = _on_ground(ground, layout.WORD_INSET, look)
    left, top = signs.centred(canvas, signs.measure(word, signs.CHUNKY), signs.CAPITAL)
    _raised(canvas, lambda below, colour: signs.write(
        canvas, left, top + look.down + below, word, colour, signs.CHUNKY), look)
    return canvas


def icon_state(ground, icon, look):
    """One image of a small button beside the title."""
    canvas = _on_ground(ground, layout.ICON_INSET, look)
    left, top = signs.centred(canvas, signs.width(icon.bits), len(icon.bits))
    _raised(canvas, lambda below, colour: signs.draw(
        canvas, left, top + look.down + below, icon, colour), look)
    return canvas


def word_strip(ground, number):
    looks = LOOKS.TOGGLE_LOOKS if number in layout.TOGGLES else LOOKS.BUTTON_LOOKS
    return stack([word_state(ground, layout.WORDS[number], look) for look in looks])


def icon_strip(ground, number):
    looks = LOOKS.TOGGLE_LOOKS if number in layout.TOGGLES else LOOKS.BUTTON_LOOKS
    return stack([icon_state(ground, icon, look)
                  for icon, look in zip(icons.OF_STATE[number], looks)])


def panel_ground(width, height, density):
    """What lies under a button on one of the flat panels."""
    return Canvas(width, height, LOOKS.FLOOR, density)


def pill_mask(width, height, inset, glowing, density):
    """Rows of 0 and 1: wherever a state of the pill may touch its ground."""
    rest = rounded(inset, 0, width - 2 * inset, height - 1, (height - 1) / 2)
    shapes = [rest, rest.shift(0, 1).soft()] + ([rest.grow(1)] if glowing else [])
    return coverage_mask(shapes, width, height, density)
