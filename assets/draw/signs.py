"""Signs and words: dots where a unit is one stored pixel, outlines where it is more."""

from collections import namedtuple

from . import letters, pixelfont

Sign = namedtuple('Sign', 'bits outline')
Face = namedtuple('Face', 'bits outlines gap')

CHUNKY = Face(pixelfont.CHUNKY, letters.CHUNKY, 1)
TINY = Face(pixelfont.TINY, letters.TINY, 2)
CAPITAL = 7  # how high the capitals of the chunky face are


def width(bits):
    return max(len(row) for row in bits)


def draw(canvas, left, top, sign, colour, alpha=1.0):
    if canvas.density == 1:
        canvas.bits(left, top, sign.bits, colour, alpha)
    else:
        canvas.paint(sign.outline.shift(left, top), colour, alpha)


def centred(canvas, wide, high):
    """Left and top of a sign in the middle of a button, below which lies one unit of shadow."""
    across, down = canvas.width - wide, canvas.height - high
    return (across // 2, down // 2) if canvas.density == 1 else (across / 2, (down - 1) / 2)


def measure(text, face):
    return sum(width(face.bits[c]) for c in text) + face.gap * (len(text) - 1)


def write(canvas, left, top, text, colour, face, alpha=1.0):
    for c in text:
        draw(canvas, left, top, Sign(face.bits[c], face.outlines[c]), colour, alpha)
        left += width(face.bits[c]) + face.gap
