#!/usr/bin/env python3
"""The finished program on a Wayland compositor without an X server, which alone places and moves
windows and says nothing of it. All is looked at from outside."""

import signal
import subprocess

from desktop import main, wait_for
from player import HEIGHT, LIST, PLAY, TITLE_BOX, VOLUME, WIDTH, Player
from weston import BACKGROUND, OnWeston, Weston, around

BAR = (150, 16)  # a point of the title by which the window is dragged
MINIMISE = (249, 16)
# Rows of the menu that opens at a point, from there: it is centred under the pointer, has a frame of
# 1 and a header of 13, and rows of 18.
PLAYBACK = (20, 1 + 13 + 2 * 18 + 9)
EFFECTS = (90, PLAYBACK[1] + 13 + 18)  # in its submenu, which begins beside the row


class OnWayland(OnWeston, Player):
    def open(self, *arguments):
        self.display.leave()
        self.player = subprocess.Popen([self.program, '--output', 'null', *arguments],
                                       env=self.environment, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.player.seen = b''
        self.running.append(self.player)
        self.find()

    def occupied(self):
        self.display.leave()
        return self.display.occupied()

    def find(self):
        """Waits for the window, and nothing else, to be on the screen."""
        self.place = wait_for(lambda: (place := self.occupied()) and place[2:] == (WIDTH, HEIGHT)
                              and place, 'the window')

    def is_alone(self):
        return self.occupied() == self.place

    def gone(self):
        return self.occupied() is None

    def key(self, *keys):
        self.display.tool('key', '--delay', '30', *keys)

    def list_is_covered(self):
        return self.shown(LIST).has_colours()

    def open_menu(self):
        self.click(BAR, button=3)
        wait_for(self.list_is_covered, 'the menu')

    def open_submenu(self):
        """It is the only thing that reaches beyond the window."""
        self.open_menu()
        self.point_at((BAR[0] + PLAYBACK[0], BAR[1] + PLAYBACK[1]))
        right = self.place[0] + WIDTH
        wait_for(lambda: (now := self.display.occupied()) and now[0] + now[2] > right + 20,
                 'the submenu')

    def assert_no_menu(self):
        wait_for(self.is_alone, 'the end of the submenu')
        wait_for(lambda: not self.list_is_covered(), 'the end of the menu')

    def start_again(self):
        done = self.run_program()
        self.assertEqual((done.returncode, done.stderr), (0, b'veldrin: already running\n'))

    def assert_alive(self):
        """The title scrolls."""
        former = self.shown(TITLE_BOX).data
        wait_for(lambda: self.shown(TITLE_BOX).data != former, 'another picture')

    def assert_ends_in_order(self):
        """Without a word, and with the saved place as it was."""
        self.player.send_signal(signal.SIGTERM)
        self.assertEqual((self.end_of(self.player), self.player.complaints), (0, b''))
        self.assertEqual((self.setting('X'), self.setting('Y')), ('120', '90'))


class Native(OnWayland):
    def test_menus(self):
        self.open()
        self.open_submenu()
        self.click((BAR[0] + EFFECTS[0], BAR[1] + EFFECTS[1]))
        wait_for(self.is_alone, 'the end of the menus')
        wait_for(self.list_is_covered, 'the panel of effects')
        self.key('ctrl+e')
        self.assert_no_menu()
        # The menu hangs from the pointer, centred: as wide to the left as to the right.
        before = self.display.part(*self.below_title())
        self.open_menu()
        left, top, width, _ = around(self.display.part(*self.below_title()), before)
        self.assertEqual((left + width // 2, top), (self.place[0] + BAR[0], 0))
        self.assertLess(width, 150)
        for close in (lambda: self.display.click(self.display.size[0] - 30, 40),
                      lambda: self.click((30, 180)), lambda: self.key('Escape', 'Escape')):
            close()
            self.assert_no_menu()
            self.open_submenu()
        self.key('Escape', 'Escape', 'Escape')
        self.assert_no_menu()
        self.assert_ends_in_order()

    def below_title(self):
        """The screen from the list on: left, top, width, height."""
        top = self.place[1] + LIST[1]
        return 0, top, self.display.size[0], self.display.size[1] - top

    def drag_by(self, right, down):
        left, top = self.place[:2]
        self.point_at(BAR)
        self.display.tool('mousedown', 1)
        self.addCleanup(self.display.tool, 'mouseup', 1)
        # A compositor takes a window for a held button only, and moves it with the next move.
        wait_for(lambda: self.has_followed(left, top, right // 2, down // 2), 'the drag')
        wait_for(lambda: self.has_followed(left, top, right, down), 'the window')
        self.display.tool('mouseup', 1)
        self.place = left + right, top + down, WIDTH, HEIGHT

    def has_followed(self, left, top, right, down):
        for nearly in (1, 0):
            self.point_at((BAR[0] + right + nearly, BAR[1] + down))
        return self.display.occupied()[:2] == (left + right, top + down)

    def test_drags(self):
        self.open()
        self.drag_by(200, 150)
        # The button is up again for the program as well: the window does not stick to the pointer.
        for point in (BAR, (60, 100), BAR):
            self.point_at(point)
        self.assertTrue(self.is_alone())
        # Whatever it believes of its place, no edge of the screen is near.
        self.drag_by(-90, 0)
        self.drag_by(0, -120)
        self.click(VOLUME[:2])
        wait_for(lambda: self.setting('MusicVolume') != '80', 'another volume')
        self.assert_ends_in_order()

    def test_minimises_and_comes_back(self):
        self.open()
        self.click(MINIMISE)
        wait_for(self.gone, 'the bare desktop')
        self.start_again()
        self.find()
        self.assert_alive()
        self.click(MINIMISE)
        wait_for(self.gone, 'the bare desktop')
        self.key('super+Tab')  # the compositor's own way
        self.find()
        self.assert_alive()
        self.assert_ends_in_order()

    def test_keys_and_tips(self):
        self.open()
        self.point_at(PLAY)
        wait_for(lambda: (now := self.display.occupied()) and now[3] > HEIGHT + 10, 'a tip below')
        wait_for(self.is_alone, 'its end')
        self.key('ctrl+f')
        self.display.tool('type', '--delay', '20', 'abc')
        wait_for(self.list_is_covered, 'what was typed')
        self.key('Escape')
        self.assert_no_menu()
        self.assert_ends_in_order()


class Others(OnWayland):
    """Compositors of another kind."""

    @staticmethod
    def make_display():
        return Weston(scale=2)

    def find(self):
        wanted = (2 * WIDTH, 2 * HEIGHT)
        self.place = wait_for(lambda: (place := self.occupied()) and place[2:] == wanted and place,
                              'the window in twice its size')

    def test_a_screen_of_twice_the_density_and_its_end(self):
        self.open()
        left, top = self.place[:2]
        self.display.click(left + 2 * BAR[0], top + 2 * BAR[1], 3)
        # Double the list's place, and the menu in it.
        place = [a + 2 * b for a, b in zip((left, top, 0, 0), LIST)]
        wait_for(lambda: self.display.part(*place).has_colours(), 'the menu')
        self.display.processes[0].kill()
        self.assertEqual((self.end_of(self.player), self.player.complaints),
                         (1, b'veldrin: the display has gone\n'))
        self.assertEqual(self.playlist(), (-1, []))


class Pictures(OnWeston):
    """Of the driver by itself: 100 x 60."""

    def open(self, *scale):
        self.probe_lines = self.start_lines(self.probe, *scale)
        self.probe_lines.expect('ready')
        self.probe_lines.ask('show 0 0')

    def occupied(self):
        self.display.leave()
        return self.display.occupied()

    def find(self, size):
        return wait_for(lambda: (place := self.occupied()) and place[2:] == size and place,
                        f'a window of {size}')

    def assert_fine(self, place):
        """Each pixel of the screen is one of the picture's."""
        self.probe_lines.ask('stripe')
        row = b'\0\0\0\xFF\xFF\xFF' * (place[2] // 2)
        wait_for(lambda: self.display.part(*place).data == row * place[3], 'stripes')


class OnADenseScreen(Pictures):
    @staticmethod
    def make_display():
        return Weston(scale=2)

    def test_pictures_are_as_fine_as_the_screen(self):
        self.open()
        self.assert_fine(self.find((200, 120)))

    def test_a_scale_counts_pixels_of_the_screen(self):
        self.open(1.5)
        self.find((150, 90))


class BetweenScreens(Pictures):
    """The right one has twice the density. Of a window between both, the left one shows the left
    part."""

    @staticmethod
    def make_display():
        return Weston(beside=2)

    def grab(self, start, end, condition, what):
        """Takes the window by the compositor's own way; the pointer stays on the screen on which it
        is."""
        self.display.tool('mousemove', *start, 'keydown', 'super', 'mousedown', 1)

        def is_there():
            for nearly in (1, 0):
                self.display.point_at(end[0] + nearly, end[1])
            return condition()
        wait_for(is_there, what)
        self.display.tool('mouseup', 1, 'keyup', 'super')

    def shows(self, x, y):
        return self.display.pixel(x, y) != (BACKGROUND,) * 3

    def test_the_density_follows_the_window(self):
        middle = self.display.size[0] // 2
        # The screen of a new window is that with the pointer, which is smaller than the window.
        self.display.point_at(100, 100)
        self.open()
        wait_for(lambda: (seen := around(self.display.part(0, 0, middle, 400))) and
                 seen[2] >= 100, 'the window on the left')
        left, top = self.find((100, 60))[:2]
        self.grab((left + 50, top + 30), (middle - 2, 80), lambda: self.shows(middle + 2, 110),
                  'the window on both')
        # Its top is at 50 there, which is 100 here.
        self.grab((middle + 20, 200), (middle + 320, 200), lambda: not self.shows(middle - 2, 60),
                  'the window on the right')
        self.probe_lines.expect('density 2')
        self.assert_fine(self.find((200, 120)))


if __name__ == '__main__':
    main()
