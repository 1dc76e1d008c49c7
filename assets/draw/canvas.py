"""A canvas of floating-point colours and the few ways of painting on it.

Everything is given in units; a canvas of density d holds d x d stored pixels for each. Colours and
strengths that depend on the place are functions of the middle of a stored pixel, in units.
"""

from math import ceil, floor


def mix(a, b, t):
    """The colour at t between a (0) and b (1)."""
    return (a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t)


class Ramp:
    """A vertical gradient through colour stops (position, colour), positions in units."""

    def __init__(self, *stops):
        self.stops = stops

    def at(self, position):
        before = self.stops[0]
        if position <= before[0]:
            return before[1]
        for stop in self.stops[1:]:
            if position <= stop[0]:
                return mix(before[1], stop[1], (position - before[0]) / (stop[0] - before[0]))
            before = stop
        return before[1]

    def __call__(self, x, y):
        return self.at(y)


def spread(top, height, colours):
    """A ramp through evenly spaced colours from top over the height."""
    last = len(colours) - 1
    return Ramp(*((top + height * i / last, c) for i, c in enumerate(colours)))


UP, DOWN, LEFT, RIGHT = (0, -1), (0, 1), (-1, 0), (1, 0)


class Canvas:
    def __init__(self, width, height, colour=(0, 0, 0), density=1):
        self.width, self.height, self.density = width, height, density
        self.rows = [[colour] * (width * density) for _ in range(height * density)]

    def _blend(self, i, j, colour, alpha, cover=1.0):
        """Onto one stored pixel."""
        d = self.density
        if callable(alpha):
            alpha = alpha((i + 0.5) / d, (j + 0.5) / d)
        alpha *= cover
        if alpha > 0:
            if callable(colour):
                colour = colour((i + 0.5) / d, (j + 0.5) / d)
            row = self.rows[j]
            row[i] = colour if alpha >= 1 else mix(row[i], colour, alpha)

    def paint(self, shape, colour, alpha=1.0):
        """Fill the shape."""
        for i, j, cover in shape.cells(len(self.rows[0]), len(self.rows), self.density):
            self._blend(i, j, colour, alpha, cover)

    def halo(self, shape, colour, alpha, reach):
        """A soft glow or shadow around the shape that ends `reach` units outside it."""
        d = self.density
        left, top, right, bottom = (d * edge for edge in shape.grow(reach).box)
        for j in range(max(floor(top), 0), min(ceil(bottom) + 1, len(self.rows))):
            for i in range(max(floor(left), 0), min(ceil(right) + 1, len(self.rows[0]))):
                away = shape.distance((i + 0.5) / d, (j + 0.5) / d)
                if away < reach:
                    fall = 1.0 - max(away, 0.0) / reach
                    self._blend(i, j, colour, alpha * fall * fall)

    def fill(self, left, top, width, height, colour, alpha=1.0):
        """A rectangle whose edges lie between stored pixels."""
        d = self.density
        for j in range(max(round(top * d), 0), min(round((top + height) * d), len(self.rows))):
            for i in range(max(round(left * d), 0),
                           min(round((left + width) * d), len(self.rows[0]))):
                self._blend(i, j, colour, alpha)

    def line(self, left, top, width, height, colour, alpha, towards):
        """A line one unit thick, stronger at the side that it turns `towards`: (1, 0) is right."""
        def strength(x, y):
            off = (x - left - width / 2) * towards[0] + (y - top - height / 2) * towards[1]
            return (alpha(x, y) if callable(alpha) else alpha) * (1 + 0.8 * off)
        self.fill(left, top, width, height, colour, strength)

    def bits(self, left, top, pattern, colour, alpha=1.0):
        """Units filled where the pattern's rows hold '#'."""
        for dy, line in enumerate(pattern):
            for dx, mark in enumerate(line):
                if mark == '#':
                    self.fill(left + dx, top + dy, 1, 1, colour, alpha)

    def crop(self, left, top, width, height):
        d = self.density
        part = Canvas(width, height, density=d)
        part.rows = [row[left * d:(left + width) * d]
                     for row in self.rows[top * d:(top + height) * d]]
        return part

    def paste(self, other, left, top):
        """The other canvas, of the same density; all of it has to fit."""
        d = self.density
        for j, line in enumerate(other.rows, top * d):
            self.rows[j][left * d:left * d + len(line)] = line

    def rounded(self):
        """The stored rows as whole bytes (r, g, b)."""
        known = {}

        def whole(colour):
            if colour not in known:
                known[colour] = tuple(min(255, max(0, int(c + 0.5))) for c in colour)
            return known[colour]

        return [[whole(colour) for colour in row] for row in self.rows]


def stack(canvases):
    """The canvases on top of one another, as a strip."""
    strip = Canvas(canvases[0].width, sum(c.height for c in canvases),
                   density=canvases[0].density)
    top = 0
    for part in canvases:
        strip.paste(part, 0, top)
        top += part.height
    return strip
