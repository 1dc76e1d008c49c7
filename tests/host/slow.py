"""Files that take long to open, as of a share that has gone: each whose name holds "slow" hangs until
`answer` is called. Stands in front of World among the bases of a class of tests."""

import os
import time

from world import PATIENCE

GIVEN_UP = 5  # seconds after which a file that does not answer is passed over


class Slow:
    def setUp(self):
        super().setUp()
        self.until = os.path.join(self.folder, 'answers')
        self.environment.update(LD_PRELOAD=self.slow_files, SLOW_UNTIL=self.until)
        self.environment['ASAN_OPTIONS'] += ':verify_asan_link_order=0'

    def answer(self):
        open(self.until, 'w').close()

    def asked(self):
        """The names of the files that have been waited for so far."""
        try:
            with open(self.until + '.asked') as file:
                return [os.path.basename(line) for line in file.read().splitlines()]
        except FileNotFoundError:
            return []

    def forget(self):
        """As if nothing had been asked for."""
        os.remove(self.until + '.asked')

    def wait_until_asked(self, name):
        end = time.monotonic() + PATIENCE
        while name not in self.asked():
            if time.monotonic() > end:
                self.fail(f'{name} is not opened, only {self.asked()}')
            time.sleep(0.01)

    def save_list(self, *names):
        """As if it came from the last run: so nothing else of the files is read before."""
        os.makedirs(self.directory, exist_ok=True)
        rows = ''.join(f'{name}\r\n{self.at(name)}\r\n' for name in names)
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
            file.write(f'OMK v1.1\r\n {len(names)} \r\n 0 \r\n{rows}')
