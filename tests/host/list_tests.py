#!/usr/bin/env python3
"""The real program: what survives from run to run."""

import os
import re
import shutil
import signal
import subprocess

from world import PATIENCE, World, main, tone


class Lists(World):
    """What survives from run to run."""

    def save_list(self, current, names):
        os.makedirs(self.directory, exist_ok=True)
        lines = ['OMK v1.1', f' {len(names)} ', f' {current} ' if current >= 0 else f'{current} ']
        for name in names:
            lines += [name, self.at(name)]
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), 'wb') as file:
            file.write(''.join(line + '\r\n' for line in lines).encode())

    def titles(self, result):
        return re.findall(r'\d+\. (.*?)  \[', result.stdout.decode())

    def test_restored_list_plays_on_from_its_row(self):
        for name in ('a.wav', 'b.wav', 'c.wav'):
            tone(self.at(name))
        self.save_list(1, ['a.wav', 'b.wav', 'c.wav'])
        result = self.play()
        self.assertEqual(self.titles(result), ['b.wav', 'c.wav'])
        self.assertEqual(result.returncode, 0)
        self.assertEqual(self.playlist()[0], 2)

    def test_restored_list_without_a_row_plays_from_the_top(self):
        for name in ('a.wav', 'b.wav'):
            tone(self.at(name))
        self.save_list(-1, ['a.wav', 'b.wav'])
        self.assertEqual(self.titles(self.play()), ['a.wav', 'b.wav'])

    def test_restored_row_that_is_gone_is_skipped(self):
        tone(self.at('c.wav'))
        self.save_list(1, ['a.wav', 'b.wav', 'c.wav'])
        self.assertEqual(self.titles(self.play()), ['c.wav'])

    def test_restored_last_row_that_is_gone_the_others_still_play(self):
        tone(self.at('b.wav'))
        self.save_list(2, ['a.wav', 'b.wav', 'c.wav'])
        result = self.play()
        self.assertEqual(self.titles(result), ['b.wav'])
        self.assertEqual(result.returncode, 0)

    def test_add_joins_the_saved_list_which_plays(self):
        for name in ('a.wav', 'b.wav', 'c.wav'):
            tone(self.at(name))
        self.save_list(0, ['a.wav', 'b.wav'])
        result = self.play('--add', self.at('c.wav'))
        self.assertEqual(self.titles(result), ['a.wav', 'b.wav', 'c.wav'])
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav'])

    def test_the_shells_word_for_adding(self):
        for name in ('a.wav', 'b.wav', 'c.wav'):
            tone(self.at(name))
        self.save_list(0, ['a.wav'])
        result = self.run_program('/ADD', '--no-window', '--output', 'null', self.at('b.wav'),
                                  self.at('c.wav'))
        self.assertEqual(self.titles(result), ['a.wav', 'b.wav', 'c.wav'])

    def test_the_shells_word_alone_is_a_plain_start(self):
        tone(self.at('a.wav'))
        self.save_list(0, ['a.wav'])
        result = self.run_program('/add', '--no-window', '--output', 'null')
        self.assertEqual((self.titles(result), result.returncode, result.stderr),
                         (['a.wav'], 0, b''))

    def test_add_to_nothing_plays_what_was_added(self):
        tone(self.at('a.wav'))
        self.assertEqual(self.titles(self.play('--add', self.at('a.wav'))), ['a.wav'])

    def test_play_at_startup_plays_each_item_once(self):
        for name in ('a.wav', 'b.wav'):
            tone(self.at(name))
        self.save_list(0, ['a.wav', 'b.wav'])
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.ini'), 'w') as file:
            file.write('[Memory]\r\nPlayAtStartup=True\r\n')
        self.assertEqual(self.titles(self.play()), ['a.wav', 'b.wav'])

    def test_every_row_dead(self):
        self.save_list(1, ['a.wav', 'b.wav', 'c.wav'])
        result = self.play()
        self.assertEqual((result.returncode, result.stdout), (1, b''))
        self.assertEqual(result.stderr.count(b'cannot play'), 3)
        self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav'])

    def test_every_row_dead_and_the_list_repeats(self):
        self.save_list(1, ['a.wav', 'b.wav', 'c.wav'])
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.ini'), 'w') as file:
            file.write('[Memory]\r\nRepeatList=True\r\n')
        self.assertEqual(self.play().returncode, 1)

    def test_signals_save_list_and_row(self):
        for name in ('a.wav', 'b.wav'):
            tone(self.at(name))
        tone(self.at('c.wav'), seconds=60)
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            process = self.start(self.music)
            self.read_until(process, b'c.wav')
            process.send_signal(number)
            self.assertEqual((number, self.end_of(process)), (number, 0))
            self.assertEqual(self.playlist()[0], 2)
            self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav', b'c.wav'])
            os.remove(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'))

    def test_directory_of_its_own(self):
        tone(self.at('a.wav'))
        own = os.path.join(self.folder, 'own', 'deep')
        self.assertEqual(self.play('--dir', own, self.at('a.wav')).returncode, 0)
        self.assertTrue(os.path.exists(os.path.join(own, 'Sarnel.Ambrisor.omk')))
        self.assertEqual(os.stat(own).st_mode & 0o777, 0o700)
        self.assert_nothing_started()

    def test_settings_beside_the_program_make_it_portable(self):
        tone(self.at('a.wav'))
        stick = os.path.join(self.folder, 'stick')
        os.mkdir(stick)
        shutil.copy(self.program, os.path.join(stick, 'veldrin'))
        with open(os.path.join(stick, 'Sarnel.Ambrisor.ini'), 'w'):
            pass
        result = subprocess.run(
            [os.path.join(stick, 'veldrin'), '--no-window', '--output=null', self.at('a.wav')],
            env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            timeout=PATIENCE)
        self.assertEqual(result.returncode, 0)
        self.assertTrue(os.path.exists(os.path.join(stick, 'Sarnel.Ambrisor.omk')))
        self.assert_nothing_started()


if __name__ == '__main__':
    main()
