// Restarting the system, by advapi32 and user32.
#pragma once

#include "platform/shutdown.h"

namespace pelvaro::win32 {

struct SystemShutdown : Shutdown {
  TokenHandle openOwnToken(std::uint32_t access) override;
  bool lookupPrivilege(const std::string& system, const std::string& name,
                       std::array<std::uint32_t, 2>& identifier) override;
  bool adjustPrivileges(TokenHandle token, bool disableAll, const PrivilegeRecord& record,
                        std::uint32_t bufferLength) override;
  bool exitWindows(std::uint32_t flags, std::uint32_t reason) override;
};

}  // namespace pelvaro::win32
