// Other programs, started by the system.
#pragma once

#include "platform/processes.h"

namespace pelvaro::win32 {

struct SystemProcesses : Processes {
  bool start(const std::string& commandLine, std::uint16_t windowStyle) override;
  bool open(const std::string& document) override;
  bool create(const std::string& commandLine, bool inheritHandles, std::uint32_t flags,
              ProgramHandles& handles) override;
  std::uint32_t waitFor(ProcessHandle process, std::uint32_t milliseconds) override;
  bool exitCode(ProcessHandle process, std::uint32_t& code) override;
  void close(ProcessHandle handle) override;
};

}  // namespace pelvaro::win32
