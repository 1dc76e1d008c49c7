"""A session bus of a test's own."""

import os
import subprocess


class SessionBus:
    def __init__(self, environment):
        reading, writing = os.pipe()
        self.daemon = subprocess.Popen(
            ['dbus-daemon', '--session', '--nofork', '--nopidfile', f'--print-address={writing}'],
            pass_fds=[writing], env=environment, stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as pipe:
            self.address = pipe.readline().strip()

    def end(self):
        self.daemon.terminate()
        self.daemon.wait()
