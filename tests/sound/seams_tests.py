#!/usr/bin/env python3
"""Items one behind the other are heard as the one tone that they were cut from. Several lists play
beside each other, each to a sink of its own.
"""

import array
import threading
import time

import waves
from sounding import Sounding, main
from waves import LOUD, RATE

SECONDS = 1.5
TRIES = 3
AT_ONCE = 4
MANY, SHORT = 40, 0.3  # items, and the seconds of each
# Of a tone's amplitude, what codecs may add: in the midst of a piece, and near its ends, where they
# know nothing of the other pieces.
MIDST, NEAR_ENDS = 0.05, 0.4
END = 0.05  # seconds that are near


class List:
    """What is to be played and how it must be heard."""

    def __init__(self, files, check, commands=()):
        self.files, self.check, self.commands = files, check, commands


class Played:
    """A list that plays, and what is heard of it."""

    def __init__(self, test, name, played):
        self.rate = test.sinks[name]
        self.recorder = test.record(name)
        self.line = test.line(name)
        for command in played.commands:
            self.line.do(command)
        self.line.send('playlist ' + ' '.join(played.files))
        self.samples = None

    def heard(self):
        """All, from the first sample that is not silent to the last one."""
        if self.samples is None:
            end = self.line.wait_for('end', patience=60)
            self.recorder.wait_for_silence(end.after)
            samples = self.recorder.samples()
            first, last = waves.sound_in(samples)
            self.samples = samples[first:last]
        return self.samples

    def notices(self):
        return [notice.words for notice in self.line.told('notice')]

    def end(self):
        self.recorder.end()
        self.line.end()


class Seams(Sounding):
    sinks = {'many': RATE, 'wav': RATE, 'flac': RATE, 'ogg': RATE, 'opus': 48000, 'mp3': RATE,
             'm4a': RATE, 'rates': RATE, 'formats': RATE, 'broken': RATE, 'tiny': RATE,
             'tempo': RATE, 'echo': RATE}

    def setUp(self):
        super().setUp()
        self.faults = {}  # by the names of the lists

    def write(self, name, samples, rate=RATE, channels=2):
        waves.write(self.at(name), samples, rate, channels)
        return self.at(name)

    def pieces(self, ending, rate=RATE):
        return [self.write(f'{ending}{i}.{ending}', piece, rate)
                for i, piece in enumerate(waves.cut(waves.tone(SECONDS, rate), 3))]

    # What must be true of what was heard.

    def assert_exact(self, played, tone):
        heard = played.heard()
        self.assertEqual(len(heard), len(tone),
                         (waves.silences_in(heard, RATE // 1000), played.notices()))
        self.assertEqual(waves.largest_error(heard, tone), 0)

    def assert_one_tone(self, played, seams):
        """Of the tone's length to a millisecond, without a silent run of one, and everywhere where
        the tone is then. `seams`: seconds."""
        heard, rate = played.heard(), played.rate
        tone = waves.tone(SECONDS, rate)
        millisecond = rate // 1000
        self.assertEqual(waves.silences_in(heard, millisecond), [])
        self.assertLessEqual(abs(len(heard) - len(tone)), millisecond)
        near = round(END * rate)
        places = [0, *(round(seam * rate) for seam in seams), len(tone)]
        shift = self.shift(heard, tone, near)
        for start, end in zip(places, places[1:]):
            self.assertLess(self.error(heard, tone, shift, start + near, end - near), MIDST * LOUD)
        for place in places[1:-1]:
            self.assertLess(self.error(heard, tone, shift, place - near, place + near),
                            NEAR_ENDS * LOUD)

    def shift(self, heard, tone, place):
        """By how much the sound is late, up to a millisecond: what its start may be blurred by."""
        return min(range(-44, 45), key=lambda shift: sum(
            abs(heard[i + shift] - tone[i]) for i in range(place, place + 500, 5)))

    def error(self, heard, tone, shift, start, end):
        return waves.largest_error(heard[start + shift:end + shift], tone[start:end])

    def places(self):
        lengths = [len(piece) / RATE for piece in waves.cut(waves.tone(SECONDS), 3)]
        return lengths[0], lengths[0] + lengths[1]

    # The lists.

    def mixed(self):
        """One tone of which each piece has a rate of its own."""
        kinds = [('a.wav', 44100, 2), ('b.flac', 48000, 2), ('c.wav', 22050, 1)]
        files = []
        for i, (name, rate, channels) in enumerate(kinds):
            third = SECONDS / 3
            whole = waves.tone(SECONDS, rate)
            piece = whole[round(third * i * rate):round(third * (i + 1) * rate)]
            files.append(self.write(name, piece, rate, channels))
        return files

    def echoing(self):
        """A tone, then silence for half a second with a louder one behind it."""
        silence = array.array('h', bytes(RATE))
        return [self.write('quiet.wav', waves.tone(0.5, loud=4000)),
                self.write('loud.wav', silence + waves.tone(0.2, loud=20000))]

    def broken(self, wavs):
        """With what cannot be opened between them."""
        with open(self.at('broken.wav'), 'w', encoding='utf-8') as file:
            file.write('this is no music\n' * 100)
        return [wavs[0], self.at('broken.wav'), self.at('none.wav'), *wavs[1:]]

    def tiny(self):
        """With items of one sample and of none."""
        tone = waves.tone(SECONDS)
        cuts = 0, 20000, 20001, 20001, len(tone)
        return [self.write(f'tiny{start}-{end}.wav', tone[start:end])
                for start, end in zip(cuts, cuts[1:])]

    def lists(self):
        """By the names of their sinks."""
        pieces = {ending: self.pieces(ending, self.sinks[ending])
                  for ending in ('wav', 'flac', 'ogg', 'opus', 'mp3', 'm4a')}
        lists = {ending: List(files, self.check_exact if ending in waves.LOSSLESS else
                              self.check_lossy) for ending, files in pieces.items()}
        formats = [pieces['flac'][0], pieces['mp3'][1], pieces['m4a'][2]]
        wavs = pieces['wav']
        lists.update(
            many=List([self.write('short.wav', waves.tone(SHORT))] * MANY, self.check_many),
            formats=List(formats, self.check_lossy), rates=List(self.mixed(), self.check_rates),
            broken=List(self.broken(wavs), self.check_exact),
            tiny=List(self.tiny(), self.check_exact),
            tempo=List(wavs, self.check_tempo, ['tempo 20']),
            echo=List(self.echoing(), self.check_echo, ['echo 4']))
        return lists

    def test_lists_are_heard_as_one_tone(self):
        lists = self.lists()
        many = {'many': lists.pop('many')}
        longest = threading.Thread(target=self.assert_heard, args=[many])
        longest.start()
        # A few at a time: programs that start take all of the machine.
        names = list(lists)
        for first in range(0, len(names), AT_ONCE):
            self.assert_heard({name: lists[name] for name in names[first:first + AT_ONCE]})
        longest.join()
        for name, fault in self.faults.items():
            with self.subTest(list=name):
                self.tell(fault)

    def assert_heard(self, lists):
        """Plays them all at once, and again those that are not heard as they must be."""
        told = {}
        for _ in range(TRIES):
            began = time.monotonic()
            playing = {name: Played(self, name, lists[name]) for name in lists}
            faulty = {}
            for name, played in playing.items():
                try:
                    lists[name].check(played)
                    self.assertEqual(played.notices(), [])
                except Exception as fault:
                    faulty[name] = fault
                played.end()
            if not self.stalls.since(began):
                told.update(faulty)
            lists = {name: lists[name] for name in faulty}
        self.faults.update({name: told.get(name) for name in lists})

    def check_exact(self, played):
        self.assert_exact(played, waves.tone(SECONDS))

    def check_lossy(self, played):
        self.assert_one_tone(played, self.places())

    def check_rates(self, played):
        self.assert_one_tone(played, (SECONDS / 3, SECONDS * 2 / 3))

    def check_tempo(self, played):
        """The sound is taken apart and put together again, which must not be heard at a seam."""
        heard = played.heard()
        self.assertEqual(waves.silences_in(heard, RATE // 1000), [])
        self.assertAlmostEqual(len(heard) / RATE, SECONDS / 1.2, delta=0.06)
        self.assertLess(waves.largest_bend(heard), 4 * waves.own_bend())

    def check_echo(self, played):
        """It is heard over the next item's beginning and does not keep that waiting."""
        heard = played.heard()
        loud = next(i for i, sample in enumerate(heard) if sample > 12000)
        self.assertAlmostEqual(loud / RATE, 1.0, delta=0.001)
        self.assertGreater(max(heard[round(0.6 * RATE):round(0.9 * RATE)]), waves.FLOOR)

    def check_many(self, played):
        """Nothing grows, from the tenth item on."""
        held = []
        for number in range(10, MANY + 1, 5):
            line = played.line
            line.wait_for('item', count=number, patience=60)
            held.append((line.threads(), line.descriptors(), line.memory()))
        half = len(held) // 2
        for first, second in zip(zip(*held[:half]), zip(*held[half:])):
            self.assertLessEqual(min(second), max(first) * 1.1, held)
        self.assert_exact(played, waves.tone(SHORT) * MANY)


if __name__ == '__main__':
    main()
