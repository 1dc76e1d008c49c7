"""The finished program for tests: started on a display, looked at and pointed at."""

import os
import re
import shutil
import subprocess
import time
from urllib.parse import quote

from desktop import OnDisplay, wait_for
from world import tone

LEFT, TOP, WIDTH, HEIGHT = 120, 90, 293, 277
AT_REST = 'Veldrin v1.1'
# Controls, in pixels of the window.
LIST = (6, 27, 281, 181)
ROW = 15
PREVIOUS, PLAY, PAUSE, STOP, NEXT = ((12 + 23 * i + 10, 256) for i in range(5))
SEEK = (9, 230, 275, 13)
VOLUME = (200, 249, 85, 13)
MENU_BUTTON = (20, 17)
TITLE = (52, 5, 202, 22)  # moves
TITLE_BOX = (56, 11, 180, 12)


class Player(OnDisplay):
    def setUp(self):
        super().setUp()
        self.write_settings()

    def write_settings(self, **settings):
        os.makedirs(self.directory, exist_ok=True)
        lines = ['[Memory]', *(f'{key}={value}' for key, value in
                               {'X': LEFT, 'Y': TOP, **settings}.items())]
        with open(self.ini, 'w', newline='') as file:
            file.write('\r\n'.join(lines) + '\r\n')

    @property
    def ini(self):
        return os.path.join(self.directory, 'Sarnel.Ambrisor.ini')

    def setting(self, key):
        with open(self.ini, encoding='utf-8') as file:
            found = re.search(f'^{key}=(.*?)\r?$', file.read(), re.MULTILINE)
        return found and found[1]

    def open(self, *arguments, scale=1):
        """Starts the player; answers when its window can be seen, and no tooltip over it. `scale`:
        None for what the screen asks for."""
        self.display.point_at(1000, 740)
        self.player = subprocess.Popen(
            [self.program, '--output', 'null', *(['--scale', str(scale)] if scale else []),
             *arguments],
            env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE)
        self.player.seen = b''
        self.running.append(self.player)
        self.window = wait_for(lambda: self.display.windows_of(self.player), 'the window')[0]
        wait_for(self.painted, 'the picture')

    def painted(self):
        self.place = self.display.geometry(self.window)
        left, top, width, height = self.place
        shown = self.display.part(left, top, width, height)
        # The border of the skin is not black, a bare window or screen is.
        return shown.pixel(width // 2, 2) != (0, 0, 0) and shown.pixel(3, height // 2) != (0, 0, 0)

    def title(self):
        return self.display.known.title(self.window)

    def wait_for_title(self, title):
        wait_for(lambda: self.title() == title, f'the title {title!r}')

    def shown(self, part=(0, 0, WIDTH, HEIGHT)):
        left, top, width, height = part
        return self.display.part(self.place[0] + left, self.place[1] + top, width,
                                              height)

    def point_at(self, point):
        self.display.point_at(self.place[0] + point[0], self.place[1] + point[1])

    def click(self, point, button=1):
        self.point_at(point)
        self.display.tool('click', button)

    def drag(self, start, end, hold=0.0):
        self.point_at(start)
        self.display.tool('mousedown', 1)
        for step in range(1, 9):
            self.point_at([a + (b - a) * step // 8 for a, b in zip(start, end)])
        time.sleep(hold)

    def key(self, *keys):
        self.display.tool('windowfocus', '--sync', self.window, 'key', *keys)

    def drop(self, point, *paths):
        """Drags files from another window to a point of the player's, and lets go."""
        data = b''.join(b'file://' + quote(os.fsencode(path)).encode() + b'\r\n' for path in paths)
        source = self.start_drag(600, 300, 'text/uri-list', data.hex(), 'copy')
        source.expect('ready')
        self.display.tool('mousemove', 630, 330, 'mousedown', 1)
        source.expect('dragging')
        left, top = self.place[0] + point[0], self.place[1] + point[1]
        for x in range(600, left, -25):
            self.display.tool('mousemove', x, top, 'sleep', '0.02')
        self.display.tool('mousemove', left, top, 'sleep', '0.1', 'mouseup', 1)
        # The source has let go of it; it is the list's once it shows there, and asked for until then.
        source.expect('copied')

    def catch_documents(self):
        """What opens documents for the desktop writes down what it is given."""
        tools = os.path.join(self.folder, 'tools')
        os.mkdir(tools)
        self.opened = os.path.join(self.folder, 'opened')
        with open(os.path.join(tools, 'xdg-open'), 'w') as script:
            script.write(f'#!/bin/sh\nprintf %s "$1" > "{self.opened}.new"\n'
                         f'mv "{self.opened}.new" "{self.opened}"\n')
        os.chmod(os.path.join(tools, 'xdg-open'), 0o755)
        self.environment['PATH'] = tools + ':' + self.environment['PATH']

    def opened_document(self):
        wait_for(lambda: os.path.exists(self.opened), 'a document')
        with open(self.opened) as file:
            return file.read()

    def wait_for_popups(self, count):
        wait_for(lambda: len(self.display.windows_of(self.player)) == count + 1, f'{count} popups')

    def show_types(self):
        """The panel of the file types, by the menu."""
        rows = self.shown((LIST[0], LIST[1], 260, 20)).data
        self.click(MENU_BUTTON)
        self.wait_for_popups(1)
        self.display.tool('key', 's')
        self.wait_for_popups(2)
        self.display.tool('key', '--delay', '30', 'Down', 'Down', 'Return')
        wait_for(lambda: self.shown((LIST[0], LIST[1], 260, 20)).data != rows, 'the panel')

    def songs(self, *names, seconds=40):
        first = tone(self.at(names[0] + '.wav'), seconds=seconds)
        for name in names[1:]:
            shutil.copy(first, self.at(name + '.wav'))

    @staticmethod
    def list_file(count):
        rows = ''.join(f'Row {i}\r\n/music/{i}.mp3\r\n' for i in range(count))
        return f'OMK v1.1\r\n{count}\r\n0\r\n{rows}'

    def save_list(self, count):
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
            file.write(self.list_file(count))

    def row(self, number):
        """The middle of a row by its place in the list's window."""
        return LIST[0] + 60, LIST[1] + number * ROW + ROW // 2

    def shows_row(self, number):
        return self.shown((LIST[0], LIST[1] + number * ROW, LIST[2], ROW)).has_colours()
