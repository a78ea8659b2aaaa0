// What the program is told about where it runs.
#pragma once

#include <string>

#include "base/numbers.h"

namespace pelvaro {

// The program's title, the caption of its message boxes.
constexpr const char* kApplicationTitle = "Pelvaro";

struct Environment {
  virtual ~Environment() = default;
  // The folder of the running executable, without a backslash at its end.
  virtual std::string programFolder() = 0;
  // The value of an environment variable, empty when it is not set. The case of names does not count.
  virtual std::string variable(const std::string& name) = 0;
  // How the user's locale groups numbers, asked anew each time.
  virtual NumberStyle numberStyle() = 0;
};

}  // namespace pelvaro
