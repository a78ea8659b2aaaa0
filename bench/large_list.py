"""A list of operators much larger than the delivered one, as CSV; with it every bench has the same one.

   large_list.py RECORDS OUTPUT
"""

import os
import random
import sys

DELIVERED = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "data", "operators.csv")
COUNTRIES = 150


def rows(records):
    """The header and so many records of the delivered list, one of 150 countries put before each, in no order: a
    place does not stand behind itself, as it mostly does in the delivered list."""
    with open(DELIVERED, "rb") as file:
        header, *delivered = file.read().splitlines()
    tails = [line.split(b",", 1)[1] for line in delivered]
    generator = random.Random(1)
    yield header
    for i in range(records):
        country = i if i < COUNTRIES else generator.randrange(COUNTRIES)
        yield b"Country Number %03d," % country + tails[i % len(tails)]


if __name__ == "__main__":
    with open(sys.argv[2], "wb") as output:
        output.write(b"".join(line + b"\n" for line in rows(int(sys.argv[1]))))
