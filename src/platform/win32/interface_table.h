// The system's table of network interfaces, from iphlpapi.dll.
#pragma once

#include "platform/interface_table.h"
#include "platform/win32/system_library.h"

namespace pelvaro::win32 {

class SystemInterfaceTable : public InterfaceTable {
 public:
  std::uint32_t getIfTable(void* table, std::uint32_t* size, bool sorted) override;

 private:
  SystemLibrary library_{"iphlpapi.dll"};
  SystemFunction<DWORD(WINAPI*)(void*, ULONG*, BOOL)> getIfTable_{library_, "GetIfTable"};
};

}  // namespace pelvaro::win32
