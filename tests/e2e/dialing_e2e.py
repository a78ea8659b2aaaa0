"""Going online and off again, as a user does it: the prompt, the progress, every way to fail."""

import os
import subprocess
import unittest

import pelvaro_e2e as e2e
from desk import CONNECTED, DISCONNECTED, Desk, HOME, MARGIN, MASKED, OFFICE, PASSWORD, PROGRESS, USER, WORK


class Dialing(Desk):
    """On a display without a window manager."""

    def box_pixels(self, control):
        """What a control of the prompt looks like."""
        left, top, right, bottom = self.prompt.control(control)["rect"]
        part = "%dx%d+%d+%d" % (right - left, bottom - top, left, top)
        return subprocess.run(["import", "-window", "root", "-crop", part, "rgb:-"], stdout=subprocess.PIPE, check=True,
                              env=self.session.environment, timeout=20).stdout

    def wait_progress(self, text):
        """Until the dial has come so far. Or further: one text alone may be gone before it is looked for."""
        there = PROGRESS[PROGRESS.index(text):]
        reached = lambda: self.status.info() and self.status.text("Label1") in there
        e2e.wait_for(reached, 10, "the dial comes to " + text)

    def test_connect_and_hang_up(self):
        self.begin("pace 1200\ntimeout 5000\njournal on\n")  # every single text is looked for
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

        def look(text):
            self.prompt.enter("Text2", text)
            self.prompt.focus("Text1")
            self.session.point(5, 5)
            return self.box_pixels("Text2")

        # More than once, for a picture may be taken before all of it is drawn.
        e2e.wait_for(lambda: look("iiiiiiiiiiii") == look("wrong-secret"), 20, "both texts look the same")
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

    def test_cancel_while_it_dials(self):
        self.begin(self.slow)
        self.dial()
        self.wait_progress("Connecting device...")
        self.status.click("Command1")
        self.wait_visible("Form1")
        self.stays(lambda: self.visible() == ["Form1"] and self.main.text("statuslbl") == DISCONNECTED)
        self.assertEqual(self.journal("dial", "hangUp"), [
            "dial entry=Corvanti-Office number= user=guest handle=0x10001 -> 0", "hangUp handle=0x10001 -> 0"])
        self.main.click("Image2")  # and once more: the prompt has kept what was typed
        self.prompt.wait("foreground")
        self.wait_focus("Text1")
        self.session.keys("enter")
        self.wait_connected()

    def test_the_cable_is_pulled_while_it_dials(self):
        self.begin(self.slow)
        self.dial()
        self.wait_progress("Device connected...")
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
        self.wait_focus("Text1")
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

    def test_windows_that_a_dial_took_away_while_minimised_stay_away(self):
        self.begin(self.slow)
        self.dial()
        self.wait_progress("Port opened...")
        self.main.click("Label6")
        self.main.wait_text("statuslbl", CONNECTED)
        self.main.restore()
        self.wait_visible("Form1")
        self.stays(lambda: self.visible() == ["Form1"])

    def test_the_program_ends_while_it_dials(self):
        self.begin(self.slow)
        self.dial()
        self.wait_progress("Port opened...")
        self.main.click("Label3")
        self.wait_ended()

    def test_the_program_ends_while_it_is_connected_and_does_not_hang_up(self):
        self.connect()
        self.main.click("Label3")
        self.wait_ended()
        self.assertEqual(self.journal("hangUp"), [])

    def test_alt_f4_closes_the_prompt_alone(self):
        self.open_prompt()
        self.session.keys("alt+f4")
        self.prompt.wait("gone")
        self.stays(lambda: self.program.alive and self.visible() == ["Form1"], 0.2)

    def test_a_dial_goes_on_when_its_window_is_closed(self):
        self.begin(self.slow)
        self.dial()
        self.wait_progress("Port opened...")
        self.status.wait("foreground")
        self.session.keys("alt+f4")
        self.wait_visible("Form1")
        self.wait_connected()
        self.assertEqual(self.journal("hangUp"), [])

    def test_ok_twice_dials_twice_and_harms_nothing(self):
        self.begin(self.slow)  # the prompt is still there at the second click
        self.open_prompt()
        self.prompt.enter("Text1", USER)
        self.prompt.enter("Text2", PASSWORD)
        self.prompt.click("Command1", "double")
        e2e.wait_for(lambda: len(self.journal("dial")) == 2, 5, "two dials")
        self.wait_connected()
        self.main.click("Image2")
        e2e.wait_for(lambda: self.journal("hangUp"), 5, "the hang-up")
        self.main.wait("enabled")  # it is not, while the splash window has come
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

    def test_connect_and_hang_up_many_times(self):
        self.begin("pace 0\ntimeout 3000\njournal on\n")
        self.connect()
        for _ in range(10):
            self.main.click("Image2")
            self.wait_disconnected()
            self.main.wait("foreground")
            self.wait_focus("Image2")
            self.session.keys("space")
            self.prompt.wait("foreground")
            self.wait_focus("Text1")
            self.session.keys("enter")
            self.wait_connected()
        self.assertEqual(len(self.session.windows()), 4)

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
        self.wait_focus("Text1")
        self.session.keys("tab", "home", "shift+end", "delete")
        self.type(PASSWORD)
        self.session.keys("tab", "space")
        self.wait_connected()
        self.main.wait("foreground")
        self.wait_focus("Image2")
        self.session.keys("enter")
        self.wait_disconnected()
        self.main.wait("foreground")
        self.wait_focus("Image2")
        self.session.keys("shift+tab", "shift+tab", "enter")  # the close mark
        self.wait_ended()

    def test_two_quick_clicks_open_one_prompt(self):
        self.main.choose_row("ListView1", OFFICE)
        self.main.click("Image2", "double")
        self.prompt.wait("foreground")
        self.assertEqual(len(self.session.windows("Pelvaro.Form4")), 1)


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


if __name__ == "__main__":
    unittest.main()
