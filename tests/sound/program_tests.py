#!/usr/bin/env python3
"""The real program plays a list to a real sound server: every sample is heard, and nothing else."""

import os

import waves
from sounding import Sounding, main

SECONDS = 1.5


class Program(Sounding):
    def setUp(self):
        super().setUp()
        self.tone = waves.tone(SECONDS)
        for i, piece in enumerate(waves.cut(self.tone, 3)):
            waves.write(self.at(f'{i}.flac'), piece)
        os.makedirs(self.directory)
        # Any other volume changes the samples.
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.ini'), 'w', newline='') as file:
            file.write('[Memory]\r\nMusicVolume=100\r\n')

    def assert_all_is_heard(self):
        """Since the recorder has been made."""
        # What is heard behind the end is what the server had already taken.
        self.recorder.wait_for_silence(self.recorder.now())
        heard = self.recorder.samples()
        first, last = waves.sound_in(heard)
        self.assertEqual(last - first, len(self.tone), waves.silences_in(heard[first:last], 44))
        self.assertTrue(heard[first:last] == self.tone)

    def test_end_of_the_program_waits_for_the_last_sample(self):
        def attempt(_):
            self.recorder = self.record()
            done = self.run_program('--no-window', self.music)
            self.assertEqual((done.returncode, done.stderr), (0, b''))
            self.assertEqual(len(done.stdout.splitlines()), 3)
            self.assert_all_is_heard()
        self.assert_right(attempt)


if __name__ == '__main__':
    main()
