"""What the tests of the real program share. Each test file is run as

    FILE VELDRIN [unittest arguments]

Each test has a world of its own: a component directory, a runtime folder and music that sox makes on
the spot. Nothing of the user's is read or written. Nothing waits for a fixed time: conditions are
waited for, up to PATIENCE seconds.
"""

import contextlib
import os
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PATIENCE = 30
HERE = os.path.dirname(os.path.abspath(__file__))


def tone(path, seconds=0.25, **tags):
    """A quiet tone in the format of the name's ending. The path may be bytes."""
    comments = []
    for name, value in tags.items():
        comments += ['--add-comment', f'{name.upper()}={value}']
    ending = os.path.splitext(os.fsdecode(path))[1]
    what = (ending, seconds, *comments)
    if what not in World.tones:
        World.tones[what] = os.path.join(World.shared, f'tone{len(World.tones)}{ending}')
        subprocess.run(['sox', '-n', '-r', '8000', *comments, World.tones[what], 'synth',
                        str(seconds), 'sine', '440', 'vol', '0.1'], check=True)
    # Put in its place whole: what stands there may be a link to another song.
    copy = World.tones[what] + '.copy'
    shutil.copyfile(World.tones[what], copy)
    shutil.move(os.fsencode(copy), os.fsencode(path))
    return path


class World(unittest.TestCase):
    maxDiff = None
    program = b''  # set by main
    shared = ''    # a folder for GStreamer's cache, the same for all tests of a file
    tones = {}     # what has been made there, by format, length and tags

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix='veldrin-world-')
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        for name in ('config', 'runtime', 'music'):
            os.mkdir(os.path.join(self.folder, name), 0o700)
        self.music = os.path.join(self.folder, 'music')
        self.directory = os.path.join(self.folder, 'config', 'veldrin')
        self.environment = dict(
            os.environ, XDG_CONFIG_HOME=os.path.join(self.folder, 'config'),
            XDG_RUNTIME_DIR=os.path.join(self.folder, 'runtime'), XDG_CACHE_HOME=self.shared,
            XDG_DATA_HOME=os.path.join(self.folder, 'data'),
            XDG_STATE_HOME=os.path.join(self.folder, 'state'),
            GST_REGISTRY=os.path.join(self.shared, 'registry.bin'), LC_ALL='C.UTF-8',
            # Of use only if the program was built with the address sanitizer.
            ASAN_OPTIONS='fast_unwind_on_malloc=1',
            LSAN_OPTIONS=f'print_suppressions=0:suppressions={HERE}/../sanitizers/leaks.supp')
        self.running = []
        self.addCleanup(self.end_all)

    def end_all(self):
        for process in self.running:
            if process.poll() is None:
                process.kill()
            process.communicate()

    def at(self, name):
        return os.path.join(self.music, name)

    def run_program(self, *arguments, **options):
        """To its end. Standard input is empty and no terminal."""
        return subprocess.run([self.program, *arguments], env=self.environment, timeout=PATIENCE,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, **options)

    def play(self, *arguments, **options):
        return self.run_program('--no-window', '--output', 'null', *arguments, **options)

    def start(self, *arguments, **options):
        """In the background, its output to be read with read_until."""
        options = {'stdin': subprocess.DEVNULL, 'stdout': subprocess.PIPE,
                   'stderr': subprocess.PIPE, 'env': self.environment, **options}
        process = subprocess.Popen([self.program, '--no-window', '--output', 'null', *arguments],
                                   bufsize=0, **options)
        process.seen = process.complaints = b''
        self.running.append(process)
        return process

    def read_until(self, process, text):
        """Reads standard output until it holds the text; answers all read so far."""
        end = time.monotonic() + PATIENCE
        while text not in process.seen:
            ready, _, _ = select.select([process.stdout], [], [], max(0, end - time.monotonic()))
            data = os.read(process.stdout.fileno(), 65536) if ready else b''
            if not data:
                self.fail(f'{text!r} did not come; standard output: {process.seen!r}')
            process.seen += data
        return process.seen

    def end_of(self, process):
        """The exit status."""
        output, errors = process.communicate(timeout=PATIENCE)
        process.seen += output
        process.complaints = errors
        return process.returncode

    def playlist(self):
        """The saved list: current row, and the rows as (title, path), all bytes."""
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), 'rb') as file:
            lines = file.read().split(b'\r\n')
        self.assertEqual(lines[0], b'OMK v1.1')
        self.assertEqual(lines.pop(), b'')
        rows = list(zip(lines[3::2], lines[4::2]))
        self.assertEqual(int(lines[1]), len(rows))
        return int(lines[2]), rows

    def paths_saved(self):
        return [os.path.basename(path) for _, path in self.playlist()[1]]

    def assert_nothing_started(self):
        self.assertFalse(os.path.exists(self.directory))


@contextlib.contextmanager
def shared_folder():
    """World.shared, for all tests of a file. GStreamer takes its time to look through all its plug-ins, so
    what it has noted of them is handed on to the files that come later."""
    handed_on = os.path.join(tempfile.gettempdir(), f'veldrin-tests-registry-{os.getuid()}.bin')
    with tempfile.TemporaryDirectory(prefix='veldrin-shared-') as World.shared:
        registry = os.path.join(World.shared, 'registry.bin')
        if os.path.exists(handed_on):
            shutil.copyfile(handed_on, registry)
        try:
            yield
        finally:
            if os.path.exists(registry) and not os.path.exists(handed_on):
                whole = f'{handed_on}.{os.getpid()}'
                shutil.copyfile(registry, whole)
                os.replace(whole, handed_on)


def main():
    World.program = os.fsencode(os.path.abspath(sys.argv.pop(1)))
    with shared_folder():
        unittest.main()
