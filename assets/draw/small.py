"""The small pictures: menu tile, browser icons and the frame of the tooltip."""

from math import pi, sin

from .canvas import Canvas, Ramp, mix
from .looks import BRIGHT, INK, LIGHT, SLATE, WHITE
from .shapes import polygon, rounded

MENU_PALETTE = tuple(tuple(round(c) for c in mix((14, 14, 60), (50, 57, 100), i / 15))
                     for i in range(16))


def _silk(x, y):
    """Watered silk: waves whose periods divide the tile, so that it repeats without a seam."""
    x, y = x - 0.5, y - 0.5
    u, v = 2 * pi * x / 100, 2 * pi * y / 100
    warp = sin(2 * u + v) * 0.9 + sin(u - 2 * v) * 0.7
    wave = sin(3 * (u + v) + warp) * 0.55 + sin(5 * u - 3 * v + 1.7 * warp) * 0.25
    weave = 0.35 if (x + y) % 4 < 2 else -0.35
    return MENU_PALETTE[min(max(int(5.5 + 4.2 * wave + weave + 0.5), 0), 15)]


def menu_tile(density):
    canvas = Canvas(100, 100, density=density)
    canvas.fill(0, 0, 100, 100, _silk)
    return canvas


def drive_icon(density):
    canvas = Canvas(16, 16, SLATE, density)
    canvas.paint(polygon([(4, 3), (12, 3), (15, 9), (1, 9)]), INK)
    canvas.paint(polygon([(4.6, 4), (11.4, 4), (13.6, 8.6), (2.4, 8.6)]),
                 Ramp((4, (206, 210, 255)), (9, (140, 146, 216))))
    canvas.paint(rounded(1, 8, 14, 6, 1.2), INK)
    canvas.paint(rounded(2, 9, 12, 4, 0.6), Ramp((9, (150, 156, 224)), (13, (84, 90, 160))))
    canvas.fill(2, 9, 12, 1, (196, 200, 255))
    canvas.fill(4, 11, 5, 1, (40, 44, 100))
    canvas.fill(11, 11, 2, 1, WHITE)
    canvas.fill(3, 14, 11, 1, INK, 0.35)
    return canvas


def folder_icon(density):
    canvas = Canvas(16, 16, SLATE, density)
    canvas.paint(rounded(1, 2, 7, 5, 1.2), INK)
    canvas.paint(rounded(1, 4, 14, 10, 1.2), INK)
    canvas.paint(rounded(2, 3, 5, 4, 0.6), (150, 152, 236))
    canvas.fill(2, 5, 12, 8, Ramp((5, (120, 122, 216)), (13, (84, 86, 180))))
    canvas.fill(2, 7, 12, 6, Ramp((7, (184, 186, 255)), (13, (118, 120, 226))))
    canvas.fill(2, 7, 12, 1, (224, 226, 255))
    canvas.fill(2, 14, 13, 1, INK, 0.35)
    return canvas


NOTE = ('..######', '..######', '..#....#', '..#....#', '..#....#', '.##...##', '###..###',
        '###..###', '.#....#.')


def music_icon(density):
    canvas = Canvas(16, 16, SLATE, density)
    canvas.fill(3, 15, 12, 1, INK, 0.35)
    canvas.fill(2, 1, 12, 14, INK)
    canvas.fill(3, 2, 10, 12, Ramp((2, WHITE), (14, (186, 190, 244))))
    for row, line in enumerate(('#..', '.#.', '..#')):  # the corner that is folded over
        canvas.bits(11, 1 + row, (line,), INK)
    canvas.bits(12, 1, ('##', '.#'), SLATE)
    canvas.bits(11, 2, ('#', '##'), (150, 154, 226))
    canvas.bits(4, 4, NOTE, (70, 70, 206))
    return canvas


def _tip(width, density):
    """A whole tooltip of that width, from which the pieces are cut."""
    canvas = Canvas(width, 23, INK, density)
    canvas.fill(1, 1, width - 2, 21, Ramp((1, (72, 78, 140)), (9, (44, 49, 102)),
                                          (22, (28, 31, 76))))
    canvas.fill(1, 1, width - 2, 1, LIGHT, 0.75)
    canvas.fill(1, 20, width - 2, 1, BRIGHT, 0.22)
    canvas.fill(1, 21, width - 2, 1, (8, 8, 48), 0.6)
    canvas.fill(1, 1, 1, 21, LIGHT, lambda x, y: 0.55 - 0.02 * (y - 0.5))
    canvas.fill(width - 2, 1, 1, 21, (8, 8, 48), 0.5)
    return canvas


TIP_PIECES = {106: (0, 9), 107: (9, 2), 108: (11, 9)}  # left, width


def tip_piece(number, density):
    left, width = TIP_PIECES[number]
    return _tip(20, density).crop(left, 0, width, 23)
