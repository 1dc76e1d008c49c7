#!/usr/bin/env python3
"""The finished program in trays of both kinds, and where there is none: it must always be found
again."""

import os
import re
import sys
import time

from bus import SessionBus
from desktop import Display, main, wait_for
from player import AT_REST, HEIGHT, LEFT, NEXT, TITLE, TOP, WIDTH, Player
from world import PATIENCE

HERE = os.path.dirname(os.path.abspath(__file__))
MINIMISE = (250, 17)
# In the popup, below its header of 13: "Show application", a separator of 5, "Exit application".
SHOW = 1 + 13 + 9
BAR = (0x20, 0x40, 0x60)


class Trays(Player):
    def setUp(self):
        super().setUp()
        self.write_settings(HideInSystray='True')

    def start_bus(self):
        bus = SessionBus(self.environment)
        self.addCleanup(bus.end)
        self.environment['DBUS_SESSION_BUS_ADDRESS'] = bus.address
        return bus

    def start_host(self, *manner):
        """Status notifiers are shown from now on."""
        host = self.start_lines(sys.executable, os.path.join(HERE, 'tray_host.py'), *manner)
        host.expect('ready')
        return host

    def start_tray(self, *manner):
        """A tray of the X server begins."""
        tray = self.start_lines(self.embedding_tray, *manner)
        tray.expect('ready')
        return tray

    def is_listed(self):
        windows = self.display.run('xprop', '-root', '_NET_CLIENT_LIST')
        return hex(self.window) in re.findall('0x[0-9a-f]+', windows)

    def is_iconic(self):
        return 'Iconic' in self.display.property(self.window, 'WM_STATE')

    def wait_for_task_bar(self):
        """Minimised there, and for good."""
        def is_there():
            return self.is_listed() and self.is_iconic()
        wait_for(is_there, 'the window in the task bar')
        self.display.tool('sleep', 0.7)
        self.assertTrue(is_there())
        self.assertEqual(self.display.windows_of(self.player), [])

    def wait_for_tray(self):
        """Nowhere but there, and for good."""
        wait_for(lambda: not self.is_listed(), 'the window out of the task bar')
        self.display.tool('sleep', 0.7)
        self.assertFalse(self.is_listed())
        self.assertEqual(self.display.windows_of(self.player), [])

    def wait_for_screen(self):
        wait_for(lambda: self.is_listed() and not self.is_iconic(), 'the window')
        wait_for(self.painted, 'the picture')
        self.assertEqual(self.place, (LEFT, TOP, WIDTH, HEIGHT))
        wait_for(lambda: int(self.display.tool('getwindowfocus')) == self.window, 'the focus')
        former = self.shown(TITLE).data
        wait_for(lambda: self.shown(TITLE).data != former, 'a title that moves')

    def wait_for_popup(self):
        popup = wait_for(lambda: self.display.windows_of(self.player), 'the popup')[0]
        place = self.display.geometry(popup)
        wait_for(lambda: self.display.screenshot().pixel(*place[:2]) == (0, 0, 128), 'its frame')
        return place

    def wait_for_no_popup(self):
        wait_for(lambda: not self.display.windows_of(self.player), 'no popup')

    def choose(self, row):
        left, top, _, height = self.wait_for_popup()
        self.display.click(left + 40, top + (row if row > 0 else height + row))

    def minimise(self):
        self.click(MINIMISE)
        self.display.point_at(500, 400)


class OnTheBus(Trays):
    def setUp(self):
        super().setUp()
        self.start_bus()
        self.host = self.start_host()

    def hide(self, *arguments):
        self.open(*arguments)
        self.minimise()
        self.host.expect('registered')
        self.wait_for_tray()

    def properties(self):
        self.host.ask('properties')
        return dict(line.split(' ', 1) if ' ' in line else (line, '') for line in self.host.heard)

    def test_there_and_back_twice(self):
        self.open()
        names = []
        for _ in range(2):
            self.minimise()
            names.append(self.host.expect('registered'))
            self.wait_for_tray()
            self.host.ask('activate')
            self.wait_for_screen()
            self.host.expect('gone')
        self.assertRegex(names[0], rf'^registered org\.kde\.StatusNotifierItem-{self.player.pid}-')
        self.assertNotEqual(names[0], names[1])

    def test_it_comes_to_the_front(self):
        self.hide()
        self.start_drag(600, 400, 'text/plain', '00', 'copy')
        other = self.display.window('Source')
        left, top, width, height = self.display.geometry(other)
        self.display.click(left + width // 2, top + height // 2)
        wait_for(lambda: int(self.display.tool('getwindowfocus')) == other, 'the focus')
        self.host.ask('activate')
        self.wait_for_screen()

    def test_minimised_by_the_desktop(self):
        self.open()
        self.display.tool('windowminimize', self.window)
        self.wait_for_tray()
        self.host.ask('activate')
        self.wait_for_screen()

    def test_what_a_host_is_told(self):
        self.hide()
        told = self.properties()
        self.assertEqual({name: told[name] for name in ('Category', 'Id', 'Title', 'Status',
                                                        'WindowId', 'ItemIsMenu')},
                         {'Category': 'ApplicationStatus', 'Id': 'veldrin', 'Title': AT_REST,
                          'Status': 'Active', 'WindowId': '0', 'ItemIsMenu': 'False'})
        self.assertEqual(told['ToolTip'], str(('', [], AT_REST, '')))
        self.assertIn('(22, 22)', told['IconPixmap'])
        self.assertNotIn('Menu', told)
        pixels = bytes.fromhex(self.host.ask('picture 16', 'picture').split()[1])
        self.assertEqual(len(pixels), 16 * 16 * 4)
        self.assertEqual(pixels[:4], bytes(4))  # the corner lets the panel through
        # The play mark is white.
        self.assertEqual(pixels[(8 * 16 + 7) * 4:][:4], b'\xff\xff\xff\xff')

    def test_the_tip_follows_the_song(self):
        first, second = self.at('one.wav'), self.at('A & <b>two.wav')
        self.songs('one', seconds=3)
        self.songs('A & <b>two')
        self.hide(first, second)
        self.assertEqual(self.properties()['Title'], first)
        self.host.expect('signal /StatusNotifierItem NewTitle')
        self.host.expect('signal /StatusNotifierItem NewToolTip')
        self.assertEqual(self.properties()['Title'], second)
        self.assertEqual(self.properties()['ToolTip'], str(('', [], second, '')))

    def test_the_popup_shows_the_window(self):
        self.hide()
        self.display.point_at(600, 500)
        self.host.ask('menu')
        left, top, width, height = self.wait_for_popup()
        self.assertTrue(left <= 600 <= left + width and top <= 500 <= top + height)
        self.choose(SHOW)
        self.wait_for_screen()
        self.host.expect('gone')

    def test_the_popup_ends_the_player_which_saves_its_list(self):
        self.songs('one', 'two')
        self.hide(self.at('one.wav'), self.at('two.wav'))
        self.host.ask('menu')
        self.choose(-9)
        self.assertEqual(self.player.wait(timeout=PATIENCE), 0)
        self.host.expect('gone')
        self.assertEqual(self.paths_saved(), [b'one.wav', b'two.wav'])

    def test_escape_and_a_click_elsewhere_close_the_popup(self):
        self.hide()
        for close in (lambda: self.display.tool('key', 'Escape'),
                      lambda: self.display.click(20, 20)):
            self.display.point_at(600, 500)
            self.host.ask('menu')
            self.wait_for_popup()
            close()
            self.wait_for_no_popup()
            self.assertFalse(self.is_listed())
        self.host.ask('activate')
        self.wait_for_screen()

    def test_calls_while_the_popup_is_open(self):
        self.hide()
        self.host.ask('menu')
        self.wait_for_popup()
        self.host.ask('menu')
        self.host.ask('second')
        self.host.ask('scroll')
        self.display.tool('sleep', 0.3)
        self.assertEqual(len(self.display.windows_of(self.player)), 1)
        self.display.tool('key', 'Escape')
        self.wait_for_no_popup()
        self.host.ask('menu')
        self.choose(SHOW)
        self.wait_for_screen()

    def test_a_host_that_ends_and_begins(self):
        self.hide()
        self.host.end()
        self.wait_for_task_bar()
        self.host = self.start_host()
        self.host.expect('registered')
        self.wait_for_tray()
        self.host.ask('activate')
        self.wait_for_screen()

    def test_a_window_that_the_desktop_minimised_stays_so_when_the_host_ends(self):
        self.open()
        self.display.tool('windowminimize', self.window)
        self.wait_for_tray()
        self.host.end()
        self.wait_for_task_bar()

    def test_a_host_that_goes_while_its_watcher_stays(self):
        self.hide()
        self.host.ask('hide')
        self.wait_for_task_bar()
        self.host.ask('show')
        self.wait_for_tray()

    def test_it_comes_back_from_the_task_bar_when_the_host_has_ended(self):
        self.hide()
        self.host.end()
        self.wait_for_task_bar()
        self.display.run('wmctrl', '-ia', str(self.window))
        self.wait_for_screen()
        self.minimise()
        self.wait_for_task_bar()

    def test_the_bus_ends(self):
        bus = self.start_bus()
        self.host = self.start_host()
        self.hide()
        bus.end()
        self.wait_for_task_bar()
        self.display.run('wmctrl', '-ia', str(self.window))
        self.wait_for_screen()

    def test_it_is_preferred_to_a_tray_of_the_server(self):
        tray = self.start_tray()
        self.hide()
        self.assertIsNone(tray.line(0.5))
        self.host.end()
        tray.expect('icon')
        self.wait_for_tray()
        self.host = self.start_host()
        tray.expect('gone')
        self.host.expect('registered')
        self.wait_for_tray()
        self.host.ask('activate')
        self.wait_for_screen()

    def test_the_setting_goes_while_it_is_there(self):
        self.hide()
        self.write_settings(HideInSystray='False')
        self.host.ask('activate')
        self.wait_for_screen()

    def test_it_is_ended_by_a_signal(self):
        self.songs('one')
        self.hide(self.at('one.wav'))
        self.player.terminate()
        self.player.wait(timeout=PATIENCE)
        self.host.expect('gone')
        self.assertEqual(self.paths_saved(), [b'one.wav'])

    def test_without_the_setting_nobody_hears_of_it(self):
        self.write_settings()
        self.open()
        self.minimise()
        self.wait_for_task_bar()
        self.assertIsNone(self.host.line(0.3))


class OddWatchers(Trays):
    def test_those_that_do_not_answer_as_they_should(self):
        for manner in ('rubbish', 'error', 'silent', 'nohost'):
            with self.subTest(manner):
                self.start_bus()
                host = self.start_host(manner)
                self.open()
                self.minimise()
                self.wait_for_task_bar()
                if manner in ('rubbish', 'error'):
                    host.ask('show')
                    self.wait_for_task_bar()
                tray = self.start_tray()
                tray.expect('icon')
                self.wait_for_tray()
                tray.end()
                self.wait_for_task_bar()
                self.player.terminate()
                self.player.wait(timeout=PATIENCE)
                host.end()


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

    def test_a_double_click_brings_it_back(self):
        self.hide()
        self.display.click(*self.middle())
        self.display.tool('sleep', 0.6)
        self.assertFalse(self.is_listed())
        self.display.tool('click', '--repeat', 2, '--delay', 60, 1)
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
        self.choose(-9)
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
        # A square of 30 in the middle; its play mark reaches from column 12 to 21 of it.
        def row():
            shot = self.display.screenshot()
            return [shot.pixel(left + x, top + 15) for x in (2, 5 + 13, 5 + 19)]
        wait_for(lambda: row() == [BAR, (255, 255, 255), (255, 255, 255)], 'the icon')

    def test_its_name_is_the_tip(self):
        first, second = self.at('one.wav'), self.at('two.wav')
        self.songs('one', seconds=3)
        self.songs('two')
        self.hide(arguments=(first, second))
        self.assertIn(f'"{first}"', self.display.property(self.icon, '_NET_WM_NAME'))
        wait_for(lambda: f'"{second}"' in self.display.property(self.icon, '_NET_WM_NAME') and
                 f'"{second}"' in self.display.property(self.icon, 'WM_NAME'), 'the name')

    def test_a_tray_that_ends_and_begins(self):
        for manner in ((), ('orphans',)):
            self.hide(*manner)
            self.tray.end()
            self.wait_for_task_bar()
            self.assertEqual(self.display.run('wmctrl', '-l').count('\n'), 1)
            self.tray = self.start_tray(*manner)
            self.icon = int(self.tray.expect('icon').split()[1])
            self.wait_for_tray()
            self.display.click(*self.middle())
            self.display.click(*self.middle())
            self.wait_for_screen()
            self.player.terminate()
            self.player.wait(timeout=PATIENCE)
            self.tray.end()

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
