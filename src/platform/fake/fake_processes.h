// Other programs, for tests: journalled, started as the test has planted it.
#pragma once

#include "platform/fake/journal.h"
#include "platform/processes.h"

namespace pelvaro::fake {

struct FakeProcesses : Processes {
  explicit FakeProcesses(Journal& log) : journal(log) {}

  Journal& journal;
  bool missing = false;  // nothing can be started

  bool start(const std::string& commandLine, std::uint16_t windowStyle) override {
    journal.add("Start " + std::to_string(windowStyle) + " " + commandLine);
    return !missing;
  }

  bool open(const std::string& document) override {
    journal.add("ShellExecute open " + document);
    return !missing;
  }

  bool unstartable = false;  // what is to be waited for
  std::uint32_t exit = 0;    // its exit code
  int openHandles = 0;       // open now

  bool create(const std::string& commandLine, bool inheritHandles, std::uint32_t flags,
              ProgramHandles& handles) override {
    journal.add("CreateProcess " + std::to_string(inheritHandles) + " " + std::to_string(flags) + " " + commandLine);
    handles = unstartable ? ProgramHandles{} : ProgramHandles{.process = 71, .thread = 72};
    if (!unstartable) openHandles += 2;
    return !unstartable;
  }
  std::uint32_t waitFor(ProcessHandle process, std::uint32_t milliseconds) override {
    journal.add("WaitForSingleObject " + std::to_string(process) + " " + std::to_string(milliseconds));
    return process == 0 ? 0xFFFFFFFF : 0;
  }
  bool exitCode(ProcessHandle process, std::uint32_t& code) override {
    journal.add("GetExitCodeProcess " + std::to_string(process));
    if (process != 0) code = exit;
    return process != 0;
  }
  void close(ProcessHandle handle) override {
    journal.add("CloseHandle " + std::to_string(handle));
    if (handle != 0) --openHandles;
  }
};

}  // namespace pelvaro::fake
