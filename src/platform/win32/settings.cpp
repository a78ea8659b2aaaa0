#include "platform/win32/settings.h"

#include "base/text.h"
#include "platform/environment.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

namespace {
std::string keyOf(const std::string& section) { return std::string("Software\\") + kApplicationTitle + "\\" + section; }
}  // namespace

std::string SystemSettings::get(const std::string& section, const std::string& key) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExA(HKEY_CURRENT_USER, keyOf(section).c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS)
    return {};
  char text[kLongestSetting + 1];
  DWORD type = REG_NONE, size = sizeof text;
  const LONG result = ::RegQueryValueExA(opened, key.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
  ::RegCloseKey(opened);
  if (result != ERROR_SUCCESS || type != REG_SZ) return {};
  const std::string_view value = upToNul({text, size});
  return value.size() <= kLongestSetting ? std::string(value) : std::string();
}

bool SystemSettings::save(const std::string& section, const std::string& key, const std::string& value) {
  HKEY opened = nullptr;
  if (::RegCreateKeyExA(HKEY_CURRENT_USER, keyOf(section).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened,
                        nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const std::string text(upToNul(value));
  const LONG result = ::RegSetValueExA(opened, key.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                                       static_cast<DWORD>(text.size()) + 1);
  ::RegCloseKey(opened);
  return result == ERROR_SUCCESS;
}

}  // namespace pelvaro::win32
