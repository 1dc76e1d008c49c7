#!/usr/bin/env python3
"""The very first start of all: what can be played is not known yet, since the sound library has to
look through all its plug-ins first. The window does not wait for it; what was given does."""

import os
import signal
import subprocess

from desktop import main, wait_for
from player import AT_REST, LIST, Player
from world import PATIENCE

SCANNER = os.path.join(subprocess.run(
    ['pkg-config', '--variable=pluginscannerdir', 'gstreamer-1.0'], check=True,
    stdout=subprocess.PIPE).stdout.decode().strip(), 'gst-plugin-scanner')
CLOSE = (272, 17)
# Of the panel of file types, below where it is closed if it shows none.
TYPES = (LIST[0], LIST[1] + 45, 250, 30)


class FirstStart(Player):
    """Each with a registry and a cache of its own, both empty, and a scanner of plug-ins that waits
    until it is told to go on."""

    def setUp(self):
        super().setUp()
        self.asked, self.answers = (os.path.join(self.folder, name) for name in ('asked', 'answers'))
        self.addCleanup(self.answer)
        for name, folder in ('XDG_CACHE_HOME', 'cache'), ('GST_REGISTRY', 'registry'):
            self.environment[name] = os.path.join(self.folder, folder)
        self.scan_by(f'exec {SCANNER} "$@"')
        self.songs('a', 'b', 'Disc 1/c', 'Disc 1/d', 'Disc 2/Bonus/e', 'Disc 2/f')

    def make_later_start(self):
        """No."""

    def songs(self, *names, **options):
        for name in names:
            os.makedirs(os.path.dirname(self.at(name)), exist_ok=True)
        super().songs(*names, **options)

    def scan_by(self, command):
        path = os.path.join(self.folder, 'scanner')
        with open(path, 'w') as file:
            file.write(f'#!/bin/sh\n: >"{self.asked}"\n'
                       f'while [ ! -e "{self.answers}" ]; do sleep 0.05; done\n{command}\n')
        os.chmod(path, 0o755)
        self.environment['GST_PLUGIN_SCANNER'] = path

    def answer(self):
        with open(self.answers, 'w'):
            pass

    def open_first(self, *arguments):
        self.open(*arguments)
        wait_for(lambda: os.path.exists(self.asked), 'the look through the plug-ins')
        self.assertFalse(os.path.exists(self.environment['GST_REGISTRY']))

    def end(self):
        self.player.send_signal(signal.SIGTERM)
        # What it has started to look for it may be left behind, with its output.
        self.assertEqual(self.player.wait(PATIENCE), 0)

    def names_saved(self):
        return [os.path.relpath(os.fsdecode(path), self.music) for _, path in self.playlist()[1]]

    def test_the_window_comes_first_and_what_was_given_whole(self):
        self.open_first(self.music)
        self.assertEqual(self.title(), AT_REST)
        self.assertFalse(self.shows_row(0))
        self.assertEqual(self.run_program('--add', self.at('b.wav')).returncode, 0)
        self.assertEqual(self.run_program('--volume', '7').returncode, 0)
        self.answer()
        self.wait_for_title('c.wav')
        wait_for(lambda: self.shows_row(6), 'a seventh row')
        wait_for(lambda: self.setting('MusicVolume') == '7', 'the volume')
        self.end()
        self.assertEqual(self.names_saved(), ['Disc 1/c.wav', 'Disc 1/d.wav', 'Disc 2/Bonus/e.wav',
                                              'Disc 2/f.wav', 'a.wav', 'b.wav', 'b.wav'])
        self.assertEqual(self.playlist()[0], 0)

    def test_what_is_added_joins_the_saved_list(self):
        self.save_list(2)
        self.open_first('--add', self.at('a.wav'), self.at('b.wav'))
        wait_for(lambda: self.shows_row(1), 'the list')
        self.assertFalse(self.shows_row(2))
        self.answer()
        wait_for(lambda: self.shows_row(3), 'a fourth row')
        self.assertEqual(self.title(), AT_REST)
        self.end()
        self.assertEqual(self.paths_saved(), [b'0.mp3', b'1.mp3', b'a.wav', b'b.wav'])

    def test_a_list_that_comes_back_plays_if_it_shall(self):
        self.write_settings(PlayAtStartup=True)
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
            file.write('OMK v1.1\r\n2\r\n1\r\n' + ''.join(
                f'{name}\r\n{self.at(name)}.wav\r\n' for name in 'ab'))
        self.open_first()
        wait_for(lambda: self.shows_row(1), 'the list')
        self.assertEqual(self.title(), AT_REST)
        self.answer()
        self.wait_for_title('b')
        self.end()
        self.assertEqual(self.names_saved(), ['a.wav', 'b.wav'])

    def test_a_look_that_hangs_keeps_neither_the_end_nor_the_list(self):
        def close():
            self.click(CLOSE)
            self.assertEqual(self.player.wait(PATIENCE), 0)

        for end in self.end, close:
            with self.subTest(end.__name__):
                self.open_first(self.music)
                end()
                self.assertEqual(len(self.names_saved()), 6)
                self.assertEqual(self.playlist()[0], -1)

    def test_a_look_that_finds_nothing_leaves_nothing_to_play(self):
        plug_ins = os.path.join(self.folder, 'plug-ins')
        os.mkdir(plug_ins)
        with open(os.path.join(plug_ins, 'libgstbroken.so'), 'w') as file:
            file.write('no library\n')
        self.environment['GST_PLUGIN_SYSTEM_PATH'] = plug_ins
        self.scan_by('exit 1')
        self.open_first(self.at('a.wav'))
        self.show_types()
        self.assertTrue(self.shown(TYPES).has_colours())
        self.answer()
        wait_for(lambda: not self.shown(TYPES).has_colours(), 'the types that there are')
        self.end()
        self.assertEqual(self.names_saved(), [])


if __name__ == '__main__':
    main()
