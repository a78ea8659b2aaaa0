"""The harness itself, on a small window that has one of everything it drives."""

import os
import unittest

import pelvaro_e2e as e2e


class Selftest(e2e.Case):
    """On a display without a window manager."""

    phones = None
    exe = os.path.join(e2e.TOOLS, "e2e_selftest.exe")
    first_window = "Selftest"

    def setUp(self):
        self.form = self.window("Selftest").wait("foreground")

    def test_windows_and_controls_are_described(self):
        info = self.form.info()
        self.assertEqual(info["title"], "Selftest")
        self.assertTrue(info["visible"] and info["enabled"] and not info["minimised"])
        controls = self.form.controls()
        self.assertEqual(controls["Command1"]["class"], "Button")
        self.assertEqual(controls["Command1"]["text"], "Ask")
        self.assertEqual(controls["Command2(1)"]["text"], "Minimise")
        left, top = info["rect"][:2]
        self.assertEqual(controls["Command1"]["rect"], [left + 16, top + 44, left + 96, top + 72])

    def test_a_missing_control_is_refused_in_words(self):
        with self.assertRaisesRegex(e2e.Failure, "no control Nobody in Pelvaro.Selftest"):
            self.form.text("Nobody")
        with self.assertRaisesRegex(e2e.Failure, "is not visible but gone"):
            self.window("Form9").wait("visible", 0.05)

    def test_typing_reaches_the_edit_box(self):
        self.form.enter("Text1", "Hello, World! 1+1=2 {~}")
        self.form.enter("Text1", "caf\u00e9 \u20ac \\t")
        self.assertEqual(self.form.text("Text1"), "caf\u00e9 \u20ac \\t")

    def test_a_text_set_by_message_is_read_back(self):
        self.form.set_text("Text1", "a\tb\\c \u00fc")
        self.assertEqual(self.form.text("Text1"), "a\tb\\c \u00fc")

    def test_a_message_box_is_read_and_answered(self):
        for button, answer in ((e2e.YES, "yes"), (e2e.NO, "no")):
            self.form.click("Command1")
            box = self.session.answer_box(button, "Go on?", "Selftest")
            self.assertEqual([b["id"] for b in box["buttons"]], [e2e.YES, e2e.NO])
            self.form.wait_text("toldlbl", answer)

    def test_a_posted_click_does_not_wait_for_the_box(self):
        self.form.push("Command1")
        self.session.wait_box()
        self.assertFalse(self.form.info()["enabled"])
        self.session.keys("enter")
        self.form.wait_text("toldlbl", "yes")

    def test_a_check_box_is_clicked(self):
        before = self.form.checked("Check1")
        self.form.click("Check1")
        e2e.wait_for(lambda: self.form.checked("Check1") != before, 5, "the check mark changes")

    def test_a_combo_box_is_chosen_from(self):
        self.form.choose("Combo1", "two")
        self.assertEqual(self.form.combo("Combo1"), {"text": "two", "selected": 1, "items": ["one", "two"]})
        self.form.wait_text("toldlbl", "combo")
        self.form.pick("Combo1", "one")
        self.assertEqual(self.form.combo("Combo1")["text"], "one")

    def test_the_list_is_read_and_chosen_from(self):
        self.assertEqual(self.form.rows("ListView1"), [["Alpha", "1"], ["Beta \u00e9\"", "2"], ["Gamma", "3"]])
        self.form.choose_row("ListView1", "Gamma")
        focused = lambda: self.session.driver.call("focus")["focusControl"]
        e2e.wait_for(lambda: focused() == "ListView1", 5, "ListView1 gets the focus")
        self.form.select_row("ListView1", 0)
        self.assertEqual(self.form.list("ListView1")["selected"], 0)

    def test_a_popup_menu_opens_on_the_right_button_and_is_chosen_from(self):
        self.form.choose_row("ListView1", 1, "right")
        self.session.choose_menu(2)
        self.form.wait_text("toldlbl", "menu 2")
        self.form.choose_row("ListView1", 1, "right")
        self.session.close_menu()
        self.form.wait_text("toldlbl", "menu 0")

    def test_the_focus_walks_with_tab(self):
        self.form.focus("Text1")
        self.session.keys("tab")
        focused = lambda: self.session.driver.call("focus")["focusControl"]
        e2e.wait_for(lambda: focused() == "Combo1", 5, "Combo1 gets the focus")
        self.session.keys("shift+tab")
        e2e.wait_for(lambda: focused() == "Text1", 5, "Text1 gets the focus")

    def wait_place(self, place):
        now = lambda: self.form.info()["rect"][:2]
        e2e.wait_for(lambda: now() == place, 5, lambda: "the window lies at %r" % now())

    def test_the_window_is_dragged_by_its_surface(self):
        left, top = self.form.info()["rect"][:2]
        self.session.point(left + 330, top + 10)
        self.session.driver.call("drag", left + 330, top + 10, left + 390, top + 50)
        self.wait_place([left + 60, top + 40])

    def test_the_display_s_own_pointer_drags_too(self):
        left, top = self.form.info()["rect"][:2]
        self.session.display_drag(left + 330, top + 10, left + 310, top + 20)
        self.wait_place([left - 20, top + 10])

    def test_the_display_s_own_keyboard_types_too(self):
        self.form.enter("Text1", "x")
        self.session.display_call("type", "--delay", "20", "yz")
        self.form.wait_text("Text1", "xyz")

    def test_the_window_is_minimised_and_comes_back(self):
        self.form.click("Command2(1)")
        self.form.restore()
        self.assertFalse(self.form.info()["minimised"])

    def test_a_tooltip_comes_on_hovering(self):
        self.form.hover("Check1")
        self.form.hover("Command1")
        self.session.driver.call("wait-tooltip", 5000)
        self.session.driver.call("move", 5, 5)

    def test_the_screen_is_seen(self):
        left, top, right, bottom = self.form.info()["rect"]
        at = (right - 6, bottom - 6)
        self.assertEqual(self.session.driver.call("at", *at)["class"], "Pelvaro.Selftest")
        form_colour = [216, 228, 248]
        e2e.wait_for(lambda: self.session.driver.call("pixel", *at) == form_colour, 5, "the form's colour is on the screen")
        picture = self.session.screenshot("selftest")
        self.assertGreater(os.path.getsize(picture), 1000)


class SelftestWithWindowManager(Selftest):
    """The same under a window manager, as real desktops have one."""

    managed = "Y"


if __name__ == "__main__":
    unittest.main()
