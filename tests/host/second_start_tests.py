#!/usr/bin/env python3
"""The real program: several starts of it."""

import os
import re
import signal
import time

from world import PATIENCE, World, main, tone


class SecondStart(World):
    def setUp(self):
        super().setUp()
        tone(self.at('long.wav'), seconds=60)
        tone(self.at('b.wav'))

    def start_first(self):
        first = self.start(self.at('long.wav'))
        self.read_until(first, b'long.wav')
        self.assertEqual(self.run_program().returncode, 0)  # it listens
        return first

    def test_add_enqueues_into_the_first(self):
        first = self.start_first()
        second = self.run_program('--add', 'b.wav', cwd=self.music)
        self.assertEqual((second.returncode, second.stdout, second.stderr), (0, b'', b''))
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(first), 0)
        self.assertNotIn(b'b.wav', first.seen)
        current, rows = self.playlist()
        self.assertEqual(current, 0)
        self.assertEqual([path for _, path in rows],
                         [self.at('long.wav').encode(), self.at('b.wav').encode()])

    def test_path_plays_in_the_first(self):
        first = self.start_first()
        self.assertEqual(self.play(self.at('b.wav')).returncode, 0)
        self.read_until(first, b'  2. b.wav  [0:01]\n')
        self.assertEqual(self.end_of(first), 0)
        self.assertEqual(self.paths_saved(), [b'b.wav'])

    def test_list_that_is_emptied_meanwhile_still_comes_to_an_end(self):
        tone(self.at('short.wav'), seconds=1.5)
        with open(self.at('notes.txt'), 'w') as file:
            file.write('not music')
        first = self.start(self.at('short.wav'))
        self.read_until(first, b'short.wav')
        self.assertEqual(self.play(self.at('notes.txt')).returncode, 0)
        self.assertEqual(self.end_of(first), 0)
        self.assertEqual(first.seen, b'  1. short.wav  [0:02]\n')
        self.assertEqual(self.paths_saved(), [])

    def test_several_paths_go_over_in_order(self):
        first = self.start_first()
        for name in ('c.wav', 'd.wav'):
            tone(self.at(name))
        second = self.play('d.wav', 'b.wav', 'c.wav', cwd=self.music)
        self.assertEqual(second.returncode, 0)
        self.assertEqual(self.end_of(first), 0)
        self.assertEqual(re.findall(r'\d+\. (\S+)', first.seen.decode()),
                         ['long.wav', 'd.wav', 'b.wav', 'c.wav'])

    def test_name_that_is_not_utf8_goes_over(self):
        name = os.path.join(self.music.encode(), b'\xe9\n".wav')
        tone(name)
        first = self.start_first()
        self.assertEqual(self.run_program('--add', name).returncode, 0)
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(first), 0)
        self.assertEqual(self.playlist()[1][1][1], name)

    def test_start_without_path_says_that_one_runs(self):
        first = self.start_first()
        second = self.play()
        self.assertEqual((second.returncode, second.stderr), (0, b'veldrin: already running\n'))
        self.assertIsNone(first.poll())

    def test_path_that_leads_nowhere_is_not_handed_over(self):
        first = self.start_first()
        self.assertEqual(self.play(self.at('none.wav')).returncode, 1)
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(first), 0)
        self.assertEqual(self.paths_saved(), [b'long.wav'])

    def test_quit_returns_when_the_list_is_saved(self):
        first = self.start_first()
        result = self.run_program('--quit')
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b'', b''))
        self.assertEqual(self.paths_saved(), [b'long.wav'])
        self.assertEqual(self.end_of(first), 0)

    def test_quit_without_a_running_one(self):
        result = self.run_program('--quit')
        self.assertEqual((result.returncode, result.stderr),
                         (1, b'veldrin: no veldrin is running\n'))
        self.assert_nothing_started()

    def test_directories_do_not_meet(self):
        first = self.start_first()
        other = self.play('--dir', os.path.join(self.folder, 'other'), self.at('b.wav'))
        self.assertEqual((other.returncode, other.stdout), (0, b'  1. b.wav  [0:01]\n'))
        self.assertIsNone(first.poll())

    def test_start_after_a_crash(self):
        first = self.start_first()
        first.kill()
        first.communicate()
        leftovers = os.listdir(os.path.join(self.folder, 'runtime'))
        self.assertEqual(len([name for name in leftovers if name.endswith('.socket')]), 1)
        result = self.play(self.at('b.wav'))
        self.assertEqual((result.returncode, result.stderr), (0, b''))
        self.assertEqual(self.run_program('--quit').returncode, 1)

    def test_frozen_one_is_given_up(self):
        first = self.start_first()
        first.send_signal(signal.SIGSTOP)
        start = time.monotonic()
        second = self.run_program('--add', self.at('b.wav'))
        passed = time.monotonic() - start
        quitting = self.run_program('--quit')
        first.send_signal(signal.SIGCONT)
        self.assertEqual((second.returncode, second.stderr),
                         (1, b'veldrin: the running veldrin does not answer\n'))
        self.assertTrue(1.9 <= passed < 4, passed)
        self.assertEqual((quitting.returncode, quitting.stderr),
                         (1, b'veldrin: the running veldrin does not answer\n'))
        # What was said to have failed does not happen afterwards.
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(first), 0)
        self.assertEqual(self.paths_saved(), [b'long.wav'])

    def test_starts_that_race_end_up_in_one(self):
        names = [f'r{i}.wav' for i in range(5)]
        for name in names:
            tone(self.at(name), seconds=30)
        starts = [self.start('--add', self.at(name)) for name in names]
        self.wait_until(lambda: sum(start.poll() is None for start in starts) == 1)
        self.assertEqual(self.run_program('--quit').returncode, 0)
        for start in starts:
            self.assertEqual(self.end_of(start), 0, start.complaints)
        self.assertEqual(sorted(self.paths_saved()), [name.encode() for name in names])

    def test_without_runtime_folder_it_makes_one_of_its_own(self):
        del self.environment['XDG_RUNTIME_DIR']
        first = self.start_first()
        own = f'/tmp/veldrin-{os.geteuid()}'
        locks = [name for name in os.listdir(own) if self.holds(first, os.path.join(own, name))]
        self.assertEqual(len(locks), 1)
        self.addCleanup(os.remove, os.path.join(own, locks[0]))
        self.assertEqual(os.stat(own).st_mode & 0o777, 0o700)
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(first), 0)

    def holds(self, process, path):
        """Whether the process has the file open."""
        folder = f'/proc/{process.pid}/fd'
        return any(os.path.realpath(os.path.join(folder, name)) == path
                   for name in os.listdir(folder))

    def wait_until(self, holds):
        end = time.monotonic() + PATIENCE
        while not holds():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.01)


if __name__ == '__main__':
    main()
