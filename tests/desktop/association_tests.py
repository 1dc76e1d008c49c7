#!/usr/bin/env python3
"""File associations of the finished program: a click on the label in its panel, and what the desktop's
own tools make of it then."""

import os
import shutil
import subprocess

from desktop import main, wait_for
from player import LIST, Player

LABEL = (LIST[0] + 60, LIST[1] + 12)


class Associations(Player):
    def setUp(self):
        super().setUp()
        self.home = os.path.join(self.folder, 'home')
        os.mkdir(self.home)
        for name in ('XDG_CONFIG_DIRS', 'XDG_CURRENT_DESKTOP'):
            self.environment.pop(name, None)
        # The machine's media types without its programs, which may open all kinds of things.
        machine = os.path.join(self.folder, 'machine')
        os.mkdir(machine)
        os.symlink('/usr/share/mime', os.path.join(machine, 'mime'))
        self.environment['XDG_DATA_DIRS'] = machine
        self.environment['HOME'] = self.home
        self.config = self.environment['XDG_CONFIG_HOME']
        self.data = self.environment['XDG_DATA_HOME']
        self.list = os.path.join(self.config, 'mimeapps.list')
        self.applications = os.path.join(self.data, 'applications')

    def entry(self, name):
        return os.path.join(self.applications, name + '.desktop')

    def run_tool(self, *command):
        return subprocess.run(command, env=self.environment, check=True, timeout=30,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT).stdout.decode().strip()

    def associate(self):
        """By the menu and the panel; answers when the defaults are written."""
        self.show_types()
        self.click(LABEL)
        wait_for(lambda: 'veldrin.desktop' in self.listed(), 'the defaults')

    def listed(self):
        if not os.path.exists(self.list):
            return ''
        with open(self.list, encoding='latin-1', newline='') as file:
            return file.read()

    def save_list_of_defaults(self, text):
        with open(self.list, 'w', encoding='latin-1', newline='') as file:
            file.write(text)

    def titles_saved(self):
        self.player.terminate()
        self.player.wait()
        return [os.fsdecode(path) for path in self.paths_saved()]

    def test_the_desktop_answers_with_the_player(self):
        self.open()
        self.associate()
        for kind in 'audio/mpeg', 'audio/flac':
            self.assertEqual(self.run_tool('xdg-mime', 'query', 'default', kind),
                             'veldrin.desktop')
            self.assertIn('Default application for “{}”: veldrin.desktop'.format(kind),
                          self.run_tool('gio', 'mime', kind))

    def test_its_entries_are_valid(self):
        self.open()
        self.associate()
        entries = sorted(name for name in os.listdir(self.applications)
                         if name.endswith('.desktop'))
        self.assertEqual(entries, ['veldrin.desktop', 'veldrin_enqueue.desktop',
                                   'veldrin_folder.desktop'])
        for name in entries:
            self.assertEqual(self.run_tool('desktop-file-validate',
                                           os.path.join(self.applications, name)), '')

    def opens_and_adds(self):
        self.songs('one', 'two', 'three')
        self.open(self.at('one.wav'))
        self.wait_for_title(self.at('one.wav'))
        self.associate()
        self.run_tool('gio', 'open', self.at('two.wav'))
        self.wait_for_title(self.at('two.wav'))
        self.run_tool('gio', 'launch', self.entry('veldrin_enqueue'), self.at('three.wav'))
        self.assertEqual(self.title(), self.at('two.wav'))
        self.assertEqual(self.titles_saved(), ['two.wav', 'three.wav'])

    def test_a_file_plays_in_the_running_player_and_another_joins(self):
        self.opens_and_adds()

    # A copy, since the program goes by its true path.
    def test_the_program_in_a_folder_of_an_odd_name(self):
        folder = os.path.join(self.folder, 'a "b" 100%% $HOME `c` \\=d')
        os.mkdir(folder)
        self.program = shutil.copy(os.fsdecode(self.program), folder)
        self.opens_and_adds()

    def test_a_folder_goes_on_opening_as_before(self):
        self.assertEqual(self.run_tool('xdg-mime', 'query', 'default', 'inode/directory'), '')
        os.makedirs(self.applications)
        with open(self.entry('files'), 'w', encoding='utf-8') as file:
            file.write('[Desktop Entry]\nType=Application\nName=Files\nExec=true %F\n'
                       'MimeType=inode/directory;\n')
        self.run_tool('update-desktop-database', self.applications)
        self.open()
        self.associate()
        self.assertIn('“inode/directory”: files.desktop',
                      self.run_tool('gio', 'mime', 'inode/directory'))
        self.songs('one')
        self.run_tool('gio', 'launch', self.entry('veldrin_folder'), self.music)
        self.wait_for_title('one.wav')

    def test_what_the_user_wrote_stays(self):
        before = ('# mine \xff\r\n\r\n[Default Applications]\r\naudio/mpeg=other.desktop;\r\n'
                  'text/plain=editor.desktop\r\n# behind\r\n\r\n[Added Associations]\r\n'
                  'audio/mpeg=other.desktop;\r\n[Mine]\r\nkey = value')
        self.save_list_of_defaults(before)
        self.open()
        self.associate()
        lines = self.listed().split('\r\n')
        self.assertIn('audio/mpeg=veldrin.desktop;other.desktop;', lines)
        self.assertIn('audio/flac=veldrin.desktop', lines)
        ours = [line for line in lines if line.endswith('=veldrin.desktop')]
        kept = '\r\n'.join(line for line in lines if line not in ours)
        self.assertEqual(kept.replace('veldrin.desktop;', ''), before)

    def test_nothing_else_is_touched(self):
        self.open()
        self.associate()
        found = {os.path.relpath(os.path.join(folder, name), self.folder)
                 for folder, _, names in os.walk(self.folder) for name in names}
        usual = ('runtime/', 'state/', 'config/veldrin/')
        written = {name for name in found if not name.startswith(usual)}
        icons = {f'data/icons/hicolor/{size}x{size}/apps/veldrin.png'
                 for size in (16, 22, 24, 32, 48, 64, 128)}
        entries = {f'data/applications/veldrin{name}.desktop' for name in ('', '_enqueue', '_folder')}
        known = {name for name in written if name.startswith('data/mime/')}
        self.assertEqual(written - known, icons | entries |
                         {'data/applications/mimeinfo.cache', 'config/mimeapps.list'})
        self.assertEqual(os.listdir(self.home), [])

    def test_a_second_click_changes_nothing(self):
        self.open()
        self.associate()
        def written():
            found = {}
            for folder, _, names in os.walk(self.data):
                for name in names:
                    with open(os.path.join(folder, name), 'rb') as file:
                        found[os.path.join(folder, name)] = file.read()
            return found, self.listed()
        first = written()
        cache = os.path.join(self.applications, 'mimeinfo.cache')
        os.remove(cache)  # it comes again with the second publication
        self.click((LABEL[0] + 40, LABEL[1]))  # no double click
        wait_for(lambda: os.path.exists(cache), 'the cache')
        self.player.terminate()
        self.player.wait()
        self.assertEqual(written(), first)


if __name__ == '__main__':
    main()
