"""Ends and keys at random moments of openings that last: of some rows, opening hangs until the round
is nearly over. The program has to end in order and in time, with a whole list. Needs slow_files, as
./test builds it."""

import glob
import os
import shutil
import signal
import subprocess
import tempfile
import time

from world import World, tone

PATIENCE = 10
ENDS = (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, 'quit')


def slow_files(program):
    found = glob.glob(os.path.join(os.path.dirname(program), '..', '**', 'libslow_files.so'),
                      recursive=True)
    if not found:
        raise SystemExit('slow_files has not been built beside ' + program)
    return os.path.abspath(found[0])


class Round:
    def __init__(self, program, folder, chance, module):
        self.program, self.folder, self.chance = program, folder, chance
        self.until = os.path.join(folder, 'answers')
        self.directory = os.path.join(folder, 'directory')
        self.list = os.path.join(self.directory, 'Sarnel.Ambrisor.omk')
        self.environment = dict(os.environ, HOME=folder, XDG_RUNTIME_DIR=folder,
                                LD_PRELOAD=module, SLOW_UNTIL=self.until, LC_ALL='C.UTF-8')

    def write_list(self, sound):
        os.mkdir(self.directory)
        self.rows = []
        for number in range(self.chance.randrange(1, 12)):
            kind = self.chance.choice(('slow', 'good', 'gone', 'empty'))
            path = os.path.join(self.folder, f'{kind} {number}.wav')
            if kind in ('slow', 'good'):
                shutil.copy(sound, path)
            elif kind == 'empty':
                open(path, 'w').close()
            self.rows.append(path)
        current = self.chance.randrange(len(self.rows))
        with open(self.list, 'w', newline='') as file:
            file.write(f'OMK v1.1\r\n {len(self.rows)} \r\n {current} \r\n'
                       + ''.join(f'x\r\n{row}\r\n' for row in self.rows))

    def run(self):
        process = subprocess.Popen(
            [self.program, '--no-window', '--output', 'null', '--dir', self.directory],
            env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE)
        time.sleep(self.chance.random() * self.chance.choice((0.2, 1, 4)))
        end = self.chance.choice(ENDS)
        if end == 'quit':
            subprocess.run([self.program, '--quit', '--dir', self.directory], env=self.environment,
                           stderr=subprocess.DEVNULL, check=False)
        elif process.poll() is None:
            process.send_signal(end)
        try:
            _, errors = process.communicate(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            return f'{end} did not end it'
        # Before it listens to signals they end it by themselves, as any program.
        if process.returncode < 0 and -process.returncode != end or b'anitizer' in errors:
            return f'{end}: status {process.returncode}: {errors.decode(errors="replace")}'
        return self.fault_of_list(end)

    def fault_of_list(self, end):
        with open(self.list, encoding='utf-8', newline='') as file:
            lines = file.read().split('\r\n')
        if lines[0] != 'OMK v1.1' or lines[4::2] != self.rows:
            return f'{end}: the list is {lines}'
        return None


def attack(program, rounds, chance):
    module = slow_files(program)
    with tempfile.TemporaryDirectory(prefix='veldrin-attack-') as top:
        World.shared = top
        sound = tone(os.path.join(top, 'sound.wav'), seconds=0.5)
        for number in range(rounds):
            folder = os.path.join(top, str(number))
            os.mkdir(folder, 0o700)
            one = Round(program, folder, chance, module)
            one.write_list(sound)
            fault = one.run()
            if fault:
                yield f'round {number}: {fault}'
            shutil.rmtree(folder)
