#!/usr/bin/env python3
"""Tests of make_manual.py, and of the manual that the build made: make_manual_test.py [MANUAL]."""
import re
import struct
import sys
import tempfile
import unittest
import zlib
from html.parser import HTMLParser
from pathlib import Path

from make_manual import Refused, make

ROOT = Path(__file__).resolve().parent.parent
DOCS = ROOT / "docs"
BUILT = None
# Of the sources: the constants that hold a text, possibly in pieces.
TEXTS = re.compile(r'constexpr (?:const char\*|std::string_view) k\w+ =\s*((?:"(?:[^"\\]|\\.)*"\s*)+);')

TEXT = """# The title

Some words.

## First part

![A window](window.png)

### A task

| a | b |
| --- | --- |
| 1 | 2 |

## Second part

See [the first](#first-part) & more.
"""


def png(width, height):
    part = lambda kind, data: struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = b"".join(b"\0" + b"\xff" * width for _ in range(height))
    return (b"\x89PNG\r\n\x1a\n" + part(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0)) +
            part(b"IDAT", zlib.compress(rows)) + part(b"IEND", b""))


class Page(HTMLParser):
    """What is in a page."""
    VOID = {"meta", "img", "br", "hr"}

    def __init__(self, text):
        super().__init__()
        self.tags, self.open, self.ids, self.links, self.pictures, self.titles = [], [], [], [], [], []
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.tags.append(tag)
        if tag not in self.VOID:
            self.open.append(tag)
        if "id" in given:
            self.ids.append(given["id"])
        if tag == "a":
            self.links.append(given.get("href"))
        if tag == "img":
            self.pictures.append(given)

    def handle_endtag(self, tag):
        assert self.open and self.open[-1] == tag, "</%s> behind %r" % (tag, self.open)
        self.open.pop()

    def handle_data(self, data):
        if self.open and self.open[-1] == "title":
            self.titles.append(data)


class Making(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / "window.png").write_bytes(png(30, 20))

    def make(self, text=TEXT, **more):
        return make(text, self.folder, **more)

    def test_title_contents_and_links(self):
        text = self.make(version="1.2.3")
        page = Page(text)
        self.assertEqual(page.open, [])
        self.assertEqual(page.titles, ["The title"])
        self.assertEqual(page.links, ["#first-part", "#a-task", "#second-part", "#first-part"])
        self.assertEqual(sorted(page.ids), ["a-task", "first-part", "second-part", "the-title"])
        self.assertLess(text.index("Some words."), text.index("<nav>"))
        self.assertLess(text.index("</nav>"), text.index('<h2 id="first-part">'))
        self.assertIn("Version 1.2.3", text)
        self.assertIn("<table>", text)
        self.assertNotIn("Version", self.make())

    def test_pictures_are_embedded_with_their_size(self):
        picture, = Page(self.make()).pictures
        self.assertTrue(picture["src"].startswith("data:image/png;base64,"))
        self.assertEqual((picture["width"], picture["height"], picture["alt"]), ("30", "20", "A window"))

    def test_the_same_text_gives_the_same_page(self):
        self.assertEqual(self.make(), self.make())

    def test_what_is_refused(self):
        (self.folder / "other.png").write_bytes(b"GIF89a")
        for change, why in (
                (("window.png", "missing.png"), "is missing"),
                (("window.png", "other.png"), "is no PNG"),
                (("window.png", "http://example.org/window.png"), "does not lie beside"),
                (("window.png", "/window.png"), "does not lie beside"),
                (("A window", ""), "no description"),
                (("#first-part", "#third-part"), "leads nowhere"),
                (("#first-part", "design.md"), "leads out"),
                (("#first-part", "http://example.org/"), "leads out"),
                (("## Second part", "## First part"), "called alike"),
                (("# The title\n", ""), "begin with its title"),
                (("Some words.", "<script>alert(1)</script>"), "more than text"),
        ):
            with self.subTest(change=change), self.assertRaisesRegex(Refused, why):
                self.make(TEXT.replace(*change, 1))


class Manual(unittest.TestCase):
    """The one that the build made, or that it would make."""

    @classmethod
    def setUpClass(cls):
        cls.source = (DOCS / "manual.md").read_text(encoding="utf-8")
        cls.text = BUILT.read_bytes().decode("utf-8") if BUILT else make(cls.source, DOCS)
        cls.page = Page(cls.text)

    def test_it_is_whole(self):
        self.assertEqual(self.page.open, [])
        self.assertEqual(self.page.titles, ["Pelvaro: the manual"])
        self.assertTrue(self.text.startswith('<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8">\n'))

    def test_contents_list_every_section(self):
        contents = re.search(r"<nav>.*?</nav>", self.text, re.S).group()
        sections = re.findall(r'<h[23] id="([^"]*)"', self.text)
        self.assertGreater(len(sections), 20)
        self.assertEqual(re.findall(r'href="#([^"]*)"', contents), sections)

    def test_every_link_resolves_within_the_page(self):
        for target in self.page.links:
            self.assertTrue(target.startswith("#"), target)
            self.assertIn(target[1:], self.page.ids)
        self.assertEqual(len(self.page.ids), len(set(self.page.ids)))

    def test_every_picture_is_embedded(self):
        named = re.findall(r"!\[[^\]]+\]\((pictures/[\w.]+)\)", self.source)
        self.assertGreater(len(named), 10)
        self.assertEqual(len(self.page.pictures), len(named))
        for picture in self.page.pictures:
            self.assertTrue(picture["src"].startswith("data:image/png;base64,"), picture["alt"])

    def test_every_picture_of_the_folder_is_used(self):
        self.assertEqual(sorted(file.name for file in (DOCS / "pictures").glob("*.png")),
                         sorted(set(re.findall(r"\(pictures/([\w.]+)\)", self.source))))

    def test_every_message_of_the_program_is_explained(self):
        messages = set()
        for file in [*ROOT.glob("src/ui/*.cpp"), *ROOT.glob("src/drivers/*.cpp"), *ROOT.glob("src/dialer/*.cpp")]:
            if file.name.endswith("_test.cpp"):
                continue
            for pieces in TEXTS.findall(file.read_text(encoding="utf-8")):
                text = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', pieces)).split("\\n")[0]
                if re.match(r"[A-Z]\w*[:,]? \w", text):
                    messages.add(text)
        progress = (ROOT / "src/dialer/asyndial.cpp").read_text(encoding="utf-8")
        messages |= set(re.findall(r'return "([^"]+)";', progress))
        self.assertGreater(len(messages), 25)
        self.assertEqual([message for message in sorted(messages) if message not in self.source], [])

    def test_nothing_is_fetched_or_run(self):
        self.assertFalse({"script", "link", "iframe", "object", "embed", "form"} & set(self.page.tags))
        self.assertNotRegex(self.text, r"(?i)\b(src|href)\s*=\s*[\"']?\s*(https?:|//|file:|javascript:)")
        self.assertNotRegex(self.text, r"@import|url\(")

    def test_letters_are_those_of_western_windows(self):
        self.text.encode("cp1252")

    def test_it_is_small(self):
        self.assertLess(len(self.text), 400_000)

    def test_it_is_up_to_date(self):
        if BUILT:
            version = re.search(r'<p class="version">Version ([\d.]+)</p>', self.text).group(1)
            self.assertEqual(self.text, make(self.source, DOCS, version))


if __name__ == "__main__":
    if len(sys.argv) > 1 and not sys.argv[1].startswith("-"):
        BUILT = Path(sys.argv.pop(1))
    unittest.main()
