"""Shapes as signed distances: negative inside, positive outside, in pixels."""

from math import hypot


class Shape:
    """A distance function with the box outside which it covers nothing."""

    def __init__(self, distance, box):
        self.distance = distance
        self.box = box  # left, top, right, bottom

    def coverage(self, x, y):
        """How much of the pixel whose corner is (x, y) lies inside, 0 to 1."""
        d = 0.5 - self.distance(x + 0.5, y + 0.5)
        return 0.0 if d <= 0 else 1.0 if d >= 1 else d

    def grow(self, by):
        left, top, right, bottom = self.box
        return Shape(lambda x, y: self.distance(x, y) - by,
                     (left - by, top - by, right + by, bottom + by))

    def shift(self, dx, dy):
        left, top, right, bottom = self.box
        return Shape(lambda x, y: self.distance(x - dx, y - dy),
                     (left + dx, top + dy, right + dx, bottom + dy))

    def cut(self, other):
        """The part of this shape that lies inside the other one."""
        return Shape(lambda x, y: max(self.distance(x, y), other.distance(x, y)), self.box)

    def without(self, other):
        """The part of this shape that lies outside the other one."""
        return Shape(lambda x, y: max(self.distance(x, y), -other.distance(x, y)), self.box)


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


def polygon(points):
    """A convex polygon, its points clockwise on the screen."""
    edges = []
    for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
        length = hypot(bx - ax, by - ay)
        edges.append((ax, ay, (by - ay) / length, (ax - bx) / length))
    xs, ys = [p[0] for p in points], [p[1] for p in points]
    return Shape(lambda x, y: max((x - ax) * nx + (y - ay) * ny for ax, ay, nx, ny in edges),
                 (min(xs), min(ys), max(xs), max(ys)))


def melt(shapes, softness):
    """The shapes joined, the joints rounded as if they had melted together."""
    def distance(x, y):
        d = shapes[0].distance(x, y)
        for shape in shapes[1:]:
            e = shape.distance(x, y)
            h = max(softness - abs(d - e), 0.0) / softness
            d = min(d, e) - h * h * softness / 4
        return d

    boxes = [s.box for s in shapes]
    left, top = (min(b[i] for b in boxes) - softness for i in (0, 1))
    right, bottom = (max(b[i] for b in boxes) + softness for i in (2, 3))
    return Shape(distance, (left, top, right, bottom))
