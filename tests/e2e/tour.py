"""The guided tour: goes online and off again before the reader's eyes, one plain line and one picture a step.

Ends with 0 only when every step was seen. Start it with scripts/tour.sh.
"""

import glob
import os
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
NEAR, PASSED = "You are about to reach limit, disconnect now?", "You have reached size limit. Reconnect?"

UNPLUG = "Please remove cable before installing driver."
RESTART = ("Restart is needed to take effect. Are you sure to restart now? Please manually add the modem after "
           "restart.")
MODEMS = ["Nokia 6230 USB Modem", "Samsung D500 USB Modem", "Siemens S65 USB Modem"]


class Tour:
    def __init__(self, session):
        self.session, self.number, self.program = session, 0, None
        self.main = self.prompt = self.status = None

    # One line and one picture.
    def seen(self, name, did, saw):
        self.number += 1
        file = "%02d-%s" % (self.number, name)
        self.session.screenshot(file, MARGIN)
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
        rows = self.main.rows("ListView1")
        self.expect("the entries", rows, [["Corvanti-Office"], ["Corvanti-Home"], ["Work"]])
        self.expect("the status", self.main.text("statuslbl"), DISCONNECTED)
        self.expect("whether Connect can be pressed", self.main.control("Image2")["enabled"], False)
        saw = "a window after %.1f s, %d entries, nothing chosen" % (took, len(rows))
        self.seen("main-window", "start the program", saw)

    def choose(self):
        self.main.choose_row("ListView1", "Corvanti-Office")
        self.main.wait_control("Image2", "enabled")
        self.seen("entry-chosen", "click the entry Corvanti-Office", "the row is marked, Connect can be pressed")

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
        limits = self.session.window("Form6").wait("foreground")
        self.seen("limits", "click Limits", "the dialog, on the time limit")
        limits.click("Option2")
        limits.enter("Text2", "600")
        self.rest_pointer()
        self.seen("size-limit", "choose Size limit, type 600", "its box is open, the other one is closed")
        self.session.keys("enter")
        limits.wait("gone")
        self.main.wait_text("Label12", "600 KB")
        e2e.wait_for(lambda: self.main.text("Label10").endswith(" KB"), 5, "the used size")
        self.seen("limit-set", "press Enter", "the limit and what is used of it stand beside the figures")
        self.session.wait_box(30)
        self.seen("limit-near", "wait", "past 70 %%: \"%s\"" % NEAR)
        self.session.answer_box(e2e.NO, NEAR)
        self.session.wait_box(30)
        self.wait_line(False)
        self.seen("limit-passed", "answer No, wait", "\"%s\" \"%s\"" % (DISCONNECTED, PASSED))
        self.session.answer_box(e2e.YES, PASSED)
        self.prompt.wait("foreground")
        self.seen("reconnect", "answer Yes", "the prompt is filled: Enter would go online")
        self.session.keys("esc")
        self.prompt.wait("gone")
        self.main.click("Image3")
        limits.wait("foreground")
        limits.enter("Text1", "90")
        self.session.keys("enter")
        self.main.wait_text("Label12", "01:30:00")
        self.rest_pointer()
        self.seen("time-limit", "click Limits, type 90, press Enter", "a time limit of 01:30:00 in place of the size")

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
        self.main.click("Image1")
        editor = self.session.window("Form2").wait("foreground")
        editor.click("Image2")
        drivers = self.session.window("frmDriver").wait("foreground")
        self.expect("whether there is a driver", drivers.text("driverlbl"), "No")
        self.rest_pointer()
        self.seen("drivers", "click Add, click Driver", "the driver window; no phone is chosen yet")
        drivers.choose("Combo1", "Nokia")
        drivers.choose("Combo2", "6100")
        drivers.wait_text("driverlbl", "Yes")
        self.rest_pointer()
        self.seen("phone-chosen", "choose Nokia, 6100", "there is a driver")
        drivers.click("Command1")
        self.session.answer_box(e2e.OK, UNPLUG)
        self.session.wait_box()
        journal = self.session.path("C:\\practice\\programs.txt")
        e2e.wait_for(lambda: os.path.exists(journal) and "ended" in open(journal).read(), 10, "the cable's installer")
        copied = self.session.path("C:\\windows\\system32\\drivers\\nk_cable.sys")
        self.expect("whether the driver is copied", os.path.exists(copied), True)
        self.rest_pointer()
        self.seen("restart-offered", "click Install, pull the cable, OK", "the files are copied, a restart is offered")
        self.session.answer_box(e2e.NO, RESTART)
        drivers.wait("gone")
        self.expect("the modems", editor.combo("Combo1")["items"], MODEMS)
        e2e.wait_for(lambda: "MODEM.CPL | 0" in open(journal).read(), 10, "the modem applet")
        self.rest_pointer()
        self.seen("driver-installed", "answer No", "the editor again, with one modem more to choose")
        self.session.keys("esc")
        editor.wait("gone")

    def add_connection(self):
        self.main.click("Image1")
        editor = self.session.window("Form2").wait("foreground")
        self.rest_pointer()
        self.seen("editor", "click Add", "the editor, with the modems of the system")
        editor.click("Check1")
        e2e.wait_for(lambda: editor.combo("Combo1")["items"] == ["Nokia 6230 USB Modem"], 10, "one modem stays")
        editor.click("Command2")
        picker = self.session.window("Form3").wait("foreground")
        picker.choose("Combo1", "Australia")
        self.rest_pointer()
        self.seen("operators", "click List of Operators, choose Australia", "the operators of the country")
        picker.choose_row("ListView2", 0)
        self.session.keys("enter")
        picker.wait("gone")
        e2e.wait_for(lambda: editor.text("Text2") == "*99#" and editor.text("Text3"), 5, "the operator's details")
        editor.enter("Text1", "Garden")
        editor.wait_control("Command1", "enabled")
        self.rest_pointer()
        self.seen("editor-filled", "tick Validate Device, fill the boxes", "only the modem whose phone answers is listed")
        editor.click("Command1")
        editor.wait("hidden")
        self.main.wait_rows("ListView1", 4)
        self.rest_pointer()
        self.seen("added", "click Add Now", "Corvanti-Garden is in the list")
        self.main.choose_row("ListView1", "Corvanti-Garden", "right")
        self.session.choose_menu(1)
        editor.wait("foreground")
        editor.wait_text("Command1", "Modify")
        editor.enter("Text1", "Balcony")
        editor.click("Option2")
        editor.enter("Text4", "192.0.2.53")
        self.rest_pointer()
        self.seen("modify", "choose Edit, rename, type an address", "the address boxes are open")
        editor.click("Command1")
        editor.wait("hidden")
        self.main.wait_rows("ListView1", lambda rows: ["Corvanti-Balcony"] in rows and ["Corvanti-Garden"] not in rows)
        self.seen("renamed", "click Modify", "the new name is there, the old one gone")
        self.main.choose_row("ListView1", "Corvanti-Office")

    def delete(self):
        self.main.choose_row("ListView1", "Work", "right")
        self.session.wait_menu()
        self.seen("menu", "click Work with the right button", "a menu opens")
        self.session.choose_menu(2)
        self.main.wait_rows("ListView1", [["Corvanti-Office"], ["Corvanti-Home"], ["Corvanti-Balcony"]].__eq__)
        with open(self.session.path("C:\\practice\\phonebook.txt")) as file:
            self.expect("whether the phonebook has Work", "[entry Work]" in file.read(), False)
        self.seen("deleted", "choose Delete", "the entry is gone from the list and from the phonebook")

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
        self.main, self.prompt, self.status = map(self.session.window, ("Form1", "Form4", "frmStatus"))
        self.main_window()
        self.install_driver()
        self.add_connection()
        self.choose()
        self.open_prompt(PASSWORD, "prompt", "the prompt, the password is masked")
        self.progress()
        self.traffic_and_limit()
        self.open_prompt(PASSWORD, "prompt-filled-anew", "signing in again")
        self.session.keys("enter")
        self.wait_line(True)
        self.hang_up()
        self.wrong_password()
        self.cable_pulled()
        self.cable_pulled_while_dialing()
        self.delete()
        self.minimise_and_close()


def main():
    for old in glob.glob(os.path.join(e2e.SCREENS, "[0-9][0-9]-*.png")):
        os.remove(old)
    folder = os.path.relpath(e2e.SCREENS)
    print("A practice line with two simulated phones; the pictures go to %s." % folder, flush=True)
    session = e2e.Session("tour")
    tour = Tour(session)
    try:
        session.start()
        folder = session.path("C:\\practice")
        os.makedirs(folder)
        with open(os.path.join(folder, "scenario.txt"), "w") as file:
            file.write(SCENARIO)
        session.start_phones()
        tour.go()
    except (e2e.Failure, OSError) as failure:
        print("%2d  NOT SEEN: %s" % (tour.number + 1, failure), flush=True)
        if session.display:
            print("    the screen then: " + os.path.relpath(session.screenshot("failed/tour")))
        return 1
    finally:
        session.stop()
    print("All %d steps were seen." % tour.number)
    return 0


if __name__ == "__main__":
    sys.exit(main())
