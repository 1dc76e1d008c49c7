#!/usr/bin/env python3
"""What is asked for in the midst of an item is heard at once and does not click. The music is a
tone that rises, so that it tells its own place.
"""

import array

import waves
from sounding import QUICK, Sounding, main
from waves import RATE

AT_ONCE = 0.060   # seconds until heard
BEFORE = 0.1      # seconds that are looked at before it
AFTER = 0.25      # and after it
WINDOW = RATE // 100
# More than a fade of 5 ms bends, less than a cut anywhere in the tone.
CLICK = 150
HIGH = 700        # Hz; the music reaches it after 10 s


def smooth(samples):
    """Begins out of silence within 10 ms."""
    ramp = array.array('h', (sample * i // WINDOW for i, sample in enumerate(samples[:WINDOW])))
    return ramp + samples[WINDOW:]


class Transport(Sounding):
    def setUp(self):
        super().setUp()
        waves.write(self.at('music.wav'), smooth(waves.sweep(20)))
        waves.write(self.at('high.wav'), smooth(waves.tone(2, frequency=HIGH)))
        self.recorder = self.record()
        self.engine = self.line(**QUICK)

    def play(self, attempt):
        """The music, until it has been heard for a moment, each time a little longer."""
        self.engine.do('stop')
        self.assertEqual(self.engine.do('open ' + self.at('music.wav')).words, 'yes')
        self.wait_for_sound()
        self.recorder.wait_for_seconds(0.0037 * attempt, self.recorder.now())

    def around(self, when):
        """What is heard around this time."""
        self.recorder.wait_for_seconds(AFTER, when)
        return self.recorder.samples(when - BEFORE)[:round((BEFORE + AFTER) * RATE)]

    def assert_no_click(self, samples, highest):
        self.assertLess(waves.largest_bend(samples), waves.own_bend(frequency=highest) + CLICK)

    def assert_silent_at_once(self, answer):
        heard = self.around(answer.before)
        self.assertFalse(any(heard[-WINDOW:]))
        self.assertLessEqual(waves.sound_in(heard)[1] / RATE - BEFORE, AT_ONCE)
        self.assert_no_click(heard, 400)

    def assert_high_at_once(self, when):
        """Answers what is heard from then on."""
        heard = self.around(when)
        place = waves.first_change(heard, lambda part: waves.frequency_of(part) > HIGH - 30, WINDOW)
        self.assertIsNotNone(place)
        self.assertLessEqual(place / RATE - BEFORE, AT_ONCE)
        self.assert_no_click(heard, 1000)
        return heard[place:]

    def test_stop(self):
        def attempt(number):
            self.play(number)
            self.assert_silent_at_once(self.engine.do('stop'))
        self.assert_right(attempt)

    def test_pause(self):
        def attempt(number):
            self.play(number)
            self.assert_silent_at_once(self.engine.do('pause'))
        self.assert_right(attempt)

    def test_end_of_a_pause(self):
        def attempt(number):
            self.play(number)
            pause = self.engine.do('pause')
            self.around(pause.before)
            end = self.engine.do('toggle')
            heard = self.around(end.before)
            self.assertLessEqual(waves.sound_in(heard)[0] / RATE - BEFORE, AT_ONCE)
            self.assert_no_click(heard, 400)
            self.assert_nothing_left_out(self.recorder.samples(pause.before - 2 * BEFORE))
        self.assert_right(attempt)

    def assert_nothing_left_out(self, heard):
        """Of the music on both sides of the silence, but what the fades take."""
        start, length = max(waves.silences_in(heard, RATE // 10), key=lambda run: run[1])
        tenth = RATE // 10
        before = waves.place_in_sweep(heard[start - tenth:start])
        after = waves.place_in_sweep(heard[start + length:start + length + tenth])
        self.assertAlmostEqual(after - before, 0.1, delta=0.05)

    def test_seek(self):
        def attempt(number):
            self.play(number)
            heard = self.assert_high_at_once(self.engine.do('seek 15').before)
            # The middle of a tenth of a second, behind the window in which it was found.
            self.assertAlmostEqual(waves.place_in_sweep(heard[2 * WINDOW:12 * WINDOW]), 15.07,
                                   delta=0.03)
        self.assert_right(attempt)

    def test_another_item(self):
        """Opening takes the time that it takes; from then on it is heard at once."""
        def attempt(number):
            self.play(number)
            self.assert_high_at_once(self.engine.do('open ' + self.at('high.wav')).after)
        self.assert_right(attempt)

    def test_end_without_another_item_is_heard_to_its_last_sample(self):
        tone = waves.tone(0.6)
        waves.write(self.at('tone.wav'), tone)

        def attempt(_):
            since = self.recorder.now()
            self.engine.do('open ' + self.at('tone.wav'))
            end = self.engine.do('wait')
            self.recorder.wait_for_silence(end.after)
            heard = self.recorder.samples(since)
            first, last = waves.sound_in(heard)
            self.assertTrue(heard[first:last] == tone, (last - first, len(tone)))
        self.assert_right(attempt)


if __name__ == '__main__':
    main()
