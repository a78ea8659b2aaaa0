#!/usr/bin/env python3
"""Checks the direction of the #includes: which folder may see which, and that only platform/win32 sees Windows."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SRC = ROOT / "src"
FEATURES = {"phonebook", "dialer", "monitor", "devices", "operators", "drivers"}
# What each folder may include besides itself. Tests may also include platform/fake.
ALLOWED = {
    "base": set(),
    "platform": {"base"},
    "platform/fake": {"base", "platform"},
    "platform/win32": {"base", "platform"},
    **{feature: {"base", "platform"} for feature in FEATURES},
    "ui/controls": {"base", "platform"},
    "ui": {"base", "platform", "ui/controls"} | FEATURES,
    "app": {"base", "platform", "platform/win32", "ui"},
}
ALLOWED["dialer"] = ALLOWED["dialer"] | {"phonebook"}
WINDOWS = re.compile(r"<(windows|windowsx|commctrl|ras|raserror|tapi|shellapi|iphlpapi|winsock2?)\.h>", re.I)


def folder(path: str) -> str:
    parts = path.split("/")[:-1]
    for length in (2, 1):
        name = "/".join(parts[:length])
        if len(parts) >= length and name in ALLOWED:
            return name
    return parts[0] if parts else ""


def main() -> int:
    wrong = []
    files = [f for ending in ("*.h", "*.cpp", "*.c") for f in SRC.rglob(ending)]
    for file in sorted(files):
        name = file.relative_to(SRC).as_posix()
        own = folder(name)
        support = name.endswith("_test.cpp") or pathlib.PurePath(name).name.startswith("fake_") or own == "platform/fake"
        for number, line in enumerate(file.read_text().splitlines(), 1):
            found = re.match(r'\s*#\s*include\s*("([^"]+)"|<[^>]+>)', line)
            if not found:
                continue
            where = f"src/{name}:{number}"
            if WINDOWS.search(line) and own != "platform/win32":
                wrong.append(f"{where}: {found.group(1)} is for platform/win32 only")
            if not found.group(2):
                continue
            other = folder(found.group(2))
            if other == own or other in ALLOWED.get(own, set()) or (support and other == "platform/fake"):
                continue
            wrong.append(f"{where}: {own}/ must not include {found.group(2)}")
        if own not in ("platform/win32", "app") and re.search(r"^\s*#\s*if.*\b(_WIN32|WIN32)\b", file.read_text(), re.M):
            wrong.append(f"src/{name}: the system is picked by the build, not by #if")
    print("\n".join(wrong) or f"1 test passed: {len(files)} files look in the right direction")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
