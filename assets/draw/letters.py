"""The skin's two faces as outlines: what draw/pixelfont.py is, where there is room for curves.

A letter is a list of strokes, along which a nib that is broader than high is drawn. It is as wide
as the letter of the pixel face. Cap line at 0, top of the small letters at 2, base line at 7.
"""

from .outline import Outline, arc, curve, pen, sweep

STEM, BAR = 1.75, 1.2  # the nib: how thick upright strokes are, and lying ones
SQUARE = 2.5           # bowls, and the ends of strokes, have shoulders
L, T, B = STEM / 2, BAR / 2, 7 - BAR / 2  # where the nib goes at the left, the top and the bottom
X = 2 + BAR / 2
MID = (X + B) / 2


def _bowl(left, right, start=0, end=360, top=X, bottom=B):
    return arc((left + right) / 2, (top + bottom) / 2, (right - left) / 2, (bottom - top) / 2,
               start, end, SQUARE)


def _arch(left, right, top, height, bottom=B):
    """From the foot of a stem at the left over to the foot of one at the right."""
    bend = arc((left + right) / 2, top + height, (right - left) / 2, height, 180, 360, SQUARE)
    return [(left, bottom)] + bend + [(right, bottom)]


def _box(width):
    """Left and right of the nib's way in a letter of that width."""
    return L, width - L


def _caps():
    l, r = _box(6)
    yield 'A', [_arch(l, r, T, 2.4), [(l, 4.1), (r, 4.1)]]
    yield 'R', [[(l, B), (l, T), (2.8, T)] + arc(2.8, (T + 3.95) / 2, r - 2.8, (3.95 - T) / 2,
                                                 270, 450, SQUARE) + [(l, 3.95)],
                [(3.0, 3.95), (r + 0.05, B)]]
    l, r = _box(5)
    yield 'E', [[(r - 0.1, T), (l, T), (l, B), (r - 0.1, B)], [(l, 3.4), (r - 0.5, 3.4)]]
    yield 'L', [[(l, T), (l, B), (r, B)]]
    l, r = 0.7, 3.3
    yield 'I', [[(l, T), (r, T)], [(2, T), (2, B)], [(l, B), (r, B)]]
    l, r = _box(7)
    yield 'M', [[(l, B), (l, T), (3.5, 3.7), (r, T), (r, B)]]


def _small():
    yield 'c', [_bowl(L, 3.5, -52, -308)]
    l, r = _box(5)
    yield 'd', [_bowl(l, r), [(r, T), (r, B)]]
    yield 'e', [[(l, MID), (r, MID)] + _bowl(l, r, 0, -305)]
    yield 'n', [[(l, X), (l, B)], _arch(l, r, X, 1.7)]
    yield 'o', [_bowl(l, r)]
    yield 's', [curve((r - 0.1, X + 0.25), (3.3, X - 0.1), (1.2, X - 0.25), (l + 0.1, X + 0.75))
                + curve((l + 0.1, X + 0.75), (0.9, MID), (4.1, MID - 0.1), (r - 0.1, B - 0.85))
                + curve((r - 0.1, B - 0.85), (4.2, B + 0.25), (2.2, B + 0.1), (l, B - 0.25))]
    yield 'x', [[(l, X), (r, B)], [(r, X), (l, B)]]
    yield 'y', [[(l, X), (l, 5)] + arc(2.5, 5, 2.5 - l, B - 5, 180, 90, SQUARE) + [(r, B)],
                [(r, X), (r, 7)] + arc(2.5, 7, r - 2.5, 2 - BAR / 2, 0, 100, SQUARE)
                + [(l + 0.1, 9 - BAR / 2)]]
    yield 'm', [[(L, X), (L, B)], _arch(L, 4, X, 1.6), _arch(4, 8 - L, X, 1.6)]
    yield 'i', [[(1, X), (1, B)], [(1, T), (1, T + 0.15)]]
    yield 'r', [[(L, X), (L, B)],
                [(L, 4.6)] + arc(2.9, X + 1.6, 2.9 - L, 1.6, 180, 285, SQUARE)]
    yield 't', [[(1.2, 1 + BAR / 2), (1.2, 5.2)]
                + arc(2.7, 5.2, 1.5, B - 5.2, 180, 90, SQUARE) + [(3.2, B)],
                [(0.7, X), (3.3, X)]]
    yield 'f', [[(3.4, T), (2.7, T)] + arc(2.7, 2.2, 1.5, 2.2 - T, 270, 180, SQUARE) + [(1.2, B)],
                [(0.7, X), (3.3, X)]]


def _mark():
    """The thin capitals of the maker's mark, five high."""
    t, b, m = 0.5, 4.5, 2.5
    yield 'V', [[(0.5, t), (2.5, b), (4.5, t)]]
    yield 'E', [[(3.5, t), (0.5, t), (0.5, b), (3.5, b)], [(0.5, m), (3.1, m)]]
    yield 'L', [[(0.5, t), (0.5, b), (3.5, b)]]
    yield 'D', [[(2.4, t), (0.5, t), (0.5, b), (2.4, b)] + arc(2.4, m, 2.1, 2, 90, -90)]
    yield 'R', [[(0.5, b), (0.5, t), (3.2, t)] + arc(3.2, 1.6, 1.3, 1.1, -90, 90) + [(0.5, 2.7)],
                [(2.6, 2.7), (4.5, b)]]
    yield 'I', [[(0.5, t), (0.5, b)]]
    yield 'N', [[(0.5, b), (0.5, t), (4.5, b), (4.5, t)]]


CHUNKY = {letter: Outline(sweep(strokes, pen(STEM, BAR, SQUARE)))
          for part in (_caps(), _small()) for letter, strokes in part}
TINY = {letter: Outline(sweep(strokes, pen(0.85, 0.85))) for letter, strokes in _mark()}
