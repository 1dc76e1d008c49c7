#!/usr/bin/env python3
"""The installed program: what lies where, and the package, from its making to its removal. Nothing
is installed on this machine, and nobody has to be its administrator."""

import gzip
import os
import re
import shutil
import stat
import tempfile
import unittest
import xml.etree.ElementTree as xml

import packaged
from packaged import LONG_PATIENCE, run, source
from desktop import wait_for
from player import Player

SIZES = 16, 22, 24, 32, 48, 64, 128, 256
INSTALLED = {
    'bin/veldrin',
    'share/applications/veldrin.desktop',
    'share/applications/veldrin_enqueue.desktop',
    'share/applications/veldrin_folder.desktop',
    'share/bash-completion/completions/veldrin',
    'share/doc/veldrin/copyright',
    'share/doc/veldrin/guide/index.html',
    'share/fish/vendor_completions.d/veldrin.fish',
    *(f'share/icons/hicolor/{size}x{size}/apps/veldrin.png' for size in SIZES),
    'share/icons/hicolor/scalable/apps/veldrin.svg',
    'share/icons/hicolor/symbolic/apps/veldrin-symbolic.svg',
    'share/man/man1/veldrin.1.gz',
    'share/metainfo/sarnel.ambrisor.veldrin.metainfo.xml',
}
MODULE = 'veldrin/modules/veldrin-http.so'
# Pictures of the guide may be any number.
PICTURES = re.compile('(.*/)?share/doc/veldrin/guide/[^/]*[.](png|webp|svg)')
MOST_BYTES = 3_000_000


def files_below(folder):
    return {os.path.relpath(os.path.join(place, name), folder)
            for place, _, names in os.walk(folder) for name in names}


def without_pictures(files):
    return {name for name in files if not PICTURES.fullmatch(name)}


def scratch(case):
    folder = tempfile.mkdtemp(prefix='veldrin-package-')
    case.addClassCleanup(shutil.rmtree, folder)
    return folder


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = scratch(cls)
        run(packaged.given.cmake, '--install', packaged.given.build, '--prefix', '/opt/player',
            env=dict(os.environ, DESTDIR=cls.root))
        cls.prefix = os.path.join(cls.root, 'opt/player')

    def test_all_lies_in_the_usual_folders_and_nothing_else(self):
        files = files_below(self.root)
        module = [name for name in files if name.endswith(MODULE)]
        self.assertEqual(len(module), 1)
        self.assertRegex(module[0], '^opt/player/lib')
        self.assertEqual(without_pictures(files) - set(module),
                         {'opt/player/' + name for name in INSTALLED} |
                         {'opt/player/share/zsh/site-functions/_veldrin'})

    def test_the_page_of_the_manual_and_the_license_are_whole(self):
        with gzip.open(os.path.join(self.prefix, 'share/man/man1/veldrin.1.gz'), 'rt') as page:
            self.assertEqual(page.read(), packaged.read(source('veldrin.1')))
        self.assertEqual(
            packaged.read(os.path.join(self.prefix, 'share/doc/veldrin/copyright')),
            packaged.read(os.path.join(packaged.ROOT, 'LICENSE')))

    def test_software_centres_take_the_tree(self):
        text = run('appstreamcli', 'validate-tree', '--no-net', '--no-color', self.prefix)
        self.assertNotRegex(text, '(?m)^ *[WE]:')

    def test_it_starts_there(self):
        self.assertTrue(run(os.path.join(self.prefix, 'bin/veldrin'), '--version'))

    # So the tree can be moved, and tells nobody where it was built.
    def test_it_names_no_place_of_its_making(self):
        for name in 'bin/veldrin', *(name for name in files_below(self.prefix)
                                     if name.endswith(MODULE)):
            with open(os.path.join(self.prefix, name), 'rb') as file:
                self.assertNotIn(os.fsencode(os.path.realpath(packaged.ROOT)), file.read(), name)


class Package(Player):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.place = scratch(cls)
        run(packaged.given.cpack, '--config',
            os.path.join(packaged.given.build, 'CPackConfig.cmake'), '-G', 'DEB', '-B', cls.place)
        cls.package, = [os.path.join(cls.place, name) for name in os.listdir(cls.place)
                        if name.endswith('.deb')]
        cls.tree = os.path.join(cls.place, 'tree')
        run('dpkg-deb', '-x', cls.package, cls.tree)

    def field(self, name):
        return run('dpkg-deb', '-f', self.package, name).strip()

    def test_it_holds_what_is_installed_and_what_debian_wants(self):
        files = files_below(self.tree)
        self.assertEqual(without_pictures(files), {'usr/' + name for name in INSTALLED} | {
            'usr/lib/' + MODULE, 'usr/share/doc/veldrin/changelog.gz',
            'usr/share/zsh/vendor-completions/_veldrin'})
        listed = run('dpkg-deb', '-c', self.package)
        self.assertEqual([line for line in listed.splitlines()
                          if not line.split()[1] == 'root/root'], [])
        for name in files:
            right = stat.S_IMODE(os.stat(os.path.join(self.tree, name)).st_mode)
            self.assertEqual(right, 0o755 if name == 'usr/bin/veldrin' else 0o644, name)

    def test_it_is_small(self):
        size = sum(os.path.getsize(os.path.join(self.tree, name))
                   for name in files_below(self.tree))
        self.assertLess(size, MOST_BYTES)
        self.assertLess(int(self.field('Installed-Size')) * 1024, MOST_BYTES)

    def test_it_is_stripped_and_has_no_scripts(self):
        for name in 'usr/bin/veldrin', 'usr/lib/' + MODULE:
            self.assertNotIn('.symtab', run('readelf', '-SW', os.path.join(self.tree, name)))
        control = run('dpkg-deb', '--ctrl-tarfile', self.package, ok=(0,))
        self.assertIn('md5sums', control)
        for script in 'preinst', 'postinst', 'prerm', 'postrm', 'triggers':
            self.assertNotIn(script, control)

    def test_it_asks_for_what_the_program_needs(self):
        needed = {name.split()[0] for name in self.field('Depends').split(', ')}
        linked = {'libc6', 'libqt6gui6', 'libgstreamer1.0-0', 'libxcb1'}
        loaded = {f'gstreamer1.0-plugins-{kind}' for kind in ('base', 'good', 'bad')}
        self.assertEqual((linked | loaded) - needed, set())
        self.assertEqual({name for name in needed if 'dev' in name or 'gtest' in name}, set())
        self.assertIn('gstreamer1.0-alsa', self.field('Recommends'))
        self.assertEqual(self.field('Version'), run(self.program, '--version').split()[1])

    def test_the_rules_of_debian(self):
        run('lintian', '--allow-root', '--profile', 'debian', '--fail-on', 'error,warning',
            self.package)

    def test_it_goes_without_a_trace(self):
        system = os.path.join(self.folder, 'system')
        database = os.path.join(system, 'var/lib/dpkg')
        for name in 'info', 'updates', 'triggers':
            os.makedirs(os.path.join(database, name))
        for name in 'status', 'available':
            with open(os.path.join(database, name), 'w', encoding='utf-8'):
                pass
        before = files_below(system)
        mind = () if os.geteuid() == 0 else ('fakeroot',)
        dpkg = (*mind, 'dpkg', '--root=' + system, '--force-depends', '--log=/dev/null')
        run(*dpkg, '--install', self.package)
        self.assertIn('usr/bin/veldrin', files_below(system))
        run(*dpkg, '--purge', 'veldrin')
        left = {name for name in files_below(system) if not name.startswith('var/lib/dpkg/')}
        self.assertEqual(left, {name for name in before if not name.startswith('var/lib/dpkg/')})
        self.assertFalse(os.path.exists(os.path.join(system, 'usr/bin')))
        self.assertEqual([name for name in os.listdir(os.path.join(database, 'info'))
                          if name.startswith('veldrin')], [])

    def default_for(self, kind):
        text = self.run_tool('gio', 'mime', kind).splitlines()[0]
        return text.rsplit(' ', 1)[1]

    # Of several entries desktops take the first by name where nobody has chosen.
    def test_files_are_played_and_folders_open_as_before(self):
        data = os.path.join(self.folder, 'share')
        shutil.copytree(os.path.join(self.tree, 'usr/share/applications'),
                        os.path.join(data, 'applications'))
        with open(os.path.join(data, 'applications/thefiles.desktop'), 'w',
                  encoding='utf-8') as file:
            file.write('[Desktop Entry]\nType=Application\nName=Files\nExec=true %F\n'
                       'MimeType=inode/directory;\n')
        self.environment.update(XDG_DATA_DIRS=data, HOME=self.folder, PATH=os.path.join(
            self.tree, 'usr/bin') + ':' + self.environment['PATH'])
        self.run_tool('update-desktop-database', os.path.join(data, 'applications'))
        for kind in 'audio/mpeg', 'audio/x-mpegurl':
            self.assertEqual(self.default_for(kind), 'veldrin.desktop')
        self.assertEqual(self.default_for('inode/directory'), 'thefiles.desktop')

    def run_tool(self, *command):
        return run(*command, env=self.environment)

    def test_it_plays(self):
        home = os.path.join(self.folder, 'home')
        os.mkdir(home)
        for name in 'CONFIG', 'DATA', 'STATE', 'CACHE':
            self.environment.pop(f'XDG_{name}_HOME')
        self.environment['HOME'] = home
        self.program = os.fsencode(os.path.join(self.tree, 'usr/bin/veldrin'))
        self.songs('one')
        self.open(self.music)
        self.wait_for_title('one.wav')
        wait_for(lambda: self.run_program('--status').stdout.startswith(b'playing'), 'the song')
        self.assertIn('"veldrin", "veldrin"', self.display.property(self.window, 'WM_CLASS'))
        self.assertIn('128 x 128', self.display.property(self.window, '_NET_WM_ICON'))
        # The lyrics are a page of the network.
        self.key('ctrl+l')
        module = os.path.join(os.path.realpath(self.tree), 'usr/lib', MODULE)
        wait_for(lambda: module in packaged.read(f'/proc/{self.player.pid}/maps'), 'the module')
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.player.wait(timeout=LONG_PATIENCE), 0)
        self.assertEqual({name.split('/')[0] for name in files_below(home)},
                         {'.config', '.cache', '.local'})
        self.assertEqual([name for name in files_below(home) if '/veldrin' not in name], [])


if __name__ == '__main__':
    packaged.main()
