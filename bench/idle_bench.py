"""The shipped program while nobody touches it, its poll running and 256 entries and connections listed: the processor's
time and the memory, beside a bare window's in the same run. The system's own figures of the process are taken: Wine does
not tell one program the times of another. What Wine's server does meanwhile, for all programs, is shown beside them. Ends
with 1 when a limit is missed. Started by bench/run.sh.

   idle_bench.py SECONDS
"""

import os
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "tests", "e2e"))
import pelvaro_e2e as e2e

MOST = 0.3  # percent of a core
MOST_MORE = 7.0  # MiB beyond a bare window


def nanoseconds(process):
    """What all threads of a process have run so far."""
    folder = "/proc/%d/task" % process
    total = 0
    for thread in os.listdir(folder):
        with open(os.path.join(folder, thread, "schedstat")) as file:
            total += int(file.read().split()[0])
    return total


def server(prefix):
    """The process of the Wine server of a prefix."""
    for process in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open("/proc/%s/comm" % process) as comm, open("/proc/%s/environ" % process, "rb") as environ:
                if comm.read().startswith("wineserver") and b"WINEPREFIX=" + prefix.encode() in environ.read().split(b"\0"):
                    return int(process)
        except OSError:
            pass
    raise SystemExit("the server of %s is not found" % prefix)


def peak(process):
    """The most that it has had in memory, in MiB."""
    with open("/proc/%d/status" % process) as file:
        return next(int(line.split()[1]) for line in file if line.startswith("VmHWM:")) / 1024


def image(process, name):
    """How much of a DLL is in the memory of a process, in MiB."""
    total, counted = 0, False
    with open("/proc/%d/smaps" % process) as file:
        for line in file:
            words = line.split()
            if "-" in words[0] and not words[0].endswith(":"):
                counted = line.rstrip().endswith("/" + name)
            elif counted and words[0] == "Rss:":
                total += int(words[1])
    return total / 1024


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
        processes = [program.process.pid for program in programs] + [server(session.prefix)]
        before = [nanoseconds(process) for process in processes]
        begin = time.monotonic()
        time.sleep(seconds)
        lasted = time.monotonic() - begin
        used = [nanoseconds(process) - first for process, first in zip(processes, before)]
        peaks, line = [peak(process) for process in processes], image(processes[0], "rasapi32.dll")
        alive = all(program.alive for program in programs)
    finally:
        session.stop()
    share = used[0] / (lasted * 1e7)
    there, more = alive and rows == 256, peaks[0] - peaks[1] - line
    kept = [there and 0 < share < MOST, there and line > 0 and more <= MOST_MORE]
    words = ["kept" if one else "MISSED" for one in kept]
    print("processor while idle, %d entries polled, %d s | %.1f ms | bare window %.1f ms, Wine's server %.1f ms | %.3f %% of a core"
          " | below %.1f %% | %s" % (rows, seconds, used[0] / 1e6, used[1] / 1e6, used[2] / 1e6, share, MOST, words[0]))
    print("peak memory, %d entries listed | %.1f MiB | bare window %.1f MiB, the practice line's DLL %.1f MiB | +%.1f MiB | +%.1f MiB | %s" %
          (rows, peaks[0], peaks[1], line, more, MOST_MORE, words[1]))
    sys.exit(0 if all(kept) else 1)


if __name__ == "__main__":
    main()
