#!/usr/bin/env python3
"""The finished program under the desktop's player controls, on a bus of the test's own."""

import os
import socket
import struct
import subprocess
import urllib.parse

from gi.repository import GLib

from desktop import main, wait_for
from mpris_client import NAME, PATH, PLAYER, ROOT, Client, Notifications, turn
from player import NEXT, PAUSE, PLAY, SEEK, STOP, VOLUME
from tray_player import Trays
from world import PATIENCE, tone

SECOND = 1_000_000
NO_ITEM = '/org/mpris/MediaPlayer2/TrackList/NoTrack'
PNG = b'\x89PNG\r\n\x1a\n' + bytes(range(256)) * 100
ERRORS = 'org.freedesktop.DBus.Error.'


def put_picture(path, picture, kind=b'image/png'):
    """Into a FLAC file, behind its first block."""
    with open(path, 'rb') as file:
        data = bytearray(file.read())
    assert data[:4] == b'fLaC' and data[4] == 0
    body = struct.pack('>II', 3, len(kind)) + kind + bytes(20) + struct.pack('>I', len(picture))
    body += picture
    block = b'\x06' + len(body).to_bytes(3, 'big') + body
    at = 8 + int.from_bytes(data[5:8], 'big')
    with open(path, 'wb') as file:
        file.write(data[:at] + block + data[at:])


class Mpris(Trays):
    def setUp(self):
        super().setUp()
        self.write_settings()
        self.bus = self.start_bus()

    def play(self, *arguments):
        self.open(*arguments)
        return Client(self.bus.address)

    def play_songs(self, *names, options=()):
        self.songs(*names)
        client = self.play(*options, *(self.at(name + '.wav') for name in names))
        wait_for(lambda: client.get('CanGoNext') == (len(names) > 1), 'the list')
        self.assertEqual(client.get('Metadata')['xesam:title'], names[0] + '.wav')
        return client

    def test_properties_have_the_types_of_the_interface(self):
        song = self.at('s\u00fc\u00df 100%.flac')
        tone(song, seconds=40, title='A <Title>', artist='An Artist', album='An Album')
        put_picture(song, PNG)
        client = self.play(song)
        properties = client.all()
        metadata = properties.pop('Metadata')
        position = properties.pop('Position')
        self.assertEqual({name: (value.get_type_string(), value.unpack())
                          for name, value in properties.items()}, {
            'PlaybackStatus': ('s', 'Playing'), 'LoopStatus': ('s', 'None'), 'Rate': ('d', 1.0),
            'Shuffle': ('b', False), 'Volume': ('d', 0.8), 'MinimumRate': ('d', 0.5),
            'MaximumRate': ('d', 1.5), 'CanGoNext': ('b', False), 'CanGoPrevious': ('b', False),
            'CanPlay': ('b', True), 'CanPause': ('b', True), 'CanSeek': ('b', True),
            'CanControl': ('b', True)})
        self.assertEqual(position.get_type_string(), 'x')
        self.assertIn(position.unpack(), range(0, 40 * SECOND))
        self.assertEqual(metadata.get_type_string(), 'a{sv}')
        types = {name: metadata.lookup_value(name, None).get_type_string()
                 for name in metadata.unpack()}
        self.assertEqual(types, {'mpris:trackid': 'o', 'mpris:length': 'x', 'xesam:title': 's',
                                 'xesam:artist': 'as', 'xesam:album': 's', 'xesam:url': 's',
                                 'mpris:artUrl': 's'})
        item = metadata.unpack()
        self.assertNotEqual(item['mpris:trackid'], NO_ITEM)
        self.assertEqual((item['mpris:length'], item['xesam:title'], item['xesam:artist'],
                          item['xesam:album']),
                         (40 * SECOND, 'A <Title>', ['An Artist'], 'An Album'))
        self.assertEqual(item['xesam:url'],
                         'file://' + urllib.parse.quote(song, safe='/-._~'))
        with open(urllib.parse.unquote(item['mpris:artUrl'][len('file://'):]), 'rb') as file:
            self.assertEqual(file.read(), PNG)
        self.check_root(client)

    def ask(self, *arguments):
        subprocess.run([self.program, *arguments], env=self.environment, timeout=PATIENCE,
                       check=True)

    def check_root(self, client):
        root = {name: (value.get_type_string(), value.unpack())
                for name, value in client.all(ROOT).items()}
        self.assertIn('audio/flac', root.pop('SupportedMimeTypes')[1])
        self.assertEqual(root, {
            'CanQuit': ('b', True), 'CanRaise': ('b', True), 'CanSetFullscreen': ('b', False),
            'Fullscreen': ('b', False), 'HasTrackList': ('b', False),
            'Identity': ('s', 'Veldrin'), 'DesktopEntry': ('s', 'veldrin'),
            'SupportedUriSchemes': ('as', ['file'])})
        seen = self.display.run('gdbus', 'introspect', '--address', self.bus.address, '--dest',
                                NAME, '--object-path', PATH)
        for member in ('SetPosition(in  o TrackId', 'readwrite s LoopStatus', 'Seeked(x',
                       'readonly a{sv} Metadata', 'Raise();', 'Identity', 'GetAll('):
            self.assertIn(member, seen)

    def test_what_is_asked_is_done_and_told(self):
        client = self.play_songs('a', 'b', 'c')
        for check in (self.check_transport, self.check_positions,
                      self.check_properties_that_are_set):
            check(client)

    def check_transport(self, client):
        first = client.get('Metadata')
        client.call('Play')  # does nothing, since it plays
        client.call('PlayPause')
        self.assertEqual(client.get('PlaybackStatus'), 'Paused')
        client.call('Pause')
        client.call('Play')
        self.assertEqual(client.get('PlaybackStatus'), 'Playing')
        client.call('Pause')
        client.call('Next')
        second = client.get('Metadata')
        self.assertEqual(second['xesam:title'], 'b.wav')
        self.assertNotEqual(second['mpris:trackid'], first['mpris:trackid'])
        self.wait_for_title(self.at('b.wav'))
        client.call('Previous')
        client.wait_for_title('a.wav')
        client.call('Stop')
        client.wait_for('PlaybackStatus', 'Stopped')
        self.wait_for_title('Veldrin v1.1')
        self.assertEqual(client.told('PlaybackStatus'),
                         ['Paused', 'Playing', 'Paused', 'Playing', 'Stopped'])
        self.assertEqual((client.get('Position'), client.get('CanPlay'), client.get('CanSeek')),
                         (0, True, False))
        self.assertEqual(client.get('Metadata')['xesam:title'], 'a.wav')
        client.call('PlayPause')
        client.wait_for('PlaybackStatus', 'Playing')
        client.wait_for_jump(0)  # the same row anew
        self.assertEqual(client.refused('Dance'), ERRORS + 'UnknownMethod')

    def check_positions(self, client):
        item = client.get('Metadata')['mpris:trackid']
        client.call('Pause')
        client.set_position(item, 30 * SECOND)
        client.wait_for_jump(30 * SECOND)
        self.assertEqual(client.get('Position'), 30 * SECOND)
        client.seek(-10 * SECOND)
        client.wait_for_jump(20 * SECOND)
        client.set_position(item, 40 * SECOND + 1)
        client.set_position(item, -1)
        client.set_position('/veldrin/item/999', 5 * SECOND)
        self.assertEqual(client.get('Position'), 20 * SECOND)
        client.seek(-30 * SECOND)
        client.wait_for_jump(0)
        self.assertEqual(client.get('PlaybackStatus'), 'Paused')
        client.seek(2 ** 63 - 1)
        client.wait_for_title('b.wav')
        client.set_position(item, 5 * SECOND)  # of the former
        self.assertLess(client.get('Position'), 5 * SECOND)
        client.seek(-2 ** 63)
        client.wait_for_jump(0)
        self.assertEqual(client.refused('Seek'), ERRORS + 'InvalidArgs')

    def check_properties_that_are_set(self, client):
        for name, kind, value, told in (('Volume', 'd', 0.25, 0.25), ('Volume', 'd', -3.0, 0.0),
                                        ('Volume', 'd', 7.0, 1.0), ('Shuffle', 'b', True, True),
                                        ('LoopStatus', 's', 'Playlist', 'Playlist'),
                                        ('LoopStatus', 's', 'Track', 'Track'),
                                        ('LoopStatus', 's', 'None', 'None'),
                                        ('Rate', 'd', 1.25, 1.25), ('Rate', 'd', 9.0, 1.5)):
            self.assertIsNone(client.set(name, kind, value))
            self.assertEqual(client.get(name), told)
            client.wait_for(name, told)
        self.assertIsNone(client.set('Rate', 'd', 0.0))
        self.assertEqual(client.get('PlaybackStatus'), 'Paused')
        self.assertEqual([self.setting(key) for key in ('MusicVolume', 'Random', 'RepeatItem',
                                                        'RepeatList', 'Effect_Tempo')],
                         ['100', 'True', 'False', 'False', '100'])
        for name, kind, value, error in (('Volume', 's', 'loud', 'InvalidArgs'),
                                         ('Volume', 'd', float('nan'), 'InvalidArgs'),
                                         ('LoopStatus', 's', 'Always', 'InvalidArgs'),
                                         ('Shuffle', 'i', 1, 'InvalidArgs'),
                                         ('Position', 'x', 1, 'PropertyReadOnly'),
                                         ('Nothing', 'x', 1, 'UnknownProperty')):
            self.assertEqual(client.set(name, kind, value), ERRORS + error)
        self.assertEqual(client.set('Identity', 's', 'x', ROOT), ERRORS + 'PropertyReadOnly')

    def test_what_the_user_does_in_the_window_is_told(self):
        client = self.play_songs('a', 'b')
        turn()
        client.changes.clear()
        self.click(PAUSE)
        client.wait_for('PlaybackStatus', 'Paused')
        self.click(PAUSE)
        client.wait_for('PlaybackStatus', 'Playing')
        self.key('KP_Add')
        client.wait_for('Volume', 0.85)
        self.click((SEEK[0] + SEEK[2] // 2, SEEK[1] + SEEK[3] // 2))
        wait_for(lambda: turn() or client.jumps, 'a jump')
        self.assertEqual(len(client.jumps), 1)
        self.assertAlmostEqual(client.jumps[0], 20 * SECOND, delta=2 * SECOND)
        self.assertAlmostEqual(client.get('Position'), client.jumps[0], delta=5 * SECOND)
        self.assertEqual({name for name, _ in client.changes}, {'PlaybackStatus', 'Volume'})
        client.jumps.clear()
        self.click(PLAY)
        client.wait_for_jump(0)
        self.click(NEXT)
        client.wait_for_title('b.wav')
        client.wait_for('CanGoPrevious', True)
        self.assertEqual(client.told('CanGoNext'), [False])
        self.ask('--command', 'kPRpP')
        client.wait_for('LoopStatus', 'Playlist')
        client.wait_for('CanGoNext', True)
        self.click(STOP)
        client.wait_for('CanSeek', False)
        self.ask('--command', 'kRAll')
        client.wait_for('CanPlay', False)
        self.assertEqual(client.get('Metadata'), {'mpris:trackid': NO_ITEM})
        self.assertEqual(client.jumps, [])

    def test_addresses_windows_and_the_end(self):
        client = self.play_songs('a')

        def opens(address):
            return client.refused('OpenUri', GLib.Variant('(s)', (address,)))
        odd = os.path.join(self.music.encode(), b'\xe9 #%41?"\n.wav')
        tone(odd, seconds=40)
        for address in ('http://localhost/a.wav', 'file://elsewhere/a.wav', self.at('a.wav'),
                        'file://' + self.at('none.wav'), 'file:///%00', ''):
            self.assertEqual(opens(address), ERRORS + 'InvalidArgs')
        self.assertIsNone(opens('file://' + urllib.parse.quote(odd) + '?a#b'))
        wait_for(lambda: client.get('Metadata')['xesam:url'] ==
                 'file://' + urllib.parse.quote(odd, safe='/-._~'), 'the odd one')
        os.makedirs(self.at('folder/below'))
        os.link(odd, self.at('folder/below/deep.wav'))
        self.assertIsNone(opens('file://' + self.at('folder/')))
        client.wait_for_title('deep.wav')
        with open(self.at('list.m3u'), 'w') as file:
            file.write('a.wav\n')
        self.assertIsNone(opens('file://' + self.at('list.m3u')))
        client.wait_for_title('a.wav')
        self.display.tool('windowminimize', self.window)
        wait_for(self.is_iconic, 'the window minimised')
        client.call('Raise', interface=ROOT)
        self.wait_for_screen()
        client.call('Quit', interface=ROOT)
        self.assertEqual(self.player.wait(PATIENCE), 0)
        self.assertEqual(client.names(), [])

    def test_hidden_in_the_tray_it_tells_of_items_and_comes_back(self):
        self.write_settings(HideInSystray='True')
        shown = Notifications(self.bus.address)
        host = self.start_host()
        tone(self.at('b.flac'), title='<b>& Co', artist='One & Two', album='Three')
        self.songs('a', 'c')
        client = self.play('--notify', *(self.at(name) for name in ('a.wav', 'b.flac', 'c.wav')))
        wait_for(lambda: client.get('CanGoNext'), 'the list')
        self.minimise()
        host.expect('registered')
        self.wait_for_tray()
        self.assertEqual(shown.shown, [])
        client.call('Next')
        self.assertEqual(shown.wait_for(1), [(0, '<b>& Co', 'One &amp; Two\nThree')])
        client.call('Next')
        self.assertEqual(shown.wait_for(2)[1], (7, 'c.wav', ''))
        client.call('Raise', interface=ROOT)
        self.wait_for_screen()
        client.call('Previous')
        client.wait_for_title('<b>& Co')
        self.assertEqual(len(shown.shown), 2)

    def test_two_players(self):
        client = self.play_songs('a')
        first = self.player
        other = Client.__new__(Client)
        self.player = None
        self.open('--dir', os.path.join(self.folder, 'other'), self.at('a.wav'))
        second = f'{NAME}.instance{self.player.pid}'
        other.__init__(self.bus.address, second)
        other.call('Pause')
        self.assertEqual(other.get('PlaybackStatus'), 'Paused')
        self.assertEqual(client.get('PlaybackStatus'), 'Playing')
        client.call('Quit', interface=ROOT)
        first.wait(PATIENCE)
        self.assertEqual(other.names(), [second])

    def playerctl(self, *words):
        return self.display.run('env', f'DBUS_SESSION_BUS_ADDRESS={self.bus.address}', 'playerctl',
                                '-p', 'veldrin', *words).strip()

    def test_playerctl(self):
        tone(self.at('a.flac'), seconds=40, title='Title', artist='Artist', album='Album')
        self.songs('b')
        client = self.play(self.at('a.flac'), self.at('b.wav'))
        wait_for(lambda: client.get('CanGoNext'), 'the list')
        self.assertEqual(self.playerctl('metadata', '--format',
                                        '{{artist}}|{{album}}|{{title}}|{{duration(mpris:length)}}'),
                         'Artist|Album|Title|0:40')
        self.assertEqual(self.playerctl('status'), 'Playing')
        self.playerctl('pause')
        self.playerctl('position', '12')
        self.assertEqual(self.playerctl('position'), '12.000000')
        self.playerctl('volume', '0.4')
        self.playerctl('loop', 'Track')
        self.playerctl('shuffle', 'On')
        self.assertEqual((client.get('Volume'), client.get('LoopStatus'), client.get('Shuffle')),
                         (0.4, 'Track', True))
        self.playerctl('loop', 'None')
        self.playerctl('shuffle', 'Off')
        self.playerctl('next')
        client.wait_for_title('b.wav')
        self.playerctl('stop')
        self.assertEqual(self.playerctl('status'), 'Stopped')

    def test_a_bus_that_never_answers_holds_nothing_up(self):
        path = os.path.join(self.folder, 'bus')
        with socket.socket(socket.AF_UNIX) as deaf:
            deaf.bind(path)
            deaf.listen()
            self.environment['DBUS_SESSION_BUS_ADDRESS'] = 'unix:path=' + path
            self.songs('a')
            self.open(self.at('a.wav'))
            caller, _ = deaf.accept()  # it has been asked
            self.wait_for_title(self.at('a.wav'))
            self.click(STOP)
            self.wait_for_title('Veldrin v1.1')
            self.ask('--quit')
            self.assertEqual(self.player.wait(PATIENCE), 0)
            caller.close()


if __name__ == '__main__':
    main()
