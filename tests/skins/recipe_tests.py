"""The recipe of a skin: what a wrong looks file, a wrong row and a skin in another's place are told."""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
OWN = ROOT / 'assets' / 'funky_blue'
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / 'assets'))

from draw import check_rows, looks, rows  # noqa: E402
from draw.skin import Skin  # noqa: E402

EMBER = None  # drawn by the build


def draw_skin(*arguments):
    return subprocess.run([sys.executable, '-B', str(ROOT / 'assets' / 'draw_skin.py'), *arguments],
                          capture_output=True, text=True, check=False)


class InAScratchFolder(unittest.TestCase):
    def setUp(self):
        kept = tempfile.TemporaryDirectory()
        self.addCleanup(kept.cleanup)
        self.folder = pathlib.Path(kept.name)


class Looks(InAScratchFolder):
    """What a looks file is told; it begins as that of the player's own skin."""

    def faults(self, *additions):
        path = self.folder / 'looks.py'
        path.write_text('\n'.join([(OWN / 'looks.py').read_text('utf-8'), *additions]), 'utf-8')
        with self.assertRaises(SystemExit) as ended:
            looks.use(path)
        return [line.removeprefix(f'{path}: ') for line in str(ended.exception).splitlines()]

    def test_a_name_that_is_missing(self):
        self.assertEqual(self.faults('del FLOOR'), [
            'FLOOR is missing: a colour: (red, green, blue), each from 0 to 255'])

    def test_each_value_that_cannot_be_one(self):
        self.assertEqual(self.faults('TEXT = (256, 0, 0)', 'SILK = ((1, 2, 3),)', 'NAME = "A # B"',
                                     'LIST_FONT = ("Tahoma", 8)'), [
            "NAME is 'A # B' instead of a name, without | and #",
            'TEXT is (256, 0, 0) instead of a colour: (red, green, blue), each from 0 to 255',
            'SILK is ((1, 2, 3),) instead of 2 colours: ((red, green, blue), ...), each from 0 to 255',
            "LIST_FONT is ('Tahoma', 8) instead of a font: (name, size, italic, bold)"])

    def test_a_pulse_that_falls(self):
        self.assertEqual(self.faults('PULSE = ((10, 20, 30), (40, 19, 50))'), [
            'PULSE: no channel of the first colour may be above that of the second'])

    def test_tracks_without_the_floor(self):
        self.assertEqual(self.faults('FLOOR = (1, 2, 3)'), [
            "OUT_OF_USE: one of the tracks' sixteen colours has to be FLOOR, on which they lie"])


class Rows(InAScratchFolder):
    """What the check says of the rows of a copy of Ember, changed in one place."""

    def setUp(self):
        super().setUp()
        looks.use(ROOT / 'examples' / 'ember' / 'looks.py')
        shutil.copytree(EMBER, self.folder, dirs_exist_ok=True)
        self.skin = Skin(self.folder, 400)

    def faults(self, *lines, without=None):
        """With lines in the place of those of the same number."""
        text = self.skin.rows().read_text('utf-8')
        for number in [line.split('|')[0].strip() for line in lines] + [without]:
            text = re.sub(rf'(?m)^{number} \|.*\n', '', text)
        self.skin.rows().write_text(text + ''.join(line + '\n' for line in lines), 'utf-8')
        return check_rows.faults(self.skin)

    def test_nothing_is_wrong_with_them_as_they_are(self):
        self.assertEqual(self.faults(), [])

    def test_a_row_that_is_missing(self):
        self.assertEqual(self.faults(without=412), ['row 412 (btnSkin(0), exit: left) is missing'])

    def test_rows_of_another_kind(self):
        self.assertEqual(self.faults('412 | far | left', '437 | Maybe | italic',
                                     '448 | 16777216 | focus'), [
            'row 412 (btnSkin(0), exit: left) says "far": no number',
            'row 437 (picScrollText, the scrolling title: italic) says "Maybe": '
            'neither True nor False',
            'row 448 (The lists, and the panels that lie over the playlist: focus rectangle) says '
            '"16777216": no colour: red + 256 x green + 65536 x blue'])

    def test_rows_that_nobody_reads(self):
        self.assertEqual(self.faults('457 | 1 | behind the thumb', '684 | 1 | behind the skin'), [
            'row 457: nobody reads it', 'row 684: outside the skin, rows 400 to 683'])

    def test_a_floor_of_another_colour(self):
        # (28, 22, 20) is 28 + 256 x 22 + 65536 x 20 = 1316380; one more is (29, 22, 20).
        self.assertEqual(self.faults('433 | 1316381 | back colour'), [
            'row 433 (picScrollText, the scrolling title: back colour) says "1316381": '
            "this is (29, 22, 20), but the window's picture has (28, 22, 20) there"])

    def test_a_strip_that_does_not_fit_its_mask(self):
        self.assertEqual(self.faults('409 | 424 | the toggle\'s strip'), [
            'row 409 (btnSkin(0), exit: picture) says "424": '
            'the picture is 22 x 72, not 3 times the mask of 22 x 12'])

    def test_a_picture_that_is_not_there(self):
        self.assertEqual(self.faults('410 | 411 | mask'), [
            'row 410 (btnSkin(0), exit: mask picture) says "411": there is no such picture'])

    def test_a_control_beside_the_window(self):
        self.assertEqual(self.faults('413 | 277 | top'), [
            'row 413 (btnSkin(0), exit: top) says "277": beside the window of 293 x 277'])

    def test_a_pulse_that_falls(self):
        # Low end (228, 180, 110); a high end of (227, 255, 255) is 227 + 256 x 255 + 65536 x 255.
        self.assertEqual(self.faults('452 | 16777187 | high'), [
            'row 451 (The lists, and the panels that lie over the playlist: low end of the pulse: '
            'no byte above that of the high end) says "7255268": its red, 228, is above that of '
            'the high end, 227'])

    def test_another_base(self):
        self.assertEqual(self.faults('base | 500 |'), ['base | 500: the skin begins at 400'])


class Command(InAScratchFolder):
    def test_the_check_of_a_folder_finds_its_base_and_says_what_is_wrong(self):
        shutil.copytree(EMBER, self.folder, dirs_exist_ok=True)
        (self.folder / '521.bmp').rename(self.folder / '999.bmp')
        told = draw_skin('--check', '--out', str(self.folder), '--looks',
                         str(ROOT / 'examples' / 'ember' / 'looks.py'))
        self.assertEqual(told.returncode, 1, told.stderr)
        self.assertIn(f'{self.folder / "999.bmp"}: no picture of the skin\n', told.stdout)

    def test_without_looks_or_base_it_draws_nothing(self):
        out = str(self.folder / 'new')
        self.assertIn('--looks names the looks', draw_skin('--out', out).stderr)
        told = draw_skin('--out', out, '--looks', str(OWN / 'looks.py'))
        self.assertIn('--base has to be told, from 100 on', told.stderr)
        self.assertFalse(os.path.exists(out))

    def test_the_players_own_rows_are_those_that_the_command_writes(self):
        looks.use(OWN / 'looks.py')
        rows.write(Skin(self.folder, 100))
        self.assertEqual((self.folder / 'rows.txt').read_text('utf-8'),
                         (OWN / 'rows.txt').read_text('utf-8'))


class Embedding(InAScratchFolder):
    def embed(self, *folders):
        return subprocess.run(
            ['cmake', '-DSKINS=' + ';'.join(map(str, folders)), f'-DOUTPUT={self.folder / "skins.cpp"}',
             '-P', str(ROOT / 'cmake' / 'EmbedSkins.cmake')],
            capture_output=True, text=True, check=False)

    def skin(self, name, *lines):
        folder = self.folder / name
        folder.mkdir()
        (folder / 'rows.txt').write_text(''.join(line + '\n' for line in lines), 'utf-8')
        return folder

    def test_skins_whose_rows_overlap_are_refused(self):
        one, other = self.skin('one', 'base | 400 |'), self.skin('other', 'base | 683 |')
        self.assertIn('the skin begins at 683, and another at 400', ' '.join(
            self.embed(one, other).stderr.split()))
        self.assertFalse((self.folder / 'skins.cpp').exists())

    def test_skins_side_by_side_are_numbered_in_their_order(self):
        one, other = self.skin('one', 'base | 684 |', '692 | A | name'), self.skin('other', 'base | 400 |')
        self.assertEqual(self.embed(one, other).stderr, '')
        found = re.search(r'kTable\[\] = \{([^}]*)\}', (self.folder / 'skins.cpp').read_text('utf-8'))
        table = bytes(int(byte, 16) for byte in found.group(1).strip(',').split(',')).decode()
        self.assertEqual(rows.read(self._written(table)),
                         (None, {0: '2', 1: '684', 2: '400', 692: 'A'}))

    def _written(self, text):
        path = self.folder / 'table.txt'
        path.write_text(text, 'utf-8')
        return path

    def test_a_folder_that_does_not_say_where_it_begins_is_refused(self):
        self.assertIn('no line says where the skin begins', ' '.join(
            self.embed(self.skin('one', '407 | 1 | colour')).stderr.split()))


if __name__ == '__main__':
    parser = argparse.ArgumentParser()
    parser.add_argument('--ember', required=True, type=pathlib.Path)
    known, others = parser.parse_known_args()
    EMBER = known.ember
    unittest.main(argv=[sys.argv[0], *others])
