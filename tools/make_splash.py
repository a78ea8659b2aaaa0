#!/usr/bin/env python3
"""Makes loading.avi, the endless animation of the splash window, in the one compressed form its control plays.

Phone and globe stand still (art/splash_still.svg, rendered by rsvg-convert); a green dot walks from one to the other.
The film is RIFF AVI without sound, 8-bit palette, run lengths (BI_RLE8). Colour 0 is the window's, and the first pixel
of every frame has it: that is how the control learns what to leave transparent.
"""
import argparse
import os
import struct
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

WIDTH, HEIGHT = 184, 64
FRAMES, FRAMES_A_SECOND, FRAMES_A_STEP = 8, 8, 2

FORM = (0xD8, 0xE4, 0xF8)
NAVY, ACCENT, GREEN = (0x00, 0x00, 0x80), (0x1F, 0x5F, 0xBF), (0x1B, 0x7F, 0x45)
PALE, WHITE = (0x9D, 0xB4, 0xDC), (0xFF, 0xFF, 0xFF)
INKS = (NAVY, ACCENT, GREEN, PALE, WHITE)
BLENDS = 8  # steps between an ink and the form colour

DOT_CENTRES = (58, 76, 94, 112)
DOT_ROW = 32
HEAD_RADIUS, DOT_RADIUS = 5, 3
SUBSAMPLES = 8  # a side, for the edge of a dot


def make_palette():
    """Colour 0, the inks, then for each ink its blends with colour 0, from the faintest on."""
    palette = [FORM, *INKS]
    for ink in INKS:
        for step in range(1, BLENDS + 1):
            palette.append(tuple((f * (BLENDS + 1 - step) + i * step + (BLENDS + 1) // 2) // (BLENDS + 1)
                                 for f, i in zip(FORM, ink)))
    return palette


def ink_index(ink, coverage):
    """The palette index of an ink that covers this share (0 to 1) of a pixel of the form colour."""
    step = round(coverage * (BLENDS + 1))
    if step == 0:
        return 0
    if step == BLENDS + 1:
        return 1 + INKS.index(ink)
    return 1 + len(INKS) + INKS.index(ink) * BLENDS + step - 1


def read_png(data):
    """Rows of (red, green, blue, alpha) of an 8-bit RGBA PNG, the only kind rsvg-convert writes."""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("not a PNG")
    position, header, packed = 8, None, b""
    while position < len(data):
        length, kind = struct.unpack_from(">I4s", data, position)
        body = data[position + 8:position + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            packed += body
        position += 12 + length
    width, height, *form = header
    if form != [8, 6, 0, 0, 0]:
        raise ValueError("not an 8-bit RGBA PNG")
    raw, stride = zlib.decompress(packed), 4 * width
    rows, above = [], bytearray(stride)
    for y in range(height):
        start = y * (stride + 1)
        row = bytearray(raw[start + 1:start + 1 + stride])
        unfilter(raw[start], row, above)
        rows.append([tuple(row[x:x + 4]) for x in range(0, stride, 4)])
        above = row
    return rows


def unfilter(kind, row, above):
    for x in range(len(row)):
        left = row[x - 4] if x >= 4 else 0
        up = above[x]
        corner = above[x - 4] if x >= 4 else 0
        if kind == 1:
            guess = left
        elif kind == 2:
            guess = up
        elif kind == 3:
            guess = (left + up) // 2
        elif kind == 4:
            estimate = left + up - corner
            guess = min((left, up, corner), key=lambda value: abs(estimate - value))
        else:
            guess = 0
        row[x] = (row[x] + guess) & 0xFF


def index_still(rows, palette):
    """The picture on the form colour, every pixel as the nearest colour of the palette; a list of rows."""
    nearest = {}

    def index(pixel):
        if pixel not in nearest:
            red, green, blue, alpha = pixel
            seen = [(c * alpha + f * (255 - alpha)) / 255 for c, f in zip((red, green, blue), FORM)]
            nearest[pixel] = min(range(len(palette)),
                                 key=lambda i: sum((a - b) ** 2 for a, b in zip(seen, palette[i])))
        return nearest[pixel]

    return [bytearray(index(pixel) for pixel in row) for row in rows]


def render_still(svg, palette):
    with tempfile.TemporaryDirectory() as scratch:
        png = Path(scratch) / "still.png"
        subprocess.run(["rsvg-convert", "-w", str(WIDTH), "-h", str(HEIGHT), str(svg), "-o", str(png)], check=True)
        return index_still(read_png(png.read_bytes()), palette)


def draw_dot(frame, centre, radius, ink):
    for y in range(DOT_ROW - radius, DOT_ROW + radius):
        for x in range(centre - radius, centre + radius):
            inside = 0
            for sub in range(SUBSAMPLES * SUBSAMPLES):
                dx = x + (sub % SUBSAMPLES + 0.5) / SUBSAMPLES - centre
                dy = y + (sub // SUBSAMPLES + 0.5) / SUBSAMPLES - DOT_ROW
                inside += dx * dx + dy * dy <= radius * radius
            frame[y][x] = ink_index(ink, inside / (SUBSAMPLES * SUBSAMPLES))


def make_frames(still):
    """The indexed frames, each a list of rows from the top: blue dots behind the green head, pale ones before it."""
    frames = []
    for number in range(FRAMES):
        frame = [bytearray(row) for row in still]
        head = number // FRAMES_A_STEP
        for place, centre in enumerate(DOT_CENTRES):
            if place == head:
                draw_dot(frame, centre, HEAD_RADIUS, GREEN)
            else:
                draw_dot(frame, centre, DOT_RADIUS, ACCENT if place < head else PALE)
        frames.append(frame)
    return frames


def encode_rle8(frame):
    """A whole frame as (count, colour) pairs, bottom row first; 0 0 ends a row, 0 1 the frame."""
    coded = bytearray()
    for row in reversed(frame):
        x = 0
        while x < len(row):
            run = 1
            while x + run < len(row) and run < 255 and row[x + run] == row[x]:
                run += 1
            coded += bytes((run, row[x]))
            x += run
        coded += b"\0\0"
    coded[-2:] = b"\0\1"
    return bytes(coded)


def chunk(kind, body):
    return kind + struct.pack("<I", len(body)) + body + b"\0" * (len(body) % 2)


def riff_list(kind, *chunks):
    return chunk(b"LIST", kind + b"".join(chunks))


def make_avi(frames, palette):
    coded = [encode_rle8(frame) for frame in frames]
    largest = max(len(data) for data in coded)
    has_index, key_frame = 0x10, 0x10
    main_header = struct.pack("<14I", 1000000 // FRAMES_A_SECOND, largest * FRAMES_A_SECOND, 0, has_index, len(frames),
                              0, 1, largest, WIDTH, HEIGHT, 0, 0, 0, 0)
    stream_header = struct.pack("<4s4sIHH8I4H", b"vids", b"mrle", 0, 0, 0, 0, 1, FRAMES_A_SECOND, 0, len(frames),
                                largest, 10000, 0, 0, 0, WIDTH, HEIGHT)
    bitmap_header = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 8, 1, WIDTH * HEIGHT, 0, 0, 256, 0)
    colours = b"".join(bytes((blue, green, red, 0)) for red, green, blue in palette).ljust(4 * 256, b"\0")
    index, offset = b"", 4
    for data in coded:
        index += struct.pack("<4sIII", b"00dc", key_frame, offset, len(data))
        offset += 8 + len(data) + len(data) % 2
    headers = riff_list(b"hdrl", chunk(b"avih", main_header),
                        riff_list(b"strl", chunk(b"strh", stream_header), chunk(b"strf", bitmap_header + colours)))
    movie = riff_list(b"movi", *(chunk(b"00dc", data) for data in coded))
    return chunk(b"RIFF", b"AVI " + headers + movie + chunk(b"idx1", index))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("still", type=Path, help="SVG of the parts that stand still")
    parser.add_argument("output", type=Path)
    options = parser.parse_args()
    palette = make_palette()
    try:
        avi = make_avi(make_frames(render_still(options.still, palette)), palette)
        made = options.output.with_name(options.output.name + ".part")
        made.write_bytes(avi)
        os.replace(made, options.output)
    except (OSError, ValueError, subprocess.CalledProcessError) as error:
        sys.exit(f"{options.output.name}: {error}")


if __name__ == "__main__":
    main()
