// What the installation of a driver asks of the system, for real: folders, copies by the shell, short names, moves at
// the next restart, programs waited for, the right to restart; and the pointer over a form.
#include <gtest/gtest.h>

#include <vector>

#include "platform/win32/control_window.h"
#include "platform/win32/environment.h"
#include "platform/win32/files.h"
#include "platform/win32/form_window.h"
#include "platform/win32/processes.h"
#include "platform/win32/shutdown.h"

namespace pelvaro::win32 {
namespace {

using namespace std::string_literals;
using Names = std::vector<std::string>;

constexpr std::uint32_t kNormalPriority = 32, kWithoutEnd = 0xFFFFFFFF;

// A folder of a test's own.
struct Installation : testing::Test {
  Installation() {
    char temporary[MAX_PATH];
    ::GetTempPathA(sizeof temporary, temporary);
    folder = temporary + "pelvaro install "s + std::to_string(::GetCurrentProcessId());
    EXPECT_TRUE(files.makeFolder(folder));
  }
  ~Installation() override {
    for (const std::string& name : names) {
      ::SetFileAttributesA((folder + "\\" + name).c_str(), FILE_ATTRIBUTE_NORMAL);
      ::DeleteFileA((folder + "\\" + name).c_str());
      ::RemoveDirectoryA((folder + "\\" + name).c_str());
    }
    ::RemoveDirectoryA(folder.c_str());
  }
  Installation(const Installation&) = delete;
  Installation& operator=(const Installation&) = delete;

  std::string put(const std::string& name, const std::string& bytes = "x") {
    names.push_back(name);
    EXPECT_TRUE(files.replaceWhole(folder + "\\" + name, bytes));
    return folder + "\\" + name;
  }

  SystemFiles files;
  SystemProcesses processes;
  std::string folder;
  Names names;
};

TEST_F(Installation, FilesAreListedByTheirEndingInOrder) {
  for (const char* name : {"b.sys", "A.SYS", "c.Sys", "x.inf", "d.sysx", "sys", "hidden.sys"}) put(name);
  ::SetFileAttributesA((folder + "\\hidden.sys").c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_TRUE(files.makeFolder(folder + "\\folder.sys"));
  names.emplace_back("folder.sys");
  EXPECT_EQ(files.namesIn(folder, ".sys"), (Names{"A.SYS", "b.sys", "c.Sys"}));
  EXPECT_EQ(files.namesIn(folder, ".inf"), (Names{"x.inf"}));
  EXPECT_EQ(files.namesIn(folder + "\\missing", ".sys"), Names{});
  EXPECT_EQ(files.namesIn(folder + "\\b.sys", ".sys"), Names{});
}

TEST_F(Installation, FoldersAreThereWithAndWithoutTheirLastBackslash) {
  EXPECT_TRUE(files.isFolder(folder));
  EXPECT_TRUE(files.isFolder(folder + "\\"));
  EXPECT_FALSE(files.isFolder(folder + "\\missing\\"));
  EXPECT_FALSE(files.isFolder(put("file")));
  EXPECT_FALSE(files.makeFolder(folder + "\\missing\\deeper"));
  names.emplace_back("drivers");
  EXPECT_TRUE(files.makeFolder(folder + "\\drivers\\"));
  EXPECT_FALSE(files.makeFolder(folder + "\\drivers")) << "it is there";
}

TEST_F(Installation, TheShellCopiesAFileUnderItsNewName) {
  const std::string from = put("a.sys", "driver\0bytes"s);
  names.emplace_back("copy of a.sys");
  files.shellCopy(from, folder + "\\copy of a.sys", 0x100);
  EXPECT_EQ(files.readWhole(folder + "\\copy of a.sys"), "driver\0bytes"s);
}

TEST_F(Installation, AShortNameLeadsToTheFile) {
  const std::string path = put("a rather long name.sys", "bytes");
  char name[300];
  const std::size_t length = files.shortPathName(path, name, 255);
  ASSERT_GT(length, 0u);
  EXPECT_EQ(std::string(name, length).find(' '), std::string::npos);
  EXPECT_EQ(files.readWhole({name, length}), "bytes");
  EXPECT_EQ(files.shortPathName(folder + "\\missing", name, 255), 0u);
}

TEST_F(Installation, AMoveCanWaitForTheRestart) {
  const std::string from = put("new.sys", "new"), to = put("old.sys", "old");
  EXPECT_TRUE(files.moveFileEx(from, to, 5));
  EXPECT_EQ(files.readWhole(from), "new");
  EXPECT_EQ(files.readWhole(to), "old");
  EXPECT_TRUE(files.moveFileEx(from, to, 1));
  EXPECT_EQ(files.readWhole(to), "new");
  EXPECT_FALSE(files.moveFileEx("", to, 1));
}

TEST_F(Installation, AProgramIsWaitedForAndTellsItsExitCode) {
  ProgramHandles program;
  ASSERT_TRUE(processes.create("cmd.exe /c exit 7", true, kNormalPriority, program));
  EXPECT_EQ(processes.waitFor(program.process, kWithoutEnd), WAIT_OBJECT_0);
  std::uint32_t code = 0;
  EXPECT_TRUE(processes.exitCode(program.process, code));
  EXPECT_EQ(code, 7u);
  processes.close(program.thread);
  processes.close(program.process);
}

TEST_F(Installation, AProgramThatIsMissingHasNoHandles) {
  ProgramHandles program{.process = 1, .thread = 1};
  EXPECT_FALSE(processes.create(folder + "\\DPInst.exe /q", true, kNormalPriority, program));
  EXPECT_EQ(program.process, 0u);
  EXPECT_EQ(program.thread, 0u);
  EXPECT_EQ(processes.waitFor(0, kWithoutEnd), WAIT_FAILED);
  std::uint32_t code = 5;
  EXPECT_FALSE(processes.exitCode(0, code));
  EXPECT_EQ(code, 5u);
  EXPECT_FALSE(processes.start(folder + "\\DPInst.exe", kShowNormal));
}

TEST(SystemShutdown, GivesTheOwnProcessTheRightToRestart) {
  SystemShutdown shutdown;
  const TokenHandle token = shutdown.openOwnToken(40);
  ASSERT_NE(token, 0u);
  PrivilegeRecord record{.count = 1, .identifier = {}, .attributes = 2};
  ASSERT_TRUE(shutdown.lookupPrivilege("", "SeShutdownPrivilege", record.identifier));
  EXPECT_EQ(record.identifier[0], 19u) << "as on every Windows";
  EXPECT_EQ(record.identifier[1], 0u);
  EXPECT_TRUE(shutdown.adjustPrivileges(token, false, record, 16));
  PRIVILEGE_SET set{};
  set.PrivilegeCount = 1;
  set.Privilege[0].Luid.LowPart = record.identifier[0];
  BOOL has = FALSE;
  EXPECT_TRUE(::PrivilegeCheck(reinterpret_cast<HANDLE>(token), &set, &has));
  EXPECT_TRUE(has);
  ::CloseHandle(reinterpret_cast<HANDLE>(token));
  EXPECT_FALSE(shutdown.lookupPrivilege("", "SeNoSuchPrivilege", record.identifier));
}

TEST(SystemEnvironmentVariables, AreEmptyWhenNotSetAndFollowNoCase) {
  SystemEnvironment environment;
  ::SetEnvironmentVariableA("PelvaroTest", "C:\\a b");
  EXPECT_EQ(environment.variable("PELVAROTEST"), "C:\\a b");
  ::SetEnvironmentVariableA("PelvaroTest", std::string(30000, 'x').c_str());
  EXPECT_EQ(environment.variable("PelvaroTest").size(), 30000u);
  ::SetEnvironmentVariableA("PelvaroTest", "");
  EXPECT_EQ(environment.variable("PelvaroTest"), "");
  ::SetEnvironmentVariableA("PelvaroTest", nullptr);
  EXPECT_EQ(environment.variable("PelvaroTest"), "");
  EXPECT_EQ(environment.variable("OS"), "Windows_NT");
}

TEST(FormPointer, IsAnHourglassOverTheFormAndItsControlsUntilItIsSetBack) {
  constexpr ControlLayout controls[] = {
      {.name = "Command1", .kind = ControlKind::commandButton, .caption = "OK", .place = {0, 80, 90, 28}}};
  const FormLayout layout{
      .name = "Pointed", .title = "", .width = 200, .height = 200, .controls = controls, .rules = {}};
  MessageLoop loop;
  FormScreen screen(loop);
  FormEvents formEvents;
  ControlEvents events;
  const std::shared_ptr<FormPeer> form = screen.createForm(layout, formEvents);
  const std::shared_ptr<ControlPeer> button = form->createControl(controls[0], events);
  const HWND window = screen.mainWindow();
  const HWND child = dynamic_cast<ControlWindow&>(*button).window();
  form->show(false);
  const auto pointer = [](HWND over) {
    ::SendMessageA(over, WM_SETCURSOR, reinterpret_cast<WPARAM>(over), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    return ::GetCursor();
  };
  const HCURSOR arrow = ::LoadCursorA(nullptr, IDC_ARROW), hourglass = ::LoadCursorA(nullptr, IDC_WAIT);
  ASSERT_NE(arrow, hourglass);
  EXPECT_EQ(pointer(window), arrow);
  form->setPointer(Pointer::hourglass);
  EXPECT_EQ(pointer(window), hourglass);
  EXPECT_EQ(pointer(child), hourglass);
  form->setPointer(Pointer::arrow);
  EXPECT_EQ(pointer(window), arrow);
  EXPECT_EQ(pointer(child), arrow);
}

}  // namespace
}  // namespace pelvaro::win32
