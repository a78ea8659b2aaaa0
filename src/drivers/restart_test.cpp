// Restarting the system, and running a program until it ends: the calls in their order.
#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "drivers/dec.h"
#include "drivers/mod_wait.h"
#include "drivers/start_program.h"
#include "platform/fake/fake_processes.h"
#include "platform/fake/fake_system.h"

namespace pelvaro {
namespace {

using Lines = std::vector<std::string>;

TEST(Restart, TakesThePrivilegeAndAsksForAReboot) {
  fake::Journal journal;
  fake::FakeShutdown shutdown(journal);
  shutdown.luid = {19, 7};
  dec::RestartWindows(shutdown);
  EXPECT_EQ(journal.take(), (Lines{"OpenProcessToken 40", "LookupPrivilegeValue '' SeShutdownPrivilege",
                                   "AdjustTokenPrivileges 81 0 1:19,7,2 16", "ExitWindowsEx 2 4294967295"}));
}

TEST(Restart, ATokenThatCannotBeHadStopsNothing) {
  fake::Journal journal;
  fake::FakeShutdown shutdown(journal);
  shutdown.token = 0;
  dec::EnableShutdownPrivilege(shutdown);
  EXPECT_EQ(journal.take().size(), 3u);
}

TEST(RunAndWait, WaitsWithoutLimitAndGivesTheExitCode) {
  fake::Journal journal;
  fake::FakeProcesses processes(journal);
  for (const std::uint32_t code : {0u, 7u, 259u, 0xC0000005u}) {
    processes.exit = code;
    EXPECT_EQ(modWait::RunAndWait(processes, "C:\\a b\\DPInst.exe /q"), static_cast<std::int32_t>(code));
    EXPECT_EQ(journal.take(), (Lines{"CreateProcess 1 32 C:\\a b\\DPInst.exe /q", "WaitForSingleObject 71 4294967295",
                                     "GetExitCodeProcess 71", "CloseHandle 72", "CloseHandle 71"}));
  }
  EXPECT_EQ(processes.openHandles, 0);
}

TEST(RunAndWait, AProgramThatCannotBeStartedGivesMinusOne) {
  fake::Journal journal;
  fake::FakeProcesses processes(journal);
  processes.unstartable = true;
  processes.exit = 5;
  EXPECT_EQ(modWait::RunAndWait(processes, "missing.exe"), -1);
  EXPECT_EQ(journal.take(), (Lines{"CreateProcess 1 32 missing.exe", "WaitForSingleObject 0 4294967295",
                                   "GetExitCodeProcess 0", "CloseHandle 0", "CloseHandle 0"}));
}

TEST(Start, AMissingProgramIsRunTimeError53) {
  fake::Journal journal;
  fake::FakeProcesses processes(journal);
  drivers::startProgram(processes, "a.exe", kShowNormal);
  EXPECT_EQ(journal.take(), (Lines{"Start 1 a.exe"}));
  processes.missing = true;
  try {
    drivers::startProgram(processes, "a.exe", kShowNormal);
    ADD_FAILURE();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 53);
    EXPECT_EQ(error.description(), "File not found");
  }
}

}  // namespace
}  // namespace pelvaro
