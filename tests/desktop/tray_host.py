"""A watcher and host of status notifiers, on the session bus of the test. What happens goes to
standard output, a line each; commands come from standard input:

    activate | menu | second | scroll   calls that method of the newest item
    properties                          prints its properties, a line each, then "done"
    picture SIZE                        prints the icon of that size in hexadecimal
    hide | show                         the host goes or comes, the watcher stays

    tray_host.py [rubbish | error | silent | nohost]    how the watcher answers
"""

import sys

import gi  # noqa: F401
from gi.repository import Gio, GLib

WATCHER = 'org.kde.StatusNotifierWatcher'
ITEM = 'org.kde.StatusNotifierItem'
DESCRIPTION = '''<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<signal name="StatusNotifierHostRegistered"/><signal name="StatusNotifierHostUnregistered"/>
</interface></node>'''
# A watcher that is of another mind on what it holds.
RUBBISH = DESCRIPTION.replace('type="b"', 'type="a{sv}"')


def say(*words):
    print(*words, flush=True)


class Host:
    def __init__(self, manner):
        self.manner = manner
        self.hosted = manner != 'nohost'
        self.items = []
        self.watches = {}
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        node = Gio.DBusNodeInfo.new_for_xml(RUBBISH if manner == 'rubbish' else DESCRIPTION)
        self.bus.register_object('/StatusNotifierWatcher', node.interfaces[0], self.called,
                                 self.asked, None)
        self.bus.signal_subscribe(None, ITEM, None, None, None, 0, self.heard)
        Gio.bus_own_name_on_connection(self.bus, WATCHER, 0, lambda *_: say('ready'), None)

    def called(self, _bus, sender, _path, _interface, method, arguments, answer):
        if self.manner == 'silent':
            return
        if self.manner == 'error':
            answer.return_dbus_error('org.example.Error', 'no')
            return
        item, = arguments.unpack()
        say('registered', item)
        self.items.append((sender, item))
        self.watches[item] = Gio.bus_watch_name_on_connection(
            self.bus, item, 0, None, lambda *_: self.gone(item))
        answer.return_value(None)

    def gone(self, item):
        say('gone', item)
        self.items = [one for one in self.items if one[1] != item]
        Gio.bus_unwatch_name(self.watches.pop(item))

    def asked(self, *_):
        if self.manner == 'rubbish':
            return GLib.Variant('a{sv}', {'x': GLib.Variant('s', 'y')})
        return GLib.Variant('b', self.hosted)

    def heard(self, _bus, sender, path, _interface, signal, _arguments):
        say('signal', path, signal)

    def ask(self, interface, method, arguments):
        return self.bus.call_sync(self.items[-1][1], '/StatusNotifierItem', interface, method,
                                  arguments, None, 0, 5000, None)

    def properties(self):
        return self.ask('org.freedesktop.DBus.Properties', 'GetAll',
                        GLib.Variant('(s)', (ITEM,))).unpack()[0]

    def change_host(self, hosted):
        self.hosted = hosted
        signal = 'StatusNotifierHost' + ('Registered' if hosted else 'Unregistered')
        self.bus.emit_signal(None, '/StatusNotifierWatcher', WATCHER, signal, None)

    def obey(self, words):
        place = GLib.Variant('(ii)', (500, 300))
        methods = {'activate': ('Activate', place), 'menu': ('ContextMenu', place),
                   'second': ('SecondaryActivate', place),
                   'scroll': ('Scroll', GLib.Variant('(is)', (120, 'vertical')))}
        if words[0] in methods:
            self.ask(ITEM, *methods[words[0]])
        elif words[0] == 'properties':
            for name, value in sorted(self.properties().items()):
                say(name, [picture[:2] for picture in value] if name == 'IconPixmap' else value)
        elif words[0] == 'picture':
            found = [one for one in self.properties()['IconPixmap'] if one[0] == int(words[1])]
            say('picture', bytes(found[0][2]).hex())
        else:
            self.change_host(words[0] == 'show')
        say('done')


def main():
    host = Host(sys.argv[1] if len(sys.argv) > 1 else '')
    loop = GLib.MainLoop()

    def read(*_):
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return False
        try:
            host.obey(line.split())
        except (GLib.Error, LookupError) as fault:
            say('failed', fault)
        return True

    GLib.io_add_watch(sys.stdin.fileno(), GLib.IOCondition.IN | GLib.IOCondition.HUP, read)
    loop.run()


main()
