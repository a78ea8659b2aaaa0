"""The driver window and what it installs: from the choice of a phone to files, pending renames and started programs.

The packages are the practice ones; their programs write down how they were called.
"""

import os
import subprocess
import unittest

import desk
import pelvaro_e2e as e2e
from editor_e2e import NOKIA, SAMSUNG, Editor

UNPLUG = "Please remove cable before installing driver."
NO_DRIVER = "No driver available. Please manually install the driver."
NOTHING_CHOSEN = "No items selected"
RESTART = "Restart is needed to take effect. Are you sure to restart now? Please "
FOR_PHONE, FOR_MODEM = RESTART + "connect the phone after restart.", RESTART + "manually add the modem after restart."
PLUG_IN = "Please plug in the cable now & install the modem."
OTHER = "# Other Model #"

PACKAGES = r"C:\Program Files\corvanti\common\driver"
DRIVERS, INF = r"C:\windows\system32\drivers", r"C:\windows\inf"
SETTINGS = r"HKCU\Software\Pelvaro\setting"
PENDING = (r"HKLM\System\CurrentControlSet\Control\Session Manager", "PendingFileRenameOperations")
BY_CABLE, BY_PACKAGE, BY_APPLET = "Siemens S65 USB Modem", "Sony Ericsson K700 USB Modem", "Motorola V3 USB Modem"
WM_CLOSE, CB_SETCURSEL = 0x0010, 0x014E

# How the programs are called. Wine itself puts a path with blanks in quotes where the command line has none.
CABLE = r'{0}\PL-2303 Driver Installer.exe | "{0}\PL-2303 Driver Installer.exe" | show 1'.format(PACKAGES)
PACKAGE = r'{0}\%s\DPInst.exe | "{0}\%s\DPInst.exe" /lm /d /se  /EL /f /sa /Q | show none'.format(PACKAGES)
APPLET = r"C:\windows\system32\MODEM.CPL | RunDLL32 shell32.dll,Control_RunDLL MODEM.CPL,Modems,Add | show 2"

desk.FORMS["frmDriver"] = ("Pelvaro - Drivers", (376, 232), {
    "captionLabel": ("Static", "Pelvaro - Drivers", 16, 5, 315, 20),
    "Label1": ("Static", "Brand", 16, 44, 112, 24),
    "Combo1": ("ComboBox", "Motorola", 136, 44, 224, 24),
    "Label2": ("Static", "Model", 16, 76, 112, 24),
    "Combo2": ("ComboBox", OTHER, 136, 76, 224, 24),
    "Label3": ("Static", "Connection Type", 16, 108, 112, 24),
    "Combo3": ("ComboBox", "USB", 136, 108, 224, 24),
    "Label5": ("Static", "Driver Support", 16, 140, 112, 24),
    "driverlbl": ("Static", "No", 136, 140, 224, 24),
    "Command1": ("Button", "Install", 16, 188, 96, 28),
    "cmdOK": ("Button", "OK", 168, 188, 92, 28),
    "Command3": ("Button", "Exit", 268, 188, 92, 28),
    "Label4": ("Button", "Close", 339, 1, 36, 27),
})


def take(session, form, brand, model):
    """Chooses a phone in the driver window, by message."""
    # The brand is told by a message that may come late and chooses a model itself, also when it was chosen before.
    session.driver.call("send", form.name, "Combo2", CB_SETCURSEL, -1)
    form.pick("Combo1", brand)
    form.wait_text("Combo2", OTHER)
    e2e.wait_for(lambda: model in form.combo("Combo2")["items"], 5, model + " is listed")
    form.pick("Combo2", model)
    form.wait_text("driverlbl", "Yes")


class Installing(Editor):
    """What the classes below share. Every test begins without settings, without driver files, with the editor open."""

    phones = None
    scenario = "pace 50\n"

    @classmethod
    def prepare(cls):
        super().prepare()
        cls.names = {name for _, _, files in os.walk(cls.session.path(PACKAGES)) for name in files}

    def setUp(self):
        self.forget()
        super().setUp()
        # Nobody waits for the applet, whose modem comes after the editor's list was filled, also on a busy machine.
        self.write("installers.txt", "applet takes 1500\n")
        self.add()

    def hold_windows(self):
        super().hold_windows()
        self.form = self.window("frmDriver")

    def forget(self):
        """What the installations of another test have left."""
        for folder in (DRIVERS, INF):
            for name in self.names & set(os.listdir(self.session.path(folder))):
                os.remove(self.file(folder, name))
        self.session.driver.call("registry-delete", SETTINGS)
        self.session.driver.call("registry-delete", *PENDING)

    # The user.
    def open(self):
        self.editor.click("Image2")
        self.form.wait("foreground")

    def take(self, brand, model):
        take(self.session, self.form, brand, model)

    def install(self, brand, model):
        """Up to the first question that the installation itself asks."""
        self.open()
        self.take(brand, model)
        self.form.push("Command1")
        self.session.answer_box(e2e.OK, UNPLUG)

    def decline(self, question, after=()):
        """Answers No, when these programs have run."""
        self.session.wait_box()
        self.wait_calls(*after)
        self.session.answer_box(e2e.NO, question)

    def wait_done(self, *modems):
        """The window is gone; the editor lists these modems and has chosen none."""
        self.form.wait("gone")
        self.editor.wait("foreground")
        self.wait_devices(NOKIA, SAMSUNG, *modems)
        self.assertEqual((self.editor.combo("Combo1")["selected"], self.editor.text("Combo1")), (-1, ""))

    # The observer.
    def models(self):
        return self.form.combo("Combo2")["items"]

    def chosen(self):
        return [self.form.text(box) for box in ("Combo1", "Combo2", "Combo3", "driverlbl")]

    def written(self, control):
        """Whether something is drawn where the control's text stands."""
        left, top, _, bottom = self.form.control(control)["rect"]
        dot = lambda x: self.session.driver.call("pixel", x, (top + bottom) // 2)
        return any(dot(x) != [255, 255, 255] for x in range(left + 6, left + 60))

    def setting(self, key):
        return self.session.driver.call("registry", SETTINGS, key)

    def settings(self):
        return [self.setting(key) for key in ("brand", "model", "type")]

    def pending(self):
        return self.session.driver.call("registry", *PENDING)

    def file(self, folder, name):
        return os.path.join(self.session.path(folder), name)

    def content(self, folder, name):
        with open(self.file(folder, name)) as file:
            return file.read()

    def lay(self, folder, *names):
        for name in names:
            with open(self.file(folder, name), "w") as file:
                file.write("the old one")

    def assert_files(self, folder, names, package):
        """Of all practice files exactly these lie in the folder; each came from the package named."""
        self.assertEqual(sorted(self.names & set(os.listdir(self.session.path(folder)))), sorted(names))
        for name in names:
            self.assertIn(" of %s. " % package.get(name, package[""]), self.content(folder, name))

    def calls(self, word):
        """The lines of the practice programs that begin so, without it and without the folder they ran in."""
        with open(self.session.path(r"C:\practice\programs.txt"), "a+", encoding="cp1252") as file:
            file.seek(0)
            lines = [line.rstrip("\n") for line in file]
        return [line.split(" | ", 1)[1].split(" | in ")[0] for line in lines if line.startswith(word)]

    def wait_calls(self, *expected):
        """Exactly these programs were started, in this order, and all of them have ended."""
        ended = lambda: len(self.calls("ended")) >= len(expected)
        e2e.wait_for(ended, 20, lambda: "the programs end; so far %r" % self.calls(""))
        self.assertEqual(self.calls("started"), list(expected))

    def without(self, path):
        """Takes a file or folder of the packages away for the time of a test."""
        there = self.session.path(PACKAGES + "\\" + path)
        os.rename(there, there + ".away")
        self.addCleanup(os.rename, there + ".away", there)

    def unwritable(self, folder):
        """Puts a folder there in which nothing can be made."""
        there = self.session.path(folder)
        os.rename(there, there + ".away")
        self.addCleanup(os.rename, there + ".away", there)
        os.symlink("/sys/kernel", there)
        self.addCleanup(os.remove, there)


class DriverWindow(Installing):
    def test_first_start(self):
        self.open()
        self.assert_laid_out("frmDriver")
        self.assertEqual(self.visible(), ["Form1", "Form2", "frmDriver"])
        self.wait_focus("Combo1")
        self.assertEqual(self.form.combo("Combo1")["items"], ["Motorola", "Nokia", "Samsung", "Siemens", "Sony Ericsson"])
        self.assertEqual(self.form.combo("Combo3")["items"], ["USB", "Bluetooth"])
        self.assertEqual(self.models()[:3] + self.models()[-2:], [OTHER, "C975", "E398", "C350", "V220"])
        self.assertEqual(self.settings(), [None] * 3)
        self.session.screenshot("drivers", desk.MARGIN)

    def test_linked_lists_and_driver_support(self):
        self.open()
        self.form.choose("Combo1", "Nokia")
        nokia = self.models()
        self.assertEqual((len(nokia), nokia[0], nokia[-1]), (22, OTHER, "6230"))
        self.assertEqual(self.chosen(), ["Nokia", OTHER, "USB", "No"])
        self.form.choose("Combo2", "6100")
        self.form.wait_text("driverlbl", "Yes")
        self.form.choose("Combo3", "Bluetooth")
        self.form.wait_text("driverlbl", "No")
        self.form.choose("Combo3", "USB")
        self.form.wait_text("driverlbl", "Yes")
        self.session.screenshot("drivers-chosen", desk.MARGIN)
        self.form.choose("Combo1", "Sony Ericsson")
        self.assertEqual(self.chosen(), ["Sony Ericsson", OTHER, "USB", "No"])
        self.assertEqual(len(self.models()), 26)
        self.form.choose("Combo1", "Samsung")
        self.assertEqual((len(self.models()), self.models()[-1]), (60, "D508"))
        self.form.choose("Combo1", "Siemens")
        self.assertEqual(self.models(), [OTHER, *"C65 CF62 M55 MC60 S55 S57 SL55 SL5C S65 A60 A65".split()])

    def test_an_installation_by_keyboard_alone(self):
        self.open()
        self.wait_focus("Combo1")
        self.session.keys("end")
        self.form.wait_text("Combo1", "Sony Ericsson")
        self.tab_to("Combo2")
        self.session.keys("end")
        self.form.wait_text("Combo2", "W810i")
        self.tab_to("Combo3", "Command1", "cmdOK", "Command3", "Label4", "Combo1")
        self.session.keys("enter")
        for text, keys in ((UNPLUG, ["enter"]), (FOR_PHONE, ["tab", "enter"]), (PLUG_IN, ["enter"])):
            focus = lambda: self.session.driver.call("focus")
            shown = lambda: [box["text"] for box in self.session.boxes()] == [text]
            ready = lambda: shown() and (focus()["foreground"], focus()["focus"]) == ("#32770", "Button")
            e2e.wait_for(ready, 10, "the box \"%s\"" % text)
            self.session.keys(*keys)
        self.wait_done(BY_PACKAGE)
        self.wait_calls(PACKAGE % ("SE", "SE"))
        self.assertEqual(self.settings(), ["4", "25", "0"])

    def test_ways_to_close(self):
        for close in (lambda: self.session.keys("esc"), lambda: self.form.click("Label4"),
                      lambda: self.form.click("Command3"), lambda: self.session.keys("alt+f4")):
            self.open()
            self.take("Nokia", "6230")
            close()
            self.form.wait("gone")
            self.editor.wait("foreground")
        self.open()
        self.assertEqual(self.chosen(), ["Motorola", OTHER, "USB", "No"])
        self.take("Siemens", "S65")
        self.form.click("cmdOK")
        self.form.wait("hidden")
        self.editor.wait("foreground")
        self.assertTrue(self.form.info())
        self.open()
        self.assertEqual(self.chosen(), ["Siemens", "S65", "USB", "Yes"])
        self.assertEqual(self.settings(), [None] * 3)

    def test_the_window_is_dragged_by_its_surface(self):
        self.open()
        for part in ("captionLabel", "Label5"):
            left, top = self.form.info()["rect"][:2]
            self.form.drag(part, 30, -20)
            place = lambda: self.form.info()["rect"][:2]
            e2e.wait_for(lambda: place() == [left + 30, top - 20], 5, lambda: "it lies at %r" % place())

    def test_settings(self):
        self.open()
        self.take("Samsung", "C120")
        self.form.pick("Combo3", "Bluetooth")
        self.form.wait_text("driverlbl", "No")
        self.form.push("Command1")  # a driver is installed though the support text says "No"
        self.session.answer_box(e2e.OK, UNPLUG)
        self.decline(FOR_MODEM)
        self.form.wait("gone")
        self.assertEqual(self.settings(), ["2", "15", "1"])
        self.wait_ended_calls(2)
        self.begin()
        self.add()
        self.open()
        self.assertEqual(self.chosen(), ["Samsung", "C120", "Bluetooth", "No"])
        self.form.push("Command3")
        self.form.wait("gone")
        for brand, model, kind, seen in (
                ("rubbish", "", "1e", ["Motorola", OTHER, "USB", "No"]),
                ("5", "3", "2", ["Motorola", "E550", "USB", "Yes"]),
                ("1", "22", "1", ["Nokia", OTHER, "Bluetooth", "No"]),
                ("99999999999", "30", "-2", ["Motorola", "V220", "USB", "Yes"]),
                ("3", "-1", "0", ["Siemens", "", "USB", "Yes"])):
            with self.subTest(brand=brand, model=model, type=kind):
                for key, value in (("brand", brand), ("model", model), ("type", kind)):
                    self.session.driver.call("registry-set", SETTINGS, key, value)
                self.editor.push("Image2")
                self.form.wait("foreground")
                self.assertEqual(self.chosen(), seen)
                self.form.push("Command3")
                self.form.wait("gone")

    def wait_ended_calls(self, count):
        e2e.wait_for(lambda: len(self.calls("ended")) == count, 20, "the programs end")

    def test_nothing_chosen(self):
        self.open()
        self.session.driver.call("send", self.form.name, "Combo2", CB_SETCURSEL, -1)
        self.form.push("Command1")
        self.session.answer_box(e2e.OK, NOTHING_CHOSEN)
        self.wait_done()
        self.assertEqual(self.settings(), ["0", "-1", "0"])
        self.open()
        self.assertEqual(self.chosen(), ["Motorola", "", "USB", "Yes"])
        e2e.wait_for(lambda: self.written("Combo2"), 5, "the words that ask for a choice")
        self.session.screenshot("drivers-nothing-chosen", desk.MARGIN)

    def test_an_other_model_leaves_the_window_open_with_an_hourglass(self):
        shape = lambda: self.session.driver.call("pointer-shape")
        self.open()
        self.session.point(*self.form.centre("driverlbl"))
        arrow = e2e.wait_for(shape, 5, "a pointer")
        self.form.push("Command1")
        self.session.answer_box(e2e.OK, NO_DRIVER)
        self.form.wait("foreground")
        (hourglass,) = e2e.wait_for(lambda: {shape()} - {0, arrow}, 5, "the pointer changes")
        for control in ("captionLabel", "Combo1", "Command3"):
            self.session.point(*self.form.centre(control))
            self.stays(lambda: shape() == hourglass, 0.1)
        self.assertEqual(self.settings(), ["0", "0", "0"])
        self.form.click("Command3")
        self.form.wait("gone")
        self.open()
        self.session.point(*self.form.centre("driverlbl"))
        e2e.wait_for(lambda: shape() == arrow, 5, "the arrow is back")


class Installation(Installing):
    def test_motorola(self):
        new = {"": "MT\\win2k", "mt_com.sys": "MT", "mt_port.sys": "MT"}
        self.install("Motorola", "V600")  # 01
        self.decline(FOR_PHONE)
        self.wait_done()
        self.wait_calls(APPLET)
        self.assert_files(DRIVERS, ["mt_com.sys", "mt_port.sys", "USB serial port.sys"], new)
        self.assert_files(INF, ["mt_modem.inf"], new)
        self.assertEqual(len(self.pending()), 2)  # mt_com.sys is in both folders
        self.session.driver.call("registry-delete", *PENDING)
        self.editor.push("Command3")
        self.editor.wait("gone")
        self.add()
        self.wait_devices(NOKIA, SAMSUNG, BY_APPLET)
        self.install("Motorola", "V3x")  # 04, with all its files there
        self.assertEqual(self.session.answer_box(e2e.NO, caption=None)["caption"], "Confirm file overwrite")
        self.decline(FOR_PHONE, [APPLET])
        self.wait_done(BY_APPLET)
        self.wait_calls(APPLET, APPLET)
        self.assertEqual(len(self.pending()), 8)
        self.assert_files(DRIVERS, ["mt_com.sys", "mt_port.sys", "USB serial port.sys"], new)

    def test_nokia_cable(self):
        self.install("Nokia", "6100")  # 06
        self.session.wait_box()
        self.assert_files(DRIVERS, ["nk_cable.sys", "nk_filter.sys"], {"": "NK-A01"})
        self.assert_files(INF, ["nk_cable.inf", "nk_modem.inf"], {"": "NK-A01"})
        self.decline(FOR_MODEM, [CABLE])
        self.wait_done(BY_CABLE)
        self.wait_calls(CABLE, APPLET)
        self.assertIsNone(self.pending())
        self.assertEqual(self.settings(), ["1", "8", "0"])

    def test_packages(self):
        self.write("installers.txt", "package takes 700\npackage exit 3\n")
        self.install("Nokia", "6230")  # 07
        self.session.wait_box()
        self.assertEqual(self.calls("ended"), [PACKAGES + "\\NK-A02\\DPInst.exe | 3"])
        self.session.answer_box(e2e.NO, FOR_PHONE)
        self.session.answer_box(e2e.OK, PLUG_IN)
        self.wait_done(BY_PACKAGE)
        self.write("installers.txt", "package adds COM11 Another Modem\n")
        for brand, model, folder in (("Samsung", "D500", "SS-A03"), ("Sony Ericsson", "W550i", "SE")):  # 10, 16
            self.install(brand, model)
            self.session.answer_box(e2e.NO, FOR_PHONE)
            self.session.answer_box(e2e.OK, PLUG_IN)
            self.wait_done(BY_PACKAGE, "Another Modem")
        self.wait_calls(*(PACKAGE % (folder, folder) for folder in ("NK-A02", "SS-A03", "SE")))
        self.assertIsNone(self.pending())

    def test_samsung_copies_before_the_cable_installer_runs(self):
        self.install("Samsung", "D410")  # 08
        self.session.wait_box()
        self.assert_files(DRIVERS, ["ss_cable.sys"], {"": "SS-A01"})
        self.assert_files(INF, ["ss_modem.inf"], {"": "SS-A01"})
        self.stays(lambda: self.calls("started") == [], 0.2)
        self.decline(FOR_MODEM)
        self.form.wait("gone")
        e2e.wait_for(lambda: len(self.calls("ended")) == 2, 20, "both programs end")
        self.assertEqual(sorted(self.calls("started")), sorted([CABLE, APPLET]))  # neither waits for the other

    def test_a_package_folder_or_program_is_missing(self):
        self.without("NK-A01")
        self.without("NK-A02\\DPInst.exe")
        self.install("Nokia", "6100")
        self.decline(FOR_MODEM, [CABLE])
        self.wait_done(BY_CABLE)
        self.wait_calls(CABLE, APPLET)
        self.assert_files(DRIVERS, [], {})
        self.install("Nokia", "6230")
        self.decline(FOR_PHONE, [CABLE, APPLET])
        self.session.answer_box(e2e.OK, PLUG_IN)
        self.wait_done(BY_CABLE, BY_APPLET)
        self.wait_calls(CABLE, APPLET)

    def test_the_cable_installer_is_missing(self):
        self.without("PL-2303 Driver Installer.exe")
        self.install("Nokia", "6100")
        box = self.session.answer_box(e2e.OK)
        self.assertEqual(box["text"].replace("\r", ""), "Run-time error '53':\n\nFile not found")
        self.wait_ended()
        self.assert_files(DRIVERS, [], {})
        self.assertEqual(self.settings(), ["1", "8", "0"])

    def test_the_destination_cannot_be_written(self):
        self.unwritable(DRIVERS)
        self.unwritable(INF)
        self.install("Nokia", "6100")
        self.decline(FOR_MODEM, [CABLE])  # a copy that fails is the shell's to report; the installation goes on
        self.wait_done(BY_CABLE)
        self.wait_calls(CABLE, APPLET)
        self.assertIsNone(self.pending())


class OlderFamily(Installing):
    """A system that does not say that it is of the NT family."""

    OLD_DRIVERS = r"C:\windows\system\drivers"
    INI = r"C:\windows\WinInit.ini"

    @classmethod
    def prepare(cls):
        super().prepare()
        cls.session.driver.call("registry-delete", r"HKLM\System\CurrentControlSet\Control\Session Manager\Environment", "OS")

    def ini(self, before):
        """What stands in the file after a driver file in use was scheduled; before: what stood there."""
        path = self.session.path(self.INI)
        if before is None:
            os.remove(path) if os.path.exists(path) else None
        else:
            with open(path, "wb") as file:
                file.write(before)
        self.install("Motorola", "V3x")
        while self.session.wait_box()["caption"] != "Pelvaro":
            self.session.answer_box(e2e.NO, caption=None)  # the shell's own, for a file that is there
        self.session.answer_box(e2e.NO, FOR_PHONE)
        self.form.wait("gone")
        with open(path, "rb") as file:
            return file.read()

    def test_files_in_use_are_named_in_the_ini(self):
        folder = self.session.path(self.OLD_DRIVERS)
        self.assertFalse(os.path.exists(folder))
        mine = os.listdir(os.path.dirname(self.session.path(self.INI)))
        full = b"a" * 32767
        first = self.ini(None)  # mt_com.sys is in both folders: the second finds the first
        line = b"NUL=" + first.split(b"NUL=")[1]
        self.assertEqual(first.lower(), b"[rename]\r\nnul=c:\\windows\\system\\drivers\\mt_com.sys\r\n")
        self.assertEqual(sorted(os.listdir(folder)), ["mt_com.sys", "mt_port.sys"])
        self.assertIn(" of MT. ", self.content(self.OLD_DRIVERS, "mt_com.sys"))
        self.assertIn(" of MT\\winxp. ", self.content(INF, "mt_modem_xp.inf"))
        for name in ("mt_com.sys", "mt_port.sys"):
            self.assertTrue(os.path.exists(os.path.join(folder, name)))
        com, port = line, line.replace(b"mt_com.sys", b"mt_port.sys")
        for before, kept in ((b"", b"\r\n"), (b"[x]\r\ny=1", b"[x]\r\ny=1\r\n"), (b"[x]\r\n\0z", b"[x]\r\n"),
                             (full, full + b"\r\n")):
            with self.subTest(before=before[:9]):
                after = self.ini(before)
                if before is full:  # the second line finds a file that fills the buffer
                    self.assertEqual(after, b"\r\n" + port + com if len(full + b"\r\n" + com) > 32767 else b"")
                else:
                    self.assertEqual(after, kept + com + port + com)
        for size in (32768, 100000):
            with self.subTest(size=size):
                self.assertEqual(self.ini(b"a" * size), b"\r\n" + com + port + com)
        self.assertEqual(set(os.listdir(os.path.dirname(self.session.path(self.INI)))) - set(mine),
                         {"WinInit.ini"} - set(mine), "nothing else is left")
        self.assertEqual(self.pending() or [], [])


class Restarting(Installing):
    """Files in use, and the end of the session. Last: what follows finds a session that was ended."""

    def test_files_in_use_are_replaced_when_the_system_starts(self):
        self.lay(DRIVERS, "nk_cable.sys", "nk_filter.sys")
        self.install("Nokia", "6100")
        self.decline(FOR_MODEM, [CABLE])
        self.wait_done(BY_CABLE)
        self.wait_calls(CABLE, APPLET)
        pending = self.pending()
        self.assertEqual(len(pending), 4)
        self.assertRegex(pending[0], r"^\\\?\?\\C:\\PROG~...\\corvanti\\common\\driver\\NK-A01\\nk_cable\.sys$")
        self.assertEqual(pending[1], "!\\??\\" + DRIVERS + "\\nk_cable.sys")
        for name in ("nk_cable.sys", "nk_filter.sys"):
            self.assertEqual(self.content(DRIVERS, name), "the old one")
        self.assert_files(INF, ["nk_cable.inf", "nk_modem.inf"], {"": "NK-A01"})
        self.program.stop()
        subprocess.run([self.session.environment["WINELOADER"], "wineboot", "-r"], check=True, timeout=30,
                       stdin=subprocess.DEVNULL, env=self.session.environment)
        self.assert_files(DRIVERS, ["nk_cable.sys", "nk_filter.sys"], {"": "NK-A01"})

    def test_restarting_now_ends_the_session(self):
        other = self.session.run(os.path.join(e2e.TOOLS, "e2e_selftest.exe"))
        self.window("Selftest").wait("foreground")  # where it comes by itself, maybe after it is seen

        def in_front():
            self.session.driver.call("activate", self.editor.name)
            return self.session.driver.call("focus")["foreground"] == self.editor.name

        e2e.wait_for(in_front, 10, "the editor is in front again")
        self.lay(DRIVERS, "ss_cable.sys")
        self.install("Samsung", "D410")
        self.session.wait_box()
        self.session.driver.call("answer", e2e.YES)
        # From here on the driver may be ended too: only what lies on the disk and the host's processes are looked at.
        self.wait_ended()
        e2e.wait_for(lambda: not other.alive, 30, "the session's other program is ended")
        replaced = lambda: "of SS-A01" in self.content(DRIVERS, "ss_cable.sys")
        e2e.wait_for(replaced, 30, "the file in use is replaced")
        self.stays(lambda: self.calls("") == [], 0.5)  # neither the cable's installer nor the applet


if __name__ == "__main__":
    unittest.main()
