#!/usr/bin/env python3
"""Measures the window against a bare widget of the toolkit, in turn and on a display of its own:
time to the first picture, memory, the processor's time over a while, and the way of a menu and of a
tooltip to the screen.

    window.py BUILD [--rounds N] [--seconds N]

BUILD is a build folder with the benchmarks in it. Prints medians; nothing is asserted.
"""

import argparse
import contextlib
import ctypes
import os
import signal
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests',
                                'desktop'))
from desktop import Display  # noqa: E402

TICKS = os.sysconf('SC_CLK_TCK')


class Bench:
    def __init__(self, options, folder):
        self.build, self.folder = os.path.abspath(options.build), folder
        self.rounds, self.seconds = options.rounds, options.seconds
        self.display = Display()
        self.environment = {**self.display.environment, 'XDG_RUNTIME_DIR': folder,
                            'XDG_CACHE_HOME': os.path.join(folder, 'cache'),
                            'XDG_STATE_HOME': os.path.join(folder, 'state'),
                            'GST_REGISTRY': os.path.join(folder, 'registry')}
        self.player = os.path.join(self.build, 'host', 'veldrin')

    def directory(self, name, rows, settings=''):
        """A component directory with a playlist of so many rows."""
        path = os.path.join(self.folder, name)
        os.makedirs(path)
        with open(os.path.join(path, 'Sarnel.Ambrisor.ini'), 'w') as file:
            file.write(f'[Memory]\r\nX=100\r\nY=100\r\n{settings}')
        lines = ['OMK v1.1', str(rows), '0']
        for row in range(rows):
            lines += [f'The Plucked Strings - Morning Stairs, part {row}',
                      f'/home/listener/music/The Plucked Strings/{row} Morning Stairs.mp3']
        with open(os.path.join(path, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
            file.write('\r\n'.join(lines) + '\r\n')
        return path

    def veldrin(self, directory, *arguments, scale=1):
        return [self.player, '--output', 'null', '--scale', str(scale), '--dir', directory,
                *arguments]

    def first_picture(self, command, scale):
        """Milliseconds to the first picture and to the last change, KiB. Looks at the window's
        lowest rows, which come last: a look at all of it would hold up the server."""
        place = (100 * scale, (100 + 277) * scale - 8, 293 * scale, 8)
        done = subprocess.run([os.path.join(self.build, 'bench', 'first_picture'),
                               *map(str, place), '1500', *command],
                              env=self.environment, stdout=subprocess.PIPE, check=True)
        return [float(word) for word in done.stdout.split()]

    def starts(self):
        programs = {'bare widget': ([os.path.join(self.build, 'bench', 'bare_widget')], 1)}
        for rows in (0, 10_000, 20_000, 100_000):
            programs[f'{rows} rows'] = (self.veldrin(self.directory(f'rows{rows}', rows)), 1)
        directory = self.directory('twice', 10_000)
        programs['10000, at 2'] = (self.veldrin(directory, scale=2), 2)
        found = {name: [] for name in programs}
        for turn in range(self.rounds + 1):
            for name, (command, scale) in programs.items():
                figures = self.first_picture(command, scale)
                if turn:  # the first one warms the caches
                    found[name].append(figures)
        print('                 first picture   last change     memory')
        for name, all_figures in found.items():
            first, last, memory = (statistics.median(column) for column in zip(*all_figures))
            print(f'{name:14}  {first:10.1f} ms  {last:10.1f} ms  {memory / 1024:6.1f} MiB')

    def processor_time(self, name, command, prepare=lambda: None):
        process = subprocess.Popen(command, env=self.environment)
        time.sleep(3)
        prepare()
        before = self.ticks(process.pid)
        time.sleep(self.seconds)
        used = (self.ticks(process.pid) - before) / TICKS
        print(f'{name:14}  {used:10.2f} s of processor time in {self.seconds} s')
        process.send_signal(signal.SIGTERM)
        process.wait()

    @staticmethod
    def ticks(pid):
        with open(f'/proc/{pid}/stat') as file:
            fields = file.read().rsplit(')', 1)[1].split()
        return int(fields[11]) + int(fields[12])

    def processor_times(self):
        song = os.path.join(self.folder, 'The Plucked Strings with a long name of their own.mp3')
        subprocess.run(['sox', '-n', '-r', '44100', '-c', '2', song, 'synth',
                        str(self.seconds + 30), 'pluck', 'vol', '0.5'], check=True)
        self.processor_time('bare beat', [os.path.join(self.build, 'bench', 'bare_beat')])
        self.processor_time('minimised', self.veldrin(self.directory('minimised', 0)),
                            lambda: self.display.tool('search', '--onlyvisible', '--name', 'Veldrin',
                                                      'windowminimize'))
        self.processor_time('stopped', self.veldrin(self.directory('stopped', 0)))
        self.processor_time('stopped, list', self.veldrin(self.directory('stopped12', 1000)))
        self.processor_time('playing', self.veldrin(self.directory('playing', 0), song))
        self.processor_time('stopped, at 2',
                            self.veldrin(self.directory('stopped2', 1000), scale=2))
        self.processor_time('playing, at 2',
                            self.veldrin(self.directory('playing2', 0), song, scale=2))

    def menus(self):
        """From the press of the right button on the window's surface to its menu."""
        process = subprocess.Popen(self.veldrin(self.directory('menus', 0)), env=self.environment)
        time.sleep(2)
        onlooker = Onlooker(self.display)
        x, y = 110, 110  # beside the title, which would be seen to move
        times = []
        for _ in range(max(self.rounds, 1)):
            self.display.point_at(x, y)
            time.sleep(0.3)
            with onlooker.pressing(3):
                times.append(onlooker.last_change(x - 30, y + 20, 0.3))
            self.display.tool('key', 'Escape')
        self.end('menu', process, times)

    def tooltips(self):
        """From the pointer's move onto a button to its tooltip."""
        process = subprocess.Popen(self.veldrin(self.directory('tooltips', 0)),
                                   env=self.environment)
        time.sleep(2)
        onlooker = Onlooker(self.display)
        x, y = 145, 356  # the button that plays
        times = []
        for _ in range(max(self.rounds, 1)):
            self.display.point_at(5, 5)
            time.sleep(0.8)
            onlooker.point_at(x, y)
            times.append(onlooker.last_change(x - 10, y + 24, 0.3))
        self.end('tooltip', process, times)

    @staticmethod
    def end(name, process, times):
        print(f'{name:14}  {statistics.median(times):10.1f} ms  longest {max(times):.1f} ms')
        process.send_signal(signal.SIGTERM)
        process.wait()


class Onlooker:
    """Points, presses, and sees what comes of it, faster than a tool could be started."""

    SIDE = 60  # pixels

    def __init__(self, display):
        self.known, self.test = display.known, ctypes.CDLL('libXtst.so.6')
        self.x, self.server = self.known.x, self.known.server

    def look(self, left, top):
        return self.known.look(left, top, self.SIDE, self.SIDE)

    def point_at(self, x, y):
        self.test.XTestFakeMotionEvent(self.server, -1, x, y, ctypes.c_ulong(0))

    @contextlib.contextmanager
    def pressing(self, button):
        self.test.XTestFakeButtonEvent(self.server, button, 1, ctypes.c_ulong(0))
        yield
        self.test.XTestFakeButtonEvent(self.server, button, 0, ctypes.c_ulong(0))
        self.x.XFlush(self.server)

    def last_change(self, left, top, seconds):
        """Milliseconds from now, when what was done is sent, to the last change of what is seen
        there. Nothing of it may have changed before."""
        start, last, former = time.monotonic(), 0, None
        self.x.XFlush(self.server)
        while time.monotonic() < start + seconds:
            seen = self.look(left, top)
            if former is not None and seen != former:
                last = time.monotonic() - start
            former = seen
        return last * 1000


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('build')
    parser.add_argument('--rounds', type=int, default=11)
    parser.add_argument('--seconds', type=int, default=60)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix='veldrin-bench-') as folder:
        bench = Bench(options, folder)
        try:
            if options.rounds:
                bench.starts()
                bench.menus()
                bench.tooltips()
            if options.seconds:
                bench.processor_times()
        finally:
            bench.display.end()


if __name__ == '__main__':
    main()
