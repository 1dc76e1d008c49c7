#!/usr/bin/env python3
"""The real program on a terminal: key commands, progress, and who has the terminal."""

import os
import signal
import termios

from terminal import Terminal
from world import main, tone


class OnTerminal(Terminal):
    def test_keys(self):
        self.open_terminal(self.music)
        self.expect(b'1. a.wav  [1:00]')
        self.expect(b'0:00 / 1:00')
        self.assertTrue(self.reads_single_keys())
        self.press(b'b')
        self.expect(b'2. b.wav')
        self.press(b'B')
        self.expect(b'3. c.wav')
        self.press(b'z')
        self.expect(b'4. b.wav')
        self.press(b'c')
        self.expect(b'paused')
        self.press(b'c')
        self.expect(b'\r\x1b[K     0:0')
        self.press(b'v')
        self.press(b'x')
        self.expect(b'5. b.wav')
        self.press(b'q')
        self.assertEqual(self.status(), 0)
        self.assertFalse(self.reads_single_keys())
        self.assertEqual(self.playlist()[0], 1)

    def test_other_characters_are_no_keys(self):
        # As key codes they would be Home, Down and others, in the end Del.
        self.open_terminal(self.music)
        self.expect(b'0:00 / 1:00')
        self.press(b'-\"#%&\' ,\t$(.')
        self.press(b'b')
        self.expect(b'2. b.wav')
        self.press(b'q')
        self.assertEqual(self.status(), 0)
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav'])

    def test_mode_of_the_terminal_while_it_plays_and_after(self):
        self.open_shell()
        self.expect(b'$ ')
        self.press(b'stty icanon echo ixon; echo ready: $?\n')
        self.expect(b'ready: 0')
        self.expect(b'$ ')
        before = self.mode()
        command = os.fsencode(f'{os.fsdecode(self.program)} --no-window --output=null {self.music}')
        self.press(command + b'\n')
        self.expect(b'0:00 / 1:00')
        inputs, _, _, local, *_ = self.mode()
        self.assertFalse(local & (termios.ICANON | termios.ECHO))
        self.assertTrue(local & termios.ISIG)
        self.assertFalse(inputs & termios.IXON)
        self.press(b'q')
        self.expect(b'$ ')
        self.assertEqual(self.mode(), before)
        self.press(b'exit\n')
        self.assertEqual(self.status(), 0)

    def test_progress_moves(self):
        self.open_terminal(self.at('a.wav'))
        self.expect(b'0:01 / 1:00')
        self.press(b'q')
        self.assertEqual(self.status(), 0)

    def test_arrow_keys_are_no_letters(self):
        self.open_terminal(self.music)
        self.expect(b'1. a.wav')
        self.press(b'\x1b[B\x1b[C\x1bOB')
        self.press(b'b')
        self.expect(b'2. b.wav')
        self.press(b'q')
        self.assertEqual(self.status(), 0)
        self.assertNotIn(b'3.', self.screen)

    def test_stop_does_not_end_the_program(self):
        self.open_terminal(self.at('a.wav'))
        self.expect(b'0:00 / 1:00')
        self.press(b'v')
        self.expect(b'\r\x1b[K')
        self.press(b'x')
        self.expect(b'2. a.wav')
        self.press(b'q')
        self.assertEqual(self.status(), 0)

    def test_end_after_the_last_item(self):
        tone(self.at('short.wav'))
        self.open_terminal(self.at('short.wav'))
        self.assertEqual(self.status(), 0)
        self.assertFalse(self.reads_single_keys())

    def test_interrupt_key_ends_in_order(self):
        self.open_terminal(self.music)
        self.expect(b'1. a.wav')
        self.press(b'\x03')
        self.assertEqual(self.status(), 0)
        self.assertFalse(self.reads_single_keys())
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav'])

    def test_suspended_and_sent_to_the_back_by_a_shell(self):
        """Ctrl+Z, bg and fg: the shell has its terminal while the program does not, and no longer."""
        self.open_shell()
        command = os.fsencode(f'{os.fsdecode(self.program)} --no-window --output=null {self.music}')
        self.press(command + b'\n')
        self.expect(b'0:00 / 1:00')
        self.press(b'b')
        self.expect(b'2. b.wav')
        self.press(b'\x1a')
        self.expect(b'Stopped')
        self.press(b'fg\n')
        self.expect(b'/ 1:00')
        self.press(b'b')
        self.expect(b'3. c.wav')
        self.press(b'\x1a')
        self.expect(b'Stopped')
        self.press(b'bg\n')
        self.press(b'echo the shell" "has it\n')
        self.expect(b'the shell has it')
        self.press(b'echo running: $(jobs -r | wc -l)\n')
        self.expect(b'running: 1')
        self.press(b'fg\n')
        self.expect(b'/ 1:00')
        self.press(b'z')
        self.expect(b'4. b.wav')
        self.press(b'q')
        self.expect(b'$ ')
        self.press(b'exit\n')
        self.assertEqual(self.status(), 0)

    def test_hang_up_ends_in_order(self):
        self.open_terminal(self.music)
        self.expect(b'1. a.wav')
        os.kill(self.child, signal.SIGHUP)
        self.assertEqual(self.status(), 0)
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav'])


if __name__ == '__main__':
    main()
