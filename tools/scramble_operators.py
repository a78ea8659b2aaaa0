#!/usr/bin/env python3
"""Scrambles the delivered list of operators; the build calls it to make Default.DAT from data/operators.csv.

Every line is scrambled on its own: a key character of 0 to 10, two characters for each of the text (its code shifted by
the distance of the keys, and a marker that says which way), a key character of 0 to 5. The keys are drawn from a seeded
generator, so the same list makes the same file.
"""
import argparse
import os
import random
import sys
from pathlib import Path

FIELDS = 11


def scramble(text, first, last):
    """The text, in bytes, scrambled with the two keys."""
    distance = abs(first - last)
    body = bytearray()
    for code in text:
        if code + distance >= 127:
            body += bytes((code - distance, ord("-") + distance))
        elif code - distance < 1:
            body.append(ord("*") + distance)  # the character itself is lost: part of the format
        else:
            body += bytes((code + distance, ord("+") + distance))
    return bytes((first, *body, last))


def unscramble(line):
    distance = abs(line[0] - line[-1])
    body = line[1:-1].strip(b" ")
    text = bytearray()
    for code, marker in zip(body[0::2], body[1::2]):
        if marker - distance == ord("-"):
            text.append(code + distance)
        elif marker - distance == ord("+"):
            text.append(code - distance)
    return bytes(text)


def scramble_line(text, generator):
    """Scrambled with keys that give the text back and put no line end into the line; ValueError when there are none."""
    for _ in range(1000):
        first, last = round(generator.random() * 10), round(generator.random() * 5)  # round: halves to even, as wanted
        line = scramble(text, first, last)
        if not set(b"\r\n") & set(line) and unscramble(line) == text:
            return line
    raise ValueError("no keys give this line back")


def scramble_list(csv, seed):
    """The list file for a CSV of either line end; raises ValueError with the number of a line that is wrong."""
    generator = random.Random(seed)
    made = bytearray()
    for number, text in enumerate(csv.replace(b"\r\n", b"\n").removesuffix(b"\n").split(b"\n"), start=1):
        try:
            if text.count(b",") != FIELDS - 1:
                raise ValueError(f"{text.count(b',') + 1} fields instead of {FIELDS}")
            made += scramble_line(text, generator) + b"\r\n"
        except ValueError as error:
            raise ValueError(f"line {number}: {error}") from None
    return bytes(made)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seed", type=int, default=1, help="of the keys (%(default)s)")
    parser.add_argument("csv", type=Path, help="the readable list, Windows-1252")
    parser.add_argument("output", type=Path)
    options = parser.parse_args()
    try:
        made = options.output.with_name(options.output.name + ".new")
        made.write_bytes(scramble_list(options.csv.read_bytes(), options.seed))
        os.replace(made, options.output)
    except (OSError, ValueError) as error:
        sys.exit(f"{options.csv.name}: {error}")


if __name__ == "__main__":
    main()
