#!/usr/bin/env python3
"""Makes data/operators.csv, the delivered list of operators, from the public-domain provider list of Debian's package
mobile-broadband-provider-info. Run by a maintainer, not by the build: the result is reviewed and committed.

One record is one GSM access point for Internet use. Records have 11 fields without quoting, so no field holds a comma;
the text is Windows-1252. What cannot be used is left out and named on standard error; a letter that nobody has given a
transliteration yet ends the run.
"""
import argparse
import os
import re
import sys
import unicodedata
import xml.etree.ElementTree as ElementTree
from pathlib import Path

PROVIDERS = Path("/usr/share/mobile-broadband-provider-info/serviceproviders.xml")
HEADER = ("Country/ City,Operator,APN,User Name,Password,Primary DNS,Secondary DNS,"
          "Plan,Network Codes,Plan Type,Notes")
PLAN_TYPE = HEADER.split(",").index("Plan Type")
INTERNET_USES = {"internet", "mms-internet-hipri", "mms-internet-hipri-fota"}
LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"
APN = re.compile(r"[A-Za-z0-9._-]+")
NOT_INTERNET = re.compile(r"(mms|wap)\b", re.IGNORECASE)  # what an access point is called that states no use
OWN_NUMBER = re.compile(r"MSISDN|\(mobilenumber\)")  # stands in a user name for the subscriber's number

# Countries that the provider list calls otherwise than English usually does. ASCII, so that their order is right.
COUNTRY_NAMES = {
    "cd": "Congo (Democratic Republic)",
    "ci": "Ivory Coast",
    "gb": "United Kingdom",
    "jo": "Jordan",
    "kr": "South Korea",
    "lc": "Saint Lucia",
    "mk": "North Macedonia",
    "re": "Reunion",
    "vc": "Saint Vincent and the Grenadines",
    "vn": "Vietnam",
}
# Operators under the wrong country, by the country code of their networks: the provider list's own remark places these
# in Ukraine, its entry in Uganda ("ug" for "ua").
MISPLACED = {("ug", "250"): "ua"}

# Whole words where letter by letter would be unreadable. The longest match wins.
WORDS = {
    "エキサイトモバイル": "Excite Mobile",
    "楽天モバイル": "Rakuten Mobile",
    "モバイル": "Mobile",
    "楽天": "Rakuten",
    "新コース": "New Course",
    "プラン": " Plan",
    "همراه اول": "Hamrah-e Aval",
    "ایرانسل": "Irancell",
}
WORD = re.compile("|".join(sorted(map(re.escape, WORDS), key=len, reverse=True)))


class Unusable(Exception):
    """An access point that cannot be delivered; its text says why."""


def letters():
    """Lower case and capitals; a "-" stands for nothing."""
    table = {}
    for source, target in (
            ("абвгдеёжзийклмнопрстуфхцчшщъыьэюяіїєґў",
             "a b v g d e yo zh z i y k l m n o p r s t u f kh ts ch sh shch - y - e yu ya i yi ye g u"),
            ("αβγδεζηθικλμνξοπρσςτυφχψω", "a v g d e z i th i k l m n x o p r s s t y f ch ps o"),
            ("łđıħŧŋőű", "l d i h t ng ö ü")):
        for letter, text in zip(source, target.replace("-", "\0").split(" "), strict=True):
            table[letter] = text.strip("\0")
            table[letter.upper()] = table[letter].capitalize()
    return table


LETTERS = letters()


def transliterated(text):
    """The text in letters of Windows-1252; raises ValueError for a letter that has no row in the tables."""
    text = WORD.sub(lambda match: WORDS[match.group()], unicodedata.normalize("NFC", text))
    return "".join(map(letter_in_windows_1252, text))


def letter_in_windows_1252(letter):
    try:
        letter.encode("cp1252")
        return letter
    except UnicodeEncodeError:
        pass
    if letter in LETTERS:
        return LETTERS[letter]
    parts = unicodedata.normalize("NFKD", letter)
    if parts == letter:
        raise ValueError(f"no transliteration for {letter} (U+{ord(letter):04X} {unicodedata.name(letter, '')})")
    return "".join(letter_in_windows_1252(part) for part in parts if not unicodedata.combining(part))


def label(text):
    """A text for people: transliterated, on one line, without commas."""
    text = re.sub(r"(?<=\d),(?=\d)", ".", " ".join(transliterated(text or "").split()))
    return text.replace(",", ";").replace('"', "'")


def credential(text):
    """A text for the network, which must arrive as it is: raises Unusable when a field cannot hold it."""
    text = (text or "").strip()
    if not re.fullmatch(r"[!-+\--~]*", text):
        raise Unusable(f"cannot be stored: {text}")
    return text


def name_server(text):
    """The address without leading zeros, or None for what is no usable dotted quad."""
    parts = (text or "").strip().split(".")
    if len(parts) != 4 or not all(re.fullmatch(r"[0-9]{1,3}", part) and int(part) < 256 for part in parts):
        return None
    address = ".".join(str(int(part)) for part in parts)
    return None if address == "0.0.0.0" else address


def name_of(element):
    """The name without a language, else the English one, else the first, else nothing."""
    names = element.findall("name")
    names.sort(key=lambda name: {None: 0, "en": 1}.get(name.get(LANGUAGE), 2))
    return label(names[0].text) if names else ""


def record(country, operator, networks, point):
    """The fields of one access point; raises Unusable for one that cannot be delivered."""
    apn = point.get("value").strip()
    if not APN.fullmatch(apn):
        raise Unusable(f"no access point name: {apn}")
    if point.find("usage") is None and NOT_INTERNET.match(apn):
        raise Unusable(f"states no use: {apn}")
    user = credential(point.findtext("username"))
    servers = [name_server(server.text) for server in point.findall("dns")]
    servers = list(dict.fromkeys(server for server in servers if server))[:2]
    methods = [item.get("method").upper() for item in point.findall("authentication")]
    notes = [f"Authentication {method}" for method in methods]
    notes += [f"Gateway {label(item.text)}" for item in point.findall("gateway")]
    notes += [f"{mark} stands for your phone number" for mark in OWN_NUMBER.findall(user)]
    return [country, operator, apn, user, credential(point.findtext("password")), *servers, *[""] * (2 - len(servers)),
            name_of(point), networks, plan_type(plan.get("type") for plan in point.findall("plan")), "; ".join(notes)]


def plan_type(types):
    """How the access point is paid, each way once."""
    return "; ".join(sorted(set(types), reverse=True))


def merged(rows):
    """The rows, each once, and one where several differ in the plan type alone: it names the types of all."""
    types = {}
    for row in rows:
        types.setdefault((*row[:PLAN_TYPE], "", *row[PLAN_TYPE + 1:]), set()).update(filter(None, row[PLAN_TYPE].split("; ")))
    return [(*row[:PLAN_TYPE], plan_type(found), *row[PLAN_TYPE + 1:]) for row, found in types.items()]


def order(row):
    """By country, then by operator as people look for one: capitals count only between names that are else the same."""
    return row[0], row[1].casefold(), [field.encode("cp1252") for field in row[1:]]


def records(root, complain):
    """All records in order, in bytes; complain is called with a text for every access point left out."""
    names = {country.get("code"): COUNTRY_NAMES.get(country.get("code")) or name_of(country) for country in root}
    found = []
    for country in root:
        for provider in country.findall("provider"):
            codes = sorted({(item.get("mcc"), item.get("mnc")) for item in provider.findall("gsm/network-id")})
            code = country.get("code")
            place = names[MISPLACED.get((code, codes[0][0]), code) if codes else code]
            operator = name_of(provider)
            networks = " ".join(f"{mcc}-{mnc}" for mcc, mnc in codes)
            for point in provider.findall("gsm/apn"):
                usage = point.find("usage")
                if usage is not None and usage.get("type") not in INTERNET_USES:
                    continue
                try:
                    found.append(record(place, operator, networks, point))
                except Unusable as error:
                    complain(f"{place}, {operator}: {error}")
    return [tuple(field.encode("cp1252") for field in row) for row in sorted(merged(found), key=order)]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--providers", type=Path, default=PROVIDERS, help="the provider list, XML (%(default)s)")
    parser.add_argument("output", type=Path)
    options = parser.parse_args()
    try:
        root = ElementTree.parse(options.providers).getroot()
        made_records = records(root, lambda text: print("left out:", text, file=sys.stderr))
        made = options.output.with_name(options.output.name + ".new")
        made.write_bytes(b"".join(line + b"\n" for line in [HEADER.encode(), *map(b",".join, made_records)]))
        os.replace(made, options.output)
    except (OSError, ValueError, ElementTree.ParseError) as error:
        sys.exit(f"{options.output.name}: {error}")
    print(f"{len(made_records)} records, {len({fields[0] for fields in made_records})} countries")


if __name__ == "__main__":
    main()
