#include "platform/win32/environment.h"

#include <iterator>

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

std::string SystemEnvironment::programFolder() {
  char path[32768];
  const DWORD length = ::GetModuleFileNameA(nullptr, path, sizeof path);
  std::string folder(path, length < sizeof path ? length : 0);
  const auto slash = folder.rfind('\\');
  return folder.substr(0, slash == std::string::npos ? 0 : slash);
}

std::string SystemEnvironment::variable(const std::string& name) {
  char value[32768];  // the longest that a variable can be
  const DWORD length = ::GetEnvironmentVariableA(name.c_str(), value, sizeof value);
  return {value, length < sizeof value ? length : 0};
}

NumberStyle SystemEnvironment::numberStyle() {
  NumberStyle style;
  wchar_t wide[16];
  if (::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, wide, static_cast<int>(std::size(wide))) > 0) {
    // Later systems group some languages with a narrow no-break space, which no ANSI code page has.
    for (wchar_t& c : wide) {
      if (c == L'\u202F') c = L'\u00A0';
    }
    char narrow[sizeof wide * 2];
    const int length =
        ::WideCharToMultiByte(CP_ACP, 0, wide, -1, narrow, static_cast<int>(sizeof narrow), nullptr, nullptr);
    if (length > 0) style.separator = narrow;
  }
  char groups[16];  // "3;2;0" at its longest
  if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SGROUPING, groups, sizeof groups) > 0) style.groups = groups;
  return style;
}

}  // namespace pelvaro::win32
