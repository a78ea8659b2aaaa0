#include "platform/win32/registry.h"

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

RegistryKey SystemRegistry::openLocalMachine(const std::string& path, bool view64) {
  HKEY key = nullptr;
  const REGSAM access = KEY_READ | (view64 ? KEY_WOW64_64KEY : 0);
  if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, access, &key) != ERROR_SUCCESS) return 0;
  return reinterpret_cast<RegistryKey>(key);
}

bool SystemRegistry::enumerateKey(RegistryKey key, std::uint32_t index, std::string& name) {
  char buffer[256];  // a key's name has at most 255 characters
  DWORD length = sizeof buffer;
  if (::RegEnumKeyExA(reinterpret_cast<HKEY>(key), index, buffer, &length, nullptr, nullptr, nullptr, nullptr) !=
      ERROR_SUCCESS) {
    return false;
  }
  name.assign(buffer, length);
  return true;
}

void SystemRegistry::close(RegistryKey key) { ::RegCloseKey(reinterpret_cast<HKEY>(key)); }

}  // namespace pelvaro::win32
