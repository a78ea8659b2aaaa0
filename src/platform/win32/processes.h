// Other programs, started by the system.
#pragma once

#include "platform/processes.h"

namespace pelvaro::win32 {

struct SystemProcesses : Processes {
  bool start(const std::string& commandLine, std::uint16_t windowStyle) override;
};

}  // namespace pelvaro::win32
