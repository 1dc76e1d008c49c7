"""Lists of short items on a sound server of their own: a round is one item of three tenths of a
second, and they come in lists of 500 at most. What is heard must be one tone without a gap, and the
engine must not grow. For a machine that has nothing else to do: one that is held up is heard as a
gap. Takes the engine's test program from the same build.
"""

import os
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'sound'))
import waves  # noqa: E402
from pulse import Server  # noqa: E402
from sounding import Line  # noqa: E402
from waves import RATE  # noqa: E402

SECONDS = 0.3
ITEMS_IN_A_LIST = 500
# From what is held at the hundredth item on.
SETTLED = 100
MORE_MEMORY = 4096  # KiB; an arena of the allocator comes and goes with a thread
MORE_OF_OTHERS = 3  # threads and descriptors, that come and go with an item
ENDINGS = ['wav', 'wav', 'flac']


def held(line):
    return line.threads(), line.descriptors(), line.memory()


def faults(server, program, files):
    line = Line(program, server.environment)
    recorder = server.record()
    try:
        line.send('playlist ' + ' '.join(files))
        settled = min(SETTLED, len(files))
        line.wait_for('item', count=settled, patience=settled * SECONDS * 3 + 15)
        before = held(line)
        line.wait_for('item', count=len(files), patience=len(files) * SECONDS * 3 + 15)
        after = held(line)
        end = line.wait_for('end')
        recorder.wait_for_silence(end.after)
        samples = recorder.samples()
    finally:
        recorder.end()
        status = line.end()
    for name, first, last, more in zip(('threads', 'descriptors', 'KiB'), before, after,
                                       (MORE_OF_OTHERS, MORE_OF_OTHERS, MORE_MEMORY)):
        if last > first + more:
            yield f'{first} {name} have become {last}'
    if status != 0:
        yield f'ended with {status}'
    first, last = waves.sound_in(samples)
    heard, tone = samples[first:last], waves.tone(SECONDS) * len(files)
    for place, length in waves.silences_in(heard, RATE // 1000):
        yield f'{length / RATE * 1000:.0f} ms of silence after {place / RATE / SECONDS:.2f} items'
    if len(heard) != len(tone):
        yield f'{len(heard)} samples instead of {len(tone)}'
    elif heard != tone:
        yield 'other samples'


def attack(program, rounds, chance):
    engine_line = os.path.join(os.path.dirname(program), '..', 'tests', 'sound', 'engine_line')
    with tempfile.TemporaryDirectory(prefix='veldrin-seams-') as folder:
        # A tone of whole periods: any piece joins any other.
        pieces = [os.path.join(folder, f'{i}.{ending}') for i, ending in enumerate(ENDINGS)]
        for path in pieces:
            waves.write(path, waves.tone(SECONDS))
        server = Server(os.path.join(folder, 'server'), {'out': RATE})
        server.start()
        try:
            while rounds > 0:
                count = min(rounds, ITEMS_IN_A_LIST)
                rounds -= count
                yield from faults(server, engine_line, chance.choices(pieces, k=count))
        finally:
            server.end()
