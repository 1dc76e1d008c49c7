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

NORMAL = Look(face=((134, 141, 212), (92, 98, 176), (76, 82, 156), (68, 73, 144), (92, 98, 176)),
              rim=(24, 27, 66), gloss=0.30, shine=0.75, glow=0.0,
              ink=(246, 247, 255), shade=(34, 38, 96), down=0)
PRESSED = Look(face=((46, 50, 108), (54, 58, 122), (62, 66, 134), (68, 72, 144), (84, 88, 164)),
               rim=(14, 16, 46), gloss=0.0, shine=0.0, glow=0.0,
               ink=(212, 214, 250), shade=(26, 29, 74), down=1)
DISABLED = Look(face=((84, 93, 126), (70, 78, 108), (63, 70, 99), (60, 67, 95), (68, 76, 106)),
                rim=(46, 54, 80), gloss=0.05, shine=0.25, glow=0.0,
                ink=(184, 192, 220), shade=(46, 53, 80), down=0)
LATCHED = Look(face=((156, 156, 252), (98, 98, 228), (86, 86, 216), (86, 86, 216), (86, 86, 216),
                     (88, 88, 218), (134, 134, 248)),
               rim=(30, 30, 120), gloss=0.30, shine=0.9, glow=0.75,
               ink=WHITE, shade=(40, 40, 150), down=0)
LATCHED_PRESSED = Look(face=((56, 56, 150), (64, 64, 170), (74, 74, 188), (80, 80, 200),
                             (106, 106, 226)),
                       rim=(20, 20, 84), gloss=0.0, shine=0.0, glow=0.4,
                       ink=(240, 240, 255), shade=(34, 34, 120), down=1)
LATCHED_DISABLED = Look(face=((106, 112, 160), (80, 86, 136), (72, 78, 128), (70, 76, 126),
                              (88, 94, 146)),
                        rim=(50, 56, 96), gloss=0.05, shine=0.3, glow=0.15,
                        ink=(204, 208, 236), shade=(58, 64, 108), down=0)

BUTTON_LOOKS = (NORMAL, PRESSED, DISABLED)
TOGGLE_LOOKS = BUTTON_LOOKS + (LATCHED, LATCHED_PRESSED, LATCHED_DISABLED)
