#!/usr/bin/env python3
"""Man page, desktop entries, metainfo and icon: valid, and at one with the program."""

import os
import re
import struct
import unittest
import xml.etree.ElementTree as xml

from gi.repository import Gio
import packaged
from packaged import LISTS, heads_of_help, options_in, playable_extensions, read, run, source

ENTRIES = ['veldrin', 'veldrin_enqueue', 'veldrin_folder']


def version():
    return run(packaged.given.program, '--version').split()[1]


class ManPage(unittest.TestCase):
    def setUp(self):
        # With so small an indent each option stands on a line of its own.
        page = run('groff', '-man', '-Tascii', '-P-cbou', '-rLL=200n', '-rIN=1n',
                   source('veldrin.1'))
        part = page[page.index('\nOPTIONS\n'):page.index('\nKEYS\n')]
        self.heads = [head for line in re.findall('^ ([-/]\\S.*)$', part, re.MULTILINE)
                      for head in line.split(', ')]

    def test_it_renders_without_a_warning(self):
        self.assertEqual(run('groff', '-ww', '-man', '-Tutf8', '-z', source('veldrin.1')), '')
        for width in '60', '80', '130':
            environment = dict(os.environ, MANWIDTH=width, LC_ALL='C.UTF-8', MANPAGER='true')
            self.assertEqual(run('man', '--warnings', '-Tutf8', '-l', source('veldrin.1'),
                                 env=environment).count('warning'), 0)

    def test_it_has_the_options_of_the_program_and_no_others(self):
        told = heads_of_help()
        self.assertIn('--output null', told)
        self.assertEqual(options_in(self.heads), options_in(told))
        self.assertEqual([head for head in told if head not in self.heads], [])

    def test_it_is_that_of_this_version_and_so_is_the_changelog(self):
        self.assertIn(f'"Veldrin {version()}"', read(source('veldrin.1')))
        self.assertEqual(read(source('debian/changelog')).split()[1], f'({version()})')


class Entries(unittest.TestCase):
    @staticmethod
    def keys(entry):
        """By group and key."""
        keys, group = {}, ''
        for line in read(source(f'applications/{entry}.desktop')).splitlines():
            if line.startswith('['):
                group = line.strip('[]')
            elif line:
                key, value = line.split('=', 1)
                keys[group, key] = value
        return keys

    def test_they_are_valid(self):
        for entry in ENTRIES:
            self.assertEqual(run('desktop-file-validate', source(f'applications/{entry}.desktop')),
                             '')

    def test_desktops_find_window_and_icon_by_them(self):
        for entry in ENTRIES:
            keys = self.keys(entry)
            self.assertEqual(keys['Desktop Entry', 'Icon'], 'veldrin')
            self.assertEqual(keys['Desktop Entry', 'StartupWMClass'], 'veldrin')

    def test_what_they_start_is_understood(self):
        told = options_in(heads_of_help())
        starts = [value for entry in ENTRIES for (_, key), value in self.keys(entry).items()
                  if key == 'Exec']
        self.assertEqual(len(starts), 3 + 4)
        for start in starts:
            self.assertEqual(start.split()[0], 'veldrin')
            self.assertEqual(options_in([start]) - told, set())

    def test_they_open_all_that_can_be_played(self):
        wanted = {Gio.content_type_guess('x.' + extension, None)[0]
                  for extension in playable_extensions() + LISTS}
        self.assertGreater(len(wanted), 25)
        for entry in 'veldrin', 'veldrin_enqueue':
            types = self.keys(entry)['Desktop Entry', 'MimeType'].split(';')
            self.assertEqual(wanted - set(types), set())
            self.assertEqual(types.pop(), '')
            self.assertEqual(len(set(types)), len(types))

    # Or it would come to open every folder.
    def test_the_programs_own_entry_opens_no_folders(self):
        for entry, opens in ('veldrin', False), ('veldrin_enqueue', True), ('veldrin_folder', True):
            keys = self.keys(entry)
            self.assertEqual('inode/directory' in keys['Desktop Entry', 'MimeType'], opens)
            self.assertEqual(('Desktop Entry', 'NoDisplay') in keys, opens)


class Metainfo(unittest.TestCase):
    path = source('sarnel.ambrisor.veldrin.metainfo.xml')

    def test_it_is_valid(self):
        text = run('appstreamcli', 'validate', '--no-net', '--no-color', self.path)
        self.assertNotRegex(text, '(?m)^[WE]:')

    def test_it_tells_of_this_program(self):
        component = xml.parse(self.path).getroot()
        self.assertEqual(component.find('launchable').text, 'veldrin.desktop')
        self.assertEqual(component.find('releases/release').get('version'), version())
        self.assertEqual(component.find('id').text + '.metainfo.xml', os.path.basename(self.path))


class Icon(unittest.TestCase):
    def test_each_picture_is_of_its_size(self):
        for size in 16, 22, 24, 32, 48, 64, 128, 256:
            with open(source(f'icons/{size}.png'), 'rb') as file:
                head = file.read(26)
            self.assertEqual(head[:8], b'\x89PNG\r\n\x1a\n')
            self.assertEqual(struct.unpack('>II', head[16:24]), (size, size))
            self.assertEqual(head[25], 6)  # colours with alpha

    def test_the_drawings_are_well_formed(self):
        for name in os.listdir(source('icons')):
            if name.endswith('.svg'):
                view = xml.parse(source('icons/' + name)).getroot().get('viewBox').split()
                self.assertEqual(view[2], view[3])


if __name__ == '__main__':
    packaged.main()
