"""Traffic, rates and limits: what the main window shows once a second, the dialog that sets a limit, and what happens
near it and past it, in real seconds."""

import re
import time
import unittest

import desk
import pelvaro_e2e as e2e
from desk import LIMIT_LABELS, Desk

NEAR = "You are about to reach limit, disconnect now?"
SIZE_PASSED = "You have reached size limit. Reconnect?"
TIME_PASSED = "Timeout, reconnect?"
INVALID = "Invalid Input. Please enter again."
TIME_RANGE = "The time limit can be 1 to 546 minutes. Please enter again."
SIZE_RANGE = "The size limit can be 1 to 32767 KB. Please enter again."

desk.FORMS["Form6"] = ("Pelvaro - Limitation", (304, 168), {
    "Label2": ("Static", "Limitation", 16, 5, 243, 20),
    "closeMark": ("Button", "Close", 267, 1, 36, 27),
    "Option1": ("Button", "Time Limit ", 16, 44, 112, 24),
    "Text1": ("Edit", "", 136, 44, 88, 24),
    "Label3": ("Static", "minutes", 232, 44, 56, 24),
    "Option2": ("Button", "Size limit", 16, 76, 112, 24),
    "Text2": ("Edit", "", 136, 76, 88, 24),
    "Label4": ("Static", "KB", 232, 76, 56, 24),
    "Command1": ("Button", "OK", 104, 124, 88, 28),
    "Command2": ("Button", "Cancel", 200, 124, 88, 28),
})


class Limits(Desk):
    """Received: 20 KB a second, sent: 4 KB a second, as the practice line does it while it is up. The size limits leave
    some seconds until they are near, for the dialog, and some until they are passed, for the question."""

    scenario = "pace 20\ntimeout 3000\njournal on\nreceiveRate 20480\nsendRate 4096\n"

    def hold_windows(self):
        super().hold_windows()
        self.limits = self.window("Form6")

    def open_limits(self):
        self.main.click("Image3")
        self.limits.wait("foreground")
        self.wait_focus("Option1")

    def limit(self, option, box, value):
        self.open_limits()
        self.limits.click(option)
        self.limits.enter(box, value)
        self.session.keys("enter")

    def question(self, text, answer, limit=10):
        self.session.answer_box(answer, text, limit=limit)

    def received(self):
        return int(re.fullmatch(r"Total bytes received: (-?\d+) KB", self.main.text("Label1")).group(1))

    def test_the_dialog_is_laid_out_and_opens_on_the_time_limit(self):
        self.open_limits()
        self.assert_laid_out("Form6")
        self.assertTrue(self.limits.checked("Option1"))
        self.assertFalse(self.limits.checked("Option2"))
        self.assertTrue(self.limits.control("Text1")["enabled"])
        self.assertFalse(self.limits.control("Text2")["enabled"])
        self.assertEqual(self.visible(), ["Form1", "Form6"])
        self.main.wait("enabled")  # it keeps nobody from the main window

    def test_the_dialog_by_keyboard_alone(self):
        self.open_limits()
        self.session.keys("down")
        self.wait_focus("Option2")
        e2e.wait_for(lambda: self.limits.checked("Option2"), 5, "the arrow key chooses")
        self.assertFalse(self.limits.checked("Option1"))
        self.assertTrue(self.limits.control("Text2")["enabled"])
        self.tab_to("Text2")  # Text1 is disabled
        self.type("250")
        self.session.keys("enter")
        self.limits.wait("gone")
        self.main.wait_text("Label12", "250 KB")
        self.open_limits()
        self.session.keys("esc")
        self.limits.wait("gone")
        self.open_limits()
        self.tab_to("Text1", "Command1", "Command2", "closeMark", "Option1")

    def test_ninety_minutes(self):
        self.limit("Option1", "Text1", "90")
        self.limits.wait("gone")
        for control, text in (("Label9", "Time elapse"), ("Label11", "Time remain"), ("Label12", "01:30:00")):
            self.main.wait_text(control, text)
        for control in LIMIT_LABELS:
            self.main.wait_control(control, "visible")
        self.open_limits()
        self.assertEqual((self.limits.text("Text1"), self.limits.text("Text2")), ("90", ""))
        self.limits.enter("Text1", "5")
        self.limits.click("Command2")
        self.limits.wait("gone")
        self.assertEqual(self.main.text("Label12"), "01:30:00")

    def test_bad_input_is_refused_and_the_dialog_stays(self):
        self.limit("Option1", "Text1", "547")
        self.question(TIME_RANGE, e2e.OK)
        self.wait_focus("Text1")
        self.assertEqual(self.limits.text("Text1"), "547")
        self.limits.click("Option2")
        self.limits.enter("Text2", "32768")
        self.session.keys("enter")
        self.question(SIZE_RANGE, e2e.OK)
        self.limits.enter("Text2", "abc")
        self.session.keys("enter")
        self.question(INVALID, e2e.OK)
        self.limits.wait_text("Text1", "")
        self.assertEqual(self.limits.text("Text2"), "abc")
        self.limits.set_text("Text2", "9" * 400)
        self.limits.click("Command1")
        self.question(SIZE_RANGE, e2e.OK)
        self.limits.wait("visible")
        for control in LIMIT_LABELS:
            self.assertFalse(self.main.control(control)["visible"])
        self.limits.click("closeMark")
        self.limits.wait("gone")

    def test_check_marks_that_a_script_sets_are_seen(self):
        self.open_limits()
        for option, mark in (("Option1", 0), ("Option2", 1)):
            self.limits._call("send", option, 0x00F1, mark)  # BM_SETCHECK tells nobody
        self.limits.set_text("Text2", "77")
        self.limits.push("Command1")
        self.limits.wait("gone")
        self.main.wait_text("Label12", "77 KB")

    def test_the_traffic_of_a_connection(self):
        self.assertEqual(self.main.text("Label1"), "Total bytes received: 0 KB")
        self.connect()
        e2e.wait_for(lambda: self.received() > 0, 5, "something is received")
        e2e.wait_for(lambda: self.main.text("Label4") != "Download rate: 0 KB/sec.", 5, "a rate")
        for control, form in (("Label2", r"Total bytes transmitted: \d+ KB"), ("Label4", r"Download rate: \d+ KB/sec\."),
                              ("Label5", r"Upload rate: 0 KB/sec\.")):
            self.assertRegex(self.main.text(control), form)
        self.main.click("Image2")
        self.wait_disconnected()
        total = self.main.text("Label1")
        self.stays(lambda: self.main.text("Label1") == total, 1.5)
        for control in LIMIT_LABELS:
            self.assertFalse(self.main.control(control)["visible"])

    def test_a_size_limit_asks_near_it_disconnects_past_it_and_reconnects(self):
        self.connect()
        self.limit("Option2", "Text2", "300")
        self.limits.wait("gone")
        self.main.wait_text("Label12", "300 KB")
        self.question(NEAR, e2e.NO, 20)
        self.assertRegex(self.main.text("Label7"), r"size remained: \d+ KB")
        e2e.wait_for(lambda: re.fullmatch(r"\d+ KB", self.main.text("Label10")), 3, "the used size")
        self.session.wait_box(15)
        self.wait_disconnected()
        self.assertEqual(self.main.text("Label7"), "")
        self.wait_visible("Form1")
        self.question(SIZE_PASSED, e2e.YES)
        self.prompt.wait("foreground")
        self.wait_focus("Text1")
        self.assertEqual(self.prompt.text("Text1"), desk.USER)
        self.session.keys("enter")  # the prompt is filled: one key, and it is online, for one tick only
        connects = lambda: self.journal("notify").count("notify state=0x2000 error=0")
        e2e.wait_for(lambda: connects() == 2, 10, "it is online once more")
        self.question(SIZE_PASSED, e2e.NO, 15)  # still past it
        self.wait_disconnected()
        self.wait_visible("Form1")

    def test_yes_near_the_limit_disconnects(self):
        self.connect()
        self.limit("Option2", "Text2", "250")
        self.question(NEAR, e2e.YES, 20)
        self.wait_disconnected()
        self.assertEqual(self.main.text("Label7"), "")
        self.stays(lambda: self.visible() == ["Form1"] and not self.session.windows("#32770"), 1.5)

    def test_the_state_is_followed_behind_an_open_question(self):
        self.connect()
        self.limit("Option2", "Text2", "250")
        self.session.wait_box(20)
        self.unplug("COM5", "nokia")
        self.wait_disconnected()
        used = self.main.text("Label10")
        self.stays(lambda: self.main.text("Label10") == used, 2.5)
        self.question(NEAR, e2e.NO)
        self.assertTrue(self.program.alive)

    def test_a_time_limit_of_a_minute(self):
        begun = time.monotonic()
        self.connect()
        online = time.monotonic()
        self.limit("Option1", "Text1", "1")
        self.limits.wait("gone")
        limited = time.monotonic()
        self.main.wait_text("Label12", "00:01:00")
        self.session.wait_box(60)
        asked = time.monotonic()
        # At the 43rd tick since it is online. Behind the question both stay as they are.
        self.assertEqual(self.main.text("Label7"), "Time left: 17 Second(s)")
        shown = self.main.text("Label10")
        self.assertRegex(shown, r"00:0\d:\d\d")
        elapsed = 60 * int(shown[3:5]) + int(shown[6:])
        self.assertGreaterEqual(elapsed, 41 - (limited - begun))  # either clock may be a second off
        self.assertLessEqual(elapsed, asked - online + 1)
        self.question(NEAR, e2e.NO)
        self.assertRegex(self.main.text("Label7"), r"Time left: 1?\d Second\(s\)")
        self.session.wait_box(40)
        self.assertEqual(self.main.text("Label7"), "")
        self.question(TIME_PASSED, e2e.NO)
        self.wait_disconnected()
        self.wait_visible("Form1")


class Wrapping(Desk):
    scenario = "pace 20\nreceivedAtStart 4294966000\nreceiveRate 20480\n"

    def test_totals_turn_negative_when_the_counters_wrap_and_nothing_is_cut_off(self):
        self.connect()
        e2e.wait_for(lambda: "-41" in self.main.text("Label1"), 10, "a negative total")
        self.session.screenshot("traffic-wrapped", desk.MARGIN)


class NoInterface(Desk):
    scenario = "pace 20\nethernet off\n"

    def test_without_an_interface_the_rates_stay_empty(self):
        self.assertEqual(self.main.text("Label1"), "Total bytes received: 0 KB")
        self.assertEqual(self.main.text("Label4"), "Download rate: ")
        self.connect()
        self.stays(lambda: self.main.text("Label5") == "Upload rate: ", 1.5)


if __name__ == "__main__":
    unittest.main()
