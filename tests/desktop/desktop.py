"""What the tests on a real display share: a display with a window manager for each test file, the
desktop driver's probe, and the finished program. Conditions are waited for, nothing else.

    FILE [--probe PROBE] [--drag-source SOURCE] [--program VELDRIN] [--scenario RUNNER]
         [--framing-manager MANAGER] [--embedding-tray TRAY] [--slow-files MODULE]
         [--conformance PROGRAM] [--guest-program PROGRAM] [unittest arguments]
"""

import os
import select
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'host'))
from world import PATIENCE, World, shared_folder  # noqa: E402
from x_server import Server  # noqa: E402

SCREEN = (1024, 768)


def wait_for(condition, what):
    """Answers what the condition answers, once that is true."""
    end = time.monotonic() + PATIENCE
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f'{what} did not come about')
        time.sleep(0.02)


def settled(look, what):
    """What `look` answers as soon as it stays: longer than any step of what fades."""
    def same():
        former = look()
        time.sleep(0.2)
        return [former] if look() == former else None
    return wait_for(same, what)[0]


class Display:
    """An X server of its own with a window manager: openbox, another command, or none."""

    def __init__(self, size=SCREEN, manager=('openbox', '--sm-disable')):
        self.size = size
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ['Xvfb', '-displayfd', str(writing), '-screen', '0', '{}x{}x24'.format(*size),
             '-nolisten', 'tcp', '-noreset'], pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as pipe:
            self.name = ':' + pipe.readline().strip()
        self.environment = {key: value for key, value in os.environ.items()
                            if not key.startswith(('QT_', 'WAYLAND_', 'SESSION_MANAGER', 'DBUS_'))}
        self.environment.update(DISPLAY=self.name, LC_ALL='C.UTF-8')
        self.environment.setdefault('XDG_RUNTIME_DIR', World.shared or tempfile.gettempdir())
        self.processes = [self.server]
        self.known = Server(self.name)
        self.has_other_keys = False
        if manager:
            self.processes.insert(0, subprocess.Popen(
                manager, env=self.environment, stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL))
            # Its list of windows comes last: openbox loses a window that is shown before.
            wait_for(lambda: self.known.listed() is not None, 'a window manager')

    def run(self, *command, data=None, check=True):
        """Standard output of a command on this display."""
        done = subprocess.run(command, env=self.environment, input=data, timeout=PATIENCE,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        if check and done.returncode != 0:
            raise AssertionError(f'{command} failed: {done.stderr!r}')
        return done.stdout.decode(errors='replace')

    def end(self):
        self.known.close()
        for process in self.processes:
            if process.poll() is None:
                process.terminate()
            process.wait()

    # The pointer and the keyboard.

    def tool(self, *words):
        return self.run('xdotool', *[str(word) for word in words])

    def point_at(self, x, y):
        self.tool('mousemove', x, y)

    def click(self, x, y, button=1):
        self.tool('mousemove', x, y, 'click', button)

    def layout(self, *names):
        """Of the keyboard, until the test ends."""
        self.has_other_keys = True
        self.run('setxkbmap', *names)

    def modify_keys(self, *words):
        self.has_other_keys = True
        self.run('xmodmap', *words)

    def reset_keys(self):
        if self.has_other_keys:
            self.layout('us')
            self.has_other_keys = False

    def give_clipboard(self, data):
        # It stays in the background to hand the text out, so its output must not be waited for.
        subprocess.run(['xclip', '-i', '-selection', 'clipboard'], env=self.environment,
                       input=data, check=True, timeout=PATIENCE, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

    # Windows.

    def window(self, title):
        """The number of the window whose title is that, as soon as it can be seen."""
        return wait_for(lambda: self.known.titled(title), f'a window {title!r}')[-1]

    def windows_of(self, process):
        """The numbers of those that can be seen. By the process, since the window server may not
        know yet that a former one has ended."""
        return self.known.windows_of(process.pid, 'veldrin')

    def geometry(self, window):
        """Left, top, width, height on the screen."""
        place = self.known.geometry(window)
        assert place, f'there is no window {window}'
        return place

    def places_of(self, process, without):
        """As `geometry`, for all windows that can be seen but one. Others may go at any time."""
        places = (self.known.geometry(window) for window in self.windows_of(process)
                  if window != without)
        return [place for place in places if place]

    def listed(self):
        """Those that the window manager shows in lists of its own."""
        return self.known.listed() or []

    def is_iconic(self, window):
        return self.known.is_iconic(window)

    def property(self, window, name):
        return self.run('xprop', '-id', str(window), name, check=False)

    # The screen.

    def part(self, left, top, width, height):
        # No server shows what is outside of its screen.
        if left < 0 or top < 0 or left + width > self.size[0] or top + height > self.size[1]:
            return self.screenshot().part(left, top, width, height)
        return Picture(self.known.colours(left, top, width, height), width, height)

    def pixel(self, x, y):
        return self.part(x, y, 1, 1).pixel(0, 0)

    def screenshot(self):
        return self.part(0, 0, *self.size)


class Picture:
    def __init__(self, data, width, height):
        assert len(data) == width * height * 3
        self.data, self.width, self.height = data, width, height

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.data[at:at + 3])

    def has_colours(self):
        """Whether not all of it is of one colour."""
        return self.data != self.data[:3] * (self.width * self.height)

    def part(self, left, top, width, height):
        rows = [self.data[(y * self.width + left) * 3:(y * self.width + left + width) * 3]
                for y in range(top, top + height)]
        return Picture(b''.join(rows), width, height)


class Lines:
    """A process that speaks and listens in lines."""

    def __init__(self, command, environment):
        self.process = subprocess.Popen(command, env=environment, bufsize=0,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.rest = b''
        self.heard = []

    def line(self, patience=PATIENCE):
        """The next line; None if none comes in time or the process has ended."""
        end = time.monotonic() + patience
        while b'\n' not in self.rest:
            ready, _, _ = select.select([self.process.stdout], [], [],
                                        max(0, end - time.monotonic()))
            data = os.read(self.process.stdout.fileno(), 65536) if ready else b''
            if not data:
                return None
            self.rest += data
        line, self.rest = self.rest.split(b'\n', 1)
        return line.decode()

    def expect(self, wanted):
        """Reads on to a line that begins so; what came before it is kept in `heard`."""
        self.heard = []
        while True:
            line = self.line()
            if line is None:
                raise AssertionError(f'{wanted!r} did not come, but {self.heard}')
            if line.startswith(wanted):
                return line
            self.heard.append(line)

    def ask(self, question, answer='done'):
        self.process.stdin.write(os.fsencode(question) + b'\n')
        return self.expect(answer)

    def end(self, patience=PATIENCE):
        self.process.stdin.close()
        try:
            self.process.wait(timeout=patience)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.process.stdout.close()


class OnDisplay(World):
    """Tests on a display; one for all of a class."""

    probe = drag_source = scenario = framing_manager = embedding_tray = slow_files = ''
    conformance = guest_program = ''

    @staticmethod
    def make_display():
        return Display()

    @classmethod
    def setUpClass(cls):
        cls.display = cls.make_display()
        cls.addClassCleanup(cls.display.end)

    def setUp(self):
        super().setUp()
        self.make_later_start()
        self.display.reset_keys()
        self.display.point_at(1000, 740)
        self.environment = {**self.display.environment,
                            **{key: self.environment[key] for key in
                               ('XDG_CONFIG_HOME', 'XDG_RUNTIME_DIR', 'XDG_CACHE_HOME',
                                'XDG_DATA_HOME', 'XDG_STATE_HOME', 'GST_REGISTRY', 'ASAN_OPTIONS',
                                'LSAN_OPTIONS')}}

    def make_later_start(self):
        """What the very first start of all has to find out is known: its window does not wait for
        that, and what was given to it comes after the window."""
        if self.program and not os.path.exists(os.path.join(self.shared, 'veldrin', 'file-types')):
            World.play(self, '--dir', os.path.join(self.folder, 'first'))

    def start_drag(self, *words):
        """A window to drag from. It stays until it is ended."""
        return self.start_lines(self.drag_source, *words, patience=0)

    def start_lines(self, *command, patience=PATIENCE):
        """`patience`: how long it may take to end once its input has ended."""
        lines = Lines([str(word) for word in command], self.environment)
        self.addCleanup(lines.end, patience)
        return lines


def main():
    for name in ('probe', 'drag_source', 'program', 'scenario', 'framing_manager',
                 'embedding_tray', 'slow_files', 'conformance', 'guest_program'):
        option = '--' + name.replace('_', '-')
        if option in sys.argv:
            at = sys.argv.index(option)
            path = os.path.abspath(sys.argv[at + 1])
            del sys.argv[at:at + 2]
            setattr(World if name == 'program' else OnDisplay, name, path)
    World.program = os.fsencode(World.program)
    with shared_folder():
        unittest.main()
