#!/usr/bin/env python3
"""The real program and files that take long to open: it goes on meanwhile, and its end does not wait.
Run as FILE VELDRIN SLOW_FILES, the latter being slow_files.cpp, built."""

import os
import signal
import sys

import slow
from terminal import Terminal
from world import World, main, tone

NAMES = ('slow 1.wav', 'slow 2.wav', 'good.wav')


class Opening(slow.Slow, World):
    def setUp(self):
        super().setUp()
        for name in NAMES:
            tone(self.at(name), seconds=0.5)

    def start_slow(self):
        self.save_list(*NAMES)
        process = self.start()
        self.wait_until_asked(NAMES[0])
        return process

    def assert_ended_whole(self, process):
        process.wait(timeout=slow.GIVEN_UP - 1)
        self.assertEqual(self.end_of(process), 0)
        self.assertEqual((process.seen, process.complaints), (b'', b''))
        self.assertEqual(self.playlist()[0], 0)
        self.assertEqual(self.paths_saved(), [name.encode() for name in NAMES])

    def test_sigterm_ends_it(self):
        self.assert_signal_ends_it(signal.SIGTERM)

    def test_sigint_ends_it(self):
        self.assert_signal_ends_it(signal.SIGINT)

    def test_sighup_ends_it(self):
        self.assert_signal_ends_it(signal.SIGHUP)

    def assert_signal_ends_it(self, number):
        process = self.start_slow()
        process.send_signal(number)
        self.assert_ended_whole(process)

    def test_another_start_ends_it(self):
        process = self.start_slow()
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assert_ended_whole(process)

    def test_what_another_start_plays_comes_after_it(self):
        tone(self.at('other.wav'), seconds=0.5)
        process = self.start_slow()
        self.assertEqual(self.run_program(self.at('other.wav')).returncode, 0)
        self.answer()
        self.assertEqual(self.end_of(process), 0)
        self.assertEqual(process.seen, b'  1. slow 1.wav  [0:01]\n  2. other.wav  [0:01]\n')
        self.assertEqual(self.paths_saved(), [b'other.wav'])

    def test_what_is_asked_of_it_comes_after_it_but_for_how_it_stands(self):
        process = self.start_slow()
        stands = self.run_program('--status')
        self.assertEqual(stands.returncode, 0, stands.stderr)
        self.assertEqual(stands.stdout.split(b'\t')[7], b'3')
        for verbs in (['--volume', '7'], ['--volume', '+1', '--volume', '+1']):
            self.assertEqual(self.run_program(*verbs).returncode, 0)
        self.answer()
        self.assertEqual(self.end_of(process), 0)
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.ini')) as file:
            self.assertIn('MusicVolume=9\n', file.read())

    def test_the_next_ones_of_a_place_that_does_not_answer_are_not_waited_for_as_long(self):
        names = [f'slow {number}.wav' for number in range(1, 4)]
        self.save_list(*names, 'good.wav')
        process = self.start()
        self.assertEqual(self.end_of(process), 0)  # 5 s and twice half a second, not 15 s
        self.assertEqual(process.seen, b'  1. good.wav  [0:01]\n')
        self.assertEqual(self.asked(), names)


class Keys(slow.Slow, Terminal):
    """On a terminal, where something plays already."""

    def open_and_press_next(self):
        self.save_list('a.wav', 'slow 1.wav', 'b.wav', 'c.wav')
        tone(self.at('slow 1.wav'), seconds=60)
        self.open_terminal()
        self.expect(b'a.wav')
        self.press(b'b')
        self.wait_until_asked('slow 1.wav')

    def test_q_ends_it(self):
        self.open_and_press_next()
        self.press(b'q')
        self.assertEqual(self.status(), 0)
        self.assertEqual(self.playlist()[0], 1)

    def test_the_clock_goes_on_and_impatience_counts_once(self):
        self.open_and_press_next()
        self.expect(b'0:01 /')  # of what plays
        self.press(b'bbbbb')
        self.answer()
        self.expect(b'2. slow 1.wav')
        self.expect(b'3. b.wav')
        self.press(b'q')
        self.assertEqual(self.status(), 0)
        self.assertEqual(self.playlist()[0], 2)


if __name__ == '__main__':
    World.slow_files = sys.argv.pop()
    main()
