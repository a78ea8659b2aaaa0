"""Access: what a screen reader is told of every control of every window, the walk of the keyboard through them, and the
tooltips. Much of the keyboard is tried where the windows are (test_by_keyboard_alone, test_every_way_out ...)."""

import unittest

import editor_e2e
import pelvaro_e2e as e2e
from desk import OFFICE
from editor_e2e import NOKIA

# Of each window the controls whose name is not the text that they have at the time.
NAMES = {
    "Form1": {"Image5": "Program icon", "Image4": "Status icon", "Label7": "Remaining", "Label10": "Elapsed",
              "Label12": "Limit"},
    "Form2": {"Text1": "Connection Name", "Text2": "Server or Dialup Number", "Text3": "APN", "Text4": "Primary DNS",
              "Text5": "Secondary DNS", "Combo3": "Connection Type", "Image1": "Cable", "Combo1": "Device"},
    "Form3": {"Combo1": "Country/ City"},
    "Form4": {"Image1": "Sign in", "Text1": "User Name:", "Text2": "Password:"},
    "Form5": {"Animation1": "Starting", "textLabel": "Progress"},
    "Form6": {"Text1": "Time limit, minutes", "Text2": "Size limit, KB"},
    "frmStatus": {"Image1": "Dialing icon"},
    "frmDriver": {"Combo1": "Brand", "Combo2": "Model", "Combo3": "Connection Type"},
    "frmEdit": {},  # the label before each box
}
ROLES = {"Edit": "text", "ComboBox": "combo box", "SysListView32": "list", "SysAnimate32": "animation"}
BUTTON_ROLES = {3: "check button", 9: "radio button"}  # by the type in the window's style; all others are pushed
VISIBLE, PASSWORD = 0x10000000, 0x0020  # styles


class Access(editor_e2e.Editor):
    def hold_windows(self):
        super().hold_windows()
        self.limits, self.picker, self.boxes, self.drivers = map(self.window, ("Form6", "Form3", "frmEdit", "frmDriver"))

    # The observer.
    @staticmethod
    def kind(control):
        return control["style"] & 0xF if control["class"] == "Button" else None

    def role(self, name, control):
        if control["class"] == "Static":
            return "graphic" if name.startswith("Image") else "static text"
        return ROLES.get(control["class"]) or BUTTON_ROLES.get(self.kind(control), "push button")

    def assert_told(self, form, names=None):
        """What the platform's accessibility tells another process of every control of a window."""
        names = NAMES[form.name.split(".")[1]] if names is None else names
        for name, control in form.controls().items():
            with self.subTest(form=form.name, control=name):
                told = self.session.driver.call("accessible", form.name, name)
                self.assertEqual(told["name"], names.get(name, control["text"]))
                self.assertTrue(told["name"].strip())
                self.assertEqual(told["role"], self.role(name, control))
                self.assertEqual("unavailable" in told["state"], not control["enabled"])
                self.assertEqual("invisible" in told["state"], not control["style"] & VISIBLE)
                marked = self.kind(control) in BUTTON_ROLES and form.checked(name)
                self.assertEqual("checked" in told["state"], marked)
                if control["class"] == "Edit" and control["style"] & PASSWORD:
                    self.assertIn("protected", told["state"])
                    self.assertFalse(told["value"])
                elif control["class"] in ("Edit", "ComboBox"):
                    self.assertEqual(told["value"], control["text"])

    def assert_walked(self, form):
        """Tab stops at every control that can act, in their order, and Shift+Tab goes back; of options at the marked one."""
        can = [name for name, control in form.controls().items()
               if control["class"] not in ("Static", "SysAnimate32") and control["visible"] and control["enabled"] and
               (self.kind(control) != 9 or form.checked(name))]
        start = can.index(self.focus())
        round_trip = can[start + 1:] + can[:start + 1]
        self.tab_to(*round_trip)
        for control in round_trip[-2::-1] + can[start:start + 1]:
            self.session.keys("shift+tab")
            self.wait_focus(control)

    def leave(self, form, key="esc"):
        form.wait("foreground")  # the one before may just have gone
        self.session.keys(key)
        e2e.wait_for(lambda: not (form.info() or {"visible": False})["visible"], 5, form.name + " is closed")

    def test_every_control_has_its_name_and_role_and_the_keyboard_reaches_it(self):
        self.main.choose_row("ListView1", OFFICE)
        self.main.wait_control("Image2", "enabled")
        self.assert_told(self.main)
        self.assert_walked(self.main)
        self.main.click("Image3")
        self.limits.wait("foreground")
        self.wait_focus("Option1")
        self.assert_told(self.limits)
        self.assert_walked(self.limits)
        self.leave(self.limits)
        self.add()
        self.wait_focus("Text1")
        self.fill("Garden & more")
        self.assert_told(self.editor)
        self.assert_walked(self.editor)
        self.editor.click("Image2")
        self.drivers.wait("foreground")
        self.wait_focus("Combo1")
        self.assert_told(self.drivers)
        self.assert_walked(self.drivers)
        self.leave(self.drivers)
        self.editor.click("Command2")
        self.picker.wait("foreground")
        self.wait_focus("Combo1")
        self.picker.wait_rows("ListView2", lambda rows: rows)
        self.picker.choose_row("ListView2", 0)
        self.picker.wait_control("Command3", "enabled")
        self.assert_told(self.picker)
        self.assert_walked(self.picker)
        self.picker.click("Command3")
        self.boxes.wait("foreground")
        self.wait_focus("Text1(0)")
        labels = [self.boxes.text("Label1(%d)" % i) for i in range(10)]
        self.assert_told(self.boxes, {"Text1(%d)" % i: labels[i] for i in range(10)})
        self.assert_walked(self.boxes)

    def test_the_windows_of_a_dial(self):
        self.open_prompt()
        self.prompt.enter("Text1", "guest")
        self.prompt.enter("Text2", "wrong-secret")
        self.assert_told(self.prompt)
        self.assert_walked(self.prompt)
        self.session.keys("enter")
        self.wait_failed()
        self.wait_focus("Command1")
        self.assert_told(self.status)
        self.assert_walked(self.status)
        self.leave(self.status)
        self.connect()
        self.main.click("Image2")
        self.wait_disconnected()
        self.assert_told(self.splash)  # it has come and gone
        self.main.set_text("Label8", "this & that")  # of which the platform would take the "&" for a mark
        self.assertEqual(self.session.driver.call("accessible", "Pelvaro.Form1", "Label8")["name"], "this & that")
        self.main.click("Label3")
        self.wait_ended()

    def test_keys_of_single_controls(self):
        self.add()
        self.wait_focus("Text1")
        self.editor.focus_with_tab("Check1")
        self.session.keys("space")
        e2e.wait_for(lambda: self.editor.checked("Check1"), 5, "the space bar ticks")
        self.wait_devices(NOKIA)
        self.session.keys("space")
        e2e.wait_for(lambda: not self.editor.checked("Check1"), 5, "the space bar takes the tick away")
        self.editor.focus_with_tab("Command2")
        self.session.keys("enter")
        self.picker.wait("foreground")
        self.picker.wait_rows("ListView2", lambda rows: rows)
        self.picker.focus_with_tab("ListView2")
        self.session.keys("down", "apps")
        self.session.choose_menu(1)
        self.boxes.wait("foreground")
        self.leave(self.boxes)
        self.leave(self.picker)
        self.leave(self.editor, "alt+f4")
        self.main.wait("foreground")
        self.main.focus_with_tab("Image3")
        self.session.keys("enter")
        self.limits.wait("foreground")
        self.wait_focus("Option1")
        self.leave(self.limits, "alt+f4")
        self.assertTrue(self.program.alive)

    def assert_tooltip(self, form, control):
        form.hover(control)
        self.session.driver.call("wait-tooltip", 5000)
        self.session.point(5, 5)
        self.session.driver.call("wait-tooltip", 5000, "gone")

    def test_tooltips_of_picture_buttons_and_of_texts_that_are_cut(self):
        self.main.choose_row("ListView1", OFFICE)
        self.main.wait_control("Image2", "enabled")
        for button in ("Image1", "Image2", "Image3"):
            self.assert_tooltip(self.main, button)
        self.add()
        self.assert_tooltip(self.editor, "Image2")
        self.editor.hover("captionLabel")
        self.stays(lambda: not self.session.driver.call("tooltips"), 1)
        self.session.point(5, 5)
        self.editor.set_text("captionLabel", "a title much too long for its place " * 3)
        self.assert_tooltip(self.editor, "captionLabel")


if __name__ == "__main__":
    unittest.main()
