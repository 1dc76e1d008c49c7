#!/usr/bin/env python3
"""The real program: music with odd numbers in its headers, sound that breaks off, and tags made to
be slow."""

import os
import re
import resource
import signal
import subprocess
import time

import odd_media
from world import PATIENCE, World, main, tone


def content_of(path):
    with open(path, 'rb') as file:
        return file.read()


def targets_of(folder):
    """Where the links in it lead to; they come and go."""
    for name in os.listdir(folder):
        try:
            yield os.readlink(os.path.join(folder, name))
        except FileNotFoundError:
            pass


class OddMedia(World):
    def write(self, name, content):
        with open(self.at(name), 'wb') as file:
            file.write(content)
        return self.at(name)

    def written(self, files):
        """The paths of files of these names and contents, and of one that can be played."""
        return [self.write(*item) for item in files.items()] + [self.write('sound.wav',
                                                                           odd_media.wav())]

    def assert_plays(self, files, expected):
        """Plays all files to their ends. Which of them sounded is told by standard output."""
        result = self.run_program('--no-window', '--output=file:' + self.at('../out.wav'),
                                  *self.written(files))
        self.assertEqual(result.returncode, 0, result.stderr)
        played = re.findall(r'^ *\d+\. (\S+(?: \S+)*)', result.stdout.decode(), re.MULTILINE)
        self.assertEqual(played, [*expected, 'sound.wav'])
        told = re.findall(r"^veldrin: cannot play '.*/(.*)'$", result.stderr.decode(), re.MULTILINE)
        self.assertEqual(told, [name for name in files if name not in expected])

    def wait_until_it_reads(self, process, folder):
        """Until a file of the folder is open."""
        descriptors = f'/proc/{process.pid}/fd'
        end = time.monotonic() + PATIENCE
        while not any(os.path.dirname(target) == folder for target in targets_of(descriptors)):
            self.assertLess(time.monotonic(), end, 'no file is read')

    def test_more_channels_than_can_be_mixed_are_refused(self):
        files = {}
        for channels in 0, 1, 63, 64, 65, 300, 4096, 32767, 65535:
            files[f'{channels}.wav'] = odd_media.wav(channels)
            files[f'{channels}.aiff'] = odd_media.aiff(channels)
            files[f'{channels} floats.wav'] = odd_media.wav(channels, bits=64, kind=odd_media.FLOAT)
            files[f'{channels} places.wav'] = odd_media.wav(channels, mask=0x3FFFF)
        plays = [name for name in files if name.startswith(('1.', '1 ', '63.', '63 '))]
        self.assert_plays(files, plays)

    def test_rates_from_one_to_all_bits(self):
        files = {}
        for rate in 0, 1, 9, 10, 8000, 768000, 1 << 24, (1 << 24) + 1, (1 << 31) - 1, 1 << 31:
            files[f'{rate}.wav'] = odd_media.wav(rate=rate, data=odd_media.noise(4000))
            files[f'{rate}.aiff'] = odd_media.aiff(rate=rate, data=odd_media.noise(4000))
        self.assert_plays(files, [f'{rate}.{ending}' for rate in (10, 8000, 768000, 1 << 24)
                                  for ending in ('wav', 'aiff')])

    def test_samples_of_many_widths(self):
        files = []
        for bits in 0, 1, 7, 8, 12, 16, 24, 31, 32, 64, 65:
            files += [self.write(f'{bits}.wav', odd_media.wav(bits=bits)),
                      self.write(f'{bits}.aiff', odd_media.aiff(bits=bits)),
                      self.write(f'{bits} floats.wav', odd_media.wav(bits=bits, kind=odd_media.FLOAT))]
        result = self.run_program('--no-window', '--output=file:' + self.at('../out.wav'), *files,
                                  self.write('sound.wav', odd_media.wav()))
        self.assertEqual(result.returncode, 0, result.stderr)
        for name in '8.wav', '16.aiff', '24.wav', '32.aiff', '32 floats.wav', 'sound.wav':
            self.assertIn(f'. {name}  ['.encode(), result.stdout)

    def test_a_parser_that_gives_other_sound_than_raw(self):
        self.assert_plays({f'{encoding}.au': odd_media.au(encoding=encoding)
                           for encoding in (1, 3, 27)}, ['1.au', '3.au', '27.au'])

    def test_formats_that_change_under_way(self):
        files = {}
        for ending in 'ogg', 'flac', 'mp3':
            one, other = self.at(f'one.{ending}'), self.at(f'other.{ending}')
            tone(one)
            subprocess.run(['sox', one, '-r', '44100', '-c', '2', other], check=True)
            files[f'both.{ending}'] = content_of(one) + content_of(other)
        self.assert_plays(files, list(files))

    def test_sound_with_zeros_behind_it(self):
        names = []
        for ending in 'wav', 'aiff', 'ogg', 'flac', 'mp3':
            names.append(self.at(f'{ending}.{ending}'))
            tone(names[-1])
            os.truncate(names[-1], 10 << 20)
        files = {os.path.basename(name): content_of(name) for name in names}
        self.assert_plays(files, list(files))

    def test_sound_with_nothing_but_chunks_behind_it(self):
        self.assert_plays({
            'tiny.wav': odd_media.wav() + odd_media.chunk(b'JUNK', b'') * 3000000,
            'tiny.aiff': odd_media.aiff() + odd_media.chunk(b'ANNO', b'', '>') * 3000000},
            ['tiny.wav', 'tiny.aiff'])

    def test_a_demuxer_that_asks_for_nothing_for_ever(self):
        # The bytes of a second times the time of a buffer do not fit into its number.
        self.assert_plays({'mp3.wav': odd_media.wav(65526, 32767, 57, 0x55, align=65416)}, [])
        used = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
        self.assertLess(used // 1024, 300)

    def test_pieces_within_pieces(self):
        title = odd_media.text_frame(b'TIT2', 'Title') + odd_media.text_frame(b'TPE1', 'Artist')
        chapters = odd_media.id3(title + odd_media.nested_chapters(20000))
        sound = odd_media.wav() + odd_media.chunk(b'id3 ', chapters)
        atoms = odd_media.nested_atoms(b'moov', 200000)
        files = [self.write('frames.wav', sound), self.write('frames.mp3', chapters + b'no sound'),
                 self.write('atoms.m4a', odd_media.mp4(atoms)),
                 self.write('elements.mka', odd_media.nested_chapter_atoms(300000))]
        self.assertEqual(self.play(*files).returncode, 0)
        titles = [b'Artist - Title', b'Artist - Title', files[2].encode(), files[3].encode()]
        self.assertEqual(self.playlist()[1],
                         [(title, file.encode()) for title, file in zip(titles, files)])

    def test_the_end_does_not_wait_for_tags(self):
        # Each of them takes all the time that a tag is given: together, several times PATIENCE.
        os.mkdir(self.at('folder'))
        fields = odd_media.comments([b'%d=' % i for i in range(500000)])
        slow = self.write('folder/000.flac', odd_media.flac((4, fields)))
        for number in range(1, 300):
            os.link(slow, self.at(f'folder/{number:03}.flac'))
        process = self.start(tone(self.at('sound.wav'), seconds=60), self.at('folder'))
        self.wait_until_it_reads(process, os.path.dirname(slow))
        process.send_signal(signal.SIGTERM)
        self.assertEqual(self.end_of(process), 0)
        self.assertEqual(len(self.paths_saved()), 301)


if __name__ == '__main__':
    main()
