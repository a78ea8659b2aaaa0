// Where the fields of GetIfTable's MIB_IFTABLE and MIB_IFROW lie, in bytes (Windows SDK, <ipmib.h>). Asserted against
// that header in win32/interface_table.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

namespace pelvaro::if_table {

constexpr std::size_t kCount = 0;  // how many rows follow
constexpr std::size_t kFirstRow = 4;
constexpr std::size_t kRowSize = 860;

// Within a row.
constexpr std::size_t kIndex = 512;
constexpr std::size_t kType = 516;
constexpr std::size_t kMtu = 520;
constexpr std::size_t kSpeed = 524;
constexpr std::size_t kAdminStatus = 540;
constexpr std::size_t kOperStatus = 544;
constexpr std::size_t kInOctets = 552;   // received, 32 bits that wrap
constexpr std::size_t kOutOctets = 576;  // sent, 32 bits that wrap
constexpr std::size_t kDescriptionLength = 600;
constexpr std::size_t kDescription = 604;

// IANA ifType values.
constexpr std::uint32_t kEthernet = 6;
constexpr std::uint32_t kPpp = 23;
constexpr std::uint32_t kLoopback = 24;

}  // namespace pelvaro::if_table
