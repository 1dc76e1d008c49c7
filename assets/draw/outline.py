"""Shapes as outlines: closed contours of straight lines, filled wherever one of them winds."""

from math import ceil, cos, floor, pi, sin

SLICES = 16  # of a stored pixel, from top to bottom; each is exact from left to right


class Outline:
    """Contours, each a list of points; holes wind the other way round than what they cut."""

    def __init__(self, contours, dx=0.0, dy=0.0, masks=None):
        self.contours, self.dx, self.dy = contours, dx, dy
        self._masks = {} if masks is None else masks

    def shift(self, dx, dy):
        return Outline(self.contours, self.dx + dx, self.dy + dy, self._masks)

    def cells(self, width, height, density):
        """The stored pixels (i, j, coverage) that the outline covers within width x height."""
        across, down = self.dx * density, self.dy * density
        right, below = floor(across), floor(down)
        key = density, across - right, down - below
        if key not in self._masks:
            self._masks[key] = _mask(self.contours, *key)
        for i, j, cover in self._masks[key]:
            if 0 <= i + right < width and 0 <= j + below < height:
                yield i + right, j + below, cover


def _crossings(contours, density, dx, dy):
    """For each slice the (x, direction) of the edges that cross its middle, in stored pixels."""
    slices = {}
    for contour in contours:
        points = [(x * density + dx, (y * density + dy) * SLICES) for x, y in contour]
        for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
            way = 1 if by > ay else -1
            if way < 0:
                ax, ay, bx, by = bx, by, ax, ay
            for k in range(ceil(ay - 0.5), ceil(by - 0.5)):
                x = ax + (bx - ax) * (k + 0.5 - ay) / (by - ay)
                slices.setdefault(k, []).append((x, way))
    return slices


def _spans(crossings):
    """From where to where the slice is inside."""
    winding = 0
    for x, way in sorted(crossings):
        if winding == 0:
            start = x
        winding += way
        if winding == 0 and x > start:
            yield start, x


def _mask(contours, density, dx, dy):
    cover = {}
    for k, crossings in _crossings(contours, density, dx, dy).items():
        row = cover.setdefault(k // SLICES, {})
        for start, end in _spans(crossings):
            for i in range(floor(start), ceil(end)):
                row[i] = row.get(i, 0.0) + min(end, i + 1) - max(start, i)
    return [(i, j, min(cover[j][i] / SLICES, 1.0)) for j in sorted(cover) for i in sorted(cover[j])]


def hull(points):
    """The convex contour around the points; all hulls wind the same way round."""
    points = sorted(set(points))
    sides = []
    for run in (points, points[::-1]):
        side = []
        for p in run:
            while len(side) > 1 and ((side[-1][0] - side[-2][0]) * (p[1] - side[-2][1])
                                     <= (side[-1][1] - side[-2][1]) * (p[0] - side[-2][0])):
                side.pop()
            side.append(p)
        sides += side[:-1]
    return sides


def pen(width, height, square=2.0, corners=32):
    """The outline of a pen's nib: an ellipse, the more a rectangle the greater `square` is."""
    nib = []
    for k in range(corners):
        c, s = cos(2 * pi * k / corners), sin(2 * pi * k / corners)
        nib.append((abs(c) ** (2 / square) * width / 2 * (1 if c > 0 else -1),
                    abs(s) ** (2 / square) * height / 2 * (1 if s > 0 else -1)))
    return nib


def sweep(strokes, nib):
    """The contours of what the nib covers when it is drawn along strokes, lists of points."""
    contours = []
    for stroke in strokes:
        for (ax, ay), (bx, by) in zip(stroke, stroke[1:] or stroke):
            contours.append(hull([(ax + x, ay + y) for x, y in nib]
                                 + [(bx + x, by + y) for x, y in nib]))
    return contours


def curve(a, b, c, d, steps=12):
    """A Bezier curve from a to d as points."""
    def at(t):
        u = 1 - t
        return tuple(u * u * u * p + 3 * u * u * t * q + 3 * u * t * t * r + t * t * t * s
                     for p, q, r, s in zip(a, b, c, d))
    return [at(k / steps) for k in range(steps + 1)]


def arc(cx, cy, rx, ry, start, end, square=2.0, steps=24):
    """A piece of an ellipse as points, in degrees: 0 is right, 90 below."""
    def at(degrees):
        c, s = cos(degrees * pi / 180), sin(degrees * pi / 180)
        return (cx + rx * abs(c) ** (2 / square) * (1 if c > 0 else -1),
                cy + ry * abs(s) ** (2 / square) * (1 if s > 0 else -1))
    return [at(start + (end - start) * k / steps) for k in range(steps + 1)]
