"""The processor's time of the shipped program while nobody touches it, its poll running and 256 entries and connections
listed, beside a bare window's in the same run. The system's own figures of the process are taken: Wine does not tell one
program the times of another. Ends with 1 when a limit is missed. Started by bench/run.sh.

   idle_bench.py SECONDS
"""

import os
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "tests", "e2e"))
import pelvaro_e2e as e2e

MOST = 0.3  # percent of a core


def nanoseconds(process):
    """What all threads of a process have run so far."""
    folder = "/proc/%d/task" % process
    total = 0
    for thread in os.listdir(folder):
        with open(os.path.join(folder, thread, "schedstat")) as file:
            total += int(file.read().split()[0])
    return total


def main():
    seconds = int(sys.argv[1])
    session = e2e.Session("idle_bench").start()
    try:
        scenario = session.path("C:\\practice\\scenario.txt")
        os.makedirs(os.path.dirname(scenario), exist_ok=True)
        with open(scenario, "w") as file:
            file.write("entries 256\nconnections 256\n")
        programs = [session.run(os.path.join(e2e.BUILD, *place)) for place in (
            ("dist", "pelvaro.exe"), ("win32", "bench", "bare_window.exe"))]
        session.window("Form1").wait("visible", 20)
        rows = session.driver.call("send", session.window("Form1").control("ListView1")["handle"], "", 0x1004)
        time.sleep(3)
        before = [nanoseconds(program.process.pid) for program in programs]
        begin = time.monotonic()
        time.sleep(seconds)
        lasted = time.monotonic() - begin
        used = [nanoseconds(program.process.pid) - first for program, first in zip(programs, before)]
        alive = all(program.alive for program in programs)
    finally:
        session.stop()
    share = [used_by / (lasted * 1e7) for used_by in used]
    kept = alive and rows == 256 and share[0] < MOST
    print("processor while idle, %d entries polled, %d s | %.1f ms | bare window %.1f ms | %.3f %% of a core | below %.1f %% | %s"
          % (rows, seconds, used[0] / 1e6, used[1] / 1e6, share[0], MOST, "kept" if kept else "MISSED"))
    sys.exit(0 if kept else 1)


if __name__ == "__main__":
    main()
