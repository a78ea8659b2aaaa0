// Restarting the system, and the right to do so.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace pelvaro {

using TokenHandle = std::uintptr_t;

// TOKEN_PRIVILEGES with one entry (Windows SDK, winnt.h).
struct PrivilegeRecord {
  std::uint32_t count;
  std::array<std::uint32_t, 2> identifier;  // a LUID: low part, high part
  std::uint32_t attributes;
};
static_assert(sizeof(PrivilegeRecord) == 16);

struct Shutdown {
  virtual ~Shutdown() = default;
  // OpenProcessToken of the own process; 0 when that fails.
  virtual TokenHandle openOwnToken(std::uint32_t access) = 0;
  // LookupPrivilegeValueA.
  virtual bool lookupPrivilege(const std::string& system, const std::string& name,
                               std::array<std::uint32_t, 2>& identifier) = 0;
  // AdjustTokenPrivileges, with a record and a length of its own that receive the state before.
  virtual bool adjustPrivileges(TokenHandle token, bool disableAll, const PrivilegeRecord& record,
                                std::uint32_t bufferLength) = 0;
  // ExitWindowsEx.
  virtual bool exitWindows(std::uint32_t flags, std::uint32_t reason) = 0;
};

}  // namespace pelvaro
