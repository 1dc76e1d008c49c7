#!/usr/bin/env python3
"""The pages for embedders name what there is, all of it, and nothing else.

    FILE SOURCE_FOLDER [unittest arguments]
"""

import os
import re
import sys
import unittest


class Pages(unittest.TestCase):
    root = ''  # set by main

    def read(self, *path):
        with open(os.path.join(self.root, *path), encoding='utf-8') as file:
            return file.read()

    def section(self, page, head):
        """What stands under a head, up to the next one of its level."""
        found = re.search(rf'(?ms)^## {re.escape(head)}\n(.*?)(?=^## |\Z)', self.read('docs', page))
        self.assertIsNotNone(found, f'{page}: {head}')
        return found[1]

    def constants(self, prefix):
        """Name and number of the constants of the impulses' header that begin so."""
        found = re.findall(rf'constexpr Long ({prefix}\w+) = (\d+);',
                           self.read('core', 'base', 'impulses.h'))
        self.assertGreater(len(found), 3)
        return {(name, int(number)) for name, number in found}

    def test_every_impulse_to_the_host_has_its_row(self):
        rows = re.findall(r'(?m)^\| (\d+) \| `(\w+)` \|',
                          self.section('host-contract.md', 'From the component to the host'))
        self.assertEqual(len(rows), len(set(rows)))
        self.assertEqual({(name, int(number)) for number, name in rows}, self.constants('Impulse'))

    def test_every_impulse_to_the_component_has_its_row(self):
        section = self.section('host-contract.md', 'From the host to the component')
        numbers = {int(number) for number in re.findall(r'(?m)^\| (\d+) \|', section)}
        # 7 comes back from a host that sends on what it got.
        self.assertEqual(numbers - {7}, {number for _, number in self.constants('kImpulse')})
        commands = {int(number) for number in re.findall(r'(?m)^\| 15 \| `wParam` (\d+)', section)}
        self.assertEqual(commands, {number for _, number in self.constants('kControl')})

    def test_every_option_of_the_build_is_told(self):
        build = self.read('CMakeLists.txt')
        options = re.findall(r'(?m)^(?:option\(|set\()(VELDRIN_\w+)', build)
        self.assertGreater(len(options), 5)
        told = re.findall(r'(?m)^\| `(VELDRIN_\w+)` \|', self.section('embedding.md', 'Building with it'))
        self.assertEqual(sorted(told), sorted(options))

    def test_every_public_header_is_told(self):
        page = self.read('docs', 'embedding.md')
        public = set()
        for folder in '.', 'platform', 'platform/desktop':
            calls = re.findall(r'veldrin_embeddable\(\w+ ([^)]*)\)',
                               self.read(folder, 'CMakeLists.txt'))
            public.update(header for call in calls for header in call.split())
        self.assertGreater(len(public), 5)
        told = set(re.findall(r'`((?:core|platform)/[\w/]+\.h)`', page))
        self.assertEqual(told, public)

    def test_every_link_leads_somewhere(self):
        for page in 'embedding.md', 'host-contract.md':
            for target in re.findall(r'\]\(([^)#]+)', self.read('docs', page)):
                self.assertTrue(os.path.exists(os.path.join(self.root, 'docs', target)), target)


if __name__ == '__main__':
    Pages.root = sys.argv.pop(1)
    unittest.main()
