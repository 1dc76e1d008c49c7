"""Tracks in two halves (in use, out of use) and the stick that runs along them."""

from math import hypot

from .canvas import Canvas, Ramp, mix, stack
from .looks import LOOKS
from .shapes import circle, coverage_mask, ellipse, rounded


def palette():
    return LOOKS.IN_USE + LOOKS.OUT_OF_USE  # sixteen


def _half(length, colours, density):
    """A horizontal track 13 high: a slot five high with a light edge below it."""
    canvas = Canvas(length, 13, LOOKS.FLOOR, density)
    left, width = 3, length - 6
    ramp = Ramp(*((4.5 + i, colours[i]) for i in range(5)))
    if density > 1:
        slot = rounded(left, 4, width, 5, 2)
        canvas.paint(slot.shift(0, 1), colours[5])
        canvas.paint(slot, ramp)
        return canvas
    canvas.fill(left + 1, 9, width - 2, 1, colours[5])
    canvas.fill(left, 4, width, 5, ramp)
    for x in (left, left + width - 1):  # dots in place of the round ends
        canvas.fill(x, 4, 1, 1, colours[6])
        canvas.fill(x, 8, 1, 1, colours[7])
    return canvas


def horizontal(length, density):
    return stack([_half(length, LOOKS.IN_USE, density), _half(length, LOOKS.OUT_OF_USE, density)])


def vertical(length, density):
    """The halves stand side by side; the light edge is at the right of the slot."""
    track = Canvas(26, length, LOOKS.FLOOR, density)
    lying = [_half(length, colours, density).rows for colours in (LOOKS.IN_USE, LOOKS.OUT_OF_USE)]
    track.rows = [[row[j] for half in lying for row in half] for j in range(length * density)]
    return track


def _ball(stops):
    """A sphere lit from the upper left, its colours from the lit side to the far one."""
    def colour(x, y):
        dx, dy = (x - 6.5) / 5.6, (y - 6.5) / 5.6
        light = hypot(dx + 0.35, dy + 0.45)
        t = min(light / 1.5, 0.999) * 3
        i = int(t)
        return mix(stops[i], stops[i + 1], t - i)
    return colour


BALL = circle(6.5, 6.5, 6.3)


def stick(density):
    images = []
    for stops, rim, spark in LOOKS.STICKS:
        # Slot lies under it only between the ends; finer edges suit both grounds when they are dim.
        ground = LOOKS.FLOOR if density == 1 else mix(LOOKS.FLOOR, rim, 0.6)
        canvas = Canvas(13, 13, ground, density)
        canvas.paint(BALL, rim)
        canvas.paint(BALL.grow(-1), _ball(stops))
        canvas.paint(ellipse(5.3, 4.3, 2.3, 1.6).soft(), LOOKS.SHEEN, spark)
        images.append(canvas)
    return stack(images)


def stick_mask(density):
    """Here 0, black, is the body of the stick; what it hardly covers is left to the track."""
    body = coverage_mask([BALL], 13, 13, density, 0.3)
    return [[1 - inside for inside in row] for row in body]
