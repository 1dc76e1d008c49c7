#!/usr/bin/env python3
"""The menus of the finished program: opened and used with a real pointer and real keys."""

import os
import re
import signal
import subprocess

from desktop import OnDisplay, main, wait_for
from world import PATIENCE

LEFT, TOP = 300, 200
MENU_BUTTON = (LEFT + 20, TOP + 17)
REMOVE_BUTTON = (LEFT + 65, TOP + 217)
BACKGROUND = (LEFT + 3, TOP + 100)
ELSEWHERE = (900, 650)
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def row(caption):
    """Which row of its menu an item is, below the header. The menu's tree may grow."""
    with open(os.path.join(ROOT, 'menus', 'commandmenu.cpp'), encoding='utf-8') as file:
        rows = re.findall(r'\{u"([^"#]*)[^"]*", u"([^"]*)", [^,}]+(, Row::kHeader)?', file.read())
    parent = [above for name, above, header in rows if name == caption and not header][0]
    return [name for name, above, header in rows if above == parent and not header].index(caption)


def middle(caption):
    """Of an item above any separator: how far below the top of its popup. A header takes 13, a row 18."""
    return 1 + 13 + 18 * row(caption) + 9


SETTINGS = middle('Settings')
HIDE = middle('Minimize in systray')
TO_SETTINGS = ['Down'] * (row('Settings') + 1) + ['Right']


class Menus(OnDisplay):
    def setUp(self):
        super().setUp()
        os.makedirs(self.directory)

    def settings_file(self):
        return os.path.join(self.directory, 'Sarnel.Ambrisor.ini')

    def setting(self, name):
        with open(self.settings_file(), encoding='utf-8', newline='') as file:
            values = dict(line.split('=', 1) for line in file.read().split('\r\n') if '=' in line)
        return values.get(name)

    def open(self, left=LEFT, top=TOP):
        self.display.point_at(2, 2)  # a tooltip would be taken for the window, or for a popup
        with open(self.settings_file(), 'wb') as file:
            file.write(f'[Memory]\r\nX={left}\r\nY={top}\r\n'.encode())
        self.player = subprocess.Popen(
            [self.program, '--dir', self.directory, '--output', 'null'], env=self.environment,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.running.append(self.player)
        self.window = wait_for(lambda: self.display.windows_of(self.player), 'the window')[0]
        wait_for(lambda: any(self.display.pixel(left + 20, top + 17)),
                 'the picture')
        self.display.tool('windowfocus', '--sync', self.window)

    def popups(self):
        """Places of the visible popups."""
        return sorted(self.display.places_of(self.player, self.window))

    def wait_for_popups(self, count):
        wait_for(lambda: len(self.popups()) == count, f'{count} popups')
        return self.popups()

    def keys(self, *keys):
        self.display.tool('key', '--delay', '30', *keys)

    def open_by_button(self, button=MENU_BUTTON):
        self.display.click(*button)
        return self.wait_for_popups(1)[0]

    def test_a_button_opens_the_menu_at_the_pointer(self):
        self.open()
        left, top, width, height = self.open_by_button()
        self.assertEqual(top, MENU_BUTTON[1])
        self.assertLessEqual(abs(left + width // 2 - MENU_BUTTON[0]), 1)
        shot = self.display.screenshot()
        self.assertEqual(shot.pixel(left, top), (0, 0, 128))  # the frame
        self.assertEqual(shot.pixel(left + width - 1, top + height - 1), (0, 0, 128))

    def test_a_menu_above_the_pointer(self):
        self.open()
        left, top, width, height = self.open_by_button(REMOVE_BUTTON)
        self.assertEqual(top + height, REMOVE_BUTTON[1])

    def test_keys_choose_in_a_submenu(self):
        self.open()
        self.open_by_button()
        self.keys(*TO_SETTINGS)
        self.wait_for_popups(2)
        self.keys(*['Down'] * row('Minimize in systray'), 'Return')
        wait_for(lambda: self.setting('HideInSystray') == 'True', 'the command')
        self.wait_for_popups(0)

    def test_a_letter_chooses(self):
        self.open()
        self.open_by_button()
        self.keys('s')
        self.wait_for_popups(2)
        self.keys('m')
        wait_for(lambda: self.setting('HideInSystray') == 'True', 'the command')

    def test_the_pointer_chooses_in_a_submenu(self):
        self.open()
        left, top, width, _ = self.open_by_button()
        self.display.point_at(left + 30, top + SETTINGS)
        submenu = [place for place in self.wait_for_popups(2) if place[1] != top][0]
        self.display.point_at(left + width - 4, top + SETTINGS)
        self.display.point_at(submenu[0] + 40, submenu[1] + 1 + 13 + 9)
        self.display.click(submenu[0] + 40, submenu[1] + HIDE)
        wait_for(lambda: self.setting('HideInSystray') == 'True', 'the command')
        self.wait_for_popups(0)

    def test_the_right_button_opens_and_drags_to_a_choice(self):
        self.open()
        self.display.tool('mousemove', *BACKGROUND, 'mousedown', 3)
        left, top, _, _ = self.wait_for_popups(1)[0]
        self.display.point_at(left + 30, top + SETTINGS)
        submenu = [place for place in self.wait_for_popups(2) if place[1] != top][0]
        self.display.point_at(submenu[0] + 40, submenu[1] + 1 + 13 + 9)
        self.display.point_at(submenu[0] + 40, submenu[1] + HIDE)
        self.display.tool('mouseup', 3)
        wait_for(lambda: self.setting('HideInSystray') == 'True', 'the command')
        self.wait_for_popups(0)
        # Nothing is held any more: the window does not follow the pointer.
        self.display.tool('mousemove', *BACKGROUND, 'mousemove_relative', 40, 40)
        self.open_by_button()
        self.assertEqual(self.display.geometry(self.window)[:2], (LEFT, TOP))

    def test_a_click_elsewhere_closes_all_and_does_nothing_else(self):
        self.open()
        self.open_by_button()
        self.keys(*TO_SETTINGS)
        self.wait_for_popups(2)
        self.display.click(*ELSEWHERE)
        self.wait_for_popups(0)
        self.open_by_button()
        # On the window's own close button.
        self.display.click(LEFT + 272, TOP + 16)
        self.wait_for_popups(0)
        self.assertIsNone(self.player.poll())
        self.open_by_button()

    def test_esc_closes_and_the_keys_are_the_windows_again(self):
        self.open()
        self.open_by_button()
        self.keys('Escape')
        self.wait_for_popups(0)
        self.keys('ctrl+r')
        wait_for(lambda: self.setting('Random') == 'True', 'the command')

    def test_key_combinations(self):
        self.open()
        self.keys('ctrl+r')
        wait_for(lambda: self.setting('Random') == 'True', 'the command')
        self.keys('shift+a')
        wait_for(lambda: self.setting('TopMost') == 'True', 'the command')
        self.assertEqual(self.setting('Skin'), '1')

    def test_popups_take_no_focus_and_stand_in_no_list(self):
        self.open()
        self.open_by_button()
        self.assertEqual(self.display.known.focused(), self.window)
        self.assertEqual(self.display.listed(), [self.window])

    def test_the_menu_goes_with_the_player(self):
        for by_signal in (True, False):
            self.open()  # which takes a free pointer
            self.open_by_button()
            if by_signal:
                self.player.send_signal(signal.SIGTERM)
            else:
                self.display.run('wmctrl', '-i', '-c', hex(self.window))
            self.player.wait(timeout=PATIENCE)
            self.assertEqual(self.popups(), [])

    def test_the_menu_closes_when_the_window_is_minimised(self):
        self.open()
        self.open_by_button()
        self.display.tool('windowminimize', self.window)
        self.wait_for_popups(0)

    def test_a_menu_stays_on_the_screen(self):
        self.open(730, 490)
        self.display.click(1021, 760, 3)
        left, top, width, height = self.wait_for_popups(1)[0]
        self.assertEqual(left + width, 1024)
        self.assertLessEqual(top + height, 768)


if __name__ == '__main__':
    main()
