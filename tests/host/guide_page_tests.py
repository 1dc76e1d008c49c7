#!/usr/bin/env python3
"""The page of the user guide: clean HTML, whole, and in the words of the program."""

import glob
import html.parser
import os
import re
import struct

from world import World, main

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
GUIDE = os.path.join(ROOT, 'docs', 'guide')
# Drawn in the pictures of the skin's buttons.
BUTTONS = {'Add', 'Rem', 'Misc', 'Lists', 'Efx', 'Info', 'Lyrics', 'Reset'}
INLINE = {'a', 'b', 'code', 'kbd'}
EMPTY = {'br', 'col', 'hr', 'img', 'input', 'link', 'meta', 'wbr'}
MOST_PICTURES = 250_000  # bytes


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.open, self.faults, self.ids, self.links, self.pictures = [], [], [], [], []
        self.words, self.bold = [], []
        self.feed(text)
        self.close()
        self.faults += [f'<{name}> is not closed' for name in self.open]

    def handle_starttag(self, tag, attributes):
        found = dict(attributes)
        if len(found) != len(attributes):
            self.faults.append(f'an attribute of <{tag}> stands twice')
        if 'id' in found:
            self.ids.append(found['id'])
        self.links += [found[name] for name in ('href', 'src') if name in found]
        if 'aria-labelledby' in found:
            self.links.append('#' + found['aria-labelledby'])
        if tag == 'img':
            self.pictures.append(found)
        if tag == 'b':
            self.bold.append('')
        if tag not in INLINE:
            self.words.append(' ')
        if tag not in EMPTY:
            self.open.append(tag)

    def handle_startendtag(self, tag, attributes):
        self.handle_starttag(tag, attributes)
        if tag not in EMPTY:
            self.open.pop()

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            self.faults.append(f'</{tag}> on line {self.getpos()[0]} closes {self.open[-1:]}')
        else:
            self.open.pop()

    def handle_data(self, data):
        if 'style' not in self.open:
            self.words.append(data)
        if 'b' in self.open:
            self.bold[-1] += data

    def text(self):
        return ' '.join(''.join(self.words).split())


def read(*names):
    with open(os.path.join(ROOT, *names), encoding='utf-8') as file:
        return file.read()


def png_size(path):
    with open(path, 'rb') as file:
        head = file.read(24)
    assert head[:8] == b'\x89PNG\r\n\x1a\n'
    return struct.unpack('>II', head[16:24])


class GuidePage(World):
    def setUp(self):
        super().setUp()
        self.source = read('docs', 'guide', 'index.html')
        self.page = Page(self.source)

    def test_each_tag_is_closed_and_each_name_given_once(self):
        self.assertEqual(self.page.faults, [])
        self.assertTrue(self.source.startswith('<!DOCTYPE html>\n<html lang="en">'))
        self.assertEqual(len(set(self.page.ids)), len(self.page.ids))
        self.assertNotIn('<script', self.source)

    def test_links_lead_somewhere_and_nowhere_else(self):
        files = {'index.html'}
        for link in self.page.links:
            if link.startswith('#'):
                self.assertIn(link[1:], self.page.ids)
            else:
                self.assertTrue(os.path.isfile(os.path.join(GUIDE, link)), link)
                files.add(link)
        self.assertEqual(set(os.listdir(GUIDE)), files)
        sections = re.findall(r'<h2 id="([^"]+)"', self.source)
        listed = [link[1:] for link in self.page.links if link.startswith('#')]
        self.assertEqual([name for name in sections if name not in listed], [])

    def test_pictures_are_described_and_small(self):
        for picture in self.page.pictures:
            self.assertGreater(len(picture['alt']), 20)
            self.assertEqual((int(picture['width']), int(picture['height'])),
                             png_size(os.path.join(GUIDE, picture['src'])))
        sizes = [os.path.getsize(path) for path in glob.glob(os.path.join(GUIDE, '*.png'))]
        self.assertGreater(len(sizes), 4)
        self.assertLess(sum(sizes), MOST_PICTURES)

    def test_every_command_of_the_menu_is_told_with_its_key(self):
        rows = re.findall(r'\{u"([^"]+)", u"([^"]*)", (u""|menukeys::\w+)(, Row::kHeader)?',
                          read('menus', 'commandmenu.cpp'))
        commands = [row[0] for row in rows if row[0] != '-' and not row[3]]
        self.assertGreater(len(commands), 30)
        text = self.page.text()
        told = set(self.page.bold) | BUTTONS
        for command in commands:
            name, _, key = command.partition('#')
            self.assertIn(name, told | {'Playlist', 'Remove'})
            # No command stands behind these two, nor behind their keys.
            if name not in ('Add streams', 'List manager'):
                self.assertIn(key, text)

    def test_what_is_set_in_bold_is_a_text_of_the_program(self):
        texts = set(BUTTONS)
        for folder in 'core', 'menus', 'shell':
            for path in glob.glob(os.path.join(ROOT, folder, '**', '*.cpp'), recursive=True):
                texts.update(re.findall(r'u"([^"]+)"', read(path)))
        texts.update(line.split('|')[1].strip() for line in read('assets', 'funky_blue', 'rows.txt').splitlines()
                     if line.count('|') == 2)
        texts = {text.partition('#')[0].replace('&', '') for text in texts}
        self.assertEqual([text for text in self.page.bold if ' '.join(text.split()) not in texts], [])

    def test_every_option_is_told_and_no_other(self):
        option = re.compile(r'(?<![\w-])--[a-z][a-z-]*')
        known = set(option.findall(self.run_program('--help').stdout.decode()))
        self.assertGreater(len(known), 20)
        self.assertEqual(set(option.findall(self.page.text())), known)


if __name__ == '__main__':
    main()
