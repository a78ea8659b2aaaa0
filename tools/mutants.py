#!/usr/bin/env python3
"""Changes the code a little, one place at a time, and looks whether a test notices.

    tools/mutants.py [--seed N] [--skip N] [--most N] [FOLDER...]    folders under src/; all five of the rules without names

Works on copies of the sources in build/mutants, one a processor. A change that does not compile does not count. Prints
every change that no test noticed, and the share of those that one did; ends with 1 when that is below nine in ten.
"""

import argparse
import multiprocessing
import os
import random
import re
import resource
import shutil
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
WORK = os.path.join(ROOT, "build", "mutants")
STORIES = ("stories_test", "--gtest_filter=-*AWeek*:*Random*:LongRun*")  # without those that take long
FOLDERS = ("phonebook", "monitor", "operators", "devices", "drivers")

# What is looked for in a line of code, and what it becomes.
CHANGES = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "), (r" == ", " != "), (r" != ", " == "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " + "),
    (r"\+\+(?=\w)", "--"), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"if \(!", "if ("),
    (r"if \((?![!;])(?=[^;]*\) )", "if (!"), (r"(?<![\w.\"'])0(?![\w.\"'x])", "1"), (r"(?<![\w.\"'])1(?![\w.\"'x])", "2"),
    (r"(?<![\w.\"'x])([2-9]\d*|1\d+)(?![\w.\"'])", lambda m: str(int(m.group(1)) + 1)),
    (r"^(\s+)(?!return|const|auto|if|for|while|case|break|else|throw|using|std::\w+ \w+[ ;({])(\w[\w.>\-]*\([^;{}]*\);)$",
     r"\1(void)0;"),
]


def code_lines(path):
    """The lines that may be changed: no comments, no includes, no constants that are texts only."""
    for number, line in enumerate(open(path, encoding="utf-8").read().split("\n")):
        bare = line.split("//")[0]
        if bare.strip() and not bare.lstrip().startswith(("#", "*", "namespace", "using", "static_assert", "template")):
            yield number, bare


def mutants(folder):
    """The changes of a folder: folder, file, number of the line from 0, the line, and what it becomes."""
    found = []
    directory = os.path.join(ROOT, "src", folder)
    for name in sorted(os.listdir(directory)):
        if not name.endswith(".cpp") or name.endswith("_test.cpp"):
            continue
        for number, line in code_lines(os.path.join(directory, name)):
            quoted = [m.span() for m in re.finditer(r'"(?:[^"\\]|\\.)*"', line)]
            for pattern, becomes in CHANGES:
                for match in re.finditer(pattern, line):
                    if any(a <= match.start() < b for a, b in quoted):
                        continue
                    changed = line[:match.start()] + match.expand(becomes) + line[match.end():] if isinstance(
                        becomes, str) else line[:match.start()] + becomes(match) + line[match.end():]
                    if changed != line:
                        found.append((folder, os.path.join("src", folder, name), number, line, changed))
    return found


def limit_time():
    """A change that makes a loop endless is noticed by that; a machine that is busy with something else is not."""
    resource.setrlimit(resource.RLIMIT_CPU, (60, 60))


class Copy:
    """A copy of the sources, and what is built of it."""

    def __init__(self, number):
        self.tree, self.build_folder = (os.path.join(WORK, part + str(number)) for part in ("tree", "build"))
        shutil.rmtree(self.tree, ignore_errors=True)
        for name in subprocess.run(["git", "ls-files"], cwd=ROOT, stdout=subprocess.PIPE, check=True,
                                   text=True).stdout.split("\n"):
            if name and os.path.isfile(os.path.join(ROOT, name)):
                os.makedirs(os.path.dirname(os.path.join(self.tree, name)), exist_ok=True)
                shutil.copy(os.path.join(ROOT, name), os.path.join(self.tree, name))
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build_folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                        "-DCMAKE_CXX_FLAGS=-O0 -g0 -Wno-error"], stdout=subprocess.DEVNULL, check=True)

    def build(self, target):
        return subprocess.run(["cmake", "--build", self.build_folder, "--target", target], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def noticed(self, target, *arguments):
        program = next(os.path.join(d, target) for d, _, files in os.walk(self.build_folder) if target in files)
        try:
            return subprocess.run([program, "--gtest_brief=1", *arguments], stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL, timeout=900,
                                  cwd=os.path.dirname(program), preexec_fn=limit_time).returncode != 0
        except subprocess.TimeoutExpired:
            return True

    def check(self, folders):
        """The tests pass as they are; a text that says which do not."""
        for folder in folders:
            if not self.build(folder + "_test") or self.noticed(folder + "_test"):
                return "the tests of %s fail as they are" % folder
        return "" if self.build("stories_test") and not self.noticed(*STORIES) else "the stories fail as they are"

    def tried(self, folder, path, number, line, changed):
        """True, False, or None for a change that does not compile."""
        file_path = os.path.join(self.tree, path)
        text = open(file_path, encoding="utf-8").read()
        lines = text.split("\n")
        lines[number] = changed
        with open(file_path, "w", encoding="utf-8") as file:
            file.write("\n".join(lines))
        try:
            if not self.build(folder + "_test"):
                return None
            if self.noticed(folder + "_test"):
                return True
            return self.build("stories_test") and self.noticed(*STORIES)
        finally:
            with open(file_path, "w", encoding="utf-8") as file:
                file.write(text)


def work(number, folders, changes, outcomes):
    """One process: tries what it finds in a queue, until None; a text instead of an outcome says why it cannot."""
    try:
        copy = Copy(number)
        wrong = copy.check(folders)
        if wrong:
            raise RuntimeError(wrong)
        for change in iter(changes.get, None):
            outcomes.put((change, copy.tried(*change)))
    except Exception as failure:  # whatever it is: somebody waits for an outcome
        outcomes.put((None, str(failure)))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--skip", type=int, default=0, help="changes left out, to go on with a run that was cut off")
    parser.add_argument("--most", type=int, default=200, help="changes tried in all")
    parser.add_argument("folders", nargs="*", default=list(FOLDERS))
    options = parser.parse_args()
    chosen = [m for folder in options.folders for m in mutants(folder)]
    whole = len(chosen)
    random.Random(options.seed).shuffle(chosen)
    chosen = chosen[options.skip:options.skip + options.most]
    changes, outcomes = multiprocessing.Queue(), multiprocessing.Queue()
    workers = os.cpu_count()
    for change in chosen + [None] * workers:
        changes.put(change)
    for number in range(workers):
        multiprocessing.Process(target=work, args=(number, options.folders, changes, outcomes), daemon=True).start()
    counts = {folder: [0, 0] for folder in options.folders}
    for number in range(options.skip + 1, options.skip + 1 + len(chosen)):
        change, outcome = outcomes.get()
        if change is None:
            sys.exit(outcome)
        if number % 50 == 0:
            print("%d of %d tried" % (number, whole), flush=True)
        if outcome is None:
            continue
        folder, path, line, before, after = change
        counts[folder][outcome] += 1
        if not outcome:
            print("%s:%d\n  - %s\n  + %s" % (path, line + 1, before.strip(), after.strip()), flush=True)
    for folder, (missed, seen) in counts.items():
        print("%s: %d of %d noticed" % (folder, seen, seen + missed))
    missed, seen = (sum(c[i] for c in counts.values()) for i in (0, 1))
    print("%d of %d noticed (%.1f %%), out of %d changes there could be" %
          (seen, seen + missed, 100.0 * seen / max(1, seen + missed), whole))
    sys.exit(0 if seen * 10 >= (seen + missed) * 9 else 1)


if __name__ == "__main__":
    main()
