"""The operator picker and its row editor: choosing, editing, saving, and every state of the list files."""

import os
import shutil
import subprocess
import tempfile
import unittest

import desk
import pelvaro_e2e as e2e
import editor_e2e
from editor_e2e import NOKIA, SAMSUNG

FOLDER = "C:\\Pelvaro"
DELIVERED, OWN = FOLDER + "\\Default.DAT", FOLDER + "\\Default2.DAT"
SETTING = "HKCU\\Software\\Pelvaro\\Setting"
SAVED, NOT_SAVED = "File saved.", "Fail to save file."
MISSING = "File not found, please reinstall."
NOT_FOUND = "Run-time error '53':\n\nFile not found"
NO_ACCESS = "Run-time error '75':\n\nPath/File access error"

HEADER = "Country/ City,Operator,APN,User Name,Password,Primary DNS,Secondary DNS,Plan,Code,Type,Notes"
NORLINE = "Lisbon,Norline,internet.norline,[blank],[blank],192.0.2.1,192.0.2.2,Mobile,268-01,postpaid,by cable"
TELVIRA = "Porto,Telvira,data.telvira,guest,prac[blank]tice,198.51.100.7,,Prepaid,268-03,prepaid,"
MARISOL = "Lisbon,Marisol,marisol,,,,,,,,"

BOXES = ["Text1(%d)" % i for i in range(10)]
LABELS = ["Label1(%d)" % i for i in range(10)]

desk.FORMS["Form3"] = ("Pelvaro - Operators", (600, 364), {
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
desk.FORMS["frmEdit"] = ("Pelvaro - Edit", (568, 268), {
    "captionLabel": ("Static", "Pelvaro - Edit", 16, 5, 507, 20),
    "closeMark": ("Button", "Close", 531, 1, 36, 27),
    **{LABELS[i]: ("Static", "", 16 + i // 5 * 280, 44 + i % 5 * 32, 88, 24) for i in range(10)},
    **{BOXES[i]: ("Edit", "", 112 + i // 5 * 280, 44 + i % 5 * 32, 160, 24) for i in range(10)},
    "Command1": ("Button", "OK", 368, 224, 88, 28),
    "Command2": ("Button", "Cancel", 464, 224, 88, 28),
})

HOLDER = r"""#include <stdio.h>
#include <windows.h>
int main(int count, char** words) {
  HANDLE file = CreateFileA(words[count - 1], GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
  puts(file == INVALID_HANDLE_VALUE ? "refused" : "held");
  fflush(stdout);
  Sleep(INFINITE);
}"""


def list_file(*records):
    """A list file. Both keys of every line are equal, so that each character stands as it is before its marker."""
    lines = ("".join(c + ("+" if ord(c) < 127 else "-") for c in text) for text in (HEADER,) + records)
    return "".join("\0%s\0\r\n" % line for line in lines).encode("cp1252")


SMALL = list_file(NORLINE, TELVIRA, MARISOL)


def read_list(file):
    """The lines of a list file, whatever their keys."""
    with open(file, "rb") as stream:
        lines = stream.read().split(b"\r\n")
    shift = lambda line: abs(line[0] - line[-1])
    sign = lambda marker, d: {ord("-"): 1, ord("+"): -1}[marker - d]
    text = lambda pairs, d: bytes(pairs[i] + d * sign(pairs[i + 1], d) for i in range(0, len(pairs), 2))
    return [text(line[1:-1], shift(line)).decode("cp1252") for line in lines[:-1]] + lines[-1:]


class Operators(editor_e2e.Editor):
    """The program runs from a folder of its own, so that the list it saves goes with the prefix."""

    @classmethod
    def prepare(cls):
        cls.delivered = os.path.join(os.path.dirname(cls.exe), "Default.DAT")
        shutil.copytree(os.path.dirname(cls.exe), cls.session.path(FOLDER))
        cls.exe = os.path.join(cls.session.path(FOLDER), "pelvaro.exe")
        super().prepare()

    def setUp(self):
        if not self.fresh:
            self.program.stop()
            own = self.session.path(OWN)
            if os.path.exists(own):
                os.rmdir(own) if os.path.isdir(own) else os.remove(own)
            self.registry("delete", SETTING, "/v", "path", "/f")
        self.put(DELIVERED, SMALL)
        super().setUp()

    def hold_windows(self):
        super().hold_windows()
        self.picker, self.boxes = self.window("Form3"), self.window("frmEdit")

    # Files and the setting.
    def put(self, path, content):
        with open(self.session.path(path), "wb") as file:
            file.write(content)

    def registry(self, *words):
        """What the registry editor of the command line says; nothing when it fails."""
        done = subprocess.run([self.session.environment["WINELOADER"], "reg.exe", *words], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=self.session.environment,
                              timeout=20)
        return "" if done.returncode else done.stdout.decode("cp1252")

    def set_path(self, path):
        if path is None:
            self.registry("delete", SETTING, "/v", "path", "/f")
        else:
            self.registry("add", SETTING, "/v", "path", "/t", "REG_SZ", "/d", path, "/f")
        self.assertEqual(self.chosen_path(), path)

    def chosen_path(self):
        said = self.registry("query", SETTING, "/v", "path")
        return said.split("REG_SZ", 1)[1].strip() if "REG_SZ" in said else None

    def hold(self, path):
        """Another program has the file open and shares it with nobody."""
        exe = self.session.path("C:\\holder.exe")
        if not os.path.exists(exe):
            with tempfile.TemporaryDirectory() as folder:
                source = os.path.join(folder, "holder.c")
                with open(source, "w") as file:
                    file.write(HOLDER)
                subprocess.run(["i686-w64-mingw32-gcc", "-s", "-o", exe, source], check=True)
        holder = self.session.run(exe, path)
        self.addCleanup(holder.stop)
        e2e.wait_for(lambda: holder.log().split()[-1:] == ["held"], 20, "the file is held")
        return holder

    # The user.
    def open_picker(self):
        self.editor.click("Command2")
        self.picker.wait("foreground")

    def place(self):
        return self.picker.combo("Combo1")["text"]

    def operators(self):
        """The names of the operators that are shown."""
        return [row[1] for row in self.picker.rows("ListView2")]

    def double_click(self, row):
        left, top, _, bottom = self.session.driver.call("list-rect", "Pelvaro.Form3", "ListView2", row)
        place = left + 12, (top + bottom) // 2
        self.session.point(*place)
        self.session.driver.call("click-at", *place, "double")

    def pick(self, place, row):
        self.open_picker()
        self.picker.pick("Combo1", place)
        e2e.wait_for(lambda: self.place() == place, 5, place + " is chosen")
        self.picker.wait_rows("ListView2", lambda rows: rows and rows[0][0] == place)  # told by a message of its own
        self.double_click(row)
        self.picker.wait("gone")

    def filled(self):
        """Number, access point and name servers in the editor; user name and password in the prompt."""
        boxes = [self.editor.text(box) for box in ("Text2", "Text3", "Text4", "Text5")]
        return boxes + [self.prompt.text(box) for box in ("Text1", "Text2")]

    def edit_row(self, row=0):
        self.picker.choose_row("ListView2", row)
        self.picker.wait_control("Command3", "enabled")
        self.picker.click("Command3")
        self.boxes.wait("foreground")
        self.wait_focus(BOXES[0])

    def fields(self):
        return [self.boxes.text(box) for box in BOXES]

    def save(self, answer=SAVED):
        self.picker.click("Command2")
        self.session.answer_box(e2e.OK, answer)
        self.picker.wait("foreground")
        if answer == SAVED:
            self.picker.wait_control("Command4", "enabled")  # the last step, behind the setting; the box goes before

    def assert_run_time_error(self, text):
        self.assertEqual(self.session.wait_box()["text"].replace("\r", ""), text)
        self.session.answer_box(e2e.OK)
        self.wait_ended()


class Picking(Operators):
    def test_pick_edit_save_and_restore_with_the_delivered_list(self):
        shutil.copy(self.delivered, self.session.path(DELIVERED))
        self.add()
        self.open_picker()
        self.assert_laid_out("Form3")
        self.assertEqual(self.visible(), ["Form1", "Form2", "Form3"])
        self.assertFalse(self.main.info()["enabled"], "the picker is modal")
        self.assertGreater(len(self.picker.combo("Combo1")["items"]), 140)
        self.picker.choose("Combo1", "Albania")
        rows = self.picker.wait_rows("ListView2", lambda rows: rows and rows[0][0] == "Albania")
        self.assertEqual(len(rows[0]), 11)
        self.session.screenshot("operators", desk.MARGIN)
        self.picker.wait_control("Command3", "disabled")
        self.picker.wait_control("Command4", "disabled")
        self.picker.choose_row("ListView2", 0)
        self.picker.wait_control("Command3", "enabled")
        self.picker.click("Command3")
        self.boxes.wait("foreground")
        self.session.screenshot("operator-edit", desk.MARGIN)
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

    def test_a_samsung_takes_the_user_name_as_its_number(self):
        self.add()
        self.editor.choose("Combo1", SAMSUNG)
        self.pick("Lisbon", 0)
        self.assertEqual(self.filled(), ["[blank]", "internet.norline", "192.0.2.1", "192.0.2.2", "", ""])
        self.pick("Lisbon", 1)
        self.assertEqual(self.filled(), ["*99**1*1#", "marisol", "", "", "", ""])
        self.pick("Porto", 0)
        self.assertEqual(self.filled(), ["guest", "data.telvira", "198.51.100.7", "", "guest", "practice"])
        self.editor.choose("Combo1", NOKIA)
        self.pick("Lisbon", 1)
        self.assertEqual(self.filled(), ["*99#", "marisol", "", "", "", ""])

    def test_what_was_picked_signs_in(self):
        self.add()
        self.pick("Porto", 0)
        self.assertEqual(self.editor.control("Text4")["enabled"], False)
        self.editor.enter("Text1", "Garden")
        self.editor.click("Command1")
        self.editor.wait("hidden")
        self.wait_entries(*[desk.OFFICE, desk.HOME, desk.WORK, "Corvanti-Garden"])
        self.open_prompt("Corvanti-Garden")
        self.session.keys("enter")
        self.wait_connected()

    def test_a_right_click_offers_to_edit(self):
        self.add()
        self.open_picker()
        self.picker.choose_row("ListView2", 1, "right")
        self.session.choose_menu(1)
        self.boxes.wait("foreground")
        self.assertEqual(self.fields(), MARISOL.split(",")[1:])
        self.picker.wait_control("Command3", "enabled")
        self.boxes.click("Command2")
        self.boxes.wait("gone")
        self.picker.choose_row("ListView2", 0, "right")
        self.session.close_menu()
        self.stays(lambda: self.visible() == ["Form1", "Form2", "Form3"])

    def test_by_keyboard_alone(self):
        self.add()
        self.editor.focus_with_tab("Command2")
        self.session.keys("space")
        self.picker.wait("foreground")
        self.wait_focus("Combo1")
        self.tab_to("ListView2", "Command2", "Command1", "closeMark", "Combo1")  # past what is disabled
        self.session.keys("down")
        e2e.wait_for(lambda: self.operators() == ["Telvira"], 5, "the next place is chosen")
        self.session.keys("up")
        e2e.wait_for(lambda: self.operators() == ["Norline", "Marisol"], 5, "the place before is chosen")
        self.tab_to("ListView2")
        self.session.keys("enter")
        self.stays(lambda: self.picker.info() is not None)  # nothing is selected
        self.session.keys("home", "down")
        e2e.wait_for(lambda: self.picker.list("ListView2")["selected"] == 1, 5, "the second row is selected")
        self.tab_to("Command3")
        self.session.keys("space")
        self.boxes.wait("foreground")
        self.wait_focus(BOXES[0])
        self.tab_to(*BOXES[1:], "Command1", "Command2", "closeMark", BOXES[0])
        self.type("Marisol 2")  # over the text that is selected
        self.boxes.wait_text(BOXES[0], "Marisol 2")
        self.session.keys("enter")
        self.boxes.wait("gone")
        self.picker.wait("foreground")
        self.wait_focus("Command3")
        self.assertEqual(self.operators(), ["Norline", "Marisol 2"])
        self.session.keys("shift+tab")
        self.wait_focus("ListView2")
        self.session.keys("enter")
        self.picker.wait("gone")
        self.editor.wait("foreground")
        self.wait_focus("Command2")
        self.assertEqual(self.editor.text("Text3"), "marisol")

    def test_every_way_out(self):
        self.add()
        ways = (lambda form: self.session.keys("esc"), lambda form: self.session.keys("alt+f4"),
                lambda form: form.click("closeMark"))
        for way in ways:
            self.open_picker()
            self.edit_row()
            self.type("other")
            self.boxes.wait_text(BOXES[0], "other")
            way(self.boxes)
            self.boxes.wait("gone")
            self.picker.wait("foreground")
            self.assertEqual(self.operators(), ["Norline", "Marisol"])
            way(self.picker)
            self.picker.wait("gone")
            self.editor.wait("foreground")
        self.open_picker()
        self.edit_row()
        self.picker.click("Command1")  # the boxes go with it
        self.picker.wait("gone")
        self.boxes.wait("gone")
        self.assertEqual(self.visible(), ["Form1", "Form2"])
        self.assertEqual([self.editor.text(box) for box in ("Text2", "Text3")], ["", ""])
        self.assertIsNone(self.prompt.info())

    # The editor of a row.
    def copy(self, text):
        """Puts a text on the clipboard, from a box that takes everything."""
        self.editor.enter("Text1", text)
        self.session.keys("home", "shift+end", "ctrl+c")

    def test_the_ten_columns_of_a_record(self):
        self.add()
        self.open_picker()
        self.edit_row()
        texts = dict(zip(LABELS + BOXES, HEADER.split(",")[1:] + NORLINE.split(",")[1:]))
        self.assert_laid_out("frmEdit", texts)
        self.session.screenshot("operator-boxes", desk.MARGIN)
        for i, box in enumerate(BOXES):
            self.boxes.set_text(box, "field %d" % (i + 1))
        self.boxes.click("Command1")
        self.boxes.wait("gone")
        self.assertEqual(self.picker.rows("ListView2")[0], ["Lisbon"] + ["field %d" % i for i in range(1, 11)])
        self.save()
        changed = "Lisbon," + ",".join("field %d" % i for i in range(1, 11))
        self.assertEqual(read_list(self.session.path(OWN)), [HEADER, changed, TELVIRA, MARISOL, b""])
        self.assertEqual(self.chosen_path(), OWN)
        self.double_click(0)
        self.picker.wait("gone")
        self.assertEqual(self.filled(), ["*99#", "field 2", "field 5", "field 6", "field 3", "field 4"])

    def test_a_comma_is_neither_typed_nor_pasted(self):
        self.add()
        self.copy("a,b,")
        self.open_picker()
        self.edit_row()
        self.session.keys("ctrl+v")  # over the text that is selected
        self.boxes.wait_text(BOXES[0], "ab")
        self.type(",c,")
        self.boxes.wait_text(BOXES[0], "abc")
        self.session.screenshot("operator-comma", desk.MARGIN)
        self.tab_to(BOXES[1])
        self.session.keys("shift+insert")
        self.boxes.wait_text(BOXES[1], "ab")
        self.boxes.click("Command1")
        self.boxes.wait("gone")
        self.assertEqual(self.picker.rows("ListView2")[0], ["Lisbon", "abc", "ab"] + NORLINE.split(",")[3:])

    def test_a_text_without_comma_is_pasted_as_it_is(self):
        self.add()
        self.copy("a;b c")
        self.open_picker()
        self.edit_row()
        self.session.keys("end", "ctrl+v")
        self.boxes.wait_text(BOXES[0], "Norlinea;b c")

    # What is on the disk and in the setting.
    def test_every_state_of_the_setting_leads_to_a_list(self):
        self.add()
        mine = "C:\\practice\\mine.dat"
        self.put(mine, list_file("Faro,Mine,apn,,,,,,,,"))
        states = ((None, "Lisbon"), ("", "Lisbon"), ("C:\\practice\\missing.dat", "Lisbon"), ("C:\\practice", "Lisbon"),
                  ("C:\\" + 293 * "p" + ".dat", "Lisbon"), ("C:\\no\\folder\\at all.dat", "Lisbon"), (mine, "Faro"),
                  (DELIVERED.upper(), "Lisbon"))
        for path, place in states:
            with self.subTest(path=path):
                self.set_path(path)
                self.open_picker()
                self.assertEqual(self.place(), place)
                self.picker.wait_control("Command4", "enabled" if place == "Faro" else "disabled")
                self.session.keys("esc")
                self.picker.wait("gone")
                self.assertEqual(self.chosen_path(), path)

    def test_a_list_that_another_program_holds_ends_the_program(self):
        self.add()
        self.put(OWN, SMALL)
        self.set_path(OWN)
        self.hold(OWN)
        self.editor.click("Command2")
        self.assert_run_time_error(NO_ACCESS)

    def test_without_the_delivered_list(self):
        self.add()
        self.put(OWN, list_file("Faro,Mine,apn,,,,,,,,"))
        self.set_path(OWN)
        os.remove(self.session.path(DELIVERED))
        self.open_picker()
        self.picker.click("Command4")
        self.session.answer_box(e2e.OK, MISSING)
        self.picker.wait("foreground")
        self.assertEqual((self.place(), self.operators(), self.chosen_path()), ("Faro", ["Mine"], OWN))
        self.put(DELIVERED, SMALL)
        self.picker.click("Command4")
        self.picker.wait_control("Command4", "disabled")
        self.assertEqual((self.place(), self.chosen_path()), ("Lisbon", DELIVERED))
        self.session.keys("esc")
        self.picker.wait("gone")
        os.remove(self.session.path(DELIVERED))
        self.editor.click("Command2")
        self.assert_run_time_error(NOT_FOUND)

    def test_a_list_that_cannot_be_saved(self):
        self.add()
        own = self.session.path(OWN)
        old = list_file("Faro,Mine,apn,,,,,,,,")
        self.open_picker()
        os.mkdir(own)
        self.save(NOT_SAVED)
        os.rmdir(own)
        self.put(OWN, old)
        os.chmod(own, 0o444)
        self.save(NOT_SAVED)
        os.chmod(own, 0o644)
        holder = self.hold(OWN)
        self.save(NOT_SAVED)
        holder.stop()
        with open(own, "rb") as file:
            self.assertEqual(file.read(), old)
        self.assertEqual(sorted(name for name in os.listdir(os.path.dirname(own)) if ".DAT" in name),
                         ["Default.DAT", "Default2.DAT"])
        self.assertIsNone(self.chosen_path())
        self.picker.wait_control("Command4", "disabled")
        self.save()
        self.assertEqual(read_list(own), [HEADER, NORLINE, TELVIRA, MARISOL, b""])
        self.assertEqual(self.chosen_path(), OWN)
        self.picker.wait_control("Command4", "enabled")

    def test_an_empty_list(self):
        self.add()
        self.put(DELIVERED, b"")
        self.open_picker()
        self.assertEqual((self.picker.combo("Combo1")["items"], self.operators()), ([], []))
        self.session.keys("down", "tab", "down", "enter")
        self.stays(lambda: self.picker.info() is not None and self.program.alive)


class Sharp(Operators):
    """At another resolution and under a window manager, as real desktops have one."""

    managed, dpi = "Y", 144

    def test_edit_and_pick(self):
        self.add()
        self.open_picker()
        self.assert_laid_out("Form3", {"Combo1": "Lisbon"})
        self.edit_row()
        self.assert_laid_out("frmEdit", dict(zip(LABELS + BOXES, HEADER.split(",")[1:] + NORLINE.split(",")[1:])))
        self.session.screenshot("operators-144", desk.MARGIN)
        self.boxes.enter(BOXES[1], "my.apn")
        self.session.keys("enter")
        self.boxes.wait("gone")
        self.picker.wait("foreground")
        self.double_click(0)
        self.picker.wait("gone")
        self.editor.wait("foreground")
        self.assertEqual(self.editor.text("Text3"), "my.apn")


if __name__ == "__main__":
    unittest.main()
