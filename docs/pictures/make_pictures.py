#!/usr/bin/env python3
"""Takes the pictures of the manual anew: make_pictures.py [NAME ...]; without names all of them.

Drives the program that is built in build/dist on the practice line, as the driven tests do, and leaves one picture of each
window beside this file, cut at the window's edge and in at most 64 colours. Look at each of them before keeping it.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(HERE, "..", "..", "tests", "e2e"))

import pelvaro_e2e as e2e

FOLDER = "C:\\Pelvaro"
SCENARIO = "pace 700\ntimeout 5000\nreceiveRate 40960\nsendRate 8192\n"
NOKIA = "Nokia 6230 USB Modem"
BOX = "#32770"


class Pictures:
    def __init__(self, session, scratch, wanted):
        self.session, self.scratch, self.wanted = session, scratch, wanted
        self.main, self.editor, self.picker, self.record = map(session.window, ("Form1", "Form2", "Form3", "frmEdit"))
        self.prompt, self.splash, self.limits = map(session.window, ("Form4", "Form5", "Form6"))
        self.status, self.drivers = map(session.window, ("frmStatus", "frmDriver"))

    def take(self, name, *classes):
        """A picture of the windows of these classes."""
        if self.wanted and name not in self.wanted:
            return
        rects = [w["rect"] for c in classes for w in self.session.windows(c) if w["visible"]]
        left, top = (min(r[i] for r in rects) for i in (0, 1))
        right, bottom = (max(r[i] for r in rects) for i in (2, 3))
        whole = self.session.screenshot(os.path.join(self.scratch, name))
        subprocess.run(["convert", whole, "-crop", "%dx%d+%d+%d" % (right - left, bottom - top, left, top), "+repage", "-strip",
                        "+dither", "-colors", "64", "-define", "png:compression-level=9",
                        "-define", "png:exclude-chunks=date,time", "PNG8:" + os.path.join(HERE, name + ".png")], check=True)
        print(name + ".png %dx%d" % (right - left, bottom - top), flush=True)

    def rest(self):
        """Nothing lies under the pointer any more."""
        self.session.point(5, 5)
        time.sleep(0.7)

    def start(self):
        shutil.copytree(os.path.join(e2e.BUILD, "dist"), self.session.path(FOLDER))
        practice = self.session.path("C:\\practice")
        os.makedirs(practice)
        with open(os.path.join(practice, "scenario.txt"), "w") as file:
            file.write(SCENARIO)
        self.session.start_phones()
        self.session.run(os.path.join(self.session.path(FOLDER), "pelvaro.exe"))
        self.main.wait("foreground", 30)

    def driver_window(self):
        self.main.click("Image1")
        self.editor.wait("foreground")
        self.editor.click("Image2")
        self.drivers.wait("foreground")
        self.drivers.choose("Combo1", "Nokia")
        self.drivers.choose("Combo2", "6100")
        self.drivers.wait_text("driverlbl", "Yes")
        self.rest()
        self.take("drivers", "Pelvaro.frmDriver")
        self.drivers.click("Command1")
        self.session.answer_box(e2e.OK)
        self.session.wait_box()
        self.rest()
        self.take("restart", BOX)
        self.session.answer_box(e2e.NO)
        self.drivers.wait("gone")
        self.session.keys("esc")
        self.editor.wait("gone")

    def editor_and_operators(self):
        self.main.click("Image1")
        self.editor.wait("foreground")
        self.editor.click("Check1")
        e2e.wait_for(lambda: self.editor.combo("Combo1")["items"] == [NOKIA], 10, "one modem stays")
        self.editor.click("Command2")
        self.picker.wait("foreground")
        self.picker.choose("Combo1", "Portugal")
        self.picker.choose_row("ListView2", 1)
        self.rest()
        self.take("operators", "Pelvaro.Form3")
        self.picker.click("Command3")
        self.record.wait("foreground")
        self.rest()
        self.take("operator_row", "Pelvaro.frmEdit")
        self.session.keys("esc")
        self.record.wait("gone")
        self.picker.focus("ListView2")
        self.picker.choose_row("ListView2", 1)
        self.session.keys("enter")
        self.picker.wait("gone")
        self.editor.enter("Text1", "Garden")
        self.editor.wait_control("Command1", "enabled")
        self.rest()
        self.take("editor", "Pelvaro.Form2")
        self.editor.click("Command1")
        self.editor.wait("hidden")
        self.main.wait_rows("ListView1", 4)

    def asking_the_phones(self):
        self.session.tell_phones("unplug COM5")
        self.session.tell_phones("plug COM5 no_maker")
        time.sleep(1)
        self.main.click("Image1")
        self.splash.wait("visible")
        self.rest()
        self.take("asking", "Pelvaro.Form5")
        self.splash.push("closeMark")
        self.editor.wait("foreground")
        self.session.keys("esc")
        self.editor.wait("gone")
        self.session.tell_phones("unplug COM5")
        self.session.tell_phones("plug COM5 nokia")
        time.sleep(1)

    def main_window(self):
        self.main.choose_row("ListView1", "Corvanti-Garden")
        self.main.wait_control("Image2", "enabled")
        self.rest()
        self.take("main", "Pelvaro.Form1")
        left, top, right, bottom = self.session.driver.call("list-rect", "Pelvaro.Form1", "ListView1", 2)
        place = (left + right) // 2, (top + bottom) // 2
        self.session.point(*place)
        self.session.driver.call("click-at", *place, "right")
        self.session.wait_menu()
        time.sleep(0.5)
        self.take("menu", "Pelvaro.Form1")
        self.session.close_menu()
        self.main.choose_row("ListView1", "Corvanti-Garden")

    def dial(self, password):
        self.main.click("Image2")
        self.prompt.wait("foreground")
        self.prompt.enter("Text1", "guest")
        self.session.keys("tab", "home", "shift+end", "delete")
        self.session.driver.call("type", password)
        self.prompt.wait_text("Text2", password)

    def connecting(self):
        self.dial("wrong")
        self.rest()
        self.take("prompt", "Pelvaro.Form4")
        self.session.keys("enter")
        self.status.wait_text("Label1", "Checking username and password...", 15)
        self.take("status", "Pelvaro.frmStatus")
        self.status.wait_text("Command1", "Retry", 15)
        self.rest()
        self.take("failed", "Pelvaro.frmStatus")
        self.session.keys("esc")
        self.status.wait("hidden")
        self.main.wait("foreground")
        self.dial("practice")
        self.session.keys("enter")
        self.main.wait_text("Image2", "Hang Up", 20)

    def limit(self):
        self.main.click("Image3")
        self.limits.wait("foreground")
        self.limits.click("Option2")
        self.limits.enter("Text2", "600")
        self.rest()
        self.take("limits", "Pelvaro.Form6")
        self.session.keys("enter")
        self.limits.wait("gone")
        self.session.wait_box(40)
        self.rest()
        self.take("limit_near", BOX)
        self.session.answer_box(e2e.NO)
        self.main.wait("foreground")
        time.sleep(1.2)
        self.take("connected", "Pelvaro.Form1")
        self.session.wait_box(40)
        self.session.answer_box(e2e.NO)


def main():
    with tempfile.TemporaryDirectory() as scratch:
        session = e2e.Session("pictures")
        try:
            session.start()
            pictures = Pictures(session, scratch, sys.argv[1:])
            pictures.start()
            pictures.driver_window()
            pictures.editor_and_operators()
            pictures.asking_the_phones()
            pictures.main_window()
            pictures.connecting()
            pictures.limit()
        except e2e.Failure:
            if session.display:
                session.screenshot("failed/pictures")
            raise
        finally:
            session.stop()


if __name__ == "__main__":
    main()
