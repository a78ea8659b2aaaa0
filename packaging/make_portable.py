#!/usr/bin/env python3
"""Packs files into one folder of a zip archive. The same files give the same bytes, wherever and whenever it is done:
sorted, with one date for all and without anything of the machine."""
import argparse
import datetime
import pathlib
import zipfile


def pack(archive: pathlib.Path, files: list[pathlib.Path], folder: str, date: datetime.date) -> None:
    fresh = archive.with_name(archive.name + ".new")
    with zipfile.ZipFile(fresh, "w") as out:
        for file in sorted(files, key=lambda f: f.name.lower()):
            entry = zipfile.ZipInfo(f"{folder}/{file.name}", (date.year, date.month, date.day, 0, 0, 0))
            entry.create_system = 0  # as Windows' own: no rights of another system
            entry.external_attr = 0x20  # archive
            entry.compress_type = zipfile.ZIP_DEFLATED
            out.writestr(entry, file.read_bytes(), compresslevel=9)
    fresh.replace(archive)


def main() -> None:
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--folder", required=True, help="the folder inside the archive")
    options.add_argument("--date", required=True, type=datetime.date.fromisoformat, help="of every file: 2026-12-31")
    options.add_argument("archive", type=pathlib.Path)
    options.add_argument("files", type=pathlib.Path, nargs="+")
    given = options.parse_args()
    pack(given.archive, given.files, given.folder, given.date)


if __name__ == "__main__":
    main()
