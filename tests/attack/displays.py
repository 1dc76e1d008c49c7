"""Ends of the program in every situation: by each way to end it in order, by losing the connection
to the display, and by the end of the window server itself, which may come while the program is
stopped. Each time on a display of its own; the list must be saved, the exit status and what is said
must be right."""

import os
import signal
import tempfile
import unittest

import situations
from world import World


def server_killed(test):
    test.display.server.kill()


def server_killed_while_stopped(test):
    test.player.send_signal(signal.SIGSTOP)
    test.display.server.kill()
    test.display.server.wait()
    test.player.send_signal(signal.SIGCONT)


situations.LOSSES.update({'server killed': server_killed,
                          'server killed while stopped': server_killed_while_stopped})


class Trial(situations.Situations):
    def __init__(self, situation, end):
        super().__init__()
        self.situation, self.end = situation, end

    def runTest(self):
        self.try_end(self.situation, self.end)


def attack(program, rounds, chance):
    World.program = os.fsencode(program)
    ends = [*situations.ENDS, *situations.LOSSES]
    pairs = [(situation, end) for situation in situations.SITUATIONS for end in ends]
    with tempfile.TemporaryDirectory(prefix='veldrin-shared-') as World.shared:
        while rounds > 0:
            # Each pair once before any comes again.
            for situation, end in chance.sample(pairs, min(rounds, len(pairs))):
                result = unittest.TestResult()
                unittest.TestSuite([Trial(situation, end)]).run(result)
                for _, trace in result.failures + result.errors:
                    yield f'{situation}, {end}: {trace.strip().splitlines()[-1]}'
                rounds -= 1
