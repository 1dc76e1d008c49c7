#!/usr/bin/env python3
"""The edit page in a real browser without a screen."""

import os
import shutil
import unittest

from lyrics_world import PATIENCE, Service, main

try:
    from selenium import webdriver
    from selenium.common.exceptions import WebDriverException
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
    from selenium.webdriver.support.ui import WebDriverWait
except ImportError:
    webdriver = None

SCRIPT = '</textarea><script>document.title = "hacked"</script><b id="hacked">'


class EditPage(Service):
    @classmethod
    def setUpClass(cls):
        driver = shutil.which('chromedriver')
        if webdriver is None or driver is None:
            raise unittest.SkipTest('no browser: chromium-driver and python3-selenium are missing')
        options = webdriver.ChromeOptions()
        for argument in ('--headless=new', '--disable-gpu', '--disable-dev-shm-usage',
                         '--window-size=360,700', '--no-first-run', '--disable-extensions'):
            options.add_argument(argument)
        if os.geteuid() == 0:
            options.add_argument('--no-sandbox')
        try:
            cls.browser = webdriver.Chrome(
                service=webdriver.chrome.service.Service(driver), options=options)
        except WebDriverException as fault:
            raise unittest.SkipTest(f'the browser does not start here: {fault.msg}') from fault
        cls.browser.set_page_load_timeout(PATIENCE)
        cls.addClassCleanup(cls.browser.quit)

    def setUp(self):
        super().setUp()
        self.serve()

    def show(self, artist, title):
        self.browser.get(f'{self.origin}{self.edit_target(artist, title)}')

    def box(self):
        return self.browser.find_element(By.ID, 'words')

    def notes(self):
        return [note.text for note in self.browser.find_elements(By.CSS_SELECTOR, '[role=status]')]

    def save(self):
        old = self.browser.find_element(By.TAG_NAME, 'html')
        self.browser.find_element(By.TAG_NAME, 'button').click()
        WebDriverWait(self.browser, PATIENCE).until(
            lambda browser: browser.find_element(By.TAG_NAME, 'html') != old and self.notes())

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
