#!/usr/bin/env python3
"""Panels and writing in one, toggles, menu buttons and the drag of the window, in the finished
program."""

import os

from desktop import main, wait_for
from player import LEFT, LIST, TOP, Player

# Middles of the toggles and of the buttons that open menus.
PIN, LYRICS, EFFECTS, INFO = (43, 17), (259, 219), (181, 219), (215, 219)
MENU_BUTTONS = (20, 17), (27, 219), (65, 219), (103, 219), (144, 219)
BACKGROUND = (150, 5)


class Panels(Player):
    def toggle(self, middle):
        """The look of a toggle around its middle."""
        return self.shown((middle[0] - 12, middle[1] - 5, 24, 10)).data

    def open_with_rows(self):
        self.save_list(12)
        self.write_settings()
        self.open()
        # The list's rows do not pulse while none of them is selected; row 0 is the current one.
        self.below = (LIST[0], LIST[1] + 20, 260, 150)
        return self.shown(self.below).data

    def expect_panel(self, rows, is_open, what):
        wait_for(lambda: (self.shown(self.below).data != rows) == is_open, what)

    def test_each_panel_by_its_combination(self):
        rows = self.open_with_rows()
        for keys in 'ctrl+l', 'ctrl+e', 'ctrl+i', 'ctrl+f', 'Insert':
            self.key(keys)
            self.expect_panel(rows, True, f'{keys} to open its panel')
            self.key(keys)
            self.expect_panel(rows, False, f'{keys} to close its panel')

    def test_each_panel_by_its_toggle(self):
        rows = self.open_with_rows()
        for middle in LYRICS, EFFECTS, INFO:
            off = self.toggle(middle)
            self.click(middle)
            self.expect_panel(rows, True, f'the toggle at {middle} to open its panel')
            wait_for(lambda: self.toggle(middle) != off, 'the toggle to glow')
            self.click(middle)
            self.expect_panel(rows, False, f'the toggle at {middle} to close its panel')
            wait_for(lambda: self.toggle(middle) == off, 'the toggle to go out')

    def test_toggle_and_combination_go_together(self):
        rows = self.open_with_rows()
        off = self.toggle(EFFECTS)
        self.key('ctrl+e')
        wait_for(lambda: self.toggle(EFFECTS) != off, 'the toggle to glow')
        self.click(EFFECTS)
        self.expect_panel(rows, False, 'the panel to close')
        self.assertEqual(self.toggle(EFFECTS), off)

    def test_the_pin_and_its_combination(self):
        self.open()
        self.click(PIN)
        wait_for(lambda: self.setting('TopMost') == 'True', 'the setting')
        wait_for(lambda: 'ABOVE' in self.display.property(self.window, '_NET_WM_STATE'),
                 'the window on top')
        self.assertEqual(self.display.geometry(self.window), self.place)
        self.key('shift+a')
        wait_for(lambda: self.setting('TopMost') == 'False', 'the setting')
        wait_for(lambda: 'ABOVE' not in self.display.property(self.window, '_NET_WM_STATE'),
                 'the window among the others')

    def test_the_skin_in_use_by_its_combination(self):
        self.open()
        before = self.shown((0, 205, 293, 25)).data
        self.key('shift+1')
        self.key('ctrl+r')
        wait_for(lambda: self.setting('Random') == 'True', 'the key behind it')
        self.assertEqual(self.shown((0, 205, 293, 25)).data, before)


class MenuButtons(Player):
    def popups(self):
        return len([window for window in self.display.windows_of(self.player)
                    if window != self.window])

    def test_each_button_opens_its_menu(self):
        self.open()
        for middle in MENU_BUTTONS:
            self.click(middle)
            wait_for(lambda: self.popups() == 1, f'the menu of the button at {middle}')
            self.display.tool('key', 'Escape')
            wait_for(lambda: self.popups() == 0, 'the menu to close')

    def test_a_right_click_on_the_background_opens_the_menu(self):
        self.open()
        self.click(BACKGROUND, 3)
        wait_for(lambda: self.popups() == 1, 'the menu')


class Dragging(Player):
    def place_now(self):
        return self.display.geometry(self.window)[:2]

    def drop(self, start, end):
        self.drag(start, end)
        self.display.tool('mouseup', 1)

    def test_the_window_follows_and_keeps_its_place(self):
        self.open()
        self.drop(BACKGROUND, (BACKGROUND[0] + 60, BACKGROUND[1] + 40))
        wait_for(lambda: self.place_now() == (LEFT + 60, TOP + 40), 'the window')
        wait_for(lambda: (self.setting('X'), self.setting('Y')) == (str(LEFT + 60), str(TOP + 40)),
                 'both settings')

    # Five pixels from the left edge it sticks to it; by the title, as by the background.
    def test_the_window_sticks_to_the_edge(self):
        self.open()
        title = (150, 17)
        self.drop(title, (title[0] - LEFT + 5, title[1] + 10))
        wait_for(lambda: self.place_now() == (0, TOP + 10), 'the window at the edge')
        wait_for(lambda: self.setting('X') == '0', 'the setting')


class Writing(Player):
    """In the box of the search panel."""

    def open_search(self):
        self.save_list(12)
        self.open()
        self.key('ctrl+f')

    def text(self):
        """What the box holds, by way of the clipboard."""
        self.display.give_clipboard(b'none yet')
        self.key('ctrl+a', 'ctrl+c')
        def copied():
            found = self.display.run('xclip', '-o', '-selection', 'clipboard', check=False)
            return found if found != 'none yet' else None
        return wait_for(copied, 'the text of the box')

    def rows_saved(self):
        self.player.terminate()
        self.player.wait()
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), newline='') as file:
            return file.read().split('\r\n')[1]

    def test_capitals_and_del_are_text_and_no_commands(self):
        self.open_search()
        self.display.tool('type', '--delay', '20', 'xThe Cat')
        self.key('Home', 'Delete')
        self.assertEqual(self.text(), 'The Cat')
        self.assertEqual(self.rows_saved().strip(), '12')

    def test_undo(self):
        self.open_search()
        self.display.tool('type', '--delay', '20', 'cat')
        self.key('ctrl+a', 'Delete', 'ctrl+z')
        self.assertEqual(self.text(), 'cat')

    def test_characters_of_the_third_level(self):
        self.display.layout('de')
        self.open_search()
        self.key('ISO_Level3_Shift+q', 'dead_acute', 'e')
        self.assertEqual(self.text(), '@é')

    def test_other_keys_are_commands(self):
        self.open_search()
        self.key('a', 'ctrl+r')
        wait_for(lambda: self.setting('Random') == 'True', 'the command')
        self.assertEqual(self.text(), 'a')


if __name__ == '__main__':
    main()
