"""The operator picker and its row editor, with the delivered list."""

import os
import shutil
import unittest

import dialing_e2e
import pelvaro_e2e as e2e
import editor_e2e

dialing_e2e.FORMS["Form3"] = ("Pelvaro - Operators", (600, 364), {
    "captionLabel": ("Static", "Pelvaro - Operators", 16, 5, 539, 20),
    "closeMark": ("Button", "Close", 563, 1, 36, 27),
    "Label1": ("Static", "Country/ City", 16, 44, 88, 24),
    "Combo1": ("ComboBox", "Afghanistan", 112, 44, 232, 24),
    "ListView2": ("SysListView32", "Operators", 16, 80, 568, 224),
    "Command3": ("Button", "Edit", 16, 320, 80, 28),
    "Command4": ("Button", "Default", 104, 320, 80, 28),
    "Command2": ("Button", "Save Current List", 192, 320, 128, 28),
    "Command1": ("Button", "Close", 496, 320, 88, 28),
})


class Picking(editor_e2e.Editor):
    """The program runs from a folder of its own, so that the list it saves goes with the prefix."""

    @classmethod
    def prepare(cls):
        folder = cls.session.path("C:\\Pelvaro")
        shutil.copytree(os.path.dirname(cls.exe), folder)
        cls.exe = os.path.join(folder, "pelvaro.exe")
        super().prepare()

    def hold_windows(self):
        super().hold_windows()
        self.picker, self.boxes = self.window("Form3"), self.window("frmEdit")

    def open_picker(self):
        self.editor.click("Command2")
        self.picker.wait("foreground")

    def test_pick_edit_save_and_restore(self):
        self.add()
        self.open_picker()
        self.assert_laid_out("Form3")
        self.assertEqual(self.visible(), ["Form1", "Form2", "Form3"])
        self.assertFalse(self.main.info()["enabled"], "the picker is modal")
        self.assertGreater(len(self.picker.combo("Combo1")["items"]), 140)
        self.picker.choose("Combo1", "Albania")
        rows = self.picker.wait_rows("ListView2", lambda rows: rows and rows[0][0] == "Albania")
        self.assertEqual(len(rows[0]), 11)
        self.session.screenshot("operators", dialing_e2e.MARGIN)
        self.picker.wait_control("Command3", "disabled")
        self.picker.wait_control("Command4", "disabled")
        self.picker.choose_row("ListView2", 0)
        self.picker.wait_control("Command3", "enabled")
        self.picker.click("Command3")
        self.boxes.wait("foreground")
        self.session.screenshot("operator-edit", dialing_e2e.MARGIN)
        self.boxes.enter("Text1(1)", "my.apn")
        self.type(",")
        self.stays(lambda: self.boxes.text("Text1(1)") == "my.apn")
        self.boxes.click("Command1")
        self.boxes.wait("gone")
        self.picker.wait_rows("ListView2", lambda rows: rows[0][2] == "my.apn")
        self.picker.click("Command2")
        self.session.answer_box(e2e.OK, "File saved.")
        self.picker.wait_control("Command4", "enabled")
        self.picker.choose_row("ListView2", 0)
        self.session.keys("enter")
        self.picker.wait("gone")
        self.assertEqual([self.editor.text(box) for box in ("Text2", "Text3")], ["*99#", "my.apn"])
        self.begin()  # the program is started anew
        self.add()
        self.open_picker()
        self.picker.choose("Combo1", "Albania")
        self.picker.wait_rows("ListView2", lambda rows: rows and rows[0][2] == "my.apn")
        self.picker.click("Command4")
        self.picker.wait_control("Command4", "disabled")
        self.picker.choose("Combo1", "Albania")
        self.picker.wait_rows("ListView2", lambda rows: rows and rows[0][0] == "Albania" and rows[0][2] != "my.apn")
        self.session.keys("esc")
        self.picker.wait("gone")
        self.main.wait("enabled")


if __name__ == "__main__":
    unittest.main()
