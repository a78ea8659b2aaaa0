"""Going online and off again, as a user does it: the main window, the prompt, the progress, every way to fail."""

import os
import shutil
import subprocess
import tempfile
import unittest

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
        self.prompt, self.status, self.splash = map(self.window, ("Form4", "frmStatus", "Form5"))

    def begin(self, scenario=None, book=None):
        """Starts the program anew with these files."""
        if self.program.alive:
            self.program.stop()
        folder = self.session.path("C:\\practice")
        for name in os.listdir(folder):
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
        e2e.wait_for(lambda: self.session.phones.log().count(answer) > before, 5, "the phones say " + answer)

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
        e2e.wait_for(lambda: self.focus() == control, 5, lambda: "%s has the focus, not %s" % (self.focus(), control))

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
        self.main.wait_text("statuslbl", CONNECTED)
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
        e2e.wait_for(lambda: self.visible() == sorted(names), 5, lambda: "%r are seen" % self.visible())

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

        e2e.wait_for(look, 10, lambda: "the end of the dial; so far %r" % seen)
        return seen

    def journal(self, *verbs):
        """The calls of the dial-up service so far; of these verbs only, when some are given."""
        lines = self.read("journal.txt").splitlines()
        return [line for line in lines if not verbs or line.split()[0] in verbs]

    def wait_ended(self, code=0):
        e2e.wait_for(lambda: not self.program.alive, 5, "the program ends")
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


class Dialing(Desk):
    """On a display without a window manager."""

    def test_the_main_window_opens(self):
        self.assert_laid_out("Form1")
        controls = self.main.controls()
        self.assertEqual([n for n in controls if not controls[n]["visible"]], list(LIMIT_LABELS))
        self.assertEqual([n for n in controls if not controls[n]["enabled"]], ["Image2"])
        self.assertEqual(self.main.list("ListView1"),
                         {"count": 3, "columns": 1, "selected": -1, "rows": [[OFFICE], [HOME], [WORK]]})
        self.assertEqual(self.focus(), "ListView1")
        self.assertEqual(self.visible(), ["Form1"])

    def test_the_selected_row_is_drawn_from_edge_to_edge(self):
        right = self.main.control("ListView1")["rect"][2]
        selected, white = [207, 224, 251], [255, 255, 255]
        for row, expected in ((0, (selected, white)), (1, (white, selected))):
            self.main.choose_row("ListView1", row)
            for i in (0, 1):
                top, bottom = self.session.driver.call("list-rect", "Pelvaro.Form1", "ListView1", i)[1::2]
                colour = lambda: self.session.driver.call("pixel", right - 4, (top + bottom) // 2)
                e2e.wait_for(lambda: colour() == expected[i], 2, lambda: "row %d ends in %r" % (i, colour()))

    def test_connect_and_hang_up(self):
        self.open_prompt()
        self.assert_laid_out("Form4")
        self.sign_in()
        self.status.wait("visible")
        seen = self.texts_until(lambda: self.main.text("statuslbl") == CONNECTED)
        self.assertEqual([t for t in seen if t != "Connect successfully."], PROGRESS)
        self.wait_connected()
        self.assert_laid_out("frmStatus", {"Label1": self.status.text("Label1")})
        self.wait_visible("Form1")
        self.main.wait("foreground")
        self.main.click("Image2")
        self.wait_disconnected()
        self.wait_visible("Form1")
        self.assert_laid_out("Form5")  # it has come and gone
        self.main.wait("enabled").wait("foreground")

    def test_the_calls_of_a_connect_and_a_hang_up(self):
        self.connect()
        self.main.click("Image2")
        self.wait_disconnected()
        self.assertEqual(self.journal(), [
            "getEntryProperties no entry -> 603",
            "getEntryProperties entry=Corvanti-Office -> 603",
            "getEntryProperties entry=Corvanti-Office -> 0",
            "getEntryDialParams entry=Corvanti-Office -> 0",
            "getEntryDialParams entry=Corvanti-Office -> 0",
            "getEntryDialParams entry= -> 623",
            "dial entry=Corvanti-Office number= user=guest handle=0x10001 -> 0",
            "notify state=0x0 error=0",
            "notify state=0x1 error=0",
            "notify state=0x2 error=0",
            "notify state=0x3 error=0",
            "notify state=0x4 error=0",
            "notify state=0x5 error=0",
            "notify state=0xE error=0",
            "notify state=0x12 error=0",
            "notify state=0x15 error=0",
            "notify state=0x2000 error=0",
            "hangUp handle=0x10001 -> 0",
        ])

    def test_the_success_text_comes_with_the_interactive_state(self):
        self.begin(self.scenario + "end 0x1000\n")
        self.connect()
        self.assertEqual(self.status.text("Label1"), "Connect successfully.")

    def test_a_wrong_password_is_mended_and_tried_again(self):
        self.dial(password="wrong-secret")
        self.wait_failed()
        self.wait_visible("Form1", "Form4", "frmStatus")
        self.prompt.enter("Text2", PASSWORD)
        self.status.click("Command1")
        self.wait_connected()
        self.assertEqual(self.journal("dial", "hangUp"), [
            "dial entry=Corvanti-Office number= user=guest handle=0x10001 -> 0",
            "hangUp handle=0x10001 -> 0",
            "dial entry=Corvanti-Office number= user=guest handle=0x10002 -> 0",
        ])
        # The main window still holds the handle of the dial that failed, so this hangs nothing up.
        self.main.click("Image2")
        e2e.wait_for(lambda: len(self.journal("hangUp")) == 2, 5, "the second hang-up")
        self.assertEqual(self.journal("hangUp")[-1], "hangUp handle=0x10001 -> 6")
        self.assertEqual(self.main.text("statuslbl"), CONNECTED)

    def test_retry_fails_again_as_long_as_nothing_is_mended(self):
        self.dial(password="wrong-secret")
        self.wait_failed()
        for dials in (2, 3):
            self.status.click("Command1")
            e2e.wait_for(lambda: len(self.journal("hangUp")) == dials, 5, "the dial fails again")
            self.wait_failed()
        self.assertEqual(len(self.journal("dial")), 3)

    def test_the_password_is_seen_nowhere(self):
        self.open_prompt()
        pictures = []
        for text in ("iiiiiiiiiiii", "wrong-secret"):
            self.prompt.enter("Text2", text)
            self.prompt.focus("Text1")
            self.session.point(5, 5)
            pictures.append(self.box_pixels("Text2"))
        self.assertEqual(pictures[0], pictures[1])
        self.assertTrue(self.prompt.control("Text2")["style"] & MASKED)
        self.assertFalse(self.prompt.control("Text1")["style"] & MASKED)
        self.prompt.enter("Text1", USER)
        self.session.keys("enter")
        self.wait_failed()
        folder = self.session.path("C:\\practice")
        self.assertIn("journal.txt", os.listdir(folder))
        for name in os.listdir(folder):
            with open(os.path.join(folder, name), "rb") as file:
                self.assertNotIn(b"wrong-secret", file.read(), name)

    def box_pixels(self, control):
        """What a control of the prompt looks like."""
        left, top, right, bottom = self.prompt.control(control)["rect"]
        part = "%dx%d+%d+%d" % (right - left, bottom - top, left, top)
        return subprocess.run(["import", "-window", "root", "-crop", part, "rgb:-"], stdout=subprocess.PIPE, check=True,
                              env=self.session.environment, timeout=20).stdout

    def test_cancel_while_it_dials(self):
        self.begin("pace 300\ntimeout 3000\njournal on\n")
        self.dial()
        self.status.wait_text("Label1", "Connecting device...")
        self.status.click("Command1")
        self.wait_visible("Form1")
        self.stays(lambda: self.visible() == ["Form1"] and self.main.text("statuslbl") == DISCONNECTED)
        self.assertEqual(self.journal("dial", "hangUp"), [
            "dial entry=Corvanti-Office number= user=guest handle=0x10001 -> 0", "hangUp handle=0x10001 -> 0"])
        self.main.click("Image2")  # and once more: the prompt has kept what was typed
        self.prompt.wait("foreground")
        self.session.keys("enter")
        self.wait_connected()

    def test_the_cable_is_pulled_while_it_dials(self):
        self.begin("pace 200\ntimeout 3000\njournal on\n")
        self.dial()
        self.status.wait_text("Label1", "Device connected...")
        self.unplug("COM5", "nokia")
        self.wait_failed()
        self.assertIn(DISCONNECTED, self.main.text("statuslbl"))
        self.plug("COM5", "nokia")
        self.status.click("Command1")
        self.wait_connected()

    def test_the_phone_does_not_get_through(self):
        for answer in ("busy", "noanswer", "nocarrier"):
            with self.subTest(answer=answer):
                self.let_answer("COM5", answer)
                self.begin()
                self.dial()
                self.wait_failed()
                self.assertEqual(self.journal("hangUp"), ["hangUp handle=0x10001 -> 0"])
        self.let_answer("COM5", "connect")
        self.status.click("Command1")
        self.wait_connected()

    def test_another_program_has_the_port(self):
        self.addCleanup(self.plug, "COM5", "nokia")
        self.addCleanup(self.phones_do, "unplug COM5", "COM5 unplugged")
        self.phones_do("occupy COM5", "COM5 occupied")
        self.dial()
        self.wait_failed()
        self.assertEqual(self.journal("notify", "hangUp"),
                         ["notify state=0x0 error=0", "notify state=0x0 error=633", "hangUp handle=0x10001 -> 0"])

    def test_the_cable_is_pulled_while_it_is_connected(self):
        self.connect()
        self.unplug("COM5", "nokia")
        self.wait_disconnected()
        self.wait_visible("Form1")
        self.assertEqual(self.journal("hangUp"), [])

    def test_a_dial_that_is_refused_at_once_says_nothing(self):
        self.begin(self.scenario + "fail dial 633\n")
        self.dial()
        e2e.wait_for(lambda: self.journal("dial"), 5, "the dial")
        self.stays(lambda: self.status.text("Label1") == "" and self.status.text("Command1") == "cancel")
        self.wait_visible("Form1", "Form4", "frmStatus")
        self.status.click("Command1")
        self.wait_visible("Form1")

    def test_unreadable_parameters_end_a_dial_in_silence(self):
        self.begin(self.scenario + "fail getEntryDialParams 623\n")
        self.dial()
        self.status.wait("foreground")
        self.stays(lambda: self.status.text("Label1") == "" and self.status.text("Command1") == "cancel")
        self.assertEqual(self.journal("dial"), [])

    def test_two_connections_at_once(self):
        self.connect(OFFICE)
        self.main.choose_row("ListView1", HOME)
        self.wait_disconnected()
        self.main.click("Image2")
        self.prompt.wait("foreground")
        self.session.keys("enter")  # user and password are still there
        self.wait_connected()
        self.main.choose_row("ListView1", WORK)
        self.wait_disconnected()
        for row, state in ((0, CONNECTED), (2, DISCONNECTED), (1, CONNECTED)):  # set by message, as a reader does
            self.main.select_row("ListView1", row)
            self.main.wait_text("statuslbl", state)
        self.main.click("Image2")
        self.wait_disconnected()
        self.main.choose_row("ListView1", OFFICE)
        self.main.wait_text("statuslbl", CONNECTED)

    def test_the_prompt_keeps_its_texts_until_it_is_cancelled(self):
        texts = lambda: [self.prompt.text(box) for box in ("Text1", "Text2")]
        self.connect()
        self.main.click("Image2")
        self.wait_disconnected()
        self.open_prompt()
        self.assertEqual(texts(), [USER, PASSWORD])
        self.prompt.click("Command2")
        self.prompt.wait("gone")
        self.open_prompt()
        self.assertEqual(texts(), ["", ""])
        self.prompt.click("Label3")
        self.prompt.wait("gone")
        self.stays(lambda: self.visible() == ["Form1"])
        self.assertEqual(len(self.journal("dial")), 1)

    def test_the_popup_menu_deletes(self):
        self.main.choose_row("ListView1", HOME, "right")
        self.session.choose_menu(2)
        self.main.wait_rows("ListView1", 2)
        self.assertEqual(self.main.rows("ListView1"), [[OFFICE], [WORK]])
        self.assertIn("[entry Corvanti-Office]", self.read("phonebook.txt"))
        self.assertNotIn("[entry Corvanti-Home]", self.read("phonebook.txt"))
        self.assertEqual(self.journal("deleteEntry"), ["deleteEntry entry=Corvanti-Home -> 0"])
        self.main.choose_row("ListView1", 0)  # the menu does not come back with another choice
        self.session.keys("down")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 1, 5, "the next row is selected")
        self.stays(lambda: not self.session.driver.call("menus"), 0.2)

    def test_the_menu_key_opens_the_same_menu(self):
        self.session.keys("apps")  # without a selected row there is none
        self.stays(lambda: not self.session.driver.call("menus"), 0.2)
        self.session.keys("down")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 0, 5, "the first row is selected")
        self.session.keys("apps")
        self.session.wait_menu()
        self.session.keys("esc")
        self.session.driver.call("wait-menu", 5000, "gone")
        self.session.keys("apps")
        self.session.choose_menu(2)
        self.main.wait_rows("ListView1", [[HOME], [WORK]].__eq__)

    def test_a_right_click_beside_the_rows_opens_nothing(self):
        left, _, _, bottom = self.main.control("ListView1")["rect"]
        self.session.point(left + 20, bottom - 20)
        self.session.driver.call("click-at", left + 20, bottom - 20, "right")
        self.stays(lambda: not self.session.driver.call("menus"), 0.2)
        self.assertEqual(self.main.list("ListView1")["selected"], -1)

    def test_the_menu_s_edit_harms_nothing(self):
        self.main.choose_row("ListView1", OFFICE, "right")
        self.session.choose_menu(1)
        self.main.wait("visible")
        self.assertEqual(len(self.main.rows("ListView1")), 3)
        self.assertTrue(self.program.alive)

    def test_all_entries_are_deleted_one_by_one(self):
        for left in (2, 1, 0):
            self.main.choose_row("ListView1", 0, "right")
            self.session.choose_menu(2)
            self.main.wait_rows("ListView1", left)
        self.assertNotIn("[entry", self.read("phonebook.txt"))
        self.assertEqual(self.main.text("statuslbl"), DISCONNECTED)
        self.main.click("Image2")  # it stays usable; without a choice nothing can be dialed
        self.prompt.wait("foreground")
        self.sign_in()
        self.status.wait("foreground")
        self.assertEqual(self.journal("dial"), [])

    def drag_and_check(self, form, grab, dx, dy):
        left, top = form.info()["rect"][:2]
        x, y = (left + grab[0], top + grab[1]) if isinstance(grab, tuple) else form.centre(grab)
        self.session.point(x, y)
        self.session.driver.call("drag", x, y, x + dx, y + dy)
        now = lambda: form.info()["rect"][:2]
        e2e.wait_for(lambda: now() == [left + dx, top + dy], 5, lambda: "the window lies at %r" % now())

    def test_the_windows_are_dragged_by_their_surface(self):
        self.drag_and_check(self.main, (8, 200), -60, 40)
        self.drag_and_check(self.main, "Label8", 30, -50)
        self.drag_and_check(self.main, "statuslbl", 25, 15)
        self.open_prompt()
        self.drag_and_check(self.prompt, (8, 100), 80, -30)
        self.drag_and_check(self.prompt, "Label1", -40, 20)
        self.session.driver.call("move", 700, 300)  # let go: it does not follow any more
        rect = self.prompt.info()["rect"]
        self.stays(lambda: self.prompt.info()["rect"] == rect, 0.2)

    def test_the_minimise_mark(self):
        self.main.click("Label6")
        self.main.restore()
        e2e.wait_for(self.focus, 5, "one of the controls has the focus")
        self.open_prompt()

    def test_windows_that_a_dial_took_away_while_minimised_stay_away(self):
        self.begin("pace 200\ntimeout 3000\njournal on\n")
        self.dial()
        self.status.wait_text("Label1", "Port opened...")
        self.main.click("Label6")
        self.main.wait_text("statuslbl", CONNECTED)
        self.main.restore()
        self.wait_visible("Form1")
        self.stays(lambda: self.visible() == ["Form1"])

    def test_letters_choose_the_entry_that_begins_with_them(self):
        self.session.keys("w")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 2, 5, "the row Work is selected")
        self.session.keys("x")  # no entry begins with it
        self.stays(lambda: self.main.list("ListView1")["selected"] == 2)

    def test_a_click_at_the_end_of_a_row_is_a_click_on_it(self):
        self.main.choose_row("ListView1", OFFICE)
        right = self.main.control("ListView1")["rect"][2]
        top, bottom = self.session.driver.call("list-rect", "Pelvaro.Form1", "ListView1", 2)[1::2]
        self.session.point(right - 6, (top + bottom) // 2)
        self.session.driver.call("click-at", right - 6, (top + bottom) // 2, "left")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 2, 5, "the row Work is selected")

    def test_the_close_mark_ends_the_program(self):
        self.main.click("Label3")
        self.wait_ended()

    def test_alt_f4_ends_the_program(self):
        self.session.keys("alt+f4")
        self.wait_ended()

    def test_the_program_ends_while_it_dials(self):
        self.begin("pace 400\ntimeout 3000\njournal on\n")
        self.dial()
        self.status.wait_text("Label1", "Port opened...")
        self.main.click("Label3")
        self.wait_ended()

    def test_the_program_ends_while_it_is_connected_and_does_not_hang_up(self):
        self.connect()
        self.main.click("Label3")
        self.wait_ended()
        self.assertEqual(self.journal("hangUp"), [])

    def test_the_program_ends_behind_an_open_menu(self):
        self.main.choose_row("ListView1", OFFICE, "right")
        self.session.wait_menu()
        self.main.close()
        self.wait_ended()

    def test_alt_f4_closes_the_prompt_alone(self):
        self.open_prompt()
        self.session.keys("alt+f4")
        self.prompt.wait("gone")
        self.stays(lambda: self.program.alive and self.visible() == ["Form1"], 0.2)

    def test_a_dial_goes_on_when_its_window_is_closed(self):
        self.begin("pace 150\ntimeout 3000\njournal on\n")
        self.dial()
        self.status.wait_text("Label1", "Port opened...")
        self.status.wait("foreground")
        self.session.keys("alt+f4")
        self.wait_visible("Form1")
        self.wait_connected()
        self.assertEqual(self.journal("hangUp"), [])

    def test_ok_twice_dials_twice_and_harms_nothing(self):
        self.open_prompt()
        self.prompt.enter("Text1", USER)
        self.prompt.enter("Text2", PASSWORD)
        self.prompt.click("Command1", "double")
        e2e.wait_for(lambda: len(self.journal("dial")) == 2, 5, "two dials")
        self.wait_connected()
        self.main.click("Image2")
        self.stays(lambda: self.program.alive and self.main.info()["enabled"], 0.3)

    def test_the_entry_of_a_connection_is_deleted(self):
        self.connect()
        self.main.choose_row("ListView1", OFFICE, "right")
        self.session.choose_menu(2)
        self.main.wait_rows("ListView1", [[HOME], [WORK]].__eq__)
        self.wait_disconnected()
        self.open_prompt(HOME)
        self.session.keys("enter")
        self.wait_connected()

    def test_an_empty_phonebook(self):
        self.begin(book=phonebook())
        self.assertEqual(self.main.list("ListView1")["count"], 0)
        self.assertEqual(self.main.text("statuslbl"), DISCONNECTED)
        self.assertFalse(self.main.control("Image2")["enabled"])
        self.session.keys("down", "apps", "space", "enter", "delete")
        self.stays(lambda: self.visible() == ["Form1"] and not self.session.driver.call("menus"), 0.2)

    def test_connect_and_hang_up_many_times(self):
        self.begin("pace 0\ntimeout 3000\njournal on\n")
        self.connect()
        for _ in range(10):
            self.main.click("Image2")
            self.wait_disconnected()
            self.session.keys("space")
            self.prompt.wait("foreground")
            self.session.keys("enter")
            self.wait_connected()
        self.assertEqual(len(self.session.windows()), 4)

    def test_escape(self):
        self.session.keys("esc")
        self.stays(lambda: self.program.alive and self.visible() == ["Form1"], 0.3)
        self.open_prompt()
        self.session.keys("esc")
        self.wait_visible("Form1")
        self.main.wait("foreground")
        self.dial(password="wrong-secret")
        self.wait_failed()
        self.session.keys("esc")
        self.wait_visible("Form1")
        self.stays(lambda: self.visible() == ["Form1"], 0.3)
        self.assertEqual(len(self.journal("dial")), 1)

    def test_the_focus_walks_through_every_control(self):
        self.tab_to("Label6", "Label3", "Image1", "Image3", "ListView1")  # nothing to connect yet
        self.session.keys("down")
        self.main.wait_control("Image2", "enabled")
        self.tab_to("Label6", "Label3", "Image1", "Image2", "Image3", "ListView1")
        self.session.keys("shift+tab")
        self.wait_focus("Image3")
        self.session.keys("shift+tab", "enter")
        self.prompt.wait("foreground")
        self.wait_focus("Text1")
        self.tab_to("Text2", "Command1", "Command2", "Label3", "Text1", "Text2", "Command1", "Command2")
        self.session.keys("space")
        self.prompt.wait("gone")
        self.main.wait("foreground")
        self.wait_focus("Image2")

    def test_without_a_mouse(self):
        self.session.keys("down", "down", "up", "down")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 1, 5, "the second row is selected")
        self.main.wait_control("Image2", "enabled")
        self.tab_to("Label6", "Label3", "Image1", "Image2")
        self.session.keys("enter")
        self.prompt.wait("foreground")
        self.wait_focus("Text1")
        self.sign_in(password="wrong-secret")
        self.wait_failed()
        self.wait_focus("Command1")
        self.session.keys("tab")
        self.wait_focus("closeMark")
        self.session.keys("space")
        self.wait_visible("Form1")
        self.main.wait("foreground")
        self.wait_focus("Image2")
        self.session.keys("space")
        self.prompt.wait("foreground")
        self.session.keys("tab", "home", "shift+end", "delete")
        self.type(PASSWORD)
        self.session.keys("tab", "space")
        self.wait_connected()
        self.main.wait("foreground")
        self.wait_focus("Image2")
        self.session.keys("enter")
        self.wait_disconnected()
        self.main.wait("foreground")
        self.session.keys("shift+tab", "shift+tab", "enter")  # the close mark
        self.wait_ended()

    def test_two_quick_clicks_open_one_prompt(self):
        self.main.choose_row("ListView1", OFFICE)
        self.main.click("Image2", "double")
        self.prompt.wait("foreground")
        self.assertEqual(len(self.session.windows("Pelvaro.Form4")), 1)

    def test_of_many_entries_the_first_256_are_listed(self):
        self.begin(self.scenario + "entries 300\n")
        view = self.main.list("ListView1")
        self.assertEqual((view["count"], len(view["rows"])), (256, 256))
        self.assertEqual((view["rows"][0], view["rows"][255]), ([OFFICE], ["Extra 256"]))
        left, top = self.main.control("ListView1")["rect"][:2]
        first = lambda: self.session.driver.call("send", "Pelvaro.Form1", "ListView1", LVM_GETTOPINDEX)
        self.session.point(left + 40, top + 40)
        self.session.driver.call("wheel", -2)
        e2e.wait_for(lambda: first() > 0, 5, "the list is scrolled")
        self.session.keys("end")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 255, 5, "the last row is selected")
        e2e.wait_for(lambda: first() == 250, 5, "the last rows are seen")  # there is room for six
        self.session.screenshot("dialing-256-entries", MARGIN)
        self.session.keys("home")
        e2e.wait_for(lambda: first() == 0, 5, "the first row is seen")
        self.assertEqual(self.main.text("statuslbl"), DISCONNECTED)

    def test_more_connections_than_are_looked_at(self):
        self.begin(self.scenario + "connections 300\n")
        self.dial()
        e2e.wait_for(lambda: self.journal("notify")[-1:] == ["notify state=0x2000 error=0"], 5, "it is connected")
        self.stays(lambda: self.main.text("statuslbl") == DISCONNECTED, 0.3)

    def test_names_are_shown_as_they_are(self):
        printable = bytes(c for c in range(0x21, 0x100) if c not in (0x7F, 0x81, 0x8D, 0x8F, 0x90, 0x9D, 0xA0))
        names = ["W" * 256, "50 % off & more %s%n && \"x\"", printable.decode("cp1252"), "i" * 60, "&File"]
        self.begin(book=phonebook(*names))
        self.assertEqual(self.main.rows("ListView1"), [[name] for name in names])
        self.session.screenshot("dialing-names", MARGIN)
        right = self.main.control("ListView1")["rect"][2]
        top, bottom = self.session.driver.call("list-rect", "Pelvaro.Form1", "ListView1", 0)[1::2]
        for x in range(right - 7, right - 2):  # cut in front of the list's edge
            self.assertEqual(self.session.driver.call("pixel", x, (top + bottom) // 2), [255, 255, 255], x)
        for name in names[1:3]:
            self.connect(name)
            self.main.click("Image2")
            self.wait_disconnected()
            self.begin(book=phonebook(*names))

    def test_a_library_beside_the_program_is_not_loaded(self):
        folder = self.session.path("C:\\planted")
        os.makedirs(folder)
        source = r"""#include <windows.h>
            BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
              CloseHandle(CreateFileA("C:\\planted\\loaded.txt", GENERIC_WRITE, 0, 0, CREATE_ALWAYS, 0, 0));
              return TRUE;
            }
            __declspec(dllexport) void CALLBACK Nothing(HWND w, HINSTANCE i, LPSTR s, int n) {}"""
        compiled(folder, source)
        loaded = os.path.join(folder, "loaded.txt")
        probe = self.session.run("rundll32.exe", "C:\\planted\\rasapi32.dll,Nothing", directory=folder)
        e2e.wait_for(lambda: os.path.exists(loaded) and not probe.alive, 10, "the planted library can be loaded")
        os.remove(loaded)
        copy = os.path.join(folder, "pelvaro.exe")
        shutil.copy(self.exe, copy)
        self.program.stop()
        self.program = self.session.run(copy, directory=folder)
        self.addCleanup(self.program.stop)
        self.main.wait("visible")
        self.assertEqual(self.main.rows("ListView1"), [[OFFICE], [HOME], [WORK]])
        self.connect()
        self.assertFalse(os.path.exists(loaded))


class DialingWithWindowManager(Desk):
    """Under a window manager, as real desktops have one."""

    managed = "Y"

    def test_connect_and_hang_up(self):
        self.connect()
        self.main.wait("foreground")
        self.wait_visible("Form1")
        self.session.screenshot("dialing-window-manager", MARGIN)
        self.main.click("Image2")
        self.wait_disconnected()
        self.wait_visible("Form1")
        self.main.wait("enabled").wait("foreground")

    def test_a_failed_dial(self):
        self.dial(password="wrong-secret")
        self.wait_failed()
        self.prompt.enter("Text2", PASSWORD)
        self.status.click("Command1")
        self.wait_connected()

    def test_minimise_and_restore(self):
        self.main.click("Label6")
        self.main.restore()
        self.main.click("Label3")
        self.wait_ended()


class Sharp(Desk):
    """At another resolution every window keeps its proportions."""

    scenario = "pace 50\ntimeout 3000\n"

    def test_the_windows_are_scaled(self):
        self.assert_laid_out("Form1")
        self.session.screenshot("dialing-%d-main" % self.dpi, MARGIN)
        self.open_prompt()
        self.assert_laid_out("Form4")
        self.sign_in(password="wrong-secret")
        self.wait_failed()
        self.assert_laid_out("frmStatus", {"Label1": FAILED, "Command1": "Retry"})
        self.session.screenshot("dialing-%d-failed" % self.dpi, MARGIN)
        self.session.keys("esc")
        self.prompt.wait("hidden")
        self.main.click("Image2")
        self.prompt.wait("foreground")
        self.prompt.enter("Text2", PASSWORD)
        self.session.keys("enter")
        self.wait_connected()
        self.session.point(5, 5)
        self.session.screenshot("dialing-%d-connected" % self.dpi, MARGIN)
        self.main.click("Image2")
        self.wait_disconnected()
        self.assert_laid_out("Form5")


class At120(Sharp):
    dpi = 120


class At144(Sharp):
    dpi = 144


class At192(Sharp):
    dpi = 192


del Sharp  # only its descendants are run


class MissingFunction(e2e.Case):
    """A system whose dial-up service lacks a function."""

    phones, exe = None, None
    stub = r"""#include <windows.h>
        #include <string.h>
        #define EXPORT __declspec(dllexport) DWORD WINAPI
        EXPORT RasEnumEntriesA(LPCSTR r, LPCSTR book, char* records, DWORD* size, DWORD* count) {
          strcpy(records + 4, "Lonely");
          *size = 264;
          *count = 1;
          return 0;
        }
        EXPORT RasGetEntryPropertiesA(LPCSTR b, LPCSTR e, LPVOID r, DWORD* s, LPVOID d, DWORD* n) { return 623; }
        EXPORT RasGetEntryDialParamsA(LPCSTR book, LPVOID params, BOOL* saved) { return 623; }
        EXPORT RasHangUpA(HANDLE connection) { return 6; }
        EXPORT RasDialA(LPVOID x, LPCSTR b, LPVOID p, DWORD t, LPVOID n, HANDLE* c) { return 600; }"""

    @classmethod
    def setUpClass(cls):
        cls.dlls = tempfile.mkdtemp(prefix="pelvaro-stub-")
        cls.addClassCleanup(shutil.rmtree, cls.dlls)
        compiled(cls.dlls, cls.stub)
        super().setUpClass()

    def test_it_is_named_once_and_the_program_goes_on(self):
        program = self.session.run(os.path.join(e2e.BUILD, "dist", "pelvaro.exe"))
        box = self.session.answer_box(e2e.OK)
        self.assertIn("RasEnumConnectionsA", box["text"])
        self.assertIn("rasapi32.dll", box["text"])
        main = self.window("Form1").wait("foreground")
        main.choose_row("ListView1", "Lonely")
        main.click("Image2")
        self.window("Form4").wait("foreground")
        with self.assertRaises(e2e.Failure):  # the poll has asked for it many times by now
            self.session.wait_box(0.5)
        main.click("Label3")
        e2e.wait_for(lambda: not program.alive, 5, "the program ends")
        self.assertEqual(program.process.returncode, 0)


class MissingLibrary(e2e.Case):
    """Without the practice line the system has a dial-up service that can do nothing."""

    phones, exe = None, None

    @classmethod
    def setUpClass(cls):
        cls.dlls = tempfile.mkdtemp(prefix="pelvaro-empty-")
        cls.addClassCleanup(shutil.rmtree, cls.dlls)
        super().setUpClass()

    def test_the_program_opens_with_an_empty_list(self):
        program = self.session.run(os.path.join(e2e.BUILD, "dist", "pelvaro.exe"))
        main = self.window("Form1").wait("foreground")
        self.assertEqual(main.rows("ListView1"), [])
        self.assertEqual(main.text("statuslbl"), DISCONNECTED)
        self.assertFalse(main.control("Image2")["enabled"])
        main.click("Label3")
        e2e.wait_for(lambda: not program.alive, 5, "the program ends")
        self.assertEqual(program.process.returncode, 0)

    def test_a_library_that_is_not_there_is_named_once(self):
        library = self.session.path("C:\\windows\\system32\\rasapi32.dll")
        os.rename(library, library + ".away")
        self.addCleanup(os.rename, library + ".away", library)
        program = self.session.run(os.path.join(e2e.BUILD, "dist", "pelvaro.exe"))
        box = self.session.answer_box(e2e.OK)
        self.assertIn("rasapi32.dll", box["text"])
        # Every other function of it is missing too, but that is the same piece of news.
        main = self.window("Form1").wait("foreground")
        self.assertEqual(main.rows("ListView1"), [])
        with self.assertRaises(e2e.Failure):
            self.session.wait_box(0.3)
        main.click("Label3")
        e2e.wait_for(lambda: not program.alive, 5, "the program ends")


if __name__ == "__main__":
    unittest.main()
