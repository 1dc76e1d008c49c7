"""A client of players on a session bus: a panel, as it were."""

import gi  # noqa: F401
from gi.repository import Gio, GLib

from desktop import wait_for
from world import PATIENCE

NAME = 'org.mpris.MediaPlayer2.veldrin'
PATH = '/org/mpris/MediaPlayer2'
ROOT = 'org.mpris.MediaPlayer2'
PLAYER = 'org.mpris.MediaPlayer2.Player'
PROPERTIES = 'org.freedesktop.DBus.Properties'


def connect(address):
    flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
             Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


def turn():
    """Lets in what has come."""
    while GLib.MainContext.default().iteration(False):
        pass


class Client:
    def __init__(self, address, name=NAME):
        self.name = name
        self.bus = connect(address)
        self.changes = []  # names of properties with their values, as they were told
        self.jumps = []    # in microseconds
        self.bus.signal_subscribe(name, PROPERTIES, 'PropertiesChanged', PATH, None, 0,
                                  self.changed)
        self.bus.signal_subscribe(name, PLAYER, 'Seeked', PATH, None, 0,
                                  lambda *told: self.jumps.append(told[5].unpack()[0]))
        wait_for(lambda: name in self.names(), name)

    def names(self):
        answer = self.bus.call_sync('org.freedesktop.DBus', '/org/freedesktop/DBus',
                                    'org.freedesktop.DBus', 'ListNames', None, None, 0, -1, None)
        return [name for name in answer.unpack()[0] if name.startswith(ROOT)]

    def changed(self, *told):
        interface, values, invalidated = told[5].unpack()
        assert interface == PLAYER and invalidated == [] and values, told[5]
        self.changes.extend(values.items())

    def call(self, member, arguments=None, interface=PLAYER):
        return self.bus.call_sync(self.name, PATH, interface, member, arguments, None, 0,
                                  PATIENCE * 1000, None)

    def refused(self, *arguments, **options):
        """The name of the error that a call is answered with."""
        try:
            self.call(*arguments, **options)
        except GLib.Error as fault:
            return Gio.DBusError.get_remote_error(fault)
        return None

    def all(self, interface=PLAYER):
        """Properties as variants, so that they have their types."""
        table = self.call('GetAll', GLib.Variant('(s)', (interface,)), PROPERTIES)
        table = table.get_child_value(0)
        return {name: table.lookup_value(name, None) for name in table.unpack()}

    def get(self, name, interface=PLAYER):
        return self.call('Get', GLib.Variant('(ss)', (interface, name)), PROPERTIES).unpack()[0]

    def set(self, name, kind, value, interface=PLAYER):
        return self.refused('Set', GLib.Variant(
            '(ssv)', (interface, name, GLib.Variant(kind, value))), interface=PROPERTIES)

    def seek(self, microseconds):
        self.call('Seek', GLib.Variant('(x)', (microseconds,)))

    def set_position(self, item, microseconds):
        self.call('SetPosition', GLib.Variant('(ox)', (item, microseconds)))

    def told(self, name):
        """All values of a property that were told, in their order."""
        turn()
        return [value for told, value in self.changes if told == name]

    def wait_for(self, name, value):
        """For it to be told, and nothing after it."""
        wait_for(lambda: self.told(name)[-1:] == [value], f'{name} {value!r}')

    def wait_for_title(self, title):
        wait_for(lambda: [told['xesam:title'] for told in self.told('Metadata')
                          if 'xesam:title' in told][-1:] == [title], f'the title {title!r}')

    def wait_for_jump(self, microseconds):
        def came():
            turn()
            return self.jumps
        wait_for(came, 'a jump')
        assert self.jumps == [microseconds], self.jumps
        self.jumps = []


class Notifications:
    """What shows notifications on the desktop, as far as it is asked to."""

    DESCRIPTION = '''<node><interface name="org.freedesktop.Notifications"><method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/>
    <arg type="u" direction="out"/></method></interface></node>'''

    def __init__(self, address):
        self.shown = []  # what it replaces, the title, the text
        self.bus = connect(address)
        node = Gio.DBusNodeInfo.new_for_xml(self.DESCRIPTION)
        self.bus.register_object('/org/freedesktop/Notifications', node.interfaces[0], self.called,
                                 None, None)
        self.bus.call_sync('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus',
                           'RequestName', GLib.Variant('(su)', ('org.freedesktop.Notifications', 0)),
                           None, 0, -1, None)

    def called(self, _bus, _sender, _path, _interface, _method, arguments, answer):
        _, replaces, _, title, text, _, _, _ = arguments.unpack()
        self.shown.append((replaces, title, text))
        answer.return_value(GLib.Variant('(u)', (7,)))

    def wait_for(self, count):
        def came():
            turn()
            return len(self.shown) >= count
        wait_for(came, 'a notification')
        return self.shown
