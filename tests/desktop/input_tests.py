#!/usr/bin/env python3
"""The desktop driver by itself: what it makes of pointer, keys and input methods."""

from desktop import main
from driver import Driver


class Pointer(Driver):
    def test_moves_presses_and_leaving(self):
        self.open()
        self.display.point_at(250, 170)
        self.expect('pointer 250 170 0 0')
        self.assertEqual(self.ask('pointer', answer='at'), 'at 250 170 0 0')
        for button, told in ((1, 1), (3, 2), (2, 4)):
            self.display.tool('click', button)
            self.expect(f'press 250 170 {told} 0')
            self.expect(f'release 250 170 {told} 0')
        self.display.point_at(600, 600)
        self.expect('left')
        self.assertEqual(self.ask('pointer', answer='at'), 'at 600 600 0 0')

    def test_a_held_button_keeps_the_pointer(self):
        self.open()
        self.display.tool('mousemove', 250, 170, 'mousedown', 1)
        self.expect('press 250 170 1 0')
        self.display.point_at(700, 40)
        self.expect('pointer 700 40 0 0')
        self.display.tool('mouseup', 1)
        self.expect('release 700 40 1 0')

    def test_modifiers_are_told(self):
        self.open()
        self.display.tool('mousemove', 250, 170, 'keydown', 'ctrl', 'click', 1, 'keyup', 'ctrl')
        self.expect('press 250 170 1 2')

    def test_wheel(self):
        self.open()
        self.display.click(250, 170, 4)
        self.expect('wheel 250 170 1 0')
        self.display.click(250, 170, 5)
        self.expect('wheel 250 170 -1 0')
        self.display.tool('keydown', 'shift', 'click', 4, 'keyup', 'shift')
        self.expect('wheel 250 170 1 1')


class Keyboard(Driver):
    def setUp(self):
        super().setUp()
        self.open()
        self.focus()

    def test_letters_and_digits(self):
        self.assertEqual(self.pressed('z', '7'), [
            'down 90 0', 'typed 122', 'up 90 0', 'down 55 0', 'typed 55', 'up 55 0'])

    def test_modifiers_count_from_their_own_press_to_their_release(self):
        self.assertEqual(self.pressed('shift+a'), [
            'down 16 1', 'down 65 1', 'typed 65', 'up 16 0', 'up 65 0'])
        self.assertEqual(self.pressed('ctrl+a'), [
            'down 17 2', 'down 65 2', 'typed 1', 'up 17 0', 'up 65 0'])
        self.assertEqual(self.pressed('alt+a'), [
            'down 18 4', 'down 65 4', 'up 18 0', 'up 65 0'])

    def test_named_keys(self):
        codes = {'BackSpace': 8, 'Tab': 9, 'Return': 13, 'Escape': 27, 'space': 32, 'Prior': 33,
                 'Next': 34, 'End': 35, 'Home': 36, 'Left': 37, 'Up': 38, 'Right': 39, 'Down': 40,
                 'Insert': 45, 'Delete': 46, 'Pause': 19, 'Menu': 93, 'F1': 112, 'F11': 122}
        typing = {8: 8, 9: 9, 13: 13, 27: 27, 32: 32}
        for name, code in codes.items():
            wanted = [f'down {code} 0', f'up {code} 0']
            if code in typing:
                wanted.insert(1, f'typed {typing[code]}')
            self.assertEqual(self.pressed(name), wanted, name)
        self.assertEqual(self.pressed('shift+Tab')[1], 'down 9 1')

    def test_numeric_pad(self):
        for name, code in {'KP_Add': 107, 'KP_Subtract': 109, 'KP_Multiply': 106,
                           'KP_Divide': 111, 'KP_Enter': 13}.items():
            self.assertIn(f'down {code} 0', self.pressed(name), name)
        self.assertIn('down 36 0', self.pressed('79'))  # pad 7, a caret key while NumLock is off
        self.display.tool('key', 'Num_Lock')
        self.addCleanup(self.display.tool, 'key', 'Num_Lock')
        self.expect('up 144')
        self.assertEqual(self.pressed('79'), ['down 103 0', 'typed 55', 'up 103 0'])

    def test_letters_go_by_what_the_key_types(self):
        # Key 52 is the leftmost of the lowest row of letters, 29 the sixth of the topmost.
        self.display.layout('de')
        self.assertEqual(self.pressed('52', '29'), [
            'down 89 0', 'typed 121', 'up 89 0', 'down 90 0', 'typed 122', 'up 90 0'])
        self.display.layout('fr')
        self.assertEqual(self.pressed('52'), ['down 87 0', 'typed 119', 'up 87 0'])
        # The upper row is that of the digits, though it types others.
        self.assertEqual(self.pressed('10'), ['down 49 0', 'typed 38', 'up 49 0'])

    def test_letters_go_by_their_place_without_latin_ones(self):
        self.display.layout('ru')
        self.assertEqual(self.pressed('52', '53', '54', '55', '56'), [
            'down 90 0', 'typed 1103', 'up 90 0', 'down 88 0', 'typed 1095', 'up 88 0',
            'down 67 0', 'typed 1089', 'up 67 0', 'down 86 0', 'typed 1084', 'up 86 0',
            'down 66 0', 'typed 1080', 'up 66 0'])
        self.assertIn('typed 1', self.pressed('ctrl+38'))

    def typed(self, *keys):
        """The units that keys type."""
        return [int(unit) for line in self.pressed(*keys) if line.startswith('typed')
                for unit in line.split()[1:]]

    def test_dead_keys_type_one_character_where_one_writes(self):
        self.display.layout('us', 'intl')
        self.assertEqual(self.typed('dead_acute', 'e'), [ord('e')])
        self.ask('write', 10, 20, 11, 33)
        self.assertEqual(self.typed('dead_acute', 'e'), [ord('é')])
        # What was begun when the caret goes elsewhere has no sequel.
        self.pressed('dead_acute')
        self.ask('endcomposing')
        self.assertEqual(self.typed('e'), [ord('e')])
        self.ask('write')
        self.assertEqual(self.typed('dead_acute', 'e'), [ord('e')])

    def test_input_methods_are_offered_only_where_one_writes(self):
        self.assertEqual(self.ask('method', answer='method').split()[1], '0')
        self.ask('write', 10, 20, 11, 33)
        self.assertEqual(self.ask('method', answer='method'), 'method 1 10 20 1 13')
        self.ask('write', 16, 20, 17, 33)
        self.assertEqual(self.ask('method', answer='method'), 'method 1 16 20 1 13')
        self.ask('write')
        self.assertEqual(self.ask('method', answer='method').split()[1], '0')

    def test_the_third_level_of_a_key_types(self):
        self.display.layout('de')
        self.assertEqual(self.typed('ISO_Level3_Shift+q', 'ISO_Level3_Shift+7'),
                         [ord('@'), ord('{')])

    def test_a_held_key_goes_down_again_and_again_and_up_once(self):
        self.display.tool('keydown', 'b')
        for _ in range(4):
            self.expect('down 66 0')
        self.display.tool('keyup', 'b')
        self.expect('up 66 0')
        self.assertFalse(any(line.startswith('up') for line in self.probe_lines.heard))

    def test_a_key_held_while_the_focus_goes_is_let_go(self):
        other = self.start_drag(500, 300, 'text/plain', '00', 'copy')
        other.expect('ready')
        self.focus()
        self.display.tool('keydown', 'shift')
        self.addCleanup(self.display.tool, 'keyup', 'shift')
        self.expect('down 16 1')
        self.display.tool('windowfocus', self.display.window('Source'))
        self.expect('up 16 0')


if __name__ == '__main__':
    main()
