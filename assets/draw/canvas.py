"""A canvas of floating-point colours and the few ways of painting on it."""

from math import ceil, floor


def mix(a, b, t):
    """The colour at t between a (0) and b (1)."""
    return (a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t)


class Ramp:
    """A vertical gradient through colour stops (position, colour), positions in pixels."""

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
        return self.at(y + 0.5)


def spread(top, height, colours):
    """A ramp through evenly spaced colours from top over the height."""
    last = len(colours) - 1
    return Ramp(*((top + height * i / last, c) for i, c in enumerate(colours)))


class Canvas:
    def __init__(self, width, height, colour=(0, 0, 0)):
        self.width, self.height = width, height
        self.rows = [[colour] * width for _ in range(height)]

    def get(self, x, y):
        return self.rows[y][x]

    def put(self, x, y, colour, alpha=1.0):
        if 0 <= x < self.width and 0 <= y < self.height and alpha > 0:
            row = self.rows[y]
            row[x] = colour if alpha >= 1 else mix(row[x], colour, alpha)

    def paint(self, shape, colour, alpha=1.0):
        """Fill the shape; colour and alpha are values or functions of the pixel."""
        left, top, right, bottom = shape.box
        for y in range(max(floor(top) - 1, 0), min(ceil(bottom) + 1, self.height)):
            for x in range(max(floor(left) - 1, 0), min(ceil(right) + 1, self.width)):
                cover = shape.coverage(x, y)
                if cover > 0:
                    c = colour(x, y) if callable(colour) else colour
                    a = alpha(x, y) if callable(alpha) else alpha
                    self.put(x, y, c, cover * a)

    def halo(self, shape, colour, alpha, reach):
        """A soft glow or shadow around the shape that ends `reach` pixels outside it."""
        left, top, right, bottom = shape.grow(reach).box
        for y in range(max(floor(top), 0), min(ceil(bottom) + 1, self.height)):
            for x in range(max(floor(left), 0), min(ceil(right) + 1, self.width)):
                d = shape.distance(x + 0.5, y + 0.5)
                if d < reach:
                    fall = 1.0 - max(d, 0.0) / reach
                    self.put(x, y, colour, alpha * fall * fall)

    def fill(self, left, top, width, height, colour, alpha=1.0):
        for y in range(top, top + height):
            for x in range(left, left + width):
                self.put(x, y, colour(x, y) if callable(colour) else colour, alpha)

    def bits(self, left, top, pattern, colour, alpha=1.0):
        """Dots where the pattern's rows hold '#'."""
        for dy, line in enumerate(pattern):
            for dx, mark in enumerate(line):
                if mark == '#':
                    self.put(left + dx, top + dy, colour, alpha)

    def crop(self, left, top, width, height):
        part = Canvas(width, height)
        part.rows = [self.rows[top + y][left:left + width] for y in range(height)]
        return part

    def paste(self, other, left, top):
        for y, line in enumerate(other.rows):
            self.rows[top + y][left:left + other.width] = line

    def rounded(self):
        """The rows as whole bytes (r, g, b)."""
        return [[tuple(min(255, max(0, int(c + 0.5))) for c in p) for p in row]
                for row in self.rows]


def stack(canvases):
    """The canvases on top of one another, as a strip."""
    strip = Canvas(canvases[0].width, sum(c.height for c in canvases))
    top = 0
    for part in canvases:
        strip.paste(part, 0, top)
        top += part.height
    return strip
