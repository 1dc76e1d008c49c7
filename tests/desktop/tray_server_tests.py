#!/usr/bin/env python3
"""The finished program in a tray of the X server, and where there is none: it must always be found
again."""

import time

from desktop import Display, main, wait_for
from player import AT_REST, TITLE
from tray_player import EXIT, MINIMISE, SHOW, Trays
from world import PATIENCE

BAR = (0x20, 0x40, 0x60)


class OnTheServer(Trays):
    def setUp(self):
        super().setUp()
        if 'bus' in self.id():
            self.start_bus()

    def hide(self, *manner, arguments=()):
        self.tray = self.start_tray(*manner)
        self.open(*arguments)
        self.minimise()
        self.icon = int(self.tray.expect('icon').split()[1])
        self.wait_for_tray()
        return self.display.geometry(self.icon)

    def middle(self):
        left, top, width, height = self.display.geometry(self.icon)
        return left + width // 2, top + height // 2

    def double_click(self):
        """On the icon, until it is gone. A machine that is held up makes two single clicks of one."""
        end = time.monotonic() + PATIENCE
        while not self.is_listed() and time.monotonic() < end:
            self.display.tool('mousemove', *self.middle(), 'click', '--repeat', 2, '--delay', 60, 1)
            again = time.monotonic() + 5
            while not self.is_listed() and time.monotonic() < again:
                self.display.tool('sleep', 0.05)

    def test_a_double_click_brings_it_back(self):
        self.hide()
        self.display.click(*self.middle())
        self.display.tool('sleep', 0.6)
        self.assertFalse(self.is_listed())
        self.double_click()
        self.wait_for_screen()
        self.tray.expect('gone')

    def test_the_popup_beside_the_icon(self):
        self.hide()
        self.display.click(*self.middle(), 3)
        left, top, width, height = self.wait_for_popup()
        x, y = self.middle()
        self.assertTrue(left <= x <= left + width and top <= y <= top + height)
        self.assertLessEqual(top + height, 768)
        self.display.tool('key', 'Escape')
        self.wait_for_no_popup()
        self.display.click(*self.middle(), 3)
        self.choose(SHOW)
        self.wait_for_screen()

    def test_the_popup_ends_the_player_on_a_bus_without_a_watcher(self):
        self.hide()
        self.display.click(*self.middle(), 3)
        self.choose(EXIT)
        self.assertEqual(self.player.wait(timeout=PATIENCE), 0)
        self.tray.expect('gone')

    def test_its_picture_on_the_tray(self):
        for manner in ((), ('alpha',)):
            left, top, width, height = self.hide(*manner)
            self.assertEqual((width, height), (26, 26))
            shot = self.display.screenshot()
            self.assertEqual(shot.pixel(left, top), BAR if not manner else (0, 0, 0), manner)
            self.assertEqual(shot.pixel(left + 12, top + 13), (255, 255, 255), manner)
            self.player.terminate()
            self.player.wait(timeout=PATIENCE)
            self.tray.end()

    def test_it_takes_the_size_that_the_tray_gives(self):
        self.hide()
        self.display.tool('windowsize', self.icon, 40, 30)
        left, top, _, _ = wait_for(lambda: self.display.geometry(self.icon)[2:] == (40, 30) and
                                   self.display.geometry(self.icon), 'the size')
        # A square of 30 in the middle; its frame begins in column 1 of it, and its play mark reaches
        # from column 12 to 20.
        def fits():
            shot = self.display.screenshot()
            bar, frame, *mark = (shot.pixel(left + x, top + 15) for x in (4, 5 + 1, 5 + 13, 5 + 18))
            return bar == BAR and frame != BAR and min(map(min, mark)) > 250
        wait_for(fits, 'the icon')

    def test_its_name_is_the_tip(self):
        first, second = self.at('one.wav'), self.at('two.wav')
        self.songs('one', 'two')
        self.hide(arguments=(first, second))
        self.assertIn(f'"{first}"', self.display.property(self.icon, '_NET_WM_NAME'))
        self.assertEqual(self.run_program('--next').returncode, 0)
        wait_for(lambda: f'"{second}"' in self.display.property(self.icon, '_NET_WM_NAME') and
                 f'"{second}"' in self.display.property(self.icon, 'WM_NAME'), 'the name')

    def test_a_tray_that_ends_and_begins(self):
        for manner in ((), ('orphans',)):
            self.hide(*manner)
            self.tray.end()
            self.wait_for_task_bar()
            self.assertEqual(self.display.listed(), [self.window])
            self.tray = self.start_tray(*manner)
            self.icon = int(self.tray.expect('icon').split()[1])
            self.wait_for_tray()
            self.double_click()
            self.wait_for_screen()
            self.player.terminate()
            self.player.wait(timeout=PATIENCE)
            self.tray.end()

    def test_a_tray_that_puts_it_out(self):
        self.hide()
        self.tray.ask('out', answer='out')
        self.wait_for_task_bar()
        self.assertEqual(self.display.listed(), [self.window])
        self.assertIsNone(self.display.known.attributes(self.icon))

    def test_none_at_all(self):
        self.songs('one', seconds=3)
        self.songs('two')
        self.open(self.at('one.wav'), self.at('two.wav'))
        self.minimise()
        self.wait_for_task_bar()
        wait_for(lambda: 'two' in self.title(), 'the next song')
        self.display.run('wmctrl', '-ia', str(self.window))
        self.wait_for_screen()

    def test_a_session_bus_that_is_not_there(self):
        self.environment['DBUS_SESSION_BUS_ADDRESS'] = 'unix:path=/nonexistent'
        self.open()
        self.minimise()
        self.wait_for_task_bar()
        self.display.tool('windowactivate', self.window)
        self.wait_for_screen()

    def test_a_tray_that_begins_later(self):
        self.open()
        self.minimise()
        self.wait_for_task_bar()
        self.tray = self.start_tray()
        self.icon = int(self.tray.expect('icon').split()[1])
        self.wait_for_tray()


class WithoutManager(Trays):
    @staticmethod
    def make_display():
        return Display(manager=None)

    def test_where_nobody_minimises_it_comes_back(self):
        self.open()
        self.click(MINIMISE)
        # Longer than the desktop has time to answer; the title must move again after that.
        self.display.tool('sleep', 0.8)
        former = self.shown(TITLE).data
        wait_for(lambda: self.shown(TITLE).data != former, 'a title that moves')
        self.tray = self.start_tray()
        self.click(MINIMISE)
        self.tray.expect('icon')
        wait_for(lambda: not self.display.windows_of(self.player), 'the window gone')
        self.display.tool('sleep', 0.8)
        self.assertEqual(self.display.windows_of(self.player), [])
        self.tray.end()
        wait_for(self.painted, 'the window')
        self.display.tool('sleep', 0.8)
        former = self.shown(TITLE).data
        wait_for(lambda: self.shown(TITLE).data != former, 'a title that moves')


if __name__ == '__main__':
    main()
