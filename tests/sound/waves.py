"""Makes sound that can be known again, and measures what came of it. Samples are numbers of 16 bits
in an array, one channel; in files and in recordings all channels hold the same.
"""

import array
import math
import operator
import os
import re
import statistics
import struct
import subprocess
import wave

RATE = 44100
LOUD = 8000     # a tone's amplitude
FLOOR = 40      # what is no louder is silence
FREQUENCY = 440

# What each kind of file is encoded by. Only files that tell how much of the decoded sound is not
# the music's can be joined. sox lets LAME write that in mp3s of variable bit rate; for m4a see
# tell_priming.
ENCODERS = {
    'flac': 'flacenc',
    'ogg': 'vorbisenc quality=0.9 ! oggmux',
    'opus': 'opusenc bitrate=256000 ! oggmux',
    'm4a': 'voaacenc bitrate=256000 ! mp4mux movie-timescale={rate}',
}
LOSSLESS = ('wav', 'flac')
# Samples that the AAC encoder puts in front, and what it needs behind the last one to put that out.
AAC_PRIMING, AAC_FLUSH = 1600, 4096


def tone(seconds, rate=RATE, frequency=FREQUENCY, loud=LOUD):
    """A cosine, so that neither its start nor its end is silent. Of a whole number of Hz."""
    step = 2 * math.pi * frequency / rate
    second = array.array('h', (round(loud * math.cos(step * i)) for i in range(rate)))
    return (second * math.ceil(seconds))[:round(seconds * rate)]


def sweep(seconds, rate=RATE, start=300, rise=40):
    """A tone that rises by so many Hz in a second: its frequency tells where in it one is."""
    return array.array('h', (
        round(LOUD * math.sin(2 * math.pi * (start + rise / 2 * t) * t))
        for t in (i / rate for i in range(round(seconds * rate)))))


def cut(samples, pieces):
    """About equal, but of lengths that are no multiple of anything."""
    size = len(samples) // pieces
    places = [0, *(size * i + 37 * i + 11 for i in range(1, pieces)), len(samples)]
    return [samples[a:b] for a, b in zip(places, places[1:])]


def write_wav(path, samples, rate=RATE, channels=2):
    frames = array.array('h', bytes(2 * channels * len(samples)))
    for channel in range(channels):
        frames[channel::channels] = samples
    with wave.open(path, 'wb') as file:
        file.setnchannels(channels)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(frames.tobytes())


def write(path, samples, rate=RATE, channels=2):
    """In the format of the name's ending."""
    ending = os.path.splitext(path)[1][1:]
    if ending == 'wav':
        write_wav(path, samples, rate, channels)
        return
    plain = path + '.wav'
    if ending == 'm4a':
        write_wav(plain, samples + array.array('h', bytes(2 * AAC_FLUSH)), rate, channels)
    else:
        write_wav(plain, samples, rate, channels)
    if ending == 'mp3':
        command = ['sox', plain, '-C', '-0.0', path]
    else:
        command = ['gst-launch-1.0', '-q', 'filesrc', f'location={plain}', '!', 'wavparse', '!',
                   'audioconvert', '!', *ENCODERS[ending].format(rate=rate).split(), '!',
                   'filesink', f'location={path}']
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL)
    os.remove(plain)
    if ending == 'm4a':
        tell_priming(path, AAC_PRIMING, len(samples))


def tell_priming(path, priming, length):
    """Sets the edit list, as other encoders do: the music is so many samples, behind so many. The
    file's time scale must be its rate."""
    with open(path, 'r+b') as file:
        content = file.read()
        place = content.index(b'elst') + 4
        version, count = struct.unpack_from('>II', content, place)
        assert (version, count) == (0, 1)
        file.seek(place + 8)
        file.write(struct.pack('>Ii', length, priming))


def sound_in(samples):
    """The first sample that is not silent, and the one behind the last; (0, 0) if there is none."""
    loud = loudness_of(samples)
    first = loud.find(b'1')
    return (first, loud.rindex(b'1') + 1) if first >= 0 else (0, 0)


def loudness_of(samples):
    """A byte for each sample: whether it is more than silence."""
    return bytes(b'10'[-FLOOR <= sample <= FLOOR] for sample in samples)


def silences_in(samples, longer_than):
    """The silent runs of more than so many samples, as (place, length)."""
    return [(run.start(), run.end() - run.start())
            for run in re.finditer(b'0{%d,}' % (longer_than + 1), loudness_of(samples))]


def bends(samples):
    """How much the wave's slope changes at each sample."""
    steps = list(map(operator.sub, samples[1:], samples))
    return list(map(abs, map(operator.sub, steps[1:], steps)))


def largest_bend(samples):
    return max(bends(samples), default=0)


def own_bend(rate=RATE, frequency=FREQUENCY, loud=LOUD):
    """What a tone bends by itself, at most. One that is cut bends by up to its whole amplitude, one
    that is faded over 5 ms by hardly more than it does itself."""
    return loud * (2 * math.pi * frequency / rate) ** 2


def largest_error(samples, other):
    return max(map(abs, map(operator.sub, samples, other)), default=0)


def crossings(samples):
    """Where the wave passes zero upwards, in samples and parts of one."""
    return [i + a / (a - b) for i, (a, b) in enumerate(zip(samples, samples[1:])) if a < 0 <= b]


def frequency_of(samples, rate=RATE):
    """Of a single tone, which may be broken off a few times; 0 if it is none."""
    places = crossings(samples)
    periods = list(map(operator.sub, places[1:], places))
    return rate / statistics.median(periods) if periods else 0


def place_in_sweep(samples, rate=RATE, start=300, rise=40):
    """Seconds from the sweep's start to the middle of the samples."""
    return (frequency_of(samples, rate) - start) / rise


def first_change(samples, differs, window):
    """Where the first of the windows begins for whose samples `differs` is True, or None. They
    overlap by three quarters."""
    for place in range(0, len(samples) - window + 1, window // 4):
        if differs(samples[place:place + window]):
            return place
    return None
