"""The finished program with "Minimize in systray" on, and where it is to be found."""

import os
import sys

from bus import SessionBus
from desktop import wait_for
from player import HEIGHT, LEFT, TITLE, TOP, WIDTH, Player

HERE = os.path.dirname(os.path.abspath(__file__))
MINIMISE = (250, 17)
# In the popup, below its header of 13: "Show application", a separator, "Exit application".
SHOW = 1 + 13 + 9
EXIT = -1 - 9


class Trays(Player):
    def setUp(self):
        super().setUp()
        self.write_settings(HideInSystray='True')

    def tearDown(self):
        # Before its tray ends: without one the player shows its window again, and openbox keeps listing
        # a window that is destroyed just then. The next one of that number would never be shown.
        self.end_all()

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
        return self.window in self.display.listed()

    def is_iconic(self):
        return self.display.is_iconic(self.window)

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
        wait_for(lambda: self.display.known.focused() == self.window, 'the focus')
        former = self.shown(TITLE).data
        wait_for(lambda: self.shown(TITLE).data != former, 'a title that moves')

    def wait_for_popup(self):
        popup = wait_for(lambda: self.display.windows_of(self.player), 'the popup')[0]
        place = self.display.geometry(popup)
        wait_for(lambda: self.display.pixel(*place[:2]) == (0, 0, 128), 'its frame')
        return place

    def wait_for_no_popup(self):
        wait_for(lambda: not self.display.windows_of(self.player), 'no popup')

    def choose(self, row):
        left, top, _, height = self.wait_for_popup()
        self.display.click(left + 40, top + (row if row > 0 else height + row))

    def minimise(self):
        self.click(MINIMISE)
        self.display.point_at(500, 400)
