"""The window: frame, body, wells, the sockets of the transport buttons and the maker's mark."""

from . import layout, signs
from .canvas import DOWN, LEFT, RIGHT, UP, Canvas, Ramp, mix
from .looks import LOOKS
from .shapes import circle, melt, rounded

# How light the body is from top to bottom, in percent of the way from its darkest to its
# lightest colour: a cap above the list, plain rails beside it, a deck below it.
CAP, DECK = 26, 208
LIGHTNESS = Ramp((0, (92,) * 3), (6, (66,) * 3), (CAP, (36,) * 3), (CAP + 1, (46,) * 3),
                 (DECK - 1, (26,) * 3), (DECK, (64,) * 3), (228, (46,) * 3), (246, (33,) * 3),
                 (277, (6,) * 3))


def body(x, y):
    """Lit from the upper left: darker downwards and, a little, to the right."""
    light = LIGHTNESS.at(y)[0] + 7 - 12 * (x - 0.5) / layout.WINDOW[0]
    return mix(*LOOKS.BODY, round(light) / 100)  # whole steps save palette entries


def _frame(canvas):
    """A dark outline with a light inner line at the top and left, a dark one opposite."""
    w, h = canvas.width, canvas.height
    canvas.line(1, 1, w - 2, 1, LOOKS.FRAME_TOP, 0.8, UP)
    canvas.line(1, h - 2, w - 2, 1, LOOKS.INK, 0.5, DOWN)
    canvas.line(1, 1, 1, h - 2, LOOKS.FRAME_LEFT, lambda x, y: 0.6 - 0.35 * (y - 0.5) / h, LEFT)
    canvas.line(w - 2, 1, 1, h - 2, LOOKS.INK, lambda x, y: 0.32 + 0.15 * (y - 0.5) / h, RIGHT)
    for edge in ((0, 0, w, 1), (0, h - 1, w, 1), (0, 0, 1, h), (w - 1, 0, 1, h)):
        canvas.fill(*edge, LOOKS.INK)


def _shoulders(canvas):
    """The edges of the cap and of the deck, where they meet the rails beside the list."""
    dark, lit = LOOKS.WELL_SHADE, LOOKS.SHEEN
    for row, colour, alpha, towards in ((CAP, dark, 0.4, DOWN), (CAP + 1, lit, 0.10, UP),
                                        (DECK - 1, dark, 0.3, DOWN), (DECK, lit, 0.3, UP)):
        canvas.line(0, row, canvas.width, 1, colour, alpha, towards)


def _ring(canvas, left, top, width, height, dark, light, fade):
    """One unit around the rectangle: (colour, alpha) at the top and left, and opposite.

    Where the two meet, their border runs through the corner. Each alpha loses `fade` of itself
    from the middle of the ring outwards.
    """
    right, bottom = left + width, top + height

    def opposite(x, y):
        """0 where the ring is dark, 1 where it is light."""
        across, down = max(left - x, x - right), max(top - y, y - bottom)
        if across > 0 and down > 0 and (x < left) != (y < top):
            toward = down - across if x < left else across - down
            return min(max(0.5 + 2 * toward, 0.0), 1.0)
        return float(x > right or y > bottom)

    def alpha(x, y):
        out = max(left - x, x - right, top - y, y - bottom) - 0.5
        t = opposite(x, y)
        return (dark[1] + (light[1] - dark[1]) * t) * (1 - fade * out)

    def colour(x, y):
        return mix(dark[0], light[0], opposite(x, y))

    for side in ((left - 1, top - 1, width + 2, 1), (left - 1, bottom, width + 2, 1),
                 (left - 1, top, 1, height), (right, top, 1, height)):
        canvas.fill(*side, colour, alpha)


def well(canvas, left, top, width, height, soft=True):
    """A flat sunken rectangle with a hard bevel around it, and a soft one around that."""
    if soft:
        _ring(canvas, left - 1, top - 1, width + 2, height + 2, (LOOKS.WELL_SHADE, 0.35),
              (LOOKS.SHEEN, 0.10), 1.2)
    _ring(canvas, left, top, width, height, (LOOKS.WELL_SHADE, 1.0), (LOOKS.WELL_EDGE, 0.8), 0.4)
    canvas.fill(left, top, width, height, LOOKS.FLOOR)


def _seats(canvas):
    """A shallow seat around every pill: dark above it, light below it."""
    for group, inset in ((layout.CAPTION_BUTTONS, layout.ICON_INSET),
                         (layout.WORD_BUTTONS, layout.WORD_INSET)):
        for mask, left, top in group.values():
            width, height = layout.PICTURES[mask][:2]
            pill = rounded(left + inset, top, width - 2 * inset, height - 1, (height - 1) / 2)
            canvas.paint(pill.shift(0, 1.2).grow(0.9).soft(), LOOKS.GLINT, 0.4)
            canvas.paint(pill.grow(0.9).soft(), LOOKS.WELL_SHADE, 0.34)


def _sockets(canvas):
    """The hollow in which the round buttons sit: five circles melted into one."""
    hollow = melt([circle(left + 10.5, top + 10.5, 11.0)
                   for _, left, top in layout.TRANSPORT.values()], 5.0)
    canvas.paint(hollow.shift(0, 1).grow(0.3).soft(), LOOKS.GLINT,
                 lambda x, y: 0.5 * (y - 244.5) / 25)
    canvas.paint(hollow, LOOKS.WELL_SHADE)
    canvas.paint(hollow.shift(0.4, 1).grow(-0.6).soft().cut(hollow),
                 Ramp(*zip((246, 268), LOOKS.SOCKET)))


def _mark(canvas):
    """The maker's mark, printed under the display, with engraved lines that run out to the left."""
    text, top = 'VELDRIN', 268
    left = 285 - signs.measure(text, signs.TINY)
    signs.write(canvas, left, top + 1, text, LOOKS.WELL_SHADE, signs.TINY, 0.75)
    signs.write(canvas, left, top, text, LOOKS.TEXT, signs.TINY, 0.62)
    for row in (top, top + 2, top + 4):
        for below, colour, alpha in ((0, LOOKS.ENGRAVED, 0.8), (1, LOOKS.GLINT, 0.22)):
            canvas.fill(128, row + below, left - 133, 1, colour,
                        lambda x, y, alpha=alpha: alpha * min(1.0, (x - 127.5) / 70))


def draw(density):
    canvas = Canvas(*layout.WINDOW, density=density)
    canvas.fill(0, 0, canvas.width, canvas.height, body)
    _shoulders(canvas)
    _frame(canvas)
    well(canvas, *layout.TITLE, soft=False)  # the buttons beside it are close
    well(canvas, *layout.LIST)
    left, top = layout.DISPLAY[0], layout.VOLUME[1]
    right = layout.VOLUME[0] + layout.VOLUME[2]
    bottom = layout.DISPLAY[1] + layout.DISPLAY[3]
    well(canvas, layout.SEEK[0], layout.SEEK[1], right - layout.SEEK[0], layout.SEEK[3])
    well(canvas, left, top, right - left, bottom - top)
    _seats(canvas)
    _sockets(canvas)
    _mark(canvas)
    return canvas
