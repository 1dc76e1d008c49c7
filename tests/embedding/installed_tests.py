#!/usr/bin/env python3
"""The component as it is installed: what lies where, and programs outside the tree that are built with
nothing else.

    FILE --cmake CMAKE --compiler COMPILER --build FOLDER --source FOLDER --smallest-host FILE
         [unittest arguments]
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

given = None  # set by main
PATIENCE = 240
ENTRIES = {'core/ambrisor.h', 'core/base/version.h', 'core/remote.h', 'platform/base/text.h',
           'platform/driver.h', 'platform/headless/headless_driver.h',
           'platform/windows/window_system.h'}
DESKTOP_ENTRIES = {'platform/desktop/desktop_driver.h'}
LIBRARIES = {'ambrisor', 'headless', 'platform'}


def run(*command, **options):
    """Both outputs of a command as one text."""
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=PATIENCE, **options)
    text = done.stdout.decode(errors='replace')
    if done.returncode != 0:
        raise AssertionError(f'{command} ended with {done.returncode}: {text}')
    return text


def files_below(folder):
    return {os.path.relpath(os.path.join(place, name), folder)
            for place, _, names in os.walk(folder) for name in names}


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.mkdtemp(prefix='veldrin-installed-')
        cls.addClassCleanup(shutil.rmtree, cls.scratch)
        # What is installed may be moved.
        first = os.path.join(cls.scratch, 'first')
        run(given.cmake, '--install', given.build, '--component', 'embedding', '--prefix', first)
        cls.prefix = os.path.join(cls.scratch, 'moved')
        os.rename(first, cls.prefix)
        cls.files = files_below(cls.prefix)
        cls.headers = {name.removeprefix('include/veldrin/') for name in cls.files
                       if name.startswith('include/')}
        cls.has_desktop = DESKTOP_ENTRIES <= cls.headers
        cls.song = os.path.join(cls.scratch, 'song.mp3')
        with open(cls.song, 'wb'):
            pass

    def includes(self, header):
        with open(os.path.join(self.prefix, 'include/veldrin', header), encoding='utf-8') as file:
            return set(re.findall(r'(?m)^\s*#\s*include\s*"([^"]+)"', file.read()))

    def test_the_public_headers_suffice_and_no_other_is_there(self):
        wanted, reached = ENTRIES | (DESKTOP_ENTRIES if self.has_desktop else set()), set()
        while wanted:
            header = wanted.pop()
            self.assertIn(header, self.headers)
            reached.add(header)
            wanted |= self.includes(header) - reached
        self.assertEqual(self.headers, reached)

    def test_the_build_shows_the_same_headers(self):
        self.assertEqual(files_below(os.path.join(given.build, 'include')), self.headers)

    def test_libraries_and_package_files_lie_where_they_are_looked_for(self):
        names = {os.path.basename(name) for name in self.files if name.startswith('lib')}
        libraries = LIBRARIES | ({'desktop'} if self.has_desktop else set())
        targets = ['AmbrisorTargets', *(['AmbrisorDesktopTargets'] if self.has_desktop else [])]
        self.assertEqual(names, {f'libveldrin_{name}.a' for name in libraries} | {
            'AmbrisorConfig.cmake', 'AmbrisorConfigVersion.cmake', 'ambrisor.pc',
            *(['ambrisor-desktop.pc'] if self.has_desktop else []),
            *(f'{name}{ending}.cmake' for name in targets for ending in ('', '-release'))})
        self.assertEqual({name.split('/')[0] for name in self.files}, {'include', 'lib'})

    def test_nothing_names_the_place_of_its_making(self):
        for name in self.files:
            if name.endswith(('.cmake', '.pc')):
                with open(os.path.join(self.prefix, name), encoding='utf-8') as file:
                    text = file.read()
                for place in given.source, self.scratch:
                    self.assertNotIn(place, text, name)

    def play(self, host):
        kept = tempfile.mkdtemp(dir=self.scratch)
        return run(host, kept, self.song).splitlines()

    def test_a_program_finds_the_package(self):
        source = os.path.join(self.scratch, 'program')
        build = os.path.join(self.scratch, 'program-build')
        shutil.copytree(os.path.join(given.source, 'examples/hosts'), source)
        run(given.cmake, '-S', source, '-B', build, f'-DCMAKE_PREFIX_PATH={self.prefix}',
            f'-DCMAKE_CXX_COMPILER={given.compiler}', '-DCMAKE_BUILD_TYPE=Debug',
            '-DCMAKE_CXX_FLAGS_DEBUG=-O0 -Wall -Wextra -Werror')
        programs = ['headless_host', *(['window_host'] if self.has_desktop else [])]
        run(given.cmake, '--build', build, '--target', *programs)
        self.assertEqual(self.play(os.path.join(build, 'headless_host')),
                         [f'open {self.song}', 'played for 3 s'])

    def pkg_config(self, *words):
        folder, = {os.path.dirname(name) for name in self.files if name.endswith('ambrisor.pc')}
        return run('pkg-config', *words, env=dict(
            os.environ, PKG_CONFIG_PATH=os.path.join(self.prefix, folder))).split()

    def test_a_program_without_cmake_finds_it_too(self):
        flags = self.pkg_config('--cflags', '--libs', 'ambrisor')
        host = os.path.join(self.scratch, 'smallest_host')
        run(given.compiler, '-std=c++20', '-O0', given.smallest_host, '-o', host, *flags)
        self.assertEqual(self.play(host), [f'plays {self.song}', 'the end'])

    def test_pkg_config_knows_what_the_driver_of_a_desktop_needs(self):
        if not self.has_desktop:
            self.skipTest('there is no driver of a desktop')
        flags = self.pkg_config('--static', '--libs', 'ambrisor-desktop')
        order = [flags.index(flag) for flag in ('-lveldrin_desktop', '-lveldrin_platform')]
        self.assertEqual(order, sorted(order))
        self.assertLessEqual({'-lQt6Gui', '-lQt6DBus', '-lxcb'}, set(flags))


if __name__ == '__main__':
    parser = argparse.ArgumentParser()
    for name in 'cmake', 'compiler', 'build', 'source', 'smallest-host':
        parser.add_argument('--' + name, required=True)
    given, rest = parser.parse_known_args()
    unittest.main(argv=sys.argv[:1] + rest)
