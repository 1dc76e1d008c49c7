"""Shapes as signed distances: negative inside, positive outside, in units."""

from functools import reduce
from math import ceil, floor, hypot

BLOCK = 8  # stored pixels of which a shape asks at once whether it covers all or none


class Shape:
    """A distance function with the box outside which it covers nothing.

    `blur` is the width of its edge in units; an edge is never narrower than a stored pixel.
    """

    def __init__(self, distance, box, blur=0.0):
        self.distance, self.box, self.blur = distance, box, blur

    def inside(self, x, y, density):
        """How far inside the place is: 0 and less is outside, 1 and more is covered wholly."""
        steep = min(density, 1 / self.blur) if self.blur else density
        return 0.5 - steep * self.distance(x, y)

    def coverage(self, i, j, density):
        """How much of the stored pixel (i, j) lies inside, 0 to 1."""
        return min(max(self.inside((i + 0.5) / density, (j + 0.5) / density, density), 0.0), 1.0)

    def cells(self, width, height, density):
        """The stored pixels (i, j, coverage) that the shape covers within width x height.

        No distance grows faster than the way that one goes, so that the middle of a block tells
        whether its pixels need to be asked one by one.
        """
        margin = max(density * self.blur, 1.0)
        left, top, right, bottom = (density * edge for edge in self.box)
        first, last = max(floor(left - margin), 0), min(ceil(right + margin), width)
        lower = min(ceil(bottom + margin), height)
        half = BLOCK / 2
        sure = margin / 2 + half * 2 ** 0.5
        for y in range(max(floor(top - margin), 0), lower, BLOCK):
            for x in range(first, last, BLOCK):
                middle = density * self.distance((x + half) / density, (y + half) / density)
                if middle > sure:
                    continue
                for j in range(y, min(y + BLOCK, lower)):
                    for i in range(x, min(x + BLOCK, last)):
                        cover = 1.0 if middle < -sure else self.coverage(i, j, density)
                        if cover > 0:
                            yield i, j, cover

    def grow(self, by):
        left, top, right, bottom = self.box
        return Shape(lambda x, y: self.distance(x, y) - by,
                     (left - by, top - by, right + by, bottom + by), self.blur)

    def shift(self, dx, dy):
        left, top, right, bottom = self.box
        return Shape(lambda x, y: self.distance(x - dx, y - dy),
                     (left + dx, top + dy, right + dx, bottom + dy), self.blur)

    def soft(self, blur=1.0):
        """The shape with an edge as wide as that: at density 1 the edge that each shape has."""
        return Shape(self.distance, self.box, blur)

    def cut(self, other):
        """The part of this shape that lies inside the other one; each keeps its edge."""
        return _Common(self, other)

    def without(self, other):
        """The part of this shape that lies outside the other one; each keeps its edge."""
        return _Common(self, Shape(lambda x, y: -other.distance(x, y), None, other.blur))


class _Common(Shape):
    """What lies in two shapes."""

    def __init__(self, one, other):
        super().__init__(lambda x, y: max(one.distance(x, y), other.distance(x, y)), one.box,
                         max(one.blur, other.blur))
        self._parts = one, other

    def inside(self, x, y, density):
        return min(part.inside(x, y, density) for part in self._parts)


def rounded(left, top, width, height, radius):
    """A rectangle with round corners; a radius of half the height makes a pill."""
    cx, cy = left + width / 2, top + height / 2
    hx, hy = width / 2 - radius, height / 2 - radius

    def distance(x, y):
        qx, qy = abs(x - cx) - hx, abs(y - cy) - hy
        return hypot(max(qx, 0.0), max(qy, 0.0)) + min(max(qx, qy), 0.0) - radius

    return Shape(distance, (left, top, left + width, top + height))


def box(left, top, width, height):
    return rounded(left, top, width, height, 0.0)


def circle(cx, cy, radius):
    return Shape(lambda x, y: hypot(x - cx, y - cy) - radius,
                 (cx - radius, cy - radius, cx + radius, cy + radius))


def ellipse(cx, cy, rx, ry):
    """Good enough near the edge, which is where coverage looks."""
    def distance(x, y):
        k = hypot((x - cx) / rx, (y - cy) / ry)
        return (k - 1.0) * min(rx, ry)

    return Shape(distance, (cx - rx, cy - ry, cx + rx, cy + ry))


def _melted(a, b, softness):
    """The lesser of two distances, the more below it the nearer they are to one another."""
    if not softness:
        return min(a, b)
    h = max(softness - abs(a - b), 0.0) / softness
    return min(a, b) - h * h * softness / 4


def polygon(points, softness=0.0):
    """A convex polygon, its points clockwise on the screen, its corners as soft as asked."""
    edges = []
    for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
        length = hypot(bx - ax, by - ay)
        edges.append((ax, ay, (by - ay) / length, (ax - bx) / length))

    def distance(x, y):
        return -reduce(lambda d, e: _melted(d, e, softness),
                       (-(x - ax) * nx - (y - ay) * ny for ax, ay, nx, ny in edges))

    xs, ys = [p[0] for p in points], [p[1] for p in points]
    return Shape(distance, (min(xs), min(ys), max(xs), max(ys)))


def melt(shapes, softness):
    """The shapes joined, the joints rounded as if they had melted together."""
    def distance(x, y):
        return reduce(lambda d, e: _melted(d, e, softness), (s.distance(x, y) for s in shapes))

    boxes = [s.box for s in shapes]
    left, top = (min(b[i] for b in boxes) - softness for i in (0, 1))
    right, bottom = (max(b[i] for b in boxes) + softness for i in (2, 3))
    return Shape(distance, (left, top, right, bottom))


def coverage_mask(shapes, width, height, density, least=0.03):
    """Rows of 1 where any of the shapes covers more than the least of a stored pixel, else 0."""
    return [[int(any(s.coverage(i, j, density) > least for s in shapes))
             for i in range(width * density)] for j in range(height * density)]
