#!/usr/bin/env python3
"""System-wide keys of the finished program where the X server grabs them."""

import os
import time

from desktop import Display, main, wait_for
from hotkeys import DOWN_KEY, NEXT_KEY, HotKeys
from player import AT_REST

TIME = (126, 248, 72, 20)  # in pixels of the window
TAKEN = 'not: Another program has these keys.'


class Server(HotKeys):
    def test_the_ten_keys(self):
        self.open_elsewhere()
        self.wait_for_keys()
        self.press('Next')
        self.wait_for_title('b.wav')
        self.press('Prior')
        self.wait_for_title('a.wav')
        self.press('End')
        self.wait_for_title(AT_REST)
        self.press('Insert')
        self.wait_for_title('a.wav')
        volume = self.volume()
        self.press('Up')
        wait_for(lambda: self.volume() == volume + 5, 'more volume')
        self.press('Down')
        wait_for(lambda: self.volume() == volume, 'the volume of before')
        for _ in range(14):
            self.press('Right')
        self.wait_for_title('b.wav')  # 14 steps of 3 seconds are more than the song
        self.give_function_keys()
        self.press('F12')
        self.assertEqual(self.end_of(self.player), 0)

    def test_pause_holds_the_time(self):
        self.open_elsewhere()
        self.wait_for_keys()
        before = self.shown(TIME).data
        wait_for(lambda: self.shown(TIME).data != before, 'time that passes')
        self.press('Home')
        time.sleep(0.3)
        held = self.shown(TIME).data
        time.sleep(1.5)
        self.assertEqual(self.shown(TIME).data, held)
        self.press('Home')
        wait_for(lambda: self.shown(TIME).data != held, 'time that passes')

    def test_steps_back(self):
        self.open_elsewhere()
        self.wait_for_keys()
        for key in ('Right', 'Left'):
            for _ in range(11):
                self.press(key)
        # Of 40 seconds 7 were left at most.
        time.sleep(8)
        self.assertEqual(self.title(), 'a.wav')

    def test_whatever_lock_keys_are_on(self):
        self.open_elsewhere()
        self.wait_for_keys()
        # NumLock, both, Caps Lock, none.
        for lock, title in zip(('Num_Lock', 'Caps_Lock', 'Num_Lock', 'Caps_Lock'), 'bcde'):
            self.display.tool('key', lock)
            self.press('Next')
            self.wait_for_title(f'{title}.wav')

    def test_the_numeric_pad_only_while_it_moves_the_caret(self):
        pad = '89'  # 3 and Page Down
        self.open_elsewhere()
        self.wait_for_keys()
        self.press(pad)
        self.wait_for_title('b.wav')
        self.display.tool('key', 'Num_Lock')
        self.addCleanup(self.display.tool, 'key', 'Num_Lock')
        self.press(pad)
        self.wait_for_keys()
        self.assertEqual(self.title(), 'b.wav')

    def test_a_held_key_goes_on(self):
        self.open_elsewhere()
        self.wait_for_keys()
        before = self.volume()
        self.display.tool('keydown', 'ctrl', 'keydown', 'alt', 'keydown', 'Down')
        self.addCleanup(self.display.tool, 'keyup', 'ctrl', 'keyup', 'alt', 'keyup', 'Down')
        wait_for(lambda: self.volume() <= before - 20, 'four steps')

    def test_with_the_focus_on_the_window_itself(self):
        self.open_elsewhere()
        self.wait_for_keys()
        self.key('ctrl+alt+Next')
        self.wait_for_title('b.wav')
        self.key('b')
        self.wait_for_title('c.wav')

    def test_another_program_has_one_of_them(self):
        other = self.other_client()
        self.assertEqual(self.grabs(other, NEXT_KEY), 'grabbed')
        self.open_elsewhere()
        self.wait_for_keys()
        self.press('Next')
        other.expect('hotkey 1')
        self.key('b')
        self.wait_for_title('b.wav')
        for key, title in (('Prior', 'a.wav'), ('End', AT_REST), ('Insert', 'a.wav')):
            self.press(key)
            self.wait_for_title(title)
        # What becomes free is noticed when the keyboard changes.
        other.ask('release 1')
        self.press('Next')
        self.wait_for_keys()
        self.assertEqual(self.title(), 'a.wav')
        self.display.modify_keys('-e', 'keycode 117 = Next')
        self.wait_for_keys()
        self.press('Next')
        self.wait_for_title('b.wav')

    def test_they_are_free_again_at_the_end(self):
        self.open_elsewhere()
        self.wait_for_keys()
        other = self.other_client()
        self.assertEqual(self.grabs(other, NEXT_KEY), TAKEN)
        self.player.terminate()
        self.player.wait()
        self.assertEqual(self.grabs(other, NEXT_KEY), 'grabbed')
        self.press('Next')
        other.expect('hotkey 1')

    def test_a_client_lets_one_go_and_takes_it_again(self):
        first, second = self.other_client(), self.other_client()
        self.assertEqual(self.grabs(first, NEXT_KEY), 'grabbed')
        self.assertEqual(self.grabs(first, DOWN_KEY, 2), 'grabbed')
        self.assertEqual(self.grabs(second, NEXT_KEY), TAKEN)
        first.ask('release 1')
        self.assertEqual(self.grabs(second, NEXT_KEY), 'grabbed')
        self.assertEqual(self.grabs(first, NEXT_KEY), TAKEN)
        self.press('Down')
        first.expect('hotkey 2')
        self.assertEqual(self.grabs(first, 144), 'not: The keyboard has no such key.')

    def test_two_players(self):
        self.open_elsewhere()
        self.wait_for_keys()
        first = self.player, self.directory, self.window
        self.directory = os.path.join(self.folder, 'second')
        self.write_settings(MusicVolume=70, X=500)
        self.open('--dir', self.directory, self.music)
        self.wait_for_title('a.wav')
        time.sleep(1)  # it has asked by then
        self.press('Next', 'Down')
        self.player, self.directory, self.window = first
        self.wait_for_title('b.wav')
        first[0].terminate()
        first[0].wait()
        self.player = self.running[-1]
        self.directory = os.path.join(self.folder, 'second')
        self.window, = self.display.windows_of(self.player)
        self.assertEqual(self.title(), 'a.wav')
        self.assertEqual(self.volume(), 70)
        self.press('Down')
        self.display.modify_keys('-e', 'keycode 117 = Next')
        self.wait_for_keys()
        self.press('Next')
        self.wait_for_title('b.wav')

    def test_another_keyboard_map(self):
        self.open_elsewhere()
        self.wait_for_keys()
        self.display.layout('de')
        self.press('Next')
        self.wait_for_title('b.wav')
        # Page Up and Page Down change places.
        self.display.modify_keys('-e', 'keycode 112 = Next', '-e', 'keycode 117 = Prior')
        self.wait_for_keys()
        self.press('112')
        self.wait_for_title('c.wav')
        self.press('117')
        self.wait_for_title('b.wav')
        # Ctrl, Alt and NumLock are no longer the modifiers that they were.
        self.display.modify_keys('-e', 'remove mod1 = Alt_L', '-e', 'add mod3 = Alt_L')
        self.wait_for_keys()


class ManagersOwn(HotKeys):
    @staticmethod
    def make_display():
        return Display()  # which has the arrows

    def test_what_the_window_manager_has_is_missing(self):
        self.open_elsewhere()
        wait_for(lambda: self.press('End') or self.title() == AT_REST, 'a key that works')
        self.press('Down', 'Up', 'Down')
        for key, title in (('Insert', 'a.wav'), ('Next', 'b.wav'), ('Prior', 'a.wav')):
            self.press(key)
            self.wait_for_title(title)
        self.assertEqual(self.volume(), 90)
        self.give_function_keys()
        self.press('F12')
        self.assertEqual(self.end_of(self.player), 0)


if __name__ == '__main__':
    main()
