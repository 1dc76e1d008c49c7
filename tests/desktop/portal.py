#!/usr/bin/env python3
"""A portal for global shortcuts, of the tests' own, on the session bus.

    portal.py [FAULT]

It says in lines what it is asked: "register ID", "session", "bind JSON" with what was to be bound
as [id, description, trigger], "closed". Lines on standard input: "activate ID", "close" (the
session), "nonsense" (signals of wrong types, of another session, of keys that nobody has bound),
and "stray" (a response to nobody's request); each is answered by "done".

FAULT: what it does wrong.
    stranger      does not know the interface for names
    no-shortcuts  nor that for shortcuts
    no-session    refuses the session by an error, or
    no-consent    by a response; or
    no-binding    refuses to bind
    wrong-types   its response is of other types
    wrong-handle  the session's handle is no path
    no-path       neither is that of its request
    silent        never answers
    old-path      requests have paths of its own choice
    early         the same, and it responds before it says which
"""

import json
import os
import sys

from gi.repository import Gio, GLib

NAME, PATH = 'org.freedesktop.portal.Desktop', '/org/freedesktop/portal/desktop'
INTERFACES = '''<node>
  <interface name="org.freedesktop.host.portal.Registry">
    <method name="Register">
      <arg type="s" direction="in"/><arg type="a{sv}" direction="in"/></method>
  </interface>
  <interface name="org.freedesktop.portal.GlobalShortcuts">
    <method name="CreateSession">
      <arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
    <method name="BindShortcuts">
      <arg type="o" direction="in"/><arg type="a(sa{sv})" direction="in"/>
      <arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
      <arg type="o" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.portal.Session"><method name="Close"/></interface>
</node>'''
PORTAL = 'org.freedesktop.portal.'
GRANTED, REFUSED = 0, 1


def say(*words):
    print(*words, flush=True)


class Portal:
    def __init__(self, fault):
        self.fault, self.session, self.client, self.requests = fault, None, None, 0
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.registry, self.shortcuts, self.session_interface = (
            Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces)
        if fault not in ('stranger', 'no-shortcuts'):
            self.bus.register_object(PATH, self.registry, self.asked)
        if fault != 'no-shortcuts':
            self.bus.register_object(PATH, self.shortcuts, self.asked)
        Gio.bus_own_name_on_connection(self.bus, NAME, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: say('ready'), None)
        GLib.unix_fd_add_full(0, 0, GLib.IOCondition.IN | GLib.IOCondition.HUP, self.told)

    def asked(self, _bus, sender, path, _interface, method, parameters, invocation):
        arguments = parameters.unpack()
        if self.fault == 'silent':
            say('asked')
        elif method == 'Register':
            say('register', arguments[0])
            invocation.return_value(None)
        elif method == 'CreateSession':
            self.create_session(sender, arguments[0], invocation)
        elif method == 'BindShortcuts':
            self.bind(sender, arguments, invocation)
        elif method == 'Close':
            say('closed' if path == self.session else f'closed {path}')
            self.session = None
            invocation.return_value(None)

    def create_session(self, sender, options, invocation):
        if self.fault == 'no-session':
            invocation.return_dbus_error(PORTAL + 'Error.NotAllowed', 'no')
            return
        self.client = sender
        self.session = self.child('session', sender, options['session_handle_token'])
        self.bus.register_object(self.session, self.session_interface, self.asked)
        handle = 'a handle' if self.fault == 'wrong-handle' else self.session
        say('session')
        code = REFUSED if self.fault == 'no-consent' else GRANTED
        self.respond(sender, options, invocation, code,
                     {'session_handle': GLib.Variant('s', handle)})

    def bind(self, sender, arguments, invocation):
        session, shortcuts, _parent, options = arguments
        bound = [[name, about.get('description'), about.get('preferred_trigger')]
                 for name, about in shortcuts]
        say('bind', json.dumps(bound))
        granted = session == self.session and self.fault != 'no-binding'
        self.respond(sender, options, invocation, GRANTED if granted else REFUSED,
                     {'shortcuts': GLib.Variant('a(sa{sv})', [
                         (name, {'description': GLib.Variant('s', name)})
                         for name, _about in shortcuts])})

    @staticmethod
    def child(kind, sender, token):
        return f'{PATH}/{kind}/{sender[1:].replace(".", "_")}/{token}'

    def respond(self, sender, options, invocation, code, results):
        self.requests += 1
        path = self.child('request', sender, options['handle_token'])
        if self.fault in ('old-path', 'early'):
            path = f'{PATH}/request/old{self.requests}'
        shown = '/' if self.fault == 'no-path' else path
        values = ('(s)', ('yes',)) if self.fault == 'wrong-types' else ('(ua{sv})', (code, results))
        if self.fault == 'early':
            self.emit(path, 'Request', 'Response', *values)
        invocation.return_value(GLib.Variant('(o)', (shown,)))
        if self.fault != 'early':
            self.emit(path, 'Request', 'Response', *values)

    def emit(self, path, interface, name, signature, values):
        self.bus.emit_signal(self.client, path, PORTAL + interface, name,
                             GLib.Variant(signature, values))

    def activate(self, key, session=None):
        self.emit(PATH, 'GlobalShortcuts', 'Activated', '(osta{sv})',
                  (session or self.session or '/', key, 1, {}))

    def nonsense(self):
        self.activate('Exit', PATH + '/session/another')
        self.activate('Quit')
        for signature, values in (('()', ()), ('(s)', ('Exit',)), ('(us)', (1, 'Exit')),
                                  ('(oo)', (self.session, '/Exit')), ('(o)', (self.session,)),
                                  ('(ov)', (self.session, GLib.Variant('s', 'Exit')))):
            self.emit(PATH, 'GlobalShortcuts', 'Activated', signature, values)
        self.stray()

    def stray(self):
        """A response that nobody waits for."""
        self.emit(PATH + '/request/nobody', 'Request', 'Response', '(ua{sv})',
                  (GRANTED, {'session_handle': GLib.Variant('s', '/a')}))

    def told(self, _descriptor, _condition):
        data = os.read(0, 4096).decode()
        if not data:
            loop.quit()
        for line in data.splitlines():
            command, _, rest = line.partition(' ')
            if command == 'activate':
                self.activate(rest)
            elif command == 'close':
                self.emit(self.session, 'Session', 'Closed', '(a{sv})', ({},))
            elif command == 'nonsense':
                self.nonsense()
            elif command == 'stray':
                self.stray()
            self.bus.flush_sync()
            say('done')
        return True


loop = GLib.MainLoop()
Portal(sys.argv[1] if len(sys.argv) > 1 else '')
loop.run()
