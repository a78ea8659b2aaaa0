// The system's table of network interfaces with their octet counters. One verb: the call of the IP helper, buffer in
// and out; which row counts is decided above.
#pragma once

#include <cstdint>

namespace pelvaro {

struct InterfaceTable {
  virtual ~InterfaceTable() = default;
  // GetIfTable. `size` is the buffer's size in bytes; a null `table` has none. Gives a system error number: 0 for
  // success, 122 for a buffer that is too small, with the needed size in `size`.
  virtual std::uint32_t getIfTable(void* table, std::uint32_t* size, bool sorted) = 0;
};

}  // namespace pelvaro
