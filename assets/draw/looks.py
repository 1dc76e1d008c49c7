"""The palette of Funky Blue and the looks that its controls take in each state."""

from collections import namedtuple

SLATE = (60, 70, 100)        # what lies in every well
LIGHT = (192, 192, 255)      # text
ACCENT = (112, 112, 238)
BRIGHT = (128, 128, 238)
WHITE = (255, 255, 255)
DEEP = (0, 0, 128)           # shade
INK = (14, 16, 44)           # outlines
NIGHT = (18, 20, 66)         # the dark edge of a well

# face: colours from top to bottom; gloss and shine: strength of the upper sheen and of the
# bright line at the upper edge; glow: strength of the light around a latched control
Look = namedtuple('Look', 'face rim gloss shine glow ink shade down')

NORMAL = Look(face=((134, 141, 212), (100, 106, 184), (76, 82, 156), (68, 73, 144), (92, 98, 176)),
              rim=(24, 27, 66), gloss=0.16, shine=0.75, glow=0.0,
              ink=(232, 234, 255), shade=(34, 38, 96), down=0)
PRESSED = Look(face=((46, 50, 108), (54, 58, 122), (62, 66, 134), (68, 72, 144), (84, 88, 164)),
               rim=(14, 16, 46), gloss=0.0, shine=0.0, glow=0.0,
               ink=(200, 202, 246), shade=(26, 29, 74), down=1)
DISABLED = Look(face=((100, 110, 146), (86, 96, 131), (76, 86, 119), (72, 81, 114), (80, 90, 124)),
                rim=(46, 54, 80), gloss=0.05, shine=0.25, glow=0.0,
                ink=(132, 142, 178), shade=(60, 68, 96), down=0)
LATCHED = Look(face=((156, 156, 252), (112, 112, 238), (92, 92, 222), (96, 96, 228),
                     (164, 164, 255)),
               rim=(30, 30, 120), gloss=0.18, shine=0.9, glow=0.75,
               ink=WHITE, shade=(40, 40, 150), down=0)
LATCHED_PRESSED = Look(face=((66, 66, 170), (76, 76, 190), (84, 84, 204), (96, 96, 220),
                             (138, 138, 244)),
                       rim=(20, 20, 84), gloss=0.0, shine=0.0, glow=0.4,
                       ink=(220, 220, 255), shade=(34, 34, 120), down=1)
LATCHED_DISABLED = Look(face=((116, 122, 172), (100, 106, 160), (92, 98, 152), (92, 98, 152),
                              (116, 122, 176)),
                        rim=(50, 56, 96), gloss=0.05, shine=0.3, glow=0.15,
                        ink=(170, 176, 214), shade=(70, 76, 122), down=0)

BUTTON_LOOKS = (NORMAL, PRESSED, DISABLED)
TOGGLE_LOOKS = BUTTON_LOOKS + (LATCHED, LATCHED_PRESSED, LATCHED_DISABLED)
