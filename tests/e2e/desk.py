"""What the driven tests of the program share: its windows as they are laid out, the files of the practice line, and a
user's habits at it."""

import contextlib
import os
import subprocess

import pelvaro_e2e as e2e

USER, PASSWORD = "guest", "practice"
OFFICE, HOME, WORK = "Corvanti-Office", "Corvanti-Home", "Work"
CONNECTED, DISCONNECTED = "Status: Connected.", "Status: Disconnected."
FAILED = "Fail to connect"
PROGRESS = ["Opening port...", "Port opened...", "Connecting device...", "Device connected...",
            "Checking username and password...", "Logging on the network..."]

# Of each window: its title, its size, and of each control the platform's class, the text and x, y, width, height. All
# at 96 dots an inch.
FORMS = {
    "Form1": ("Pelvaro", (376, 412), {
        "Image5": ("Static", "", 16, 6, 16, 16),
        "Label8": ("Static", "Pelvaro", 40, 5, 255, 20),
        "Label6": ("Button", "Minimise", 303, 1, 36, 27),
        "Label3": ("Button", "Close", 339, 1, 36, 27),
        "Image1": ("Button", "Add", 16, 44, 104, 64),
        "Image2": ("Button", "Connect", 136, 44, 104, 64),
        "Image3": ("Button", "Limits", 256, 44, 104, 64),
        "ListView1": ("SysListView32", "Connections", 16, 124, 344, 148),
        "Image4": ("Static", "", 16, 284, 16, 16),
        "statuslbl": ("Static", DISCONNECTED, 40, 280, 144, 24),
        "Label7": ("Static", "", 192, 280, 168, 24),
        "Label1": ("Static", "Total bytes received: 0 KB", 16, 316, 236, 20),
        "Label2": ("Static", "Total bytes transmitted: 0 KB", 16, 336, 236, 20),
        "Label4": ("Static", "Download rate: 0 KB/sec.", 16, 356, 236, 20),
        "Label5": ("Static", "Upload rate: 0 KB/sec.", 16, 376, 236, 20),
        "Label9": ("Static", " elapse", 260, 316, 100, 20),
        "Label10": ("Static", "", 260, 336, 100, 20),
        "Label11": ("Static", " remain", 260, 356, 100, 20),
        "Label12": ("Static", "", 260, 376, 100, 20),
    }),
    "Form4": ("Pelvaro - Connect", (360, 172), {
        "Label6": ("Static", "Pelvaro - Connect", 16, 5, 299, 20),
        "Label3": ("Button", "Close", 323, 1, 36, 27),
        "Image1": ("Static", "", 16, 48, 48, 48),
        "Label1": ("Static", "User Name:", 80, 44, 68, 24),
        "Text1": ("Edit", "", 152, 44, 192, 24),
        "Label2": ("Static", "Password:", 80, 76, 68, 24),
        "Text2": ("Edit", "", 152, 76, 192, 24),
        "Command1": ("Button", "OK", 152, 128, 92, 28),
        "Command2": ("Button", "Cancel", 252, 128, 92, 28),
    }),
    "frmStatus": ("Connection", (328, 148), {
        "captionLabel": ("Static", "Connection", 16, 5, 267, 20),
        "closeMark": ("Button", "Close", 291, 1, 36, 27),
        "Image1": ("Static", "", 16, 44, 48, 48),
        "Label1": ("Static", "", 80, 44, 232, 48),
        "Command1": ("Button", "cancel", 224, 104, 88, 28),
    }),
    "Form5": ("Pelvaro", (280, 148), {
        "captionLabel": ("Static", "Pelvaro", 16, 5, 219, 20),
        "closeMark": ("Button", "Close", 243, 1, 36, 27),
        "Animation1": ("SysAnimate32", "", 48, 44, 184, 64),
        "textLabel": ("Static", "", 16, 112, 248, 24),
    }),
}
LIMIT_LABELS = ("Label9", "Label10", "Label11", "Label12")  # not seen as long as no limit is set
MASKED = 0x0020  # the style of a box for passwords
LVM_GETTOPINDEX = 0x1027
MARGIN = 24

PHONEBOOK = """[devices]
modem = COM5 Nokia 6230 USB Modem
modem = COM7 Samsung D500 USB Modem
%s
[end]
"""


def phonebook(*names):
    """A phonebook of these entries, each on the first phone."""
    plain = lambda c: 0x20 < c < 0x7F and c not in b"%[]"
    escaped = lambda name: "".join(chr(c) if plain(c) else "%%%02X" % c for c in name.encode("cp1252"))
    entry = "\n[entry %s]\nnumber = *99#\ndevice = Nokia 6230 USB Modem\nuser = guest\npassword = practice\n"
    return PHONEBOOK % "".join(entry % escaped(name) + "password saved = yes\n" for name in names)


def compiled(folder, source, *options):
    """A DLL made of a few lines of C."""
    path = os.path.join(folder, "rasapi32.c")
    with open(path, "w") as file:
        file.write(source)
    dll = os.path.join(folder, "rasapi32.dll")
    subprocess.run(["i686-w64-mingw32-gcc", "-shared", "-s", "-O1", "-Wl,--kill-at", *options, "-o", dll, path],
                   check=True)
    os.remove(path)
    return dll


class Desk(e2e.Case):
    """What the classes below have in common. Every test begins with fresh files and a program just started."""

    scenario = "pace 50\ntimeout 3000\njournal on\n"
    slow = "pace 500\ntimeout 5000\njournal on\n"  # for what must be seen or done while it dials
    fresh = False

    @classmethod
    def prepare(cls):
        os.makedirs(cls.session.path("C:\\practice"), exist_ok=True)
        cls.write("scenario.txt", cls.scenario)
        cls.fresh = True

    @classmethod
    def write(cls, name, text):
        with open(cls.session.path("C:\\practice\\" + name), "w", newline="") as file:
            file.write(text)

    @classmethod
    def read(cls, name):
        with open(cls.session.path("C:\\practice\\" + name), encoding="cp1252") as file:
            return file.read()

    def setUp(self):
        if self.fresh:
            type(self).fresh = False
        else:
            self.begin()
        self.hold_windows()

    def hold_windows(self):
        self.main = self.window("Form1").wait("foreground")
        self.wait_focus("ListView1")
        self.prompt, self.status, self.splash = map(self.window, ("Form4", "frmStatus", "Form5"))

    def begin(self, scenario=None, book=None):
        """Starts the program anew with these files."""
        if self.program.alive:
            self.program.stop()
        folder = self.session.path("C:\\practice")
        for name in os.listdir(folder):
            with contextlib.suppress(FileNotFoundError):  # a practice program that still runs may rename one
                os.remove(os.path.join(folder, name))
        self.write("scenario.txt", scenario or self.scenario)
        if book:
            self.write("phonebook.txt", book)
        self.session.point(5, 5)
        self.start_program()
        self.hold_windows()

    # The phones.
    def phones_do(self, line, answer):
        before = self.session.phones.log().count(answer)
        self.session.tell_phones(line)
        e2e.wait_for(lambda: self.session.phones.log().count(answer) > before, 10, "the phones say " + answer)

    def unplug(self, port, phone):
        self.phones_do("unplug " + port, port + " unplugged")
        self.addCleanup(self.plug, port, phone)

    def plug(self, port, phone):
        if self.session.phones.log().rfind(port + " unplugged") > self.session.phones.log().rfind(port + " plugged"):
            self.phones_do("plug %s %s" % (port, phone), port + " plugged")

    def let_answer(self, port, answer):
        self.phones_do("answer %s %s" % (port, answer), port + " answers " + answer)
        if answer != "connect":
            self.addCleanup(self.let_answer, port, "connect")

    # The user.
    def focus(self):
        return self.session.driver.call("focus")["focusControl"]

    def wait_focus(self, control):
        e2e.wait_for(lambda: self.focus() == control, 10, lambda: "%s has the focus, not %s" % (self.focus(), control))

    def tab_to(self, *controls):
        for control in controls:
            self.session.keys("tab")
            self.wait_focus(control)

    def type(self, text):
        self.session.driver.call("type", text)

    def open_prompt(self, entry=OFFICE):
        self.main.choose_row("ListView1", entry)
        self.main.click("Image2")
        self.prompt.wait("foreground")
        self.wait_focus("Text1")

    def sign_in(self, user=USER, password=PASSWORD):
        self.type(user)
        self.session.keys("tab")
        self.type(password)
        self.session.keys("enter")

    def dial(self, entry=OFFICE, user=USER, password=PASSWORD):
        self.open_prompt(entry)
        self.sign_in(user, password)

    def connect(self, entry=OFFICE):
        self.dial(entry)
        self.wait_connected()

    def wait_connected(self):
        self.main.wait_text("statuslbl", CONNECTED, 20)
        self.main.wait_text("Image2", "Hang Up")
        for dialog in (self.status, self.prompt):
            dialog.wait("hidden")

    def wait_disconnected(self):
        self.main.wait_text("statuslbl", DISCONNECTED)
        self.main.wait_text("Image2", "Connect")

    def wait_failed(self):
        self.status.wait_text("Label1", FAILED)
        self.status.wait_text("Command1", "Retry")
        self.status.wait("foreground")

    # The observer.
    def visible(self):
        """The classes of the program's windows that are seen."""
        return sorted(w["class"][len("Pelvaro."):] for w in self.session.windows() if w["visible"])

    def wait_visible(self, *names):
        e2e.wait_for(lambda: self.visible() == sorted(names), 10, lambda: "%r are seen" % self.visible())

    def stays(self, condition, seconds=0.4):
        """Nothing happens: the condition is true all the time."""
        with self.assertRaises(e2e.Failure):
            e2e.wait_for(lambda: not condition(), seconds, "a change")

    def texts_until(self, done):
        """Every text the status window shows, in order, until the condition is true."""
        seen = []

        def look():
            finished = done()
            if self.status.info():
                text = self.status.text("Label1")
                if text and text not in seen[-1:]:
                    seen.append(text)
            return finished

        e2e.wait_for(look, 30, lambda: "the end of the dial; so far %r" % seen)
        return seen

    def journal(self, *verbs):
        """The calls of the dial-up service so far; of these verbs only, when some are given."""
        lines = self.read("journal.txt").splitlines()
        return [line for line in lines if not verbs or line.split()[0] in verbs]

    def wait_ended(self, code=0):
        e2e.wait_for(lambda: not self.program.alive, 20, "the program ends")
        self.assertEqual(self.program.process.returncode, code)

    def assert_laid_out(self, name, texts=None):
        """Title, size and every control of a window; texts are those that differ from the table."""
        title, size, controls = FORMS[name]
        form = self.window(name)
        info, seen = form.info(), form.controls()
        scaled = lambda v: (v * self.dpi + 48) // 96
        left, top, right, bottom = info["rect"]
        self.assertEqual(info["title"], title)
        self.assertEqual((right - left, bottom - top), tuple(map(scaled, size)))
        self.assertEqual(sorted(seen), sorted(controls))
        for control, (kind, text, x, y, width, height) in controls.items():
            text = (texts or {}).get(control, text)
            with self.subTest(form=name, control=control):
                self.assertEqual((seen[control]["class"], seen[control]["text"]), (kind, text))
                expected = [left + scaled(x), top + scaled(y), left + scaled(x + width), top + scaled(y + height)]
                self.assertEqual(seen[control]["rect"], expected)
                self.assertTrue(left <= expected[0] < expected[2] <= right)
                self.assertTrue(top <= expected[1] < expected[3] <= bottom)
