"""The signs on the small buttons beside the title."""

from .outline import Outline, hull, pen, sweep
from .signs import Sign

NIB = pen(1.5, 1.5, 2.5)


def _drawn(*strokes):
    return Outline(sweep(strokes, NIB))


def _turned(contours):
    """What stands, lying on its left side; the lower end comes to point left."""
    return [[(8 - y, x) for x, y in contour] for contour in contours]


CROSS = Sign(('##....##', '.##..##.', '..####..', '..####..', '.##..##.', '##....##'),
             _drawn([(1, 0.75), (7, 5.25)], [(1, 5.25), (7, 0.75)]))
BAR = Sign(('', '', '', '#######', '#######'), _drawn([(0.75, 4), (6.25, 4)]))
LINES = Sign(('########', '', '########', '', '########'),
             Outline(sweep([[(0.5, y), (7.5, y)] for y in (0.5, 2.5, 4.5)], pen(1, 1))))

# A drawing pin that is stuck in: head, neck, collar and needle.
_PIN = (sweep([[(0.6, 1.05), (4.4, 1.05)], [(0.55, 4.5), (4.45, 4.5)]], pen(1.1, 1.1, 2.5))
        + [hull([(1.3, 1), (3.7, 1), (4.0, 4.5), (1.0, 4.5)]),
           hull([(1.9, 4.5), (3.1, 4.5), (2.8, 7), (2.2, 7)])])
PIN_UP = Sign(('#####', '.###.', '.#.#.', '.###.', '#####', '..#..', '..#..'), Outline(_PIN))
PIN_LYING = Sign(('...#...#', '...#####', '####.###', '...#####', '...#...#'),
                 Outline(_turned(_PIN)))

# strip: the sign of each image
OF_STATE = {109: [CROSS] * 3, 114: [BAR] * 3, 119: [LINES] * 3,
            124: [PIN_LYING] * 3 + [PIN_UP] * 3}
