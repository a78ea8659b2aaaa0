// The installer's own steps; the journal of every code is in the stories of the driver window.
#include "drivers/installer.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "drivers/fake_machine.h"

namespace pelvaro::drivers {
namespace {

using Lines = std::vector<std::string>;
constexpr const char* kPhone =
    "MessageBox 4 Restart is needed to take effect. Are you sure to restart now? Please connect the phone after "
    "restart.";
constexpr const char* kModem =
    "MessageBox 4 Restart is needed to take effect. Are you sure to restart now? Please manually add the modem after "
    "restart.";

struct Installing : testing::Test, FakeMachine {
  void put(const std::string& folder, const Lines& names) {
    for (const std::string& name : names) files.contents[installer.commonPath + folder + "\\" + name] = name;
  }
};

TEST_F(Installing, TheFoldersComeFromTheEnvironment) {
  EXPECT_EQ(installer.commonPath, "C:\\Programs\\corvanti\\common");
  EXPECT_EQ(installer.systemPath, "C:\\WINDOWS\\SYSTEM32");
  EXPECT_EQ(installer.windowsPath, "C:\\WINDOWS");
  environment.variables["os"] = "anything";
  installer.findFolders();
  EXPECT_EQ(installer.systemPath, "C:\\WINDOWS\\SYSTEM32") << "any value will do here";
  environment.variables.clear();
  installer.findFolders();
  EXPECT_EQ(installer.commonPath, "\\corvanti\\common");
  EXPECT_EQ(installer.systemPath, "\\SYSTEM");
  EXPECT_EQ(installer.windowsPath, "");
}

TEST_F(Installing, FilesAreTakenByNameAndByTheirEnding) {
  put("\\f", {"b.sys", "A.SYS", "c.sys", "x.inf", "W.INF", "readme.txt", "a.sys.bak"});
  installer.CopyDriverFiles("\\f", "");
  EXPECT_EQ(installer.File2, (Lines{"A.SYS", "b.sys", "c.sys"}));
  EXPECT_EQ(installer.File1, (Lines{"W.INF", "x.inf"}));
}

TEST_F(Installing, TheFlagsOfTheLastFilesAreThoseOfTheNext) {
  put("\\f", {"x.inf"});
  installer.CopyDriverFiles("\\f", "");
  EXPECT_EQ(
      journal.take(),
      (Lines{"FindFiles C:\\Programs\\corvanti\\common\\f\\*.inf", "FindFiles C:\\Programs\\corvanti\\common\\f\\*.sys",
             "SHFileOperation copy 0 C:\\Programs\\corvanti\\common\\f\\x.inf -> C:\\WINDOWS\\inf\\x.inf", kModem}))
      << "no file before";
  put("\\f", {"a.sys"});
  files.contents["C:\\WINDOWS\\SYSTEM32\\drivers\\a.sys"] = "old";
  installer.CopyDriverFiles("\\f", "");
  const Lines calls = journal.take();
  ASSERT_EQ(calls.size(), 7u);
  EXPECT_EQ(calls[5], "SHFileOperation copy 256 C:\\Programs\\corvanti\\common\\f\\x.inf -> C:\\WINDOWS\\inf\\x.inf")
      << "one that was only scheduled counts";
  EXPECT_EQ(files.contents["C:\\WINDOWS\\SYSTEM32\\drivers\\a.sys"], "old");
}

TEST_F(Installing, SystemFilesAloneAskNothingAndLeaveTheOthers) {
  put("\\driver\\MT", {"a.sys", "x.inf"});
  installer.CopyDriverFiles("\\driver\\MT", "sys");
  EXPECT_EQ(journal.take().back(),
            "SHFileOperation copy 256 C:\\Programs\\corvanti\\common\\driver\\MT\\a.sys -> "
            "C:\\WINDOWS\\SYSTEM32\\drivers\\a.sys");
}

TEST_F(Installing, TheQuestionIsToldByTheFolderAlone) {
  const struct {
    const char *folder, *question;
  } table[] = {{"\\driver\\mt\\winxp", kPhone},
               {"\\driver\\Mt", kPhone},
               {"\\xMTx", kPhone},
               {"\\driver\\M-T", kModem},
               {"", kModem},
               {"\\driver\\NK-A01", kModem}};
  installer.commonPath = "C:\\MT";
  for (const auto& row : table) {
    installer.CopyDriverFiles(row.folder, "");
    EXPECT_EQ(journal.take().back(), row.question) << row.folder;
  }
}

TEST_F(Installing, AMissingDriversFolderIsMade) {
  files.folders.clear();
  installer.CopyDriverFiles("\\f", "sys");
  EXPECT_EQ(journal.take().back(), "CreateDirectory C:\\WINDOWS\\SYSTEM32\\drivers\\");
  installer.CopyDriverFiles("\\f", "sys");
  EXPECT_EQ(journal.take().size(), 2u);
  files.folders.clear();
  files.noNewFolders = true;
  try {
    installer.CopyDriverFiles("\\f", "");
    ADD_FAILURE();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 76) << "nothing is there at all";
  }
}

TEST_F(Installing, ADriversFolderThatCannotBeMadeIsARunTimeError) {
  files.folders = {"C:\\WINDOWS\\SYSTEM32"};
  files.noNewFolders = true;
  try {
    installer.CopyDriverFiles("\\f", "");
    ADD_FAILURE();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 75);
    EXPECT_EQ(error.description(), "Path/File access error");
  }
}

TEST_F(Installing, EventsRunOnceBetweenTheListsAndTheCopies) {
  put("\\f", {"a.sys"});
  Lines before;
  files.folders.clear();
  desktop.post([&] { before = journal.lines(); });
  installer.CopyDriverFiles("\\f", "sys");
  EXPECT_EQ(before.size(), 2u) << "both lists, and nothing else yet";
}

TEST_F(Installing, AgreeingToARestartEndsTheProgramAtOnce) {
  dialogs.onMessage = [](const std::string&) { return kAnswerYes; };
  EXPECT_THROW(installer.CopyDriverFiles("\\f", ""), ProgramEnded);
  EXPECT_TRUE(desktop.ended());
  EXPECT_EQ(journal.take().back(), "ExitWindowsEx 2 4294967295");
}

TEST_F(Installing, ACodeThatNoModelHasDoesNothing) {
  for (const char* code : {"", "17", "00"}) installer.install(code);
  EXPECT_EQ(journal.take(), Lines{});
}

}  // namespace
}  // namespace pelvaro::drivers
