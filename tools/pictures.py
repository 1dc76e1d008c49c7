#!/usr/bin/env python3
"""Makes the pictures of the user guide anew, from the real program on a display of its own:

    tools/pictures.py VELDRIN

writes docs/guide/*.png. Run by hand when the window looks different; nothing of the user's is read or
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

GUIDE = os.path.join(ROOT, 'docs', 'guide')
SCALE = 2
LEFT, TOP, WIDTH, HEIGHT = 200, 100, 293, 277  # of the window, in its own pixels
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


def brightness(picture):
    return float(subprocess.run(['convert', picture, '-format', '%[fx:mean]', 'info:'], check=True,
                                stdout=subprocess.PIPE).stdout)


class Studio:
    def __init__(self, program, folder):
        self.program, self.folder = program, folder
        self.display = Display((1400, 900))
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
            [self.program, '--output', 'null', '--scale', str(SCALE),
             *(os.path.join(self.music, title + '.ogg') for title in SONGS)], env=self.environment)
        wait_for(lambda: self.status()[0] == 'playing' and self.status()[7] == str(len(SONGS)),
                 'the music')
        self.veldrin('--seek', '62')

    def end(self):
        self.process.terminate()
        self.process.wait()
        self.display.end()

    def point_at(self, x, y):
        self.display.point_at((LEFT + x) * SCALE, (TOP + y) * SCALE)

    def click(self, x, y):
        self.point_at(x, y)
        self.display.tool('click', '1')

    def shoot(self, name, left=0, top=0, width=WIDTH, height=HEIGHT):
        """Once what was asked for is on the screen and the tooltip off it. The colours of what is
        selected go up and down: they are best at their brightest."""
        time.sleep(1.2)
        place = [(LEFT + left) * SCALE, (TOP + top) * SCALE]
        tries = []
        for number in range(12):
            tries.append(os.path.join(self.folder, f'{number}.png'))
            subprocess.run(['import', '-silent', '-window', 'root', '-crop',
                            f'{width * SCALE}x{height * SCALE}+{place[0]}+{place[1]}', '+repage',
                            tries[-1]], env=self.environment, check=True)
        path = os.path.join(GUIDE, name + '.png')
        subprocess.run(['convert', max(tries, key=brightness), '+dither', '-colors', str(COLOURS),
                        '-strip', '-define', 'png:compression-level=9', 'png8:' + path], check=True)
        print(f'{name}: {os.path.getsize(path)} bytes')

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
        self.shoot('menu', -34, -6, WIDTH + 40, HEIGHT + 12)
        self.display.tool('key', 'Escape', 'Escape')


def main():
    os.mkdir(HOME)  # and nobody else's
    try:
        with tempfile.TemporaryDirectory(prefix='veldrin-pictures-') as folder:
            studio = Studio(os.path.abspath(sys.argv[1]), folder)
            try:
                studio.record()
                studio.open()
                studio.window()
                studio.panel('browser', 'kAL', studio.choose_files)
                studio.panel('search', 'kPkSh', studio.search)
                studio.panel('lyrics', 'kPkLy')
                studio.panel('effects', 'kPkEFX')
                studio.panel('information', 'kPkNFO')
                studio.menu()
            finally:
                studio.end()
    finally:
        shutil.rmtree(HOME)


main()
