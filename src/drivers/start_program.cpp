#include "drivers/start_program.h"

#include "base/runtime_error.h"

namespace pelvaro::drivers {

void startProgram(Processes& processes, const std::string& commandLine, std::uint16_t windowStyle) {
  if (!processes.start(commandLine, windowStyle)) throw RuntimeError(53, "File not found");
}

}  // namespace pelvaro::drivers
