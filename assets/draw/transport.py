"""The round transport buttons."""

from math import hypot

from .canvas import mix, stack
from .looks import LOOKS
from .shapes import circle, coverage_mask, ellipse, polygon, rounded

RADIUS = 9.6
CENTRE = (10.5, 10.2)


def _icon(number, soft):
    """The shapes of a sign, their corners as soft as asked."""
    def bar(left, top, width, height):
        return rounded(left, top, width, height, soft / 2)

    def arrow(left, right, middle, half):
        """Points to the right when left < right, else to the left."""
        points = [(left, middle - half), (right, middle), (left, middle + half)]
        return polygon(points if left < right else points[::-1], 2 * soft)

    return {
        140: [bar(6, 6.5, 2, 8), arrow(15, 8.2, 10.5, 4.2)],
        145: [arrow(8, 15.6, 10.5, 5)],
        150: [bar(7, 6, 3 - soft, 9), bar(11 + soft, 6, 3 - soft, 9)],
        155: [rounded(7, 7, 7, 7, 0.6 + soft / 4)],
        160: [bar(13, 6.5, 2, 8), arrow(6, 12.8, 10.5, 4.2)],
    }[number]


def _shaded(look, cy):
    """A domed face: the gradient bent around a light in the upper left."""
    def colour(x, y):
        dx, dy = (x - CENTRE[0]) / RADIUS, (y - cy) / RADIUS
        t = (dy + 0.25 * dx + 1) / 2
        position = min(max(t, 0.0), 0.999) * (len(look.face) - 1)
        i = int(position)
        lit = mix(look.face[i], look.face[i + 1], position - i)
        edge = min(hypot(dx, dy), 1.0) ** 4
        return mix(lit, look.rim, 0.35 * edge)
    return colour


def state(ground, shapes, look):
    canvas = ground.crop(0, 0, ground.width, ground.height)
    cx, cy = CENTRE[0], CENTRE[1] + 0.8 * look.down
    body = circle(cx, cy, RADIUS)
    if not look.down:
        canvas.halo(body.shift(0, 0.9).grow(-0.4), LOOKS.DOME_SHADOW, 0.6, 1.4)
    canvas.paint(body, look.rim)
    face = circle(cx, cy, RADIUS - 1)
    canvas.paint(face, _shaded(look, cy))
    if look.gloss:
        sheen = ellipse(cx, cy - 4.3, 6.2, 3.9).soft()
        canvas.paint(sheen.cut(face), LOOKS.SHEEN, lambda x, y: look.gloss * (cy + 0.5 - y) / 5)
    edge = face.without(face.shift(0.5, 0.9).soft())
    canvas.paint(edge, LOOKS.DOME_LIT if look.shine else LOOKS.DOME_SUNK, look.shine or 0.5)
    below = 1 if canvas.density == 1 else 0.5
    for shape in shapes:
        canvas.paint(shape.shift(0, look.down + below), look.shade, 0.9)
    for shape in shapes:
        canvas.paint(shape.shift(0, look.down), look.ink)
    return canvas


def strip(ground, number):
    icon = _icon(number, 0.0 if ground.density == 1 else 0.5)  # of dots, soft corners are blunt
    return stack([state(ground, icon, look) for look in LOOKS.BUTTON_LOOKS])


def mask(size, density):
    body = circle(*CENTRE, RADIUS)
    return coverage_mask([body, body.shift(0, 0.8).soft()], size, size, density)
