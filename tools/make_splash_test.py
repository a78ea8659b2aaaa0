#!/usr/bin/env python3
"""Tests of make_splash.py: reads the film back byte by byte and compares it with the frames it was made from."""
import struct
import unittest
import zlib
from pathlib import Path

import make_splash as splash

STILL = Path(__file__).resolve().parent.parent / "art" / "splash_still.svg"


def chunks(data):
    """(kind, body) of every chunk in a RIFF body; a LIST's body starts with its own kind."""
    position = 0
    while position < len(data):
        kind, length = struct.unpack_from("<4sI", data, position)
        yield kind, data[position + 8:position + 8 + length]
        position += 8 + length + length % 2


def decode_rle8(data, width, height):
    """Rows from the top, -1 where nothing was drawn."""
    rows = [[-1] * width for _ in range(height)]
    x, y, position = 0, height - 1, 0
    while True:
        count, value = data[position], data[position + 1]
        position += 2
        if count:
            for _ in range(count):
                rows[y][x] = value
                x += 1
        elif value == 0:
            x, y = 0, y - 1
        elif value == 1:
            assert position == len(data), "bytes after the end of the frame"
            return rows
        else:
            raise AssertionError("only plain runs are written")


def png(rows, kind):
    """A PNG of RGBA rows, every row with the same filter."""
    packed, above = b"", bytes(4 * len(rows[0]))
    for pixels in rows:
        row = b"".join(bytes(pixel) for pixel in pixels)
        coded = bytearray(row)
        for x in range(len(row)):
            left, up, corner = (row[x - 4] if x >= 4 else 0), above[x], (above[x - 4] if x >= 4 else 0)
            paeth = min((left, up, corner), key=lambda value: abs(left + up - corner - value))
            coded[x] = (row[x] - (0, left, up, (left + up) // 2, paeth)[kind]) & 0xFF
        packed += bytes((kind,)) + coded
        above = row

    def part(name, body):
        return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))

    return (b"\x89PNG\r\n\x1a\n" + part(b"IHDR", struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 6, 0, 0, 0))
            + part(b"IDAT", zlib.compress(packed)) + part(b"IEND", b""))


class Palette(unittest.TestCase):
    def test_form_colour_then_inks_then_eight_blends_of_each(self):
        palette = splash.make_palette()
        self.assertEqual(palette[:6], [(216, 228, 248), (0, 0, 128), (31, 95, 191), (27, 127, 69), (157, 180, 220),
                                       (255, 255, 255)])
        self.assertEqual(len(palette), 6 + 5 * 8)

    def test_blends_go_from_the_form_colour_to_the_ink(self):
        palette = splash.make_palette()
        for ink in splash.INKS:
            reds = [palette[splash.ink_index(ink, step / 9)][0] for step in range(10)]
            self.assertEqual((reds[0], reds[9]), (216, ink[0]))
            self.assertEqual(reds, sorted(reds, reverse=ink[0] < 216))


class Png(unittest.TestCase):
    def test_every_filter_is_undone(self):
        rows = [[(7 * x, 11 * y, x * y, 255 - x) for x in range(9)] for y in range(6)]
        for kind in range(5):
            with self.subTest(kind):
                self.assertEqual(splash.read_png(png(rows, kind)), rows)

    def test_other_files_are_refused(self):
        with self.assertRaises(ValueError):
            splash.read_png(b"GIF89a")


class Rle8(unittest.TestCase):
    def test_bottom_row_comes_first(self):
        self.assertEqual(splash.encode_rle8([bytes((1, 1, 2)), bytes((3, 3, 3))]),
                         bytes((3, 3, 0, 0, 2, 1, 1, 2, 0, 1)))

    def test_runs_longer_than_a_byte_are_split(self):
        self.assertEqual(splash.encode_rle8([bytes(300)]), bytes((255, 0, 45, 0, 0, 1)))


class Film(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.palette = splash.make_palette()
        cls.frames = splash.make_frames(splash.render_still(STILL, cls.palette))
        cls.avi = splash.make_avi(cls.frames, cls.palette)
        (kind, body), = chunks(cls.avi)
        assert kind == b"RIFF" and body[:4] == b"AVI "
        cls.parts = list(chunks(body[4:]))
        cls.headers = dict(chunks(cls.parts[0][1][4:]))
        cls.stream = dict(chunks(cls.headers[b"LIST"][4:]))
        cls.coded = [data for _, data in chunks(cls.parts[1][1][4:])]

    def test_layout_is_headers_movie_index(self):
        self.assertEqual([(kind, body[:4]) for kind, body in self.parts[:2]], [(b"LIST", b"hdrl"), (b"LIST", b"movi")])
        self.assertEqual([kind for kind, _ in self.parts[2:]], [b"idx1"])

    def test_size_is_small_and_even(self):
        self.assertLess(len(self.avi), 100 * 1024)
        self.assertEqual(len(self.avi) % 2, 0)
        self.assertEqual(struct.unpack_from("<I", self.avi, 4)[0], len(self.avi) - 8)

    def test_main_header(self):
        fields = struct.unpack("<14I", self.headers[b"avih"])
        largest = max(map(len, self.coded))
        self.assertEqual(fields, (125000, 8 * largest, 0, 0x10, 8, 0, 1, largest, 184, 64, 0, 0, 0, 0))

    def test_the_only_stream_is_a_picture_of_eight_frames_a_second(self):
        fields = struct.unpack("<4s4sIHH8I4H", self.stream[b"strh"])
        self.assertEqual(fields[:2], (b"vids", b"mrle"))
        self.assertEqual(fields[6:10], (1, 8, 0, 8))
        self.assertEqual(fields[13:], (0, 0, 184, 64))

    def test_format_is_eight_bits_run_length_with_the_palette(self):
        form = self.stream[b"strf"]
        self.assertEqual(struct.unpack_from("<IiiHHII", form), (40, 184, 64, 1, 8, 1, 184 * 64))
        self.assertEqual(len(form), 40 + 4 * 256)
        for index, (red, green, blue) in enumerate(self.palette):
            self.assertEqual(tuple(form[40 + 4 * index:44 + 4 * index]), (blue, green, red, 0))

    def test_frames_read_back_as_drawn(self):
        self.assertEqual(len(self.coded), splash.FRAMES)
        for data, frame in zip(self.coded, self.frames):
            self.assertEqual(decode_rle8(data, 184, 64), [list(row) for row in frame])

    def test_index_points_at_every_frame(self):
        movie, index = self.parts[1][1], self.parts[2][1]
        self.assertEqual(len(index), 16 * splash.FRAMES)
        for number, data in enumerate(self.coded):
            kind, flags, offset, length = struct.unpack_from("<4sIII", index, 16 * number)
            self.assertEqual((kind, flags, length), (b"00dc", 0x10, len(data)))
            self.assertEqual(movie[offset:offset + 4], b"00dc")
            self.assertEqual(movie[offset + 8:offset + 8 + length], data)

    def test_all_four_corners_have_the_transparent_colour(self):
        for frame in self.frames:
            self.assertEqual({frame[0][0], frame[0][-1], frame[-1][0], frame[-1][-1]}, {0})

    def test_the_head_walks_right_two_frames_a_step(self):
        heads = [[frame[splash.DOT_ROW][centre] for centre in splash.DOT_CENTRES] for frame in self.frames]
        accent, green, pale = 2, 3, 4
        self.assertEqual(heads[0], [green, pale, pale, pale])
        self.assertEqual(heads[5], [accent, accent, green, pale])
        self.assertEqual(heads[::2], heads[1::2])

    def test_the_head_is_ten_pixels_wide(self):
        left = splash.DOT_CENTRES[0] - 5
        row = self.frames[0][splash.DOT_ROW]
        self.assertEqual([x for x in range(left - 3, left + 13) if row[x]], list(range(left, left + 10)))

    def test_only_the_dots_move(self):
        left, right = splash.DOT_CENTRES[0] - 5, splash.DOT_CENTRES[-1] + 5
        for first, last in zip(self.frames[0], self.frames[-1]):
            self.assertEqual(first[:left], last[:left])
            self.assertEqual(first[right:], last[right:])

    def test_the_same_drawing_makes_the_same_bytes(self):
        again = splash.make_frames(splash.render_still(STILL, self.palette))
        self.assertEqual(splash.make_avi(again, self.palette), self.avi)


if __name__ == "__main__":
    unittest.main()
