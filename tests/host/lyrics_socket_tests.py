#!/usr/bin/env python3
"""The lyrics service over real sockets, with clients of all sorts and a stranger's service that it
asks."""

import http.server
import json
import os
import socket
import threading
import time
import urllib.parse

from lyrics_world import PATIENCE, Service, main


class Clients(Service):
    def setUp(self):
        super().setUp()
        self.serve()

    def raw(self, text):
        """What comes back until the service hangs up."""
        with socket.create_connection(('127.0.0.1', self.port), timeout=PATIENCE) as client:
            try:
                client.sendall(text)
                client.shutdown(socket.SHUT_WR)
                answer = b''
                while data := client.recv(65536):
                    answer += data
            except ConnectionError:  # it had heard enough
                return b''
            return answer

    def request(self, target, method=b'GET', host=None, more=b''):
        host = host or f'127.0.0.1:{self.port}'.encode()
        return self.raw(method + b' ' + target + b' HTTP/1.1\r\nHost: ' + host + b'\r\n' + more
                        + b'Connection: close\r\n\r\n')

    def status(self, answer):
        return int(answer.split(b' ', 2)[1]) if answer.startswith(b'HTTP/1.1 ') else None

    def test_words_of_the_item_that_plays(self):
        self.write('m/Ann - Blue.txt', 'One\nTwo')
        self.assertEqual(self.words('Ann', 'Blue.mp3'), 'No words are known for Ann - Blue.mp3.')
        self.open_item(self.write('m/Ann - Blue.mp3', ''))
        self.assertEqual(self.words('Ann', 'Blue.mp3'), 'One\nTwo')

    def test_names_with_signs_of_addresses(self):
        self.write('lyrics/A&B=C - Why? 1+1.txt', 'found')
        self.assertEqual(self.words('A&B=C', 'Why?%201+1'), 'found')
        self.write('lyrics/?? - ?.txt', 'asked')
        self.assertEqual(self.words('??', '?'), 'asked')
        self.write('lyrics/Zoë - Été.txt', 'found too')
        self.assertEqual(self.words('Zo%C3%AB', '%C3%89t%C3%A9'), 'found too')

    def test_head_is_an_answer_without_its_page(self):
        target = self.read_target('a', 'b')
        page = self.ask('GET', target)
        head = self.ask('HEAD', target)
        self.assertEqual((head.status, head.text), (200, ''))
        self.assertEqual(head.getheader('Content-Length'), str(len(page.text)))

    def test_saving(self):
        target = self.edit_target('Ann', 'Blue+Sky')
        headers = {'Origin': self.origin, 'Content-Type': 'application/x-www-form-urlencoded'}
        answer = self.ask('POST', target, headers, b'words=One%0D%0A%26+two')
        self.assertEqual(answer.status, 303)
        location = answer.getheader('Location')
        self.assertEqual(location, f'{self.path}/winamp03/edit/?artist=Ann&title=Blue%20Sky&new=1'
                                   '&note=saved')
        self.assertIn('Saved. Press F5', self.ask('GET', location).text)
        self.assertEqual(self.saved('Ann - Blue Sky.txt'), 'One\n& two\n')
        self.assertEqual(self.words('Ann', 'Blue%20Sky'), 'One\n&amp; two')

    def test_a_form_of_every_length_up_to_the_limit(self):
        headers = {'Origin': self.origin, 'Content-Type': 'application/x-www-form-urlencoded'}
        target = self.edit_target('a', 'b')
        for length in (8191, 8192, 8193, 65536 - 6):
            answer = self.ask('POST', target, headers, b'words=' + b'x' * length)
            self.assertEqual((length, answer.status), (length, 303))
            self.assertEqual(len(self.saved('a - b.txt')), length + 1)
        self.assertEqual(self.status(self.raw(
            f'POST {target} HTTP/1.1\r\nHost: 127.0.0.1:{self.port}\r\nOrigin: {self.origin}\r\n'
            'Content-Type: application/x-www-form-urlencoded\r\nContent-Length: 65537\r\n\r\n'
            .encode())), 413)
        self.assertEqual(len(self.saved('a - b.txt')), 65536 - 6 + 1)

    def test_guards(self):
        target = self.read_target('a', 'b').encode()
        edit = self.edit_target('a', 'b').encode()
        self.assertEqual(self.status(self.request(target)), 200)
        self.assertEqual(self.status(self.request(target, host=b'evil.example')), 403)
        self.assertEqual(self.status(self.request(target[1:])), 404)
        self.assertEqual(self.status(self.request(b'/' + b'0' * 32 + b'/x')), 404)
        for method in (b'PUT', b'DELETE', b'OPTIONS', b'PATCH', b'POST'):
            self.assertEqual((method, self.status(self.request(target, method))), (method, 405))
        for origin in (b'', b'Origin: null\r\n', b'Origin: http://evil.example\r\n'):
            answer = self.request(edit, b'POST', more=origin + b'Content-Length: 0\r\n')
            self.assertEqual((origin, self.status(answer)), (origin, 403))
        self.assertEqual(os.listdir(self.folder), [])

    def test_paths_with_dots_lead_nowhere(self):
        self.write('secret.txt', 'secret')
        path = self.path.encode()
        for target in (b'/', b'/..', b'/../secret.txt', path + b'/../secret.txt', path + b'/..',
                       path + b'/winamp03/plugin/../../../secret.txt', path + b'/%2e%2e/secret.txt',
                       b'//' + path[1:] + b'/winamp03/plugin/?artist=a&title=b'):
            self.assertEqual((target, self.status(self.request(target))), (target, 404))
        for title in ('../../secret', '..%2f..%2fsecret', '/secret', '../secret%00'):
            self.assertIn('No words are known', self.words('..', title))

    def test_what_is_no_request(self):
        for text in (b'', b'\r\n\r\n', b'GET\r\n\r\n', b'\x16\x03\x01\x02\x00', b'GET / HTTP/9.9\r\n\r\n',
                     b'\0' * 4096, b'GET ' + b'/' * 200000 + b' HTTP/1.1\r\n\r\n',
                     b'GET / HTTP/1.1\r\n' + b'X: y\r\n' * 50000 + b'\r\n',
                     b'GET / HTTP/1.1\r\nX: ' + b'y' * 200000 + b'\r\n\r\n'):
            self.assertNotEqual(self.status(self.raw(text)), 200)
        self.assertEqual(self.words('a', 'b'), 'No words are known for a - b.')

    def test_slow_clients_keep_nobody_waiting(self):
        slow = [socket.create_connection(('127.0.0.1', self.port)) for _ in range(64)]
        try:
            for client in slow[::2]:
                client.sendall(b'GET /')
            begun = time.monotonic()
            self.assertEqual(self.words('a', 'b'), 'No words are known for a - b.')
            self.assertLess(time.monotonic() - begun, 9)  # the player waits for ten
        finally:
            for client in slow:
                client.close()

    def test_many_at_once(self):
        self.write('lyrics/a - b.txt', 'words')
        found = []

        def ask_often():
            for _ in range(5):
                found.append(self.words('a', 'b'))

        threads = [threading.Thread(target=ask_often) for _ in range(8)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(found, ['words'] * 40)


class Stranger(http.server.BaseHTTPRequestHandler):
    """Speaks as LRCLIB does."""

    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        query = {name: values[0] for name, values in urllib.parse.parse_qs(url.query).items()}
        self.server.asked.append((url.path, query, self.headers['User-Agent']))
        status, answer = self.server.songs.get(query.get('track_name'), (404, {'code': 404}))
        if status is None:
            self.server.over.wait(PATIENCE)
            return
        body = answer if isinstance(answer, bytes) else json.dumps(answer).encode()
        self.send_response(status)
        self.end_headers()
        try:
            self.wfile.write(body)
        except ConnectionError:  # enough came
            pass

    def log_message(self, *_):
        pass


class Online(Service):
    def setUp(self):
        super().setUp()
        self.stranger = http.server.ThreadingHTTPServer(('127.0.0.1', 0), Stranger)
        self.stranger.asked = []
        self.stranger.over = threading.Event()
        self.stranger.songs = {
            'Blue': (200, {'plainLyrics': 'One\nTwo', 'instrumental': False}),
            'Tune': (200, {'plainLyrics': None, 'instrumental': True}),
            'Broken': (200, b'<html>'), 'Deep': (200, b'[' * 900000),
            'Huge': (200, b'{"plainLyrics":"' + b'x' * (1 << 20) + b'"}'),
            'Down': (503, b''), 'Silent': (None, b'')}
        thread = threading.Thread(target=self.stranger.serve_forever, args=(0.05,))
        thread.start()
        self.addCleanup(thread.join)
        self.addCleanup(self.stranger.server_close)
        self.addCleanup(self.stranger.shutdown)
        self.addCleanup(self.stranger.over.set)
        self.cache = os.path.join(self.folder, 'cache')
        self.serve(f'http://127.0.0.1:{self.stranger.server_port}', self.cache)

    def test_words_come_and_are_kept(self):
        self.assertEqual(self.words('Ann%20%26%20Bob', 'Blue'), 'One\nTwo')
        self.assertEqual(self.words('ann%20%26%20bob', 'bLUE'), 'One\nTwo')
        self.assertEqual(self.stranger.asked, [
            ('/api/get', {'artist_name': 'Ann & Bob', 'track_name': 'Blue'}, 'Veldrin/1.1')])
        self.words('Ann%20%26%20Bob', 'Blue', **{'Cache-Control': 'no-cache'})
        self.assertEqual(len(self.stranger.asked), 2)

    def test_own_words_are_nobodys_business(self):
        self.write('lyrics/Ann - Blue.txt', 'own')
        self.assertEqual(self.words('Ann', 'Blue'), 'own')
        self.assertEqual(self.stranger.asked, [])

    def test_strange_answers(self):
        self.assertEqual(self.words('Ann', 'Tune'), '[Instrumental]')
        for title in ('Broken', 'Deep', 'Huge', 'Down', 'Unknown'):
            self.assertEqual(self.words('Ann', title), f'No words are known for Ann - {title}.')

    def test_silence_is_no_words_in_time(self):
        begun = time.monotonic()
        self.assertEqual(self.words('Ann', 'Silent'), 'No words are known for Ann - Silent.')
        self.assertLess(time.monotonic() - begun, 9)  # the player waits for ten
        self.assertFalse(os.path.exists(self.cache) and os.listdir(self.cache))


if __name__ == '__main__':
    main()
