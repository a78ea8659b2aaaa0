#include "platform/win32/random_source.h"

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

namespace {
// Two programs started in the same tick of the clock differ in their process.
std::uint32_t seedOfThisRun() {
  LARGE_INTEGER counter{};
  ::QueryPerformanceCounter(&counter);
  FILETIME time{};
  ::GetSystemTimeAsFileTime(&time);
  return counter.LowPart ^ time.dwLowDateTime ^ ::GetCurrentProcessId() * 0x9E3779B1u;
}
}  // namespace

SystemRandom::SystemRandom() : SeededRandom(seedOfThisRun()) {}

}  // namespace pelvaro::win32
