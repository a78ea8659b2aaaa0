"""Drives the shipped program on the practice line through its real windows.

A test class derives from Case and gets, for all its tests together, a clone of the Wine prefix, a virtual display, a
Wine server, the driver and (unless it says otherwise) the phones on their serial ports and the program itself. All of
it is ended when the class is done, whatever happened. Start the tests with scripts/e2e.sh.
"""

import atexit
import contextlib
import json
import os
import re
import select
import shutil
import signal
import subprocess
import time
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = os.environ.get("PELVARO_BUILD", os.path.join(ROOT, "build"))
SCREENS = os.path.join(BUILD, "screens")
TOOLS = os.environ.get("PELVARO_E2E_TOOLS", os.path.join(BUILD, "win32", "tests"))
SCREEN = (1280, 1024)
CONTROL = "phones.control"  # the name, in the prefix, of the pipe through which the phones are told things

OK, CANCEL, RETRY, YES, NO = 1, 2, 4, 6, 7  # buttons of a message box

PHONES = {"COM5": "nokia", "COM7": "samsung"}


def _interrupted(_number, _frame):
    raise KeyboardInterrupt  # unittest lets nothing else through; the sessions end themselves at exit


signal.signal(signal.SIGTERM, _interrupted)


class Failure(AssertionError):
    """Something on the screen is not as the test expects it."""


def _environment(prefix=None, display=None):
    """The environment that scripts/wine_env.sh sets, with a prefix and a display of its own."""
    script = '. "$0" >&2 && env -0'
    out = subprocess.run(["bash", "-c", script, os.path.join(ROOT, "scripts", "wine_env.sh")],
                         stdout=subprocess.PIPE, check=True).stdout.decode()
    env = dict(entry.split("=", 1) for entry in out.split("\0") if "=" in entry)
    for name in ("DISPLAY", "WAYLAND_DISPLAY", "WINEPREFIX"):
        env.pop(name, None)
    if prefix:
        env["WINEPREFIX"] = prefix
    if display:
        env["DISPLAY"] = display
    return env


def _prefix_call(function, prefix, environment=None):
    """A function of scripts/wine_prefix.sh on this prefix."""
    script = '. "$0" && "$1" "$2"'
    subprocess.run(["bash", "-c", script, os.path.join(ROOT, "scripts", "wine_prefix.sh"), function, prefix],
                   check=True, stdin=subprocess.DEVNULL, env=environment)


def wait_for(condition, seconds, what):
    """The first true answer of the condition; a Failure that names it when there is none in time."""
    end = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() >= end:
            raise Failure("%s: not within %g s" % (what() if callable(what) else what, seconds))
        time.sleep(0.01)


class Process:
    """A program started by the harness and ended by its process id."""

    def __init__(self, arguments, log, **options):
        self.log_path = log
        self._log = open(log, "ab")
        self._begin = self._log.tell()  # behind what earlier programs of the name said
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", self._log)
        self.process = subprocess.Popen(arguments, stderr=self._log, **options)

    @property
    def alive(self):
        return self.process.poll() is None

    def log(self):
        with open(self.log_path, "rb") as file:
            file.seek(self._begin)
            return file.read().decode(errors="replace")

    def stop(self, seconds=5):
        for stream in (self.process.stdin, self.process.stdout):
            if stream:
                with contextlib.suppress(OSError):
                    stream.close()
        for sign in (signal.SIGTERM, signal.SIGKILL):
            if not self.alive:
                break
            self.process.send_signal(sign)
            with contextlib.suppress(subprocess.TimeoutExpired):
                self.process.wait(seconds)
        self._log.close()


class Display(Process):
    """A virtual display on a free number."""

    def __init__(self, log):
        reader, writer = os.pipe()
        super().__init__(["Xvfb", "-displayfd", str(writer), "-screen", "0", "%dx%dx24" % SCREEN, "-nolisten", "tcp",
                          "-noreset"], log, pass_fds=[writer])
        os.close(writer)
        number = ""
        while not number.endswith("\n"):  # the line end says that the display takes clients
            ready, _, _ = select.select([reader], [], [], 20)
            more = os.read(reader, 16).decode() if ready else ""
            if not more:
                break
            number += more
        os.close(reader)
        if not number.endswith("\n"):
            self.stop()
            raise Failure("the virtual display does not start: see " + log)
        self.name = ":" + number.strip()


class Driver(Process):
    """The program inside Windows that sees the windows and moves the mouse."""

    def __init__(self, environment, log):
        super().__init__([environment["WINELOADER"], os.path.join(TOOLS, "e2e_driver.exe")], log, env=environment,
                         stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self._rest = b""

    def call(self, command, *words, limit=20):
        """Carries out one command; its value, or a Failure with the driver's words."""
        line = "\t".join([command] + [self._word(word) for word in words])
        try:
            self.process.stdin.write(line.encode("cp1252") + b"\n")
            self.process.stdin.flush()
            answer = json.loads(self._line(limit))
        except (BrokenPipeError, EOFError):
            raise Failure("the driver has ended: see " + self.log_path) from None
        if not answer["ok"]:
            raise Failure("%s: %s" % (command, answer["error"]))
        return answer["value"]

    @staticmethod
    def _word(word):
        text = str(word)
        for plain, escaped in (("\\", "\\\\"), ("\t", "\\t"), ("\n", "\\n"), ("\r", "\\r")):
            text = text.replace(plain, escaped)
        return text

    def _line(self, limit):
        end = time.monotonic() + limit
        while b"\n" not in self._rest:
            ready, _, _ = select.select([self.process.stdout], [], [], max(0, end - time.monotonic()))
            if not ready:
                raise Failure("the driver does not answer within %g s" % limit)
            more = os.read(self.process.stdout.fileno(), 65536)
            if not more:
                raise EOFError
            self._rest += more
        line, self._rest = self._rest.split(b"\n", 1)
        return line


class Window:
    """A window of the program, named by its class: the verbs that a user has, each waiting for what it needs."""

    def __init__(self, session, name, limit=10):
        self.session, self.driver, self.name, self.limit = session, session.driver, name, limit

    def _call(self, command, *words):
        return self.driver.call(command, self.name, *words)

    def _milliseconds(self, limit):
        return int(1000 * (self.limit if limit is None else limit))

    # What is there.
    def wait(self, state="visible", limit=None):
        """visible, hidden, gone, exists, enabled, disabled, minimised, restored or foreground."""
        milliseconds = self._milliseconds(limit)
        self.driver.call("wait-window", self.name, state, milliseconds, limit=milliseconds / 1000 + 10)
        return self

    def info(self):
        """The visible window of this class, or a hidden one; None when there is none."""
        found = [w for w in self.session.windows(self.name) if w["class"].lower() == self.name.lower()]
        found.sort(key=lambda w: not w["visible"])
        return found[0] if found else None

    def controls(self):
        """Everything in the window that has a control name, by that name."""
        return {c["name"]: c for c in self._call("children") if c["name"]}

    def control(self, control):
        return self._call("control", control)

    def text(self, control):
        return self._call("text", control)

    def checked(self, control):
        return self._call("checked", control) == 1

    def combo(self, control):
        """text, selected, items"""
        return self._call("combo", control)

    def list(self, control):
        """count, columns, selected, rows (each a list of texts)"""
        return self._call("list", control)

    def rows(self, control):
        return self.list(control)["rows"]

    # What to wait for.
    def wait_text(self, control, text, limit=None):
        milliseconds = self._milliseconds(limit)
        self.driver.call("wait-text", self.name, control, text, milliseconds, limit=milliseconds / 1000 + 10)

    def wait_control(self, control, state, limit=None):
        """visible, hidden, enabled or disabled"""
        milliseconds = self._milliseconds(limit)
        self.driver.call("wait-control", self.name, control, state, milliseconds, limit=milliseconds / 1000 + 10)

    def wait_rows(self, control, count, limit=None):
        """Until the list has so many rows (or fulfils a condition on its rows); the rows."""
        fits = count if callable(count) else (lambda rows: len(rows) == count)
        rows = []

        def reached():
            rows[:] = self.rows(control)
            return fits(rows)

        wait_for(reached, self.limit if limit is None else limit, lambda: "%s has the rows %r" % (control, rows))
        return rows

    # What a user does.
    def click(self, control, how="left"):
        """With the real mouse, at the control's centre: left, right or double."""
        self.wait_control(control, "enabled")
        self.hover(control)
        self.driver.call("click-at", *self.centre(control), how)

    def centre(self, control):
        left, top, right, bottom = self.control(control)["rect"]
        return (left + right) // 2, (top + bottom) // 2

    def hover(self, control):
        self._call("hover", control)
        self.session.point(*self.centre(control))

    def drag(self, control, dx, dy):
        self.hover(control)
        self._call("drag-by", control, dx, dy)

    def focus(self, control):
        """Clicks the control and waits until it has the keyboard."""
        self.click(control)
        wait_for(lambda: self.driver.call("focus")["focusControl"] == control, self.limit, control + " gets the focus")

    def enter(self, control, text):
        """Types a text over what an edit box holds."""
        self.focus(control)
        self.driver.call("keys", "home", "shift+end", "delete")
        self.driver.call("type", text)
        self.wait_text(control, text)

    def choose_row(self, control, row, how="left"):
        """Clicks a row of a list, given by its number or by the text of its first column."""
        if isinstance(row, str):
            row = [cells[0] for cells in self.rows(control)].index(row)
        left, top, right, bottom = self._call("list-rect", control, row)
        place = (min(left + 12, right - 2), (top + bottom) // 2)
        self.session.point(*place)
        self.driver.call("click-at", *place, how)
        wait_for(lambda: self.list(control)["selected"] == row, self.limit, "row %d is selected" % row)

    def choose(self, control, text):
        """Chooses an entry of a combo box with the keyboard; every entry on the way is chosen for a moment."""
        self.focus_with_tab(control)
        items = self.combo(control)["items"]
        if text not in items:
            raise Failure("%s offers %r, not %r" % (control, items, text))
        row = items.index(text)
        chosen = lambda: self.combo(control)["selected"] == row
        for _ in range(3):
            self.driver.call("keys", "home", *["down"] * row)
            with contextlib.suppress(Failure):
                wait_for(chosen, self.limit / 2, "the choice")
                return
            if self.driver.call("focus")["focusControl"] == control:
                break
            self._call("activate")  # without a window manager the display may take the keyboard away from a new window
            self.focus_with_tab(control)
        raise Failure("%s: %r is wanted, %r is chosen; the keyboard: %r" %
                      (control, text, self.combo(control)["text"], self.driver.call("focus")))

    def focus_with_tab(self, control):
        """Presses Tab until the control has the focus."""
        with contextlib.suppress(Failure):  # a new window is in front a moment before its first control has the focus
            wait_for(lambda: self.driver.call("focus")["focusControl"] in self.controls(), 2, "a focus")
        for _ in range(40):
            before = self.driver.call("focus")["focusControl"]
            if before == control:
                return
            self.driver.call("keys", "tab")
            with contextlib.suppress(Failure):  # a window with one control only stays where it is
                wait_for(lambda: self.driver.call("focus")["focusControl"] != before, 5, "the focus moves")
        raise Failure("the focus does not reach %s with Tab" % control)

    # What only a program does.
    def pick(self, control, text):
        """Chooses an entry of a combo box in one step, by message."""
        self._call("combo-select", control, self.combo(control)["items"].index(text))

    def push(self, control):
        """BM_CLICK, posted."""
        self._call("push", control)

    def set_text(self, control, text):
        self._call("set-text", control, text)

    def select_row(self, control, row):
        self._call("list-select", control, row)

    def close(self):
        self._call("close")

    def restore(self):
        """Brings the minimised window back, as the task bar does."""
        self.wait("minimised")
        if self.session.managed == "Y":  # a late answer of the window manager would minimise it again
            title = self.info()["title"]
            iconic = lambda: self.session.display_state(title) == "Iconic"
            wait_for(iconic, self.limit, "the window manager has minimised " + self.name)
            for _ in range(2):
                self._call("send", "", 0)  # WM_NULL: it has been through its queue
        # WM_SYSCOMMAND, SC_RESTORE; posted, because a sent one may come in the middle of the minimising.
        self._call("post", "", 0x0112, 0xF120)
        self.wait("restored")
        self._call("activate")
        self.wait("foreground")


class Session:
    """One prefix with everything that runs in it."""

    def __init__(self, name, managed="N", dpi=96, dlls=None):
        self.name = name
        self.prefix = os.path.join(BUILD, "prefix-e2e-" + name)
        self.logs = os.path.join(BUILD, "e2e-logs", name)
        self.managed, self.dpi, self.dlls = managed, dpi, dlls
        self.programs, self.display, self.manager, self.driver, self.phones = [], None, None, None, None
        self.environment = None
        self.last_part = "%dx%d+0+0" % SCREEN  # of the screen, in the last picture

    def _log(self, what):
        return os.path.join(self.logs, what + ".log")

    def start(self):
        shutil.rmtree(self.logs, ignore_errors=True)
        os.makedirs(self.logs)
        os.makedirs(SCREENS, exist_ok=True)
        atexit.register(self.stop)
        command = [os.path.join(ROOT, "scripts", "practice_prefix.sh"), self.prefix, "--kind", "e2e", "--fresh",
                   "--managed", self.managed, "--dpi", str(self.dpi)]
        subprocess.run(command + (["--dlls", self.dlls] if self.dlls else []), check=True, stdin=subprocess.DEVNULL)
        self.display = Display(self._log("display"))
        self.environment = _environment(self.prefix, self.display.name)
        if self.managed == "Y":
            self.manager = Process(["openbox", "--sm-disable"], self._log("openbox"), env=self.environment)
            managed = lambda: b"window id" in subprocess.run(
                ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                env=self.environment).stdout
            wait_for(managed, 20, "the window manager is ready")
        _prefix_call("wineStart", self.prefix, self.environment)
        self.driver = Driver(self.environment, self._log("driver"))
        self.driver.call("ping", limit=60)
        return self

    def stop(self):
        """Ends all that was started, in the opposite order."""
        atexit.unregister(self.stop)
        for program in reversed(self.programs):
            program.stop()
        for process in (self.phones, self.driver):
            if process:
                process.stop()
        if os.path.isdir(self.prefix):
            with contextlib.suppress(subprocess.CalledProcessError):
                _prefix_call("wineStop", self.prefix)
        for process in (self.manager, self.display):
            if process:
                process.stop()
        self.programs, self.display, self.manager, self.driver, self.phones = [], None, None, None, None
        if os.environ.get("PELVARO_KEEP_PREFIX") != "1":
            shutil.rmtree(self.prefix, ignore_errors=True)
            with contextlib.suppress(OSError):
                os.remove(self.prefix + ".lock")

    def run(self, exe, *arguments, directory=None):
        """Starts a Windows program in this session."""
        log = self._log(os.path.splitext(os.path.basename(exe))[0])
        program = Process([self.environment["WINELOADER"], exe, *arguments], log, env=self.environment,
                          cwd=directory or os.path.dirname(exe))
        self.programs.append(program)
        return program

    def path(self, windows_path):
        """Where a file of this prefix's drive C lies: path(r"C:\\practice\\lines.txt")."""
        return os.path.join(self.prefix, "drive_c", *windows_path.replace("C:\\", "", 1).split("\\"))

    def start_phones(self, phones=None):
        """Puts phones on serial ports: {"COM5": "nokia"}. They end with this process at the latest."""
        exchange = os.path.join(BUILD, "native", "practice", "phone_exchange")
        self.phones = Process(
            [exchange, "--prefix", self.prefix, "--phones", os.path.join(ROOT, "sandbox", "phones"),
             "--control", os.path.join(self.prefix, CONTROL), "--with-pid", str(os.getpid())] +
            ["%s=%s" % pair for pair in sorted((PHONES if phones is None else phones).items())], self._log("phones"))
        wait_for(lambda: "ready" in self.phones.log().split() or not self.phones.alive, 10, "the phones are ready")
        if not self.phones.alive:
            raise Failure("the phones do not start: " + self.phones.log()[-500:])

    def tell_phones(self, line):
        """A command to the phones: "unplug COM5", "plug COM5 nokia", "answer COM5 busy" ..."""
        handle = os.open(os.path.join(self.prefix, CONTROL), os.O_WRONLY | os.O_NONBLOCK)
        try:
            os.write(handle, line.encode("cp1252") + b"\n")
        finally:
            os.close(handle)

    def windows(self, prefix="Pelvaro."):
        """What windows there are whose class begins so."""
        for _ in range(5):
            with contextlib.suppress(Failure):  # a window may vanish while it is described
                return self.driver.call("windows", prefix)
        return self.driver.call("windows", prefix)

    def window(self, name):
        """A window by its class; "Form1" is short for "Pelvaro.Form1"."""
        return Window(self, name if "." in name or name.startswith(("#", "0x")) else "Pelvaro." + name)

    # Message boxes.
    def boxes(self):
        """The message boxes on the screen, the one in front first: caption, text, buttons."""
        for _ in range(5):
            with contextlib.suppress(Failure):  # a box may vanish while it is described
                return self.driver.call("boxes")
        return self.driver.call("boxes")

    def wait_box(self, limit=10):
        """The message box in front: caption, text, buttons."""
        self.driver.call("wait-box", int(limit * 1000), limit=limit + 10)
        return self.boxes()[0]

    def answer_box(self, button, text=None, caption="Pelvaro", limit=10):
        """Waits for a message box, checks what it says, presses a button and waits until the box is gone."""
        box = self.wait_box(limit)
        if caption is not None and box["caption"] != caption:
            raise Failure("the box is called %r, not %r" % (box["caption"], caption))
        if text is not None and box["text"] != text:
            raise Failure("the box says %r, not %r" % (box["text"], text))
        handle = box["window"]["handle"]
        self.driver.call("answer", button)
        self.driver.call("wait-window", handle, "hidden", int(limit * 1000), limit=limit + 10)
        return box

    # Popup menus cannot be read from outside; they are driven by keys.
    def wait_menu(self, limit=10, state="visible"):
        """visible or gone"""
        self.driver.call("wait-menu", int(limit * 1000), state, limit=limit + 10)

    def choose_menu(self, number, limit=10):
        """Chooses the entry of that number, from 1, of the open popup menu."""
        self._wait_menu_ready(limit)
        self.keys(*["down"] * number, "enter")
        self.wait_menu(limit, "gone")

    def close_menu(self, limit=10):
        """Closes the open popup menu with Esc, which is pressed again when the menu does not get it."""
        self._wait_menu_ready(limit)
        for _ in range(3):
            self.keys("esc")
            with contextlib.suppress(Failure):
                return self.wait_menu(limit / 3, "gone")
        raise Failure("the menu does not close with Esc")

    def _wait_menu_ready(self, limit):
        self.wait_menu(limit)  # it is seen a moment before it takes keys
        wait_for(lambda: self.driver.call("focus")["menu"], limit, "the menu takes keys")

    def point(self, x, y):
        """Moves the pointer and waits until it stays there: the display may still report an earlier place, and a
        button pressed then would be pressed there."""
        steady = 0
        for _ in range(500):
            there = self.driver.call("pointer") == [x, y]
            steady = steady + 1 if there else 0
            if steady == 4:
                return
            if not there:
                self.driver.call("move", x, y)
            time.sleep(0.01)
        raise Failure("the pointer does not stay at %d, %d" % (x, y))

    def keys(self, *names):
        """Strokes by name: "enter", "tab", "shift+tab", "alt+f4", "apps"."""
        self.driver.call("keys", *names)

    # Input from outside Windows, as the display server gives it: for what a window manager or a hot key has a part in.
    def display_call(self, *words):
        """One xdotool command."""
        subprocess.run(["xdotool", *map(str, words)], check=True, env=self.environment, timeout=20)

    def display_state(self, title):
        """What a window manager makes of a window: Normal, Iconic, Withdrawn; None when it does not know it."""
        found = subprocess.run(["xprop", "-name", title, "WM_STATE"], stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL, env=self.environment, timeout=20)
        state = re.search(r"window state: (\w+)", found.stdout.decode(errors="replace"))
        return state.group(1) if state else None

    def display_drag(self, x, y, to_x, to_y, steps=8):
        at = lambda px, py: wait_for(lambda: self.driver.call("pointer") == [px, py], 5, "the pointer is there")
        self.display_call("mousemove", x, y)
        at(x, y)
        self.display_call("mousedown", 1)
        for i in range(1, steps + 1):
            place = (x + (to_x - x) * i // steps, y + (to_y - y) * i // steps)
            self.display_call("mousemove", *place)
            at(*place)
        self.display_call("mouseup", 1)

    def screenshot(self, name, margin=None):
        """A picture of the screen in build/screens/. With a margin only of what lies around the program's windows, or
        where they were last when none is seen now."""
        file = os.path.join(SCREENS, name + ".png")
        os.makedirs(os.path.dirname(file), exist_ok=True)
        part = [] if margin is None else ["-crop", self._windows_part(margin), "+repage"]
        subprocess.run(["import", "-window", "root", *part, file], check=True, env=self.environment, timeout=20)
        return file

    def _windows_part(self, margin):
        shown = [w["rect"] for kind in ("Pelvaro.", "#32770", "#32768") for w in self.windows(kind)
                 if w["visible"] and not w["minimised"]]
        if not shown:
            return self.last_part
        left, top = (max(0, min(r[i] for r in shown) - margin) for i in (0, 1))
        right, bottom = (min(SCREEN[i], max(r[i + 2] for r in shown) + margin) for i in (0, 1))
        self.last_part = "%dx%d+%d+%d" % (right - left, bottom - top, left, top)
        return self.last_part


class Case(unittest.TestCase):
    """A class of tests on one session; its settings stand here as class variables."""

    managed, dpi = "N", 96
    dlls = None  # the folder of the practice line's DLLs, when it is not the usual one
    phones = PHONES  # None: no phones
    exe = os.path.join(BUILD, "dist", "pelvaro.exe")  # None: nothing is started
    first_window = "Form1"

    session = None

    @classmethod
    def setUpClass(cls):
        cls.session = Session(cls.__name__, cls.managed, cls.dpi, cls.dlls)
        try:
            cls.session.start()
            if cls.phones:
                cls.session.start_phones(cls.phones)
            cls.prepare()
            if cls.exe:
                cls.start_program()
        except BaseException:
            cls.picture("at-start")
            cls.session.stop()
            raise

    @classmethod
    def prepare(cls):
        """For classes that lay out files in the prefix before the program starts."""

    @classmethod
    def start_program(cls):
        """Also for a test that has ended the program and wants it back."""
        if not os.path.exists(cls.exe):
            raise Failure("the program is not built: " + cls.exe)
        cls.program = cls.session.run(cls.exe)
        try:
            cls.window(cls.first_window).wait("visible", 20)
        except Failure as failure:
            code = cls.program.process.poll()
            now = "still runs" if code is None else "has ended with %d" % code
            raise Failure("%s; the program %s. %s" % (failure, now, cls.program.log()[-1000:])) from None

    @classmethod
    def tearDownClass(cls):
        cls.session.stop()

    @classmethod
    def picture(cls, what):
        with contextlib.suppress(Exception):
            cls.session.screenshot("failed/%s-%s" % (cls.__name__, what))

    @classmethod
    def window(cls, name):
        return cls.session.window(name)

    def run(self, result=None):
        """As usual; a test that fails leaves a picture of the screen in build/screens/failed/."""
        bad = lambda: len(result.failures) + len(result.errors) if result is not None else 0
        before = bad()
        answer = super().run(result)
        if bad() > before and self.session and self.session.display:
            self.picture(self._testMethodName)
        return answer
