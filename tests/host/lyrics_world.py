"""What the tests of the lyrics service over a network share. Each test file is run as

    FILE LYRICS_SERVE MODULE [unittest arguments]
"""

import http.client
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import urllib.parse

PATIENCE = 15


class Service(unittest.TestCase):
    maxDiff = None
    program = module = ''  # set by main

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix='veldrin-lyrics-')
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.words_folder = os.path.join(self.folder, 'lyrics')

    def serve(self, *online):
        """Starts the service; self.base is its address from then on."""
        process = subprocess.Popen([self.program, self.module, self.words_folder, *online],
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end, process)
        self.process = process
        self.base = process.stdout.readline().strip()
        self.port = urllib.parse.urlsplit(self.base).port
        self.origin = f'http://127.0.0.1:{self.port}'
        self.path = urllib.parse.urlsplit(self.base).path

    def end(self, process):
        process.stdin.close()
        status = process.wait(PATIENCE)
        process.stdout.close()
        self.assertEqual(status, 0)

    def open_item(self, path):
        self.process.stdin.write(path + '\n')
        self.process.stdin.flush()
        self.assertEqual(self.process.stdout.readline(), path + '\n')

    def ask(self, method, path, headers=None, body=None):
        """Answers the response, its body as `text`. `path` is sent as it is."""
        connection = http.client.HTTPConnection('127.0.0.1', self.port, timeout=PATIENCE)
        self.addCleanup(connection.close)
        connection.putrequest(method, path, skip_host='Host' in (headers or {}))
        for name, value in (headers or {}).items():
            connection.putheader(name, value)
        if body is not None:
            connection.putheader('Content-Length', str(len(body)))
        connection.endheaders(body)
        response = connection.getresponse()
        response.text = response.read().decode()
        return response

    def read_target(self, artist, title):
        return f'{self.path}/winamp03/plugin/?artist={artist}&title={title}'

    def edit_target(self, artist, title):
        return f'{self.path}/winamp03/edit/?artist={artist}&title={title}&new=1'

    def words(self, artist, title, **headers):
        response = self.ask('GET', self.read_target(artist, title), headers)
        self.assertEqual(response.status, 200)
        front, back = '<div id="lyrics">\n', '\n</div>\n'
        self.assertTrue(response.text.startswith(front) and response.text.endswith(back))
        return response.text[len(front):-len(back)]

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, 'w') as file:
            file.write(text)
        return path

    def saved(self, name):
        with open(os.path.join(self.words_folder, 'edited', name), encoding='utf-8') as file:
            return file.read()


def main():
    Service.program, Service.module = map(os.path.abspath, sys.argv[1:3])
    del sys.argv[1:3]
    unittest.main()
