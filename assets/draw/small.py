"""The small pictures: menu tile, browser icons and the frame of the tooltip."""

from math import cos, pi, sin

from .canvas import DOWN, LEFT, RIGHT, UP, Canvas, Ramp, mix
from .looks import LOOKS
from .outline import Outline, hull
from .shapes import box, polygon, rounded
from .signs import Sign, draw

def menu_palette():
    return tuple(tuple(round(c) for c in mix(*LOOKS.SILK, i / 15)) for i in range(16))


def _silk(x, y, threads, palette):
    """Watered silk: waves whose periods divide the tile, so that it repeats without a seam."""
    u, v = 2 * pi * (x - 0.5) / 100, 2 * pi * (y - 0.5) / 100
    warp = sin(2 * u + v) * 0.9 + sin(u - 2 * v) * 0.7
    wave = sin(3 * (u + v) + warp) * 0.55 + sin(5 * u - 3 * v + 1.7 * warp) * 0.25
    weave = threads * (1 if (x + y - 1) % 4 < 2 else -1)
    return palette[min(max(int(5.5 + 4.2 * wave + weave + 0.5), 0), 15)]


def menu_tile(density):
    canvas = Canvas(100, 100, density=density)
    threads = 0.35 if density == 1 else 0  # they hide steps that finer pictures do not show
    palette = menu_palette()
    canvas.fill(0, 0, 100, 100, lambda x, y: _silk(x, y, threads, palette))
    return canvas


def _icon(density):
    """A canvas for an icon, and how much of their corners its shapes lose: none of dots."""
    return Canvas(16, 16, LOOKS.FLOOR, density), 0 if density == 1 else 1


def _gleam(canvas, left, top, width, colour):
    """A bright edge: thinner where there is room for less than a unit."""
    canvas.fill(left, top, width, 1 if canvas.density == 1 else 0.5, colour)


def drive_icon(density):
    canvas, soft = _icon(density)
    canvas.paint(box(3, 14, 11, 1).soft(), LOOKS.INK, 0.35)
    canvas.paint(polygon([(4, 3), (12, 3), (15, 9), (1, 9)], soft), LOOKS.INK)
    canvas.paint(polygon([(4.6, 4), (11.4, 4), (13.6, 8.6), (2.4, 8.6)], soft / 2),
                 Ramp(*zip((4, 9), LOOKS.DRIVE_LID)))
    canvas.paint(rounded(1, 8, 14, 6, 1.2), LOOKS.INK)
    canvas.paint(rounded(2, 9, 12, 4, 0.6), Ramp(*zip((9, 13), LOOKS.DRIVE_FRONT)))
    _gleam(canvas, 2 + soft / 2, 9, 12 - soft, LOOKS.DRIVE_GLEAM)
    canvas.paint(rounded(4, 11, 5, 1, soft / 2), LOOKS.DRIVE_SLIT)
    canvas.paint(rounded(11, 11, 2, 1, soft / 2), LOOKS.SHEEN)
    return canvas


def folder_icon(density):
    canvas, soft = _icon(density)
    canvas.paint(box(2, 14, 13, 1).soft(), LOOKS.INK, 0.35)
    canvas.paint(rounded(1, 2, 7, 5, 1.2), LOOKS.INK)
    canvas.paint(rounded(1, 4, 14, 10, 1.2), LOOKS.INK)
    canvas.paint(rounded(2, 3, 5, 4, 0.6), LOOKS.FOLDER_TAB)
    canvas.paint(rounded(2, 5, 12, 8, soft / 2), Ramp(*zip((5, 13), LOOKS.FOLDER_BACK)))
    canvas.paint(rounded(2, 7, 12, 6, soft / 2), Ramp(*zip((7, 13), LOOKS.FOLDER_FRONT)))
    _gleam(canvas, 2 + soft / 2, 7, 12 - soft, LOOKS.FOLDER_GLEAM)
    return canvas


def _note_head(cx, cy):
    """An oval that leans to the right."""
    ring = [(1.65 * cos(2 * pi * k / 32), 1.15 * sin(2 * pi * k / 32)) for k in range(32)]
    return hull([(cx + x, cy + y - 0.25 * x) for x, y in ring])


NOTE = Sign(('..######', '..######', '..#....#', '..#....#', '..#....#', '.##...##', '###..###',
             '###..###', '.#....#.'),
            Outline([hull([(2, 1.4), (7.2, 0.7), (7.2, 2.4), (2, 3.1)]),
                     hull([(2, 2), (3, 2), (3, 7.8), (2, 7.8)]),
                     hull([(6.2, 1.5), (7.2, 1.5), (7.2, 7.1), (6.2, 7.1)]),
                     _note_head(1.4, 7.8), _note_head(5.6, 7.1)]))


def _white():
    """The sheet's surface."""
    return Ramp(*zip((2, 14), LOOKS.PAPER))


def _sheet_of_dots(canvas):
    canvas.fill(2, 1, 12, 14, LOOKS.INK)
    canvas.fill(3, 2, 10, 12, _white())
    for row, line in enumerate(('#..', '.#.', '..#')):  # the corner that is folded over
        canvas.bits(11, 1 + row, (line,), LOOKS.INK)
    canvas.bits(12, 1, ('##', '.#'), LOOKS.FLOOR)
    canvas.bits(11, 2, ('#', '##'), LOOKS.PAPER_FOLD)


def _sheet(canvas):
    canvas.paint(polygon([(2, 1), (11, 1), (14, 4), (14, 15), (2, 15)], 0.8), LOOKS.INK)
    canvas.paint(polygon([(3, 2), (10.6, 2), (13, 4.4), (13, 14), (3, 14)], 0.4), _white())
    canvas.paint(polygon([(10, 1.4), (13.6, 5), (10, 5)], 0.4), LOOKS.INK)
    canvas.paint(polygon([(10.8, 2.4), (12.6, 4.2), (10.8, 4.2)], 0.3), LOOKS.PAPER_FOLD)


def music_icon(density):
    canvas, _ = _icon(density)
    canvas.paint(box(3, 15, 12, 1).soft(), LOOKS.INK, 0.35)
    (_sheet_of_dots if density == 1 else _sheet)(canvas)
    draw(canvas, 4, 4, NOTE, LOOKS.NOTE_INK)
    return canvas


def _tip(width, density):
    """A whole tooltip of that width, from which the pieces are cut."""
    canvas = Canvas(width, 23, LOOKS.INK, density)
    canvas.fill(1, 1, width - 2, 21, Ramp(*zip((1, 9, 22), LOOKS.TIP)))
    canvas.line(1, 1, width - 2, 1, LOOKS.TEXT, 0.75, UP)
    canvas.fill(1, 20, width - 2, 1, LOOKS.GLOW, 0.22)
    canvas.line(1, 21, width - 2, 1, LOOKS.TIP_SHADE, 0.6, DOWN)
    canvas.line(1, 1, 1, 21, LOOKS.TEXT, lambda x, y: 0.55 - 0.02 * (y - 0.5), LEFT)
    canvas.line(width - 2, 1, 1, 21, LOOKS.TIP_SHADE, 0.5, RIGHT)
    return canvas


TIP_PIECES = {106: (0, 9), 107: (9, 2), 108: (11, 9)}  # left, width


def tip_piece(number, density):
    left, width = TIP_PIECES[number]
    return _tip(20, density).crop(left, 0, width, 23)
