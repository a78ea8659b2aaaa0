#!/usr/bin/env python3
"""A long run of all fuzzers: executions.py BUILD EXECUTIONS REPORT.

The executions are shared out by how fast each fuzzer is, with a hundredth of them for every one at least. They run in
pieces of a few minutes, one a processor; a line is added to REPORT when a piece ends, so a run that was cut off goes on
where it stopped. At the end a table is printed. Ends non-zero when something was found, or less was done.
"""
import collections
import os
import re
import subprocess
import sys
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
CORPUS = ROOT / "build" / "corpus"
PIECE = 120  # seconds
TRIAL = 5
STOPPED = (72, -2, -9, -15)  # from outside, which is no finding; 72 is libFuzzer's own
COLUMNS = ("executions", "seconds", "edges", "features", "corpus", "findings")


def options(name):
    length = 65536 if name == "operator_list_fuzz" else 0  # of the longest seed
    return [f"-max_len={length}", "-timeout=10", "-rss_limit_mb=1024", "-entropic=0", "-print_final_stats=1",
            f"-artifact_prefix={CORPUS}/{name}-"]


def run(program, limit):
    """One piece: its figures by column."""
    name, seeds = program.name, ROOT / "tests" / "fuzz" / "corpus" / program.name
    own = CORPUS / name
    own.mkdir(parents=True, exist_ok=True)
    before = time.monotonic()
    # Freed memory is kept from use, 64 MB of it: the 256 MB of the default take time to page in.
    done = subprocess.run([program, *options(name), limit, own, *([seeds] if seeds.is_dir() else [])],
                          env={**os.environ, "ASAN_OPTIONS": "quarantine_size_mb=64"},
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, errors="replace", check=False)
    found = 0 if done.returncode in (0, *STOPPED) else 1
    if found:
        (CORPUS / f"{name}.log").write_text(done.stderr)
    executions = re.findall(r"number_of_executed_units: +(\d+)", done.stderr) or ["0"]
    # "cov: 123 ft: 456 corp: 78/9Kb" of the last line that has them.
    last = (re.findall(r"cov: (\d+) ft: (\d+) corp: (\d+)", done.stderr) or [("0", "0", "0")])[-1]
    seconds = round(time.monotonic() - before, 1)
    return dict(zip(COLUMNS, (int(executions[-1]), seconds, *map(int, last), found)))


def read(report):
    """What was done before, by fuzzer."""
    done = collections.defaultdict(list)
    if report.exists():
        for line in report.read_text().splitlines():
            words = line.split()
            if len(words) == len(COLUMNS) + 1 and words[1].isdigit():
                done[words[0]].append(dict(zip(COLUMNS, (float(w) if "." in w else int(w) for w in words[1:]))))
    return done


def shares(speeds, executions):
    least = executions // 100
    over, total = executions - least * len(speeds), sum(speeds.values())
    return {name: least + int(over * speed / total) + 1 for name, speed in speeds.items()}


def table(done):
    rows = []
    for name, pieces in sorted(done.items()):
        total = {column: sum(piece[column] for piece in pieces) for column in ("executions", "seconds", "findings")}
        rows.append((name, {**{column: max(piece[column] for piece in pieces) for column in COLUMNS}, **total}))
    print("".join([f"{'fuzzer':21}", *(f"{column:>14}" for column in COLUMNS)]))
    for name, row in rows:
        print("".join([f"{name:21}", *(f"{row[column]:>14,.0f}" for column in COLUMNS)]))
    total = {column: sum(row[column] for _, row in rows) for column in ("executions", "seconds", "findings")}
    print("".join([f"{'all':21}", *(f"{total[c]:>14,.0f}" if c in total else " " * 14 for c in COLUMNS)]))
    return total


def main():
    build, executions, report = Path(sys.argv[1]), int(sys.argv[2]), Path(sys.argv[3])
    programs = {path.name: path for path in sorted(build.rglob("*_fuzz")) if path.is_file()}
    lock, done = threading.Lock(), read(report)

    def note(name, piece):
        with lock:
            done[name].append(piece)
            with report.open("a") as out:
                out.write(f"{name:21}" + "".join(f" {piece[column]}" for column in COLUMNS) + "\n")

    def work(queue, piece_of):
        while True:
            with lock:
                if not queue:
                    return
                name = queue.popleft()
            piece = piece_of(name)
            note(name, piece)
            print(f"{time.strftime('%H:%M:%S')} {name} {piece['executions']:,}", flush=True)
            with lock:
                going_on = not piece["findings"] and piece["executions"] and (
                    sum(p["executions"] for p in done[name]) < wanted.get(name, 0))
                if going_on:
                    queue.append(name)

    def lanes(names, piece_of):
        queue = collections.deque(names)
        threads = [threading.Thread(target=work, args=(queue, piece_of), daemon=True) for _ in range(os.cpu_count())]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()

    def speed(name):
        return sum(p["executions"] for p in done[name]) / max(1, sum(p["seconds"] for p in done[name]))

    def left(name):
        return wanted[name] - sum(piece["executions"] for piece in done[name])

    wanted = {}
    lanes([name for name in programs if not done[name]], lambda name: run(programs[name], f"-max_total_time={TRIAL}"))
    wanted = shares({name: speed(name) for name in programs}, executions)
    lanes([name for name in programs if left(name) > 0 and not any(p["findings"] for p in done[name])],
          lambda name: run(programs[name], f"-runs={max(1, min(left(name), int(speed(name) * PIECE)))}"))
    total = table({name: done[name] for name in programs})
    return 1 if total["findings"] or total["executions"] < executions else 0


if __name__ == "__main__":
    sys.exit(main())
