#include "platform/win32/system_library.h"

#include "platform/environment.h"

namespace pelvaro::win32 {

namespace {

// The full path in the system folder, empty when the folder cannot be told.
std::string systemPath(const char* file) {
  char folder[MAX_PATH];
  const UINT length = ::GetSystemDirectoryA(folder, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return {};
  return std::string(folder, length) + "\\" + file;
}

}  // namespace

FARPROC SystemLibrary::find(const char* name) {
  if (!tried_) {
    tried_ = true;
    const std::string path = systemPath(file_);
    if (!path.empty()) module_ = ::LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module_) report(std::string(file_) + " cannot be loaded from the system folder (wanted for " + name + ").");
  }
  if (!module_) return nullptr;
  const FARPROC function = ::GetProcAddress(module_, name);
  if (!function) report(std::string(name) + " is missing in " + file_ + ".");
  return function;
}

void SystemLibrary::report(const std::string& what) {
  const std::string text = "This system lacks something that Pelvaro needs:\n\n" + what;
  ::MessageBoxA(nullptr, text.c_str(), kApplicationTitle, MB_OK | MB_ICONWARNING | MB_TASKMODAL | MB_SETFOREGROUND);
}

}  // namespace pelvaro::win32
