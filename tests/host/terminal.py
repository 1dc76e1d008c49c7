"""The program on a pseudo-terminal that is its own."""

import os
import pty
import select
import signal
import termios
import time

from world import PATIENCE, World, tone


class Terminal(World):
    """On a pseudo-terminal that is the program's own."""

    def setUp(self):
        super().setUp()
        for name in ('a.wav', 'b.wav', 'c.wav'):
            tone(self.at(name), seconds=60)
        self.environment['TERM'] = 'xterm'

    def open_terminal(self, *arguments):
        self.execute(self.program, '--no-window', '--output=null', *arguments)

    def open_shell(self):
        self.environment['PS1'] = '$ '
        self.execute('/bin/bash', '--norc', '--noprofile', '--noediting', '-i')

    def execute(self, program, *arguments):
        child, self.master = pty.fork()
        if child == 0:
            try:
                os.execve(program, [program, *arguments], self.environment)
            finally:
                os._exit(127)
        self.child = child
        self.screen = b''
        self.addCleanup(self.close_terminal)

    def close_terminal(self):
        if self.child:
            os.kill(self.child, signal.SIGKILL)
            os.waitpid(self.child, 0)
        os.close(self.master)

    def expect(self, text):
        """Reads on until the text comes; what came before it is used up."""
        end = time.monotonic() + PATIENCE
        while text not in self.screen:
            ready, _, _ = select.select([self.master], [], [], max(0, end - time.monotonic()))
            try:
                data = os.read(self.master, 65536) if ready else b''
            except OSError:
                data = b''
            if not data:
                self.fail(f'{text!r} did not come; screen: {self.screen!r}')
            self.screen += data
        self.screen = self.screen.split(text, 1)[1]

    def press(self, keys):
        os.write(self.master, keys)

    def status(self):
        """Waits for the end. The terminal is read meanwhile, so that nobody waits for us."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            child, status = os.waitpid(self.child, os.WNOHANG)
            if child:
                self.child = 0
                return os.waitstatus_to_exitcode(status)
            ready, _, _ = select.select([self.master], [], [], 0.01)
            try:
                self.screen += os.read(self.master, 65536) if ready else b''
            except OSError:
                pass
        self.fail('it did not end')

    def reads_single_keys(self):
        return not termios.tcgetattr(self.master)[3] & termios.ICANON

    def mode(self):
        return termios.tcgetattr(self.master)
