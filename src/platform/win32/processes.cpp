#include "platform/win32/processes.h"

#include "platform/win32/system_library.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

static_assert(sizeof(STARTUPINFOA) == 68 || sizeof(void*) != 4);

namespace {
HANDLE handleOf(ProcessHandle handle) { return reinterpret_cast<HANDLE>(handle); }
}  // namespace

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

bool SystemProcesses::open(const std::string& document) {
  static SystemLibrary shell("shell32.dll");
  using Execute = HINSTANCE(WINAPI*)(HWND, LPCSTR, LPCSTR, LPCSTR, LPCSTR, INT);
  static SystemFunction<Execute> execute(shell, "ShellExecuteA");
  const HINSTANCE result = execute.call(nullptr, nullptr, "open", document.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(result) > 32;  // smaller ones are errors, as the SDK has it
}

bool SystemProcesses::create(const std::string& commandLine, bool inheritHandles, std::uint32_t flags,
                             ProgramHandles& handles) {
  std::string writable = commandLine;
  STARTUPINFOA info{};
  info.cb = sizeof info;
  PROCESS_INFORMATION process{};
  const bool created = ::CreateProcessA(nullptr, writable.data(), nullptr, nullptr, inheritHandles, flags, nullptr,
                                        nullptr, &info, &process);
  handles.process = reinterpret_cast<ProcessHandle>(process.hProcess);
  handles.thread = reinterpret_cast<ProcessHandle>(process.hThread);
  return created;
}

std::uint32_t SystemProcesses::waitFor(ProcessHandle process, std::uint32_t milliseconds) {
  return ::WaitForSingleObject(handleOf(process), milliseconds);
}

bool SystemProcesses::exitCode(ProcessHandle process, std::uint32_t& code) {
  DWORD value = 0;
  if (!::GetExitCodeProcess(handleOf(process), &value)) return false;
  code = value;
  return true;
}

void SystemProcesses::close(ProcessHandle handle) { ::CloseHandle(handleOf(handle)); }

}  // namespace pelvaro::win32
