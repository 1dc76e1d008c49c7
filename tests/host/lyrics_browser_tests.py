#!/usr/bin/env python3
"""The edit page in a real browser without a screen."""

from headless_browser import notes_on, press_save, start_browser, words_box
from lyrics_world import Service, main

try:
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
except ImportError:
    pass  # start_browser says so

SCRIPT = '</textarea><script>document.title = "hacked"</script><b id="hacked">'


class EditPage(Service):
    @classmethod
    def setUpClass(cls):
        cls.browser = start_browser()
        cls.addClassCleanup(cls.browser.quit)

    def setUp(self):
        super().setUp()
        self.serve()

    def show(self, artist, title):
        self.browser.get(f'{self.origin}{self.edit_target(artist, title)}')

    def box(self):
        return words_box(self.browser)

    def notes(self):
        return notes_on(self.browser)

    def save(self):
        press_save(self.browser)

    def test_open_change_save(self):
        self.write('lyrics/Ann & Bob - Blue <Sky>.txt', '\nOne\nTwo')
        self.show('Ann+&+Bob', 'Blue+<Sky>')
        self.assertEqual(self.browser.title, 'Ann & Bob - Blue <Sky> - lyrics')
        self.assertEqual(self.browser.find_element(By.TAG_NAME, 'h1').text, 'Blue <Sky>')
        self.assertEqual(self.box().get_property('value'), 'One\nTwo')
        self.assertEqual(self.box().accessible_name, 'Lyrics')
        self.assertEqual(self.notes(), [])
        self.box().send_keys(Keys.CONTROL, Keys.END)
        self.box().send_keys('\nThrée & “four” + 5%')
        self.save()
        self.assertEqual(self.notes(), ['Saved. Press F5 in the lyrics panel to see it.'])
        words = 'One\nTwo\nThrée & “four” + 5%'
        self.assertEqual(self.box().get_property('value'), words)
        self.assertEqual(self.saved('Ann & Bob - Blue <Sky>.txt'), words + '\n')
        self.assertEqual(self.words('Ann%20&%20Bob', 'Blue%20%3CSky%3E'),
                         words.replace('&', '&amp;'))
        self.box().clear()
        self.save()
        self.assertIn('Your words are removed.', self.notes()[0])
        self.assertEqual(self.box().get_property('value'), 'One\nTwo')

    def test_scripts_in_words_and_names_do_not_run(self):
        self.write('lyrics/a - b.txt', SCRIPT)
        self.show('a', 'b')
        self.assertEqual(self.box().get_property('value'), SCRIPT)
        self.save()
        for show in (lambda: self.show('a', 'b'),
                     lambda: self.show('<script>document.title="hacked"</script>', '"><b id="hacked">'),
                     lambda: self.browser.get(f'{self.origin}{self.read_target("a", "b")}')):
            show()
            self.assertEqual(self.browser.find_elements(By.ID, 'hacked'), [])
            self.assertEqual(self.browser.find_elements(By.TAG_NAME, 'script'), [])
            self.assertNotEqual(self.browser.title, 'hacked')
            self.assertIn('document.title', self.browser.page_source)

    def test_page_fits_a_narrow_window(self):
        self.write('lyrics/' + 'a' * 100 + ' - b.txt', 'x' * 500)
        self.show('a' * 100, 'b')
        width, room = self.browser.execute_script(
            'return [document.documentElement.scrollWidth, document.documentElement.clientWidth]')
        self.assertLessEqual(width, room)


if __name__ == '__main__':
    main()
