"""Odd files in the places of the program's own, lists and settings of megabytes, floods of bytes on a
terminal, and senders that say half a word to a running one.

A round is one of these. It fails if the program crashes, hangs, grows beyond MOST_MEMORY, takes more
processor time than that kind of round may, or replaces what it could not read.
"""

import os
import pty
import resource
import select
import shutil
import signal
import socket
import subprocess
import tempfile
import time

PATIENCE = 60
MOST_MEMORY = 3 << 30
SETTINGS = 'Sarnel.Ambrisor.ini'
LIST = 'Sarnel.Ambrisor.omk'


class Place:
    """A component directory, a runtime folder and a cache, for one round."""

    def __init__(self, program, folder):
        self.program, self.folder = program, folder
        for name in ('directory', 'runtime', 'cache/veldrin', 'data'):
            os.makedirs(self.at(name), 0o700)
        self.song = self.at('song.wav')
        subprocess.run(['sox', '-n', '-r', '8000', self.song, 'synth', '0.1', 'sine', '440'],
                       check=True)
        self.environment = dict(
            os.environ, XDG_RUNTIME_DIR=self.at('runtime'), XDG_CACHE_HOME=self.at('cache'),
            XDG_DATA_HOME=self.at('data'), XDG_STATE_HOME=self.at('data'), LC_ALL='C.UTF-8',
            GST_REGISTRY=os.path.join(tempfile.gettempdir(), 'veldrin-attack-registry.bin'))

    def at(self, name):
        return os.path.join(self.folder, name)

    def command(self, *arguments):
        return [self.program, '--no-window', '--output', 'null', '--dir', self.at('directory'),
                *arguments]

    def play(self, *arguments):
        """Exit status and seconds of processor time; no status after PATIENCE seconds."""
        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
        child = subprocess.Popen(self.command(*arguments), env=self.environment,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL, preexec_fn=limit)
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        try:
            status = child.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            child.kill()
            child.wait()
            return None, PATIENCE
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        return status, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def put_large(path, chance):
    with open(path, 'wb') as file:
        file.truncate(chance.choice((5 << 20, 1 << 30, 1 << 40)))


ODD = {
    'pipe': lambda path, chance: os.mkfifo(path),
    'folder': lambda path, chance: os.mkdir(path),
    'dead link': lambda path, chance: os.symlink('/nonexistent/file', path),
    'device': lambda path, chance: os.symlink(chance.choice(('/dev/zero', '/dev/full')), path),
    'large file': put_large,
}


def odd_file(place, chance):
    name = chance.choice((f'directory/{SETTINGS}', 'cache/veldrin/file-types'))
    what = chance.choice(sorted(ODD))
    ODD[what](place.at(name), chance)
    status, _ = place.play(place.song)
    yield status == 0, f'{what} in the place of {name}: status {status}'
    if name.endswith(SETTINGS) or what != 'dead link':
        there = os.path.islink(place.at(name)) or not os.path.isfile(place.at(name)) or \
            os.path.getsize(place.at(name)) > 4 << 20 or not name.endswith(SETTINGS)
        yield there, f'{what} in the place of {name} was replaced'


def large_settings(place, chance):
    size = 4 << 20
    kind = chance.randrange(4)
    text = [lambda: b''.join(b'Key%d=%d\r\n' % (i, i) for i in range(200_000)),
            lambda: b'X=' + b'x' * size,
            lambda: b'\n' * size,
            lambda: chance.randbytes(size)][kind]()
    with open(place.at(f'directory/{SETTINGS}'), 'wb') as file:
        file.write((b'[Memory]\r\n' + text)[:size - 1000])
    place.play(place.song)  # the first start adds what is missing
    status, seconds = place.play(place.song)
    yield status == 0 and seconds < 2, f'settings {kind}: status {status}, {seconds:.2f} s'


def large_list(place, chance):
    size = 100 << 20
    kind = chance.randrange(4)
    text = [lambda: b''.join(b'Title %d\r\n/music/%d.mp3\r\n' % (i, i) for i in range(100_000)),
            lambda: b'x' * size + b'\r\n/music/a.mp3\r\n',
            lambda: b'x' * size,
            lambda: b'\r' * (1 << 20)][kind]()
    with open(place.at(f'directory/{LIST}'), 'wb') as file:
        file.write(b'OMK v1.1\r\n 1000000 \r\n 0 \r\n' + text)
    status, seconds = place.play('--add', place.song)
    yield status in (0, 1) and seconds < 20, f'list {kind}: status {status}, {seconds:.2f} s'


def terminal_flood(place, chance):
    child, master = pty.fork()
    if child == 0:
        os.execve(place.program, place.command(*[place.song] * 3), place.environment)
    keys = bytes(chance.choice(b'zxcvb\x1b[O;~\0\xc3') for _ in range(1000))
    end = time.monotonic() + PATIENCE
    ended = 0
    while not ended and time.monotonic() < end:
        readable, writable, _ = select.select([master], [master] if keys else [], [], 0.2)
        try:
            if writable:
                keys = keys[os.write(master, keys[:chance.randrange(1, 200)]):]
            if readable:
                os.read(master, 65536)
            if not keys:
                time.sleep(0.15)
                os.write(master, b'q')
        except OSError:
            pass
        ended, status = os.waitpid(child, os.WNOHANG)
    if not ended:
        os.kill(child, signal.SIGKILL)
        os.waitpid(child, 0)
    os.close(master)
    yield ended and os.waitstatus_to_exitcode(status) in (0, 1), 'a flood of keys'


def connected(folder):
    """To the one that runs, as soon as it listens."""
    end = time.monotonic() + PATIENCE
    while True:
        sender = socket.socket(socket.AF_UNIX)
        sender.settimeout(PATIENCE)
        names = [name for name in os.listdir(folder) if name.endswith('.socket')]
        try:
            sender.connect(os.path.join(folder, *names[:1]))
            return sender
        except OSError:
            sender.close()
            if time.monotonic() > end:
                raise
            time.sleep(0.01)


def slow_senders(place, chance):
    subprocess.run(['sox', '-n', '-r', '8000', place.at('long.wav'), 'synth', '60', 'sine', '440'],
                   check=True)
    player = subprocess.Popen(place.command(place.at('long.wav')), env=place.environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    slow = []
    for _ in range(chance.randrange(1, 100)):
        slow.append(connected(place.at('runtime')))
        slow[-1].send(b'veldrin 1;'[:chance.randrange(1, 10)])
    quitting = subprocess.run([place.program, '--quit', '--dir', place.at('directory')],
                              env=place.environment, timeout=PATIENCE)
    yield quitting.returncode == 0, f'{len(slow)} slow senders'
    for sender in slow:
        sender.close()
    if quitting.returncode != 0:
        player.kill()
    yield player.wait(PATIENCE) == 0, 'the end after slow senders'
    left = [name for name in os.listdir(place.at('runtime')) if name.endswith('.socket')]
    yield not left, 'the socket was left behind'


def attack(program, rounds, chance):
    trials = (odd_file, odd_file, large_settings, large_list, terminal_flood, slow_senders)
    for number in range(rounds):
        folder = tempfile.mkdtemp(prefix='veldrin-attack-')
        try:
            for good, what in chance.choice(trials)(Place(program, folder), chance):
                if not good:
                    yield f'round {number}: {what}'
        finally:
            shutil.rmtree(folder, ignore_errors=True)
