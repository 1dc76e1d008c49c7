"""Hostile music: files of all kinds with numbers in their headers that no encoder writes, damaged,
cut, continued by nothing, by rubbish or by another file, with tags within tags. A round is one file.
The real program plays a few of them in each run, into the void. It must neither crash nor grow, and
end when it is asked to.
"""

import os
import shutil
import signal
import subprocess
import tempfile
import time

import odd_media

FILES_IN_A_RUN = 8
PLAYS_AT_MOST = 15   # seconds; a damaged length may be one of hours
ENDS_WITHIN = 5      # seconds after SIGTERM
MOST_MEMORY = 300    # megabytes

# Whatever of these can be made here.
ENCODERS = {'mp3': 'lamemp3enc ! xingmux ! id3v2mux', 'bare.mp3': 'lamemp3enc', 'flac': 'flacenc',
            'ogg': 'vorbisenc ! oggmux', 'opus': 'opusenc ! oggmux', 'spx': 'speexenc ! oggmux',
            'oga': 'flacenc ! oggmux', 'wv': 'wavpackenc', 'm4a': 'voaacenc ! mp4mux',
            'aac': 'voaacenc ! audio/mpeg,stream-format=adts', 'mp2': 'twolamemp2enc',
            'mka': 'vorbisenc ! matroskamux', 'pcm.mka': 'matroskamux', 'mov': 'qtmux',
            'avi': 'avimux', 'wav': 'wavenc', 'adpcm.wav': 'adpcmenc ! wavenc', 'aiff': 'aiffmux'}

NUMBERS = [0, 1, 2, 3, 9, 10, 63, 64, 65, 127, 128, 255, 256, 1000, 4096, 8000, 32767, 32768, 44100,
           65535, 96000, 655350, 1 << 24, 1 << 30, (1 << 31) - 1, 1 << 31, (1 << 32) - 1]


def encoded(folder):
    """The bytes of short files, by the endings of their names."""
    made = {}
    for ending, chain in ENCODERS.items():
        for channels, rate in (1, 8000), (2, 44100):
            path = os.path.join(folder, 'made')
            command = ['gst-launch-1.0', '-q', 'audiotestsrc', 'num-buffers=20', '!',
                       f'audio/x-raw,rate={rate},channels={channels}', '!', 'audioconvert', '!',
                       'audioresample', '!', *chain.split(), '!', 'filesink', f'location={path}']
            done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            with open(path, 'rb') as file:
                content = file.read()
            if done.returncode == 0 and content:
                made.setdefault(ending, []).append(content)
    return made


def with_odd_header(chance):
    number = lambda: chance.choice(NUMBERS)
    kind = chance.randrange(5)
    if kind == 0:
        return 'wav', odd_media.wav(number(), number(), chance.randrange(66),
                                    chance.choice([1, 1, 1, 2, 3, 6, 7, 0x11, 0x31, 0x55, 0x161]),
                                    chance.choice([None, None, 0, 3, 0x3FFFF, 0xFFFFFFFF]))
    if kind == 1:
        compression = chance.choice([None, b'sowt', b'fl32', b'fl64', b'ulaw', b'in24', b'ima4'])
        return 'aiff', odd_media.aiff(number(), number(), chance.randrange(66), compression)
    if kind == 2:
        return 'au', odd_media.au(number(), number(), chance.randrange(30))
    channels, rate = chance.randrange(1, 64), chance.randrange(10, 1 << 24)
    make = odd_media.wav if kind == 3 else odd_media.aiff
    return make.__name__, make(channels, rate, chance.choice([8, 16, 24, 32]))


def damaged(content, chance):
    content = bytearray(content)
    reach = chance.choice([64, 512, len(content)])
    for _ in range(chance.randrange(1, 12)):
        place = chance.randrange(min(reach, len(content)))
        number = chance.choice(NUMBERS)
        size = chance.choice([1, 2, 4])
        number &= (1 << 8 * size) - 1
        content[place:place + size] = number.to_bytes(size, chance.choice(['little', 'big']))
    return bytes(content)


def tagged(content, chance):
    frames = odd_media.text_frame(b'TIT2', 'Title')
    frames += chance.choice([
        lambda: odd_media.nested_chapters(chance.randrange(1, 30000)),
        lambda: odd_media.frame(b'PRIV', b'x') * chance.randrange(1, 100000),
        lambda: odd_media.text_frame(b'TXXX', 'x') * chance.randrange(1, 100000)])()
    return odd_media.id3(frames, chance.choice([0, 0, 0x80, 0x40, 0x10])) + content


def hostile(made, chance):
    """The ending of a name, and the bytes."""
    if not made or chance.random() < 0.4:
        return with_odd_header(chance)
    ending = chance.choice(sorted(made))
    content = chance.choice(made[ending])
    for _ in range(chance.randrange(1, 3)):
        content = chance.choice([
            lambda: damaged(content, chance),
            lambda: damaged(content, chance),
            lambda: content[:chance.randrange(1, len(content))],
            lambda: content + bytes(chance.randrange(1 << 23)),
            lambda: content + chance.randbytes(chance.randrange(1 << 20)),
            lambda: content + chance.choice(made[chance.choice(sorted(made))]),
            lambda: content + chance.choice(made[ending]),
            lambda: tagged(content, chance)])()
    return ending, content


def fault_of(program, folder, paths):
    """Plays the files; what went wrong, or None."""
    environment = dict(os.environ, XDG_RUNTIME_DIR=folder, XDG_CACHE_HOME=folder,
                       XDG_CONFIG_HOME=folder, XDG_DATA_HOME=folder, XDG_STATE_HOME=folder)
    errors = os.path.join(folder, 'errors')
    with open(errors, 'wb') as stderr:
        process = subprocess.Popen(
            [program, '--no-window', '--output', 'file:/dev/null', *paths], env=environment,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=stderr)
    ended, status, usage = 0, 0, None
    for wait, number in (PLAYS_AT_MOST, signal.SIGTERM), (ENDS_WITHIN, signal.SIGKILL):
        end = time.monotonic() + wait
        while not ended and time.monotonic() < end:
            ended, status, usage = os.wait4(process.pid, os.WNOHANG)
            time.sleep(0.02)
        if ended:
            break
        process.send_signal(number)
    if not ended:
        os.wait4(process.pid, 0)
    process.returncode = 0  # it has been waited for
    if not ended:
        return 'does not end'
    with open(errors, 'rb') as file:
        said = file.read().decode(errors='replace')
    if os.WIFSIGNALED(status):
        return f'ended by signal {os.WTERMSIG(status)}: {said}'
    if usage.ru_maxrss > MOST_MEMORY * 1024:
        return f'grew to {usage.ru_maxrss // 1024} MB'
    strange = [line for line in said.splitlines() if not line.startswith('veldrin: ')]
    return f'said {strange}' if strange else None


def attack(program, rounds, chance):
    folder = tempfile.mkdtemp(prefix='veldrin-media-')
    try:
        made = encoded(folder)
        for start in range(0, rounds, FILES_IN_A_RUN):
            paths = []
            for number in range(start, min(rounds, start + FILES_IN_A_RUN)):
                ending, content = hostile(made, chance)
                paths.append(os.path.join(folder, f'{number}.{ending}'))
                with open(paths[-1], 'wb') as file:
                    file.write(content)
            if fault_of(program, folder, paths):
                for path in paths:
                    fault = fault_of(program, folder, [path])
                    if fault:
                        kept = os.path.join(tempfile.gettempdir(), os.path.basename(path))
                        shutil.copy(path, kept)
                        yield f'{kept}: {fault}'
            for path in paths:
                os.remove(path)
    finally:
        shutil.rmtree(folder, ignore_errors=True)
