#!/usr/bin/env python3
"""The desktop's driver keeps to what platform/driver.h says of any driver, and lives within a program
that has an application object of its own."""

import subprocess
import unittest

from desktop import OnDisplay, main


class WithoutBus(OnDisplay):
    """The toolkit would start a bus, of which its library keeps some memory for ever."""

    def setUp(self):
        super().setUp()
        self.environment['DBUS_SESSION_BUS_ADDRESS'] = 'disabled:'


class Contract(WithoutBus):
    def kept(self, *words):
        """How many rules were tried. All of them are kept."""
        done = subprocess.run([self.conformance, *words], env=self.environment,
                              stdout=subprocess.PIPE, timeout=400, check=True)
        lines = done.stdout.decode().splitlines()
        self.assertEqual([line for line in lines if not line.startswith('kept ')], [])
        return len(lines)

    def test_every_rule_is_tried_and_kept(self):
        self.assertGreater(self.kept(), 40)

    def test_a_guest_counts_in_the_same_pixels_where_the_toolkits_are_larger(self):
        self.environment['QT_SCALE_FACTOR'] = '2'
        rules = ['input.grab', 'input.pointer', 'input.windows', 'pictures.shown', 'pictures.stands',
                 'windows.move']
        self.assertEqual(self.kept('guest', *rules), len(rules))


class Guest(WithoutBus):
    def start(self, *words):
        return self.start_lines(self.guest_program, *words)

    def play(self, lines):
        """A round in either loop: both windows live, also within a loop in the loop."""
        lines.expect('ready')
        self.display.window('Guest')
        self.display.window('Own')
        self.display.click(140, 130)
        lines.expect('press guest')
        self.display.click(650, 340)
        lines.expect('press own')
        self.display.click(140, 130, button=3)
        lines.expect('nested')
        self.display.click(650, 340)
        lines.expect('press own')
        self.display.click(140, 130)
        lines.expect('press guest')
        lines.expect('no more')
        self.assertEqual(self.display.pixel(150, 130), (255, 0, 0))
        lines.ask('end', 'both lived')
        lines.expect('nothing changed')

    def test_lives_in_a_program_with_either_loop(self):
        self.live_and_go()

    def test_lives_on_the_plainest_of_the_toolkits_loops(self):
        self.environment['QT_NO_GLIB'] = '1'
        self.live_and_go()

    def live_and_go(self):
        lines = self.start()
        self.play(lines)
        self.play(lines)
        lines.expect('alone')
        self.display.window('Own')
        self.display.click(650, 340)
        lines.expect('press own')
        self.display.run('wmctrl', '-c', 'Own')
        lines.expect('ended')

    def test_an_application_without_windows_will_not_do(self):
        self.assertEqual(self.start('core').line(), 'refused')


if __name__ == '__main__':
    main()
