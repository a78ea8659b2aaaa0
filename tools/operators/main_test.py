#!/usr/bin/env python3
"""Tests of the tool for operator list files as a program: main_test.py LIST CSV COMMAND...

LIST is the delivered list as it was built, CSV its readable form, COMMAND what starts the tool.
"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LIST, CSV, COMMAND = Path(), Path(), []
HEADER = b"a,b,c,d,e,f,g,h,i,j,k\n"
EMPTY_FIELDS = b"," * 10


class Program(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def path(self, name):
        return Path(self.folder.name) / name

    def run_tool(self, *words, given=b""):
        """The exit code, standard output, and standard error as lines. Runs in a folder of its own."""
        done = subprocess.run([*COMMAND, *words], input=given, capture_output=True, cwd=self.folder.name, timeout=60)
        return done.returncode, done.stdout, done.stderr.decode("cp1252").splitlines()

    def names(self):
        return sorted(path.name for path in Path(self.folder.name).iterdir())

    def test_help(self):
        for words in (["--help"], ["check", "--help"], ["from-csv", "--seed", "1", "-h"]):
            with self.subTest(words):
                code, output, errors = self.run_tool(*words)
                self.assertEqual((code, errors), (0, []))
                self.assertTrue(output.startswith(b"Operator list files of Pelvaro as CSV and back.\n"))
                self.assertNotIn(b"\r", output)

    def test_wrong_usage_and_what_cannot_be_read_end_with_2(self):
        for words, message in (([], "a command is missing (operators --help)"),
                               (["chekc"], "unknown command chekc (operators --help)"),
                               (["check", "--all"], "unknown option --all (operators --help)"),
                               (["check", "a", "b"], "more than one file (operators --help)"),
                               (["check", "-o", "a"], "-o is for to-csv and from-csv (operators --help)"),
                               (["to-csv", "-o"], "-o needs a file (operators --help)"),
                               (["to-csv", "--seed", "1"], "--seed is for from-csv (operators --help)"),
                               (["from-csv", "--seed", "x"], "--seed needs a number from 0 to 4294967295 (operators --help)"),
                               (["check", "missing.dat"], "cannot read missing.dat"),
                               (["check", "--", "--help"], "cannot read --help")):
            with self.subTest(words):
                self.assertEqual(self.run_tool(*words), (2, b"", ["operators: " + message]))

    def test_every_byte_arrives_as_it_is(self):
        inside = bytes(code for code in range(1, 256) if code not in b'\n\r",') + b"\x1a\r\n\n\r"
        csv = HEADER + b'Austria,"' + inside + b'"' + b"," * 9 + b"\n"
        code, made, errors = self.run_tool("from-csv", "--seed", "3", given=csv)
        self.assertEqual((code, errors), (0, []))
        self.assertEqual(made.count(b"\r\n"), 2)
        self.assertEqual(self.run_tool("to-csv", given=made), (0, csv, []))
        self.path("list.dat").write_bytes(made)
        self.assertEqual(self.run_tool("to-csv", "list.dat"), (0, csv, []))
        # keys that are NUL and LF, a text of NUL and the character that ends a text elsewhere
        line = b"\n" + b"".join(bytes((code + 10, 53)) for code in b"\x1a") + b"\0\r\n" + b"\0\0+\0\r\n"
        self.assertEqual(self.run_tool("to-csv", given=line), (0, b"\x1a\n\0" + EMPTY_FIELDS + b"\n", []))

    def test_an_empty_input(self):
        self.path("empty").touch()
        self.assertEqual(self.run_tool("to-csv", "empty"), (0, b"", []))
        self.assertEqual(self.run_tool("from-csv", "empty"), (1, b"", ["line 1: the header is missing"]))
        code, output, errors = self.run_tool("check", "-")
        self.assertEqual((code, output), (1, b"line 1: the header is missing\n0 records, 1 thing wrong\n"))
        self.assertEqual(errors, [])

    def test_every_fault_is_told_whatever_stands_in_the_field(self):
        csv = HEADER + b'"\0,",b,c,d,e,f,g,h,i,j,k\nx\n'
        self.assertEqual(self.run_tool("from-csv", given=csv),
                         (1, b"", ['line 2: a comma in the field "?,"', "line 3: 1 field, not 11"]))

    def test_a_large_input(self):
        self.assertEqual(self.run_tool("from-csv", given=b"," * 5_000_000), (1, b"", ["line 1: 5000001 fields, not 11"]))
        with self.path("large").open("wb") as file:
            file.truncate((64 << 20) + 1)
        self.assertEqual(self.run_tool("check", "large"), (2, b"", ["operators: large is larger than 64 MB"]))

    def test_an_output_file_is_the_old_one_or_the_new_one(self):
        self.path("-in.csv").write_bytes(HEADER)
        self.path("out.dat").write_bytes(b"old")
        self.assertEqual(self.run_tool("from-csv", "-o", "out.dat", given=b"x\n"), (1, b"", ["line 1: 1 field, not 11"]))
        self.assertEqual(self.path("out.dat").read_bytes(), b"old")
        self.assertEqual(self.run_tool("from-csv", "-o", "out.dat", "--", "-in.csv"), (0, b"", []))
        self.assertEqual(self.run_tool("to-csv", "-o", "out.dat", "out.dat"), (0, b"", []))
        self.assertEqual(self.path("out.dat").read_bytes(), HEADER)
        self.path("folder").mkdir()
        for name in ("folder", "missing/out.dat"):
            with self.subTest(name):
                self.assertEqual(self.run_tool("to-csv", "-o", name), (2, b"", [f"operators: cannot write {name}"]))
        self.assertEqual(self.names(), ["-in.csv", "folder", "out.dat"])

    def test_the_delivered_list(self):
        self.path("list.dat").write_bytes(LIST.read_bytes())
        records = CSV.read_bytes().count(b"\n") - 1
        self.assertEqual(self.run_tool("check", "list.dat"), (0, b"%d records, nothing wrong\n" % records, []))
        self.assertEqual(self.run_tool("to-csv", "list.dat"), (0, CSV.read_bytes(), []))


if __name__ == "__main__":
    LIST, CSV, COMMAND = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3:]
    unittest.main(argv=sys.argv[:1])
