"""What makes the program pleasant: it opens where it was left, starts once only, is driven by double click and by F1, and
answers on the command line."""

import os
import shutil
import subprocess
import unittest

import pelvaro_e2e as e2e
from desk import HOME, Desk

PLACE = "HKCU\\Software\\Pelvaro\\Window"


class Comforts(Desk):
    def wine(self, *arguments):
        """Runs a Windows program to its end: exit code and what it wrote."""
        done = subprocess.run([self.session.environment["WINELOADER"], *arguments], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL, env=self.session.environment,
                              timeout=30)
        return done.returncode, done.stdout.decode("cp1252")

    def corner(self):
        return tuple(self.main.info()["rect"][:2])

    def leave_and_start(self):
        self.main.click("Label3")
        e2e.wait_for(lambda: not self.program.alive, 10, "the program ends")
        self.start_program()
        self.hold_windows()

    def test_it_opens_where_it_was_left(self):
        left, top = self.corner()
        self.main.drag("Label8", -60, 40)
        e2e.wait_for(lambda: self.corner() == (left - 60, top + 40), 5, "the window is moved")
        self.leave_and_start()
        self.assertEqual(self.corner(), (left - 60, top + 40))
        code, settings = self.wine("reg", "query", "HKCU\\Software\\Pelvaro\\Setting")
        self.assertNotIn("Form1", settings)

    def test_it_opens_on_a_screen_whatever_is_kept(self):
        width, height = e2e.SCREEN
        for kept, corner in (("-9000,-9000", (0, 0)), ("32767,32767", (width - 376, height - 412)), ("rubbish", None)):
            with self.subTest(kept=kept):
                if self.program.alive:
                    self.program.stop()
                self.wine("reg", "add", PLACE, "/v", "Form1", "/d", kept, "/f")
                self.start_program()
                if corner:
                    self.assertEqual(self.corner(), corner)
                else:
                    self.assertEqual(self.corner(), ((width - 376) // 2, (height - 412) // 2))
        self.wine("reg", "delete", PLACE, "/f")

    def test_a_second_start_brings_the_first_forward(self):
        self.main.click("Image1")
        editor = self.window("Form2").wait("foreground")
        self.main.push("Label6")
        self.main.wait("minimised")
        code, _ = self.wine(self.exe)
        self.assertEqual(code, 0)
        self.main.wait("restored")
        editor.wait("visible")
        self.assertEqual(len([w for w in self.session.windows() if w["class"] == "Pelvaro.Form1"]), 1)

    def test_a_second_start_finds_the_box_that_is_open(self):
        self.main.click("Image3")
        self.window("Form6").wait("foreground")
        self.wait_focus("Option1")
        self.session.keys("enter")  # nothing is typed: a complaint
        self.session.wait_box()
        code, _ = self.wine(self.exe)
        self.assertEqual(code, 0)
        self.session.answer_box(e2e.OK)

    def test_double_click_and_enter_open_the_prompt(self):
        self.main.choose_row("ListView1", HOME, "double")
        self.prompt.wait("foreground")
        self.wait_focus("Text1")
        self.session.keys("esc")
        self.prompt.wait("gone")
        self.main.wait("foreground")
        self.wait_focus("ListView1")
        self.session.keys("enter")
        self.prompt.wait("foreground")

    def test_the_command_line(self):
        for word in ("/version", "--version", "-VERSION"):
            code, text = self.wine(self.exe, word)
            self.assertEqual(code, 0)
            self.assertRegex(text, r"\APelvaro \d+\.\d+\.\d+\r\n\Z")
        for word in ("/?", "--help"):
            code, text = self.wine(self.exe, word)
            self.assertEqual(code, 0)
            self.assertIn("/version", text)
        code, text = self.wine(self.exe, "/nothing")
        self.assertEqual(code, 2)
        self.assertIn("/version", text)
        self.main.wait("visible")


class WithoutManual(Desk):
    """The program runs from a folder of its own, in which no manual lies: F1 would open it for real."""

    @classmethod
    def prepare(cls):
        folder = cls.session.path("C:\\Pelvaro")
        shutil.copytree(os.path.dirname(cls.exe), folder, ignore=shutil.ignore_patterns("manual.html"))
        cls.exe = os.path.join(folder, "pelvaro.exe")
        super().prepare()

    def test_f1_says_where_the_manual_is(self):
        self.session.keys("f1")
        self.assertIn("manual.html", self.session.answer_box(e2e.OK)["text"])
        self.main.wait("foreground")
        self.main.click("Image1")
        self.window("Form2").wait("foreground")
        self.wait_focus("Text1")
        self.session.keys("f1")  # in a text box
        self.session.answer_box(e2e.OK)


if __name__ == "__main__":
    unittest.main()
