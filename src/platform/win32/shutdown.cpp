#include "platform/win32/shutdown.h"

#include <cstddef>

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

static_assert(sizeof(PrivilegeRecord) == sizeof(TOKEN_PRIVILEGES));
static_assert(offsetof(PrivilegeRecord, identifier) == offsetof(TOKEN_PRIVILEGES, Privileges));
static_assert(offsetof(PrivilegeRecord, attributes) ==
              offsetof(TOKEN_PRIVILEGES, Privileges) + offsetof(LUID_AND_ATTRIBUTES, Attributes));

TokenHandle SystemShutdown::openOwnToken(std::uint32_t access) {
  HANDLE token = nullptr;
  ::OpenProcessToken(::GetCurrentProcess(), access, &token);
  return reinterpret_cast<TokenHandle>(token);
}

bool SystemShutdown::lookupPrivilege(const std::string& system, const std::string& name,
                                     std::array<std::uint32_t, 2>& identifier) {
  LUID luid{};
  if (!::LookupPrivilegeValueA(system.c_str(), name.c_str(), &luid)) return false;
  identifier = {luid.LowPart, static_cast<std::uint32_t>(luid.HighPart)};
  return true;
}

bool SystemShutdown::adjustPrivileges(TokenHandle token, bool disableAll, const PrivilegeRecord& record,
                                      std::uint32_t bufferLength) {
  TOKEN_PRIVILEGES wanted{};
  wanted.PrivilegeCount = record.count;
  wanted.Privileges[0].Luid = {record.identifier[0], static_cast<LONG>(record.identifier[1])};
  wanted.Privileges[0].Attributes = record.attributes;
  TOKEN_PRIVILEGES before{};
  DWORD length = 0;
  return ::AdjustTokenPrivileges(reinterpret_cast<HANDLE>(token), disableAll, &wanted, bufferLength, &before, &length);
}

bool SystemShutdown::exitWindows(std::uint32_t flags, std::uint32_t reason) { return ::ExitWindowsEx(flags, reason); }

}  // namespace pelvaro::win32
