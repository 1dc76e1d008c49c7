#!/usr/bin/env python3
"""The real program, steered by further starts of it."""

import glob
import json
import os
import socket

from world import PATIENCE, World, main, tone

FIELDS = ('state', 'position', 'length', 'volume', 'repeat', 'random', 'row', 'rows', 'title',
          'path')


class Verbs(World):
    def start_songs(self, *names):
        for name in names:
            tone(self.at(name), seconds=60)
        first = self.start(*(self.at(name) for name in names))
        self.read_until(first, os.fsencode(names[0]))
        return first

    def ask(self, *arguments):
        """What it says, its end being in order."""
        result = self.run_program(*arguments)
        self.assertEqual((result.returncode, result.stderr), (0, b''), arguments)
        return result.stdout.decode()

    def fields(self, line):
        self.assertEqual(line[-1], '\n')
        return dict(zip(FIELDS, line[:-1].split('\t'), strict=True))

    def status(self):
        """Without a start, of which each takes its time."""
        place, = glob.glob(os.path.join(self.folder, 'runtime', '*.socket'))
        with socket.socket(socket.AF_UNIX) as running:
            running.settimeout(PATIENCE)
            running.connect(place)
            running.sendall(b'veldrin 1;T0:,')
            running.shutdown(socket.SHUT_WR)
            with running.makefile('rb') as answer:
                said = answer.read()
        self.assertEqual(said[:2], b'ok')
        return self.fields(said[2:].decode())

    def refused(self, *arguments):
        result = self.run_program(*arguments)
        self.assertEqual(result.stdout, b'')
        return result.returncode, result.stderr.decode()

    def test_one_is_steered(self):
        first = self.start_songs('a.wav', 'b.wav')
        for check in (self.check_misuse, self.check_transport, self.check_numbers,
                      self.check_commands):
            check()
        self.assertIsNone(first.poll())
        self.assertEqual(self.ask('--command', 'kExt'), '')
        self.assertEqual(self.end_of(first), 0)

    def check_misuse(self):
        for arguments in (['--volume', '200'], ['--seek', 'x'], ['--stop', 'a.wav'],
                          ['--stop', '--status'], ['--status', 'xml']):
            status, complaint = self.refused(*arguments)
            self.assertEqual(status, 2, arguments)
            self.assertIn("(see 'veldrin --help')", complaint)
        self.assertEqual(self.status()['state'], 'playing')

    def check_transport(self):
        for verbs, state, row in ((['--play'], 'playing', '1'), (['--pause'], 'paused', '1'),
                                  (['--pause'], 'paused', '1'), (['--play'], 'playing', '1'),
                                  (['--play-pause'], 'paused', '1'),
                                  (['--next'], 'playing', '2'), (['--stop'], 'stopped', '2'),
                                  (['--play-pause'], 'playing', '2'),
                                  (['--previous', '--pause'], 'paused', '1')):
            self.assertEqual(self.ask(*verbs), '')
            status = self.status()
            self.assertEqual((status['state'], status['row']), (state, row), verbs)

    def check_numbers(self):
        for verbs, volume, position in (('--volume 30 --seek 40', '30', '40'),
                                        ('--volume +15 --seek -15', '45', '25'),
                                        ('--volume -50 --seek +5', '0', '30'),
                                        ('--volume 100 --seek -100', '100', '0'),
                                        ('--volume +1', '100', '0')):
            self.ask(*verbs.split())
            status = self.status()
            self.assertEqual((status['volume'], status['position']), (volume, position), verbs)
        self.assertEqual(status['state'], 'paused')

    def check_commands(self):
        self.ask('--command', 'kPRdm', '--command', 'kPRpP')
        status = self.status()
        self.assertEqual((status['random'], status['repeat']), ('on', 'list'))
        self.ask('--command', 'kPRpI')
        self.assertEqual(self.status()['repeat'], 'item')
        for key in ('kNone', '12', 'kprdm'):
            self.assertEqual(self.refused('--command', key),
                             (1, f"veldrin: there is no command '{key}'\n"))
        self.ask('--command', 'kRAll')
        status = self.status()
        self.assertEqual((status['row'], status['rows'], status['title'], status['path']),
                         ('0', '0', '', ''))

    def test_status_of_an_odd_name(self):
        name = b'\xe9 \t"\\\n.wav'
        path = os.path.join(self.music.encode(), name)
        tone(path, seconds=60)
        first = self.start(path)
        self.read_until(first, b'.wav')
        self.ask('--stop')
        shown = self.music + '/\ufffd  "\\ .wav'
        self.assertEqual(self.fields(self.ask('--status')), {
            'state': 'stopped', 'position': '0', 'length': '0', 'volume': '80', 'repeat': 'none',
            'random': 'off', 'row': '1', 'rows': '1', 'title': shown, 'path': shown})
        status = json.loads(self.ask('--status', 'json'))
        self.assertEqual(status['path'], self.music + '/\ufffd \t"\\\n.wav')
        self.assertEqual(status['url'], 'file://' + self.music + '/%E9%20%09%22%5C%0A.wav')
        self.assertEqual((status['state'], status['random'], status['rows'], status['volume']),
                         ('stopped', False, 1, 80))

    def test_without_a_running_one_none_is_started(self):
        for arguments in (['--play'], ['--volume', '5', '--next'], ['--status'],
                          ['--status', 'json']):
            self.assertEqual(self.refused(*arguments), (1, 'veldrin: no veldrin is running\n'))
        self.assert_nothing_started()


if __name__ == '__main__':
    main()
