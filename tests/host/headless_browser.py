"""A real browser without a screen."""

import os
import shutil
import unittest

from world import PATIENCE

try:
    from selenium import webdriver
    from selenium.common.exceptions import WebDriverException
    from selenium.webdriver.common.by import By
    from selenium.webdriver.support.ui import WebDriverWait
except ImportError:
    webdriver = None


def start_browser():
    """To be ended with quit(). Skips the tests where there is none."""
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
        browser = webdriver.Chrome(
            service=webdriver.chrome.service.Service(driver), options=options)
    except WebDriverException as fault:
        raise unittest.SkipTest(f'the browser does not start here: {fault.msg}') from fault
    browser.set_page_load_timeout(PATIENCE)
    return browser


def words_box(browser):
    return browser.find_element(By.ID, 'words')


def notes_on(browser):
    return [note.text for note in browser.find_elements(By.CSS_SELECTOR, '[role=status]')]


def press_save(browser):
    """Answers once the page with the note has come."""
    old = browser.find_element(By.TAG_NAME, 'html')
    browser.find_element(By.TAG_NAME, 'button').click()
    WebDriverWait(browser, PATIENCE).until(
        lambda page: page.find_element(By.TAG_NAME, 'html') != old and notes_on(page))
