"""The connection editor: adding, modifying and renaming connections, and asking the phones which modem they are."""

import contextlib
import os
import unittest

import desk
import pelvaro_e2e as e2e
from desk import HOME, OFFICE, WORK, Desk

NOKIA, SAMSUNG, NO_MODEM = "Nokia 6230 USB Modem", "Samsung D500 USB Modem", "--No Modem detect--"
BLUETOOTH_ADVICE = "Please manually add the device for bluetooth connection."
CABLE_ONLY = ("Label8", "Check1", "Command4", "Image1", "Image2")

desk.FORMS["Form2"] = ("Pelvaro - Connection", (456, 432), {
    "captionLabel": ("Static", "Pelvaro - Connection", 16, 5, 395, 20),
    "Label7": ("Button", "Close", 419, 1, 36, 27),
    "Label2": ("Static", "Connection Name", 16, 44, 152, 24),
    "Text1": ("Edit", "", 176, 44, 264, 24),
    "numberLabel": ("Static", "Server or Dialup Number", 16, 76, 152, 24),
    "Text2": ("Edit", "", 176, 76, 264, 24),
    "apnLabel": ("Static", "APN", 16, 108, 152, 24),
    "Text3": ("Edit", "", 176, 108, 264, 24),
    "Option1": ("Button", "Auto Detect", 16, 160, 16, 16),
    "Label10": ("Static", "Auto Detect", 40, 156, 120, 24),
    "Option2": ("Button", "Use address below", 176, 160, 16, 16),
    "Label11": ("Static", "Use address below", 200, 156, 160, 24),
    "primaryLabel": ("Static", "Primary DNS", 16, 188, 152, 24),
    "Text4": ("Edit", "", 176, 188, 264, 24),
    "secondaryLabel": ("Static", "Secondary DNS", 16, 220, 152, 24),
    "Text5": ("Edit", "", 176, 220, 264, 24),
    "typeLabel": ("Static", "Connection Type", 16, 268, 152, 24),
    "Combo3": ("ComboBox", "USB", 176, 268, 112, 24),
    "Image1": ("Static", "", 304, 268, 24, 24),
    "Image2": ("Button", "Driver", 344, 264, 96, 32),
    "Label1": ("Static", "Device", 16, 304, 152, 24),
    "Combo1": ("ComboBox", NOKIA, 176, 304, 264, 24),
    "Check1": ("Button", "Validate Device", 176, 342, 16, 16),
    "Label8": ("Static", "Validate Device", 200, 338, 88, 24),
    "Command4": ("Button", "Add Device Manually", 296, 336, 144, 28),
    "Command2": ("Button", "List of Operators", 16, 388, 128, 28),
    "Command1": ("Button", "Add Now", 248, 388, 92, 28),
    "Command3": ("Button", "Cancel", 348, 388, 92, 28),
})


class Editor(Desk):
    """What the tests of the editor share."""

    def hold_windows(self):
        super().hold_windows()
        self.editor = self.window("Form2")

    def add(self):
        self.main.click("Image1")
        self.editor.wait("foreground")

    def edit(self, entry):
        self.main.choose_row("ListView1", entry, "right")
        self.session.choose_menu(1)
        self.editor.wait("foreground")
        self.editor.wait_text("Command1", "Modify")

    def fill(self, name, number="*99#", apn="internet"):
        for box, text in (("Text1", name), ("Text2", number), ("Text3", apn)):
            self.editor.enter(box, text)
        self.editor.wait_control("Command1", "enabled")

    def devices(self):
        return self.editor.combo("Combo1")["items"]

    def wait_devices(self, *devices, limit=10):
        e2e.wait_for(lambda: self.devices() == list(devices), limit, lambda: "the devices are %r" % self.devices())

    def wait_entries(self, *names):
        self.main.wait_rows("ListView1", [[name] for name in names].__eq__)


class Editing(Editor):
    def test_add_opens_the_editor(self):
        self.add()
        self.assert_laid_out("Form2")
        self.assertEqual(self.visible(), ["Form1", "Form2"])
        self.wait_focus("Text1")
        self.editor.wait_control("Command1", "disabled")
        self.assertEqual(self.editor.combo("Combo3")["items"], ["USB", "Bluetooth"])
        self.assertEqual(self.devices(), [NOKIA, SAMSUNG])
        self.assertTrue(self.editor.checked("Option1"))
        self.assertFalse(self.editor.checked("Check1"))
        for box in ("Text4", "Text5"):
            self.assertFalse(self.editor.control(box)["enabled"])
        self.session.screenshot("editor-add", desk.MARGIN)

    def test_by_keyboard_alone(self):
        self.add()
        self.wait_focus("Text1")
        self.type("Garden")
        self.tab_to("Text2")
        self.type("*99#")
        self.tab_to("Text3")
        self.type("internet")
        self.editor.wait_control("Command1", "enabled")  # at the next tick; the rest is typed faster than one comes
        self.tab_to("Option1")
        self.session.keys("down")
        self.wait_focus("Option2")
        self.tab_to("Text4")
        self.type("10.0.0.1")
        self.tab_to("Text5", "Combo3", "Image2", "Combo1")
        self.session.keys("down")
        self.editor.wait_text("Combo1", SAMSUNG)
        self.tab_to("Check1", "Command4", "Command2", "Command1", "Command3", "Label7", "Text1")
        self.session.keys("enter")
        self.editor.wait("hidden")
        self.wait_entries(OFFICE, HOME, WORK, "Corvanti-Garden")
        self.edit("Corvanti-Garden")
        self.editor.wait_text("Combo1", SAMSUNG)
        self.editor.wait_text("Text4", "10.0.0.1")
        self.session.keys("esc")
        self.editor.wait("gone")

    def test_a_connection_with_validation_is_added_and_dialed(self):
        self.add()
        self.editor.click("Label8")  # the words beside the mark
        self.wait_devices(NOKIA)
        self.assertTrue(self.editor.checked("Check1"))
        self.fill("Garden")
        self.session.screenshot("editor-filled", desk.MARGIN)
        self.editor.click("Command1")
        self.editor.wait("hidden")
        self.wait_entries(OFFICE, HOME, WORK, "Corvanti-Garden")
        self.connect("Corvanti-Garden")

    def test_modify_and_rename(self):
        self.edit(OFFICE)
        self.assertEqual([self.editor.text(box) for box in ("Text1", "Text2")], ["Office", "*99#"])
        self.editor.enter("Text2", "*99*7#")
        self.editor.enter("Text3", "other.apn")
        self.editor.wait_control("Command1", "enabled")
        self.editor.click("Command1")
        self.editor.wait("hidden")
        self.wait_entries(OFFICE, HOME, WORK)
        self.edit(OFFICE)
        self.editor.wait_text("Text2", "*99*7#")
        self.editor.enter("Text1", "Garden")
        self.editor.click("Command1")
        self.editor.wait("hidden")
        self.wait_entries(HOME, WORK, "Corvanti-Garden")
        calls = self.journal("setEntryProperties", "deleteEntry")
        self.assertEqual([line.split()[:2] for line in calls[-2:]],
                         [["setEntryProperties", "entry=Corvanti-Garden"], ["deleteEntry", "entry=Corvanti-Office"]])
        self.edit(WORK)
        self.editor.wait_text("Text1", "Work")
        self.editor.enter("Text3", "apn")
        self.editor.wait_control("Command1", "enabled")
        self.session.keys("enter")
        self.editor.wait("hidden")
        self.wait_entries(HOME, WORK, "Corvanti-Garden", "Corvanti-Work")

    def test_bluetooth_hides_what_is_for_cables_and_advises_by_message(self):
        self.write("installers.txt", "applet adds nothing\n")
        self.add()
        self.editor.choose("Combo3", "Bluetooth")
        for control in CABLE_ONLY:
            self.editor.wait_control(control, "hidden")
        self.session.screenshot("editor-bluetooth", desk.MARGIN)
        self.editor.push("Image2")
        self.session.answer_box(e2e.OK, BLUETOOTH_ADVICE)
        self.stays(lambda: self.devices() in ([], [NOKIA], [NOKIA, SAMSUNG]))  # rebuilt again and again
        self.editor.choose("Combo3", "USB")
        for control in CABLE_ONLY:
            self.editor.wait_control(control, "visible")
        # The applet has ended, too: a late one would add its usual modem to the next test's phonebook.
        programs = self.session.path("C:\\practice\\programs.txt")
        e2e.wait_for(lambda: os.path.exists(programs) and "ended |" in self.read("programs.txt"), 20, "the applet ends")

    def test_without_a_phone_and_with_one_that_comes(self):
        self.unplug("COM5", "nokia")
        self.unplug("COM7", "samsung")
        self.add()
        self.editor.click("Check1")
        self.wait_devices(NO_MODEM)
        self.editor.wait_text("Combo1", NO_MODEM)
        self.editor.enter("Text1", "Garden")
        self.editor.enter("Text2", "*99#")
        self.editor.enter("Text3", "internet")
        self.editor.wait_control("Command1", "disabled")  # at the first tick
        self.stays(lambda: not self.editor.control("Command1")["enabled"])
        self.phones_do("plug COM16 samsung", "COM16 plugged")
        self.addCleanup(self.phones_do, "unplug COM16", "COM16 unplugged")
        self.editor.click("Check1")
        self.wait_devices(NOKIA, SAMSUNG)
        self.editor.click("Check1")
        self.wait_devices(SAMSUNG)
        self.editor.wait_control("Command1", "enabled")

    def test_a_modem_that_is_added_meanwhile_is_found(self):
        self.write("installers.txt", "applet takes 3000\napplet adds COM9 A Third Modem\n")  # so long it is looked at
        self.add()
        self.editor.click("Command4")
        e2e.wait_for(lambda: self.editor.text("Combo1") == "", 5, "the list is being rebuilt")
        self.assertEqual(self.editor.combo("Combo1")["selected"], -1)
        self.wait_devices(NOKIA, SAMSUNG, "A Third Modem")
        self.editor.wait_text("Combo1", NOKIA)
        self.assertEqual(self.editor.combo("Combo1")["selected"], 0)

    def silent_phone(self):
        self.phones_do("plug COM3 no_maker", "COM3 plugged")
        self.addCleanup(self.session.tell_phones, "unplug COM3")
        self.add()
        asked = lambda: self.session.phones.log().count("COM3 > AT+cgmi")
        before = asked()
        for _ in range(3):  # a phone that is kept from its first answer for a quarter of a second is passed over
            self.editor.click("Check1")
            with contextlib.suppress(e2e.Failure):
                return e2e.wait_for(lambda: asked() > before, 5, "the question")  # which gets nothing but an echo
            self.editor.click("Check1")
        self.fail("the phone is not asked who made it")

    def test_the_window_lives_while_a_phone_is_waited_for_and_cancel_ends_it(self):
        self.silent_phone()
        self.editor.enter("Text1", "typed meanwhile")
        before = self.editor.info()["rect"]
        self.editor.drag("captionLabel", 30, 20)
        e2e.wait_for(lambda: self.editor.info()["rect"] != before, 5, "the window is moved")
        self.editor.click("Command3")
        self.editor.wait("gone")
        self.stays(lambda: self.visible() == ["Form1"] and self.program.alive)
        self.add()  # the port is free and everything works
        self.wait_devices(NOKIA, SAMSUNG)

    def test_closing_the_program_while_a_phone_is_waited_for(self):
        self.silent_phone()
        self.main.push("Label3")  # the editor lies over it
        self.wait_ended()

    def test_a_cable_pulled_while_its_phone_is_waited_for_is_a_run_time_error(self):
        self.silent_phone()
        self.phones_do("unplug COM3", "COM3 unplugged")
        box = self.session.answer_box(e2e.OK)
        self.assertIn("Run-time error '80", box["text"])
        self.wait_ended()

    def test_a_second_click_while_a_phone_is_waited_for(self):
        self.silent_phone()
        self.editor.click("Check1")  # no validation any more: all are listed, and the wait goes on
        self.wait_devices(NOKIA, SAMSUNG)
        self.editor.click("Check1")
        self.wait_devices()
        self.editor.click("Command3")
        self.editor.wait("gone")
        self.stays(lambda: self.visible() == ["Form1"] and self.program.alive)

    def test_bad_input(self):
        self.add()
        self.fill("  ")
        self.editor.click("Command1")
        self.session.answer_box(e2e.OK, "Please fill in the name")
        self.fill("n" * 260)
        self.editor.click("Command1")
        box = self.session.answer_box(e2e.OK)
        self.assertTrue(box["text"])
        self.fill("a*b")
        self.editor.click("Command1")
        self.session.answer_box(e2e.OK)
        self.wait_entries(OFFICE, HOME, WORK)
        self.editor.click("Label11")
        self.editor.enter("Text4", "a.b.c.d")
        self.editor.click("Command1")
        box = self.session.wait_box()
        self.assertIn("Run-time error '13':\n\nType mismatch", box["text"].replace("\r", ""))
        self.session.answer_box(e2e.OK)
        self.wait_ended()
        self.begin()
        self.wait_entries(OFFICE, HOME, WORK)

    def test_a_script_that_chooses_by_message_is_heard(self):
        self.add()
        self.fill("Garden")
        self.editor.pick("Combo1", SAMSUNG)
        self.editor.push("Command1")
        self.editor.wait("hidden")
        self.wait_entries(OFFICE, HOME, WORK, "Corvanti-Garden")
        self.edit("Corvanti-Garden")
        self.editor.wait_text("Combo1", SAMSUNG)


if __name__ == "__main__":
    unittest.main()
