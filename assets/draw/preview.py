"""Mocks of the player, put together from the written pictures as the player does it."""

from . import layout, png
from .bmp import Picture
from .canvas import Canvas, mix
from .looks import LOOKS

NORMAL, PRESSED, DISABLED, LATCHED = 0, 1, 2, 3
BLACK, WHITE = (0, 0, 0), (255, 255, 255)  # in masks
GROUND = (104, 108, 112)
MARGIN = 12


class Album:
    """The pictures of one density, read when first asked for."""

    def __init__(self, skin, density=1):
        self.skin, self.density, self.read = skin, density, {}

    def __getitem__(self, number):
        if number not in self.read:
            self.read[number] = Picture(self.skin.path(number, self.density).read_bytes()).rows
        return self.read[number]

    def canvas(self, width, height, colour=BLACK):
        return Canvas(width, height, colour, self.density)


def blit(canvas, rows, left, top):
    """Stored rows at a place in units, as much of them as lies on the canvas."""
    d = canvas.density
    for line, row in zip(canvas.rows[top * d:], rows):
        fits = row[:len(line) - left * d]
        line[left * d:left * d + len(fits)] = fits


def image(canvas, album, number, mask, left, top, index, clear=BLACK):
    """One image of a strip, cut by its mask."""
    d, shape = canvas.density, album[mask]
    for j, row in enumerate(shape):
        line = canvas.rows[top * d + j]
        for i, colour in enumerate(row):
            if colour != clear and left * d + i < len(line):
                line[left * d + i] = album[number][len(shape) * index + j][i]


def slider(canvas, album, number, place, value, enabled=True, state=NORMAL):
    """A horizontal slider: the track stretched to its width, and the stick on it."""
    left, top, width, height = place
    d, track = canvas.density, album[number]
    first, across = 0 if enabled else height * d, width * d
    blit(canvas, [[row[i * len(row) // across] for i in range(across)]
                  for row in track[first:first + height * d]], left, top)
    if enabled:
        image(canvas, album, 221, 222, left + round((width - 13) * value), top, state, WHITE)


def scroller(canvas, album, left, top, value, enabled=True):
    half = 13 * canvas.density
    first = 0 if enabled else half
    blit(canvas, [row[first:first + half] for row in album[280]], left, top)
    if enabled:
        image(canvas, album, 221, 222, left, top + round(168 * value), NORMAL, WHITE)


def words(canvas, left, top, lengths, colour):
    """Text hinted at by bars."""
    for length in lengths:
        canvas.fill(left, top, length, 5, colour, 0.75)
        left += length + 3


def controls(canvas, album, state):
    """The window with all its controls in one state; LATCHED lights the toggles only."""
    blit(canvas, album[100], 0, 0)
    for number, (mask, left, top) in layout.ON_WINDOW.items():
        index = state if state != LATCHED or number in layout.TOGGLES else NORMAL
        image(canvas, album, number, mask, left, top, index)
    enabled = state != DISABLED
    stick = PRESSED if state == PRESSED else NORMAL
    slider(canvas, album, 220, layout.SEEK, 0.37, enabled, stick)
    slider(canvas, album, 230, layout.VOLUME, 0.75, enabled, stick)
    words(canvas, layout.TITLE[0] + 30, layout.TITLE[1] + 4, (20, 34, 8, 26, 18),
          LOOKS.TITLE_TEXT)
    words(canvas, layout.DISPLAY[0] + 22, layout.DISPLAY[1] + 4, (12, 14), LOOKS.DISPLAY_TEXT)


def playlist(canvas):
    left, top, width, _ = layout.LIST
    for i in range(13):
        y = top + 1 + 13 * i
        if i == 4:
            for x in range(width - 12):
                canvas.fill(left + x, y, 1, 13, mix(*LOOKS.SELECTION, x / (width - 12)))
        words(canvas, left + 4, y + 4, (10, 22 + i * 7 % 19, 30, 12 + i * 5 % 23),
              LOOKS.PULSE[1] if i == 4 else LOOKS.LIST_TEXT)
        words(canvas, left + width - 36, y + 4, (18,), LOOKS.LIST_TEXT)
    canvas.fill(left + width - 10, top, 10, 181, LOOKS.FLOOR)
    canvas.fill(left + width - 10, top + 20, 10, 60, LOOKS.THUMB_EDGE)
    for x in range(8):
        canvas.fill(left + width - 9 + x, top + 21, 1, 58, mix(*LOOKS.THUMB, 1 - x / 7))


def effects(canvas, album, enabled=True):
    left, top = layout.LIST[:2]
    for i, (x, y, w, h) in enumerate(layout.EFFECT_SLIDERS):
        words(canvas, left + 24, top + y + 4, (22 + 5 * i % 17, 12), LOOKS.LIST_TEXT)
        slider(canvas, album, 230, (left + x, top + y, w, h), (0.5, 0.5, 0, 0.2, 0.6, 0.45, 1)[i],
               enabled)
    image(canvas, album, 365, 366, left + layout.RESET[0], top + layout.RESET[1],
          NORMAL if enabled else DISABLED)


def lyrics(canvas, album):
    left, top, width, _ = layout.LIST
    for i in range(12):
        words(canvas, left + 6, top + 5 + 14 * i, (30 + 7 * i % 31, 40, 16 + 11 * i % 37),
              LOOKS.LIST_TEXT)
    scroller(canvas, album, left + width - 13, top, 0.3)


def browser(canvas, album):
    left, top = layout.LIST[:2]
    for i in range(10):
        number = 103 if i == 0 else 104 if i < 4 else 105
        blit(canvas, album[number], left + 2, top + 1 + 16 * i)
        words(canvas, left + 24, top + 6 + 16 * i, (30 + 7 * i % 31, 18), LOOKS.LIST_TEXT)


def windows(album):
    """Four windows, each in another state and with another panel."""
    mocks = []
    for state in (NORMAL, PRESSED, DISABLED, LATCHED):
        canvas = album.canvas(*layout.WINDOW)
        controls(canvas, album, state)
        if state == NORMAL:
            playlist(canvas)
        elif state == PRESSED:
            browser(canvas, album)
        elif state == DISABLED:
            lyrics(canvas, album)
        else:
            effects(canvas, album)
        mocks.append(canvas)
    return mocks


def tip(album, width):
    canvas = album.canvas(width, 23)
    for x in range(9, width - 9, 2):
        blit(canvas, album[107], x, 0)
    blit(canvas, album[106], 0, 0)
    blit(canvas, album[108], width - 9, 0)
    words(canvas, 12, 9, (26, 30), LOOKS.TIP_TEXT)
    return canvas


def menu(album, width, height):
    canvas = album.canvas(width, height)
    for y in range(0, height, 100):
        for x in range(0, width, 100):
            blit(canvas, album[102], x, y)
    for i in range(height // 19):
        words(canvas, 24, 7 + 19 * i, (34, 20 + i * 9 % 30), LOOKS.MENU_TEXT)
    return canvas


def sheet(album):
    """Every picture but the window and the menu tile, in rows."""
    canvas = album.canvas(2 * layout.WINDOW[0] + 3 * MARGIN, 268, GROUND)
    x, y, tallest = MARGIN, MARGIN, 0
    order = sorted((n for n in layout.PICTURES if n not in (100, 102)),
                   key=lambda n: (-layout.PICTURES[n][1], n))
    for number in order:
        width, height = layout.PICTURES[number][:2]
        if x + width > canvas.width - MARGIN:
            x, y, tallest = MARGIN, y + tallest + 8, 0
        blit(canvas, album[number], x, y)
        x, tallest = x + width + 8, max(tallest, height)
    return canvas


def overview(album, mocks):
    """The mocks of the window, a menu, tooltips, and every strip, on one canvas."""
    width, height = layout.WINDOW
    below = 2 * (height + MARGIN) + MARGIN
    strips = sheet(album)
    canvas = album.canvas(strips.width, below + 136 + strips.height, GROUND)
    for i, mock in enumerate(mocks):
        canvas.paste(mock, MARGIN + i % 2 * (width + MARGIN), MARGIN + i // 2 * (height + MARGIN))
    canvas.paste(menu(album, 240, 130), MARGIN, below)
    canvas.paste(tip(album, 100), 290, below)
    canvas.paste(tip(album, 80), 420, below)
    canvas.paste(strips, 0, below + 136)
    return canvas


def _finest(skin, scale):
    """The pictures that are shown at that scale: those of a density that divides it."""
    return max(d for d in skin.densities() if scale % d == 0)


def _side_by_side(canvases, scale):
    """The rows of the canvases, each enlarged to the scale."""
    sides = []
    for canvas in canvases:
        by = scale // canvas.density
        sides.append([[pixel for pixel in row for _ in range(by)]
                      for row in canvas.rounded() for _ in range(by)])
    return [sum(rows, []) for rows in zip(*sides)]


def write(skin, out, scale):
    """An overview at the scale, and each mock: the plain pictures at the left, the finest right."""
    album = Album(skin, _finest(skin, scale))
    mocks = windows(album)
    sheets = [(out, [overview(album, mocks)])]
    plain = windows(Album(skin))
    for name, *pair in zip(('normal', 'pressed', 'disabled', 'latched'), plain, mocks):
        sheets.append((out.with_name(f'{out.stem}_{name}{out.suffix}'),
                       pair if album.density > 1 else pair[:1]))
    for path, canvases in sheets:
        png.write(path, _side_by_side(canvases, scale))
