#!/usr/bin/env python3
"""The sound server dies and comes back while an item plays: the music goes on where it would be by
then. The music is a tone that rises, so that it tells its own place.
"""

import time

import waves
from sounding import Sounding, main, wait_for
from waves import RATE

AGAIN = 2.0  # seconds after the server's return until something is heard
LENGTH = 20


class Restart(Sounding):
    def setUp(self):
        super().setUp()
        waves.write(self.at('sweep.wav'), waves.sweep(LENGTH))
        self.recorder = self.record()
        self.engine = self.line()
        self.engine.do('open ' + self.at('sweep.wav'))
        self.wait_for_sound()

    def place(self, samples):
        return waves.place_in_sweep(samples[:RATE // 5]) - 0.1

    def start_of_item(self):
        """When its first sample was heard, or would have been, by what is heard now."""
        self.recorder.wait_for_seconds(0.3, self.recorder.now())
        when = self.recorder.now() - 0.25
        return when - self.place(self.recorder.samples(when))

    def restart(self):
        """Kills the server and starts it again when a second of the music has been heard by nobody.
        Answers how long it takes until something is heard."""
        self.server.kill()
        self.recorder.end()
        position = int(self.engine.do('position').words)
        wait_for(lambda: int(self.engine.do('position').words) >= position + 1, 'position')
        self.server.start()
        back = time.monotonic()
        self.recorder = self.record()
        self.wait_for_sound()
        heard = self.recorder.samples()
        first = self.recorder.start + waves.sound_in(heard)[0] / RATE
        return first - back

    def test_music_goes_on_where_it_would_be(self):
        start = self.start_of_item()
        self.assertLessEqual(self.restart(), AGAIN)
        self.assertAlmostEqual(self.start_of_item(), start, delta=0.5)
        notices = [notice.words for notice in self.engine.told('notice')]
        self.assertEqual(len(notices), 1, notices)

    def test_pause_lasts_over_it(self):
        self.engine.do('pause')
        position = int(self.engine.do('position').words)
        self.server.kill()
        self.recorder.end()
        wait_for(lambda: self.engine.told('notice'), 'a notice')
        self.server.start()
        self.recorder = self.record()
        self.recorder.wait_for_seconds(AGAIN, time.monotonic())
        self.assertFalse(any(self.recorder.samples()))
        self.assertEqual(int(self.engine.do('position').words), position)
        self.engine.do('toggle')
        self.wait_for_sound()
        heard = self.recorder.samples()
        place = self.place(heard[waves.sound_in(heard)[0]:])
        self.assertAlmostEqual(place, position + 0.5, delta=0.6)


if __name__ == '__main__':
    main()
