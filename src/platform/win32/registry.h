// The system's registry.
#pragma once

#include "platform/registry.h"

namespace pelvaro::win32 {

struct SystemRegistry : Registry {
  RegistryKey openLocalMachine(const std::string& path, bool view64) override;
  bool enumerateKey(RegistryKey key, std::uint32_t index, std::string& name) override;
  void close(RegistryKey key) override;
};

}  // namespace pelvaro::win32
