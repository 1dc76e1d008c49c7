#!/usr/bin/env python3
"""A window that nobody sees, by what the X server and the window manager say: nothing is put
together for it, and what is seen first afterwards is the newest picture."""

from desktop import main, wait_for
from driver import HEIGHT, WIDTH, Driver, colour
from player import LIST, ROW, Player


class Sight(Driver):
    def setUp(self):
        super().setUp()
        self.display.tool('set_desktop', 0)
        self.open()

    def wait_until(self, seen):
        answer = 'is seen' if seen else 'is not seen'
        wait_for(lambda: self.ask('seen', answer='is') == answer, answer)

    def change(self):
        """While nobody sees it."""
        self.wait_until(False)
        self.ask('pixel', 10, 10, 0x0000FF)

    def assert_whole(self):
        self.expect('seen again')
        self.wait_until(True)
        left, top = self.place

        def is_whole():
            shown = self.display.part(left, top, WIDTH, HEIGHT)
            return all(shown.pixel(x, y) == ((255, 0, 0) if (x, y) == (10, 10) else colour(x, y))
                       for y in range(HEIGHT) for x in range(WIDTH))
        wait_for(is_whole, 'the whole picture')

    def cover(self, x, y):
        """With a window of the same size."""
        other = self.start_lines(self.probe, 1)
        other.expect('ready')
        other.ask(f'show {x} {y}')
        return other

    def test_one_that_others_cover(self):
        self.wait_until(True)
        other = self.cover(*self.place)
        self.change()
        other.end()
        self.assert_whole()

    def test_one_of_which_a_row_shows(self):
        other = self.cover(self.place[0], self.place[1] + 1)
        wait_for(lambda: len(self.display.known.titled('Probe.*')) == 2, 'the other window')
        self.ask('wait', 200, answer='woke')
        self.wait_until(True)
        other.end()

    def test_one_on_another_desktop(self):
        self.display.tool('set_desktop', 1)
        self.change()
        self.display.tool('set_desktop', 0)
        self.assert_whole()

    def test_one_that_the_desktop_minimises(self):
        self.display.tool('windowminimize', self.window)
        self.change()
        self.display.run('wmctrl', '-ia', str(self.window))
        self.assert_whole()

    def test_one_that_is_said_to_be_hidden(self):
        """As where windows stay on the screen though nobody sees them."""
        state = ('xprop', '-id', str(self.window), '-f', '_NET_WM_STATE', '32a', '-set',
                 '_NET_WM_STATE')
        self.display.run(*state, '_NET_WM_STATE_HIDDEN')
        self.change()
        self.display.run(*state, '_NET_WM_STATE_FOCUSED')
        self.assert_whole()

    def test_one_that_hides_itself_and_comes_back(self):
        self.ask('hide')
        wait_for(lambda: self.display.pixel(*self.place) != colour(0, 0), 'the gap')
        # It is put together beforehand.
        self.ask('show', *self.place)
        self.wait_until(True)
        left, top = self.place
        wait_for(lambda: self.display.pixel(left + 9, top + 9) == colour(9, 9), 'it')


class PlayerUnseen(Player):
    def test_rows_that_come_meanwhile_are_there(self):
        self.save_list(3)
        self.open()
        cover = self.start_lines(self.probe, 6)
        cover.expect('ready')
        # In pixels of its own: it covers all of the window.
        cover.ask('show 10 10')
        left, top, width, height = self.place
        wait_for(lambda: self.display.pixel(left + width - 1, top + height - 1)[2] ==
                 100, 'the cover')
        self.songs('one')
        self.assertEqual(self.run_program('--add', self.at('one.wav')).returncode, 0)
        cover.end()
        wait_for(lambda: self.shows_row(3), 'the row on the screen')
        self.assertFalse(self.shows_row(4))
        rows = (LIST[0], LIST[1] + 2 * ROW, 250, 3 * ROW)
        shown = self.shown(rows).data
        self.display.tool('windowminimize', self.window)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        self.display.run('wmctrl', '-ia', str(self.window))
        wait_for(lambda: self.shown(rows).data == shown, 'the same picture')


if __name__ == '__main__':
    main()
