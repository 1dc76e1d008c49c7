"""Notes when the machine has held a program up: a process that wakes two hundred times a second and
sees whether it was late. What is heard at such a moment tells nothing about the player."""

import subprocess
import sys
import threading
import time

# Seconds. Player and sound server have some 60 ms between them; where this process is late, each of
# their threads may be, one after the other.
LATE = 0.02

WATCH = f"""
import time
while True:
    before = time.monotonic()
    time.sleep(0.005)
    if time.monotonic() - before > {LATE} + 0.005:
        print(time.monotonic(), flush=True)
"""


class Stalls:
    def __init__(self):
        self.times = []
        self.process = subprocess.Popen([sys.executable, '-c', WATCH], stdout=subprocess.PIPE)
        self.thread = threading.Thread(target=self.read, daemon=True)
        self.thread.start()

    def read(self):
        for line in self.process.stdout:
            self.times.append(float(line))

    def since(self, moment):
        """Whether there was one after this moment of time.monotonic()."""
        time.sleep(0.02)  # it may be just being told
        return any(stall >= moment for stall in self.times)

    def end(self):
        self.process.kill()
        self.process.wait()
        self.thread.join()
        self.process.stdout.close()
