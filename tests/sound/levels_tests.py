#!/usr/bin/env python3
"""A change of the volume or of an effect is heard at once. Volume and equaliser do not step."""

import waves
from sounding import QUICK, Sounding, main
from waves import RATE

AT_ONCE = 0.030    # seconds until heard
STRETCHED = 0.120  # for what stretches time
BEFORE, AFTER = 0.1, 0.25
STEP = 100         # a bend that no ramp makes


class Levels(Sounding):
    def setUp(self):
        super().setUp()
        self.recorder = self.record()
        self.engine = self.line(**QUICK)

    def play(self, samples, loud=waves.LOUD):
        path = self.at('tone.wav')
        waves.write(path, samples)
        self.engine.do('open ' + path)
        self.wait_for_sound(loud)

    def around(self, command):
        answer = self.engine.do(command)
        self.recorder.wait_for_seconds(AFTER, answer.before)
        return self.recorder.samples(answer.before - BEFORE)[:round((BEFORE + AFTER) * RATE)]

    def assert_changes(self, command, period):
        """A third of the change of the level is heard at once, and it does not step. `period`:
        samples of the tone, whose level is known only when all of one has passed."""
        heard = self.around(command)
        ends = heard[:round(BEFORE * RATE) // 2], heard[-RATE // 20:]
        before, after = map(max, ends)
        self.assertGreater(abs(after - before), before / 5, f'{command} is not heard')
        place = waves.first_change(
            heard, lambda part: abs(max(part) - before) > abs(after - before) / 3, period + 1)
        self.assertLessEqual(place / RATE - BEFORE, AT_ONCE, command)
        own = max(map(waves.largest_bend, ends))
        self.assertLess(waves.largest_bend(heard), own * 1.1 + STEP, command)

    def test_volume(self):
        self.play(waves.tone(30))
        for volume in (50, 100, 30, 100):
            def attempt(_, volume=volume):
                self.around(f'volume {80 if volume < 80 else 60}')
                self.assert_changes(f'volume {volume}', RATE // waves.FREQUENCY)
            self.assert_right(attempt)

    def test_volume_of_nothing_and_back(self):
        self.play(waves.tone(30))

        def attempt(_):
            self.assertFalse(any(self.around('volume 0')[-RATE // 20:]))
            self.assertGreater(max(self.around('volume 100')), waves.LOUD * 0.9)
        self.assert_right(attempt)

    def test_equaliser(self):
        for band, frequency in ('bass', 110), ('mid', 1100), ('treble', 6300):
            self.play(waves.tone(30, frequency=frequency, loud=2000), 2000)
            for decibels in (-15, 0):
                def attempt(_, setting=f'{band} {decibels}', back=f'{band} {-12 - decibels}',
                            period=RATE // frequency):
                    self.around(back)
                    self.assert_changes(setting, period)
                with self.subTest(band=band, decibels=decibels):
                    self.assert_right(attempt)

    def test_pitch(self):
        self.play(waves.tone(30))

        def attempt(_):
            for semitones, is_new in ((12, lambda hertz: hertz > 800),
                                      (0, lambda hertz: 0 < hertz < 500)):
                place = waves.first_change(self.around(f'pitch {semitones}'),
                                           lambda part, is_new=is_new: is_new(
                                               waves.frequency_of(part)), RATE // 100)
                self.assertIsNotNone(place, semitones)
                self.assertLessEqual(place / RATE - BEFORE, STRETCHED, semitones)
        self.assert_right(attempt)

    def test_tempo(self):
        """The frequency rises quicker from where the tempo is another one."""
        self.play(waves.sweep(20))

        def attempt(_):
            for percent, old, new in (50, 1.0, 1.5), (0, 1.5, 1.0):
                self.recorder.wait_for_seconds(0.4, self.recorder.now())
                answer = self.engine.do(f'tempo {percent}')
                self.recorder.wait_for_seconds(0.8, answer.before)
                heard = self.recorder.samples(answer.before - 0.4)
                before = self.place(heard, 0.2)  # 0.2 s before the call
                after = self.place(heard, 1.0)   # 0.6 s behind it
                # Played at the old pace up to the change and at the new one from it.
                delay = (after - before - 0.8 * new) / (old - new) - 0.2
                self.assertLessEqual(delay, STRETCHED, percent)
        self.assert_right(attempt)

    def place(self, heard, seconds):
        middle = round(seconds * RATE)
        return waves.place_in_sweep(heard[middle - RATE // 10:middle + RATE // 10])


if __name__ == '__main__':
    main()
