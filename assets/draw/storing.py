"""How pictures are kept: their palettes, and what makes the fine ones pack well."""

from . import bmp, quantise
from .looks import LOOKS

# Of fine pictures: how many colours, and by how many levels a channel may be off for the sake of a
# longer run. Pills and tracks have no gradients that go across but the narrow ones at their edges.
DOMED, UPRIGHT = (256, 2), (160, 4)
NEAR = 2  # stored pixels


def smoothed_outside(rows, mask):
    """The rows of a strip with what its mask hides drawn out flat to the left and right.

    Close to the mask all stays, for who averages the picture down.
    """
    reach = [[any(line[max(i - NEAR, 0):i + NEAR + 1]) for i in range(len(line))] for line in mask]
    smooth = []
    for j, row in enumerate(rows):
        k = j % len(mask)
        shown = [i for near in reach[max(k - NEAR, 0):k + NEAR + 1]
                 for i, seen in enumerate(near) if seen]
        first, last = (min(shown), max(shown)) if shown else (0, len(row) - 1)
        smooth.append([row[first]] * first + row[first:last + 1]
                      + [row[last]] * (len(row) - 1 - last))
    return smooth


def adapted(rows, density, economy):
    """Palette and indices; those of a fine picture such that it packs well."""
    if density == 1:
        return quantise.adaptive(rows, 256, (LOOKS.FLOOR,))
    colours, tolerance = economy
    palette, indices = quantise.adaptive(rows, colours, (LOOKS.FLOOR,), surfaces=0.5)
    return palette, quantise.longer_runs(rows, palette, indices, tolerance, (LOOKS.FLOOR,))


def stored(palette, indices, compress, density):
    """Of 8 bits; a fine picture carries no more of the palette than it uses, and is packed."""
    if density == 1:
        return bmp.indexed(indices, palette, 8, compress)
    bits = 4 if len(palette) <= 16 else 8
    return min(bmp.indexed(indices, palette, 8, compress=True, fill=False),
               bmp.indexed(indices, palette, bits, fill=False), key=len)
