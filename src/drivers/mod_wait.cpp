#include "drivers/mod_wait.h"

namespace pelvaro::modWait {

namespace {

constexpr std::uint32_t kNormalPriority = 32;      // NORMAL_PRIORITY_CLASS
constexpr std::uint32_t kWithoutEnd = 0xFFFFFFFF;  // INFINITE

}  // namespace

// The calls are made also for a program that was not started: its handles are zero and the wait fails at once.
std::int32_t RunAndWait(Processes& processes, const std::string& commandLine) {
  ProgramHandles program;
  processes.create(commandLine, true, kNormalPriority, program);
  std::uint32_t result = processes.waitFor(program.process, kWithoutEnd);
  processes.exitCode(program.process, result);
  processes.close(program.thread);
  processes.close(program.process);
  return static_cast<std::int32_t>(result);
}

}  // namespace pelvaro::modWait
