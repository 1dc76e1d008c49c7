"""What the tests of the sound share. Each test file is run as

    FILE VELDRIN ENGINE_LINE [unittest arguments]

Each test has a sound server of its own, and plays to it through the engine or the real program.
What is heard is recorded and measured. A machine that is held up is heard as well, as a gap or as
late: so what is measured is tried a few times, and fails when it is never right. What a fault of
the program makes wrong is wrong each time. If it is never right, but the machine was held up in each
try, the test is skipped and says so.
"""

import os
import subprocess
import sys
import threading
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, '..', 'host'))
import world  # noqa: E402
from pulse import Server, wait_for  # noqa: E402
from stalls import Stalls  # noqa: E402
import waves  # noqa: E402
from waves import RATE  # noqa: E402
from world import PATIENCE, World  # noqa: E402,F401

TRIES = 8
# For a player that is to be heard at once, on a machine that keeps up with it.
QUICK = {'PULSE_LATENCY_MSEC': '20'}


class Answer:
    def __init__(self, line):
        before, after, self.command, *words = line.split(' ', 3)
        self.before, self.after, self.words = float(before), float(after), ' '.join(words)


class Line:
    """The engine in a process of its own, spoken to by lines."""

    def __init__(self, program, environment, output='auto'):
        self.process = subprocess.Popen([program, output], env=environment, bufsize=0,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.answers = []
        self.thread = threading.Thread(target=self.read, daemon=True)
        self.thread.start()

    def read(self):
        for line in self.process.stdout:
            self.answers.append(Answer(line.decode().rstrip('\n')))

    def send(self, text):
        self.process.stdin.write(text.encode() + b'\n')

    def told(self, command, words=None):
        """All answers of this kind so far."""
        return [answer for answer in list(self.answers)
                if answer.command == command and words in (None, answer.words)]

    def wait_for(self, command, words=None, count=1, patience=PATIENCE):
        """The last of so many answers of the kind."""
        def found():
            answers = self.told(command, words)
            return len(answers) >= count and answers[count - 1]
        return wait_for(found, f'{command} {words or ""}', patience)

    def do(self, text):
        """Sends the line and waits for its answer."""
        command = text.split(' ')[0]
        count = len(self.told(command)) + 1
        self.send(text)
        return self.wait_for(command, count=count)

    def end(self):
        """The exit status."""
        if self.process.poll() is None:
            self.process.stdin.close()
        try:
            status = self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            status = self.process.wait()
        self.thread.join()
        self.process.stdout.close()
        return status

    # What it holds.

    def threads(self):
        return len(os.listdir(f'/proc/{self.process.pid}/task'))

    def descriptors(self):
        return len(os.listdir(f'/proc/{self.process.pid}/fd'))

    def memory(self):
        """KiB that are its own."""
        with open(f'/proc/{self.process.pid}/status', encoding='utf-8') as file:
            return next(int(line.split()[1]) for line in file if line.startswith('RssAnon:'))


class Sounding(World):
    engine_line = ''  # set by main
    sinks = {'out': RATE}

    def setUp(self):
        super().setUp()
        self.server = Server(os.path.join(self.folder, 'sound'), self.sinks)
        self.addCleanup(self.server.end)
        self.server.start()
        self.stalls = Stalls()
        self.addCleanup(self.stalls.end)
        self.environment.update(self.server.for_clients)
        # Of what is freed, the sanitizer keeps so much.
        self.environment['ASAN_OPTIONS'] += ':quarantine_size_mb=1'

    def record(self, sink=None):
        recorder = self.server.record(sink)
        self.addCleanup(recorder.end)
        return recorder

    def line(self, sink=None, output='auto', **variables):
        environment = dict(self.environment, **variables)
        if sink:
            environment['PULSE_SINK'] = sink
        line = Line(self.engine_line, environment, output)
        self.addCleanup(line.end)
        return line

    def assert_right(self, attempt):
        """`attempt`, which is given its number and asserts, passes once in a few tries."""
        told = None
        for number in range(TRIES):
            began = time.monotonic()
            try:
                attempt(number)
                return
            except self.failureException as fault:
                if not self.stalls.since(began):
                    told = fault
        self.tell(told)

    def tell(self, fault):
        """What was never right; none if the machine was held up each time."""
        if fault is None:
            self.skipTest('the machine was held up in each try')
        raise fault

    def wait_for_sound(self, loud=waves.LOUD):
        """Until the recorder has heard some of this loudness, and a moment more."""
        wait_for(lambda: max(self.recorder.last(RATE // 50), default=0) > loud // 2, 'the sound')
        self.recorder.wait_for_seconds(0.2, self.recorder.now())


def main():
    Sounding.engine_line = os.path.abspath(sys.argv.pop(2))
    world.main()
