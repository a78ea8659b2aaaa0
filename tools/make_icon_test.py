#!/usr/bin/env python3
"""Tests of make_icon.py and of the drawings it is fed with."""
import re
import struct
import tempfile
import unittest
from pathlib import Path

import make_icon

ART = Path(__file__).resolve().parent.parent / "art"
DRAWINGS = sorted(path for path in ART.glob("*.svg") if not path.name.startswith("splash_"))


def entries(ico):
    """(width, bits, data) of every picture in an icon file."""
    reserved, kind, count = struct.unpack_from("<HHH", ico)
    assert (reserved, kind) == (0, 1)
    for index in range(count):
        width, _, _, _, _, bits, length, offset = struct.unpack_from("<BBBBHHII", ico, 6 + 16 * index)
        yield width or 256, bits, ico[offset:offset + length]


class Drawings(unittest.TestCase):
    def test_there_are_drawings(self):
        self.assertGreater(len(DRAWINGS), 20)

    def test_every_drawing_keeps_to_the_palette(self):
        for path in DRAWINGS:
            with self.subTest(path.name):
                make_icon.check_palette(path.read_text(encoding="utf-8"))

    def test_every_drawing_has_the_grid_its_name_says(self):
        for path in DRAWINGS:
            with self.subTest(path.name):
                grid = 16 if path.stem.endswith("_16") else 32
                self.assertIn(f'viewBox="0 0 {grid} {grid}"', path.read_text(encoding="utf-8"))

    def test_the_phone_of_a_grid_is_the_same_in_every_picture(self):
        for grid in ("_16", ""):
            phones = set()
            for path in DRAWINGS:
                if path.stem.endswith("_16") == bool(grid):
                    found = re.search(r'<g id="phone">(.*?)</g>', path.read_text(encoding="utf-8"), re.DOTALL)
                    phones.update([re.sub(r"\s+", " ", found.group(1))] if found else [])
            self.assertEqual(len(phones), 1)


class Muted(unittest.TestCase):
    def test_lines_and_signs_turn_muted(self):
        for colour in ("#000080", "#1B7F45", "#1F5FBF", "#B3261E"):
            self.assertEqual(make_icon.muted(f'stroke="{colour}"'), 'stroke="#50608A"')

    def test_second_stroke_and_white_stay(self):
        for colour in ("#7C90BA", "#FFFFFF"):
            self.assertEqual(make_icon.muted(f'fill="{colour}"'), f'fill="{colour}"')

    def test_masks_and_references_stay(self):
        svg = '<g mask="url(#halo)"><rect fill="white"/><circle fill="black"/></g>'
        self.assertEqual(make_icon.muted(svg), svg)

    def test_a_colour_outside_the_palette_is_refused(self):
        for svg in ('fill="#123456"', 'fill="#1b7f45"', 'stroke="#fff"'):
            with self.assertRaises(ValueError):
                make_icon.check_palette(svg)


class Icon(unittest.TestCase):
    def make(self, name, sizes, is_muted=False):
        with tempfile.TemporaryDirectory() as folder:
            output = Path(folder) / "made.ico"
            make_icon.make_icon(ART / f"{name}.svg", ART / f"{name}_16.svg", sizes, is_muted, output)
            self.assertEqual(list(Path(folder).iterdir()), [output])
            return output.read_bytes()

    def test_sizes_are_bitmaps_of_32_bits_and_only_256_is_png(self):
        found = list(entries(self.make("application", [16, 20, 64, 256])))
        self.assertEqual([(width, bits) for width, bits, _ in found], [(16, 32), (20, 32), (64, 32), (256, 32)])
        for width, _, data in found:
            if width == 256:
                self.assertTrue(data.startswith(b"\x89PNG"))
            else:
                self.assertEqual(struct.unpack_from("<IiiHHI", data), (40, width, 2 * width, 1, 32, 0))

    def test_the_halo_is_transparent(self):
        (_, _, data), = entries(self.make("add", [32]))
        pixel = lambda x, y: struct.unpack_from("<BBBB", data, 40 + 4 * (32 * (31 - y) + x))
        self.assertEqual(pixel(15, 22)[3], 0)           # between phone and badge
        self.assertEqual(pixel(11, 8), (255, 255, 255, 255))  # body of the phone

    def test_the_same_drawing_makes_the_same_bytes(self):
        self.assertEqual(self.make("connect", [16, 24]), self.make("connect", [16, 24]))

    def test_muted_differs(self):
        self.assertNotEqual(self.make("connect", [16]), self.make("connect", [16], is_muted=True))


if __name__ == "__main__":
    unittest.main()
