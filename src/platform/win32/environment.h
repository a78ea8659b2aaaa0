// Where the program runs, as the system tells it.
#pragma once

#include "platform/environment.h"

namespace pelvaro::win32 {

struct SystemEnvironment : Environment {
  std::string programFolder() override;
  std::string variable(const std::string& name) override;
  NumberStyle numberStyle() override;
};

}  // namespace pelvaro::win32
