#!/usr/bin/env python3
"""The real program: folders of folders and playlists that are given to it, and its own exported."""

import os
import re
import signal

from world import World, main, tone


class Given(World):
    def make(self, *names):
        for name in names:
            path = os.path.join(os.fsencode(self.music), os.fsencode(name))
            os.makedirs(os.path.dirname(path), exist_ok=True)
            tone(path)

    def write(self, name, data):
        with open(self.at(name), 'wb') as file:
            file.write(data)
        return self.at(name)

    def play(self, *arguments, **options):
        """Faster than anybody listens."""
        return self.run_program('--no-window', '--output',
                                'file:' + os.path.join(self.folder, 'sound.wav'), *arguments,
                                **options)

    def played(self, result):
        return re.findall(r'\d+\. (.*?)  \[', result.stdout.decode())

    def start_first(self):
        tone(self.at('long.wav'), seconds=60)
        first = self.start(self.at('long.wav'))
        self.read_until(first, b'long.wav')
        self.assertEqual(self.run_program().returncode, 0)  # it listens
        return first

    def quit(self, first):
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(first), 0)


class Folders(Given):
    def test_a_folder_is_played_with_all_below_it(self):
        self.make('z.wav', 'B/1.wav', 'a/cd 2/x.wav', 'a/CD 1/y.wav', 'a/own.wav', '.no/h.wav')
        os.symlink('..', self.at('a/up'))
        os.symlink('/none', self.at('a/dead'))
        result = self.play(self.music)
        self.assertEqual((result.returncode, result.stderr), (0, b''))
        self.assertEqual(self.played(result),
                         ['y.wav', 'x.wav', 'own.wav', '1.wav', 'z.wav'])
        self.assertEqual(self.paths_saved(),
                         [b'y.wav', b'x.wav', b'own.wav', b'1.wav', b'z.wav'])

    def test_flat_takes_the_folder_alone(self):
        self.make('z.wav', 'B/1.wav')
        self.assertEqual(self.played(self.play('--flat', self.music)), ['z.wav'])

    def test_a_folder_whose_music_lies_deep_plays_at_once(self):
        self.make('x/y/1.wav')
        self.write('cover.jpg', b'')
        self.assertEqual(self.played(self.play(self.music)), ['1.wav'])

    def test_odd_names(self):
        self.make(b'caf\xe9 "q"\n/\xff.wav', '-x/b.wav')
        result = self.play(self.music)
        self.assertEqual((result.returncode, result.stderr), (0, b''))
        self.assertEqual([path for _, path in self.playlist()[1]],
                         [os.fsencode(self.music) + end
                          for end in (b'/-x/b.wav', b'/caf\xe9 "q"\n/\xff.wav')])

    def test_nothing_found_is_told_and_the_running_one_left_alone(self):
        first = self.start_first()
        os.makedirs(self.at('empty/deep'))
        self.write('empty/a.jpg', b'')
        second = self.play('empty', cwd=self.music)
        self.assertEqual(second.returncode, 1)
        self.assertRegex(second.stderr.decode(), r"^veldrin: no music \(.*\*\.wav.*\) in 'empty' "
                                                 r"or in a folder below it\n$")
        self.quit(first)
        self.assertEqual(self.paths_saved(), [b'long.wav'])

    def test_folders_go_over_in_order(self):
        first = self.start_first()
        self.make('m/b/2.wav', 'm/a/1.wav', 'm/3.wav')
        self.assertEqual(self.run_program('--add', 'm', cwd=self.music).returncode, 0)
        self.quit(first)
        self.assertEqual(self.paths_saved(), [b'long.wav', b'1.wav', b'2.wav', b'3.wav'])

    def test_what_is_recorded_does_not_go_into_what_is_played(self):
        self.make('m/b/2.wav')
        with open(self.at('m/b/2.wav'), 'rb') as file:
            former = file.read()
        self.write('l.m3u', b'm/b/2.wav\n')
        for given in ('m', 'l.m3u'):
            result = self.run_program('--no-window', '--output', 'file:' + self.at('m/b/2.wav'),
                                      self.at(given))
            self.assertEqual(result.returncode, 2)
        with open(self.at('m/b/2.wav'), 'rb') as file:
            self.assertEqual(file.read(), former)

    def test_an_end_has_every_folder_in_the_list(self):
        names = [f'm/{i:03}/{i:03}.wav' for i in range(60)]
        self.make(names[0])
        for name in names[1:]:
            os.makedirs(os.path.dirname(self.at(name)))
            os.link(self.at(names[0]), self.at(name))
        first = self.start_first()
        self.assertEqual(self.run_program('--add', self.at('m')).returncode, 0)
        first.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(first), 0)
        self.assertEqual(len(self.paths_saved()), 61)


class Playlists(Given):
    def test_lists_of_each_kind_become_what_they_name(self):
        self.make('l/a b.wav', 'caf\u00e9.wav', 'l/sub/c.wav')
        lists = {
            'l/1.m3u': '#EXTM3U\r\na b.wav\r\nsub\\c.wav\r\n..\\caf\u00e9.wav\r\n'.encode('latin-1'),
            'l/2.m3u8': '\ufeffa b.wav\rsub/c.wav\r../caf\u00e9.wav'.encode(),
            'l/3.pls': b'[playlist]\nFile2=sub/c.wav\nFile1=a%20b.wav\nFile3=file://'
                       + os.fsencode(self.music) + b'/caf%C3%A9.wav\n',
            'l/4.xspf': b'<playlist version="1" xmlns="http://xspf.org/ns/0/"><trackList>'
                        b'<track><location>a%20b.wav</location></track>'
                        b'<track><location>sub/c.wav</location></track>'
                        b'<track><location>../caf%C3%A9.wav</location></track>'
                        b'</trackList></playlist>',
            'l/5.cue': 'FILE "a b.wav" WAVE\n TRACK 01 AUDIO\nFILE "sub/c.wav" WAVE\n TRACK 02 '
                       'AUDIO\nFILE "../caf\u00e9.wav" WAVE\n TRACK 03 AUDIO\n'.encode(),
        }
        for name, data in lists.items():
            result = self.play(self.write(name, data))
            self.assertEqual((result.returncode, result.stderr), (0, b''), name)
            self.assertEqual([path for _, path in self.playlist()[1]],
                             [self.at('l/a b.wav').encode(), self.at('l/sub/c.wav').encode(),
                              self.at('caf\u00e9.wav').encode()], name)

    def test_what_is_missing_is_counted_and_streams_are_named(self):
        self.make('a.wav')
        self.write('l.m3u', b'no.wav\nhttp://radio.example/x\na.wav\nno2.wav\n')
        result = self.play('l.m3u', cwd=self.music)
        self.assertEqual(self.played(result), ['a.wav'])
        self.assertEqual(result.stderr,
                         b"veldrin: 'l.m3u': 2 of 4 names in this list lead nowhere\n"
                         b"veldrin: 'l.m3u': streams are not played: 'http://radio.example/x'\n")

    def test_lists_that_give_nothing_leave_the_running_one_alone(self):
        first = self.start_first()
        hostile = b'<!DOCTYPE p [<!ENTITY e "a">]><playlist><track><location>&e;</location></track>'
        for name, data in (('l.m3u', b'none.wav\n'), ('l.cue', b'FILE "a.wav" WAVE\n'),
                           ('l.pls', b'\0' * 5000), ('l.xspf', hostile), ('2.m3u', b'2.m3u\n')):
            result = self.play(self.write(name, data))
            self.assertEqual(result.returncode, 1, name)
            self.assertEqual(result.stderr.count(b'\n'), 1, result.stderr)
        self.quit(first)
        self.assertEqual(self.paths_saved(), [b'long.wav'])


class Export(Given):
    def setUp(self):
        super().setUp()
        self.make('m/a.wav', b'm/caf\xe9.wav', b'm/new\nline.wav', 'm/z #.wav')
        self.target = os.path.join(self.folder, 'out.m3u8')

    def exported(self):
        with open(self.target, 'rb') as file:
            return file.read()

    def test_the_saved_list_is_exported_and_read_back(self):
        self.assertEqual(self.play(self.at('m')).returncode, 0)
        saved = self.playlist()[1]
        result = self.run_program('--export', 'out.m3u8', cwd=self.folder)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b'', b''))
        self.assertTrue(self.exported().startswith(b'#EXTM3U\n#EXTINF:-1,a.wav\n'))
        self.exported().decode()  # is UTF-8
        self.assertEqual(self.play(self.target).returncode, 0)
        self.assertEqual([path for _, path in self.playlist()[1]], [path for _, path in saved])

    def test_the_running_ones_list_is_exported(self):
        first = self.start_first()
        self.assertEqual(self.run_program('--add', self.at('m')).returncode, 0)
        self.assertEqual(self.run_program('--export', self.target).returncode, 0)
        self.assertEqual(self.exported().count(b'#EXTINF'), 5)
        self.quit(first)

    def test_what_cannot_be_written_is_told(self):
        first = self.start_first()
        result = self.run_program('--export', 'none/out.m3u8', cwd=self.folder)
        self.assertEqual((result.returncode, result.stderr),
                         (1, f"veldrin: cannot write '{self.folder}/none/out.m3u8': "
                             'there is no such folder\n'.encode()))
        self.quit(first)

    def test_without_any_list_it_says_so(self):
        result = self.run_program('--export', self.target)
        self.assertEqual((result.returncode, result.stderr),
                         (1, b'veldrin: there is no saved list\n'))
        self.assertFalse(os.path.exists(self.target))
        self.assert_nothing_started()


if __name__ == '__main__':
    main()
