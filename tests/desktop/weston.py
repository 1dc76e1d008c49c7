"""Tests on Wayland: a compositor of its own for each test file, weston in a window that fills an X
server in memory. Outside, on that X server, are the pointer, the keyboard and the screenshots; programs
run inside, natively or on the X server that the compositor offers."""

import os
import re
import shutil
import subprocess
import tempfile

from desktop import SCREEN, Display, OnDisplay, wait_for

STRIP = 16
# What shows where there is no window. Of one byte, and not in the skin.
BACKGROUND = 0x2B
SETTINGS = """[core]
idle-time=0
[shell]
panel-position=none
locking=false
animation=none
startup-animation=none
close-animation=none
focus-animation=none
background-color=0xff{0:02x}{0:02x}{0:02x}
"""


class Weston(Display):
    """`environment` is that outside, `inside` what programs need for being shown by the compositor:
    with `on_x`, on its X server. `beside`: the scale of a second screen, in the right half."""

    def __init__(self, size=SCREEN, scale=1, on_x=False, beside=None):
        # A strip beside the compositor's window lets the pointer leave it.
        super().__init__((size[0] + STRIP, size[1]), manager=None)
        self.size = size
        self.folder = tempfile.mkdtemp(prefix='veldrin-weston-')
        self.log = os.path.join(self.folder, 'log')
        # By its path it is found from whatever runtime folder a test has.
        self.socket = os.path.join(self.folder, 'wayland')
        # What the toolkit loads here for drawing by hardware keeps some memory for ever, and is unloaded:
        # who has asked for it is seen further up only.
        self.inside = {'WAYLAND_DISPLAY': self.socket, 'ASAN_OPTIONS': 'fast_unwind_on_malloc=0'}
        try:
            self.begin([scale, beside] if beside else [scale], on_x)
        except AssertionError:
            self.end()
            raise

    def begin(self, scales, on_x):
        width, height = self.size[0] // len(scales), self.size[1]
        settings = os.path.join(self.folder, 'weston.ini')
        with open(settings, 'w') as file:
            file.write(SETTINGS.format(BACKGROUND))
            for number, scale in enumerate(scales, 1):
                file.write(f'[output]\nname=X{number}\nscale={scale}\n'
                           f'mode={width // scale}x{height // scale}\n')
        self.processes.insert(0, subprocess.Popen(
            ['weston', f'--config={settings}', '--backend=x11-backend.so', '--use-pixman',
             '--socket=wayland', f'--log={self.log}', f'--output-count={len(scales)}',
             *(['--xwayland'] if on_x else [])],
            env={**self.environment, 'XDG_RUNTIME_DIR': self.folder},
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        if on_x:
            self.inside = {'DISPLAY': wait_for(self.x_name, 'an X server on Wayland')}
        # No window manager gives it the keyboard.
        wait_for(lambda: len(self.frames()) == len(scales), 'the compositor')
        for number, frame in enumerate(self.frames()):
            self.tool('windowmove', '--sync', frame, number * width, 0)
        self.tool('windowfocus', '--sync', self.frames()[0])
        wait_for(self.is_bare, 'the desktop')

    def frames(self):
        """The windows of its screens, from the first on."""
        found = self.run('xdotool', 'search', '--onlyvisible', '--class', '^Weston Compositor$',
                         check=False).split()
        return sorted(found, key=int)

    def is_bare(self):
        # Where the pointer is, the compositor knows for certain once it has come in from outside.
        self.leave()
        return self.occupied() is None

    def x_name(self):
        """It starts with the first program that asks for it."""
        if not os.path.exists(self.log):
            return None
        with open(self.log, errors='replace') as file:
            found = re.search('xserver listening on display (:[0-9]+)', file.read())
        return found and found[1]

    def end(self):
        super().end()
        shutil.rmtree(self.folder, ignore_errors=True)

    def within(self, environment):
        """The environment of a program that is to be shown by the compositor."""
        known = {key: value for key, value in environment.items()
                 if key not in ('DISPLAY', 'WAYLAND_DISPLAY')}
        return {**known, **self.inside}

    def run_inside(self, *command):
        """As `run`, for what looks at the X server inside."""
        return subprocess.run(command, env=self.within(self.environment), check=True,
                              stdout=subprocess.PIPE).stdout.decode(errors='replace')

    def occupied(self):
        """The smallest rectangle around all windows: left, top, width, height; None if there is none.
        The pointer must be out of the way (`leave`)."""
        return around(self.screenshot())

    def leave(self):
        """Takes the pointer off the screen. The compositor leaves it drawn where it was last."""
        width, height = self.size
        self.tool('mousemove', width + STRIP // 2, height - 1, 'mousemove', width - 1, height - 1,
                  'mousemove', width + STRIP // 2, height - 1)


def around(picture, former=None):
    """The smallest rectangle around what is no background, or differs from a former picture. What
    shows of the pointer in the last corner does not count."""
    corner, length = 16, picture.width * 3
    empty = bytes([BACKGROUND]) * length
    found = []
    for y in range(picture.height):
        at, end = y * length, length - (corner * 3 if y >= picture.height - corner else 0)
        row = picture.data[at:at + end]
        before = former.data[at:at + end] if former else empty[:end]
        if row != before:
            difference = int.from_bytes(row, 'little') ^ int.from_bytes(before, 'little')
            first = (difference & -difference).bit_length() - 1
            found.append((first // 24, (difference.bit_length() + 23) // 24, y))
    if not found:
        return None
    left, top = min(left for left, _, _ in found), found[0][2]
    return left, top, max(right for _, right, _ in found) - left, found[-1][2] + 1 - top


class OnWeston(OnDisplay):
    """Tests whose programs are shown by the compositor; `display.environment` is still outside."""

    @staticmethod
    def make_display():
        return Weston()

    def setUp(self):
        super().setUp()
        self.display.leave()
        self.environment = self.display.within(self.environment)
