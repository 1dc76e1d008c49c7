"""Funky Blue: the palette of the player's own skin, and the looks that its controls take."""

NAME = 'Funky Blue'

FLOOR = (60, 70, 100)        # what lies in every well
TEXT = (192, 192, 255)
SHEEN = (255, 255, 255)      # the light: on edges, as sparks
ACCENT = (112, 112, 238)
GLOW = (128, 128, 238)       # around latched buttons
DEEP = (0, 0, 128)           # shade
INK = (14, 16, 44)           # outlines
WELL_SHADE = (18, 20, 66)    # the dark edge of a well

# The window
BODY = ((44, 52, 84), (134, 148, 208))              # at its darkest and at its lightest
GLINT = (166, 176, 226)                             # what an edge turned to the light throws back
FRAME_TOP, FRAME_LEFT = (206, 212, 255), (190, 198, 250)
WELL_EDGE = (148, 158, 212)                         # of a well, at the right and below
SOCKET = ((30, 34, 66), (58, 67, 100))              # the hollow of the round buttons, top to bottom
ENGRAVED = (22, 25, 58)                             # the lines beside the maker's mark

# Round and oval buttons: the shadow below, light and shadow at the upper edge, shadow at the lower
PILL_SHADOW, PILL_LIT, PILL_SUNK, PILL_FOOT = (10, 12, 34), (226, 229, 255), (8, 10, 36), (0, 0, 50)
DOME_SHADOW, DOME_LIT, DOME_SUNK = (6, 8, 26), (230, 232, 255), (6, 8, 30)

# Tracks: the slot from its dark upper edge down to the light that it catches below, then its upper
# and lower corners where those are dots.
IN_USE = ((14, 16, 56), (8, 9, 74), (12, 13, 98), (24, 25, 126), (50, 51, 164), (112, 122, 172),
          (46, 53, 86), (62, 69, 122))
OUT_OF_USE = ((43, 51, 79), (49, 57, 85), (53, 61, 89), (55, 64, 92), (56, 65, 94), (78, 89, 122),
              (53, 62, 90), FLOOR)
# The stick: from the lit side to the far one, its rim, the strength of the spark on it
STICKS = (
    (((222, 224, 255), (150, 152, 246), (98, 100, 220), (52, 54, 158)), (16, 18, 58), 0.95),
    (((150, 152, 240), (112, 114, 226), (76, 78, 190), (44, 46, 140)), (10, 12, 46), 0.35),
    (((128, 138, 172), (104, 114, 148), (86, 96, 130), (70, 80, 112)), (44, 52, 80), 0.2),
)

# The menu's silk, darkest and lightest; the tooltip from top to bottom, its shaded edges
SILK = ((14, 14, 60), (50, 57, 100))
TIP, TIP_SHADE = ((72, 78, 140), (44, 49, 102), (28, 31, 76)), (8, 8, 48)

# Icons: faces from top to bottom, then what is on them
DRIVE_LID, DRIVE_FRONT = ((206, 210, 255), (140, 146, 216)), ((150, 156, 224), (84, 90, 160))
DRIVE_GLEAM, DRIVE_SLIT = (196, 200, 255), (40, 44, 100)
FOLDER_TAB, FOLDER_GLEAM = (150, 152, 236), (224, 226, 255)
FOLDER_BACK, FOLDER_FRONT = ((120, 122, 216), (84, 86, 180)), ((184, 186, 255), (118, 120, 226))
PAPER, PAPER_FOLD, NOTE_INK = (SHEEN, (186, 190, 244)), (150, 154, 226), (70, 70, 206)

# What the player itself paints, as the rows of the table say: texts on the floors, rows of the lists
TITLE_TEXT = DISPLAY_TEXT = LIST_TEXT = TIP_TEXT = TEXT
FOCUS = TEXT                                        # the frame of the row with the focus
SELECTION = (ACCENT, FLOOR)                         # from left to right
PULSE = (GLOW, SHEEN)                               # selected texts go from the one to the other
THUMB, THUMB_EDGE = ((128, 128, 187), FLOOR), (49, 54, 82)
# The popup menu, from left to right or from top to bottom
MENU_GROUND, MENU_TEXT = (0, 15, 255), (224, 224, 255)
MENU_DISABLED = (TEXT, DEEP)                        # the lower layer, the upper one
MENU_SELECTION, MENU_SELECTED_TEXT = (TEXT, (64, 60, 225)), (0, 0, 64)
MENU_HEADER, MENU_HEADER_TEXT = (TEXT, DEEP), TEXT
MENU_SEPARATOR = (TEXT, DEEP)
# Name, size, italic, bold
DISPLAY_FONT = LIST_FONT = MENU_FONT = ('Tahoma', 8, False, False)
TITLE_FONT = ('Tahoma', 8, True, False)

# Of buttons, in each state
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
               ink=SHEEN, shade=(40, 40, 150), down=0)
LATCHED_PRESSED = Look(face=((56, 56, 150), (64, 64, 170), (74, 74, 188), (80, 80, 200),
                             (106, 106, 226)),
                       rim=(20, 20, 84), gloss=0.0, shine=0.0, glow=0.4,
                       ink=(240, 240, 255), shade=(34, 34, 120), down=1)
LATCHED_DISABLED = Look(face=((106, 112, 160), (80, 86, 136), (72, 78, 128), (70, 76, 126),
                              (88, 94, 146)),
                        rim=(50, 56, 96), gloss=0.05, shine=0.3, glow=0.15,
                        ink=(204, 208, 236), shade=(58, 64, 108), down=0)
