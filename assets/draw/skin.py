"""A skin as files: a folder with its rows and its pictures."""

from . import layout

FIRST = 100   # the base for which layout.py numbers the pictures
ROWS = 284    # of a skin, from its base on


class Skin:
    """Pictures are asked for by the number that they have in the first skin."""

    def __init__(self, folder, base):
        self.folder, self.base = folder, base

    def number(self, number):
        return number - FIRST + self.base

    def path(self, number, density):
        """Where the picture is kept: the plain one in the folder, finer ones below it."""
        return self.of_density(density) / f'{self.number(number)}.bmp'

    def of_density(self, density):
        return self.folder if density == 1 else self.folder / f'{density}x'

    def rows(self):
        return self.folder / 'rows.txt'

    def densities(self):
        """Those for which there are pictures. Fine ones are no duty: the player enlarges others."""
        return [d for d in layout.DENSITIES if d == 1 or self.of_density(d).is_dir()]
