"""The finished program in the middle of something: a menu is open, a button is held, files are read.
From each of these situations it has to find its way out when it is told to end, or is left alone by
the display."""

import json
import os
import signal
import sys

from desktop import wait_for
from player import LIST, PLAY, ROW, SEEK, TITLE, VOLUME, Player
from world import tone

MENU_BUTTON = (20, 17)
ROWS = 60
THUMB = (LIST[0] + LIST[2] - 6, LIST[1] + 8)  # with the first rows on show


class Situations(Player):
    """A list of ROWS saved rows and one that was added since."""

    def setUp(self):
        super().setUp()
        self.song, self.added = self.at('a.wav'), self.at('b.wav')
        tone(self.song, seconds=40)
        os.link(self.song, self.added)
        manager = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'session_manager.py')
        self.manager = self.start_lines(sys.executable, manager)
        self.environment['SESSION_MANAGER'] = self.manager.line()

    def begin(self):
        """May be called again, after clear."""
        rows = ''.join(f'Row {i}\r\n{self.song}\r\n' for i in range(ROWS))
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
            file.write(f'OMK v1.1\r\n{ROWS}\r\n0\r\n{rows}')
        self.open('--add', self.added)
        # What is given comes after the window.
        wait_for(lambda: self.rows() == ROWS + 1, 'the added row')

    def rows(self):
        return json.loads(self.run_program('--status', 'json').stdout)['rows']

    def clear(self):
        self.end_all()
        self.running.clear()
        self.display.tool('mouseup', 1)
        self.write_settings()

    def try_end(self, situation, end):
        self.begin()
        getattr(self, situation)()
        status, complaint = (1, b'veldrin: the display has gone\n') if end in LOSSES else (0, b'')
        {**ENDS, **LOSSES}[end](self)
        self.assertEqual((self.end_of(self.player), self.player.complaints), (status, complaint))
        self.assert_nothing_lost()

    def assert_nothing_lost(self):
        paths = [os.path.basename(path) for _, path in self.playlist()[1]]
        self.assertEqual(paths[:ROWS].count(b'a.wav'), ROWS)
        self.assertEqual(paths[ROWS:ROWS + 1], [b'b.wav'])

    # The situations. Each returns once it has come about.

    def menu(self):
        self.click(MENU_BUTTON)
        self.wait_for_windows(2)

    def submenu(self):
        self.display.tool('windowfocus', '--sync', self.window)
        self.menu()
        self.display.tool('key', 'Down', 'Down', 'Right')
        self.wait_for_windows(3)

    def wait_for_windows(self, count):
        wait_for(lambda: len(self.display.windows_of(self.player)) == count, f'{count} windows')

    def track(self):
        self.hold((THUMB[0], LIST[1] + LIST[3] - 4), shows=self.rows_shown)

    def thumb(self):
        self.hold(THUMB, to=(THUMB[0], THUMB[1] + 60), shows=self.rows_shown)

    def band(self):
        """Below the list, where it scrolls by itself."""
        self.hold(self.row(3), to=(self.row(3)[0], LIST[1] + LIST[3] + 5), shows=self.rows_shown)

    def row_held(self):
        self.hold(self.row(4), shows=self.rows_shown)

    def title_held(self):
        was = self.display.geometry(self.window)
        self.hold((TITLE[0] + 20, TITLE[1] + 12), to=(TITLE[0] + 60, TITLE[1] + 40))
        wait_for(lambda: self.display.geometry(self.window) != was, 'the drag')

    def volume(self):
        self.hold((VOLUME[0] + 66, VOLUME[1] + 6), to=(VOLUME[0] + 20, VOLUME[1] + 6),
                  shows=lambda: self.shown(VOLUME).data)

    def seek(self):
        self.key('x')
        self.wait_for_title('Row 0')
        self.hold((SEEK[0] + 8, SEEK[1] + 6), to=(SEEK[0] + 150, SEEK[1] + 6),
                  shows=lambda: self.shown((SEEK[0] + 100, SEEK[1], 100, SEEK[3])).data)

    def button(self):
        self.hold(PLAY, shows=lambda: self.shown((PLAY[0] - 10, PLAY[1] - 8, 20, 16)).data)

    def minimised(self):
        self.display.tool('windowminimize', self.window)
        wait_for(lambda: self.display.is_iconic(self.window), 'an icon')

    def panel(self):
        rows = self.rows_shown()
        self.key('ctrl+i')
        wait_for(lambda: self.rows_shown() != rows, 'the panel')

    def tags(self):
        """A folder of many files is being added."""
        folder = os.path.join(self.folder, 'many')
        if not os.path.exists(folder):
            os.mkdir(folder)
            for number in range(3000):
                os.link(self.song, os.path.join(folder, f'{number}.wav'))
        self.assertEqual(self.run_program('--add', folder).returncode, 0)

    def rows_shown(self):
        """Without the current row, which pulses, and the scroll bar."""
        return self.shown((LIST[0], LIST[1] + 2 * ROW, 150, 6 * ROW)).data

    def hold(self, point, to=None, shows=None):
        self.point_at(point)
        was = shows and shows()
        self.display.tool('mousedown', 1)
        if to:
            for step in range(1, 5):
                self.point_at([a + (b - a) * step // 4 for a, b in zip(point, to)])
        if shows:
            wait_for(lambda: shows() != was, 'what the held button does')


SITUATIONS = ['menu', 'submenu', 'track', 'thumb', 'band', 'row_held', 'title_held', 'volume', 'seek',
              'button', 'minimised', 'panel', 'tags']
# In these the program is below a handler of its own: in the menu's loop, or in one of the list's.
WAITING = ['menu', 'thumb']


# The ends in order.

def session(test):
    """What is to be saved has been when the session manager has its answer, or the program is
    gone."""
    test.manager.ask('end', answer='answered')
    test.assert_nothing_lost()


def close(test):
    test.display.run('wmctrl', '-ic', str(test.window))


def quit_by_another(test):
    # Its answer is the end of the first.
    test.assertEqual(test.run_program('--quit').returncode, 0)


def by_signal(number):
    return lambda test: test.player.send_signal(number)


ENDS = {'session': session, 'close': close, 'quit': quit_by_another,
        'SIGTERM': by_signal(signal.SIGTERM), 'SIGINT': by_signal(signal.SIGINT),
        'SIGHUP': by_signal(signal.SIGHUP)}


# The ways in which a display is lost.

def cut_off(test):
    """As when the window server puts the client out."""
    test.display.tool('windowkill', test.window)


def cut_off_while_stopped(test):
    """Then the toolkit is the first to find out, and ends the process."""
    test.player.send_signal(signal.SIGSTOP)
    cut_off(test)
    test.player.send_signal(signal.SIGCONT)


LOSSES = {'cut off': cut_off, 'cut off while stopped': cut_off_while_stopped}
