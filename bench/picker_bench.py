"""The picker with 100,000 records, in the shipped program under Wine: how long it takes to come, to show another
country, and what memory it costs; beside it the picker with fewer records and with the delivered list. Ends with 1
when a limit is missed. Started by bench/run.sh, which makes the lists.

   picker_bench.py LIST...        list files, each with ten times the records of the one before
"""

import collections
import os
import shutil
import statistics
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path[:0] = [os.path.join(ROOT, "tests", "e2e"), os.path.join(ROOT, "tools")]
import pelvaro_e2e as e2e
import scramble_operators

OPENINGS, CHOICES = 7, 40
LVM_GETITEMCOUNT, WM_PAINT = 0x1004, 0x000F
FOLDER = "C:\\Pelvaro"

missed = []


def judge(kept, *row):
    """Prints a row of the table: what, ours, reference, ratio, limit."""
    print(" | ".join(row + ("kept" if kept else "MISSED",)), flush=True)
    if not kept:
        missed.append(row)


class Program:
    """The program, started anew in its folder with a list of its own, its connection editor open."""

    def __init__(self, session, file):
        with open(file, "rb") as stream:
            lines = stream.read().removesuffix(b"\r\n").split(b"\r\n")[1:]
        # How many rows each place has, in the order of their first appearance, as a Counter keeps them.
        self.counts = collections.Counter(scramble_operators.unscramble(line).split(b",", 1)[0] for line in lines)
        self.size, self.records = os.path.getsize(file), len(lines)
        shutil.copy(file, session.path(FOLDER + "\\Default.DAT"))
        self.session, self.driver = session, session.driver
        self.process = session.run(session.path(FOLDER + "\\pelvaro.exe"))
        self.main, self.editor, self.picker = map(session.window, ("Form1", "Form2", "Form3"))
        self.main.wait("foreground", 20)
        self.main.click("Image1")
        self.editor.wait("foreground")

    def shown(self, rows):
        """Waits until the list has so many rows and has drawn them."""
        if not self.list:
            self.picker.wait("visible")
            self.list = self.picker.control("ListView2")["handle"]  # a name costs a search, a handle none
        end = time.monotonic() + 20
        while self.send(LVM_GETITEMCOUNT) != rows:
            if time.monotonic() > end:
                raise e2e.Failure("the list has %d rows, not %d" % (self.send(LVM_GETITEMCOUNT), rows))
            time.sleep(0.001)
        self.send(WM_PAINT)  # done now if it has not been done

    def send(self, message):
        return self.driver.call("send", self.list, "", message)

    def opening(self):
        """Milliseconds from the click on "List of Operators" until the picker shows its first place."""
        self.editor.wait("enabled")
        self.editor.hover("Command2")
        place = self.editor.centre("Command2")
        time.sleep(0.6)  # the driver would wait, within the time, until its click is no double click
        begin = time.perf_counter()
        self.list = None
        self.driver.call("click-at", *place, "left")
        self.shown(next(iter(self.counts.values())))
        return 1000 * (time.perf_counter() - begin)

    def close(self):
        self.picker.close()
        self.picker.wait("gone")

    def choices(self):
        """Milliseconds of each choice of another country, until its rows are shown; none when all have as many."""
        counts, times, row = list(self.counts.values()), [], 0
        if len(set(counts)) == 1:
            return []
        combo = self.picker.control("Combo1")["handle"]
        now = counts[row]
        while len(times) < CHOICES:
            row = (row + 37) % len(counts)
            if counts[row] == now:  # it could not be told from the one that is shown
                continue
            begin = time.perf_counter()
            self.driver.call("combo-select", combo, combo, row)
            self.shown(counts[row])
            times.append(1000 * (time.perf_counter() - begin))
            now = counts[row]
        return times

    def memory(self):
        """The bytes that are this process's alone now, and the most that it has had in memory."""
        folder = "/proc/%d/" % self.process.process.pid
        with open(folder + "smaps_rollup") as file:
            private = [int(line.split()[1]) for line in file if line.startswith("Private_")]
        with open(folder + "status") as file:
            peak = next(int(line.split()[1]) for line in file if line.startswith("VmHWM:"))
        return 1024 * sum(private), 1024 * peak

    def measure(self):
        """Opens the picker for its memory, and again for its time; leaves it open."""
        self.first = self.opening()
        self.private, self.peak = self.memory()
        times = []
        for _ in range(OPENINGS):
            self.close()
            times.append(self.opening())
        self.time, self.slowest = statistics.median(times), max(times + [self.first])
        self.choice_times = self.choices()
        self.process.stop()
        return self


def main():
    if len(sys.argv) < 3:
        sys.exit("usage: picker_bench.py LIST LIST...")
    session = e2e.Session("picker_bench").start()
    try:
        shutil.copytree(os.path.join(e2e.BUILD, "dist"), session.path(FOLDER))
        delivered = os.path.join(e2e.BUILD, "dist", "Default.DAT")
        delivered, *grown = (Program(session, file).measure() for file in (delivered, *sys.argv[1:]))
    finally:
        session.stop()
    large = grown[-1]
    judge(large.slowest < 1000, "picker with %d records opens, the slowest of %d" % (large.records, OPENINGS + 1),
          "%.0f ms" % large.slowest, "delivered list %.0f ms" % delivered.time, "%.2f" % (large.slowest / delivered.time),
          "below 1000 ms")
    steps = [after.time / before.time for before, after in zip(grown, grown[1:])]
    judge(max(steps) <= 15, "growth: picker opens", " ".join("%.0f" % one.time for one in grown) + " ms",
          " ".join("%d" % one.records for one in grown) + " records", " ".join("x%.1f" % step for step in steps),
          "x1.5 of a straight line")
    chosen, reference = (statistics.median(one.choice_times) for one in (large, delivered))
    judge(chosen < 50, "another of its %d countries" % len(large.counts), "%.1f ms" % chosen,
          "delivered list %.1f ms" % reference, "%.2f" % (chosen / reference), "below 50 ms")
    # What lies beyond the file's own bytes, against the same window with the delivered list.
    records, size = large.records - delivered.records, large.size - delivered.size
    beyond = lambda amount: (amount(large) - amount(delivered) - size) / records
    for what, amount in (("peak", lambda one: one.peak), ("private", lambda one: one.private)):
        judge(beyond(amount) < 200, "%s memory of the picker, the file %.1f MiB" % (what, large.size / 2**20),
              "%.1f MiB" % (amount(large) / 2**20), "delivered list %.1f MiB" % (amount(delivered) / 2**20),
              "%.0f bytes a record" % beyond(amount), "below 200")
    sys.exit(1 if missed else 0)


if __name__ == "__main__":
    main()
