"""Pictures of every window, with usual texts and with the longest ones, at several resolutions, cropped to the window.

They go to build/screens/gallery/; with --sheet the usual ones at 96 dots an inch are put together in
docs/contact_sheet.png. Start it with scripts/gallery.sh.
"""

import os
import shutil
import subprocess
import sys
import time

import pelvaro_e2e as e2e
from desk import FAILED, phonebook
from operators_e2e import list_file

FOLDER = "C:\\Pelvaro"
SCENARIO = "pace 700\ntimeout 5000\nreceiveRate 36000\nsendRate 2900\n"
CB_SHOWDROPDOWN, LVM_SCROLL = 0x014F, 0x1014
NEAR = "You are about to reach limit, disconnect now?"

ENTRIES = ("Corvanti-Office", "Corvanti-Home", "Corvanti-Train, Bluetooth", "Corvanti-Prepaid card")
OPERATORS = list_file(
    "Lisbon,Norline Mobile,internet.norline.example,[blank],[blank],192.0.2.1,192.0.2.2,Monthly plan,268-01,postpaid,",
    "Lisbon,Norline Prepaid,wap.norline.example,wap,wap,192.0.2.1,192.0.2.2,Card,268-01,prepaid,by cable",
    "Lisbon,Telvira,data.telvira.example,guest,guest,198.51.100.7,,Monthly plan,268-03,postpaid,",
    "Lisbon,Marisol Cell,internet,[blank],[blank],203.0.113.5,,Card,268-06,prepaid,")

LETTERS = bytes(c for c in range(0x80, 0x100) if c not in (0x81, 0x8D, 0x8F, 0x90, 0x9D, 0xA0, 0xAD)).decode("cp1252")
PARTS = [LETTERS[i:i + 28] for i in range(0, len(LETTERS), 28)]
LONG_NAME = "Corvanti-" + "Office, second floor, the spare phone of the night watch " * 5
LONG_NAMES = (LONG_NAME[:255] + "X", "Corvanti-" + "W" * 247, "Corvanti-" + LETTERS, "&File & 50 %s",
              "jgpqy \u00c5\u00dc\u00c7", *("Corvanti-%d" % i for i in range(6, 12)))
LONG_DEVICE = ("Mobile Phone USB Modem with a Very Long Name of the Maker and of the Model " * 2)[:128]
WORDS = ("Place", "Operator", "APN", "User", "Password", "Primary", "Secondary", "Plan", "Code", "Type", "Notes")
LONG_HEADINGS = ",".join("%s: a heading %s" % (word, LETTERS[60:90]) for word in WORDS)
LONG_RECORDS = [",".join([PARTS[0], "%s %d" % (PARTS[i % 4], i), "internet.%s.example" % LETTERS[70:],
                          "a long name of a user %d" % i, "[blank]" + LETTERS[:20], "255.255.255.255",
                          "255.255.255.254", *PARTS[1:4], LETTERS]) for i in range(14)]
LONG_OPERATORS = list_file(LONG_HEADINGS, *LONG_RECORDS).split(b"\r\n", 1)[1]  # its own headings are the first line
LONG_ERROR = "The remote computer did not respond in the time that was allowed for it. " * 3
FIGURES = {"Label1": "Total bytes received: -2147483648 KB", "Label2": "Total bytes transmitted: 2147483647 KB",
           "Label4": "Download rate: -2,147,483,648 KB/sec.", "Label5": "Upload rate: 2,147,483,647 KB/sec.",
           "Label7": "size remained: -2147483648 KB", "Label10": "-2147483648 KB"}


class Gallery:
    def __init__(self, dpi):
        self.session, self.dpi, self.program = e2e.Session("gallery-%d" % dpi, dpi=dpi), dpi, None
        self.files = {}

    # The pictures.
    def shoot(self, name, *windows):
        """A picture of these windows, given as their rectangles or as windows."""
        time.sleep(0.3)  # what a change leaves to be drawn
        rects = [w if isinstance(w, list) else w.info()["rect"] for w in windows]
        left, top = (min(r[i] for r in rects) for i in (0, 1))
        right, bottom = (max(r[i] for r in rects) for i in (2, 3))
        file = os.path.join(e2e.SCREENS, "gallery", "%s-%d.png" % (name, self.dpi))
        part = "%dx%d+%d+%d" % (right - left, bottom - top, left, top)
        subprocess.run(["import", "-window", "root", "-crop", part, "+repage", file], check=True,
                       env=self.session.environment, timeout=20)
        self.files[name] = file
        print(os.path.relpath(file), flush=True)

    def rest(self):
        self.session.point(5, 5)

    def popups(self, kind):
        return [w["rect"] for w in self.session.windows(kind) if w["visible"]]

    def dropped(self, name, window, control):
        window._call("post", control, CB_SHOWDROPDOWN, 1)
        shown = lambda: self.popups("ComboLBox")
        e2e.wait_for(shown, 5, "the list drops down")
        self.shoot(name, window, *shown())
        window._call("post", control, CB_SHOWDROPDOWN, 0)
        e2e.wait_for(lambda: not shown(), 5, "the list is closed")

    def box(self, name, button, text=None):
        self.shoot(name, self.session.wait_box(30)["window"]["rect"])
        self.session.answer_box(button, text)

    # The program.
    def begin(self, entries, operators, device=None):
        if self.program:
            self.program.stop()
        practice = self.session.path("C:\\practice")
        os.makedirs(practice, exist_ok=True)
        book = phonebook(*entries)
        if device:
            book = book.replace("Nokia 6230 USB Modem", device)
        for name, text in (("scenario.txt", SCENARIO), ("phonebook.txt", book)):
            with open(os.path.join(practice, name), "w", newline="") as file:
                file.write(text)
        with open(self.session.path(FOLDER + "\\Default.DAT"), "wb") as file:
            file.write(operators)
        self.rest()
        self.program = self.session.run(os.path.join(self.session.path(FOLDER), "pelvaro.exe"))
        names = ("Form1", "Form2", "Form3", "Form4", "Form5", "Form6", "frmStatus", "frmEdit", "frmDriver")
        (self.main, self.editor, self.picker, self.prompt, self.splash, self.limits, self.status, self.boxes,
         self.drivers) = map(self.session.window, names)
        self.main.wait("foreground", 30)
        self.main.choose_row("ListView1", 0)
        self.rest()

    def open(self, window, opener, control):
        opener.click(control)
        window.wait("foreground")
        self.rest()

    def close(self, window):
        self.session.keys("esc")
        e2e.wait_for(lambda: not (window.info() or {"visible": False})["visible"], 5, window.name + " is closed")

    def sign_in(self, password):
        self.main.choose_row("ListView1", 0)
        self.open(self.prompt, self.main, "Image2")
        self.prompt.set_text("Text1", "guest")
        self.prompt.set_text("Text2", password)
        self.session.keys("end")

    def wait_line(self, text):
        self.main.wait_text("Image2", text, 15)
        e2e.wait_for(lambda: not (self.splash.info() or {"visible": False})["visible"], 5, "the splash is gone")
        self.main.wait("foreground")

    # The windows.
    def usual(self):
        self.begin(ENTRIES, OPERATORS)
        self.shoot("form1-disconnected", self.main)
        self.main.hover("Image2")
        self.shoot("form1-hover", self.main)
        tips = lambda: self.popups("tooltips_class32")
        e2e.wait_for(tips, 5, "the tooltip")
        self.shoot("tooltip", self.main, *tips())
        self.session.driver.call("press")
        self.shoot("form1-pressed", self.main)
        self.rest()
        self.session.driver.call("release")
        self.main.hover("Label3")
        self.shoot("form1-close-hover", self.main)
        self.rest()
        self.session.keys("shift+tab")
        self.shoot("form1-focus", self.main)
        self.main.choose_row("ListView1", 1, "right")
        self.session.wait_menu()
        self.shoot("menu", self.main, *self.popups("#32768"))
        self.session.close_menu()
        self.main.choose_row("ListView1", 0)
        self.forms()
        self.limit_and_dial()
        self.shoot_splash()

    def forms(self):
        self.open(self.editor, self.main, "Image1")
        self.shoot("form2-empty", self.editor)
        self.editor.enter("Text1", "Office")
        self.editor.set_text("Text2", "*99#")
        self.editor.set_text("Text3", "internet.norline.example")
        self.rest()
        self.shoot("form2-editor", self.editor)
        self.dropped("form2-devices", self.editor, "Combo1")
        self.editor.click("Option2")
        self.editor.enter("Text4", "192.0.2.53")
        self.editor.pick("Combo3", "Bluetooth")
        self.rest()
        self.shoot("form2-bluetooth", self.editor)
        self.editor.pick("Combo3", "USB")
        self.open(self.picker, self.editor, "Command2")
        self.picker.choose_row("ListView2", 0)
        self.rest()
        self.shoot("form3-operators", self.picker)
        self.dropped("form3-places", self.picker, "Combo1")
        self.open(self.boxes, self.picker, "Command3")
        self.shoot("frmedit", self.boxes)
        self.close(self.boxes)
        self.close(self.picker)
        self.open(self.drivers, self.editor, "Image2")
        self.shoot("frmdriver", self.drivers)
        self.drivers.click("Command1")
        self.rest()
        self.box("message-box", e2e.OK)
        self.drivers.pick("Combo1", "Nokia")
        e2e.wait_for(lambda: "6100" in self.drivers.combo("Combo2")["items"], 5, "the models")
        self.drivers.pick("Combo2", "6100")
        self.drivers.wait_text("driverlbl", "Yes")
        self.shoot("frmdriver-chosen", self.drivers)
        self.dropped("frmdriver-models", self.drivers, "Combo2")
        self.close(self.drivers)
        self.close(self.editor)

    def limit_and_dial(self):
        self.sign_in("practice")
        self.shoot("form4-credentials", self.prompt)
        self.session.keys("enter")
        self.status.wait_text("Label1", "Checking username and password...", 15)
        self.shoot("frmstatus-progress", self.status)
        self.wait_line("Hang Up")
        e2e.wait_for(lambda: self.main.text("Label4") != "Download rate: 0 KB/sec.", 10, "the figures move")
        self.shoot("form1-connected", self.main)
        self.open(self.limits, self.main, "Image3")
        self.limits.enter("Text1", "90")
        self.rest()
        self.shoot("form6-limitation", self.limits)
        self.limits.click("Option2")
        self.limits.enter("Text2", "300")
        self.rest()
        self.shoot("form6-size", self.limits)
        self.session.keys("enter")
        self.limits.wait("gone")
        self.box("message-question", e2e.NO, NEAR)
        self.shoot("form1-limits", self.main)
        self.session.answer_box(e2e.NO, limit=20)
        self.wait_line("Connect")
        self.sign_in("wrong")
        self.session.keys("enter")
        self.status.wait_text("Label1", FAILED, 15)
        self.status.wait_text("Command1", "Retry")
        self.shoot("frmstatus-failed", self.status)
        self.close(self.status)

    def shoot_splash(self):
        """The one of the editor: it stays as long as a phone is waited for."""
        self.open(self.editor, self.main, "Image1")
        self.editor.click("Check1")
        e2e.wait_for(lambda: len(self.editor.combo("Combo1")["items"]) == 1, 15, "one modem stays")
        self.editor.enter("Text1", "Garden")
        self.editor.enter("Text2", "*99#")
        self.editor.enter("Text3", "internet")
        self.editor.click("Command1")
        self.editor.wait("hidden")
        for line in ("unplug COM5", "plug COM5 error"):
            self.session.tell_phones(line)
        e2e.wait_for(lambda: self.session.phones.log().count("COM5 plugged") > 1, 5, "the other phone")
        self.main.click("Image1")
        self.splash.wait("visible", 20)
        self.rest()
        time.sleep(0.5)
        self.shoot("form5-splash", self.splash)

    def longest(self):
        self.begin(LONG_NAMES, LONG_OPERATORS, LONG_DEVICE)
        self.open(self.limits, self.main, "Image3")
        self.limits.click("Option2")
        self.limits.enter("Text2", "32767")
        self.session.keys("enter")
        self.limits.wait("gone")
        for control, text in FIGURES.items():
            self.main.set_text(control, text)
        self.rest()
        self.shoot("long-form1", self.main)
        self.sign_in("W" * 256)
        self.prompt.set_text("Text1", LETTERS * 2)
        self.shoot("long-form4", self.prompt)
        self.prompt.set_text("Text1", "guest")
        self.session.keys("enter")
        self.status.wait_text("Label1", FAILED, 15)
        self.status.wait_text("Command1", "Retry")
        for name, text in (("long-frmstatus", LONG_ERROR), ("long-frmstatus-two", LONG_ERROR[:80])):
            self.status.set_text("Label1", text)
            self.shoot(name, self.status)
        self.close(self.status)
        self.long_forms()

    def long_forms(self):
        self.main.choose_row("ListView1", 0, "right")
        self.session.choose_menu(1)
        self.editor.wait("foreground")
        self.editor.wait_text("Command1", "Modify")
        self.editor.set_text("Text2", "*99***1#" * 16)
        self.editor.set_text("Text3", LETTERS)
        self.editor.click("Option2")
        for box in ("Text4", "Text5"):
            self.editor.set_text(box, "255.255.255.255")
        self.rest()
        self.shoot("long-form2", self.editor)
        self.dropped("long-form2-devices", self.editor, "Combo1")
        self.open(self.picker, self.editor, "Command2")
        self.picker.choose_row("ListView2", 0)
        self.rest()
        self.shoot("long-form3", self.picker)
        self.dropped("long-form3-places", self.picker, "Combo1")
        self.picker._call("send", "ListView2", LVM_SCROLL, 5000, 5000)
        self.shoot("long-form3-end", self.picker)
        self.open(self.boxes, self.picker, "Command3")
        self.shoot("long-frmedit", self.boxes)
        self.close(self.boxes)
        self.close(self.picker)
        self.open(self.drivers, self.editor, "Image2")
        self.drivers.pick("Combo1", "Sony Ericsson")
        time.sleep(0.3)
        self.dropped("long-frmdriver-models", self.drivers, "Combo2")
        self.close(self.drivers)
        self.close(self.editor)

    def go(self, exe):
        shutil.copytree(os.path.dirname(exe), self.session.path(FOLDER))
        self.usual()
        self.session.tell_phones("unplug COM5")
        self.session.tell_phones("plug COM5 nokia")
        self.longest()


ROWS = (("form1-disconnected", "form1-limits", "form2-editor"),
        ("form3-operators", "frmdriver-chosen", "form6-limitation"),
        ("frmedit", "form4-credentials", "form5-splash"),
        ("frmstatus-progress", "frmstatus-failed", "message-question"))
GROUND = "#8a99b5"


def sheet(files, out):
    """All windows side by side on a quiet ground, in few colours: a drawn window has no more."""
    command = ["convert", "-background", GROUND]
    for row in ROWS:
        command += ["("]
        for name in row:
            command += ["(", files[name], "-bordercolor", GROUND, "-border", "12", ")"]
        command += ["+append", ")"]
    command += ["-append", "-bordercolor", GROUND, "-border", "12", "-strip", "+dither", "-colors", "200",
                "PNG8:" + out]
    subprocess.run(command, check=True, timeout=60)
    print("%s, %d KB" % (os.path.relpath(out), os.path.getsize(out) // 1024))


def main(words):
    resolutions = [int(word) for word in words if word.isdigit()] or [96, 144, 192]
    os.makedirs(os.path.join(e2e.SCREENS, "gallery"), exist_ok=True)
    exe = os.path.join(e2e.BUILD, "dist", "pelvaro.exe")
    failed = 0
    for dpi in resolutions:
        gallery = Gallery(dpi)
        try:
            gallery.session.start()
            gallery.session.start_phones()
            gallery.go(exe)
            if dpi == 96 and "--sheet" in words:
                sheet(gallery.files, os.path.join(e2e.ROOT, "docs", "contact_sheet.png"))
        except (e2e.Failure, OSError, subprocess.SubprocessError) as failure:
            failed += 1
            print("at %d dots an inch: %s" % (dpi, failure), flush=True)
            if gallery.session.display:
                print("the screen then: " + os.path.relpath(gallery.session.screenshot("failed/gallery-%d" % dpi)))
        finally:
            gallery.session.stop()
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
