#!/usr/bin/env python3
"""The finished program on a display: a person with a mouse and a keyboard, and a window manager."""

import http.client
import os
import signal
import subprocess
import time
from collections import Counter
from typing import NamedTuple

from desktop import SCREEN, Picture, main, wait_for
from player import (AT_REST, HEIGHT, LEFT, LIST, NEXT, PLAY, PREVIOUS, ROW, SEEK, STOP, TITLE,
                    TITLE_BOX, TOP, VOLUME, WIDTH, Player)
from world import PATIENCE, tone


def middle(part):
    return part[0] + part[2] // 2, part[1] + part[3] // 2


class Ink(NamedTuple):
    """What stands out of a picture's ground: its box, and the colour farthest from the ground."""
    left: int
    top: int
    right: int
    bottom: int
    ground: tuple
    colour: tuple


def ink(picture):
    pixels = {(x, y): picture.pixel(x, y) for x in range(picture.width)
              for y in range(picture.height)}
    ground, _ = Counter(pixels.values()).most_common(1)[0]
    found = [place for place, colour in pixels.items() if colour != ground]
    across, down = [x for x, _ in found], [y for _, y in found]
    farthest = max(pixels.values(),
                   key=lambda colour: sum(abs(a - b) for a, b in zip(colour, ground)))
    return Ink(min(across), min(down), max(across), max(down), ground, farthest)


class Complaints(Player):
    def test_a_file_that_cannot_be_played_is_named_once(self):
        for name in ('1.mp3', '2.mp3'):
            with open(self.at(name), 'w') as file:
                file.write('this is text\n' * 100)
        self.songs('3')
        self.open(self.music)
        self.key('b')
        self.wait_for_title('3.wav')
        self.key('Home', 'Return', 'ctrl+r')
        wait_for(lambda: self.setting('Random') == 'True', 'the keys')
        self.player.terminate()
        _, errors = self.player.communicate()
        self.assertEqual(errors.decode().splitlines(),
                         [f"veldrin: cannot play '{self.at(name)}'" for name in ('1.mp3', '2.mp3')])


class Lyrics(Player):
    def ports(self):
        """Where the player listens on the network."""
        folder = f'/proc/{self.player.pid}/fd'
        sockets = set()
        for name in os.listdir(folder):
            link = os.readlink(os.path.join(folder, name))
            if link.startswith('socket:['):
                sockets.add(link[len('socket:['):-1])
        with open('/proc/net/tcp', encoding='ascii') as file:
            rows = [line.split() for line in file.readlines()[1:]]
        listening = '0A'
        return [tuple(row[1].split(':')) for row in rows if row[3] == listening and row[9] in sockets]

    def network_is_loaded(self):
        with open(f'/proc/{self.player.pid}/maps', encoding='utf-8') as file:
            return 'veldrin-http.so' in file.read()

    def test_service_is_on_loopback_and_begins_when_it_is_asked(self):
        self.open()
        (address, port), = self.ports()
        self.assertEqual(address, '0100007F')
        self.assertFalse(self.network_is_loaded())
        connection = http.client.HTTPConnection('127.0.0.1', int(port, 16), timeout=PATIENCE)
        self.addCleanup(connection.close)
        connection.request('GET', '/guessed/winamp03/plugin/?artist=a&title=b')
        self.assertEqual(connection.getresponse().status, 404)
        self.assertTrue(self.network_is_loaded())
        self.player.terminate()
        self.player.communicate(timeout=PATIENCE)
        self.assertEqual(self.player.returncode, 0)

    def test_another_service_instead(self):
        self.open('--lyrics', 'http://127.0.0.1:1')
        self.assertEqual(self.ports(), [])


class Window(Player):
    def test_size_place_title_and_class(self):
        self.open()
        self.assertEqual(self.place, (LEFT, TOP, WIDTH, HEIGHT))
        self.wait_for_title(AT_REST)
        self.assertIn('"veldrin", "veldrin"', self.display.property(self.window, 'WM_CLASS'))

    def test_a_place_on_a_screen_that_has_gone(self):
        self.write_settings(X=4000, Y=300)
        self.open()
        self.assertEqual(self.place, (SCREEN[0] - WIDTH, 300, WIDTH, HEIGHT))

    def test_twice_the_scale_is_twice_the_window_composed_as_fine(self):
        self.save_list(5)
        self.write_settings(X=10, Y=20)
        self.open(scale=2)
        self.assertEqual(self.place, (20, 40, WIDTH * 2, HEIGHT * 2))
        wanted = self.composed(*self.as_saved(5, 10, 20), density=2)
        self.point_at((-15, -15))
        rows = [(LIST[0], LIST[1] + ROW * number, LIST[2], ROW) for number in range(5)]
        texts = [tuple(2 * number for number in part) for part in (TITLE, *rows)]
        self.assert_same(self.shown((0, 0, WIDTH * 2, HEIGHT * 2)), wanted, texts)

    def assert_same(self, shown, wanted, texts):
        """But for the text."""
        different = [(x, y) for y in range(shown.height) for x in range(shown.width)
                     if shown.pixel(x, y) != wanted.pixel(x, y)
                     and not any(left <= x < left + width and top <= y < top + height
                                 for left, top, width, height in texts)]
        self.assertEqual(different[:20], [], f'{len(different)} pixels')

    def as_saved(self, rows, x, y):
        """The lines of a scenario for what the program has saved."""
        saved = self.list_file(rows).replace('\r\n', '\\r\\n')
        return (f'ini X "{x}"', f'ini Y "{y}"', f'write "$D/Sarnel.Ambrisor.omk" "{saved}"')

    def composed(self, *lines, density=1):
        """The window as the headless driver composes it after the lines of a scenario."""
        script = os.path.join(self.folder, 'window.scn')
        with open(script, 'w') as file:
            file.write('\n'.join([*lines, 'start', 'advance 30', 'screenshot shot.bmp', '']))
        subprocess.run([self.scenario, '--keep', self.folder, '--density', str(density), script],
                       check=True, stdout=subprocess.DEVNULL)
        found = subprocess.check_output(['find', self.folder, '-name', 'shot.bmp']).decode()
        data = subprocess.check_output(['convert', found.split('\n')[0], '-depth', '8', 'rgb:-'])
        return Picture(data, *(density * side for side in SCREEN)).part(*self.place)

    def test_equals_what_the_headless_driver_composes(self):
        os.remove(self.ini)
        self.open()
        self.assertEqual(self.place, ((SCREEN[0] - WIDTH) // 2, (SCREEN[1] - HEIGHT) // 2,
                                      WIDTH, HEIGHT))
        wanted = self.composed()
        self.point_at((-50, -50))
        self.assert_same(self.shown(), wanted, [TITLE])

    def test_its_text_stands_where_the_headless_driver_puts_it(self):
        self.save_list(4)
        self.open()
        wanted = self.composed(*self.as_saved(4, LEFT, TOP))
        self.point_at((-50, -50))
        shown = self.shown()
        rows = [(LIST[0], LIST[1] + ROW * number, LIST[2], ROW) for number in range(4)]
        self.assert_same(shown, wanted, [TITLE, *rows])
        # The colours of the current row, the first one, come and go with the time.
        for row in rows[1:]:
            self.assert_like(ink(shown.part(*row)), ink(wanted.part(*row)), 2, 9)
        # The title is wider than its box, and on its way.
        title = ink(shown.part(*TITLE_BOX)), ink(wanted.part(*TITLE_BOX))
        self.assert_like(*title, 14, 14)

    def assert_like(self, shown, wanted, left, right):
        """Text of another font: its colours, its line, and both ends within so many pixels."""
        self.assertEqual(shown.ground, wanted.ground)
        for a, b in zip(shown.colour, wanted.colour):
            self.assertAlmostEqual(a, b, delta=16)
        self.assertAlmostEqual(shown.left, wanted.left, delta=left)
        self.assertAlmostEqual(shown.top, wanted.top, delta=2)
        self.assertAlmostEqual(shown.bottom, wanted.bottom, delta=2)
        self.assertAlmostEqual(shown.right, wanted.right, delta=right)

    def test_minimised_and_restored_by_the_desktop(self):
        self.open()
        self.display.tool('windowminimize', self.window)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        self.display.run('wmctrl', '-ia', str(self.window))
        wait_for(self.painted, 'the window')
        self.assertEqual(self.place, (LEFT, TOP, WIDTH, HEIGHT))

    def test_a_second_start_brings_it_back_and_to_the_front(self):
        self.open()
        self.display.tool('windowminimize', self.window)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        second = self.run_program()
        self.assertEqual(second.returncode, 0)
        wait_for(self.painted, 'the window')
        wait_for(lambda: self.display.known.active() == self.window, 'the focus')


class End(Player):
    def test_close_by_the_desktop(self):
        self.save_list(3)
        self.open()
        self.display.run('wmctrl', '-ic', str(self.window))
        self.assertEqual(self.end_of(self.player), 0)
        self.assertEqual(self.paths_saved(), [b'0.mp3', b'1.mp3', b'2.mp3'])

    def test_signals(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            self.songs('a', 'b')
            self.open(self.music)
            self.wait_for_title('a.wav')
            self.player.send_signal(number)
            self.assertEqual(self.end_of(self.player), 0)
            self.assertEqual(self.paths_saved(), [b'a.wav', b'b.wav'])
            os.remove(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'))

    def test_quit_option(self):
        self.open()
        self.assertEqual(self.run_program('--quit').returncode, 0)
        self.assertEqual(self.end_of(self.player), 0)

    def test_nothing_is_said_of_surroundings_that_are_poor(self):
        del self.environment['XDG_RUNTIME_DIR']
        self.environment['TMPDIR'] = self.folder
        self.open()
        self.player.terminate()
        self.assertEqual((self.end_of(self.player), self.player.complaints), (0, b''))


class Playing(Player):
    def setUp(self):
        super().setUp()
        self.songs('a', 'b', 'c')

    def open_playing(self):
        self.open(self.music)
        self.wait_for_title('a.wav')

    def test_letter_keys(self):
        self.open_playing()
        self.key('b')
        self.wait_for_title('b.wav')
        self.key('b')
        self.wait_for_title('c.wav')
        self.key('z')
        self.wait_for_title('b.wav')
        self.key('v')
        self.wait_for_title(AT_REST)
        self.key('x')
        self.wait_for_title('b.wav')

    def test_letter_keys_on_other_layouts(self):
        self.open_playing()
        self.display.layout('ru')
        self.key('56')  # where B is on the plainest keyboard
        self.wait_for_title('b.wav')

    def test_pause_key_holds_the_time(self):
        self.open_playing()
        display = (126, 248, 72, 20)
        before = self.shown(display).data
        wait_for(lambda: self.shown(display).data != before, 'time that passes')
        self.key('c')
        time.sleep(0.3)
        held = self.shown(display).data
        time.sleep(1.5)
        self.assertEqual(self.shown(display).data, held)
        self.key('c')
        wait_for(lambda: self.shown(display).data != held, 'time that passes')

    def test_transport_buttons(self):
        self.open_playing()
        self.click(NEXT)
        self.wait_for_title('b.wav')
        self.click(PREVIOUS)
        self.wait_for_title('a.wav')
        self.click(STOP)
        self.wait_for_title(AT_REST)
        self.click(PLAY)
        self.wait_for_title('a.wav')

    def test_buttons_are_hit_where_the_desktop_has_moved_the_window_to(self):
        self.open_playing()
        self.display.tool('windowmove', self.window, 300, 200)
        wait_for(lambda: self.display.geometry(self.window)[:2] == (300, 200), 'the place')
        self.place = (300, 200, WIDTH, HEIGHT)
        self.click(NEXT)
        self.wait_for_title('b.wav')

    def test_dragging_the_seek_stick_seeks_at_release(self):
        self.open_playing()
        stick = (SEEK[0] + 8, SEEK[1] + 6)
        # To 97 of 100: of 40 seconds some one is left, but only once the button is up.
        self.drag(stick, (SEEK[0] + SEEK[2] - 6, SEEK[1] + 6), hold=3)
        self.assertEqual(self.title(), 'a.wav')
        self.display.tool('mouseup', 1)
        self.wait_for_title('b.wav')

    def test_volume_by_dragging_and_by_the_wheel(self):
        self.open_playing()
        self.drag((VOLUME[0] + 66, VOLUME[1] + 6), (VOLUME[0] + 2, VOLUME[1] + 6))
        self.display.tool('mouseup', 1)
        wait_for(lambda: self.setting('MusicVolume') == '0', 'silence')
        for _ in range(3):
            self.click(middle(VOLUME), 4)
        wait_for(lambda: int(self.setting('MusicVolume')) > 0, 'more volume')

    def test_a_dropped_file_joins_the_list(self):
        self.open_playing()
        path = self.at('größe 1.wav')
        tone(path)
        self.drop((130, 90), path)
        fourth = (LIST[0], LIST[1] + 3 * ROW, LIST[2], ROW)
        wait_for(lambda: self.shown(fourth).has_colours(), 'a fourth row')
        self.player.terminate()
        self.end_of(self.player)
        self.assertEqual(self.paths_saved(),
                         [b'a.wav', b'b.wav', b'c.wav', 'größe 1.wav'.encode()])


class Lists(Player):
    def test_a_row_is_played_by_a_double_click_and_by_keys(self):
        self.songs('a', 'b', 'c')
        self.open(self.music)
        self.wait_for_title('a.wav')
        self.point_at(self.row(1))
        self.display.tool('click', '--repeat', 2, '--delay', 60, 1)
        self.wait_for_title('b.wav')
        self.key('Down', 'Return')
        self.wait_for_title('c.wav')

    def selected(self, number):
        """Whether a row that can be seen lies on the colour of selected ones."""
        point = (LIST[0] + LIST[2] - 40, LIST[1] + number * ROW + 4)
        return self.shown((*point, 1, 1)).data != self.background

    def open_list(self, count):
        self.save_list(count)
        self.open()
        self.background = self.shown((LIST[0] + LIST[2] - 40, LIST[1] + 10 * ROW + 4, 1, 1)).data

    def test_rows_are_selected_by_mouse_keys_and_rubber_band(self):
        self.open_list(6)
        self.click(self.row(2))
        wait_for(lambda: self.selected(2), 'a selected row')
        self.assertFalse(self.selected(4))
        self.key('shift+Down')
        wait_for(lambda: self.selected(3), 'a second one')
        self.drag(self.row(3), self.row(5))
        wait_for(lambda: all(self.selected(i) for i in (3, 4, 5)), 'rows under the band')
        self.display.tool('mouseup', 1)
        self.assertFalse(self.selected(2))

    def test_scrolling_by_wheel_thumb_and_keys(self):
        self.open_list(100)
        # Without the current row, which pulses.
        text = (LIST[0], LIST[1] + ROW * 2, 150, ROW * 6)
        first = self.shown(text).data
        self.click(self.row(3), 5)
        wait_for(lambda: self.shown(text).data != first, 'another part of the list')
        self.click(self.row(3), 4)
        self.point_at((-50, -50))
        wait_for(lambda: self.shown(text).data == first, 'the top again')
        thumb = LIST[0] + LIST[2] - 6
        self.drag((thumb, LIST[1] + 8), (thumb, LIST[1] + 150))
        self.display.tool('mouseup', 1)
        wait_for(lambda: self.shown(text).data != first, 'another part of the list')
        self.point_at((-50, -50))
        time.sleep(0.5)  # the list follows the thumb in a loop of its own
        self.key('Home')
        wait_for(lambda: self.shown(text).data == first, 'the first rows')


if __name__ == '__main__':
    main()
