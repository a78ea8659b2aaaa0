// Network interfaces for tests: planted rows, counters and results; or another table behind it, of which single calls
// can be made to fail.
#pragma once

#include <cstring>
#include <vector>

#include "base/bytes.h"
#include "platform/if_table_layout.h"
#include "platform/interface_table.h"

namespace pelvaro::fake {

struct FakeInterfaceTable : InterfaceTable {
  struct Row {
    std::uint32_t type, received, sent;
  };
  std::vector<Row> rows = {{if_table::kLoopback, 500, 500}, {if_table::kEthernet, 0, 0}};
  InterfaceTable* behind = nullptr;  // asked instead of the rows
  std::uint32_t failure = 0;         // what a call with a buffer gives
  std::uint32_t claimedRows = 0;     // written as the count, when not 0
  std::uint32_t claimedSize = 0;     // told as the needed size, when not 0
  int calls = 0, fills = 0, unsorted = 0;

  // The row that counts in most tests, in kilobytes.
  void count(std::uint32_t receivedKb, std::uint32_t sentKb) { rows[1] = {6, receivedKb * 1024, sentKb * 1024}; }

  std::uint32_t getIfTable(void* table, std::uint32_t* size, bool sorted) override {
    ++calls;
    if (!sorted) ++unsorted;
    if (table && failure != 0) return failure;
    if (behind) return behind->getIfTable(table, size, sorted);
    const auto needed = static_cast<std::uint32_t>(if_table::kFirstRow + rows.size() * if_table::kRowSize);
    if (!table) {
      *size = claimedSize != 0 ? claimedSize : needed;
      return 122;
    }
    ++fills;
    const Bytes bytes(static_cast<std::uint8_t*>(table), *size);
    std::memset(table, 0, bytes.size());
    put32(bytes, if_table::kCount, claimedRows != 0 ? claimedRows : static_cast<std::uint32_t>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const Bytes row = from(bytes, if_table::kFirstRow + i * if_table::kRowSize);
      put32(row, if_table::kType, rows[i].type);
      put32(row, if_table::kInOctets, rows[i].received);
      put32(row, if_table::kOutOctets, rows[i].sent);
    }
    return 0;
  }
};

}  // namespace pelvaro::fake
