#include "platform/win32/processes.h"

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

bool SystemProcesses::start(const std::string& commandLine, std::uint16_t windowStyle) {
  std::string writable = commandLine;  // the system may write into it
  STARTUPINFOA info{};
  info.cb = sizeof info;
  info.dwFlags = STARTF_USESHOWWINDOW;
  info.wShowWindow = windowStyle;
  PROCESS_INFORMATION process{};
  if (!::CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &info, &process)) {
    return false;
  }
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return true;
}

}  // namespace pelvaro::win32
