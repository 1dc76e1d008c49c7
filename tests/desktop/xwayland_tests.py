#!/usr/bin/env python3
"""The finished program on a Wayland compositor, through its X server, with a real pointer and real
keys. The compositor here is one of the kind that puts windows where it likes to and tells little."""

import itertools
import re
import subprocess

from desktop import main, wait_for
from player import HEIGHT, LEFT, TOP, WIDTH, Player
from weston import OnWeston, Weston

EDGE = (1, 100)  # of the window: it is dragged by that
BODY = (0, 40, WIDTH, HEIGHT - 40)  # nothing in it moves by itself
MENU_BUTTON = (20, 17)
DESKTOP = (900, 650)
# Rows of the whole menu below its header of 13: "Playlist", "Settings", ... of 18 each.
SETTINGS = 1 + 13 + 18 + 9


class ThroughX(OnWeston, Player):
    @staticmethod
    def make_display():
        return Weston(on_x=True)

    def setUp(self):
        super().setUp()
        # Both ways are open, as on most desktops.
        self.environment.update(WAYLAND_DISPLAY=self.display.socket, XDG_SESSION_TYPE='wayland')

    def open(self, place=(LEFT, TOP, WIDTH, HEIGHT)):
        self.player = subprocess.Popen(
            [self.program, '--output', 'null', '--scale', '1'], env=self.environment,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.player.seen = b''
        self.running.append(self.player)
        # It comes before the compositor has placed it.
        wait_for(lambda: self.windows() == [place], f'the window at {place}')
        self.place = place
        wait_for(lambda: self.shown(BODY).has_colours(), 'the picture')
        self.look = self.shown(BODY).data

    def windows(self):
        """Places of the player's windows as the X server inside knows them, largest first. What
        cannot be seen of them is left out."""
        shown = []
        for line in self.window_info('-root', '-tree').splitlines():
            found = re.search(r'(0x[0-9a-f]+) .*\("veldrin" "veldrin"\) +'
                              r'(\d+)x(\d+)\+.* \+(-?\d+)\+(-?\d+)$', line)
            if found and 'IsViewable' in self.window_info('-id', found[1], '-stats'):
                width, height, left, top = (int(number) for number in found.groups()[1:])
                shown.append((left, top, width, height))
        return sorted(shown, key=lambda place: -place[2] * place[3])

    def window_info(self, *words):
        try:
            return self.display.run_inside('xwininfo', *words)
        except subprocess.CalledProcessError:
            return ''  # a window has gone since it was named

    def wait_for_windows(self, count):
        def find():
            found = self.windows()
            return len(found) == count and found

        return wait_for(find, f'{count} windows')

    def is_shown_at(self, place):
        """Whether that is where the compositor shows the window."""
        left, top = place[0] + BODY[0], place[1] + BODY[1]
        return self.display.part(left, top, *BODY[2:]).data == self.look

    def drag_window(self, across, down):
        """The compositor takes the drag over some time after it has begun. The pointer may have moved
        a little by then, and the window comes that much less far."""
        start = self.place
        self.point_at(EDGE)
        # Whatever comes of it, no other test drags on.
        self.addCleanup(self.display.tool, 'mouseup', 1)
        self.display.tool('mousedown', 1)

        steps = itertools.cycle((3, 0))

        def follows():
            step = next(steps)
            self.display.point_at(start[0] + EDGE[0] + step, start[1] + EDGE[1] + step)
            return start not in (self.windows() or [start])

        wait_for(follows, 'the compositor')
        self.display.point_at(start[0] + EDGE[0] + across, start[1] + EDGE[1] + down)
        wait_for(lambda: abs(self.wait_for_windows(1)[0][0] - start[0] - across) <= 3,
                 'the end of the way')
        self.display.tool('mouseup', 1)
        self.place = self.wait_for_windows(1)[0]
        self.assertLessEqual(abs(self.place[1] - start[1] - down), 3)
        self.assertEqual(self.place[2:], start[2:])

    def open_menu(self):
        self.click(MENU_BUTTON)
        return self.wait_for_windows(2)[1]

    def end(self):
        self.player.terminate()
        self.assertEqual((self.end_of(self.player), self.player.complaints), (0, b''))

    def test_a_drag_is_handed_over_and_the_place_is_kept(self):
        self.open()
        self.drag_window(150, 90)
        self.display.leave()
        wait_for(lambda: self.is_shown_at(self.place), 'the window where the server says')
        # It is let go: it stays when the pointer moves on, and the menu opens at the pointer.
        self.point_at((60, 120))
        left, top, width, _ = self.open_menu()
        self.assertEqual(top, self.place[1] + MENU_BUTTON[1])
        self.assertLessEqual(abs(left + width // 2 - self.place[0] - MENU_BUTTON[0]), 1)
        wait_for(lambda: self.windows()[:1] == [self.place], 'the window below it')
        self.display.click(*DESKTOP)
        self.wait_for_windows(1)
        # The compositor is known by now.
        self.drag_window(-40, 60)
        self.open_menu()  # by then it is noticed that the pointer has come back, and where
        self.display.click(*DESKTOP)
        self.wait_for_windows(1)
        self.end()
        place = self.place
        self.assertEqual((self.setting('X'), self.setting('Y')), tuple(map(str, place[:2])))
        for _ in range(2):
            self.open(place)
            self.point_at((60, 120))
            self.end()

    def test_a_menu_closes_by_a_press_on_the_desktop(self):
        self.open()
        left, top, width, _ = self.open_menu()
        self.display.point_at(left + 30, top + SETTINGS)
        self.wait_for_windows(3)
        self.display.click(*DESKTOP)
        self.wait_for_windows(1)
        # The keys are the window's again.
        self.display.tool('key', 'ctrl+r')
        wait_for(lambda: self.setting('Random') == 'True', 'the command')

    def test_the_pointer_chooses_a_command(self):
        self.open()
        left, top, width, _ = self.open_menu()
        self.display.point_at(left + 30, top + SETTINGS)
        submenu = [place for place in self.wait_for_windows(3)[1:] if place[1] != top][0]
        self.display.point_at(left + width - 4, top + SETTINGS)
        self.display.point_at(submenu[0] + 40, submenu[1] + 1 + 13 + 9)
        self.display.click(submenu[0] + 40, submenu[1] + 1 + 13 + 18 + 9)
        wait_for(lambda: self.setting('HideInSystray') == 'True', 'the command')
        self.wait_for_windows(1)

    def other_window(self):
        """One of the compositor's own, that takes the keyboard."""
        self.running.append(subprocess.Popen(['weston-simple-shm'], env=self.environment,
                                             stdout=subprocess.DEVNULL))
        wait_for(lambda: not self.has_keyboard(), 'the other window')

    def has_keyboard(self):
        """Whether any window on the X server inside has it."""
        active = self.display.run_inside('xprop', '-root', '_NET_ACTIVE_WINDOW')
        return 'window id # 0x0' not in active

    def test_a_menu_closes_when_another_window_takes_the_keyboard(self):
        self.open()
        self.open_menu()
        self.other_window()
        self.wait_for_windows(1)

    def test_a_window_that_is_asked_for_comes_to_the_front(self):
        probe = self.start_lines(self.probe, 1)
        probe.expect('ready')
        probe.ask('show 200 150')
        wait_for(self.has_keyboard, 'the keyboard')
        self.other_window()
        probe.ask('activate')
        wait_for(self.has_keyboard, 'the keyboard')
        self.display.tool('key', 'b')
        probe.expect('up 66')
        wait_for(lambda: self.windows() == [(200, 150, 100, 60)], 'the former place')


if __name__ == '__main__':
    main()
