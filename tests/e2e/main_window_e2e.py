"""The main window: its list and menu, its marks and keys, every resolution, a system without a dial-up service."""

import os
import shutil
import tempfile
import unittest

import pelvaro_e2e as e2e
from desk import (DISCONNECTED, Desk, FAILED, HOME, LIMIT_LABELS, LVM_GETTOPINDEX, MARGIN, OFFICE, PASSWORD, WORK,
                  compiled, phonebook)


class MainWindow(Desk):
    """On a display without a window manager."""

    def drag_and_check(self, form, grab, dx, dy):
        left, top = form.info()["rect"][:2]
        x, y = (left + grab[0], top + grab[1]) if isinstance(grab, tuple) else form.centre(grab)
        self.session.point(x, y)
        self.session.driver.call("drag", x, y, x + dx, y + dy)
        now = lambda: form.info()["rect"][:2]
        e2e.wait_for(lambda: now() == [left + dx, top + dy], 5, lambda: "the window lies at %r" % now())

    def test_the_main_window_opens(self):
        self.assert_laid_out("Form1")
        controls = self.main.controls()
        self.assertEqual([n for n in controls if not controls[n]["visible"]], list(LIMIT_LABELS))
        self.assertEqual([n for n in controls if not controls[n]["enabled"]], ["Image2"])
        self.assertEqual(self.main.list("ListView1"),
                         {"count": 3, "columns": 1, "selected": -1, "rows": [[OFFICE], [HOME], [WORK]]})
        self.wait_focus("ListView1")
        self.assertEqual(self.visible(), ["Form1"])

    def test_the_selected_row_is_drawn_from_edge_to_edge(self):
        right = self.main.control("ListView1")["rect"][2]
        selected, white = [207, 224, 251], [255, 255, 255]
        for row, expected in ((0, (selected, white)), (1, (white, selected))):
            self.main.choose_row("ListView1", row)
            for i in (0, 1):
                top, bottom = self.session.driver.call("list-rect", "Pelvaro.Form1", "ListView1", i)[1::2]
                colour = lambda: self.session.driver.call("pixel", right - 4, (top + bottom) // 2)
                e2e.wait_for(lambda: colour() == expected[i], 5, lambda: "row %d ends in %r" % (i, colour()))

    def test_the_popup_menu_deletes(self):
        self.main.choose_row("ListView1", HOME, "right")
        self.session.choose_menu(2)
        self.main.wait_rows("ListView1", 2)
        self.assertEqual(self.main.rows("ListView1"), [[OFFICE], [WORK]])
        self.assertIn("[entry Corvanti-Office]", self.read("phonebook.txt"))
        self.assertNotIn("[entry Corvanti-Home]", self.read("phonebook.txt"))
        self.assertEqual(self.journal("deleteEntry"), ["deleteEntry entry=Corvanti-Home -> 0"])
        self.main.choose_row("ListView1", 0)  # the menu does not come back with another choice
        self.session.keys("down")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 1, 5, "the next row is selected")
        self.stays(lambda: not self.session.driver.call("menus"), 0.2)

    def test_the_menu_key_opens_the_same_menu(self):
        self.session.keys("apps")  # without a selected row there is none
        self.stays(lambda: not self.session.driver.call("menus"), 0.2)
        self.session.keys("down")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 0, 5, "the first row is selected")
        self.session.keys("apps")
        self.session.close_menu()
        self.session.keys("apps")
        self.session.choose_menu(2)
        self.main.wait_rows("ListView1", [[HOME], [WORK]].__eq__)

    def test_a_right_click_beside_the_rows_opens_nothing(self):
        left, _, _, bottom = self.main.control("ListView1")["rect"]
        self.session.point(left + 20, bottom - 20)
        self.session.driver.call("click-at", left + 20, bottom - 20, "right")
        self.stays(lambda: not self.session.driver.call("menus"), 0.2)
        self.assertEqual(self.main.list("ListView1")["selected"], -1)

    def test_the_menu_s_edit_harms_nothing(self):
        self.main.choose_row("ListView1", OFFICE, "right")
        self.session.choose_menu(1)
        self.main.wait("visible")
        self.assertEqual(len(self.main.rows("ListView1")), 3)
        self.assertTrue(self.program.alive)

    def test_all_entries_are_deleted_one_by_one(self):
        for left in (2, 1, 0):
            self.main.choose_row("ListView1", 0, "right")
            self.session.choose_menu(2)
            self.main.wait_rows("ListView1", left)
        self.assertNotIn("[entry", self.read("phonebook.txt"))
        self.assertEqual(self.main.text("statuslbl"), DISCONNECTED)
        self.main.click("Image2")  # it stays usable; without a choice nothing can be dialed
        self.prompt.wait("foreground")
        self.wait_focus("Text1")
        self.sign_in()
        self.status.wait("foreground")
        self.assertEqual(self.journal("dial"), [])

    def test_the_windows_are_dragged_by_their_surface(self):
        self.drag_and_check(self.main, (8, 200), -60, 40)
        self.drag_and_check(self.main, "Label8", 30, -50)
        self.drag_and_check(self.main, "statuslbl", 25, 15)
        self.open_prompt()
        self.drag_and_check(self.prompt, (8, 100), 80, -30)
        self.drag_and_check(self.prompt, "Label1", -40, 20)
        self.session.driver.call("move", 700, 300)  # let go: it does not follow any more
        rect = self.prompt.info()["rect"]
        self.stays(lambda: self.prompt.info()["rect"] == rect, 0.2)

    def test_the_minimise_mark(self):
        self.main.click("Label6")
        self.main.restore()
        e2e.wait_for(self.focus, 5, "one of the controls has the focus")
        self.open_prompt()

    def test_letters_choose_the_entry_that_begins_with_them(self):
        self.session.keys("w")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 2, 5, "the row Work is selected")
        self.session.keys("x")  # no entry begins with it
        self.stays(lambda: self.main.list("ListView1")["selected"] == 2)

    def test_a_click_at_the_end_of_a_row_is_a_click_on_it(self):
        self.main.choose_row("ListView1", OFFICE)
        right = self.main.control("ListView1")["rect"][2]
        top, bottom = self.session.driver.call("list-rect", "Pelvaro.Form1", "ListView1", 2)[1::2]
        self.session.point(right - 6, (top + bottom) // 2)
        self.session.driver.call("click-at", right - 6, (top + bottom) // 2, "left")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 2, 5, "the row Work is selected")

    def test_the_close_mark_ends_the_program(self):
        self.main.click("Label3")
        self.wait_ended()

    def test_alt_f4_ends_the_program(self):
        self.session.keys("alt+f4")
        self.wait_ended()

    def test_the_program_ends_behind_an_open_menu(self):
        self.main.choose_row("ListView1", OFFICE, "right")
        self.session.wait_menu()
        self.main.close()
        self.wait_ended()

    def test_an_empty_phonebook(self):
        self.begin(book=phonebook())
        self.assertEqual(self.main.list("ListView1")["count"], 0)
        self.assertEqual(self.main.text("statuslbl"), DISCONNECTED)
        self.assertFalse(self.main.control("Image2")["enabled"])
        self.session.keys("down", "apps", "space", "enter", "delete")
        self.stays(lambda: self.visible() == ["Form1"] and not self.session.driver.call("menus"), 0.2)

    def test_escape(self):
        self.session.keys("esc")
        self.stays(lambda: self.program.alive and self.visible() == ["Form1"], 0.3)
        self.open_prompt()
        self.session.keys("esc")
        self.wait_visible("Form1")
        self.main.wait("foreground")
        self.dial(password="wrong-secret")
        self.wait_failed()
        self.session.keys("esc")
        self.wait_visible("Form1")
        self.stays(lambda: self.visible() == ["Form1"], 0.3)
        self.assertEqual(len(self.journal("dial")), 1)

    def test_the_focus_walks_through_every_control(self):
        self.tab_to("Label6", "Label3", "Image1", "Image3", "ListView1")  # nothing to connect yet
        self.session.keys("down")
        self.main.wait_control("Image2", "enabled")
        self.tab_to("Label6", "Label3", "Image1", "Image2", "Image3", "ListView1")
        self.session.keys("shift+tab")
        self.wait_focus("Image3")
        self.session.keys("shift+tab", "enter")
        self.prompt.wait("foreground")
        self.wait_focus("Text1")
        self.tab_to("Text2", "Command1", "Command2", "Label3", "Text1", "Text2", "Command1", "Command2")
        self.session.keys("space")
        self.prompt.wait("gone")
        self.main.wait("foreground")
        self.wait_focus("Image2")

    def test_of_many_entries_the_first_256_are_listed(self):
        self.begin(self.scenario + "entries 300\n")
        view = self.main.list("ListView1")
        self.assertEqual((view["count"], len(view["rows"])), (256, 256))
        self.assertEqual((view["rows"][0], view["rows"][255]), ([OFFICE], ["Extra 256"]))
        left, top = self.main.control("ListView1")["rect"][:2]
        first = lambda: self.session.driver.call("send", "Pelvaro.Form1", "ListView1", LVM_GETTOPINDEX)
        self.session.point(left + 40, top + 40)
        self.session.driver.call("wheel", -2)
        e2e.wait_for(lambda: first() > 0, 5, "the list is scrolled")
        self.session.keys("end")
        e2e.wait_for(lambda: self.main.list("ListView1")["selected"] == 255, 5, "the last row is selected")
        e2e.wait_for(lambda: first() == 250, 5, "the last rows are seen")  # there is room for six
        self.session.screenshot("dialing-256-entries", MARGIN)
        self.session.keys("home")
        e2e.wait_for(lambda: first() == 0, 5, "the first row is seen")
        self.assertEqual(self.main.text("statuslbl"), DISCONNECTED)

    def test_more_connections_than_are_looked_at(self):
        self.begin(self.scenario + "connections 300\n")
        self.dial()
        e2e.wait_for(lambda: self.journal("notify")[-1:] == ["notify state=0x2000 error=0"], 5, "it is connected")
        self.stays(lambda: self.main.text("statuslbl") == DISCONNECTED, 0.3)

    def test_names_are_shown_as_they_are(self):
        printable = bytes(c for c in range(0x21, 0x100) if c not in (0x7F, 0x81, 0x8D, 0x8F, 0x90, 0x9D, 0xA0))
        names = ["W" * 256, "50 % off & more %s%n && \"x\"", printable.decode("cp1252"), "i" * 60, "&File"]
        self.begin(book=phonebook(*names))
        self.assertEqual(self.main.rows("ListView1"), [[name] for name in names])
        self.session.screenshot("dialing-names", MARGIN)
        right = self.main.control("ListView1")["rect"][2]
        top, bottom = self.session.driver.call("list-rect", "Pelvaro.Form1", "ListView1", 0)[1::2]
        for x in range(right - 7, right - 2):  # cut in front of the list's edge
            colour = lambda: self.session.driver.call("pixel", x, (top + bottom) // 2)
            e2e.wait_for(lambda: colour() == [255, 255, 255], 5, lambda: "at %d it is %r" % (x, colour()))
        for name in names[1:3]:
            self.connect(name)
            self.main.click("Image2")
            self.wait_disconnected()
            self.begin(book=phonebook(*names))

    def test_a_library_beside_the_program_is_not_loaded(self):
        folder = self.session.path("C:\\planted")
        os.makedirs(folder)
        source = r"""#include <windows.h>
            BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
              CloseHandle(CreateFileA("C:\\planted\\loaded.txt", GENERIC_WRITE, 0, 0, CREATE_ALWAYS, 0, 0));
              return TRUE;
            }
            __declspec(dllexport) void CALLBACK Nothing(HWND w, HINSTANCE i, LPSTR s, int n) {}"""
        compiled(folder, source)
        loaded = os.path.join(folder, "loaded.txt")
        probe = self.session.run("rundll32.exe", "C:\\planted\\rasapi32.dll,Nothing", directory=folder)
        e2e.wait_for(lambda: os.path.exists(loaded) and not probe.alive, 20, "the planted library can be loaded")
        os.remove(loaded)
        copy = os.path.join(folder, "pelvaro.exe")
        shutil.copy(self.exe, copy)
        self.program.stop()
        self.program = self.session.run(copy, directory=folder)
        self.addCleanup(self.program.stop)
        self.main.wait("visible", 20)
        self.assertEqual(self.main.rows("ListView1"), [[OFFICE], [HOME], [WORK]])
        self.connect()
        self.assertFalse(os.path.exists(loaded))


class Sharp(Desk):
    """At another resolution every window keeps its proportions."""

    scenario = "pace 50\ntimeout 3000\n"

    def test_the_windows_are_scaled(self):
        self.assert_laid_out("Form1")
        self.session.screenshot("dialing-%d-main" % self.dpi, MARGIN)
        self.open_prompt()
        self.assert_laid_out("Form4")
        self.sign_in(password="wrong-secret")
        self.wait_failed()
        self.assert_laid_out("frmStatus", {"Label1": FAILED, "Command1": "Retry"})
        self.session.screenshot("dialing-%d-failed" % self.dpi, MARGIN)
        self.session.keys("esc")
        self.prompt.wait("hidden")
        self.main.click("Image2")
        self.prompt.wait("foreground")
        self.prompt.enter("Text2", PASSWORD)
        self.session.keys("enter")
        self.wait_connected()
        self.session.point(5, 5)
        self.session.screenshot("dialing-%d-connected" % self.dpi, MARGIN)
        self.main.click("Image2")
        self.wait_disconnected()
        self.assert_laid_out("Form5")


class At120(Sharp):
    dpi = 120


class At144(Sharp):
    dpi = 144


class At192(Sharp):
    dpi = 192


del Sharp  # only its descendants are run


class MissingFunction(e2e.Case):
    """A system whose dial-up service lacks a function."""

    phones, exe = None, None
    stub = r"""#include <windows.h>
        #include <string.h>
        #define EXPORT __declspec(dllexport) DWORD WINAPI
        EXPORT RasEnumEntriesA(LPCSTR r, LPCSTR book, char* records, DWORD* size, DWORD* count) {
          strcpy(records + 4, "Lonely");
          *size = 264;
          *count = 1;
          return 0;
        }
        EXPORT RasGetEntryPropertiesA(LPCSTR b, LPCSTR e, LPVOID r, DWORD* s, LPVOID d, DWORD* n) { return 623; }
        EXPORT RasGetEntryDialParamsA(LPCSTR book, LPVOID params, BOOL* saved) { return 623; }
        EXPORT RasHangUpA(HANDLE connection) { return 6; }
        EXPORT RasDialA(LPVOID x, LPCSTR b, LPVOID p, DWORD t, LPVOID n, HANDLE* c) { return 600; }"""

    @classmethod
    def setUpClass(cls):
        cls.dlls = tempfile.mkdtemp(prefix="pelvaro-stub-")
        cls.addClassCleanup(shutil.rmtree, cls.dlls)
        compiled(cls.dlls, cls.stub)
        super().setUpClass()

    def test_it_is_named_once_and_the_program_goes_on(self):
        program = self.session.run(os.path.join(e2e.BUILD, "dist", "pelvaro.exe"))
        box = self.session.answer_box(e2e.OK, limit=20)  # a program that starts has so long everywhere
        self.assertIn("RasEnumConnectionsA", box["text"])
        self.assertIn("rasapi32.dll", box["text"])
        main = self.window("Form1").wait("foreground")
        main.choose_row("ListView1", "Lonely")
        main.click("Image2")
        self.window("Form4").wait("foreground")
        with self.assertRaises(e2e.Failure):  # the poll has asked for it many times by now
            self.session.wait_box(0.5)
        main.click("Label3")
        e2e.wait_for(lambda: not program.alive, 20, "the program ends")
        self.assertEqual(program.process.returncode, 0)


class MissingLibrary(e2e.Case):
    """Without the practice line the system has a dial-up service that can do nothing."""

    phones, exe = None, None

    @classmethod
    def setUpClass(cls):
        cls.dlls = tempfile.mkdtemp(prefix="pelvaro-empty-")
        cls.addClassCleanup(shutil.rmtree, cls.dlls)
        super().setUpClass()

    def test_the_program_opens_with_an_empty_list(self):
        program = self.session.run(os.path.join(e2e.BUILD, "dist", "pelvaro.exe"))
        main = self.window("Form1").wait("foreground", 20)
        self.assertEqual(main.rows("ListView1"), [])
        self.assertEqual(main.text("statuslbl"), DISCONNECTED)
        self.assertFalse(main.control("Image2")["enabled"])
        main.click("Label3")
        e2e.wait_for(lambda: not program.alive, 20, "the program ends")
        self.assertEqual(program.process.returncode, 0)

    def test_a_library_that_is_not_there_is_named_once(self):
        library = self.session.path("C:\\windows\\system32\\rasapi32.dll")
        os.rename(library, library + ".away")
        self.addCleanup(os.rename, library + ".away", library)
        program = self.session.run(os.path.join(e2e.BUILD, "dist", "pelvaro.exe"))
        box = self.session.answer_box(e2e.OK, limit=20)
        self.assertIn("rasapi32.dll", box["text"])
        # Every other function of it is missing too, but that is the same piece of news.
        main = self.window("Form1").wait("foreground")
        self.assertEqual(main.rows("ListView1"), [])
        with self.assertRaises(e2e.Failure):
            self.session.wait_box(0.3)
        main.click("Label3")
        e2e.wait_for(lambda: not program.alive, 20, "the program ends")


if __name__ == "__main__":
    unittest.main()
