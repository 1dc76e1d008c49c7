#!/usr/bin/env python3
"""The real program: what it prints, what it plays, and its exit status."""

import array
import os
import resource
import shutil
import struct
import subprocess
import wave

from world import PATIENCE, World, main, tone


class Words(World):
    """What only prints, or is a mistake."""

    def test_help(self):
        result = self.run_program('--help')
        self.assertEqual((result.returncode, result.stderr), (0, b''))
        for option in ('--add', '/ADD', '--no-window', '--scale', '--dir', '--output',
                       '--loudness', '--lyrics', '--lyrics-online', '--quit', '--help', '--version', '--'):
            self.assertIn(b'\n  ' + option.encode() + b' ', result.stdout)
        self.assert_nothing_started()

    def test_version_is_one_line(self):
        result = self.run_program('--version')
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (0, b'veldrin 1.1\n', b''))
        self.assert_nothing_started()

    def test_misuse_is_told_and_starts_nothing(self):
        nowhere = os.path.join(self.folder, 'none', 'x.wav')
        for arguments, word in ((['--nonsense'], b'--nonsense'), (['-x'], b'-x'),
                                (['--dir'], b'--dir'), (['--output'], b'--output'),
                                (['--output=loud'], b'loud'), (['--output', 'file:'], b'file:'),
                                (['--output', 'file:' + nowhere], b'x.wav'),
                                (['--output', 'file:' + self.music], b'music'),
                                (['--loudness', 'quiet'], b'quiet'),
                                (['--lyrics', 'ftp://x'], b'ftp://x'),
                                (['--add=1'], b'--add'), (['--quit', 'a.wav'], b'--quit')):
            result = self.run_program(*arguments)
            self.assertEqual((arguments, result.returncode), (arguments, 2))
            self.assertEqual(result.stdout, b'')
            self.assertIn(word, result.stderr)
            self.assertEqual(result.stderr.count(b'\n'), 1)
        self.assert_nothing_started()

    def test_directory_that_cannot_be_made(self):
        with open(self.at('file'), 'w'):
            pass
        for directory in (self.at('file'), self.at('file/below'), '/proc/veldrin'):
            result = self.run_program('--no-window', '--dir', directory)
            self.assertEqual((directory, result.returncode), (directory, 2))
            self.assertIn(directory.encode(), result.stderr)

    def test_default_directory_that_cannot_be_made(self):
        self.environment['XDG_CONFIG_HOME'] = '/proc'
        result = self.run_program('--no-window')
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (1, b'', b"veldrin: cannot make the folder '/proc/veldrin'\n"))

    def test_output_file_that_cannot_be_made(self):
        tone(self.at('a.wav'))
        result = self.run_program('--no-window', '--output=file:/proc/out.wav', self.at('a.wav'))
        self.assertEqual((result.returncode, result.stdout), (2, b''))
        self.assertEqual(result.stderr,
                         b'veldrin: Cannot write /proc/out.wav: No such file or directory\n')

    def refused(self, output, *inputs):
        """What is said of an output that must not be written."""
        result = self.run_program('--no-window', '--output', 'file:' + output, *inputs)
        self.assertEqual((result.returncode, result.stdout), (2, b''), result.stderr)
        return result.stderr.decode()

    def test_output_over_what_is_to_be_played(self):
        tone(self.at('a.wav'))
        tone(self.at('b.wav'))
        os.symlink(self.at('a.wav'), self.at('link.wav'))
        os.link(self.at('a.wav'), self.at('second name.wav'))
        os.symlink(self.music, os.path.join(self.folder, 'elsewhere'))
        with open(self.at('a.wav'), 'rb') as file:
            before = file.read()
        for output in ('a.wav', 'link.wav', 'second name.wav', '../elsewhere/a.wav'):
            for wanted in 'a.wav', 'link.wav':
                said = self.refused(self.at(output), self.at('b.wav'), self.at(wanted))
                self.assertIn('one of the files to be played', said)
        for output in 'a.wav', 'new.wav', '../elsewhere/new.wav':
            self.assertIn('in a folder to be played', self.refused(self.at(output), self.music))
        with open(self.at('a.wav'), 'rb') as file:
            self.assertEqual(file.read(), before)
        self.assertFalse(os.path.exists(self.at('new.wav')))

    def test_output_over_the_saved_list(self):
        tone(self.at('a.wav'))
        tone(self.at('b.wav'))
        self.assertEqual(self.play(self.at('a.wav')).returncode, 0)
        self.assertIn('in the saved list', self.refused(self.at('a.wav')))
        self.assertIn('in the saved list', self.refused(self.at('a.wav'), '--add', self.at('b.wav')))
        # A path alone takes the list's place, so the old one is not read.
        result = self.run_program('--no-window', '--output', 'file:' + self.at('a.wav'),
                                  self.at('b.wav'))
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_output_into_a_pipe_that_nobody_reads(self):
        tone(self.at('a.wav'))
        pipe = os.path.join(self.folder, 'pipe')
        os.mkfifo(pipe)
        self.assertIn('nobody reads', self.refused(pipe, self.at('a.wav')))

    def test_output_that_fails_under_way(self):
        tone(self.at('a.wav'), seconds=5)
        result = self.run_program('--no-window', '--output=file:/dev/full', self.at('a.wav'))
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertEqual(result.stderr,
                         b'veldrin: Cannot write /dev/full: No space left on device\n')

    def test_output_that_fails_is_not_tried_with_all_items(self):
        names = [self.at(f'{i:02}.wav') for i in range(20)]
        for name in names:
            tone(name)
        result = self.run_program('--no-window', '--output=file:/dev/full', *names)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertLess(result.stdout.count(b'\n'), 5)
        self.assertEqual(result.stderr.count(b'\n'), 1)

    def test_output_that_grows_too_large(self):
        tone(self.at('a.wav'), seconds=5)
        out = os.path.join(self.folder, 'out.wav')
        limit = 10001  # bytes: in the middle of a sample
        result = self.run_program(
            '--no-window', '--output', 'file:' + out, self.at('a.wav'),
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertEqual(result.stderr.decode(),
                         f'veldrin: Cannot write {out}: File too large\n')
        with open(out, 'rb') as file:
            data = file.read()
        self.assertEqual(len(data), limit)
        whole = (limit - 44) // 4 * 4
        self.assertEqual(struct.unpack('<I', data[4:8])[0], whole + 36)
        self.assertEqual(struct.unpack('<I', data[40:44])[0], whole)

    def test_output_into_a_pipe_whose_reader_waits_for_its_end(self):
        tone(self.at('a.wav'), seconds=1)
        pipe = os.path.join(self.folder, 'pipe')
        os.mkfifo(pipe)
        reader = subprocess.Popen(['cat', pipe], stdout=subprocess.PIPE)
        self.addCleanup(reader.kill)
        refused = 2
        result = None
        while result is None or result.returncode == refused:  # the reader may not be there yet
            self.assertIsNone(reader.poll())
            result = self.run_program('--no-window', '--output', 'file:' + pipe, self.at('a.wav'))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue(reader.communicate(timeout=PATIENCE)[0].startswith(b'RIFF'))

    def test_output_into_a_pipe(self):
        tone(self.at('a.wav'), seconds=1)
        pipe = os.path.join(self.folder, 'pipe')
        os.mkfifo(pipe)
        reader = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
        self.addCleanup(os.close, reader)
        result = self.run_program('--no-window', '--output', 'file:' + pipe, self.at('a.wav'))
        self.assertEqual(result.returncode, 0, result.stderr)
        data = os.read(reader, 1 << 16)  # as much as a pipe holds, and more than was played
        self.assertEqual(data.rfind(b'RIFF'), 0)
        self.assertEqual(len(data) % 4, 0)
        self.assertGreater(len(data), 8000 * 4 // 2)

    def test_steering_characters_in_arguments_are_not_printed(self):
        result = self.run_program('--no-window', 'a\x1b[2J.wav')
        self.assertEqual(result.returncode, 1)
        self.assertNotIn(b'\x1b', result.stderr)


class Playing(World):
    def test_folder_plays_in_order_with_titles(self):
        tone(self.at('b.flac'), artist='Ann', title='Blue')
        tone(self.at('A.wav'))
        tone(self.at('c.ogg'), title='Green')
        tone(self.at('.hidden.wav'))
        with open(self.at('notes.txt'), 'w') as file:
            file.write('not music')
        result = self.play(self.music)
        self.assertEqual(result.stdout.decode().splitlines(),
                         ['  1. A.wav  [0:01]', '  2. Ann - Blue  [0:01]', '  3. Green  [0:01]'])
        self.assertEqual((result.returncode, result.stderr), (0, b''))
        self.assertEqual(self.playlist(), (2, [
            (b'A.wav', self.at('A.wav').encode()), (b'Ann - Blue', self.at('b.flac').encode()),
            (b'Green', self.at('c.ogg').encode())]))

    def test_numbers_stand_below_each_other(self):
        tone(self.at('0.wav'), seconds=0.05)
        for i in range(1, 10):
            shutil.copy(self.at('0.wav'), self.at(f'{i}.wav'))
        self.assertEqual(self.play(self.music).stdout.decode().splitlines()[8:],
                         ['  9. 8.wav  [0:01]', ' 10. 9.wav  [0:01]'])

    def test_playable_types_are_kept_in_the_cache(self):
        self.environment['XDG_CACHE_HOME'] = os.path.join(self.folder, 'cache')
        tone(self.at('a.wav'))
        self.assertEqual(self.play(self.music).returncode, 0)
        self.assertEqual(os.listdir(os.path.join(self.folder, 'cache', 'veldrin')), ['file-types'])

    def test_wav_with_an_info_chunk_has_a_title(self):
        tone(self.at('a.wav'))
        with open(self.at('a.wav'), 'r+b') as file:
            file.seek(0, os.SEEK_END)
            # Texts of even length with their zero: no padding is needed.
            texts = b'INAM\x04\0\0\0Sea\0' + b'IART\x04\0\0\0Ann\0'
            file.write(b'LIST' + struct.pack('<I', 4 + len(texts)) + b'INFO' + texts)
            size = file.tell() - 8
            file.seek(4)
            file.write(struct.pack('<I', size))
        self.assertEqual(self.play(self.at('a.wav')).stdout, b'  1. Ann - Sea  [0:01]\n')

    def test_sound_reaches_the_file(self):
        tone(self.at('a.wav'), seconds=2)
        out = os.path.join(self.folder, 'out.wav')
        result = self.run_program('--no-window', '--output', 'file:' + out, self.at('a.wav'))
        self.assertEqual(result.returncode, 0, result.stderr)
        length = float(subprocess.check_output(['soxi', '-D', out]))
        self.assertAlmostEqual(length, 2, delta=0.1)

    def test_loudness_is_what_the_tags_ask_for(self):
        path = tone(self.at('a.flac'), replaygain_album_gain='+6 dB')
        out = os.path.join(self.folder, 'out.wav')
        peaks = []
        for words in ((), ('--loudness=album',)):
            result = self.run_program('--no-window', '--output', 'file:' + out, *words, path)
            self.assertEqual(result.returncode, 0, result.stderr)
            with wave.open(out) as file:
                samples = array.array('h', file.readframes(file.getnframes()))
            peaks.append(max(samples))
        self.assertAlmostEqual(peaks[1] / peaks[0], 1.995, delta=0.01)  # 6 dB

    def test_without_a_display_it_says_so_and_names_the_way_out(self):
        tone(self.at('a.wav'))
        for display, reason in ((None, b'there is no display'),
                                (':4711', b"the display ':4711' does not answer")):
            for name in ('DISPLAY', 'WAYLAND_DISPLAY', 'QT_QPA_PLATFORM'):
                self.environment.pop(name, None)
            if display:
                self.environment['DISPLAY'] = display
            result = self.run_program('--output=null', self.at('a.wav'))
            self.assertEqual(result.returncode, 1)
            self.assertEqual(result.stdout, b'')
            self.assertEqual(result.stderr, b'veldrin: cannot show a window: ' + reason +
                             b'; --no-window plays in the terminal\n')

    def test_several_paths_first_plays_others_are_added(self):
        os.mkdir(self.at('more'))
        for name in ('z.wav', 'more/a.wav', 'more/b.wav', 'k.wav'):
            tone(self.at(name))
        result = self.play('z.wav', './more/../more', '--', 'k.wav', cwd=self.music)
        self.assertEqual(result.returncode, 0, result.stderr)
        current, rows = self.playlist()
        self.assertEqual(current, 3)
        self.assertEqual([path for _, path in rows],
                         [self.at(name).encode()
                          for name in ('z.wav', 'more/a.wav', 'more/b.wav', 'k.wav')])

    def test_odd_names_play(self):
        names = [b'-dash.wav', b'add.wav', b'quote".wav', b'line\nbreak.wav', b'b\xe9.wav',
                 b' blank .wav', b'\x1b[31mred.wav']
        for name in names:
            tone(os.path.join(self.music.encode(), name), seconds=0.05)
        result = self.play('--', *names, cwd=self.music)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout.decode().splitlines(),
                         ['  1. -dash.wav  [0:01]', '  2. add.wav  [0:01]',
                          '  3. quote".wav  [0:01]', '  4. line break.wav  [0:01]',
                          '  5. b\ufffd.wav  [0:01]', '  6.  blank .wav  [0:01]',
                          '  7.  [31mred.wav  [0:01]'])

    def test_name_that_is_not_utf8_survives_a_restart(self):
        name = os.path.join(self.music.encode(), b'caf\xe9.wav')
        tone(name)
        self.assertEqual(self.play(name).returncode, 0)
        again = self.play()
        self.assertEqual((again.returncode, again.stderr), (0, b''))
        self.assertEqual(again.stdout.decode(), '  1. caf\ufffd.wav  [0:01]\n')
        self.assertEqual(self.playlist()[1][0][1], name)

    def test_name_that_is_not_utf8_plays_from_a_folder(self):
        tone(os.path.join(self.music.encode(), b'\xff\xfe.wav'))
        result = self.play(self.music)
        self.assertEqual(result.stdout.decode(), '  1. \ufffd\ufffd.wav  [0:01]\n')
        self.assertEqual(result.returncode, 0)

    def test_dead_items_are_told_once_and_skipped(self):
        for name in ('1.wav', '3.wav'):
            with open(self.at(name), 'w') as file:
                file.write('this is text\n' * 100)
        tone(self.at('2.wav'))
        result = self.play(self.music)
        self.assertEqual(result.stdout, b'  1. 2.wav  [0:01]\n')
        self.assertEqual(result.stderr.decode().splitlines(),
                         [f"veldrin: cannot play '{self.at(name)}'" for name in ('1.wav', '3.wav')])
        self.assertEqual(result.returncode, 0)

    def test_first_path_unplayable_the_added_one_plays(self):
        with open(self.at('notes.txt'), 'w') as file:
            file.write('not music')
        tone(self.at('a.wav'))
        result = self.play(self.at('notes.txt'), self.at('a.wav'))
        self.assertEqual((result.returncode, result.stdout), (0, b'  1. a.wav  [0:01]\n'),
                         result.stderr)

    def test_nothing_could_be_played(self):
        with open(self.at('notes.txt'), 'w') as file:
            file.write('not music')
        with open(self.at('text.wav'), 'w') as file:
            file.write('not music')
        for paths in ([self.at('notes.txt')], [self.at('text.wav')], [self.music]):
            result = self.play(*paths)
            self.assertEqual((paths, result.returncode), (paths, 1))
            self.assertEqual(result.stdout, b'')
            self.assertIn(b'nothing could be played', result.stderr)

    def test_empty_list_has_nothing_to_play(self):
        result = self.play()
        self.assertEqual((result.returncode, result.stdout), (1, b''))
        self.assertEqual(result.stderr, b'veldrin: nothing could be played\n')

    def test_path_that_leads_nowhere_leaves_the_list_alone(self):
        tone(self.at('a.wav'))
        self.assertEqual(self.play(self.at('a.wav')).returncode, 0)
        result = self.play(self.at('b.wav'), '')
        self.assertEqual((result.returncode, result.stdout), (1, b''))
        self.assertEqual(result.stderr.count(b'No such file or directory'), 2)
        self.assertEqual(self.paths_saved(), [b'a.wav'])

    def test_first_path_that_leads_somewhere_replaces_the_list(self):
        for name in ('a.wav', 'b.wav', 'c.wav'):
            tone(self.at(name))
        self.assertEqual(self.play(self.at('a.wav')).returncode, 0)
        result = self.play(self.at('none.wav'), self.at('b.wav'), self.at('c.wav'))
        self.assertEqual((result.returncode, result.stdout),
                         (0, b'  1. b.wav  [0:01]\n  2. c.wav  [0:01]\n'))
        self.assertEqual(self.paths_saved(), [b'b.wav', b'c.wav'])

    def test_reader_of_the_titles_that_goes_away_does_no_harm(self):
        tone(self.at('a.wav'), seconds=0.5)
        tone(self.at('b.wav'))
        process = self.start(self.music)
        self.read_until(process, b'1.')
        process.stdout.close()
        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertEqual(self.playlist()[0], 1)


if __name__ == '__main__':
    main()
