"""The setup program, the uninstaller and the portable archive, as a user and as an administrator's script meet them."""

import contextlib
import glob
import os
import re
import shutil
import subprocess
import unittest
import zipfile

import pelvaro_e2e as e2e

SETUP = os.path.join(e2e.BUILD, "pelvaro-setup.exe")
PORTABLE = os.path.join(e2e.BUILD, "pelvaro-portable.zip")
DIST = os.path.join(e2e.BUILD, "dist")

SHIPPED = ["Default.DAT", "Licence.txt", "loading.avi", "manual.html", "pelvaro.exe"]
INSTALLED = sorted(SHIPPED + ["uninstall.exe"])
OWN = "Default2.DAT"
UNINSTALL = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Pelvaro"
SETTINGS = "HKCU\\Software\\Pelvaro"
RUNS = 32

with open(os.path.join(e2e.ROOT, "CMakeLists.txt")) as _file:
    VERSION = re.search(r"project\(pelvaro VERSION ([0-9.]+)", _file.read()).group(1)


def content(file):
    with open(file, "rb") as stream:
        return stream.read()


class Installer(e2e.Case):
    phones = None
    exe = None

    @classmethod
    def prepare(cls):
        for file in (SETUP, PORTABLE):
            if not os.path.exists(file):
                raise e2e.Failure("not built: " + file)
        (cls.home,) = (home for home in glob.glob(cls.session.path("C:\\users\\*")) if not home.endswith("/Public"))
        cls.folder = os.path.join(cls.home, "AppData", "Local", "Programs", "Pelvaro")
        os.makedirs(os.path.dirname(cls.folder), exist_ok=True)  # Windows has it from the beginning
        cls.main = cls.window("Form1")

    def setUp(self):
        self.before = self.files()
        self.addCleanup(self.clean)

    def clean(self):
        """Whatever a test left; those that look at what is left have done so."""
        for program in self.session.programs:
            program.stop()
        self.session.programs.clear()
        for folder in (self.folder, self.session.path("C:\\Program Files\\Pelvaro"), self.session.path("C:\\Portable")):
            shutil.rmtree(folder, ignore_errors=True)
        for link in self.shortcuts():
            os.remove(link)
        for key in ("HKCU\\" + UNINSTALL, "HKLM\\" + UNINSTALL, SETTINGS):
            self.registry("delete", key, "/f")

    # What is there.
    def files(self):
        """Every file and folder of the drive that is not the system's own or temporary."""
        drive = self.session.path("C:\\")
        found = set()
        for folder, folders, files in os.walk(drive):
            name = os.path.relpath(folder, drive)
            folders[:] = [f for f in folders if f not in ("windows", "Temp", "INetCache", "History")]
            found.update(os.path.normpath(os.path.join(name, f)) for f in folders + files)
        return found

    def shortcuts(self):
        return [os.path.join(folder, name) for folder, _, names in os.walk(self.session.path("C:\\"))
                for name in names if name == "Pelvaro.lnk"]

    def registry(self, *words):
        done = subprocess.run([self.session.environment["WINELOADER"], "reg.exe", *words], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=self.session.environment,
                              timeout=20)
        return "" if done.returncode else done.stdout.decode("cp1252")

    def values(self, key):
        lines = re.findall(r"^    (\S+)    REG_(SZ|DWORD)    (.*?)\r?$", self.registry("query", key), re.MULTILINE)
        return {name: text if kind == "SZ" else int(text, 16) for name, kind, text in lines}

    def windows_path(self, file):
        return "C:\\" + os.path.relpath(file, self.session.path("C:\\")).replace("/", "\\")

    # What is done.
    def finish(self, program, limit=20):
        return program.process.wait(limit)

    def install(self, *words, code=0):
        self.assertEqual(self.finish(self.session.run(SETUP, "/S", *words)), code)

    def uninstall(self, *words, folder=None):
        """As the system's list of programs does, waiting until the copy that does the work has ended."""
        folder = folder or self.folder
        self.assertEqual(self.finish(self.session.run(os.path.join(folder, "uninstall.exe"), "/S", *words)), 0)
        e2e.wait_for(lambda: not os.path.exists(os.path.join(folder, "uninstall.exe")), 30, "it is uninstalled")
        e2e.wait_for(lambda: not self.values("HKCU\\" + UNINSTALL) and not self.values("HKLM\\" + UNINSTALL), 30,
                     "the entry in the list of programs is gone")

    def start(self, folder=None):
        program = self.session.run(os.path.join(folder or self.folder, "pelvaro.exe"))
        self.wait_started()
        return program

    def wait_started(self):
        """The program is seen and answers: it will not come in front of a window that is opened after this."""
        self.main.wait("visible", 20)
        self.main.wait_text("Label8", "Pelvaro")

    def end(self, program):
        self.main.close()
        self.assertEqual(self.finish(program), 0)

    def save_own_list(self):
        """Through the program's own windows."""
        editor, picker = self.window("Form2"), self.window("Form3")
        self.main.push("Image1")
        editor.wait("visible")
        editor.push("Command2")
        picker.wait("visible")
        picker.push("Command2")
        self.session.answer_box(e2e.OK, "File saved.")
        picker.close()
        picker.wait("gone")
        editor.push("Command3")
        editor.wait("hidden")

    # The windows of the setup.
    def page(self, button, text=None):
        """Waits for the page, or the box, in front that has such a usable button, and shows such a text."""
        seen = []

        def fits(window):
            parts = [part for part in self.session.driver.call("children", window["handle"]) if part["visible"]]
            seen.append([part["text"].replace("&", "") for part in parts])
            usable = any(part["text"].replace("&", "") == button and part["enabled"] for part in parts)
            focus = self.session.driver.call("focus")
            return usable and (text is None or any(text in shown for shown in seen[-1])) and \
                focus["foreground"] == "#32770" and focus["focus"]

        def there():
            seen[:] = []
            with contextlib.suppress(e2e.Failure):  # it is busy, or gives way to the next one
                return any(fits(w) for w in self.session.windows("#32770") if w["visible"] and w["enabled"])

        e2e.wait_for(there, 30, lambda: "%r on a page of the setup: %r" % (button, seen))

    # Without a question.
    def test_it_installs_for_the_user_and_starts(self):
        self.install()
        self.assertEqual(sorted(os.listdir(self.folder)), INSTALLED)
        for name in ("pelvaro.exe", "Default.DAT", "loading.avi"):
            self.assertEqual(content(os.path.join(self.folder, name)), content(os.path.join(DIST, name)), name)
        place = self.windows_path(self.folder)
        entry = self.values("HKCU\\" + UNINSTALL)
        size = entry.pop("EstimatedSize")
        self.assertEqual(entry, {
            "DisplayName": "Pelvaro", "DisplayVersion": VERSION, "Publisher": "Pelvaro",
            "DisplayIcon": place + "\\pelvaro.exe,0", "InstallLocation": place,
            "UninstallString": '"%s\\uninstall.exe"' % place,
            "QuietUninstallString": '"%s\\uninstall.exe" /S' % place, "NoModify": 1, "NoRepair": 1})
        shipped = sum(os.path.getsize(os.path.join(self.folder, name)) for name in SHIPPED)
        self.assertAlmostEqual(size, shipped / 1024, delta=16)
        (link,) = self.shortcuts()
        self.assertTrue(link.startswith(self.home), link)
        self.assertIn("Start Menu/Programs/", link)
        self.assertIn("pelvaro.exe".encode("utf-16-le"), content(link))
        self.end(self.start())

    def test_an_upgrade_keeps_the_list_and_the_settings(self):
        self.install()
        program = self.start()
        self.save_own_list()
        self.end(program)
        own = content(os.path.join(self.folder, OWN))
        self.assertGreater(len(own), 1000)
        settings = self.registry("query", SETTINGS, "/s")
        self.assertIn(self.windows_path(self.folder) + "\\" + OWN, settings)
        for name in INSTALLED:  # all of an older version
            with open(os.path.join(self.folder, name), "wb") as file:
                file.write(b"older")
        self.registry("add", "HKCU\\" + UNINSTALL, "/v", "DisplayVersion", "/d", "0.0.1", "/f")
        self.install()
        self.assertEqual(sorted(os.listdir(self.folder)), sorted(INSTALLED + [OWN]))
        self.assertEqual(content(os.path.join(self.folder, OWN)), own)
        self.assertEqual(content(os.path.join(self.folder, "pelvaro.exe")), content(os.path.join(DIST, "pelvaro.exe")))
        self.assertEqual(self.registry("query", SETTINGS, "/s"), settings)
        self.assertEqual(self.values("HKCU\\" + UNINSTALL)["DisplayVersion"], VERSION)
        self.end(self.start())

    def test_uninstalling_removes_what_was_installed_and_the_rest_when_told(self):
        self.install()
        with open(os.path.join(self.folder, OWN), "wb") as file:
            file.write(b"my own")
        self.registry("add", SETTINGS + "\\Setting", "/v", "brand", "/d", "Norline", "/f")
        self.uninstall()
        folder = os.path.relpath(self.folder, self.session.path("C:\\"))
        kept = {folder, os.path.join(folder, OWN)}
        self.assertEqual(self.files() - self.before, kept)
        self.assertIn("Norline", self.registry("query", SETTINGS + "\\Setting"))
        self.install()  # over what was kept
        self.uninstall("/PURGE")
        self.assertEqual(self.files(), self.before)
        self.assertEqual(self.registry("query", SETTINGS), "")

    def test_a_stranger_s_file_in_the_folder_stays(self):
        self.install()
        note = os.path.join(self.folder, "note.txt")
        with open(note, "w") as file:
            file.write("mine")
        self.uninstall("/PURGE")
        self.assertEqual(os.listdir(self.folder), ["note.txt"])

    def test_nothing_is_touched_while_the_program_runs(self):
        self.install()
        program = self.start()
        os.remove(os.path.join(self.folder, "loading.avi"))
        self.install(code=RUNS)
        stopped = self.session.run(os.path.join(self.folder, "uninstall.exe"), "/S",
                                   "_?=" + self.windows_path(self.folder))
        self.assertEqual(self.finish(stopped), RUNS)
        self.assertEqual(sorted(os.listdir(self.folder) + ["loading.avi"]), INSTALLED)
        self.end(program)
        self.install()
        self.assertEqual(sorted(os.listdir(self.folder)), INSTALLED)

    def test_for_all_users(self):
        self.install("/AllUsers")
        folder = self.session.path("C:\\Program Files\\Pelvaro")
        self.assertEqual(sorted(os.listdir(folder)), INSTALLED)
        self.assertEqual(self.values("HKLM\\" + UNINSTALL)["InstallLocation"], "C:\\Program Files\\Pelvaro")
        self.assertEqual(self.values("HKCU\\" + UNINSTALL), {})
        (link,) = self.shortcuts()
        self.assertIn("/ProgramData/", link)
        self.install()  # an upgrade goes where the program is
        self.assertFalse(os.path.exists(self.folder))
        self.end(self.start(folder))
        self.uninstall(folder=folder)
        self.assertEqual(self.files(), self.before)

    def test_into_a_given_folder(self):
        self.install("/D=C:\\Portable\\Pelvaro")
        folder = self.session.path("C:\\Portable\\Pelvaro")
        self.assertEqual(sorted(os.listdir(folder)), INSTALLED)
        self.uninstall(folder=folder)

    def test_the_portable_archive(self):
        with zipfile.ZipFile(PORTABLE) as archive:
            self.assertEqual([entry.filename for entry in archive.infolist()], ["Pelvaro/" + name for name in SHIPPED])
            archive.extractall(self.session.path("C:\\Portable"))
        folder = self.session.path("C:\\Portable\\Pelvaro")
        program = self.start(folder)
        self.save_own_list()
        self.end(program)
        self.assertEqual(sorted(os.listdir(folder)), sorted(SHIPPED + [OWN]))
        self.assertEqual(self.values("HKCU\\" + UNINSTALL), {})

    # Through the windows, with the keyboard.
    def step(self, button, picture, *keys, text=None):
        try:
            self.page(button, text)
        finally:
            self.session.screenshot("setup/" + picture)
        self.session.keys(*keys)

    def test_enter_leads_to_the_running_program_over_it_and_back(self):
        setup = self.session.run(SETUP)
        self.step("Next >", "1-for-whom", "enter", text="Just for me")
        self.step("Install", "2-folder", "enter")
        self.step("Finish", "3-done", "enter")
        self.assertEqual(self.finish(setup), 0)
        self.wait_started()  # by the last page
        self.assertEqual(sorted(os.listdir(self.folder)), INSTALLED)

        again = self.session.run(SETUP)
        self.step("Next >", "4-again", "enter", text="Pelvaro %s is installed and will be replaced" % VERSION)
        self.step("OK", "5-it-runs", "enter", text="Pelvaro is running.")
        self.main.wait("gone")
        self.step("Finish", "6-done-again", "space", "enter")  # not to be started
        self.assertEqual(self.finish(again), 0)

        with open(os.path.join(self.folder, OWN), "wb") as file:
            file.write(b"my own")
        self.session.run(os.path.join(self.folder, "uninstall.exe"))
        self.step("Uninstall", "7-remove", "enter", text="Also delete my own operator list")
        self.step("Close", "8-removed", "enter")
        shown = lambda: [w for w in self.session.windows("#32770") if w["visible"]]
        e2e.wait_for(lambda: not shown(), 10, "the window is closed")
        self.assertEqual(os.listdir(self.folder), [OWN])

    def test_the_own_list_goes_when_its_box_is_ticked(self):
        self.install()
        with open(os.path.join(self.folder, OWN), "wb") as file:
            file.write(b"my own")
        self.session.run(os.path.join(self.folder, "uninstall.exe"))
        self.page("Uninstall")
        self.session.keys("alt+o")
        self.step("Uninstall", "7-remove-all", "enter")
        self.step("Close", "8-removed", "enter")
        e2e.wait_for(lambda: self.files() == self.before, 10, "everything is gone")

    def test_cancelling_leaves_nothing(self):
        setup = self.session.run(SETUP)
        self.step("Next >", "1-for-whom", "esc")
        self.step("Yes", "9-cancel", "enter")
        self.assertEqual(self.finish(setup), 1)
        self.assertEqual(self.files(), self.before)

    def test_cancelling_keeps_the_program_running(self):
        self.install()
        program = self.start()
        setup = self.session.run(SETUP)
        self.step("Next >", "4-again", "enter")
        self.step("OK", "5-it-runs", "esc")
        self.finish(setup)
        self.end(program)
        self.assertEqual(sorted(os.listdir(self.folder)), INSTALLED)


if __name__ == "__main__":
    unittest.main()
