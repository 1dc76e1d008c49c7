#!/usr/bin/env python3
"""Makes the pictures of the documentation anew, from the real program on a display of its own:

    tools/pictures.py VELDRIN [FOLDER [SCALE...]]

writes guide/*.png, the pictures of the user guide, and screens-1.png, -1.5, -2 and -3: the window, every
panel, buttons that are pressed and latched, and an open menu at those scales; into docs/, or all that is
asked for into FOLDER. Run by hand when the window looks different; nothing of the user's is read or
written. Needs what the desktop tests need.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path[:0] = [os.path.join(ROOT, 'tests', name) for name in ('desktop', 'host')]
from desktop import Display, wait_for  # noqa: E402

GUIDE_SCALE = '2'
SCREEN_SCALES = ('1', '1.5', '2', '3')
MENU = (-34, -6, 333, 289)  # what an open menu takes, from the window's corner
LEFT, TOP, WIDTH, HEIGHT = 200, 100, 293, 277  # of the window, in its own pixels
# The middles of all buttons on the window.
PRESSED = [(20, 17), (43, 17), (250, 17), (273, 17),
           *((x, 257) for x in (23, 46, 69, 92, 115)),
           *((x, 219) for x in (27, 65, 103, 144, 181, 215, 259))]
COLOURS = 255  # enough for the skin, and half of the bytes
DESKTOP = '#39415c'

HOME = '/tmp/nina'  # stands in a picture

SONGS = ('Slow Morning', 'Ways of the Harbour', 'Evening Sun', 'Tin Roof, Light Rain',
         'The Ferry Home', 'Letters to Nobody', 'Paper Boats', 'Before the Snow')
WORDS = """The light comes in across the bay,
the boats lie where they lay,
and nobody has yet begun
to ask the morning for the day.

Slow morning, take your time,
the tide has time to spare.
"""


def save(picture, path):
    subprocess.run(['convert', picture, '+dither', '-colors', str(COLOURS), '-strip', '-define',
                    'png:compression-level=9', 'png8:' + path], check=True)


def brightness(picture):
    return float(subprocess.run(['convert', picture, '-format', '%[fx:mean]', 'info:'], check=True,
                                stdout=subprocess.PIPE).stdout)


class Studio:
    def __init__(self, program, folder, scale):
        self.program, self.folder, self.scale = program, folder, scale
        self.display = Display((1700, 1300))
        self.environment = {**self.display.environment, 'HOME': folder, **{
            f'XDG_{name}': os.path.join(folder, name) for name in
            ('CONFIG_HOME', 'CACHE_HOME', 'DATA_HOME', 'STATE_HOME')}}
        self.environment['XDG_RUNTIME_DIR'] = folder
        self.display.run('xsetroot', '-solid', DESKTOP)
        self.music = os.path.join(HOME, 'Music', 'Nina Lindqvist')
        os.makedirs(self.music)
        settings = os.path.join(folder, 'CONFIG_HOME', 'veldrin')
        os.makedirs(settings)
        with open(os.path.join(settings, 'Sarnel.Ambrisor.ini'), 'w') as file:
            file.write(f'[Memory]\r\nX={LEFT}\r\nY={TOP}\r\nLastDir={self.music}/\r\n')

    def record(self):
        """Songs that nobody has to hear."""
        for number, title in enumerate(SONGS):
            # What is played tells more of itself.
            form = ['-r', '8000'] if number else ['-r', '44100', '-c', '2']
            name = os.path.join(self.music, title)
            subprocess.run(['sox', '-n', *form, '--add-comment', 'ARTIST=Nina Lindqvist',
                            '--add-comment', f'TITLE={title}', '--add-comment', 'ALBUM=Tide Tables',
                            name + '.ogg', 'synth', str(171 + 13 * number), 'pluck', 'vol', '0.1'],
                           check=True)
        with open(os.path.join(self.music, SONGS[0] + '.txt'), 'w') as file:
            file.write(WORDS)

    def veldrin(self, *arguments):
        subprocess.run([self.program, *arguments], env=self.environment, check=True)

    def status(self):
        return subprocess.run([self.program, '--status'], env=self.environment,
                              stdout=subprocess.PIPE).stdout.decode().split('\t')

    def open(self):
        self.process = subprocess.Popen(
            [self.program, '--output', 'null', '--scale', self.scale,
             *(os.path.join(self.music, title + '.ogg') for title in SONGS)], env=self.environment)
        wait_for(lambda: self.status()[0] == 'playing' and self.status()[7] == str(len(SONGS)),
                 'the music')
        self.veldrin('--seek', '62')

    def end(self):
        self.process.terminate()
        self.process.wait()
        self.display.end()

    def pixels(self, *lengths):
        return [round(length * float(self.scale)) for length in lengths]

    def point_at(self, x, y):
        self.display.point_at(*self.pixels(LEFT + x, TOP + y))

    def click(self, x, y):
        self.point_at(x, y)
        self.display.tool('click', '1')

    def photograph(self, path, left=0, top=0, width=WIDTH, height=HEIGHT):
        """What the screen shows of the window, to a place of the window's own."""
        left, top, width, height = self.pixels(LEFT + left, TOP + top, width, height)
        subprocess.run(['import', '-silent', '-window', 'root', '-crop',
                        f'{width}x{height}+{left}+{top}', '+repage', path],
                       env=self.environment, check=True)
        return path

    def shoot(self, name, *part):
        """Once what was asked for is on the screen and the tooltip off it. The colours of what is
        selected go up and down: they are best at their brightest."""
        time.sleep(1.2)
        tries = [self.photograph(os.path.join(self.folder, f'{number}.png'), *part)
                 for number in range(self.tries)]
        path = os.path.join(self.out, name + '.png')
        save(max(tries, key=brightness), path)

    def window(self):
        self.click(100, 27 + 15 * 3 + 7)
        self.point_at(150, 212)
        self.shoot('window')

    def panel(self, name, key, prepare=lambda: None):
        self.veldrin('--command', key)
        prepare()
        self.point_at(150, 212)
        self.shoot(name)
        self.veldrin('--command', key)

    def choose_files(self):
        self.click(100, 27 + 15 * 4 + 7)
        self.display.tool('keydown', 'ctrl')
        for row in (5, 7):
            self.click(100, 27 + 15 * row + 7)
        self.display.tool('keyup', 'ctrl')

    def search(self):
        self.display.tool('type', 'the')

    def menu(self):
        self.veldrin('--command', 'kPRpP')
        self.click(20, 17)
        time.sleep(1)
        self.display.tool('key', '--delay', '100', 'Down', 'Down', 'Down', 'Right', 'Down')
        self.shoot('menu', *MENU)
        self.display.tool('key', 'Escape', 'Escape')

    def hold(self):
        """Each button as it looks while it is held down; it is let go elsewhere. The toggles are
        latched by then."""
        self.veldrin('--command', 'kPkEFX')
        for x, y in PRESSED:
            self.point_at(x, y)
            self.display.tool('mousedown', '1')
            time.sleep(0.3)
            self.photograph(os.path.join(self.out, f'pressed-{y}-{x:03}.png'), x - 26, y - 12, 52, 24)
            self.point_at(150, 120)
            self.display.tool('mouseup', '1')
        self.veldrin('--command', 'kPkEFX')

    def all(self):
        self.record()
        self.open()
        self.window()
        self.panel('browser', 'kAL', self.choose_files)
        self.panel('search', 'kPkSh', self.search)
        self.panel('lyrics', 'kPkLy')
        self.panel('effects', 'kPkEFX')
        self.panel('information', 'kPkNFO')
        self.menu()


def shoot_all(program, scale, out, tries, more=lambda studio: None):
    os.mkdir(HOME)  # and nobody else's
    try:
        with tempfile.TemporaryDirectory(prefix='veldrin-pictures-') as folder:
            studio = Studio(os.path.abspath(program), folder, scale)
            studio.out, studio.tries = out, tries
            try:
                studio.all()
                more(studio)
            finally:
                studio.end()
    finally:
        shutil.rmtree(HOME)


def make_screens(program, scale, path):
    """All of them on one sheet."""
    with tempfile.TemporaryDirectory(prefix='veldrin-screens-') as folder:
        shoot_all(program, scale, folder, 1, Studio.hold)
        sheet = os.path.join(folder, 'sheet.png')
        gap = str(round(8 * float(scale)))
        names = ('window', 'browser', 'search', 'lyrics', 'effects', 'information', 'menu')
        held = sorted(name for name in os.listdir(folder) if name.startswith('pressed'))
        row = os.path.join(folder, 'held.png')
        subprocess.run(['montage', *(os.path.join(folder, name) for name in held), '-tile', '4x',
                        '-geometry', f'+{gap}+{gap}', '-background', DESKTOP, row], check=True)
        subprocess.run(['montage', *(os.path.join(folder, name + '.png') for name in names), row,
                        '-tile', '3x', '-geometry', f'+{gap}+{gap}', '-background', DESKTOP, sheet],
                       check=True)
        save(sheet, path)


def main():
    program, *rest = sys.argv[1:]
    out = rest[0] if rest else os.path.join(ROOT, 'docs')
    os.makedirs(out, exist_ok=True)
    if len(rest) < 2:
        guide = os.path.join(out, 'guide')
        os.makedirs(guide, exist_ok=True)
        shoot_all(program, GUIDE_SCALE, guide, 12)
    for scale in rest[1:] or SCREEN_SCALES:
        make_screens(program, scale, os.path.join(out, f'screens-{scale}.png'))


main()
