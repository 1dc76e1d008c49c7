#!/usr/bin/env python3
"""Screens of all kinds that come, go and shrink, window managers that do not do what is asked, and
what the window makes of its place and of a button that is held meanwhile."""

import os

from desktop import Display, main, wait_for
from driver import HEIGHT, WIDTH, Driver, colour
from player import HEIGHT as TALL
from player import LEFT, LIST, ROW, TITLE, TOP, Player
from player import WIDTH as WIDE

BACKGROUND = (150, 5)
MINIMISE = (250, 17)


class TwoMonitors:
    """Side by side. The right one is not always as high as the left one. A window manager would
    have its own say where a window may go."""

    @staticmethod
    def make_display():
        return Display((2048, 768), manager=None)

    def setUp(self):
        super().setUp()
        self.monitors('1024/270x768/203+1024+0')

    def monitors(self, right):
        """`right`: width/mm x height/mm + left + top, or None."""
        wanted = {'LEFT': ('1024/270x768/203+0+0', 'screen'), 'RIGHT': (right, 'none')}
        for name, (place, output) in wanted.items():
            self.display.run('xrandr', '--delmonitor', name, check=False)
            if place:
                self.display.run('xrandr', '--setmonitor', name, place, output)


class Framing:
    """The manager that frames and does not minimise."""

    @classmethod
    def make_display(cls):
        return Display(manager=[cls.framing_manager])


class Unmanaged:
    @staticmethod
    def make_display():
        return Display(manager=None)


class OnTwoMonitors(TwoMonitors, Driver):
    def test_the_work_area_is_around_both(self):
        self.monitors('1024/270x600/203+1024+100')
        self.open()
        self.assertEqual(self.ask('workarea', answer='area'), 'area 0 0 2048 768')

    def test_a_monitor_more_and_one_less_change_the_work_area(self):
        self.monitors(None)
        self.open()
        self.assertEqual(self.ask('workarea', answer='area'), 'area 0 0 1024 768')
        self.monitors('1024/270x768/203+1024+0')
        self.expect('workarea')
        wait_for(lambda: self.ask('workarea', answer='area') == 'area 0 0 2048 768', 'both')
        self.monitors(None)
        wait_for(lambda: self.ask('workarea', answer='area') == 'area 0 0 1024 768', 'one')

    def test_a_window_that_neither_shows_comes_to_the_nearer_one(self):
        self.monitors('1024/270x400/106+1024+368')
        self.probe_lines = self.start_lines(self.probe, 1)
        self.probe_lines.expect('ready')
        # Above the right one, 258 away; the left one is 376 away.
        self.ask('show', 1400, 50)
        said = self.probe_lines.heard + [self.probe_lines.expect('moved')]
        self.assertIn('moved 1400 368', said)
        window = self.display.window('Probe � title')
        self.assertEqual(self.display.geometry(window), (1400, 368, WIDTH, HEIGHT))

    def test_a_window_comes_back_whole_and_goes_on_when_its_monitor_goes(self):
        self.open(1200, 300)
        self.monitors(None)
        self.expect(f'moved {1024 - WIDTH} 300')
        wait_for(lambda: self.display.geometry(self.window)[:2] == (1024 - WIDTH, 300), 'its place')
        self.ask('pixel', 10, 10, 0x0000FF)
        wait_for(lambda: self.display.pixel(1024 - WIDTH + 10, 310) == (255, 0, 0),
                 'the change')

    def test_a_window_that_a_monitor_goes_from_under_comes_back_whole(self):
        self.open(1024 - WIDTH + 40, 300)
        self.said_until_now()
        self.monitors(None)
        self.expect(f'moved {1024 - WIDTH} 300')

    def test_a_window_on_the_other_monitor_stays(self):
        self.open(-40, 690)
        self.monitors(None)
        self.expect('workarea')
        self.ask('wait', 300, answer='woke')
        self.assertNotIn('moved', ' '.join(self.probe_lines.heard + self.said_until_now()))
        self.assertEqual(self.display.geometry(self.window), (-40, 690, WIDTH, HEIGHT))


class OnAScreenThatShrinks(Unmanaged, Driver):
    def setUp(self):
        super().setUp()
        self.display.run('xrandr', '--newmode', 'small', '38.25', '800', '832', '912', '1024',
                         '600', '603', '607', '624', check=False)
        self.display.run('xrandr', '--addmode', 'screen', 'small')

    def shrink(self):
        self.display.run('xrandr', '--output', 'screen', '--mode', 'small')
        self.addCleanup(self.display.run, 'xrandr', '--output', 'screen', '--mode', '1024x768')

    def test_a_window_that_would_be_cut_off_comes_back_whole(self):
        self.open(750, 570)
        self.shrink()
        self.expect(f'moved {800 - WIDTH} {600 - HEIGHT}')
        wait_for(lambda: self.display.geometry(self.window)[:2] == (800 - WIDTH, 600 - HEIGHT),
                 'the place')

    def test_one_that_it_still_shows_as_before_stays(self):
        self.open(-40, 300)
        self.shrink()
        self.expect('workarea')
        self.ask('wait', 300, answer='woke')
        self.assertNotIn('moved', ' '.join(self.probe_lines.heard + self.said_until_now()))


class OnAnOddScreen(Driver):
    """With panels whose edges lie between two pixels of a scaled window."""

    @staticmethod
    def make_display():
        return Display((1023, 767))

    def setUp(self):
        super().setUp()
        self.display.point_at(1000, 740)

    def area(self, scale):
        """Beside a panel 31 wide at the left and below one 25 high at the top."""
        self.open(100, 80, scale=scale)
        panel = self.start_drag(400, 300, 'text/plain', '00', 'copy')
        panel.expect('ready')
        self.display.run('xprop', '-id', str(self.display.window('Source')), '-f',
                         '_NET_WM_STRUT', '32c', '-set', '_NET_WM_STRUT', '31, 0, 25, 0')
        self.expect('workarea')
        wait_for(lambda: self.ask('workarea', answer='area').split()[1] != '0', 'the panel')
        return self.ask('workarea', answer='area')

    def test_a_work_area_holds_whole_pixels_only(self):
        # 31 / 2 = 15.5 and 25 / 2 = 12.5 go up, 1023 / 2 = 511.5 and 767 / 2 = 383.5 down.
        self.assertEqual(self.area(2), 'area 16 13 511 383')

    def test_nor_at_a_broken_scale(self):
        # 20.67 and 16.67 go up, 682 is whole, 511.33 goes down.
        self.assertEqual(self.area(1.5), 'area 21 17 682 511')

    def test_a_place_between_two_pixels_is_answered_by_the_nearest(self):
        self.open(100, 80, scale=1.5)
        self.display.tool('windowmove', self.window, 445, 332)
        self.expect('moved 297 221')  # 296.67 and 221.33
        # What lies under the pointer counts from there.
        self.display.point_at(445 + 30, 332 + 45)
        self.expect(f'pointer {297 + 20} {221 + 30} ')

    def test_the_desktop_may_move_it_back_to_a_place_of_its_own(self):
        self.open(100, 80, scale=1.5)
        self.ask('move', 120, 90, 140, 100)
        wait_for(lambda: self.display.geometry(self.window)[:2] == (210, 150), 'its place')
        self.display.tool('windowmove', self.window, 180, 135)
        self.expect('moved 120 90')
        self.display.tool('windowmove', self.window, 210, 150)
        self.expect('moved 140 100')


class MinimisedByNobody:
    def test_the_window_is_as_it_was_after_half_a_second(self):
        self.open()
        self.ask('minimise', 1)
        self.ask('pixel', 10, 10, 0x0000FF)
        self.expect('restored')
        # The change that was made meanwhile, and one after.
        left, top = self.place
        wait_for(lambda: self.display.pixel(left + 10, top + 10) == (255, 0, 0),
                 'the change')
        self.ask('pixel', 11, 10, 0x00FF00)
        wait_for(lambda: self.display.pixel(left + 11, top + 10) == (0, 255, 0),
                 'another')


class WithoutAManager(Unmanaged, MinimisedByNobody, Driver):
    pass


class UnderAManagerThatFrames(Framing, MinimisedByNobody, Driver):
    def test_it_stands_where_it_was_put_frame_or_not(self):
        self.open(300, 260)
        wait_for(lambda: self.display.geometry(self.window) == (300, 260, WIDTH, HEIGHT),
                 'its place')
        self.assertNotIn('moved', ' '.join(self.said_until_now()))

    def test_only_the_frame_is_corrected(self):
        self.open(300, 260)
        wait_for(lambda: self.display.geometry(self.window)[:2] == (300, 260), 'its place')
        self.display.tool('windowmove', self.window, 302, 278)
        self.expect('moved 302 278')
        self.assertEqual(self.display.geometry(self.window)[:2], (302, 278))


class UnderAManager(Driver):
    def test_a_window_that_the_desktop_minimised_stays_so(self):
        self.open()
        self.ask('minimise', 1)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        self.ask('wait', 900, answer='woke')
        self.assertNotIn('restored', self.probe_lines.heard + self.said_until_now())
        self.assertTrue(self.display.is_iconic(self.window))
        self.ask('minimise', 0)
        left, top = self.place
        wait_for(lambda: self.display.pixel(left + 9, top + 9) == colour(9, 9), 'it')


class LostReleases(Driver):
    def press(self):
        self.open()
        self.display.tool('mousemove', 250, 170, 'mousedown', 1)
        self.addCleanup(self.display.tool, 'mouseup', 1)
        self.expect('press 250 170 1 0')

    def held_for(self, milliseconds):
        self.ask('wait', milliseconds, answer='woke')
        self.assertNotIn('release', ' '.join(self.probe_lines.heard + self.said_until_now()))

    def test_a_button_let_go_while_the_window_is_minimised(self):
        self.press()
        self.display.tool('windowminimize', self.window)
        self.expect('minimised')
        self.held_for(300)
        self.display.tool('mousemove', 700, 500)
        self.held_for(200)
        self.display.tool('mouseup', 1)
        self.expect('release 700 500 1 0')

    def test_each_button_by_itself_and_with_its_modifiers(self):
        self.press()
        self.display.tool('mousedown', 3)
        self.expect('press 250 170 2 0')
        self.display.tool('windowminimize', self.window)
        self.expect('minimised')
        self.display.tool('mouseup', 1)
        self.expect('release 250 170 1 0')
        self.held_for(200)
        self.display.tool('keydown', 'ctrl', 'mouseup', 3, 'sleep', '0.3', 'keyup', 'ctrl')
        self.expect('release 250 170 2 2')

    def test_a_button_that_is_held_still_is_no_release(self):
        self.press()
        self.held_for(400)
        self.display.tool('mouseup', 1)
        self.expect('release 250 170 1 0')
        self.assertNotIn('release', ' '.join(self.said_until_now()))


class PlayerOnTwoMonitors(TwoMonitors, Player):
    def drag_by(self, x, y):
        self.drag(BACKGROUND, (BACKGROUND[0] + x, BACKGROUND[1] + y))
        wait_for(lambda: self.display.geometry(self.window)[:2] == (LEFT + x, TOP + y), 'its place')
        self.display.tool('mouseup', 1)

    def test_it_is_dragged_on_to_the_second(self):
        self.open()
        self.drag_by(1200, 100)
        place = (str(LEFT + 1200), str(TOP + 100))
        wait_for(lambda: (self.setting('X'), self.setting('Y')) == place, 'the settings')

    def test_let_go_where_neither_shows_it_it_comes_back(self):
        self.monitors('1024/270x400/106+1024+368')
        self.open()
        self.drag_by(1300, -70)
        # Above the second one: 20 + 277 is less than 368.
        wait_for(lambda: self.display.geometry(self.window)[:2] == (LEFT + 1300, 368), 'its place')
        self.player.terminate()
        self.end_of(self.player)
        self.assertEqual((self.setting('X'), self.setting('Y')), (str(LEFT + 1300), '368'))


class PlayerKeepsPainting:
    """Where nobody minimises."""

    def test_it_goes_on_after_its_minimise_button(self):
        self.save_list(6)
        self.open()
        self.click(MINIMISE)
        # Longer than the desktop has time to answer; the title must move again after that.
        self.display.tool('sleep', 0.8)
        former = self.shown(TITLE).data
        wait_for(lambda: self.shown(TITLE).data != former, 'a title that moves')
        row = (LIST[0] + 150, LIST[1] + 3 * ROW + 4, 1, 1)
        former = self.shown(row).data
        self.click(self.row(3))
        wait_for(lambda: self.shown(row).data != former, 'a row that is selected')


class PlayerKeepsItsPlace:
    def test_where_the_desktop_put_it(self):
        self.open()
        self.display.tool('windowmove', self.window, 300, 200)
        for _ in range(3):
            wait_for(lambda: self.display.geometry(self.window)[:2] == (300, 200), 'the place')
            self.player.terminate()
            self.end_of(self.player)
            self.assertEqual((self.setting('X'), self.setting('Y')), ('300', '200'))
            self.open()


class PlayerWithoutAManager(Unmanaged, PlayerKeepsPainting, Player):
    pass


class PlayerUnderAManagerThatFrames(Framing, PlayerKeepsPainting, PlayerKeepsItsPlace, Player):
    def test_its_place_does_not_drift(self):
        for _ in range(3):
            self.open()
            wait_for(lambda: self.display.geometry(self.window)[:2] == (LEFT, TOP), 'its place')
            self.player.terminate()
            self.end_of(self.player)
            self.assertEqual((self.setting('X'), self.setting('Y')), (str(LEFT), str(TOP)))


class PlayerUnderAManager(PlayerKeepsItsPlace, Player):
    def test_its_minimise_button(self):
        self.open()
        self.click(MINIMISE)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        self.display.tool('sleep', 0.8)
        self.assertTrue(self.display.is_iconic(self.window))
        self.display.run('wmctrl', '-ia', str(self.window))
        wait_for(self.painted, 'the window')
        self.assertEqual(self.place, (LEFT, TOP, WIDE, TALL))
        former = self.shown(TITLE).data
        wait_for(lambda: self.shown(TITLE).data != former, 'a title that moves')

    def test_a_place_that_nobody_changed_is_not_written(self):
        os.remove(self.ini)
        self.open()
        self.player.terminate()
        self.end_of(self.player)
        self.assertIsNone(self.setting('X'))
        self.assertIsNone(self.setting('Y'))

    def test_a_row_pressed_while_the_window_goes_does_not_hold_the_list(self):
        self.save_list(40)
        self.open()
        rows = (LIST[0], LIST[1] + 8 * ROW, 150, 3 * ROW)
        former = self.shown(rows).data
        self.point_at(self.row(2))
        self.display.tool('mousedown', 1)
        self.minimise_and_let_go()
        wait_for(lambda: self.key('End') or self.shown(rows).data != former, 'the end of the list')

    def test_nor_does_a_thumb(self):
        self.save_list(100)
        self.open()
        rows = (LIST[0], LIST[1] + 2 * ROW, 150, 6 * ROW)
        former = self.shown(rows).data
        thumb = LIST[0] + LIST[2] - 6
        self.drag((thumb, LIST[1] + 8), (thumb, LIST[1] + 100))
        wait_for(lambda: self.shown(rows).data != former, 'another part of the list')
        self.minimise_and_let_go()
        wait_for(lambda: self.key('Home') or self.shown(rows).data == former, 'the first rows')

    def minimise_and_let_go(self):
        """The pointer stays away from the window, so that it cannot tell by a move what is held."""
        self.display.tool('windowminimize', self.window)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')
        self.display.tool('mousemove', 900, 700, 'mouseup', 1)
        self.display.run('wmctrl', '-ia', str(self.window))
        wait_for(self.painted, 'the window')


if __name__ == '__main__':
    main()
