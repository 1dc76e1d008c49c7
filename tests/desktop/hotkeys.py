"""What the tests of system-wide keys share: the player while another window has the focus, and
another client that takes keys."""

import os
import time

from desktop import Display, wait_for
from player import Player
from world import World

NEXT_KEY, DOWN_KEY, BOTH = 34, 40, 3


class HotKeys(Player):
    """Another window has the focus."""

    @staticmethod
    def make_display():
        # By itself this window manager has the arrows with Ctrl and Alt.
        path = os.path.join(World.shared, 'manager.xml')
        with open(path, 'w') as file:
            file.write('<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard/>'
                       '</openbox_config>')
        return Display(manager=('openbox', '--sm-disable', '--config-file', path))

    def setUp(self):
        super().setUp()
        self.songs('a', 'b', 'c', 'd', 'e')

    def press(self, *keys):
        self.display.tool('key', *(f'ctrl+alt+{key}' for key in keys))

    def give_function_keys(self):
        """With Ctrl and Alt the server keeps them for itself: they change its console."""
        self.display.layout('-option', 'srvrkeys:none')
        self.addCleanup(self.display.layout, '-option', '')

    def focus_elsewhere(self):
        source = self.start_drag(600, 500, 'text/plain', '00', 'copy')
        source.expect('ready')
        self.display.tool('windowfocus', '--sync', self.display.window('Source'))

    def volume(self):
        return int(self.setting('MusicVolume') or 0)

    def volume_falls_by(self, press):
        """Whether one more press does something; it waits a moment for that."""
        before = self.volume()
        press()
        end = time.monotonic() + 1
        while time.monotonic() < end:
            if self.volume() < before:
                return True
            time.sleep(0.02)
        return False

    def wait_for_keys(self):
        wait_for(lambda: self.volume_falls_by(lambda: self.press('Down')), 'a key that works')

    def open_elsewhere(self):
        self.write_settings(MusicVolume=90)
        self.open(self.music)
        self.wait_for_title('a.wav')
        self.focus_elsewhere()

    def other_client(self):
        """The driver by itself, which asks for keys from now on."""
        probe = self.start_lines(self.probe, 1)
        probe.expect('ready')
        probe.ask('wait 600', 'woke')
        return probe

    def grabs(self, probe, key, number=1):
        return probe.ask(f'grab {number} {BOTH} {key} Key', ('grabbed', 'not'))
