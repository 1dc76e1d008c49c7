#!/usr/bin/env python3
"""System-wide keys of the finished program where a portal on the session bus binds them."""

import json
import os
import sys
from contextlib import contextmanager

from bus import SessionBus
from desktop import main, wait_for
from hotkeys import BOTH, DOWN_KEY, NEXT_KEY, HotKeys
from player import AT_REST

HERE = os.path.dirname(os.path.abspath(__file__))
TEN = [['Exit', 'F12'], ['Next', 'Page_Down'], ['Prev', 'Page_Up'], ['Stop', 'End'],
       ['Play', 'Insert'], ['Pause', 'Home'], ['StepBack', 'Left'], ['StepForw', 'Right'],
       ['VolUp', 'Up'], ['VolDown', 'Down']]


class Portal(HotKeys):
    """On a desktop where the X server sees only part of the keys."""

    def setUp(self):
        super().setUp()
        self.bus = SessionBus(self.environment)
        self.addCleanup(self.bus.end)
        self.environment.update(WAYLAND_DISPLAY='wayland-none',
                                DBUS_SESSION_BUS_ADDRESS=self.bus.address)

    def start_portal(self, *faults):
        portal = self.start_lines(sys.executable, os.path.join(HERE, 'portal.py'), *faults)
        portal.expect('ready')
        return portal

    def open_with(self, *faults):
        self.portal = self.start_portal(*faults)
        self.open_elsewhere()
        return self.portal

    def wait_for_portal_keys(self):
        wait_for(lambda: self.volume_falls_by(lambda: self.portal.ask('activate VolDown')),
                 'a key that works')

    @contextmanager
    def server_only(self):
        """For programs that are to take no notice of the portal."""
        here = self.environment
        self.environment = {key: value for key, value in here.items()
                            if key not in ('WAYLAND_DISPLAY', 'XDG_SESSION_TYPE')}
        yield
        self.environment = here

    def focus_elsewhere(self):
        with self.server_only():
            super().focus_elsewhere()

    def assert_server_keys_are_free(self):
        with self.server_only():
            other = self.other_client()
        self.assertEqual(self.grabs(other, DOWN_KEY), 'grabbed')
        other.end()

    def assert_has_none(self):
        """Neither from the portal nor from the server, and plays on."""
        self.assert_server_keys_are_free()
        self.portal.ask('activate VolDown')
        self.key('b')
        self.wait_for_title('b.wav')
        self.assertEqual(self.volume(), 90)

    def test_all_are_bound_at_once_under_their_names(self):
        portal = self.open_with()
        self.assertEqual(portal.expect('register'), 'register veldrin')
        portal.expect('session')
        bound = json.loads(portal.expect('bind').removeprefix('bind '))
        self.assertEqual(bound, [[name, name, f'CTRL+ALT+{key}'] for name, key in TEN])
        self.wait_for_portal_keys()
        for key, title in (('Next', 'b.wav'), ('Prev', 'a.wav'), ('Stop', AT_REST),
                           ('Play', 'a.wav')):
            portal.ask(f'activate {key}')
            self.wait_for_title(title)
        self.assert_server_keys_are_free()
        self.assertFalse(any(line.startswith('bind') for line in portal.heard))
        portal.ask('activate Exit')
        self.assertEqual(self.end_of(self.player), 0)
        portal.expect('closed')

    def test_portals_without_the_interface_for_names(self):
        self.open_with('stranger').expect('bind')
        self.wait_for_portal_keys()

    def test_portals_that_choose_the_paths_of_requests(self):
        self.open_with('old-path').expect('bind')
        self.wait_for_portal_keys()

    def test_portals_that_respond_before_they_answer(self):
        self.open_with('early').expect('bind')
        self.wait_for_portal_keys()

    def test_signals_of_wrong_types_are_passed_over(self):
        self.open_with().expect('bind')
        self.wait_for_portal_keys()
        self.portal.ask('nonsense')
        self.wait_for_portal_keys()

    def test_refused_by_a_response(self):
        self.open_with('no-consent').expect('session')
        self.assert_has_none()

    def test_binding_refused(self):
        self.open_with('no-binding').expect('bind')
        self.assert_server_keys_are_free()
        self.key('b')
        self.wait_for_title('b.wav')

    def test_answers_that_are_none(self):
        for fault in ('wrong-types', 'wrong-handle', 'no-path'):
            with self.subTest(fault):
                self.open_with(fault).expect('session')
                self.portal.ask('stray')
                self.assert_has_none()
                self.player.terminate()
                self.assertEqual(self.end_of(self.player), 0)
                self.portal.end()

    def test_a_portal_that_never_answers_is_waited_for_by_nobody(self):
        self.open_with('silent').expect('asked')
        self.key('b')
        self.wait_for_title('b.wav')
        self.player.terminate()
        self.assertEqual(self.end_of(self.player), 0)

    def test_the_server_as_the_last_resort(self):
        for faults in (['no-shortcuts'], ['no-session'], None):
            with self.subTest(faults):
                portal = self.start_portal(*faults) if faults else None
                self.open_elsewhere()
                self.wait_for_keys()
                self.player.terminate()
                self.assertEqual(self.end_of(self.player), 0)
                if portal:
                    portal.end()

    def test_without_a_bus(self):
        del self.environment['DBUS_SESSION_BUS_ADDRESS']
        self.open_elsewhere()
        self.wait_for_keys()

    def test_the_session_type_tells_as_well(self):
        del self.environment['WAYLAND_DISPLAY']
        self.environment['XDG_SESSION_TYPE'] = 'wayland'
        self.open_with().expect('bind')
        self.wait_for_portal_keys()

    def test_a_portal_that_comes_goes_and_comes_again(self):
        self.open_elsewhere()
        self.wait_for_keys()
        for _ in range(2):
            self.portal = self.start_portal()
            self.portal.expect('bind')
            self.wait_for_portal_keys()
            self.assert_server_keys_are_free()
            self.portal.end()
            self.wait_for_keys()

    def test_the_session_is_closed(self):
        self.open_with().expect('bind')
        self.wait_for_portal_keys()
        self.portal.ask('close')
        self.assert_key_is_gone()

    def assert_key_is_gone(self):
        volume = self.volume()
        self.portal.ask('activate VolDown')
        self.key('b')
        self.wait_for_title('b.wav')
        self.assertEqual(self.volume(), volume)

    def test_the_bus_ends(self):
        self.open_with().expect('bind')
        self.wait_for_portal_keys()
        self.bus.end()
        self.key('b')
        self.wait_for_title('b.wav')

    def test_keys_that_come_and_go_later(self):
        portal = self.portal = self.start_portal()
        probe = self.other_client()
        self.assertEqual(self.grabs(probe, NEXT_KEY, 1), 'grabbed')
        self.assertEqual(json.loads(portal.expect('bind').removeprefix('bind ')),
                         [['Key', 'Key', 'CTRL+ALT+Page_Down']])
        probe.ask(f'grab 2 {BOTH} {DOWN_KEY} Other', 'grabbed')
        portal.expect('closed')
        self.assertEqual(json.loads(portal.expect('bind').removeprefix('bind ')),
                         [['Key', 'Key', 'CTRL+ALT+Page_Down'],
                          ['Other', 'Other', 'CTRL+ALT+Down']])
        probe.ask('release 1')
        portal.ask('activate Key')
        portal.ask('activate Other')
        probe.expect('hotkey 2')
        self.assertNotIn('hotkey 1', probe.heard)


if __name__ == '__main__':
    main()
