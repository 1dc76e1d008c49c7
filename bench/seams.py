#!/usr/bin/env python3
"""Measures the way of the sound to where it is heard, on a sound server of its own: the gap between
two items, how long after the call a stop, a pause, a seek and a change of the volume are heard,
start to first sound, the processor's time and the memory of playing.

    seams.py BUILD [BUILD] [--rounds N] [--seconds N]

BUILD is a build folder with the tests in it; of two the figures stand beside each other. Prints
medians, and the shortest and the longest; nothing is asserted.
"""

import argparse
import os
import signal
import statistics
import subprocess
import sys
import tempfile
import time

sys.path[:0] = [os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', name)
                for name in ('sound', 'host')]
import waves  # noqa: E402
from pulse import Server, wait_for  # noqa: E402
from sounding import QUICK, Line  # noqa: E402
from waves import RATE  # noqa: E402

TICKS = os.sysconf('SC_CLK_TCK')
PIECES = 3
BEFORE = 0.1     # seconds that are looked at before a call
WINDOW = RATE // 100


class Bench:
    def __init__(self, build, folder, rounds, seconds):
        self.program = os.path.join(build, 'host', 'veldrin')
        self.engine_line = os.path.join(build, 'tests', 'sound', 'engine_line')
        self.folder, self.rounds, self.seconds = folder, rounds, seconds
        os.makedirs(folder)
        self.server = Server(os.path.join(folder, 'sound'), {'out': RATE})
        self.server.start()
        self.environment = {**self.server.environment,
                            'GST_REGISTRY': os.path.join(folder, 'registry')}
        self.recorder = self.server.record()
        self.music = self.made('music.wav', waves.sweep(20))
        self.tone = self.made('tone.wav', waves.tone(20))
        self.pieces = [self.made(f'{i}.wav', piece)
                       for i, piece in enumerate(waves.cut(waves.tone(3), PIECES))]

    def made(self, name, samples):
        path = os.path.join(self.folder, name)
        waves.write(path, samples)
        return path

    def measure(self):
        """Lists of figures by their names."""
        found = {}
        self.engine = Line(self.engine_line, {**self.environment, **QUICK})
        for turn in range(self.rounds + 1):
            for name, ask in (('gap', self.gap), ('stop', self.stop), ('pause', self.pause),
                              ('seek', self.seek), ('volume', self.volume)):
                figure = ask()
                if turn:  # the first one warms the caches
                    found.setdefault(f'{name} (ms)', []).append(figure * 1000)
        self.engine.end()
        for turn in range(self.rounds + 1):
            figure = self.start()
            if turn:
                found.setdefault('start to first sound (ms)', []).append(figure * 1000)
        if self.seconds:
            used, memory = self.playing()
            found[f'processor in {self.seconds} s (s)'] = [used]
            found['memory of its own (MiB)'] = [memory]
        return found

    def is_loud(self):
        return max(self.recorder.last(WINDOW), default=0) > waves.LOUD // 2

    def quiet(self):
        self.recorder.wait_for_silence(self.recorder.now())

    def play(self, path):
        self.engine.do('open ' + path)
        wait_for(self.is_loud, 'sound')
        self.recorder.wait_for_seconds(0.3, self.recorder.now())

    def around(self, command):
        answer = self.engine.do(command)
        self.recorder.wait_for_seconds(0.6, answer.before)
        return self.recorder.samples(answer.before - BEFORE)

    def gap(self):
        """What a list takes longer than its music, for each of the seams."""
        since = self.recorder.now()
        count = len(self.engine.told('end')) + 1
        self.engine.send('playlist ' + ' '.join(self.pieces))
        end = self.engine.wait_for('end', count=count)
        self.recorder.wait_for_silence(end.after)
        first, last = waves.sound_in(self.recorder.samples(since))
        return ((last - first) / RATE - 3) / (PIECES - 1)

    def until_silence(self, command):
        self.play(self.music)
        heard = self.around(command)
        self.engine.do('stop')
        self.quiet()
        return waves.sound_in(heard)[1] / RATE - BEFORE

    def stop(self):
        return self.until_silence('stop')

    def pause(self):
        return self.until_silence('pause')

    def until(self, path, command, differs):
        self.play(path)
        place = waves.first_change(self.around(command), differs, WINDOW)
        self.engine.do('stop')
        self.quiet()
        return place / RATE - BEFORE

    def seek(self):
        return self.until(self.music, 'seek 15', lambda part: waves.frequency_of(part) > 700)

    def volume(self):
        seconds = self.until(self.tone, 'volume 50', lambda part: max(part) < waves.LOUD * 0.7)
        self.engine.do('volume 100')
        return seconds

    def veldrin(self, path):
        return subprocess.Popen(
            [self.program, '--no-window', '--dir', os.path.join(self.folder, 'list'), path],
            env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)

    def start(self):
        since = time.monotonic()
        process = self.veldrin(self.tone)
        wait_for(lambda: any(self.recorder.last(WINDOW)), 'sound')
        first = waves.sound_in(self.recorder.samples(since))[0]
        process.send_signal(signal.SIGTERM)
        process.wait()
        self.quiet()
        return first / RATE

    def playing(self):
        """Seconds of the processor's time, with the start, and MiB, for playing an mp3."""
        song = self.made('song.mp3', waves.tone(self.seconds + 10))
        process = self.veldrin(song)
        wait_for(lambda: any(self.recorder.last(WINDOW)), 'sound')
        self.recorder.wait_for_seconds(self.seconds, self.recorder.now())
        with open(f'/proc/{process.pid}/stat', encoding='utf-8') as file:
            fields = file.read().rsplit(')', 1)[1].split()
        with open(f'/proc/{process.pid}/status', encoding='utf-8') as file:
            memory = next(int(line.split()[1]) for line in file if line.startswith('RssAnon:'))
        process.send_signal(signal.SIGTERM)
        process.wait()
        return (int(fields[11]) + int(fields[12])) / TICKS, memory / 1024

    def end(self):
        self.recorder.end()
        self.server.end()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('builds', nargs='+', metavar='BUILD')
    parser.add_argument('--rounds', type=int, default=7)
    parser.add_argument('--seconds', type=int, default=20)
    options = parser.parse_args()
    columns = []
    for number, build in enumerate(options.builds):
        with tempfile.TemporaryDirectory(prefix='veldrin-seams-') as folder:
            bench = Bench(os.path.abspath(build), os.path.join(folder, str(number)), options.rounds,
                          options.seconds)
            try:
                columns.append(bench.measure())
            finally:
                bench.end()
    print(f'{"":28}' + ''.join(f'{build[-30:]:>32}' for build in options.builds))
    for name in columns[0]:
        print(f'{name:28}' + ''.join(
            f'{statistics.median(figures):12.2f} ({min(figures):7.2f} ..{max(figures):7.2f})'
            if len(figures) > 1 else f'{figures[0]:12.2f}{"":20}'
            for figures in (column[name] for column in columns)))


if __name__ == '__main__':
    main()
