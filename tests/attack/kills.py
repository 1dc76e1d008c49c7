"""Kills the program at random moments, in the terminal: as it starts, plays, gets paths from second
starts, saves its list at the end, or puts a rescue copy back. What the next start makes of the list
must be a state that the list had in the last fifteen seconds before the kill. Eight rounds run side
by side; a thousand take some twenty minutes."""

import concurrent.futures
import os
import random
import shutil
import signal
import tempfile
import time

from world import World, tone

SIDE_BY_SIDE = 8
BOUND = 15.0
# An edit takes effect shortly after its hand-over has been answered.
SLACK = 1.0
LIST = 'Sarnel.Ambrisor.omk'


class Kills(World):
    def runTest(self):
        """Rounds are begun by attack."""

    def furnish(self, chance):
        """The saved list, and paths to add."""
        self.list = os.path.join(self.directory, LIST)
        os.makedirs(self.directory)
        for name in ('first.wav', 'other.wav'):
            os.link(os.path.join(World.shared, 'long.wav'), self.at(name))
        self.spare = [self.at(f'{number}.wav') for number in range(20)]
        for path in self.spare:
            with open(path, 'w'):
                pass
        rows = [self.at('first.wav')]
        rows += [f'/nowhere/{number}.wav' for number in range(chance.choice((0, 30, 3000, 100000)))]
        lines = ['OMK v1.1', f' {len(rows)} ', ' 0 ', *[row for path in rows for row in (path, path)]]
        with open(self.list, 'w', newline='') as file:
            file.write(''.join(line + '\r\n' for line in lines))
        return rows

    def edit(self, chance, rows):
        """One hand-over; answers the rows that it leads to."""
        if chance.random() < 0.8:
            path = chance.choice(self.spare)
            arguments, rows = ['--add', path], [*rows, path]
        else:
            path = self.at('other.wav')
            arguments, rows = [path], [path]
        if self.run_program(*arguments).returncode != 0:
            raise AssertionError('a hand-over failed')
        return rows

    def live(self, process, chance, rows):
        """Lets the run play and be edited for a while. Answers its states with their times."""
        states = [(0.0, rows)]
        if chance.random() < 0.3:
            time.sleep(chance.uniform(0, 0.3))  # while it starts
            return states
        self.read_until(process, b'.wav')
        end = time.monotonic() + chance.choice((0.5, 3, 10, 25)) * chance.random()
        while time.monotonic() < end:
            if chance.random() < 0.5:
                rows = self.edit(chance, rows)
                states.append((time.monotonic(), rows))
            time.sleep(min(max(0, end - time.monotonic()), chance.expovariate(0.5)))
        return states

    def kill(self, process, chance):
        if chance.random() < 0.6:
            process.send_signal(signal.SIGTERM)
            time.sleep(chance.choice((0.01, 0.1)) * chance.random())  # while it saves
        process.kill()
        self.end_of(process)

    def after(self):
        """The rows that the next start finds."""
        process = self.start()
        self.read_until(process, b'.wav')
        process.send_signal(signal.SIGTERM)
        if self.end_of(process) != 0:
            raise AssertionError(f'the next start: {process.complaints!r}')
        left = [name for name in os.listdir(self.directory) if '.ini.' in name]
        if left:
            raise AssertionError(f'left behind: {left}')
        return [os.fsdecode(path) for _, path in self.playlist()[1]]

    def round(self, chance):
        rows = self.furnish(chance)
        process = self.start()
        states = self.live(process, chance, rows)
        killed = time.monotonic()
        self.kill(process, chance)
        if chance.random() < 0.3:
            # Another one, while the next start looks at what there is.
            process = self.start()
            time.sleep(chance.uniform(0, 0.1))
            process.kill()
            self.end_of(process)
        found = self.after()
        ends = [when for when, _ in states[1:]] + [killed + BOUND]
        allowed = [rows for (_, rows), end in zip(states, ends) if end + SLACK > killed - BOUND]
        if found not in allowed:
            raise AssertionError(f'{len(found)} rows; of {len(states)} states {len(allowed)} were '
                                 f'allowed, of {[len(rows) for rows in allowed]} rows')


def one(seed):
    world = Kills()
    world.setUp()
    try:
        world.round(random.Random(seed))
        return None
    except AssertionError as failure:
        return f'round with seed {seed}: {failure}'
    finally:
        world.doCleanups()


def attack(program, rounds, chance):
    World.program = os.fsencode(program)
    with tempfile.TemporaryDirectory(prefix='veldrin-shared-') as World.shared:
        tone(os.path.join(World.shared, 'made.wav'), seconds=600)
        shutil.move(os.path.join(World.shared, 'made.wav'), os.path.join(World.shared, 'long.wav'))
        with concurrent.futures.ThreadPoolExecutor(SIDE_BY_SIDE) as pool:
            for failure in pool.map(one, [chance.randrange(1 << 32) for _ in range(rounds)]):
                if failure:
                    yield failure
