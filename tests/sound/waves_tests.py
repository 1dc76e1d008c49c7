#!/usr/bin/env python3
"""Whether the measures find in sound what was put into it."""

import array
import unittest

import waves
from waves import LOUD, RATE, tone


def silence(samples):
    return array.array('h', bytes(2 * samples))


class Measures(unittest.TestCase):
    def setUp(self):
        self.tone = tone(0.5)

    def test_where_the_sound_is(self):
        self.assertEqual(waves.sound_in(silence(100) + self.tone + silence(50)),
                         (100, 100 + len(self.tone)))
        self.assertEqual(waves.sound_in(silence(100)), (0, 0))

    def test_silences_in_it(self):
        # A cosine of 440 Hz passes the floor within a few samples.
        self.assertEqual(waves.silences_in(self.tone, 44), [])
        first, second = self.tone[:1000], self.tone[:2000]
        self.assertEqual(waves.silences_in(first + silence(45) + second, 44), [(1000, 45)])
        self.assertEqual(waves.silences_in(first + silence(44) + second, 44), [])

    def test_a_tone_bends_by_itself_and_no_more(self):
        self.assertLessEqual(waves.largest_bend(self.tone), waves.own_bend() + 2)

    def test_a_cut_bends_wherever_it_is(self):
        for place in range(5000, 5100, 7):
            self.assertGreater(waves.largest_bend(self.tone[:place] + silence(100)),
                               10 * waves.own_bend(), place)

    def test_a_sample_left_out_bends(self):
        worst = max(waves.largest_bend(self.tone[:place] + self.tone[place + 1:])
                    for place in range(5000, 5100, 7))
        self.assertGreater(worst, 5 * waves.own_bend())

    def test_a_step_of_a_tenth_bends_and_a_ramp_of_five_milliseconds_does_not(self):
        step = array.array('h', (sample * 9 // 10 for sample in self.tone[10040:]))
        self.assertGreater(waves.largest_bend(self.tone[:10040] + step), 4 * waves.own_bend())
        ramp = array.array('h', (round(sample * (1 - i / 220))
                                 for i, sample in enumerate(self.tone[10040:10260])))
        self.assertLess(waves.largest_bend(self.tone[:10040] + ramp + silence(99)),
                        4 * waves.own_bend())

    def test_frequency_and_place(self):
        self.assertAlmostEqual(waves.frequency_of(tone(0.1, frequency=880)), 880, delta=0.5)
        self.assertEqual(waves.frequency_of(silence(1000)), 0)
        found = waves.sweep(10)[RATE * 7:RATE * 7 + RATE // 5]
        self.assertAlmostEqual(waves.place_in_sweep(found), 7.1, delta=0.02)

    def test_first_change(self):
        changed = self.tone[:9000] + tone(0.2, loud=LOUD // 2)
        place = waves.first_change(changed, lambda part: max(part) < LOUD * 0.6, 200)
        self.assertLess(abs(place - 9000), 100)
        self.assertIsNone(waves.first_change(self.tone, lambda part: max(part) < LOUD * 0.6, 200))

    def test_pieces_are_the_whole(self):
        pieces = waves.cut(self.tone, 3)
        self.assertEqual(len(pieces), 3)
        self.assertEqual(pieces[0] + pieces[1] + pieces[2], self.tone)
        self.assertNotEqual(len(pieces[0]), len(pieces[1]))


if __name__ == '__main__':
    unittest.main(argv=['waves_tests.py'])
