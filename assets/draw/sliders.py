"""Tracks in two halves (in use, out of use) and the stick that runs along them."""

from math import hypot

from .canvas import Canvas, mix, stack
from .looks import BUTTON_LOOKS, SLATE
from .shapes import circle, ellipse, rounded

# Sixteen colours of the tracks: the ground, the slot in use from its dark upper edge to the
# light that it catches below, and the same out of use.
PALETTE = (
    SLATE, (50, 59, 88), (16, 18, 58), (10, 11, 74), (14, 15, 98), (26, 27, 124), (50, 51, 158),
    (110, 120, 168), (84, 95, 132), (36, 42, 78), (44, 50, 96),
    (44, 52, 80), (50, 59, 86), (54, 63, 91), (74, 85, 118), (67, 77, 109),
)
IN_USE = ((16, 18, 58), (10, 11, 74), (14, 15, 98), (26, 27, 124), (50, 51, 158), (110, 120, 168))
OUT_OF_USE = ((44, 52, 80), (50, 59, 86), (54, 63, 91), (54, 63, 91), (54, 63, 91), (74, 85, 118))


def _half(length, colours):
    """A horizontal track 13 high: a slot of five rows with a light edge below it."""
    canvas = Canvas(length, 13, SLATE)
    slot = rounded(3, 4, length - 6, 5, 2.5)
    canvas.paint(slot.shift(0, 1), colours[5])
    canvas.paint(slot, lambda x, y: colours[min(max(y - 4, 0), 4)])
    return canvas


def horizontal(length):
    return stack([_half(length, IN_USE), _half(length, OUT_OF_USE)])


def vertical(length):
    """The halves stand side by side; the light edge is at the right of the slot."""
    track = Canvas(26, length, SLATE)
    for half, colours in enumerate((IN_USE, OUT_OF_USE)):
        lying = _half(length, colours)
        for y in range(length):
            for x in range(13):
                track.put(13 * half + x, y, lying.get(y, x))
    return track


def _ball(look):
    def colour(x, y):
        dx, dy = (x + 0.5 - 6.5) / 5.6, (y + 0.5 - 6.5) / 5.6
        light = hypot(dx + 0.35, dy + 0.45)
        t = min(light / 1.5, 0.999) * 3
        i = int(t)
        stops = look
        return mix(stops[i], stops[i + 1], t - i)
    return colour


STICKS = (
    (((222, 224, 255), (150, 152, 246), (98, 100, 220), (52, 54, 158)), (16, 18, 58), 0.95),
    (((150, 152, 240), (112, 114, 226), (76, 78, 190), (44, 46, 140)), (10, 12, 46), 0.35),
    (((128, 138, 172), (104, 114, 148), (86, 96, 130), (70, 80, 112)), (44, 52, 80), 0.2),
)


def stick():
    images = []
    for stops, rim, spark in STICKS:
        canvas = _half(40, IN_USE).crop(12, 0, 13, 13)
        ball = circle(6.5, 6.5, 6.3)
        canvas.paint(ball, rim)
        canvas.paint(ball.grow(-1), _ball(stops))
        canvas.paint(ellipse(5.3, 4.3, 2.3, 1.6), (255, 255, 255), spark)
        images.append(canvas)
    return stack(images)


def stick_mask():
    """Here 0, black, is the body of the stick."""
    ball = circle(6.5, 6.5, 6.3)
    return [[int(ball.coverage(x, y) <= 0.03) for x in range(13)] for y in range(13)]
