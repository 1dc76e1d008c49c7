#!/usr/bin/env python3
"""The real program among odd files, with readers that do not read and keys without end."""

import os
import pty
import resource
import select
import signal
import socket
import subprocess
import time

from world import PATIENCE, World, main, tone

# A program that follows a file without an end by its memory ends here.
MOST_MEMORY = 2 << 30
LARGE = 8 << 20


def limit_memory():
    """The address sanitizer takes terabytes of addresses, and has a limit of its own."""
    with open(World.program, 'rb') as file:
        if b'__asan_init' not in file.read():
            resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))


def put_large(path):
    with open(path, 'wb') as file:
        file.write(b'[Memory]\r\nX=1\r\n;' + b'.' * LARGE)


# What may stand where a file is looked for.
ODD = {
    'pipe': os.mkfifo,
    'folder': os.mkdir,
    'dead link': lambda path: os.symlink('/nonexistent/file', path),
    'device': lambda path: os.symlink('/dev/zero', path),
    'large file': put_large,
}


class OddFiles(World):
    def setUp(self):
        super().setUp()
        self.environment['XDG_CACHE_HOME'] = os.path.join(self.folder, 'cache')
        self.environment['ASAN_OPTIONS'] += f':hard_rss_limit_mb={MOST_MEMORY >> 20}'
        self.cache = os.path.join(self.folder, 'cache', 'veldrin')
        os.makedirs(self.cache)
        os.makedirs(self.directory)
        tone(self.at('a.wav'))

    def plays(self, what):
        done = self.play(self.at('a.wav'), preexec_fn=limit_memory)
        self.assertEqual((done.returncode, done.stderr), (0, b''), what)
        self.assertIn(b'a.wav', done.stdout, what)

    def remove(self, path):
        if os.path.isdir(path) and not os.path.islink(path):
            os.rmdir(path)
        else:
            os.remove(path)

    def test_settings(self):
        path = os.path.join(self.directory, 'Sarnel.Ambrisor.ini')
        for what, put in ODD.items():
            with self.subTest(what):
                put(path)
                before = os.lstat(path)
                self.plays(what)
                # It is not the player's to replace.
                after = os.lstat(path)
                self.assertEqual((before.st_ino, before.st_size), (after.st_ino, after.st_size))
                self.remove(path)

    def test_list(self):
        path = os.path.join(self.directory, 'Sarnel.Ambrisor.omk')
        for what in ('pipe', 'folder', 'dead link', 'device'):
            with self.subTest(what):
                ODD[what](path)
                done = self.play(self.at('a.wav'), preexec_fn=limit_memory)
                self.assertEqual(done.returncode, 0)
                self.assertIn(b'a.wav', done.stdout)
                self.assertRegex(done.stderr, rb"^veldrin: [^\n]*; what was there is kept as "
                                              rb"'Sarnel\.Ambrisor\.omk\.damaged'\n$")
                self.assertEqual(self.paths_saved(), [b'a.wav'])
            self.remove(path + '.damaged')
            self.remove(path)
        put_large(path)
        self.plays('large file')

    def test_file_types(self):
        path = os.path.join(self.cache, 'file-types')
        for what, put in ODD.items():
            with self.subTest(what):
                put(path)
                self.plays(what)
                self.remove(path)

    def test_lock(self):
        self.plays('to have a lock')
        runtime = self.environment['XDG_RUNTIME_DIR']
        lock, = (os.path.join(runtime, name) for name in os.listdir(runtime)
                 if name.endswith('.lock'))
        os.remove(lock)
        for what in ('pipe', 'folder', 'dead link'):
            with self.subTest(what):
                ODD[what](lock)
                done = self.play(self.at('a.wav'))
                self.assertEqual(done.returncode, 0, what)
                self.assertIn(b'no safe place for a socket', done.stderr)
                self.remove(lock)

    def test_a_folder_above_a_link_is_the_systems(self):
        os.makedirs(self.at('there/below'))
        os.mkdir(self.at('here'))
        tone(self.at('there/song.wav'))
        os.symlink('../there/below', self.at('here/link'))
        done = self.play('link/../song.wav', cwd=self.at('here'))
        self.assertEqual((done.returncode, done.stderr), (0, b''))
        self.assertIn(b'song.wav', done.stdout)


class NobodyReads(World):
    def full_pipe(self):
        reading, writing = os.pipe()
        return self.filled(writing, reading)

    def full_terminal(self):
        """The program's end of a terminal whose screen nobody looks at."""
        screen, terminal = pty.openpty()
        return self.filled(terminal, screen)

    def filled(self, writing, reading):
        """The end that takes no more, as nobody reads at the other."""
        self.addCleanup(os.close, reading)
        self.addCleanup(os.close, writing)
        os.set_blocking(writing, False)
        try:
            while True:
                os.write(writing, b'.' * 4096)
        except BlockingIOError:
            pass
        os.set_blocking(writing, True)
        return writing

    def test_plays_on(self):
        with open(self.at('a.wav'), 'wb') as file:
            file.write(b'no music')
        tone(self.at('b.wav'))
        for full in (self.full_pipe(), self.full_terminal()):
            done = subprocess.run(
                [self.program, '--no-window', '--output', 'null', self.music], timeout=PATIENCE,
                env=self.environment, stdin=subprocess.DEVNULL, stdout=full, stderr=full)
            self.assertEqual(done.returncode, 0)
            self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav'])
            # Whoever shares it with the program still waits for his reader.
            self.assertTrue(os.get_blocking(full))

    def test_a_text_that_does_not_arrive_is_a_failure(self):
        for option in ('--help', '--version'):
            with open('/dev/full', 'wb') as full:
                done = subprocess.run([self.program, option], stdout=full, stderr=subprocess.PIPE,
                                      env=self.environment, timeout=PATIENCE)
            self.assertEqual(done.returncode, 1)
            self.assertRegex(done.stderr, rb'^veldrin: cannot write .*No space left.*\n$')


class Flood(World):
    """Keys on a terminal, faster than any file is opened."""

    def setUp(self):
        super().setUp()
        for i in range(3):
            tone(self.at(f'{i}.wav'), seconds=60)
        self.environment['TERM'] = 'xterm'
        self.child, self.master = pty.fork()
        if self.child == 0:
            try:
                os.execve(self.program,
                          [self.program, '--no-window', '--output=null', self.music],
                          self.environment)
            finally:
                os._exit(127)
        self.addCleanup(os.close, self.master)
        self.addCleanup(self.kill)
        self.screen = b''
        self.read_until(b'0:00 / 1:00')

    def kill(self):
        if self.child:
            os.kill(self.child, signal.SIGKILL)
            os.waitpid(self.child, 0)

    def read(self, wait):
        ready, _, _ = select.select([self.master], [], [], wait)
        try:
            return os.read(self.master, 65536) if ready else b''
        except OSError:
            return b''

    def read_until(self, text):
        end = time.monotonic() + PATIENCE
        while text not in self.screen and time.monotonic() < end:
            self.screen += self.read(0.1)
        self.assertIn(text, self.screen)

    def press(self, keys):
        """The screen is read meanwhile, as terminals do."""
        while keys:
            _, ready, _ = select.select([], [self.master], [], 0.01)
            if ready:
                keys = keys[os.write(self.master, keys[:256]):]
            self.screen += self.read(0)

    def ends(self):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            child, status = os.waitpid(self.child, os.WNOHANG)
            if child:
                self.child = 0
                return os.waitstatus_to_exitcode(status)
            self.screen += self.read(0.01)
        self.fail('q did not end it')

    def items_started(self):
        return self.screen.count(b'.wav  [1:00]')

    def test_of_one_key(self):
        self.press(b'x' * 1000)
        self.press(b'q')
        self.assertEqual(self.ends(), 0)
        self.assertLess(self.items_started(), 200)

    def test_of_bytes_that_mean_nothing(self):
        odd = b'\0\x1b[\x1b[200~\xe2\x82\x1b\x1b\x1b]\xff\x9b1;2;3\x1bO\x1b[<0;1;2M'
        self.press(odd * 40)
        # Whoever presses a key after that is not taken for part of it.
        end = time.monotonic() + PATIENCE
        started = self.items_started()
        while self.items_started() == started and time.monotonic() < end:
            time.sleep(0.15)
            self.press(b'b')
            self.screen += self.read(0.2)
        self.assertGreater(self.items_started(), started)
        time.sleep(0.15)
        self.press(b'q')
        self.assertEqual(self.ends(), 0)


class SecondStarts(World):
    def setUp(self):
        super().setUp()
        tone(self.at('a.wav'), seconds=60)
        tone(self.at('b.wav'), seconds=60)
        self.process = self.start(self.at('a.wav'))
        self.read_until(self.process, b'a.wav')

    def socket(self):
        runtime = self.environment['XDG_RUNTIME_DIR']
        return [os.path.join(runtime, name) for name in os.listdir(runtime)
                if name.endswith('.socket')]

    def connect(self):
        """As soon as it listens."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            sender = socket.socket(socket.AF_UNIX)
            self.addCleanup(sender.close)
            sender.settimeout(PATIENCE)
            try:
                sender.connect((self.socket() or ['/nonexistent'])[0])
                return sender
            except (ConnectionRefusedError, FileNotFoundError):
                time.sleep(0.01)
        self.fail('it does not listen')

    def quit(self):
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(self.process), 0)

    def test_the_socket_goes_with_the_run(self):
        self.connect().close()
        self.quit()
        self.assertEqual(self.socket(), [])

    def test_slow_senders_do_not_hold_up_a_hand_over(self):
        for _ in range(40):
            self.connect().send(b'v')
        done = self.run_program('--add', self.at('b.wav'))
        self.assertEqual((done.returncode, done.stderr), (0, b''))
        self.quit()
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav'])


if __name__ == '__main__':
    main()
