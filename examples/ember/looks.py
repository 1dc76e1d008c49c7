"""Ember: a charcoal window in which only what is lit glows, as coals do. Drawn by the recipe of
assets/README.md."""

NAME = 'Ember'

FLOOR = (28, 22, 20)         # soot
TEXT = (255, 208, 150)       # lamplight
SHEEN = (255, 240, 220)
GLOW = (255, 132, 40)
COAL = (222, 108, 30)
ASH = (60, 26, 12)           # where a coal has gone cold
INK = (9, 6, 5)
WELL_SHADE = (10, 7, 6)

# The window: warm iron under a lamp
BODY = ((27, 23, 22), (112, 95, 84))
GLINT = (156, 126, 104)
FRAME_TOP, FRAME_LEFT = (240, 182, 124), (198, 142, 98)
WELL_EDGE = (128, 102, 84)
SOCKET = ((16, 11, 10), (44, 35, 31))
ENGRAVED = (17, 12, 11)

PILL_SHADOW, PILL_LIT, PILL_SUNK, PILL_FOOT = (6, 4, 3), (255, 226, 196), (4, 2, 1), (16, 6, 2)
DOME_SHADOW, DOME_LIT, DOME_SUNK = (5, 3, 2), (255, 228, 200), (4, 2, 1)

# A slot in use is a bed of coals; out of use it is a groove in the soot.
IN_USE = ((42, 14, 6), (96, 32, 8), (156, 58, 12), (212, 98, 22), (252, 158, 58), (104, 78, 62),
          (35, 19, 14), (116, 62, 30))
OUT_OF_USE = ((16, 12, 11), (19, 15, 13), (21, 16, 15), (23, 18, 16), (25, 19, 17), (52, 43, 38),
              (22, 17, 15), FLOOR)
STICKS = (
    (((255, 236, 200), (252, 176, 88), (218, 102, 32), (122, 42, 12)), (44, 16, 8), 0.95),
    (((248, 176, 98), (226, 122, 46), (178, 76, 22), (98, 34, 10)), (32, 12, 6), 0.35),
    (((134, 122, 112), (108, 98, 90), (86, 78, 72), (66, 60, 55)), (44, 37, 34), 0.2),
)

# The menu's silk is smoke.
SILK = ((23, 16, 14), (60, 43, 34))
TIP, TIP_SHADE = ((94, 66, 46), (60, 42, 31), (37, 26, 20)), (12, 7, 5)

DRIVE_LID, DRIVE_FRONT = ((214, 198, 182), (150, 132, 118)), ((164, 144, 128), (92, 78, 68))
DRIVE_GLEAM, DRIVE_SLIT = (236, 216, 196), (44, 32, 26)
FOLDER_TAB, FOLDER_GLEAM = (214, 128, 52), (255, 232, 180)
FOLDER_BACK, FOLDER_FRONT = ((196, 104, 36), (146, 70, 20)), ((255, 196, 104), (216, 116, 38))
PAPER, PAPER_FOLD, NOTE_INK = ((255, 246, 230), (226, 200, 168)), (196, 158, 118), (176, 58, 12)

TITLE_TEXT = DISPLAY_TEXT = LIST_TEXT = TEXT
TIP_TEXT = (255, 226, 188)
FOCUS = (255, 168, 84)
SELECTION = ((116, 44, 14), FLOOR)
PULSE = ((228, 180, 110), (255, 231, 212))  # each channel arrives: it moves by 51 or 102
THUMB, THUMB_EDGE = ((168, 84, 34), FLOOR), (72, 46, 32)
MENU_GROUND, MENU_TEXT = (40, 28, 22), (255, 224, 184)
MENU_DISABLED = ((178, 152, 132), (24, 14, 10))
MENU_SELECTION, MENU_SELECTED_TEXT = ((255, 200, 116), (230, 126, 44)), (46, 16, 4)
MENU_HEADER, MENU_HEADER_TEXT = ((130, 58, 22), ASH), (255, 220, 170)
MENU_SEPARATOR = (COAL, ASH)
DISPLAY_FONT = LIST_FONT = MENU_FONT = ('Tahoma', 8, False, False)
TITLE_FONT = ('Tahoma', 8, True, False)

NORMAL = Look(face=((122, 106, 95), (80, 69, 62), (63, 54, 49), (55, 47, 42), (78, 65, 56)),
              rim=(14, 10, 8), gloss=0.22, shine=0.6, glow=0.0,
              ink=(255, 228, 194), shade=(24, 17, 14), down=0)
PRESSED = Look(face=((30, 22, 19), (38, 28, 23), (47, 34, 27), (58, 40, 30), (92, 58, 37)),
               rim=(8, 5, 4), gloss=0.0, shine=0.0, glow=0.0,
               ink=(255, 190, 118), shade=(18, 11, 8), down=1)
DISABLED = Look(face=((64, 57, 53), (53, 47, 44), (47, 42, 39), (44, 39, 36), (52, 46, 42)),
                rim=(28, 24, 22), gloss=0.05, shine=0.2, glow=0.0,
                ink=(180, 167, 156), shade=(30, 25, 23), down=0)
# A word on a coal is burnt into it: dark, and below it lit.
LATCHED = Look(face=((255, 206, 120), (244, 150, 58), (232, 122, 38), (228, 114, 32), (230, 118, 34),
                     (240, 140, 50), (255, 190, 100)),
               rim=(84, 28, 8), gloss=0.35, shine=0.9, glow=0.75,
               ink=(44, 14, 2), shade=(255, 190, 112), down=0)
LATCHED_PRESSED = Look(face=((190, 88, 26), (206, 102, 32), (218, 114, 38), (228, 126, 46),
                             (250, 164, 84)),
                       rim=(64, 20, 6), gloss=0.0, shine=0.0, glow=0.4,
                       ink=(28, 8, 0), shade=(250, 172, 98), down=1)
LATCHED_DISABLED = Look(face=((132, 98, 74), (104, 75, 55), (95, 67, 49), (92, 65, 47),
                              (114, 83, 61)),
                        rim=(50, 31, 21), gloss=0.05, shine=0.3, glow=0.15,
                        ink=(242, 218, 192), shade=(46, 29, 20), down=0)
