#!/usr/bin/env python3
"""Lyrics in the finished program, from a text beside the song to the user's correction of it: the
panel, its popup, the page in the browser, and the reload."""

import os

from desktop import main, wait_for
from headless_browser import press_save, start_browser, words_box
from player import LIST, Player
from world import tone

# Steps down from the popup's header.
COPY, EDIT = 1, 2


class Lyrics(Player):
    def setUp(self):
        super().setUp()
        self.catch_documents()
        self.environment['XDG_DATA_HOME'] = os.path.join(self.folder, 'data')
        tone(self.at('1.ogg'), seconds=30, artist='Nina & the Rivers', title='Slow Morning')
        self.words('1.txt', 'The light comes in\nThe boats go out\n')

    def words(self, name, words):
        with open(self.at(name), 'w') as file:
            file.write(words)

    def play_and_open_panel(self, *arguments):
        self.open(*arguments, self.at('1.ogg'))
        self.wait_for_title('Nina & the Rivers - Slow Morning')
        self.key('ctrl+l')

    def choose(self, steps):
        self.click((LIST[0] + 60, LIST[1] + 120), 3)
        wait_for(lambda: len(self.display.windows_of(self.player)) == 2, 'the popup')
        self.display.tool('key', *['Down'] * steps, 'Return')
        wait_for(lambda: len(self.display.windows_of(self.player)) == 1, 'the popup to close')

    def expect_text(self, *lines):
        """By way of the clipboard, until it is so."""
        def copied():
            self.display.give_clipboard(b'')
            self.choose(COPY)
            return wait_for(lambda: self.display.run('xclip', '-o', '-selection', 'clipboard',
                                                     check=False), 'a copy')
        wanted = '\n'.join(['Nina & the Rivers - Slow Morning', '', *lines]).rstrip()
        wait_for(lambda: '\n'.join(copied().splitlines()).rstrip() == wanted, f'the lyrics {lines}')

    def test_from_a_text_beside_the_song_to_a_correction(self):
        self.play_and_open_panel()
        self.expect_text('The light comes in', 'The boats go out')
        self.choose(EDIT)
        address = self.opened_document()
        browser = start_browser()
        self.addCleanup(browser.quit)
        browser.get(address)
        self.assertIn('Nina & the Rivers', browser.title)
        self.assertEqual(words_box(browser).get_property('value'),
                         'The light comes in\nThe boats go out')
        words_box(browser).clear()
        words_box(browser).send_keys('The boats come in')
        press_save(browser)
        self.key('F5')
        self.expect_text('The boats come in')
        # What was saved outlasts the program, and the text beside the song is as it was.
        self.player.terminate()
        self.player.wait()
        self.play_and_open_panel()
        self.expect_text('The boats come in')
        with open(self.at('1.txt')) as file:
            self.assertIn('The light', file.read())

    def test_nothing_is_known(self):
        os.remove(self.at('1.txt'))
        self.play_and_open_panel()
        self.expect_text('No words are known for Nina & the Rivers - Slow Morning.')

    def test_a_service_that_nobody_answers_for_leaves_the_heading(self):
        self.play_and_open_panel('--lyrics', 'http://127.0.0.1:1')
        self.expect_text()


if __name__ == '__main__':
    main()
