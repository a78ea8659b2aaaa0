// Other programs.
#pragma once

#include <cstdint>
#include <string>

namespace pelvaro {

// How a program's window is first shown: SW_SHOWNORMAL, SW_SHOWMINIMIZED.
constexpr std::uint16_t kShowNormal = 1;
constexpr std::uint16_t kShowMinimised = 2;

using ProcessHandle = std::uintptr_t;

// PROCESS_INFORMATION, as far as it is handles.
struct ProgramHandles {
  ProcessHandle process = 0, thread = 0;
};

struct Processes {
  virtual ~Processes() = default;
  // CreateProcessA with a command line, without waiting for the program. False when it cannot be started.
  virtual bool start(const std::string& commandLine, std::uint16_t windowStyle) = 0;

  // ShellExecuteA: shows a document in the user's program for it. False when there is none.
  virtual bool open(const std::string& document) = 0;

  // CreateProcessA with a command line, an empty start record, the caller's environment and folder. When it fails the
  // handles are zero.
  virtual bool create(const std::string& commandLine, bool inheritHandles, std::uint32_t flags,
                      ProgramHandles& handles) = 0;
  // WaitForSingleObject.
  virtual std::uint32_t waitFor(ProcessHandle process, std::uint32_t milliseconds) = 0;
  // GetExitCodeProcess; `code` is left alone when that fails.
  virtual bool exitCode(ProcessHandle process, std::uint32_t& code) = 0;
  // CloseHandle.
  virtual void close(ProcessHandle handle) = 0;
};

}  // namespace pelvaro
