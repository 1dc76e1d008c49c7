"""All pictures of the skin: which module draws each, what it lies on, and how it is stored."""

from . import bmp, buttons, layout, quantise, sliders, small, storing, transport, window
from .storing import DOMED, UPRIGHT

BLACK_AND_WHITE = ((0, 0, 0), (255, 255, 255))
PALETTES = {102: small.menu_palette, 220: sliders.palette, 230: sliders.palette,
            280: sliders.palette}  # picked by hand, for the plain pictures
SMALL = {102: small.menu_tile, 103: small.drive_icon, 104: small.folder_icon,
         105: small.music_icon, 221: sliders.stick}
TRACKS = {220: (sliders.horizontal, 270), 230: (sliders.horizontal, 85),
          280: (sliders.vertical, 181)}


def window_picture(density):
    """The window's bytes, and the window as it looks once its palette is chosen."""
    canvas = window.draw(density)
    palette, indices = storing.adapted(canvas.rounded(), density, DOMED)
    canvas.rows = [[palette[i] for i in row] for row in indices]
    return storing.stored(palette, indices, density > 1 or layout.PICTURES[100][3], density), canvas


def ground_of(number, window_shown):
    """The very pixels of the window that a button of this strip lies on, or None."""
    if number not in layout.ON_WINDOW:
        return None
    mask, left, top = layout.ON_WINDOW[number]
    return window_shown.crop(left, top, *layout.PICTURES[mask][:2])


def _canvas(number, density, ground):
    if number in layout.CAPTION_BUTTONS:
        return buttons.icon_strip(ground, number)
    if number in layout.TRANSPORT:
        return transport.strip(ground, number)
    if number in layout.WORD_BUTTONS:
        return buttons.word_strip(ground, number)
    if number == 365:
        ground = buttons.panel_ground(*layout.PICTURES[366][:2], density)
        return buttons.word_strip(ground, number)
    if number in small.TIP_PIECES:
        return small.tip_piece(number, density)
    if number in TRACKS:
        draw, length = TRACKS[number]
        return draw(length, density)
    return SMALL[number](density)


def _mask(number, density):
    width, height = layout.PICTURES[number][:2]
    if number == 141:
        return transport.mask(width, density)
    if number == 222:
        return sliders.stick_mask(density)
    toggles = {mask for group in (layout.CAPTION_BUTTONS, layout.WORD_BUTTONS)
               for strip, (mask, _, _) in group.items() if strip in layout.TOGGLES}
    inset = layout.ICON_INSET if number == 110 else layout.WORD_INSET
    return buttons.pill_mask(width, height, inset, number in toggles, density)


def picture(number, density, ground=None):
    """The bytes of any picture but the window's."""
    bits, compress = layout.PICTURES[number][2:]
    if bits == 1:
        return bmp.indexed(_mask(number, density), BLACK_AND_WHITE, 1)
    rows = _canvas(number, density, ground).rounded()
    if density == 1 and bits == 24:
        return bmp.true_colour(rows)
    if density == 1 and number in PALETTES:
        palette = PALETTES[number]()
        return bmp.indexed(quantise.nearest(rows, palette), palette, bits)
    mask = layout.ON_WINDOW[number][0] if number in layout.ON_WINDOW else {365: 366}.get(number)
    if density > 1 and mask:
        rows = storing.smoothed_outside(rows, _mask(mask, density))
    domed = number in layout.TRANSPORT or number in SMALL
    palette, indices = storing.adapted(rows, density, DOMED if domed else UPRIGHT)
    return storing.stored(palette, indices, compress, density)
