"""The guided tour: the whole typical use before the reader's eyes, from an empty phonebook to an empty one again, one
plain line and one picture a step. With --film it also makes docs/tour.gif.

Ends with 0 only when every step was seen. Start it with scripts/tour.sh.
"""

import glob
import os
import shutil
import subprocess
import sys
import time

import pelvaro_e2e as e2e

USER, PASSWORD = "guest", "practice"
CONNECTED, DISCONNECTED, FAILED = "Status: Connected.", "Status: Disconnected.", "Fail to connect"
PROGRESS = (("opening-port", "Opening port..."), ("port-opened", "Port opened..."),
            ("connecting-device", "Connecting device..."), ("device-connected", "Device connected..."),
            ("checking-password", "Checking username and password..."),
            ("logging-on", "Logging on the network..."))
MARGIN = 24  # of desktop around the windows in a picture
# Slow enough for a picture of every text; 40 KB a second are received.
SCENARIO = "pace 700\ntimeout 5000\nreceiveRate 40960\nsendRate 8192\n"
SIZE = "500"  # KB, the limit that is reached
NEAR, PASSED = "You are about to reach limit, disconnect now?", "You have reached size limit. Reconnect?"

NOKIA, SAMSUNG, SIEMENS = "Nokia 6230 USB Modem", "Samsung D500 USB Modem", "Siemens S65 USB Modem"
PHONEBOOK = "[devices]\nmodem = COM5 %s\nmodem = COM7 %s\n\n[end]\n" % (NOKIA, SAMSUNG)
COUNTRY = "Australia"
GARDEN, BALCONY = "Corvanti-Garden", "Corvanti-Balcony"

UNPLUG = "Please remove cable before installing driver."
RESTART = ("Restart is needed to take effect. Are you sure to restart now? Please manually add the modem after "
           "restart.")

# Of the film: the steps that it shows, for how many seconds, and the words below the picture.
FRAMES = {
    "main-window": (1.8, "Nothing is there yet: press Add"),
    "editor": (1.6, "A new connection. Which operator?"),
    "operators": (2.2, "Choose the country and the operator"),
    "operator-taken": (1.8, "Number and access point are filled in"),
    "modems": (1.5, "Two modems are known to the system"),
    "validated": (1.3, "Validate Device: the phones are asked"),
    "phone-detected": (1.8, "The one that answers is left"),
    "editor-filled": (1.6, "A name, and Add Now"),
    "entry-chosen": (1.6, "The connection is in the list: press Connect"),
    "prompt": (1.8, "User name and password"),
    "opening-port": (0.7, "It dials"),
    "device-connected": (0.7, "It dials"),
    "checking-password": (0.8, "It dials"),
    "connected": (1.5, "Connected"),
    "traffic": (1.8, "The traffic and its rates"),
    "size-limit": (1.8, "Limits: stop after so many kilobytes"),
    "limit-set": (1.6, "What is used, and the limit"),
    "limit-near": (1.8, "Near the limit it asks"),
    "limit-passed": (2.0, "Past it, it hangs up"),
    "time-limit": (1.8, "Another limit, and OK to go online again"),
    "reconnected": (1.8, "Connected again: press Hang Up"),
    "hung-up": (1.5, "Disconnected"),
    "phone-chosen": (1.8, "A driver for the cable of a phone"),
    "restart-offered": (2.0, "It is installed, a restart is offered"),
    "menu": (1.3, "The menu of a connection"),
    "modify": (1.8, "Edit: another name, another name server"),
    "renamed": (1.5, "Renamed"),
    "deleted": (2.0, "Delete, and the phonebook is empty again"),
}


class Tour:
    def __init__(self, session, film=None):
        self.session, self.film, self.number, self.program = session, film, 0, None
        names = ("Form1", "Form2", "Form3", "Form4", "Form6", "frmStatus", "frmDriver")
        (self.main, self.editor, self.picker, self.prompt, self.limits, self.status,
         self.drivers) = map(session.window, names)

    # One line and one picture.
    def seen(self, name, did, saw):
        self.number += 1
        file = "%02d-%s" % (self.number, name)
        self.session.screenshot(file, MARGIN)
        if self.film:
            self.film.take(name)
        print("%2d  %-42s %-62s %s.png" % (self.number, did, saw, file), flush=True)

    def expect(self, what, seen, wanted):
        if seen != wanted:
            raise e2e.Failure("%s: %r instead of %r" % (what, seen, wanted))

    def wait_line(self, state):
        self.main.wait_text("statuslbl", CONNECTED if state else DISCONNECTED, 15)
        self.main.wait_text("Image2", "Hang Up" if state else "Connect")

    def wait_failed(self):
        self.status.wait_text("Label1", FAILED, 15)
        self.status.wait_text("Command1", "Retry")

    def phones_do(self, line, answer):
        before = self.session.phones.log().count(answer)
        self.session.tell_phones(line)
        e2e.wait_for(lambda: self.session.phones.log().count(answer) > before, 5, "the phones say " + answer)

    def wait_modems(self, *modems):
        listed = lambda: self.editor.combo("Combo1")["items"]
        e2e.wait_for(lambda: listed() == list(modems), 20, lambda: "the modems are %r" % listed())

    def modem_list(self, name, did, saw):
        """A picture with the list of the modems open."""
        open_lists = lambda: [w for w in self.session.windows("ComboLBox") if w["visible"]]
        self.editor.click("Combo1")
        e2e.wait_for(open_lists, 5, "the list of the modems opens")
        self.seen(name, did, saw)
        self.editor.click("Combo1")
        e2e.wait_for(lambda: not open_lists(), 5, "the list of the modems closes")

    def call(self, *command):
        return self.session.driver.call(*command)

    def rest_pointer(self):
        self.session.point(5, 5)
        time.sleep(0.5)  # until what it has left is drawn at rest again

    # The stations.
    def main_window(self):
        start = time.monotonic()
        self.program = self.session.run(os.path.join(e2e.BUILD, "dist", "pelvaro.exe"))
        self.main.wait("visible", 30)
        took = time.monotonic() - start
        self.main.wait("foreground")
        self.expect("the entries", self.main.rows("ListView1"), [])
        self.expect("the status", self.main.text("statuslbl"), DISCONNECTED)
        self.expect("whether Connect can be pressed", self.main.control("Image2")["enabled"], False)
        self.seen("main-window", "start the program", "a window after %.1f s, no connection yet" % took)

    def add_connection(self):
        self.main.click("Image1")
        self.editor.wait("foreground")
        self.wait_modems(NOKIA, SAMSUNG)
        self.rest_pointer()
        self.seen("editor", "click Add", "the editor")
        self.editor.click("Command2")
        self.picker.wait("foreground")
        self.picker.choose("Combo1", COUNTRY)
        e2e.wait_for(lambda: self.picker.rows("ListView2"), 5, "the operators")
        self.picker.choose_row("ListView2", 0)
        self.rest_pointer()
        self.seen("operators", "click List of Operators, choose " + COUNTRY, "the operators of the country")
        self.session.keys("enter")
        self.picker.wait("gone")
        e2e.wait_for(lambda: self.editor.text("Text2") == "*99#" and self.editor.text("Text3"), 5, "the details")
        self.rest_pointer()
        self.seen("operator-taken", "press Enter on an operator", "its number and access point are filled in")
        self.modem_list("modems", "click the devices", "both modems of the system are listed")
        self.editor.click("Check1")
        self.wait_modems(NOKIA)
        self.rest_pointer()
        self.seen("validated", "tick Validate Device", "the phones are asked who they are")
        self.modem_list("phone-detected", "click the devices", "only the modem whose phone answers is left")
        self.editor.enter("Text1", "Garden")
        self.editor.wait_control("Command1", "enabled")
        self.rest_pointer()
        self.seen("editor-filled", "type a name", "the connection can be added")
        self.editor.click("Command1")
        self.editor.wait("hidden")
        self.main.wait_rows("ListView1", [[GARDEN]].__eq__)
        self.rest_pointer()
        self.seen("added", "click Add Now", GARDEN + " is in the list")

    def choose(self):
        self.main.choose_row("ListView1", GARDEN)
        self.main.wait_control("Image2", "enabled")
        self.seen("entry-chosen", "click the connection", "the row is marked, Connect can be pressed")

    def open_prompt(self, password, name, saw):
        self.main.click("Image2")
        self.prompt.wait("foreground")
        self.prompt.enter("Text1", USER)
        self.rest_pointer()
        self.session.keys("tab", "home", "shift+end", "delete")
        self.call("type", password)
        self.prompt.wait_text("Text2", password)
        self.seen(name, "click Connect, type name and password", saw)

    def progress(self):
        self.session.keys("enter")
        for name, text in PROGRESS:
            self.status.wait_text("Label1", text, 15)
            self.seen(name, "wait", "\"%s\"" % text)
        self.wait_line(True)
        self.status.wait("hidden")
        self.prompt.wait("hidden")
        self.seen("connected", "wait", "\"%s\", the dialogs are gone" % CONNECTED)

    def traffic_and_limit(self):
        shown = lambda: [self.main.text(label) for label in ("Label1", "Label2", "Label4", "Label5")]
        idle = shown()
        e2e.wait_for(lambda: all(a != b for a, b in zip(shown()[:3], idle)), 10, "the figures move")
        self.rest_pointer()
        self.seen("traffic", "wait a few seconds", "received, sent and both rates move")
        self.main.click("Image3")
        self.limits.wait("foreground")
        self.seen("limits", "click Limits", "the dialog, on the time limit")
        self.limits.click("Option2")
        self.limits.enter("Text2", SIZE)
        self.rest_pointer()
        self.seen("size-limit", "choose Size limit, type " + SIZE, "its box is open, the other one is closed")
        self.session.keys("enter")
        self.limits.wait("gone")
        self.main.wait_text("Label12", SIZE + " KB")
        e2e.wait_for(lambda: self.main.text("Label10").endswith(" KB"), 5, "the used size")
        self.seen("limit-set", "press Enter", "the limit and what is used of it stand beside the figures")
        self.session.wait_box(30)
        self.seen("limit-near", "wait", "past 70 %%: \"%s\"" % NEAR)
        self.session.answer_box(e2e.NO, NEAR)
        self.session.wait_box(30)
        self.wait_line(False)
        self.seen("limit-passed", "answer No, wait", "\"%s\" \"%s\"" % (DISCONNECTED, PASSED))

    def reconnect(self):
        self.session.answer_box(e2e.YES, PASSED)
        self.prompt.wait("foreground")
        self.expect("the user name", self.prompt.text("Text1"), USER)
        self.seen("prompt-filled", "answer Yes", "the prompt is filled: Enter would go online")
        self.main.click("Image3")
        self.limits.wait("foreground")
        self.limits.enter("Text1", "90")
        self.session.keys("enter")
        self.limits.wait("gone")
        self.main.wait_text("Label12", "01:30:00")
        self.call("activate", "Pelvaro.Form4")  # without a window manager the main window has come before it
        self.prompt.wait("foreground")
        self.rest_pointer()
        self.seen("time-limit", "click Limits, type 90, press Enter", "a time limit of 01:30:00 in place of the size")
        self.session.keys("enter")
        self.wait_line(True)
        e2e.wait_for(lambda: self.main.text("Label10").startswith("00:00:"), 5, "the time used")
        self.seen("reconnected", "press Enter in the prompt, wait", "\"%s\", and the time counts" % CONNECTED)

    def hang_up(self):
        self.main.click("Image2")
        self.wait_line(False)
        self.session.window("Form5").wait("hidden")
        self.rest_pointer()
        self.seen("hung-up", "click Hang Up", "\"%s\"" % DISCONNECTED)

    def wrong_password(self):
        self.open_prompt("wrong-secret", "wrong-password", "the password is masked")
        self.session.keys("enter")
        self.wait_failed()
        self.seen("failed", "press Enter, wait", "\"%s\", the button says Retry" % FAILED)
        self.prompt.enter("Text2", PASSWORD)
        self.seen("password-mended", "type the right password over it", "the box takes it while Retry waits")
        self.status.click("Command1")
        self.wait_line(True)
        self.seen("connected-by-retry", "click Retry, wait", "\"%s\"" % CONNECTED)

    def cable_pulled(self):
        self.phones_do("unplug COM5", "COM5 unplugged")
        self.wait_line(False)
        self.seen("cable-pulled", "pull the phone's cable", "\"%s\"" % DISCONNECTED)
        self.phones_do("plug COM5 nokia", "COM5 plugged")

    def cable_pulled_while_dialing(self):
        self.open_prompt(PASSWORD, "prompt-again", "the cable is back, the prompt is open again")
        self.session.keys("enter")
        # The status window may still hold the last dial's text: so the wait begins with the first one of this.
        self.status.wait_text("Label1", "Opening port...", 15)
        self.status.wait_text("Label1", "Device connected...", 15)
        self.phones_do("unplug COM5", "COM5 unplugged")
        self.wait_failed()
        self.seen("cable-pulled-while-dialing", "pull the cable in mid-dial", "\"%s\"" % FAILED)
        self.phones_do("plug COM5 nokia", "COM5 plugged")
        self.session.keys("esc")
        self.status.wait("hidden")
        self.prompt.wait("hidden")
        self.seen("closed-with-escape", "press Esc", "the dialogs are gone, nothing is dialed")

    def install_driver(self):
        self.main.click("Image1")  # the editor still has its tick, so it asks the phones before it opens
        self.editor.wait("foreground", 20)
        self.wait_modems(NOKIA)
        self.editor.click("Check1")
        self.wait_modems(NOKIA, SAMSUNG)
        self.editor.click("Image2")
        self.drivers.wait("foreground")
        self.expect("whether there is a driver", self.drivers.text("driverlbl"), "No")
        self.drivers.drag("captionLabel", 0, -220)
        self.rest_pointer()
        self.seen("drivers", "click Add, click Driver, drag it up", "the driver window; no phone is chosen yet")
        self.drivers.choose("Combo1", "Nokia")
        self.drivers.choose("Combo2", "6100")
        self.drivers.wait_text("driverlbl", "Yes")
        self.rest_pointer()
        self.seen("phone-chosen", "choose Nokia, 6100", "there is a driver")
        self.drivers.click("Command1")
        self.session.answer_box(e2e.OK, UNPLUG)
        self.session.wait_box()
        journal = self.session.path("C:\\practice\\programs.txt")
        e2e.wait_for(lambda: os.path.exists(journal) and "ended" in open(journal).read(), 10, "the cable's installer")
        copied = self.session.path("C:\\windows\\system32\\drivers\\nk_cable.sys")
        self.expect("whether the driver is copied", os.path.exists(copied), True)
        self.rest_pointer()
        self.seen("restart-offered", "click Install, pull the cable, OK", "the files are copied, a restart is offered")
        self.session.answer_box(e2e.NO, RESTART)
        self.drivers.wait("gone")
        self.wait_modems(NOKIA, SAMSUNG, SIEMENS)
        e2e.wait_for(lambda: "MODEM.CPL | 0" in open(journal).read(), 10, "the modem applet")
        self.rest_pointer()
        self.seen("driver-installed", "answer No", "the editor again, with one modem more to choose")
        self.session.keys("esc")
        self.editor.wait("gone")

    def rename(self):
        self.main.choose_row("ListView1", GARDEN, "right")
        self.session.wait_menu()
        self.seen("menu", "click it with the right button", "a menu opens")
        self.session.choose_menu(1)
        self.editor.wait("foreground")
        self.editor.wait_text("Command1", "Modify")
        self.editor.enter("Text1", "Balcony")
        self.editor.click("Option2")
        self.editor.enter("Text4", "192.0.2.53")
        self.rest_pointer()
        self.seen("modify", "choose Edit, rename, type an address", "the address boxes are open")
        self.editor.click("Command1")
        self.editor.wait("hidden")
        self.main.wait_rows("ListView1", [[BALCONY]].__eq__)
        self.rest_pointer()
        self.seen("renamed", "click Modify", "the new name is there, the old one gone")

    def delete(self):
        self.main.choose_row("ListView1", BALCONY, "right")
        self.session.choose_menu(2)
        self.main.wait_rows("ListView1", [].__eq__)
        with open(self.session.path("C:\\practice\\phonebook.txt")) as file:
            self.expect("whether the phonebook has an entry", "[entry " in file.read(), False)
        self.rest_pointer()
        self.seen("deleted", "choose Delete in its menu", "the list and the phonebook are empty again")

    def minimise_and_close(self):
        self.main.click("Label6")
        self.main.wait("minimised")
        self.rest_pointer()
        self.seen("minimised", "click the minimise mark", "the window is out of the way")
        self.main.restore()
        self.rest_pointer()
        self.seen("restored", "bring it back", "the window is there again")
        self.main.click("Label3")
        e2e.wait_for(lambda: not self.program.alive, 5, "the program ends")
        self.expect("the exit code", self.program.process.returncode, 0)
        self.seen("closed", "click the close mark", "the program has ended")

    def go(self):
        self.main_window()
        self.add_connection()
        self.choose()
        self.open_prompt(PASSWORD, "prompt", "the prompt, the password is masked")
        self.progress()
        self.traffic_and_limit()
        self.reconnect()
        self.hang_up()
        self.wrong_password()
        self.cable_pulled()
        self.cable_pulled_while_dialing()
        self.install_driver()
        self.rename()
        self.delete()
        self.minimise_and_close()


class Film:
    """One frame of the same part of the screen for each step named in FRAMES, with what is done below it."""

    LEFT, TOP, WIDTH, HEIGHT, STRIP = 316, 262, 648, 500, 36
    GROUND, STRIP_GROUND, INK = "#8a99b5", "#2f3f66", "#ffffff"

    def __init__(self, session):
        self.session, self.frames = session, []
        self.folder = os.path.join(e2e.SCREENS, "film")
        shutil.rmtree(self.folder, ignore_errors=True)
        os.makedirs(self.folder)

    def take(self, name):
        if name not in FRAMES:
            return
        file = os.path.join(self.folder, "%02d-%s.png" % (len(self.frames) + 1, name))
        part = "%dx%d+%d+%d" % (self.WIDTH, self.HEIGHT, self.LEFT, self.TOP)
        subprocess.run(["import", "-window", "root", "-crop", part, "+repage", file], check=True,
                       env=self.session.environment, timeout=20)
        self.frames.append((name, file))

    def make(self, out):
        """The desktop is black: each frame gets a quieter ground, poured in from its corner."""
        # The font that the program is drawn with here.
        fonts = os.path.join(os.path.dirname(self.session.environment["WINELOADER"]), "../../share/wine/fonts")
        font = os.path.join(fonts, "tahoma.ttf")
        words = ["-font", font] if os.path.exists(font) else []
        words += ["-pointsize", "16", "-fill", self.INK, "-annotate", "+0+9"]
        command = ["convert", "-loop", "0"]
        for name, file in self.frames:
            seconds, text = FRAMES[name]
            command += ["(", file, "-fill", self.GROUND, "-draw", "color 0,0 floodfill",
                        "-background", self.STRIP_GROUND, "-gravity", "south", "-splice", "0x%d" % self.STRIP,
                        *words, text, "-set", "delay", str(int(100 * seconds)), ")"]
        command += ["+dither", "-colors", "96", "-layers", "optimize", out]
        subprocess.run(command, check=True, timeout=120)
        print("The film: %s, %d frames, %d KB" % (os.path.relpath(out), len(self.frames), os.path.getsize(out) // 1024))


def main(words):
    for old in glob.glob(os.path.join(e2e.SCREENS, "[0-9][0-9]-*.png")):
        os.remove(old)
    folder = os.path.relpath(e2e.SCREENS)
    print("A practice line with two simulated phones; the pictures go to %s." % folder, flush=True)
    session = e2e.Session("tour")
    tour = None
    try:
        session.start()
        folder = session.path("C:\\practice")
        os.makedirs(folder)
        for name, text in (("scenario.txt", SCENARIO), ("phonebook.txt", PHONEBOOK)):
            with open(os.path.join(folder, name), "w") as file:
                file.write(text)
        session.start_phones()
        tour = Tour(session, Film(session) if "--film" in words else None)
        tour.go()
        if tour.film:
            tour.film.make(os.path.join(e2e.ROOT, "docs", "tour.gif"))
    except (e2e.Failure, OSError, subprocess.SubprocessError) as failure:
        print("%2d  NOT SEEN: %s" % ((tour.number if tour else 0) + 1, failure), flush=True)
        if session.display:
            print("    the screen then: " + os.path.relpath(session.screenshot("failed/tour")))
        return 1
    finally:
        session.stop()
    print("All %d steps were seen." % tour.number)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
