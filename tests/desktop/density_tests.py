#!/usr/bin/env python3
"""The finished program at every factor of the screen: what it shows stands where it is clicked, and
parts that were painted one by one fit together.

On an X server all screens have one factor. What becomes of a window between screens of different
factors shows on Wayland only."""

import math

from desktop import Display, main, settled, wait_for
from player import HEIGHT, LIST, MENU_BUTTON, ROW, VOLUME, WIDTH, Player

FACTORS = (1, 1.25, 1.5, 1.75, 2, 2.5, 3, 4)
SCREEN = (1480, 1380)  # at no factor is the window so near to an edge that it snaps there
ASIDE = (SCREEN[0] - 4, SCREEN[1] - 4)
PLACE = 40  # of the window, either way; whole at each of the factors, and so is the drag
DRAG = (8, 4)
BACKGROUND = (150, 5)
HEADER, MENU_ROW = 1 + 13, 18  # of a menu
TITLE = (52, 10, 190, 14)


class Scaled(Player):
    """Places are the window's own, whatever the factor."""

    @staticmethod
    def make_display():
        return Display(SCREEN)

    def open_at(self, factor, asked=True):
        """`asked`: by the option; otherwise it is what the screen has."""
        self.factor = factor
        self.write_settings(X=PLACE, Y=PLACE)
        self.save_list(8)
        self.open(scale=factor if asked else None)
        self.display.point_at(*ASIDE)

    def first(self, place):
        """The first of the screen's pixels that shows a place."""
        return math.ceil(place * self.factor)

    def point_at(self, point):
        left, top = self.display.geometry(self.window)[:2]
        self.display.point_at(left + self.first(point[0]), top + self.first(point[1]))

    def click_pixel(self, x, y):
        """A pixel of the screen, counted from the window."""
        left, top = self.display.geometry(self.window)[:2]
        self.display.click(left + x, top + y)
        self.display.point_at(*ASIDE)

    def rectangle(self, left, top, width, height):
        return tuple(math.floor(value * self.factor + 0.5) for value in (left, top, width, height))

    def pixel(self, x, y):
        """In the middle of a place."""
        left, top = self.display.geometry(self.window)[:2]
        return self.display.pixel(left + math.floor((x + 0.5) * self.factor),
                                  top + math.floor((y + 0.5) * self.factor))

    def still(self):
        """The rows of the window, without the title, which moves, and what pulses: the current row
        and the one that was clicked."""
        shown = self.display.part(*self.display.geometry(self.window))
        rows = [shown.data[y * shown.width * 3:(y + 1) * shown.width * 3]
                for y in range(shown.height)]
        current, clicked = ((LIST[0], LIST[1] + row * ROW, LIST[2], ROW) for row in (0, 3))
        for left, top, width, height in (TITLE, current, clicked):
            begin = math.floor(left * self.factor) * 3
            end = self.first(left + width) * 3
            for y in range(math.floor(top * self.factor), self.first(top + height)):
                rows[y] = rows[y][:begin] + bytes(end - begin) + rows[y][end:]
        return rows

    def stand_still(self):
        """Until nothing fades any more."""
        return settled(self.still, 'a picture that stays')

    def menus(self):
        """The places of those that are open. A tooltip, which a slow machine may show before the click
        has reached it, is as high as one row."""
        places = self.display.places_of(self.player, self.window)
        return [place for place in places if place[3] > 2 * MENU_ROW * self.factor]

    def close_menus(self):
        def are_closed():
            # One at a time: submenus open by themselves.
            self.display.tool('key', 'Escape')
            return len(self.display.windows_of(self.player)) == 1
        wait_for(are_closed, 'the end of the menus')
        self.display.point_at(*ASIDE)


class AtEachFactor(Scaled):
    def check_size_and_place(self):
        self.assertEqual(self.display.geometry(self.window),
                         self.rectangle(PLACE, PLACE, WIDTH, HEIGHT))

    def check_rows_at_their_edge(self):
        below = self.first(LIST[1] + 3 * ROW)
        rows = (LIST[1] + 2 * ROW + 7, LIST[1] + 3 * ROW + 7)
        plain = [self.pixel(LIST[0] + 150, y) for y in rows]
        for y, selected in ((below - 1, [True, False]), (below, [False, True])):
            # Elsewhere between, so that two clicks are never a double one.
            for at in (self.first(LIST[1] + 6 * ROW), y):
                self.click_pixel(self.first(LIST[0] + 60), at)
            wait_for(lambda: [self.pixel(LIST[0] + 150, y) != was for y, was in zip(rows, plain)] ==
                     selected, f'the row at {y}')

    def check_volume_at_its_edges(self):
        left, top, width, height = VOLUME
        right, bottom = self.first(left + width), self.first(top + height)
        self.click_pixel(self.first(left), bottom - 1)
        wait_for(lambda: self.setting('MusicVolume') == '0', 'silence')
        # One pixel beyond its last one is no part of it, nor is one above or below.
        self.click_pixel(right, self.first(top))
        self.click_pixel(right - 1, self.first(top) - 1)
        self.click_pixel(right - 1, bottom)
        self.check_rows_at_their_edge()
        self.assertEqual(self.setting('MusicVolume'), '0')
        self.click_pixel(right - 1, self.first(top))
        wait_for(lambda: self.setting('MusicVolume') == '100', 'the full volume')

    def check_drag(self):
        self.drag(BACKGROUND, (BACKGROUND[0] + DRAG[0], BACKGROUND[1] + DRAG[1]))
        wanted = self.rectangle(PLACE + DRAG[0], PLACE + DRAG[1], WIDTH, HEIGHT)
        wait_for(lambda: self.display.geometry(self.window) == wanted, 'the drag')
        self.display.tool('mouseup', 1)
        self.display.point_at(*ASIDE)

    def drag(self, start, end):
        left, top = self.display.geometry(self.window)[:2]
        self.display.tool('mousemove', left + self.first(start[0]), top + self.first(start[1]),
                          'mousedown', 1)
        self.display.point_at(left + self.first(end[0]), top + self.first(end[1]))

    def check_menu(self):
        self.click(MENU_BUTTON)
        menu = wait_for(self.menus, 'the menu')[0]
        width, height = (round(length / self.factor) for length in menu[2:])
        left, top = (PLACE + a + b for a, b in zip(DRAG, MENU_BUTTON))
        self.assertEqual(menu, self.rectangle(left - width // 2, top, width, height))
        below = self.first(HEADER + MENU_ROW)
        rows = [(menu[0], menu[1] + self.first(HEADER + row * MENU_ROW) + 2, menu[2], 2)
                for row in (0, 1)]
        bars = []
        for y in (below - 1, below):
            self.display.point_at(menu[0] + menu[2] // 2, menu[1] + y)
            bars.append(self.bars_when_settled(rows))
        self.assertEqual([bars[0][0] == bars[1][0], bars[0][1] == bars[1][1]], [False, False])
        self.close_menus()

    def bars_when_settled(self, rows):
        return settled(lambda: [self.display.part(*row).data for row in rows],
                       'a menu that stays')

    def check_wholeness(self):
        """What many parts have made is what is there when all of it is painted at once."""
        self.display.point_at(*ASIDE)
        parts = self.stand_still()
        self.display.tool('windowminimize', self.window)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        self.display.run('wmctrl', '-ia', str(self.window))
        wait_for(lambda: self.still() == parts, 'the same picture')


def at(factor):
    def test(self):
        self.open_at(factor)
        self.check_size_and_place()
        self.check_volume_at_its_edges()
        self.check_drag()
        self.check_menu()
        self.check_wholeness()
    return test


for number in FACTORS:
    setattr(AtEachFactor, 'test_at_' + str(number).replace('.', '_'), at(number))


class AsTheScreenHasIt(Scaled):
    def setUp(self):
        super().setUp()
        self.dots(96)
        self.addCleanup(self.dots, 96)

    def dots(self, number):
        """As desktops publish them."""
        self.display.run('xrdb', '-nocpp', '-merge', data=f'Xft.dpi:\t{number}\n'.encode())

    def has_factor(self, factor):
        self.factor = factor
        return self.display.geometry(self.window) == self.rectangle(PLACE, PLACE, WIDTH, HEIGHT)

    def test_at_first(self):
        self.dots(144)
        self.open_at(1.5, asked=False)
        self.assertTrue(self.has_factor(1.5))

    def test_it_changes_and_changes_back_under_an_open_menu(self):
        self.open_at(1, asked=False)
        before = self.stand_still()
        self.click(MENU_BUTTON)
        menu = wait_for(self.menus, 'the menu')[0]
        for number, factor in ((192, 2), (120, 1.25), (96, 1)):
            self.dots(number)
            wait_for(lambda: self.has_factor(factor), f'the factor {factor}')
            wait_for(lambda: self.menus() == [self.rectangle(*menu)], 'the menu')
        self.close_menus()
        wait_for(lambda: self.still() == before, 'the same picture')

    def test_what_was_asked_for_stays(self):
        self.open_at(1.5)
        self.dots(192)
        self.click_pixel(self.first(VOLUME[0]), self.first(VOLUME[1]))
        wait_for(lambda: self.setting('MusicVolume') == '0', 'silence')
        self.assertTrue(self.has_factor(1.5))


if __name__ == '__main__':
    main()
