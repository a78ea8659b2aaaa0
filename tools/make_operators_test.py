#!/usr/bin/env python3
"""Tests of make_operators.py and of the list in data/ that it made."""
import ipaddress
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from xml.etree import ElementTree

import make_operators
from make_operators import Unusable, credential, label, name_server, records, transliterated

TOOL = Path(__file__).resolve().parent / "make_operators.py"
CSV = TOOL.parent.parent / "data" / "operators.csv"


def country(inside, code="at", name="Austria"):
    return f'<country code="{code}"><name>{name}</name>{inside}</country>'


def provider(points, name="<name>Alpha</name>", networks='<network-id mcc="232" mnc="01"/>'):
    return f"<provider>{name}<gsm>{networks}{points}</gsm></provider>"


def point(inside='<usage type="internet"/>', value="web"):
    return f'<apn value="{value}">{inside}</apn>'


class Text(unittest.TestCase):
    def test_letters(self):
        for text, expected in (
                ("Vidéotron, Síminn", "Vidéotron, Síminn"),
                ("Zażółć gęślą jaźń", "Zazólc gesla jazn"),
                ("Łódź đ", "Lódz d"),
                ("Iğdır İŞ ş", "Igdir IS s"),
                ("Előf. Űr", "Elöf. Ür"),
                ("fără", "fara"),
                ("Билайн Мегафон Ещё Щука", "Bilayn Megafon Eshchyo Shchuka"),
                ("Київстар Ґ", "Kiyivstar G"),
                ("объявь", "obyav"),
                ("Ελλάς Ψ", "Ellas Ps"),
                ("楽天モバイル", "Rakuten Mobile"),
                ("Mineo (Dプラン)", "Mineo (D Plan)"),
                ("ＡＢＣ ﬁ", "ABC fi"),
                ("e\u0301", "é"),
                ("€ “x”", "€ “x”")):
            with self.subTest(text):
                self.assertEqual(transliterated(text), expected)

    def test_a_letter_without_a_row_is_an_error_and_never_a_question_mark(self):
        with self.assertRaisesRegex(ValueError, "U\\+4FE1"):
            transliterated("信")

    def test_labels_have_no_commas_blanks_around_or_line_breaks(self):
        for text, expected in ((" a,\n\tb ", "a; b"), ("7,2 Mbit/s", "7.2 Mbit/s"), ('a "b"', "a 'b'"), (None, "")):
            with self.subTest(text):
                self.assertEqual(label(text), expected)

    def test_credentials_are_kept_or_refused_but_never_altered(self):
        self.assertEqual(credential(" wap@wap "), "wap@wap")
        self.assertEqual(credential(None), "")
        for text in ("a,b", "a b", "é"):
            with self.subTest(text), self.assertRaises(Unusable):
                credential(text)

    def test_name_servers_are_dotted_quads(self):
        self.assertEqual(name_server(" 10.04.085.138\n"), "10.4.85.138")
        for text in (None, "", "0.0.0.0", "256.1.1.1", "1.2.3", "1.2.3.4.5", "1.2.3.x", "1.2.3.4:53", "1.2.-3.4", "1.2.3.٤"):
            with self.subTest(text):
                self.assertIsNone(name_server(text))


class Records(unittest.TestCase):
    def made(self, *countries):
        self.left_out = []
        root = ElementTree.fromstring("<serviceproviders>" + "".join(countries) + "</serviceproviders>")
        return [b",".join(fields).decode("cp1252") for fields in records(root, self.left_out.append)]

    def test_every_field_at_its_place(self):
        full = point('<plan type="prepaid"/><plan type="postpaid"/><usage type="internet"/><name>Flat, large</name>'
                     "<gateway>10.0.0.1:80</gateway><username>me</username><password>secret</password>"
                     '<authentication method="pap"/><dns>1.2.3.4</dns><dns>5.6.7.8</dns>')
        networks = '<network-id mcc="232" mnc="10"/><network-id mcc="232" mnc="01"/>'
        self.assertEqual(self.made(country(provider(full, networks=networks))), [
            "Austria,Alpha,web,me,secret,1.2.3.4,5.6.7.8,Flat; large,232-01 232-10,prepaid; postpaid,"
            "Authentication PAP; Gateway 10.0.0.1:80"])

    def test_what_is_not_given_stays_empty(self):
        self.assertEqual(self.made(country(provider(point(), networks=""))), ["Austria,Alpha,web,,,,,,,,"])

    def test_only_internet_access_points(self):
        uses = ["internet", "mms", "wap", "ia", "mms-internet-hipri", "mms-internet-hipri-fota"]
        points = "".join(point(f'<usage type="{use}"/>', value=use) for use in uses)
        points += "".join(point("", value=value) for value in ("unstated", "wap.x", "MMS", "wapx"))
        self.assertEqual([line.split(",")[2] for line in self.made(country(provider(points)))],
                         ["internet", "mms-internet-hipri", "mms-internet-hipri-fota", "unstated", "wapx"])
        self.assertEqual(self.left_out, ["Austria, Alpha: states no use: wap.x", "Austria, Alpha: states no use: MMS"])

    def test_unusable_ones_are_named(self):
        points = point(value="http://10.0.0.1") + point("<username>a,b</username>")
        self.assertEqual(self.made(country(provider(points))), [])
        self.assertEqual(self.left_out, ["Austria, Alpha: no access point name: http://10.0.0.1",
                                         "Austria, Alpha: cannot be stored: a,b"])

    def test_a_bad_or_repeated_name_server_leaves_no_gap(self):
        points = point("<dns>none</dns><dns>1.2.3.4</dns>", "a") + point("<dns>1.2.3.4</dns><dns>1.2.3.4</dns>", "b")
        self.assertEqual([line.split(",")[5:7] for line in self.made(country(provider(points)))], [["1.2.3.4", ""]] * 2)

    def test_the_name_without_a_language_then_the_english_one(self):
        for names, expected in (('<name xml:lang="ru">Билайн</name><name>Beeline</name>', "Beeline"),
                                ('<name xml:lang="ru">Билайн</name><name xml:lang="en">Bee</name>', "Bee"),
                                ('<name xml:lang="ru">Билайн</name>', "Bilayn")):
            with self.subTest(expected):
                self.assertEqual(self.made(country(provider(point(), names)))[0].split(",")[1], expected)

    def test_rows_that_differ_in_the_plan_type_alone_are_one(self):
        plan = '<plan type="{}"/>'.format
        points = point(plan("prepaid")) + point(plan("postpaid")) + point(plan("postpaid") + plan("postpaid"))
        self.assertEqual(self.made(country(provider(points))), ["Austria,Alpha,web,,,,,,232-01,prepaid; postpaid,"])
        self.assertEqual(self.made(country(provider(point() + point(plan("prepaid"))))),
                         ["Austria,Alpha,web,,,,,,232-01,prepaid,"])
        others = point(plan("prepaid") + "<name>One</name>") + point(plan("postpaid") + "<name>Two</name>")
        self.assertEqual(self.made(country(provider(others))),
                         ["Austria,Alpha,web,,,,,One,232-01,prepaid,", "Austria,Alpha,web,,,,,Two,232-01,postpaid,"])

    def test_sorted_and_without_repeats(self):
        lines = self.made(country(provider(point(value="b") + point(value="a") + point(value="b"), "<name>B</name>")),
                          country("".join(provider(point(), f"<name>{name}</name>") for name in ("É", "b", "a", "é", "A", "C")),
                                  "al", "Albania"))
        self.assertEqual([line.split(",")[:3] for line in lines], [
            *(["Albania", name, "web"] for name in ("A", "a", "b", "C", "É", "é")), ["Austria", "B", "a"], ["Austria", "B", "b"]])

    def test_countries_are_called_as_usual_and_misplaced_operators_moved(self):
        moved = provider(point(), networks='<network-id mcc="250" mnc="34"/>')
        lines = self.made(country(provider(point()), "kr", "Korea, Republic of"),
                          country(provider(point(value="ug")) + moved, "ug", "Uganda"), country("", "ua", "Ukraine"))
        self.assertEqual([line.split(",")[0] for line in lines], ["South Korea", "Uganda", "Ukraine"])

    def test_a_number_to_be_filled_in_is_explained(self):
        line, = self.made(country(provider(point('<username>65(mobilenumber)</username>'))))
        self.assertTrue(line.endswith(",(mobilenumber) stands for your phone number"))


class Program(unittest.TestCase):
    def run_tool(self, xml):
        with tempfile.TemporaryDirectory() as folder:
            providers, output = Path(folder) / "in.xml", Path(folder) / "out.csv"
            providers.write_text(xml, encoding="utf-8")
            output.write_text("old")
            done = subprocess.run([sys.executable, "-B", TOOL, "--providers", providers, output], capture_output=True, text=True)
            return done, output.read_bytes()

    def test_writes_header_and_records(self):
        done, made = self.run_tool("<serviceproviders>" + country(provider(point())) + "</serviceproviders>")
        self.assertEqual((done.returncode, done.stdout), (0, "1 records, 1 countries\n"))
        self.assertEqual(made, make_operators.HEADER.encode() + b"\nAustria,Alpha,web,,,,,,232-01,,\n")

    def test_a_failure_leaves_the_old_list(self):
        for xml in ("<serviceproviders>", "<s>" + country(provider(point(), "<name>信</name>")) + "</s>"):
            with self.subTest(xml):
                done, made = self.run_tool(xml)
                self.assertEqual((done.returncode, made), (1, b"old"))
                self.assertRegex(done.stderr, r"\Aout\.csv: [^\n]+\n\Z")


class DeliveredList(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.header, *cls.lines = CSV.read_bytes().removesuffix(b"\n").split(b"\n")
        cls.records = [line.decode("cp1252").split(",") for line in cls.lines]

    def test_header(self):
        self.assertEqual(self.header.decode(), make_operators.HEADER)
        self.assertEqual(make_operators.HEADER.count(","), 10)

    def test_size(self):
        countries = len({fields[0] for fields in self.records})
        self.assertEqual((len(self.records), countries), (946, 153))
        about = (CSV.parent / "README.md").read_text(encoding="utf-8")
        self.assertIn(f"{len(self.records)} of them in {countries}\ncountries", about)

    def test_every_record_has_11_clean_fields(self):
        for fields in self.records:
            with self.subTest(fields):
                self.assertEqual(len(fields), 11)
                self.assertTrue(all(fields[:3]))
                self.assertEqual(fields, [" ".join(field.split()) for field in fields])
                self.assertTrue("".join(fields).isprintable())
                self.assertNotRegex("".join(fields), r'[?"]')

    def test_no_text_was_decoded_wrongly(self):
        for fields in self.records:
            with self.subTest(fields):
                self.assertNotRegex("".join(fields), "[ÃÂ][\u0080-\u00bf‚-™]")

    def test_sorted_and_without_rows_that_differ_in_the_plan_type_alone(self):
        self.assertEqual(self.lines, sorted(self.lines, key=lambda line: (
            line.split(b",")[0], line.decode("cp1252").split(",")[1].casefold(), line.split(b",")[1:])))
        self.assertEqual(len({(*fields[:9], *fields[10:]) for fields in self.records}), len(self.records))

    def test_fields_mean_what_the_header_says(self):
        for fields in self.records:
            with self.subTest(fields):
                self.assertRegex(fields[0], r"\A[A-Z][A-Za-z ().-]+\Z")
                self.assertRegex(fields[2], r"\A[A-Za-z0-9._-]+\Z")
                self.assertRegex(fields[3] + fields[4], r"\A[!-~]*\Z")
                for server in filter(None, fields[5:7]):
                    ipaddress.IPv4Address(server)
                self.assertFalse(fields[6] and not fields[5])
                self.assertRegex(fields[8], r"\A(\d{3}-\d{2,3}( \d{3}-\d{2,3})*)?\Z")
                self.assertIn(fields[9], ("", "prepaid", "postpaid", "prepaid; postpaid"))

    def test_a_network_belongs_to_one_country(self):
        homes = {}
        for fields in self.records:
            for code in re.findall(r"\d{3}(?=-)", fields[8]):
                homes.setdefault(code, set()).add(fields[0])
        shared = {code: names for code, names in homes.items() if len(names) > 1}
        self.assertEqual(shared, {"234": {"United Kingdom", "Guernsey", "Jersey", "Isle of Man"},
                                  "250": {"Russia", "Ukraine"}})


if __name__ == "__main__":
    unittest.main()
