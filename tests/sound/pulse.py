"""A sound server of the test's own, with outputs that lead nowhere and can be recorded."""

import array
import contextlib
import os
import signal
import subprocess
import threading
import time

from waves import RATE
from world import PATIENCE

LATENCY = 0.020  # seconds, of a sink that is recorded

def wait_for(condition, what, patience=PATIENCE):
    """Answers what the condition answers, once that is true."""
    end = time.monotonic() + patience
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise TimeoutError(f'{what} did not come about')
        time.sleep(0.01)


class Server:
    """Started anew after a kill it is found at the same place. `sinks`: the rates of the outputs by
    their names; the first one is the default."""

    def __init__(self, folder, sinks):
        self.folder, self.sinks = folder, sinks
        self.place = os.path.join(folder, 'native')
        self.process = None
        for name in ('home', 'config', 'runtime', 'state'):
            os.makedirs(os.path.join(folder, name), mode=0o700, exist_ok=True)
        inherited = {key: value for key, value in os.environ.items()
                     if not key.startswith(('PULSE_', 'DBUS_', 'XDG_', 'PIPEWIRE_'))}
        self.environment = dict(
            inherited, HOME=os.path.join(folder, 'home'), LC_ALL='C.UTF-8',
            PULSE_SERVER=f'unix:{self.place}',
            PULSE_RUNTIME_PATH=os.path.join(folder, 'runtime'),
            PULSE_STATE_PATH=os.path.join(folder, 'state'),
            XDG_RUNTIME_DIR=os.path.join(folder, 'runtime'),
            XDG_CONFIG_HOME=os.path.join(folder, 'config'))
        # What a client needs to find the server, and nothing else.
        self.for_clients = {key: value for key, value in self.environment.items()
                            if key.startswith('PULSE_')}

    def start(self):
        """Answers when it can be played to."""
        with contextlib.suppress(FileNotFoundError):
            os.remove(self.place)
        # An output that takes back what it has rendered starts with blocks of 2 s.
        modules = [f'module-native-protocol-unix socket={self.place} auth-anonymous=1']
        modules += [f'module-null-sink sink_name={name} rate={rate} format=s16le channels=2 '
                    'norewinds=1' for name, rate in self.sinks.items()]
        # Where it may, it goes before those that play: a server that is held up is heard as a gap.
        command = ['pulseaudio', '-n', '--daemonize=no', '--exit-idle-time=-1',
                   '--use-pid-file=no', '--disable-shm=yes', '--realtime=yes',
                   '--high-priority=yes', '--log-target=stderr', '--log-level=error']
        for module in modules:
            command += ['-L', module]
        with open(os.path.join(self.folder, 'server.log'), 'ab') as log:
            self.process = subprocess.Popen(command, env=self.environment, stdout=log, stderr=log,
                                            stdin=subprocess.DEVNULL)
        wait_for(self.answers, 'the sound server')

    def answers(self):
        if self.process.poll() is not None:
            with open(os.path.join(self.folder, 'server.log'), encoding='utf-8') as log:
                raise AssertionError(f'the sound server ended: {log.read()}')
        return os.path.exists(self.place) and all(
            name in self.tool('list', 'short', 'sinks') for name in self.sinks)

    def tool(self, *words):
        return subprocess.run(['pactl', *words], env=self.environment, timeout=PATIENCE,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL).stdout.decode()

    def kill(self):
        """As by a crash."""
        self.process.kill()
        self.process.wait()

    def end(self):
        if self.process and self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(PATIENCE)
            except subprocess.TimeoutExpired:
                self.kill()

    def record(self, sink=None):
        return Recorder(self, sink or next(iter(self.sinks)))


class Recorder:
    """What a sink plays, from when this is made on; silence is recorded as well. Being recorded so
    also makes the sink one of so short a latency."""

    def __init__(self, server, sink):
        self.rate = server.sinks[sink]
        self.data = bytearray()  # of the first channel
        self.start = None        # when its first sample was heard
        self.process = subprocess.Popen(
            ['parec', '--raw', f'--latency-msec={round(LATENCY * 1000)}', '--format=s16le',
             '--channels=2', f'--rate={self.rate}', f'--device={sink}.monitor'], bufsize=0,
            env=server.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL)
        self.thread = threading.Thread(target=self.read, daemon=True)
        self.thread.start()
        wait_for(lambda: self.start is not None, 'a recording')

    def read(self):
        rest = b''
        while True:
            chunk = os.read(self.process.stdout.fileno(), 1 << 16)
            if not chunk:
                return
            now = time.monotonic()
            rest += chunk
            whole = len(rest) // 4 * 4
            frames, rest = array.array('h', rest[:whole]), rest[whole:]
            self.data += frames[::2].tobytes()
            # What came fastest tells best. A sink renders what is to be heard in its next 20 ms,
            # and it is what has been rendered that is recorded.
            start = now + LATENCY - len(self.data) / 2 / self.rate
            self.start = start if self.start is None else min(self.start, start)

    def samples(self, since=None):
        """All, or those heard after a point of time.monotonic()."""
        first = 0 if since is None else max(0, self.sample_at(since))
        return array.array('h', bytes(self.data[2 * first:len(self.data) // 2 * 2]))

    def last(self, count):
        """The latest so many."""
        end = len(self.data) // 2 * 2
        return array.array('h', bytes(self.data[max(0, end - 2 * count):end]))

    def now(self):
        """The point in time up to which has been recorded."""
        return self.start + len(self.data) / 2 / self.rate

    def sample_at(self, when):
        return round((when - self.start) * self.rate)

    def wait_for_seconds(self, seconds, since):
        """Until so much has been recorded after a point in time."""
        wait_for(lambda: len(self.data) / 2 >= self.sample_at(since + seconds), 'more recording',
                 PATIENCE + seconds)

    def wait_for_silence(self, since, seconds=0.4):
        """Until nothing has been heard for so long, all of it after a point in time."""
        self.wait_for_seconds(seconds, since)
        wait_for(lambda: not any(self.last(round(seconds * self.rate))), 'silence')

    def end(self):
        self.process.kill()
        self.process.wait()
        self.thread.join()
        self.process.stdout.close()
