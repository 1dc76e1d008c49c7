#!/usr/bin/env python3
"""The finished program as a status notifier on the session's bus: it must always be found again."""

from desktop import main, wait_for
from player import AT_REST
from tray_player import EXIT, SHOW, Trays
from world import PATIENCE


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
        wait_for(lambda: self.display.known.focused() == other, 'the focus')
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
        self.songs('one', 'A & <b>two')
        self.hide(first, second)
        self.assertEqual(self.properties()['Title'], first)
        self.assertEqual(self.run_program('--next').returncode, 0)
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
        self.choose(EXIT)
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


if __name__ == '__main__':
    main()
