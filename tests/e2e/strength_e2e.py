"""What must hold whatever happens: the program killed at any moment, libraries planted beside it, texts from outside
that look like something else, and a password that is looked for on the whole disk afterwards.

PELVARO_KILLS=N kills N times of each kind instead of a few (scripts/kills.sh); PELVARO_SEED repeats a run's moments.
"""

import contextlib
import os
import random
import re
import shutil
import subprocess
import threading
import time
import unittest

import desk
import drivers_e2e
import installer_e2e
import operators_e2e
import pelvaro_e2e as e2e
from desk import HOME, OFFICE, WORK
from drivers_e2e import DRIVERS, INF, PACKAGES, PENDING
from operators_e2e import DELIVERED, OWN, SETTING, list_file, read_list

ROUNDS = int(os.environ.get("PELVARO_KILLS") or 0)
SEED = int(os.environ.get("PELVARO_SEED") or 0) or random.SystemRandom().randrange(1, 10**6)
OS_KEY = r"HKLM\System\CurrentControlSet\Control\Session Manager\Environment"
WIN_INIT = r"C:\windows\WinInit.ini"
BOOK = r"C:\practice\phonebook.txt"


def content(path):
    """The bytes of a file, None when there is none."""
    with contextlib.suppress(FileNotFoundError):
        with open(path, "rb") as file:
            return file.read()


def compiled(path, source, *options):
    """A small Windows program or library."""
    subprocess.run(["i686-w64-mingw32-gcc", "-s", "-O1", *options, "-o", path, "-x", "c", "-"], input=source.encode(),
                   check=True, timeout=60)


class Moment:
    """When to kill. Anywhere up to twice the time at which the new state is there, which is learnt from the outcomes:
    so about half of the kills come before it, and many come near it."""

    def __init__(self, kind, guess):
        self.random, self.middle, self.step = random.Random("%d %s" % (SEED, kind)), guess, 1.6

    def next(self):
        return self.random.uniform(0, 2 * self.middle)

    def learn(self, done):
        self.middle *= 1 / self.step if done else self.step
        self.step = max(self.step * 0.93, 1.1)


class Strong(operators_e2e.Operators):
    """What the classes below share."""

    def hold_windows(self):
        super().hold_windows()
        self.form = self.window("frmDriver")

    def edit(self, entry):
        """By the row's menu. On a busy machine a click may be taken late, so what came instead is sent away again."""
        for _ in range(3):
            with contextlib.suppress(e2e.Failure):
                self.main.wait("foreground")
                self.main.choose_row("ListView1", entry, "right")
                self.session.choose_menu(1, 3)
                self.editor.wait("visible", 3)
                break
            self.session.keys("esc")
        self.editor.wait_text("Command1", "Modify")

    def start_installing(self, brand, model):
        """Up to the box after which the installation begins."""
        self.main.push("Image1")
        self.editor.wait("visible")
        self.editor.push("Image2")
        self.form.wait("visible")
        drivers_e2e.take(self.session, self.form, brand, model)
        self.form.push("Command1")
        self.session.wait_box()

    def wait_programs(self, count):
        """So many programs of an installation have ended: a late one would meet the next test's files."""
        ended = lambda: (content(self.session.path(r"C:\practice\programs.txt")) or b"").count(b"ended |")
        e2e.wait_for(lambda: ended() == count, 20, "the installation's programs end")


class Kills(Strong):
    """Each test goes on from what the kill before has left, as a user would; nothing is tidied up between."""

    phones = None
    scenario = "pace 20\n"

    def setUp(self):
        for path in (WIN_INIT, WIN_INIT + ".new", OWN + ".new"):
            with contextlib.suppress(FileNotFoundError):
                os.remove(self.session.path(path))
        super().setUp()
        self.counts = {}

    def rounds(self, few):
        return range(ROUNDS or few)

    def count(self, outcome):
        self.counts[outcome] = self.counts.get(outcome, 0) + 1

    def report(self, kind, *moments):
        total = sum(n for outcome, n in self.counts.items() if not outcome.startswith("("))
        print("killed %d times while %s (seed %d, half of them before %s ms): %s" % (
            total, kind, SEED, " or ".join("%.1f" % (1000 * moment.middle) for moment in moments),
            ", ".join("%s %d" % pair for pair in sorted(self.counts.items(), key=lambda p: p[0][::-1]))), flush=True)

    def kill_after(self, delay, act):
        """Ends the program, as the system's task manager does, so many seconds after the act has begun."""
        process = self.program.process
        killer = threading.Timer(delay, process.kill)
        killer.start()
        with contextlib.suppress(e2e.Failure):  # the window may be gone before its message is posted
            act()
        killer.join()
        process.wait(10)

    def again(self):
        """The next start: the program lists exactly the entries of the phonebook."""
        self.session.programs.remove(self.program)
        self.program.stop()
        self.start_program()
        self.wait_entries(*self.entries())

    # The phonebook.
    def blocks(self):
        """The phonebook's entries, each with its lines. A whole file ends with its last mark."""
        text = content(self.session.path(BOOK))
        if text is None:
            return {name: "" for name in (OFFICE, HOME, WORK)}
        text = text.decode("cp1252")
        self.assertTrue(text.rstrip().endswith("[end]"), text[-80:])
        parts = re.split(r"^\[entry (.*)\]$", text[:text.rindex("[end]")], flags=re.M)
        return {parts[i]: parts[i + 1].strip() for i in range(1, len(parts), 2)}

    def entries(self):
        return list(self.blocks())

    def assert_book_whole(self):
        self.assertEqual([name for name in os.listdir(self.session.path(r"C:\practice")) if "damaged" in name], [])

    def many(self):
        """A phonebook in which writing takes its time."""
        entry = ("\n[entry Corvanti-%03d]\nnumber = *99#\ndevice = Nokia 6230 USB Modem\nsuffix = \n"
                 "options = 00000000\nsize = 2884\nuser = \npassword = \npassword saved = no\ndomain = \n")
        self.begin(book=desk.PHONEBOOK % "".join(entry % i for i in range(120)))
        self.wait_entries(*self.entries())

    def assert_written(self, before, wanted, gone=None):
        """All that was there, as it was; the wanted entry whole if it is there; `gone` may be missing once that is."""
        after = self.blocks()
        self.assert_book_whole()
        for name, block in before.items():
            if name != gone:
                self.assertEqual(after.get(name), block, name)
        extra = set(after) - set(before)
        self.assertLessEqual(extra, {wanted})
        if extra:
            for line in ("number = *99#", "suffix = strong", "device = " + drivers_e2e.NOKIA):
                self.assertIn(line, after[wanted])
        if gone and gone not in after:
            self.assertIn(wanted, after)
        if content(self.session.path(BOOK + ".new")) is not None:
            self.count("(a .new left)")
        return after

    def by_message(self, name):
        for box, text in (("Text1", name), ("Text2", "*99#"), ("Text3", "strong")):
            self.editor.set_text(box, text)
        self.editor.wait_control("Command1", "enabled")

    def test_while_an_entry_is_written(self):
        self.many()
        moment = Moment("entry", 0.03)
        for i in self.rounds(5):
            if len(self.entries()) > 240:
                self.program.stop()
                self.many()
            before, name = self.blocks(), "Corvanti-Fresh %d" % i
            self.main.push("Image1")
            self.editor.wait("visible")
            self.by_message("Fresh %d" % i)
            self.kill_after(moment.next(), lambda: self.editor.push("Command1"))
            done = name in self.assert_written(before, name)
            self.count("new" if done else "old")
            moment.learn(done)
            self.again()
        self.report("an entry is written", moment)

    def test_while_an_entry_is_renamed(self):
        self.many()
        moment = Moment("rename", 0.04)
        for i in self.rounds(4):
            before, name = self.blocks(), "Corvanti-Other %d" % i
            old = self.entries()[0]
            self.edit(old)
            self.by_message("Other %d" % i)
            self.kill_after(moment.next(), lambda: self.editor.push("Command1"))
            after = self.assert_written(before, name, old)
            self.count("old" if name not in after else "both names" if old in after else "new")
            moment.learn(name in after)
            self.again()
        self.report("an entry is renamed", moment)

    # The operator list.
    def list_of(self, mark):
        return list_file("%s,Operator %s,internet,user,,,,,,," % (mark, mark),
                         *("Town %03d,Operator %d of %s,net.example,user,,192.0.2.1,,,,," % (i % 40, i, mark)
                           for i in range(3000)))

    def test_while_the_list_is_saved(self):
        own, fresh, delivered = map(self.session.path, (OWN, OWN + ".new", DELIVERED))
        moment = Moment("list", 0.03)
        for i in self.rounds(6):
            chosen = self.session.driver.call("registry", SETTING, "path")
            old = content(own)
            self.put(DELIVERED, self.list_of("Round %d" % i))
            new = read_list(delivered)
            first = read_list(own if chosen == OWN and old is not None else delivered)[1].split(",")[0]
            self.main.push("Image1")
            self.editor.wait("visible")
            self.editor.push("Command2")
            self.picker.wait("visible")
            self.assertEqual(self.place(), first)
            if self.picker.control("Command4")["enabled"]:
                self.picker.push("Command4")
                self.picker.wait_text("Combo1", "Round %d" % i)
            self.kill_after(moment.next(), lambda: self.picker.push("Command2"))
            now = content(own)
            done = now != old
            if done:
                self.assertEqual(read_list(own), new)
            self.count("new" if done else "old" if old is not None else "old (none)")
            moment.learn(done)
            left = content(fresh)
            if left is not None:
                self.count("(a .new left, %s)" % ("whole" if len(left) == len(content(delivered)) else "cut"))
            if i % 5 == 4:
                for path in (own, fresh):
                    with contextlib.suppress(FileNotFoundError):
                        os.remove(path)
            self.again()
        self.report("the list is saved", moment)

    # The drivers.
    def heavy_packages(self):
        """The practice driver files with more in them, so that copying takes its time; by name, what may be a copy."""
        whole = {}
        for folder, _, names in os.walk(self.session.path(PACKAGES + r"\MT")):
            for name in names:
                path = os.path.join(folder, name)
                bytes_ = content(path).ljust(3 << 20, b".")
                os.remove(path)
                with open(path, "wb") as file:
                    file.write(bytes_)
                whole.setdefault(name, []).append(bytes_)
        return whole

    def lay_old(self, folder, old, names):
        os.makedirs(self.session.path(folder), exist_ok=True)
        for name in names:
            path = os.path.join(self.session.path(folder), name)
            with contextlib.suppress(FileNotFoundError):
                os.remove(path)
            if name in old:
                with open(path, "wb") as file:
                    file.write(b"the old one")

    def assert_pending_whole(self):
        pending = self.session.driver.call("registry", *PENDING) or []
        self.assertEqual(len(pending) % 2, 0, pending)
        for source, destination in zip(pending[::2], pending[1::2]):
            self.assertRegex(source, r"^\\\?\?\\C:\\.*\\MT\\.*sys$")
            self.assertRegex(destination, r"^!\\\?\?\\C:\\.*\\drivers\\.*sys$")
        return len(pending) // 2

    def assert_ini_whole(self, before):
        """Nothing, or all that was there with whole lines behind it."""
        ini = content(self.session.path(WIN_INIT))
        if ini is None:
            self.assertIsNone(before)
            return 0
        lines = ini.split(b"\r\n")
        self.assertEqual((lines[0], lines[-1]), (b"[Rename]", b""))
        self.assertTrue(ini.startswith(before or b""))
        for line in lines[1:-1]:
            self.assertRegex(line.lower(), rb"^nul=c:\\windows\\system\\drivers\\(mt_com|mt_port)\.sys$")
        return len(lines) - 2

    def test_while_a_driver_is_installed(self):
        whole = self.heavy_packages()
        in_use = {"mt_com.sys", "mt_port.sys"}
        moments = {nt: Moment("driver %s" % nt, 0.06) for nt in (True, False)}
        self.addCleanup(self.session.driver.call, "registry-set", OS_KEY, "OS", "Windows_NT")
        old_drivers = r"C:\windows\system\drivers"
        for i in self.rounds(6):
            nt, old = i % 2 == 0, in_use if i % 4 < 2 else set()
            drivers = DRIVERS if nt else old_drivers
            self.session.driver.call(*(("registry-set", OS_KEY, "OS", "Windows_NT") if nt else
                                       ("registry-delete", OS_KEY, "OS")))
            if i % 6 == 0:
                self.session.driver.call("registry-delete", *PENDING)
            for folder in (drivers, INF):
                self.lay_old(folder, old if folder == drivers else (), whole)
            self.again()
            before = content(self.session.path(WIN_INIT))
            named_before = self.assert_pending_whole() if nt else self.assert_ini_whole(before)
            self.start_installing("Motorola", "V3x")
            self.kill_after(moments[nt].next(), lambda: self.session.driver.call("answer", e2e.OK))
            state = {"whole": 0, "cut": 0}
            for folder in (drivers, INF):
                for name in whole:
                    there = content(os.path.join(self.session.path(folder), name))
                    if folder == drivers and name in old:
                        self.assertEqual(there, b"the old one", name)
                    elif there is not None:
                        state["whole" if there in whole[name] else "cut"] += 1
            self.assertLessEqual(state["cut"], 1, "more than the file that was just being copied")
            named = (self.assert_pending_whole() if nt else self.assert_ini_whole(before)) - named_before
            done = named > 0 if old else state["whole"] > 0
            self.count("none copied" if not (state["whole"] or state["cut"]) else
                       "a copy cut" if state["cut"] else "some or all copied")
            if named:
                self.count("(files named for the restart)")
            if content(self.session.path(WIN_INIT + ".new")) is not None:
                self.count("(a .new left)")
            moments[nt].learn(done)
        self.session.driver.call("registry-set", OS_KEY, "OS", "Windows_NT")
        self.again()
        self.report("a driver is installed", *moments.values())

    def test_what_a_kill_has_cut_is_mended_by_installing_again(self):
        whole = self.heavy_packages()
        self.session.driver.call("registry-delete", *PENDING)
        cut = {DRIVERS: "mt_com.sys", INF: "mt_modem.inf"}
        for folder, name in cut.items():
            self.lay_old(folder, (), whole)
            with open(os.path.join(self.session.path(folder), name), "wb") as file:
                file.write(whole[name][0][:70000])
        self.start_installing("Motorola", "V3x")
        self.session.answer_box(e2e.OK, drivers_e2e.UNPLUG)
        self.session.answer_box(e2e.YES, caption="Confirm file overwrite")
        self.session.answer_box(e2e.NO, drivers_e2e.FOR_PHONE)
        self.assertIn(content(os.path.join(self.session.path(INF), cut[INF])), whole[cut[INF]])
        named = [path.lower() for path in self.session.driver.call("registry", *PENDING)[1::2]]
        self.assertIn("!\\??\\" + (DRIVERS + r"\mt_com.sys").lower(), named)
        self.wait_programs(1)


# Without those that Wine's own DLLs bind late, which asks in the program's folder first whatever a program has said:
# uxtheme, msimg32, ole32 and what these need.
PLANTED = """rasapi32 iphlpapi tapi32 shell32 oleacc oleaut32 comctl32 rsaenh dwmapi msctf usp10
    ws2_32 wsock32 rasman rtutils setupapi netapi32 secur32 winmm mpr userenv cryptbase shlwapi
    gdiplus urlmon wininet propsys profapi ntmarta apphelp wtsapi32 dbghelp riched20 mprapi""".split()
NAMES_ITSELF = r"""#include <windows.h>
    BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
      char line[2 * MAX_PATH + 4];
      DWORD length, ignored;
      HANDLE file;
      if (reason != DLL_PROCESS_ATTACH) return TRUE;
      length = GetModuleFileNameA(module, line, MAX_PATH);
      line[length++] = '|';
      length += GetModuleFileNameA(NULL, line + length, MAX_PATH);
      line[length++] = '\n';
      file = CreateFileA("C:\\loaded.txt", FILE_APPEND_DATA, 7, 0, OPEN_ALWAYS, 0, 0);
      WriteFile(file, line, length, &ignored, 0);
      CloseHandle(file);
      return TRUE;
    }"""
ASKS_FOR_EACH = r"""#include <windows.h>
    int main(int count, char** names) {
      while (--count) LoadLibraryA(names[count]);
      return 0;
    }"""
WRITES_A_MARK = r"""#include <windows.h>
    int main(void) {
      CloseHandle(CreateFileA("C:\\shown.txt", GENERIC_WRITE, 0, 0, CREATE_ALWAYS, 0, 0));
      return 0;
    }"""
SHOWS_PAGES = r"HKLM\Software\Classes\htmlfile\shell\open"
EVERY = bytes(range(1, 256))
LOOKS_LIKE = [b"%s%s%s%n%n", b"%1!s! %2 %d %c %p", b"&File &&", b"a\\b/c:*?\"<>|", b"..\\..\\x", b"[end]",
              b"; no remark", b"<b>${x}</b>"]


def seen(text):
    """How bytes look to a program that is told of them in wide characters."""
    return "".join(bytes([c]).decode("cp1252") if c not in b"\x81\x8d\x8f\x90\x9d" else chr(c) for c in text)


def as_list(*lines):
    """A list file of these bytes, each character standing as it is before its marker."""
    scrambled = lambda line: b"".join(bytes([c, 0x2B if c < 127 else 0x2D]) for c in line)
    return b"".join(b"\0%s\0\r\n" % scrambled(line) for line in lines)


class Hardened(Strong):
    """Nothing from outside is taken for something else, and nothing is left behind."""

    scenario = "pace 20\ntimeout 3000\njournal on\n"
    phones = e2e.PHONES

    # Libraries beside the program.
    def loaded(self, exe):
        """The planted libraries that were loaded by the program of this name."""
        lines = (content(self.session.path(r"C:\loaded.txt")) or b"").decode("cp1252").splitlines()
        pairs = [line.lower().split("|") for line in lines]
        return sorted({library for library, program in pairs if program.endswith("\\" + exe)})

    def test_no_library_beside_the_program_or_in_the_current_folder_is_loaded(self):
        self.program.stop()
        folder, other = self.session.path(r"C:\Installed"), self.session.path(r"C:\elsewhere")
        os.makedirs(other)
        dll = self.session.path(r"C:\planted.dll")
        compiled(dll, NAMES_ITSELF, "-shared")
        for program in ("pelvaro.exe", "probe.exe"):  # as Windows does it: what is found first
            key = r"HKCU\Software\Wine\AppDefaults\%s\DllOverrides" % program
            for name in PLANTED:
                if name != "iphlpapi":
                    self.session.driver.call("registry-set", key, name, "native,builtin")
        setup = self.session.run(installer_e2e.SETUP, "/S", r"/D=C:\Installed")
        self.assertEqual(setup.process.wait(30), 0)
        for place in (folder, other):
            for name in PLANTED:
                shutil.copy(dll, os.path.join(place, name + ".dll"))
        probe = os.path.join(folder, "probe.exe")
        compiled(probe, ASKS_FOR_EACH)
        self.assertEqual(self.session.run(probe, *(name + ".dll" for name in PLANTED)).process.wait(30), 0)
        names = ["c:\\installed\\%s.dll" % name for name in PLANTED if name != "iphlpapi"]
        self.assertEqual(self.loaded("probe.exe"), sorted(names), "a program that asks by name alone gets them")

        # Last, and also when a step fails: a library without the functions that are wanted of it ends the program.
        self.addCleanup(lambda: self.assertEqual(self.loaded("pelvaro.exe"), []))
        self.program = self.session.run(os.path.join(folder, "pelvaro.exe"), directory=other)
        self.main.wait("visible", 20)
        self.wait_entries(OFFICE, HOME, WORK)
        for name in self.main.controls():
            self.session.driver.call("accessible", self.main.name, name)
        self.connect()
        compiled(os.path.join(folder, "page.exe"), WRITES_A_MARK)
        self.session.driver.call("registry-set", r"HKLM\Software\Classes\.html", "", "htmlfile")
        self.session.driver.call("registry-set", SHOWS_PAGES + r"\command", "", r"C:\Installed\page.exe %1")
        self.main.wait("foreground")
        self.session.keys("f1")
        e2e.wait_for(lambda: os.path.exists(self.session.path(r"C:\shown.txt")), 10, "the manual is opened")
        self.main.push("Image2")
        self.wait_disconnected()
        self.start_installing("Samsung", "D410")
        self.session.answer_box(e2e.OK, drivers_e2e.UNPLUG)
        self.session.answer_box(e2e.NO, drivers_e2e.FOR_MODEM)
        self.form.wait("gone")
        self.wait_programs(2)
        self.main.push("Label3")
        self.wait_ended()

    # Texts.
    def book(self, names, devices=()):
        """A phonebook of these entries, and of these modems beside the usual ones."""
        escaped = lambda text: "".join("%%%02X" % c for c in text)
        entry = "\n[entry %s]\nnumber = *99#\ndevice = %s\nsuffix = %s\n"
        device = lambda i: devices[i % len(devices)] if devices else b"Nokia 6230 USB Modem"
        entries = "".join(entry % (escaped(name), escaped(device(i)), escaped(LOOKS_LIKE[i % len(LOOKS_LIKE)]))
                          for i, name in enumerate(names))
        more = "".join("modem = COM%d %s\n" % (20 + i, escaped(name)) for i, name in enumerate(devices))
        return desk.PHONEBOOK % (more + entries)

    def test_names_of_entries_and_modems(self):
        wide = [b"%n%s" * 64, b"W" * 256, b"Corvanti-" + b"%" * 247]
        every = [EVERY[i:i + 85] for i in (0, 85, 170)]
        names = LOOKS_LIKE + wide + every
        self.begin(book=self.book(names, LOOKS_LIKE))
        self.assertEqual(self.main.rows("ListView1"), [[seen(name)] for name in names])
        for name in (LOOKS_LIKE[0], wide[2]):
            with self.subTest(name=name):
                row = names.index(name)
                self.edit(row)
                self.assertEqual(self.editor.text("Text1"), seen(name.replace(b"Corvanti-", b"", 1)))
                self.assertEqual(self.editor.text("Text3"), seen(LOOKS_LIKE[row % len(LOOKS_LIKE)]))
                self.assertEqual(self.editor.combo("Combo1")["items"][2:], [seen(name) for name in LOOKS_LIKE])
                self.assertEqual(self.editor.text("Combo1"), seen(LOOKS_LIKE[row % len(LOOKS_LIKE)]))
                self.editor.push("Command3")
                self.editor.wait("gone")
        self.open_prompt(seen(LOOKS_LIKE[0]))
        self.prompt.enter("Text1", "%s%n%s%n &x")
        self.session.keys("tab")
        self.type("%n%n")
        self.session.keys("enter")
        self.wait_failed()
        self.assertIn(b"dial entry=" + LOOKS_LIKE[0], content(self.session.path(r"C:\practice\journal.txt")))
        self.assertEqual(self.prompt.text("Text1"), "%s%n%s%n &x")

    def test_fields_of_operators(self):
        field = bytes(c for c in EVERY if c not in b",\r\n")
        self.put(DELIVERED, as_list(b",".join([b"Town", b"%n%s", b"&B", field[:40], b"%d"] + [b"%n"] * 6),
                                    b",".join([b"%n%s&T"] + LOOKS_LIKE[:8] + [field[:130], b"W" * 256]),
                                    b",".join([b"%n%s&T", field, field[::-1]] + [b"%s%n" * 64] * 8)))
        rows = [[b"%n%s&T"] + LOOKS_LIKE[:8] + [field[:130], b"W" * 256],
                [b"%n%s&T", field, field[::-1]] + [b"%s%n" * 64] * 8]
        self.add()
        self.open_picker()
        self.assertEqual(self.picker.combo("Combo1"), {"text": "%n%s&T", "selected": 0, "items": ["%n%s&T"]})
        self.assertEqual(self.picker.rows("ListView2"), [[seen(text) for text in row] for row in rows])
        self.picker.choose_row("ListView2", 1)
        self.picker.push("Command3")
        self.boxes.wait("foreground")
        self.assertEqual(self.fields(), [seen(text) for text in rows[1][1:]])
        labels = [self.boxes.text(label) for label in operators_e2e.LABELS[:3]]
        self.assertEqual(labels, ["%n%s", "&B", seen(field[:40])])
        self.boxes.push("Command1")
        self.boxes.wait("gone")
        self.save()
        saved = content(self.session.path(OWN)).split(b"\r\n")
        self.assertEqual(len(saved), 4)
        self.picker.push("Command1")
        self.picker.wait("gone")
        self.open_picker()
        self.assertEqual(self.picker.rows("ListView2"), [[seen(text) for text in row] for row in rows])
        self.double_click(0)
        self.picker.wait("gone")
        self.assertEqual(self.filled(), ["*99#"] + [seen(rows[0][i]) for i in (2, 5, 6, 3, 4)])

    # What lies on the disk.
    def test_the_password_is_in_no_file(self):
        """Last of the class: it ends the session, so that the registry is written."""
        started = time.time() - 1
        secret = "swordfish-7261"
        self.dial(WORK, "visitor-5520", secret)
        self.wait_failed()
        dials = lambda: len(self.journal("dial"))
        before = dials()
        self.status.push("Command1")  # Retry
        e2e.wait_for(lambda: dials() > before, 5, "it dials again")
        self.wait_failed()
        self.main.push("Label3")
        self.wait_ended()
        e2e._prefix_call("wineStop", self.session.prefix)
        sought = [text.encode(coding) for text in (secret, secret[::-1])
                  for coding in ("cp1252", "utf-16-le", "utf-16-be")]
        looked = 0
        for top in (self.session.prefix, self.session.logs):
            for folder, _, names in os.walk(top):
                for name in names:
                    path = os.path.join(folder, name)
                    if os.path.islink(path) or not os.path.isfile(path) or os.path.getmtime(path) < started:
                        continue
                    looked += 1
                    bytes_ = content(path)
                    self.assertFalse([text for text in sought if text in bytes_], path)
        self.assertGreater(looked, 3)
        self.assertIn(b"Pelvaro", content(os.path.join(self.session.prefix, "user.reg")))


if __name__ == "__main__":
    unittest.main()
