#!/usr/bin/env python3
"""Makes the manual that the program shows, one HTML file, from its Markdown: make_manual.py [--version V] IN.md OUT.html

The pictures are embedded and a table of contents stands before the first section. The page asks the network for nothing
and runs no script; its policy says so too. The same input gives the same bytes. A picture without a description or that
is missing, a link that leads nowhere or out of the page, and a heading whose name another one has end the making.
"""
import argparse
import base64
import html
import re
import struct
import sys
from pathlib import Path

import markdown

# Plain enough for the browsers of Windows XP: no variables, no grid.
STYLE = """
body { margin: 0 auto; max-width: 46em; padding: 1em 1.5em 4em; background: #ffffff; color: #1c2333;
  font: 16px/1.5 "Segoe UI", Tahoma, "Liberation Sans", sans-serif; }
h1, h2, h3 { color: #000080; line-height: 1.25; }
h1 { font-size: 1.9em; margin: 0.6em 0 0.2em; }
h2 { font-size: 1.4em; margin: 2em 0 0.5em; padding-top: 0.6em; border-top: 1px solid #b9c8e6; }
h3 { font-size: 1.1em; margin: 1.6em 0 0.3em; }
a { color: #1f5fbf; }
img { display: block; max-width: 100%; height: auto; margin: 1em 0; }
table { border-collapse: collapse; width: 100%; margin: 1em 0; font-size: 0.94em; }
th, td { border: 1px solid #b9c8e6; padding: 0.35em 0.6em; text-align: left; vertical-align: top; }
th { background: #d8e4f8; color: #000080; }
code, kbd { font-family: Consolas, "Liberation Mono", monospace; font-size: 0.92em; background: #eef3fc;
  padding: 0 0.25em; overflow-wrap: anywhere; }
pre code { display: block; padding: 0.6em; overflow: auto; }
blockquote { margin: 1em 0; padding: 0.1em 1em; border-left: 4px solid #1f5fbf; background: #eef3fc; }
nav { margin: 1.5em 0; padding: 0.6em 1.2em; background: #eef3fc; border: 1px solid #b9c8e6; }
nav ul { margin: 0.2em 0; padding-left: 1.2em; }
.version { color: #50608a; margin-top: 0; }
@media (prefers-color-scheme: dark) {
  body { background: #161b26; color: #dfe5f1; }
  h1, h2, h3 { color: #a9c8f5; }
  h2, th, td, nav { border-color: #3a4a6b; }
  a { color: #8ab4f8; }
  th { background: #26324c; color: #a9c8f5; }
  code, kbd, blockquote, nav { background: #1f2737; }
  .version { color: #9fb0d3; }
}
@media print {
  body { max-width: none; font-size: 11pt; }
  img, tr { page-break-inside: avoid; }
}
"""

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; img-src data:; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<style>{style}</style>
</head>
<body>
{body}
</body>
</html>
"""

PNG = b"\x89PNG\r\n\x1a\n"
PICTURE = re.compile(r"<img\b[^>]*>")
ATTRIBUTE = re.compile(r'(\w+)="([^"]*)"')


class Refused(Exception):
    """The manual cannot be made so."""


def embedded(tag, folder):
    """The picture's tag with the picture in it, and with its size, so that the page does not jump."""
    given = {name: html.unescape(value) for name, value in ATTRIBUTE.findall(tag)}
    source = given.get("src", "")
    if not given.get("alt"):
        raise Refused("the picture %s has no description" % source)
    if ":" in source or source.startswith("/"):
        raise Refused("the picture %s does not lie beside the manual" % source)
    try:
        data = (folder / source).read_bytes()
    except OSError:
        raise Refused("the picture %s is missing" % source) from None
    if not data.startswith(PNG):
        raise Refused("the picture %s is no PNG" % source)
    width, height = struct.unpack(">II", data[16:24])
    return '<img src="data:image/png;base64,%s" width="%d" height="%d" alt="%s">' % (
        base64.b64encode(data).decode("ascii"), width, height, html.escape(given["alt"]))


def check_links(body):
    names = re.findall(r'\bid="([^"]*)"', body)
    doubled = sorted({name for name in names if names.count(name) > 1 or re.search(r"_\d+$", name)})
    if doubled:
        raise Refused("two headings are called alike: " + ", ".join(doubled))
    for target in re.findall(r'<a\b[^>]*\bhref="([^"]*)"', body):
        if not target.startswith("#"):
            raise Refused("the link to %s leads out of the page" % target)
        if target[1:] not in names:
            raise Refused("the link to %s leads nowhere" % target)


def make(text, folder, version=None):
    """The page as text."""
    converter = markdown.Markdown(extensions=["tables", "sane_lists", "toc"], output_format="html",
                                  extension_configs={"toc": {"toc_depth": "2-3"}})
    body = converter.convert(text)
    heading = re.match(r"<h1[^>]*>(.*?)</h1>", body)
    if not heading:
        raise Refused("the manual does not begin with its title")
    if re.search(r"<(script|iframe|object|embed|link|form)\b", body, re.I):
        raise Refused("the manual holds more than text and pictures")
    version_line = '\n<p class="version">Version %s</p>' % html.escape(version) if version else ""
    first = body.find("<h2")
    first = len(body) if first < 0 else first
    contents = "<nav>\n<strong>Contents</strong>\n%s\n</nav>\n" % re.search(r"<ul>.*</ul>", converter.toc, re.S).group()
    body = heading.group() + version_line + body[heading.end():first] + contents + body[first:]
    check_links(body)
    body = PICTURE.sub(lambda tag: embedded(tag.group(), folder), body)
    return PAGE.format(title=re.sub(r"<[^>]*>", "", heading.group(1)), style=STYLE, body=body)


def main():
    options = argparse.ArgumentParser(description="Makes the manual's HTML page from its Markdown.")
    options.add_argument("--version", help="of the program")
    options.add_argument("source", type=Path)
    options.add_argument("page", type=Path)
    given = options.parse_args()
    try:
        page = make(given.source.read_text(encoding="utf-8"), given.source.parent, given.version)
    except Refused as reason:
        sys.exit("%s: %s" % (given.source, reason))
    given.page.write_bytes(page.encode("utf-8"))


if __name__ == "__main__":
    main()
