// Running another program until it ends.
#pragma once

#include <cstdint>
#include <string>

#include "platform/processes.h"

namespace pelvaro::modWait {

// Runs a program and waits without limit until it has ended; no event is served meanwhile. Gives its exit code, or -1
// when it could not be started.
std::int32_t RunAndWait(Processes& processes, const std::string& commandLine);

}  // namespace pelvaro::modWait
