#include "drivers/dec.h"

namespace pelvaro::dec {

namespace {

constexpr std::uint32_t kAdjustAndQuery = 32 | 8;  // TOKEN_ADJUST_PRIVILEGES, TOKEN_QUERY
constexpr std::uint32_t kEnabled = 2;              // SE_PRIVILEGE_ENABLED
constexpr std::uint32_t kReboot = 2;               // EWX_REBOOT
constexpr std::uint32_t kReason = 0xFFFFFFFF;

}  // namespace

// Kept on purpose: the token stays open; the program ends right after.
void EnableShutdownPrivilege(Shutdown& shutdown) {
  const TokenHandle token = shutdown.openOwnToken(kAdjustAndQuery);
  PrivilegeRecord record{.count = 1, .identifier = {}, .attributes = kEnabled};
  shutdown.lookupPrivilege("", "SeShutdownPrivilege", record.identifier);
  shutdown.adjustPrivileges(token, false, record, sizeof record);
}

void RestartWindows(Shutdown& shutdown) {
  EnableShutdownPrivilege(shutdown);
  shutdown.exitWindows(kReboot, kReason);
}

}  // namespace pelvaro::dec
