"""Which pictures a skin has: their sizes and depths, and where each control lies.

Pictures are numbered as those of the skin with base 100; draw/skin.py knows what others call them.
"""

WINDOW = (293, 277)
TITLE = (54, 10, 185, 14)
LIST = (6, 27, 281, 181)
DISPLAY = (128, 250, 72, 14)
SEEK = (9, 230, 275, 13)
VOLUME = (200, 249, 85, 13)
RESET = (127, 140)  # inside the effects panel, which lies where the list lies

# id: (width, height, bits per pixel, run-length compressed)
PICTURES = {
    100: (293, 277, 8, True), 102: (100, 100, 4, False),
    103: (16, 16, 24, False), 104: (16, 16, 24, False), 105: (16, 16, 24, False),
    106: (9, 23, 8, False), 107: (2, 23, 8, False), 108: (9, 23, 8, False),
    109: (22, 36, 8, False), 110: (22, 12, 1, False),
    114: (22, 36, 8, False), 119: (22, 36, 8, False), 124: (22, 72, 8, False),
    140: (21, 63, 8, False), 141: (21, 21, 1, False), 145: (21, 63, 8, False),
    150: (21, 63, 8, False), 155: (21, 63, 8, False), 160: (21, 63, 8, False),
    190: (37, 51, 8, False), 191: (37, 17, 1, False),
    195: (37, 51, 8, False), 200: (37, 51, 8, False),
    205: (49, 102, 8, True), 206: (49, 17, 1, False),
    210: (37, 102, 8, True), 211: (37, 17, 1, False),
    220: (270, 26, 4, False), 221: (13, 39, 8, False), 222: (13, 13, 1, False),
    230: (85, 26, 4, False), 280: (26, 181, 4, False),
    290: (30, 102, 8, True), 291: (30, 17, 1, False),
    365: (45, 51, 8, False), 366: (45, 17, 1, False),
    370: (42, 51, 8, False), 371: (42, 17, 1, False),
}

# strip: (mask, left, top); the strips of one mask share its shape
CAPTION_BUTTONS = {119: (110, 9, 11), 124: (110, 32, 11), 114: (110, 239, 11), 109: (110, 262, 11)}
TRANSPORT = {140: (141, 12, 246), 145: (141, 35, 246), 150: (141, 58, 246),
             155: (141, 81, 246), 160: (141, 104, 246)}
WORD_BUTTONS = {190: (191, 9, 211), 195: (191, 47, 211), 200: (191, 85, 211),
                370: (371, 123, 211), 290: (291, 166, 211), 210: (211, 197, 211),
                205: (206, 235, 211)}
ON_WINDOW = {**CAPTION_BUTTONS, **TRANSPORT, **WORD_BUTTONS}
WORDS = {190: 'Add', 195: 'Rem', 200: 'Misc', 370: 'Lists', 290: 'Efx', 210: 'Info',
         205: 'Lyrics', 365: 'Reset'}
ICON_INSET, WORD_INSET = 2, 1  # how far the pills stay from the sides of their controls
TOGGLES = (124, 205, 210, 290)
EFFECT_SLIDERS = tuple((85, top, 190, 13) for top in range(10, 101, 15))

DENSITIES = (1, 2, 4)  # stored pixels of a picture along each side of a unit
