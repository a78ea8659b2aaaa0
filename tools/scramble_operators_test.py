#!/usr/bin/env python3
"""Tests of scramble_operators.py, and of the Default.DAT that the build made: scramble_operators_test.py [LIST]."""
import random
import sys
import unittest
from pathlib import Path

from scramble_operators import scramble, scramble_line, scramble_list, unscramble

CSV = Path(__file__).resolve().parent.parent / "data" / "operators.csv"
BUILT = None
PRINTABLE = bytes(range(32, 127)) + bytes(range(128, 256))
KEYS = [(first, last) for first in range(11) for last in range(6)]


class Keys:
    """Stands for the generator: gives the keys as the random numbers that round to them."""

    def __init__(self, *keys):
        self.numbers = [number for first, last in keys for number in (first / 10, last / 5)]

    def random(self):
        return self.numbers.pop(0)


class Scramble(unittest.TestCase):
    def test_known_lines(self):
        for text, first, last, line in (
                (b"", 3, 1, b"\x03\x01"),
                (b"Ab", 0, 0, b"\x00A+b+\x00"),
                (b"Ab", 5, 2, b"\x05D.e.\x02"),
                (b"Ab", 2, 5, b"\x02D.e.\x05"),
                (b"z|", 4, 0, b"\x04~/x1\x00"),       # 122 + 4 is 126, 124 + 4 is past it
                (b"\x7e\x7f", 0, 0, b"\x00\x7e+\x7f-\x00"),
                (b"\xe9", 10, 0, b"\x0a\xdf7\x00"),
                (b"\xff", 1, 0, b"\x01\xfe.\x00"),
                (b"a\tb", 9, 0, b"\x09j43k4\x00"),    # the tab is lost
                (b"a\tb", 8, 0, b"\x08i3\x113j3\x00")):
            with self.subTest(text=text, first=first, last=last):
                self.assertEqual(scramble(text, first, last), line)

    def test_printable_text_comes_back_with_all_keys(self):
        for first, last in KEYS:
            with self.subTest(first=first, last=last):
                text = b"." + PRINTABLE
                self.assertEqual(unscramble(scramble(text, first, last)), text)

    def test_after_a_lost_character_the_rest_is_out_of_step(self):
        self.assertNotEqual(unscramble(b"\x09j43k4\x00"), b"a\tb")

    def test_odd_characters_at_the_end_and_unknown_markers_give_nothing(self):
        self.assertEqual(unscramble(b"\x00A+b+c\x00"), b"Ab")
        self.assertEqual(unscramble(b"\x00A+bxc+\x00"), b"Ac")


class ScrambleLine(unittest.TestCase):
    def test_a_leading_blank_is_not_written_unshifted(self):
        self.assertEqual(scramble_line(b" a", Keys((0, 0), (3, 3), (2, 1))), scramble(b" a", 2, 1))

    def test_the_key_that_is_a_line_feed_is_drawn_again(self):
        self.assertEqual(scramble_line(b"a", Keys((10, 2), (4, 2))), scramble(b"a", 4, 2))

    def test_a_tab_is_kept(self):
        self.assertEqual(scramble_line(b"a\tb", Keys((9, 0), (8, 0))), scramble(b"a\tb", 8, 0))

    def test_a_line_that_no_keys_give_back_is_refused(self):
        with self.assertRaises(ValueError):
            scramble_line(b"a\0", random.Random(1))

    def test_halves_round_to_the_even_key(self):
        self.assertEqual(scramble_line(b"a", Keys((2.5, 2.5))), scramble(b"a", 2, 2))
        self.assertEqual(scramble_line(b"a", Keys((3.5, 3.5))), scramble(b"a", 4, 4))

    def test_all_other_keys_occur(self):
        generator = random.Random(1)
        drawn = {(line[0], line[-1]) for line in (scramble_line(b"a", generator) for _ in range(20000))}
        self.assertEqual(drawn, {keys for keys in KEYS if keys[0] != 10})


class ScrambleList(unittest.TestCase):
    RECORD = b"Austria" + b"," * 10

    def test_lines_end_with_carriage_return_and_line_feed(self):
        made = scramble_list(self.RECORD + b"\n" + self.RECORD + b"\n", 1)
        self.assertEqual([unscramble(line) for line in made.removesuffix(b"\r\n").split(b"\r\n")], [self.RECORD] * 2)

    def test_both_line_ends_make_the_same_list(self):
        self.assertEqual(scramble_list(self.RECORD + b"\r\n", 1), scramble_list(self.RECORD + b"\n", 1))

    def test_the_seed_decides(self):
        csv = (self.RECORD + b"\n") * 20
        self.assertEqual(scramble_list(csv, 1), scramble_list(csv, 1))
        self.assertNotEqual(scramble_list(csv, 1), scramble_list(csv, 2))

    def test_a_wrong_line_is_named(self):
        for line, message in ((self.RECORD + b",", "line 2: 12 fields"), (b"", "line 2: 1 fields"),
                              (self.RECORD + b"\0", "line 2: no keys")):
            with self.subTest(line), self.assertRaisesRegex(ValueError, message):
                scramble_list(self.RECORD + b"\n" + line + b"\n" + self.RECORD + b"\n", 1)


class Built(unittest.TestCase):
    def test_the_built_list_is_the_readable_one(self):
        if BUILT is None:
            self.skipTest("no list named")
        lines = BUILT.read_bytes().split(b"\r\n")
        self.assertEqual(lines.pop(), b"")
        self.assertEqual(b"".join(unscramble(line) + b"\n" for line in lines), CSV.read_bytes())
        self.assertTrue(all(0 <= line[0] <= 9 and 0 <= line[-1] <= 5 for line in lines))


if __name__ == "__main__":
    if len(sys.argv) > 1:
        BUILT = Path(sys.argv.pop(1))
    unittest.main()
