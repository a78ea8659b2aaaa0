#include "platform/win32/environment.h"

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

std::string SystemEnvironment::programFolder() {
  char path[32768];
  const DWORD length = ::GetModuleFileNameA(nullptr, path, sizeof path);
  std::string folder(path, length < sizeof path ? length : 0);
  const auto slash = folder.rfind('\\');
  return folder.substr(0, slash == std::string::npos ? 0 : slash);
}

}  // namespace pelvaro::win32
