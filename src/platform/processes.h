// Other programs.
#pragma once

#include <cstdint>
#include <string>

namespace pelvaro {

// How a program's window is first shown: SW_SHOWMINIMIZED.
constexpr std::uint16_t kShowMinimised = 2;

struct Processes {
  virtual ~Processes() = default;
  // CreateProcessA with a command line, without waiting for the program. False when it cannot be started.
  virtual bool start(const std::string& commandLine, std::uint16_t windowStyle) = 0;
};

}  // namespace pelvaro
