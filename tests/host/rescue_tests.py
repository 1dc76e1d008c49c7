#!/usr/bin/env python3
"""The real program: what is found after a run that did not end in order."""

import glob
import os
import signal
import time

from world import PATIENCE, World, main, tone

LIST = 'Sarnel.Ambrisor.omk'


class Rescue(World):
    def setUp(self):
        super().setUp()
        self.list = os.path.join(self.directory, LIST)
        tone(self.at('long.wav'), seconds=60)
        tone(self.at('b.wav'))

    def save_list(self, *names):
        os.makedirs(self.directory, exist_ok=True)
        with open(self.list, 'wb') as file:
            file.write(self.list_of(*names))

    def list_of(self, *names):
        lines = ['OMK v1.1', f' {len(names)} ', ' 0 ']
        for name in names:
            lines += [name, self.at(name)]
        return ''.join(line + '\r\n' for line in lines).encode()

    def copy(self):
        """The rescue copy's path."""
        found = glob.glob(os.path.join(self.folder, 'state', 'veldrin', '*.omk'))
        self.assertEqual(len(found), 1, found)
        return found[0]

    def rows_of_copy(self):
        with open(self.copy(), 'rb') as file:
            return file.read().split(b'\r\n')[4::2]

    def start_playing(self, *arguments):
        process = self.start(*arguments)
        self.read_until(process, b'long.wav')
        return process

    def killed(self, *arguments):
        """A run that is killed while it plays."""
        process = self.start_playing(*arguments)
        process.kill()
        self.end_of(process)

    def ended(self, process):
        """Ends a run in order, and answers what it complained of."""
        process.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(process), 0)
        return process.complaints

    def test_kill_costs_no_more_than_the_last_seconds(self):
        process = self.start_playing(self.at('long.wav'))
        self.assertEqual(self.run_program('--add', self.at('b.wav')).returncode, 0)
        end = time.monotonic() + PATIENCE
        while not glob.glob(os.path.join(self.folder, 'state/veldrin/*.omk')) or \
                len(self.rows_of_copy()) < 2:
            self.assertLess(time.monotonic(), end)
            time.sleep(0.05)
        process.kill()
        self.end_of(process)
        self.assertFalse(os.path.exists(self.list))
        again = self.start_playing()
        self.assertEqual(self.ended(again),
                         b'veldrin: the playlist is that of its rescue copy\n')
        self.assertEqual(self.paths_saved(), [b'long.wav', b'b.wav'])
        # And no second time.
        self.assertEqual(self.ended(self.start_playing()), b'')
        self.assertEqual(self.paths_saved(), [b'long.wav', b'b.wav'])

    def test_kill_while_the_list_is_saved(self):
        self.save_list('long.wav', 'b.wav')
        whole = self.list_of('long.wav', 'b.wav')
        for left in [None, *range(0, len(whole), 20)]:
            self.killed()
            os.remove(self.list)
            if left is not None:
                with open(self.list, 'wb') as file:
                    file.write(whole[:left])
            process = self.start_playing()
            complaints = self.ended(process)
            self.assertIn(b'the playlist is that of its rescue copy', complaints)
            self.assertEqual(b'Sarnel.Ambrisor.omk.damaged' in complaints, left is not None)
            self.assertEqual(self.paths_saved(), [b'long.wav', b'b.wav'])
            if left:
                break  # the unit tests try every place
        with open(self.list + '.damaged.2', 'rb') as file:
            self.assertEqual(file.read(), whole[:20])

    def test_list_of_a_run_that_ended_in_order_is_the_users(self):
        self.save_list('long.wav', 'b.wav')
        self.ended(self.start_playing())
        os.remove(self.list)
        self.assertEqual(self.play().returncode, 1)
        self.assertEqual(self.paths_saved(), [])
        self.save_list('b.wav')
        os.utime(self.list, (1, 1))
        self.assertEqual(self.play().stderr, b'')
        self.assertEqual(self.paths_saved(), [b'b.wav'])

    def test_list_that_cannot_be_read_is_set_aside(self):
        os.makedirs(os.path.join(self.list, 'inside'))
        result = self.play(self.at('b.wav'))
        self.assertEqual(result.returncode, 0)
        self.assertEqual(result.stderr, b"veldrin: cannot read the playlist '" +
                         self.list.encode() + b"'; what was there is kept as '" +
                         LIST.encode() + b".damaged'\n")
        self.assertTrue(os.path.isdir(self.list + '.damaged/inside'))
        self.assertEqual(self.paths_saved(), [b'b.wav'])
        os.remove(self.list)
        os.mkfifo(self.list)
        self.assertEqual(self.play(self.at('b.wav')).returncode, 0)
        self.assertTrue(os.path.exists(self.list + '.damaged.2'))
        self.assertEqual(self.paths_saved(), [b'b.wav'])

    def test_after_three_starts_that_broke_off_nothing_is_played(self):
        self.save_list('b.wav')
        for _ in range(3):
            self.killed('--add', self.at('long.wav'))
        result = self.play(self.at('long.wav'))
        self.assertEqual((result.returncode, result.stdout), (1, b''))
        self.assertEqual(result.stderr, b'veldrin: the last 3 starts broke off at once: '
                                        b'nothing is played at this one\n')
        self.assertEqual(self.paths_saved(), [b'b.wav', b'long.wav'])
        # That one ended in order.
        self.assertEqual(self.ended(self.start_playing(self.at('long.wav'))), b'')

    def test_second_start_leaves_the_mark_alone(self):
        self.save_list('long.wav')
        process = self.start_playing()
        for _ in range(4):
            result = self.run_program('--add', self.at('b.wav'))
            self.assertEqual((result.returncode, result.stderr), (0, b''))
        self.assertEqual(self.ended(process), b'')
        self.assertEqual(self.ended(self.start_playing()), b'')

    def test_output_that_stands_in_the_copy_is_refused(self):
        self.save_list('long.wav')
        self.killed()
        tone(self.at('precious.wav'))
        copy = self.copy()
        os.remove(copy)  # it may be the list itself under a second name
        with open(copy, 'wb') as file:
            file.write(self.list_of('precious.wav'))
        size = os.path.getsize(self.at('precious.wav'))
        result = self.run_program('--no-window', '--output', 'file:' + self.at('precious.wav'))
        self.assertEqual(result.returncode, 2)
        self.assertEqual(os.path.getsize(self.at('precious.wav')), size)

    def test_leftovers_of_killed_runs_are_removed(self):
        self.save_list('b.wav')
        for name in ('Sarnel.Ambrisor.ini.q3XhZ0', 'Sarnel.Ambrisor.ini.backup'):
            with open(os.path.join(self.directory, name), 'w'):
                pass
        self.assertEqual(self.play().returncode, 0)
        self.assertEqual(sorted(os.listdir(self.directory)),
                         ['Sarnel.Ambrisor.ini', 'Sarnel.Ambrisor.ini.backup', LIST])

    def test_without_a_place_for_a_copy(self):
        self.environment['XDG_STATE_HOME'] = '/proc'
        result = self.play(self.at('b.wav'))
        self.assertEqual((result.returncode, result.stderr), (0, b''))
        self.assertEqual(self.paths_saved(), [b'b.wav'])


if __name__ == '__main__':
    main()
