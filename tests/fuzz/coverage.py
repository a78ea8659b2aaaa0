#!/usr/bin/env python3
"""Which lines and branches of the parsers the corpus in the tree reaches: coverage.py BUILD.

BUILD, a folder in the tree, holds the fuzzers, built with clang's coverage. Each replays its corpus; of the files in
parsers.txt the shares are printed and, line by line, what is left. Ends non-zero below 95 % of the lines of a file.
"""
import os
import re
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
LEAST = 95.0


def parsers():
    """The lines of parsers.txt: fuzzer and [(file, functions)]."""
    for line in (HERE / "parsers.txt").read_text().splitlines():
        words = line.split()
        if not words or words[0].startswith("#"):
            continue
        files = [word.partition(":") for word in words[1:]]
        yield words[0], [(name, functions.split(",") if functions else []) for name, _, functions in files]


def replay(program, corpus, profile):
    raw = profile.with_suffix(".profraw")
    inputs = [str(path) for path in sorted(corpus.iterdir())]
    run = subprocess.run([program, "-runs=1", *inputs], env={**os.environ, "LLVM_PROFILE_FILE": str(raw)},
                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, timeout=300)
    if run.returncode != 0:
        sys.exit(f"{program.name} fails on its corpus:\n{run.stderr[-2000:]}")
    subprocess.run(["llvm-profdata-14", "merge", "-o", profile, raw], check=True)


def shown(build, program, profile, name, functions):
    """The source as llvm-cov shows it, with counts before the lines and branches behind them."""
    # Names as the compiler writes them: their length stands before them.
    only = [f"-name-regex={len(function)}{function}[A-Z]" for function in functions]
    # The compiler is told to leave the place of the tree out (-ffile-prefix-map).
    where = f"-path-equivalence=./{build},{ROOT}"
    return subprocess.run(["llvm-cov-14", "show", program, f"-instr-profile={profile}", "-show-branches=count",
                           "-show-instantiations=false", where, *only, str(ROOT / name)],
                          capture_output=True, text=True, check=True).stdout


def number(text):
    """A count as llvm-cov writes it: 12, 3.4k, 5M."""
    scale = {"k": 1e3, "M": 1e6, "G": 1e9}
    return float(text[:-1]) * scale[text[-1]] if text[-1] in scale else float(text)


def measure(text):
    lines, left, branches, taken = {}, {}, 0, 0
    for row in text.splitlines():
        if match := re.match(r"\s*(\d+)\|\s*([\d.]+[kMG]?)\|(.*)", row):
            line, count = int(match[1]), number(match[2])
            lines[line] = max(lines.get(line, 0), count)
            left[line] = match[3]
        elif match := re.match(r".*Branch \(\d+:\d+\): \[True: ([\d.]+[kMG]?), False: ([\d.]+[kMG]?)\]", row):
            branches += 2
            taken += (number(match[1]) > 0) + (number(match[2]) > 0)
    missed = {line: left[line] for line, count in lines.items() if count == 0}
    return len(lines), missed, branches, taken


def main():
    build, poor = Path(sys.argv[1]), False
    print(f"{'fuzzer':21}{'parser':46}{'lines':>16}{'branches':>16}")
    for fuzzer, files in parsers():
        program = next(path for path in build.rglob(fuzzer) if path.is_file())
        profile = build / f"{fuzzer}.profdata"
        replay(program, HERE / "corpus" / fuzzer, profile)
        for name, functions in files:
            count, missed, branches, taken = measure(shown(build, program, profile, name, functions))
            if count == 0:
                sys.exit(f"{fuzzer}: nothing of {name} is in it")
            share = 100 * (count - len(missed)) / count
            poor = poor or share < LEAST
            of = name + (" (parts)" if functions else "")
            lines = f"{share:.1f} % of {count}"
            print(f"{fuzzer:21}{of:46}{lines:>16}" + (f"{100 * taken / branches:.1f} % of {branches}" if branches
                                                      else "none").rjust(16))
            for line, source in missed.items():
                print(f"  not reached: {name}:{line}: {source.strip()}")
    return 1 if poor else 0


if __name__ == "__main__":
    sys.exit(main())
