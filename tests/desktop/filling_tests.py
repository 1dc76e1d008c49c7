#!/usr/bin/env python3
"""Filling the playlist and finding one's way in it, in the finished program: the file browser, the
search panel, and the keys that remove rows."""

import os

from desktop import main, wait_for
from player import LIST, ROW, WIDTH, Player
from world import tone

# The row that a popup opens with is a header; so many steps down from it stands the first item.
FIRST_ITEM = 1
# No list, and no control with drops of its own.
INFORMATION = (60, 222)


class Filling(Player):
    def setUp(self):
        super().setUp()
        for name in 'zebra.wav', 'alpha.wav', 'Deep/Deeper/beta.wav', 'Deep/gamma.wav':
            path = self.at(os.path.join('music', name))
            os.makedirs(os.path.dirname(path), exist_ok=True)
            tone(path, seconds=20)
        with open(self.at('music/notes.txt'), 'w') as file:
            file.write('no music\n')

    def rows_saved(self):
        """Titles in the playlist's file, once the player has ended in order."""
        self.player.terminate()
        self.player.wait()
        with open(os.path.join(self.directory, 'Sarnel.Ambrisor.omk'), newline='') as file:
            lines = file.read().split('\r\n')
        return lines[3:3 + 2 * int(lines[1]):2]

    def test_dropped_folders_and_playlists_become_their_files(self):
        with open(self.at('some.m3u'), 'w') as file:
            file.write('music/zebra.wav\nnone.wav\n')
        self.open()
        all_below = [self.at('music/' + name).encode() for name in
                     ('Deep/Deeper/beta.wav', 'Deep/gamma.wav', 'alpha.wav', 'zebra.wav')]
        self.drop(self.row(2), self.at('music'))
        wait_for(lambda: self.shows_row(3), 'a fourth row')
        self.drop(INFORMATION, self.at('some.m3u'), self.at('music'))
        wait_for(lambda: self.shows_row(8), 'a ninth row')
        self.player.terminate()
        self.end_of(self.player)
        self.assertEqual([path for _, path in self.playlist()[1]],
                         [*all_below, all_below[-1], *all_below])
        self.assertIn(b"some.m3u': 1 of 2 names in this list leads nowhere\n",
                      self.player.complaints)

    def browse(self, folder=''):
        self.write_settings(LastDir=folder)
        self.open()
        before = self.shown(LIST).data
        self.key('Insert')
        wait_for(lambda: self.shown(LIST).data != before, 'the browser')
        # Opening it takes no focus from the playlist; a press on a row does.
        if folder:
            self.click(self.row(1))

    def expect_folder(self, folder):
        wait_for(lambda: self.setting('LastDir') == folder, f'the folder {folder!r}')

    def choose(self, point, steps):
        """An item of the popup that a right click opens, so many steps down."""
        self.click(point, 3)
        wait_for(lambda: len(self.display.windows_of(self.player)) == 2, 'the popup')
        self.display.tool('key', *['Down'] * steps, 'Return')
        wait_for(lambda: len(self.display.windows_of(self.player)) == 1, 'the popup to close')


class Browsing(Filling):
    def test_a_file_by_keys(self):
        self.browse(self.at('music') + '/')
        # From "[..]" on; there are "[Deep]", "alpha.wav" and "zebra.wav".
        self.key('Down', 'Down', 'Return')
        # The panel has closed, so the keys are the playlist's again.
        self.key('Home', 'Return')
        self.wait_for_title('alpha.wav')
        self.assertEqual(self.rows_saved(), ['alpha.wav'])

    def test_into_a_folder_and_out_again(self):
        self.browse(self.at('music') + '/')
        self.key('Down', 'Return')
        self.expect_folder(self.at('music/Deep') + '/')
        self.key('BackSpace')
        self.expect_folder(self.at('music') + '/')
        self.key('BackSpace')
        self.expect_folder(self.directory_above('music'))
        self.key('Up', 'Return')  # "[.]" is the way to the drives
        self.expect_folder('')

    def directory_above(self, name):
        return os.path.dirname(self.at(name)) + '/'

    def test_a_tree_by_its_folder(self):
        self.browse(self.directory_above('music'))
        rows = sorted((entry.name for entry in os.scandir(self.directory_above('music'))
                       if entry.is_dir() and not entry.name.startswith('.')), key=str.upper)
        # Behind "[.]" and "[..]".
        self.click(self.row(2 + rows.index('music')))
        self.choose(self.row(2 + rows.index('music')), FIRST_ITEM)
        # Folders come before the files beside them.
        self.assertEqual(self.rows_saved(), ['beta.wav', 'gamma.wav', 'alpha.wav', 'zebra.wav'])

    def test_without_subfolders_once_that_is_chosen(self):
        self.browse(self.at('music') + '/')
        self.choose(self.row(2), FIRST_ITEM + 1)
        wait_for(lambda: self.setting('RecurseSubdirs') == 'False', 'the setting')
        self.click(self.row(2))
        self.choose(self.row(2), FIRST_ITEM)
        self.assertEqual(self.rows_saved(), ['gamma.wav'])


class Searching(Player):
    def test_by_typing_and_enter(self):
        self.songs('Dawn', 'Evening Song', 'Night', 'Sea Song', seconds=20)
        self.open(self.music)
        self.wait_for_title('Dawn.wav')
        before = self.shown(LIST).data
        self.key('ctrl+f')
        wait_for(lambda: self.shown(LIST).data != before, 'the panel')
        self.display.tool('type', '--delay', '20', 'SONG')
        self.key('Down', 'Return')
        self.wait_for_title('Sea Song.wav')
        # The panel has closed, and the key goes to the playlist.
        self.key('z')
        self.wait_for_title('Night.wav')

    def test_a_filter_without_a_hit_leaves_all_as_it_is(self):
        self.songs('Noon', seconds=20)
        self.open(self.music)
        self.wait_for_title('Noon.wav')
        self.key('ctrl+f')
        self.display.tool('type', '--delay', '20', 'midnight')
        empty = LIST[0], LIST[1] + 2 * ROW, WIDTH - 2 * LIST[0], 5 * ROW
        wait_for(lambda: not self.shown(empty).has_colours(), 'an empty list')
        self.key('Return', 'Escape')
        self.assertEqual(self.title(), 'Noon.wav')


class Removing(Filling):
    def rows_left(self, *keys):
        self.save_list(6)
        self.open()
        self.click(self.row(1))
        self.key('shift+Down', *keys)
        return self.rows_saved()

    def test_selected_rows_go(self):
        self.assertEqual(self.rows_left('Delete'), ['Row 0', 'Row 3', 'Row 4', 'Row 5'])

    def test_selected_rows_stay(self):
        self.assertEqual(self.rows_left('ctrl+Delete'), ['Row 1', 'Row 2'])

    def test_dead_rows_go(self):
        self.assertEqual(self.rows_left('alt+Delete'), [])

    def test_all_rows_go(self):
        self.assertEqual(self.rows_left('shift+c'), [])


if __name__ == '__main__':
    main()
