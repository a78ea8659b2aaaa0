#!/usr/bin/env python3
"""Makes one multi-size Windows icon from the SVG drawings of a picture; the build calls it once an icon.

16 and 20 pixels come from the drawing on the 16 grid, larger sizes from the one on the 32 grid (or from the 16 grid
where a picture has no other). Entries are 32-bit bitmaps, for Windows XP's loader knows nothing else; only 256 pixels,
which XP skips, is stored as PNG. With --muted the drawing is recoloured for a disabled control first.
"""
import argparse
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

# Every colour a picture may use, and what it becomes in the muted variant.
MUTED = {
    "#000080": "#50608A",  # navy line
    "#1B7F45": "#50608A",  # go
    "#1F5FBF": "#50608A",  # accent
    "#B3261E": "#50608A",  # stop
    "#16489C": "#50608A",  # tile of the application
    "#50608A": "#50608A",
    "#7C90BA": "#7C90BA",  # second stroke
    "#A9C8F5": "#D3DEF3",  # pale screen
    "#FFFFFF": "#FFFFFF",
}
COLOUR = re.compile(r"#[0-9A-Za-z]+(?=\")")
SMALL_DRAWING_UP_TO = 20
PNG_FROM = 256


def check_palette(svg):
    """Raises ValueError for a colour outside the palette, so that no picture escapes the muted variant."""
    strange = sorted(set(COLOUR.findall(svg)) - set(MUTED))
    if strange:
        raise ValueError("not in the palette: " + ", ".join(strange))


def muted(svg):
    """The drawing in the colours of a disabled control. Masks are written `white` and `black` and stay as they are."""
    return COLOUR.sub(lambda match: MUTED[match.group()], svg)


def make_icon(drawing, small_drawing, sizes, is_muted, output):
    with tempfile.TemporaryDirectory(dir=output.parent) as scratch:
        scratch = Path(scratch)
        sources = {}
        for source in {drawing, small_drawing}:
            svg = source.read_text(encoding="utf-8")
            check_palette(svg)
            sources[source] = scratch / source.name
            sources[source].write_text(muted(svg) if is_muted else svg, encoding="utf-8")
        arguments = []
        for size in sizes:
            source = sources[small_drawing if size <= SMALL_DRAWING_UP_TO else drawing]
            png = scratch / f"{size}.png"
            subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), str(source), "-o", str(png)], check=True)
            arguments.append(f"--raw={png}" if size >= PNG_FROM else str(png))
        made = scratch / "made.ico"
        subprocess.run(["icotool", "-c", "-b", "32", "-o", str(made), *arguments], check=True)
        os.replace(made, output)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--drawing", type=Path, required=True, help="SVG for the sizes above 20")
    parser.add_argument("--small", type=Path, help="SVG for 16 and 20; the same one if left out")
    parser.add_argument("--sizes", default="16,20,24,32,48,64", help="pixels, separated by commas")
    parser.add_argument("--muted", action="store_true", help="in the colours of a disabled control")
    parser.add_argument("output", type=Path)
    options = parser.parse_args()
    sizes = [int(size) for size in options.sizes.split(",")]
    try:
        make_icon(options.drawing, options.small or options.drawing, sizes, options.muted, options.output)
    except (OSError, ValueError, subprocess.CalledProcessError) as error:
        sys.exit(f"{options.output.name}: {error}")


if __name__ == "__main__":
    main()
