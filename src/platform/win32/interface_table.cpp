#include "platform/win32/interface_table.h"

// Behind windows_header.h.
#include <winsock2.h>

#include <iphlpapi.h>

#include "platform/if_table_layout.h"

namespace pelvaro::win32 {

static_assert(if_table::kCount == offsetof(MIB_IFTABLE, dwNumEntries));
static_assert(if_table::kFirstRow == offsetof(MIB_IFTABLE, table));
static_assert(if_table::kRowSize == sizeof(MIB_IFROW));
static_assert(if_table::kIndex == offsetof(MIB_IFROW, dwIndex));
static_assert(if_table::kType == offsetof(MIB_IFROW, dwType));
static_assert(if_table::kMtu == offsetof(MIB_IFROW, dwMtu));
static_assert(if_table::kSpeed == offsetof(MIB_IFROW, dwSpeed));
static_assert(if_table::kAdminStatus == offsetof(MIB_IFROW, dwAdminStatus));
static_assert(if_table::kOperStatus == offsetof(MIB_IFROW, dwOperStatus));
static_assert(if_table::kInOctets == offsetof(MIB_IFROW, dwInOctets));
static_assert(if_table::kOutOctets == offsetof(MIB_IFROW, dwOutOctets));
static_assert(if_table::kDescriptionLength == offsetof(MIB_IFROW, dwDescrLen));
static_assert(if_table::kDescription == offsetof(MIB_IFROW, bDescr));
static_assert(if_table::kEthernet == MIB_IF_TYPE_ETHERNET);
static_assert(if_table::kPpp == MIB_IF_TYPE_PPP);
static_assert(if_table::kLoopback == MIB_IF_TYPE_LOOPBACK);

std::uint32_t SystemInterfaceTable::getIfTable(void* table, std::uint32_t* size, bool sorted) {
  ULONG bytes = *size;
  const DWORD result = getIfTable_.call(ERROR_PROC_NOT_FOUND, table, &bytes, sorted);
  *size = bytes;
  return result;
}

}  // namespace pelvaro::win32
