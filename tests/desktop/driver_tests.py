#!/usr/bin/env python3
"""The desktop driver by itself: what a window manager and other programs do with its window, and
what it makes of that."""

import os
import statistics
import subprocess
import unittest

from desktop import Display, Lines, OnDisplay, main, wait_for
from driver import HEIGHT, WIDTH, Driver, colour


class Windows(Driver):
    def test_stands_where_it_was_put_with_size_title_and_class(self):
        self.open(300, 260)
        self.assertEqual(self.display.geometry(self.window), (300, 260, WIDTH, HEIGHT))
        self.assertIn('"veldrin", "veldrin"', self.display.property(self.window, 'WM_CLASS'))
        self.assertNotIn('moved', ' '.join(self.said_until_now()))

    def test_shows_each_pixel_as_it_is_and_what_changes(self):
        self.open()
        shown = self.display.part(*self.place, WIDTH, HEIGHT)
        for y in range(HEIGHT):
            for x in range(WIDTH):
                self.assertEqual(shown.pixel(x, y), colour(x, y))
        self.ask('pixel', 30, 40, 0x0000FF)
        wait_for(lambda: self.display.pixel(230, 190) == (255, 0, 0), 'the change')
        shown = self.display.part(*self.place, WIDTH, HEIGHT)
        self.assertEqual(shown.pixel(31, 40), colour(31, 40))

    def test_whole_scale_makes_blocks(self):
        self.open(100, 80, scale=2)
        self.assertEqual(self.display.geometry(self.window), (200, 160, 200, 120))
        shown = self.display.part(200, 160, 200, 120)
        for y in range(0, 120):
            for x in range(0, 200):
                self.assertEqual(shown.pixel(x, y), colour(x // 2, y // 2))
        self.ask('pixel', 99, 59, 0x00FF00)
        wait_for(lambda: self.display.pixel(399, 279) == (0, 255, 0), 'the change')
        self.assertEqual(self.display.pixel(397, 279), colour(98, 59))

    def test_broken_scale_averages_and_parts_fit(self):
        self.open(100, 80, scale=1.5)
        self.assertEqual(self.display.geometry(self.window), (150, 120, 150, 90))
        before = self.display.part(150, 120, 150, 90)
        for y in range(90):
            for x in range(150):
                # Of three pixels in a row the first shows one of the picture's, the last the next
                # one, and the one between them half of both. Red grows by 2 each, green by 4.
                self.assertEqual(before.pixel(x, y), (4 * (x // 3) + x % 3,
                                                      8 * (y // 3) + 2 * (y % 3), 100))
        self.ask('pixel', 50, 30, 0x00FF00)
        wait_for(lambda: self.display.pixel(150 + 75, 120 + 45) == (0, 255, 0),
                 'the change')
        self.ask('pixel', 50, 30, (50 * 2) | (30 * 4) << 8 | 100 << 16)
        wait_for(lambda: self.display.part(150, 120, 150, 90).data == before.data,
                 'the former picture, without seams')

    def test_pointer_counts_unscaled_pixels(self):
        self.open(100, 80, scale=2)
        self.display.point_at(200 + 2 * 33 + 1, 160 + 2 * 21)
        self.expect('pointer 133 101 ')

    def test_is_painted_anew_after_it_was_covered(self):
        self.open()
        other = self.start_drag(210, 160, 'text/plain', '00', 'copy')
        other.expect('ready')
        wait_for(lambda: self.display.pixel(230, 180) == (0, 255, 0), 'the other')
        other.end(0)
        wait_for(lambda: self.display.pixel(230, 180) == colour(30, 30), 'the picture')

    def test_a_picture_that_changes_while_minimised_is_right_afterwards(self):
        self.open()
        self.ask('minimise', 1)
        wait_for(lambda: self.display.pixel(210, 160) != colour(10, 10), 'the gap')
        self.ask('pixel', 10, 10, 0x00FFFF)
        self.ask('minimise', 0)
        wait_for(lambda: self.display.pixel(210, 160) == (255, 255, 0), 'the change')
        self.assertEqual(self.display.pixel(211, 160), colour(11, 10))

    def test_own_minimising_is_no_news_that_of_the_desktop_is(self):
        self.open()
        self.ask('minimise', 1)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        self.ask('minimise', 0)
        wait_for(lambda: self.window in self.display.known.visible(), 'a window')
        said = self.said_until_now()
        self.assertNotIn('minimised', said)
        self.assertNotIn('restored', said)
        self.display.tool('windowminimize', self.window)
        self.expect('minimised')
        self.display.run('wmctrl', '-ia', str(self.window))
        self.expect('restored')
        self.assertEqual(self.display.geometry(self.window), (*self.place, WIDTH, HEIGHT))

    def test_on_top_keeps_window_and_place(self):
        self.open()
        for wanted in (True, False, True):
            self.ask('topmost', int(wanted))
            wait_for(lambda: ('ABOVE' in self.display.property(self.window, '_NET_WM_STATE'))
                     == wanted, f'above: {wanted}')
            self.assertEqual(self.display.window('Probe � title'), self.window)
            self.assertEqual(self.display.geometry(self.window), (*self.place, WIDTH, HEIGHT))

    def test_own_moves_are_no_news(self):
        self.open()
        self.ask('move', ' '.join(f'{200 + i} {150 + i % 7}' for i in range(1, 121)))
        wait_for(lambda: self.display.geometry(self.window)[:2] == (320, 151), 'the last place')
        self.ask('wait', 200, answer='woke')
        self.assertNotIn('moved', ' '.join(self.probe_lines.heard + self.said_until_now()))

    def test_a_move_by_the_desktop_is(self):
        self.open()
        self.display.tool('windowmove', self.window, 444, 333)
        self.expect('moved 444 333')

    def test_a_window_beyond_all_screens_comes_back(self):
        self.probe_lines = self.start_lines(self.probe, 1)
        self.probe_lines.expect('ready')
        self.ask('show', 5000, -2147483648)
        # As far as it goes towards where it wanted to be: 1024 - 100, and 0.
        said = self.probe_lines.heard + [self.probe_lines.expect('moved')]
        self.assertIn(f'moved {1024 - WIDTH} 0', said)
        window = self.display.window('Probe � title')
        self.assertEqual(self.display.geometry(window), (1024 - WIDTH, 0, WIDTH, HEIGHT))

    def test_a_place_partly_off_the_screen_stays(self):
        self.open(-40, 690)
        self.assertEqual(self.display.geometry(self.window), (-40, 690, WIDTH, HEIGHT))

    def test_close_is_a_request(self):
        self.open()
        self.display.run('wmctrl', '-ic', str(self.window))
        self.expect('close')
        self.assertEqual(self.display.window('Probe � title'), self.window)

    def test_activation_brings_it_to_the_front(self):
        self.open()
        other = self.start_drag(210, 160, 'text/plain', '00', 'copy')
        other.expect('ready')
        wait_for(lambda: self.display.pixel(230, 180) == (0, 255, 0), 'the other')
        self.ask('activate')
        wait_for(lambda: self.display.pixel(230, 180) == colour(30, 30), 'the picture')
        wait_for(lambda: self.display.known.active() == self.window, 'the focus')

    def test_work_area(self):
        self.open()
        self.assertEqual(self.ask('workarea', answer='area'), 'area 0 0 1024 768')

    def test_work_area_of_a_scaled_screen_is_in_unscaled_pixels(self):
        self.open(100, 80, scale=2)
        self.assertEqual(self.ask('workarea', answer='area'), 'area 0 0 512 384')

    def test_a_wait_ends_in_time_and_turns_no_idle_rounds(self):
        self.open()
        self.said_until_now()
        # Most of the waits: a machine that stops for a while makes some late that are not to blame.
        lateness = []
        for _ in range(20):
            late, turns = self.ask('wait', 30, answer='woke').split()[1:]
            self.assertLessEqual(int(turns), 2)
            lateness.append(int(late))
        self.assertLess(statistics.median(lateness), 25)


class Busy(Driver):
    """The window while the program is in the middle of something."""

    def begin(self, command):
        """Begins something that lasts until `finish`."""
        self.open()
        self.said_until_now()
        self.until = self.at(command)
        self.tell(f'{command} {self.until}')

    def tell(self, line):
        self.probe_lines.process.stdin.write(line.encode() + b'\n')

    def finish(self, answer):
        """What is said by then."""
        self.assertIsNone(self.probe_lines.line(0.1), 'nothing is said meanwhile')
        with open(self.until + '.part', 'w') as file:
            file.write('words')
        os.rename(self.until + '.part', self.until)
        self.expect(answer)
        return self.probe_lines.heard

    def test_stays_whole_when_it_was_covered(self):
        for command, answer in ('work', 'worked'), ('download', 'page words'):
            with self.subTest(command):
                self.begin(command)
                other = self.start_drag(210, 160, 'text/plain', '00', 'copy')
                other.expect('ready')
                wait_for(lambda: self.display.pixel(230, 180) == (0, 255, 0),
                         'the other')
                other.end(0)
                wait_for(lambda: self.display.pixel(230, 180) == colour(30, 30),
                         'the picture')
                self.finish(answer)
                self.probe_lines.end()

    def test_input_and_watches_wait_and_keep_their_order(self):
        for command, answer in ('work', 'worked'), ('download', 'page words'):
            with self.subTest(command):
                self.begin(command)
                self.display.tool('windowfocus', '--sync', self.window)
                self.tell('workarea')
                self.display.tool('mousemove', 230, 180, 'click', 1, 'key', 'a', 'click', 3)
                self.assertEqual(self.finish(answer), [])
                self.expect('release 230 180 2')
                said = [line.split()[0] + line.split()[-2] for line in self.probe_lines.heard
                        if line.startswith(('press', 'release', 'down', 'up'))]
                self.assertEqual(said, ['press1', 'release1', 'down65', 'up65', 'press2'])
                if 'area 0 0 1024 768' not in self.probe_lines.heard:
                    self.expect('area 0 0 1024 768')
                self.probe_lines.end()

    def test_a_page_is_fresh_once_after_it_was_forgotten(self):
        self.open()
        page = self.at('page')
        with open(page, 'w') as file:
            file.write('words')
        self.assertEqual(self.ask('download', page, answer='page'), 'page words')
        self.ask('forget', page)
        self.assertEqual(self.ask('download', page, answer='page'), 'page words fresh')
        self.assertEqual(self.ask('download', page, answer='page'), 'page words')
        self.ask('forget', page + '2')
        self.assertEqual(self.ask('download', page, answer='page'), 'page words')

    def test_a_fetcher_that_fails_brings_no_page(self):
        self.open()
        self.assertEqual(self.ask('download', 'throw', answer='page'), 'page (none)')


class Surroundings(Driver):
    def test_places_that_folders_begin_at(self):
        self.environment['HOME'] = '/home/someone é'
        self.open()
        self.assertTrue(self.ask('drives', answer='drives').startswith(
            r'drives / /home/someone\x20\xc3\xa9/'))

    def test_this_machine_can_always_be_reached(self):
        self.open()
        self.assertEqual(self.ask('online', 'http://127.0.0.1:1/x', answer='online'), 'online 1')

    def test_without_any_route_nothing_else_can(self):
        if subprocess.run(['unshare', '--net', 'true'], stderr=subprocess.DEVNULL).returncode != 0:
            self.skipTest('may not take the network away')
        probe = self.start_lines('unshare', '--net', self.probe, 1)
        probe.expect('ready')
        self.assertEqual(probe.ask('online http://example.org/', 'online'), 'online 0')
        self.assertEqual(probe.ask('online http://localhost/', 'online'), 'online 1')


class Neighbours(Driver):
    """Other programs: the clipboard and drops."""

    def drop(self, mime, data, *actions):
        self.open()
        source = self.start_drag(500, 300, mime, data.hex(), *(actions or ['copy']))
        source.expect('ready')
        self.display.tool('mousemove', 530, 330, 'mousedown', 1)
        source.expect('dragging')
        for x in range(520, 240, -20):
            self.display.tool('mousemove', x, 180, 'sleep', '0.02')
        self.display.tool('mousemove', 250, 180, 'sleep', '0.1', 'mouseup', 1)
        return source

    def test_files_dropped(self):
        host = os.uname().nodename
        names = (f'file:///music/b%E9%20%25.mp3\r\n#remark\r\nfile://localhost/m/%C3%A4.ogg\r\n'
                 f'file://{host}/x.wav\r\nfile://elsewhere/y.wav\r\nhttp://h/z.mp3\r\n')
        source = self.drop('text/uri-list', names.encode(), 'copy', 'move')
        # In the order of the source; the byte E9, which is no UTF-8, is whole.
        self.assertEqual(self.expect('dropped'),
                         r'dropped /music/b\xe9\x20%.mp3 /m/\xc3\xa4.ogg /x.wav')
        source.expect('copied')

    def test_plain_paths_dropped(self):
        self.drop('text/plain', b'/music/a b.mp3\nfile:///c.mp3\nnonsense\n')
        self.assertEqual(self.expect('dropped'), r'dropped /music/a\x20b.mp3 /c.mp3')

    def test_never_moved(self):
        source = self.drop('text/uri-list', b'file:///music/a.mp3\r\n', 'move')
        source.expect('refused')
        self.assertNotIn('dropped', ' '.join(self.said_until_now()))

    def test_clipboard_from_another_program(self):
        self.open()
        self.display.give_clipboard('Größe 𝄞'.encode())
        units = [ord(c) for c in 'Größe '] + [0xD834, 0xDD1E]
        wanted = 'clipboard ' + ' '.join(map(str, units))
        wait_for(lambda: self.ask('clipboard', answer='clipboard') == wanted, 'the clipboard')

    def test_clipboard_for_another_program(self):
        self.open()
        self.focus()
        # The byte FF is no UTF-8: inside it is a lone surrogate, outside a replacement.
        self.probe_lines.process.stdin.write(b'copy M\xc3\xbcsli \xff!\n')
        self.expect('done')
        self.assertEqual(self.display.run('xclip', '-o', '-selection', 'clipboard', '-t',
                                          'UTF8_STRING'), 'Müsli �!')


class End(unittest.TestCase):
    # The display has gone. Then a text is so wide, and the caret there behind its third letter.
    LOST = 'display lost 24 18'

    def start(self):
        display = Display()
        self.addCleanup(display.end)
        probe = Lines([OnDisplay.probe, '1'], display.environment)
        self.addCleanup(probe.end)
        probe.expect('ready')
        probe.ask('show 100 100')
        return display, probe

    def test_a_display_that_goes_away_is_told_in_time(self):
        display, probe = self.start()
        display.end()
        probe.expect(self.LOST)

    def test_so_is_an_end_of_the_process_by_the_toolkit(self):
        for command in 'exit', 'abort':
            _, probe = self.start()
            probe.ask(command, answer=self.LOST)

    def test_long_texts_do_not_cost_the_connection(self):
        display, probe = self.start()
        probe.ask('letters 20000000')
        display.window('x{2000}')
        self.assertEqual(display.run('xclip', '-o', '-selection', 'clipboard', '-t',
                                     'UTF8_STRING'), 'y' * 20_000_000)


if __name__ == '__main__':
    main()
