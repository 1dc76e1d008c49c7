"""Tracks in two halves (in use, out of use) and the stick that runs along them."""

from math import hypot

from .canvas import Canvas, mix, stack
from .looks import SLATE
from .shapes import circle, ellipse

# The slot from its dark upper edge down to the light that it catches below, then its upper
# and lower corners.
IN_USE = ((14, 16, 56), (8, 9, 74), (12, 13, 98), (24, 25, 126), (50, 51, 164), (112, 122, 172),
          (46, 53, 86), (62, 69, 122))
OUT_OF_USE = ((43, 51, 79), (49, 57, 85), (53, 61, 89), (55, 64, 92), (56, 65, 94), (78, 89, 122),
              (53, 62, 90), SLATE)
PALETTE = IN_USE + OUT_OF_USE  # sixteen


def _half(length, colours):
    """A horizontal track 13 high: a slot of five rows with a light edge below it."""
    canvas = Canvas(length, 13, SLATE)
    left, width = 3, length - 6
    canvas.fill(left + 1, 9, width - 2, 1, colours[5])
    canvas.fill(left, 4, width, 5, lambda x, y: colours[y - 4])
    for x in (left, left + width - 1):
        canvas.put(x, 4, colours[6])
        canvas.put(x, 8, colours[7])
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


def _ball(stops):
    """A sphere lit from the upper left, its colours from the lit side to the far one."""
    def colour(x, y):
        dx, dy = (x + 0.5 - 6.5) / 5.6, (y + 0.5 - 6.5) / 5.6
        light = hypot(dx + 0.35, dy + 0.45)
        t = min(light / 1.5, 0.999) * 3
        i = int(t)
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
        canvas = Canvas(13, 13, SLATE)  # there is slot under it only between the ends
        ball = circle(6.5, 6.5, 6.3)
        canvas.paint(ball, rim)
        canvas.paint(ball.grow(-1), _ball(stops))
        canvas.paint(ellipse(5.3, 4.3, 2.3, 1.6), (255, 255, 255), spark)
        images.append(canvas)
    return stack(images)


def stick_mask():
    """Here 0, black, is the body of the stick; what it hardly covers is left to the track."""
    ball = circle(6.5, 6.5, 6.3)
    return [[int(ball.coverage(x, y) < 0.3) for x in range(13)] for y in range(13)]
