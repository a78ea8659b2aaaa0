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
};

}  // namespace pelvaro::fake
