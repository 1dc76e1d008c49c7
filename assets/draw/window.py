"""The window: frame, body, wells, the sockets of the transport buttons and the maker's mark."""

from . import layout, pixelfont
from .canvas import Canvas, Ramp, mix
from .looks import ACCENT, INK, NIGHT, SLATE, WHITE
from .shapes import circle, melt

BODY = Ramp((0, (126, 138, 188)), (5, (104, 115, 162)), (26, (78, 88, 127)),
            (27, (84, 95, 136)), (207, (70, 80, 116)), (208, (98, 110, 154)),
            (228, (86, 97, 138)), (246, (76, 87, 124)), (277, (54, 62, 92)))


def _frame(canvas):
    """A dark outline with a light inner line at the top and left, a dark one opposite."""
    w, h = canvas.width, canvas.height
    for i in range(1, w - 1):
        canvas.put(i, 1, (206, 212, 255), 0.8)
        canvas.put(i, h - 2, INK, 0.5)
    for i in range(1, h - 1):
        canvas.put(1, i, (190, 198, 250), 0.6 - 0.35 * i / h)
        canvas.put(w - 2, i, INK, 0.32 + 0.15 * i / h)
    for i in range(w):
        canvas.put(i, 0, INK)
        canvas.put(i, h - 1, INK)
    for i in range(h):
        canvas.put(0, i, INK)
        canvas.put(w - 1, i, INK)


def _ring(canvas, left, top, width, height, dark, light):
    """One pixel around the rectangle: (colour, alpha) at the top and left, and opposite."""
    right, bottom = left + width, top + height
    for x in range(left - 1, right):
        canvas.put(x, top - 1, *dark)
    for y in range(top, bottom):
        canvas.put(left - 1, y, *dark)
    for x in range(left, right + 1):
        canvas.put(x, bottom, *light)
    for y in range(top, bottom):
        canvas.put(right, y, *light)
    for x, y in ((left - 1, bottom), (right, top - 1)):
        canvas.put(x, y, mix(dark[0], light[0], 0.5), (dark[1] + light[1]) / 2)


def well(canvas, left, top, width, height):
    """A flat sunken rectangle with two pixels of bevel around it."""
    _ring(canvas, left - 1, top - 1, width + 2, height + 2, (NIGHT, 0.35), (WHITE, 0.10))
    _ring(canvas, left, top, width, height, (NIGHT, 1.0), ((148, 158, 212), 0.8))
    canvas.fill(left, top, width, height, SLATE)


def _sockets(canvas):
    """The hollow in which the round buttons sit: five circles melted into one."""
    hollow = melt([circle(left + 10.5, top + 10.5, 11.2)
                   for _, left, top in layout.TRANSPORT.values()], 5.0)
    canvas.paint(hollow.shift(0, 1).grow(0.3), (166, 176, 226), lambda x, y: 0.5 * (y - 244) / 25)
    canvas.paint(hollow, NIGHT)
    canvas.paint(hollow.shift(0.4, 1).grow(-0.6).cut(hollow),
                 Ramp((246, (30, 34, 66)), (268, (58, 67, 100))))


def _mark(canvas):
    """The maker's mark, engraved under the display, with lines that run out to the left."""
    text, top = 'VELDRIN', 268
    left = 285 - pixelfont.measure(text, pixelfont.TINY, 2)
    pixelfont.write(canvas, left, top + 1, text, (160, 170, 220), pixelfont.TINY, 2, 0.45)
    pixelfont.write(canvas, left, top, text, (22, 25, 58), pixelfont.TINY, 2, 0.9)
    for row in (top, top + 2, top + 4):
        for x in range(128, left - 5):
            strength = min(1.0, (x - 127) / 70)
            canvas.put(x, row, (22, 25, 58), 0.8 * strength)
            canvas.put(x, row + 1, (160, 170, 220), 0.22 * strength)


def draw():
    canvas = Canvas(*layout.WINDOW)
    canvas.fill(0, 0, canvas.width, canvas.height, BODY)
    _frame(canvas)
    well(canvas, *layout.TITLE)
    well(canvas, *layout.LIST)
    well(canvas, *layout.SEEK)
    left, top = layout.DISPLAY[0], layout.VOLUME[1]
    right = layout.VOLUME[0] + layout.VOLUME[2]
    bottom = layout.DISPLAY[1] + layout.DISPLAY[3]
    well(canvas, left, top, right - left, bottom - top)
    _sockets(canvas)
    _mark(canvas)
    return canvas
