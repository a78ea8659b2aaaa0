// The registry, as far as the program reads it.
#pragma once

#include <cstdint>
#include <string>

namespace pelvaro {

using RegistryKey = std::uintptr_t;  // an HKEY; 0 is "none"

struct Registry {
  virtual ~Registry() = default;

  // RegOpenKeyExA under HKEY_LOCAL_MACHINE for reading; `view64` asks for the 64-bit view. Gives 0 on failure.
  virtual RegistryKey openLocalMachine(const std::string& path, bool view64) = 0;
  // RegEnumKeyExA. Gives false when there is no such index, or on failure.
  virtual bool enumerateKey(RegistryKey key, std::uint32_t index, std::string& name) = 0;
  // RegCloseKey.
  virtual void close(RegistryKey key) = 0;
};

}  // namespace pelvaro
