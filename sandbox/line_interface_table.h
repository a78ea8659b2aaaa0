// The program's table of interfaces played by the practice line: for whole-program tests without Windows.
#pragma once

#include "dial_line.h"
#include "platform/interface_table.h"

namespace pelvaro::line {

// Gives the line's counters as they are at its last step. The line must outlive it.
class LineInterfaceTable : public InterfaceTable {
 public:
  explicit LineInterfaceTable(DialLine& line) : line_(line) {}

  std::uint32_t getIfTable(void* table, std::uint32_t* size, bool sorted) override;

 private:
  DialLine& line_;
};

}  // namespace pelvaro::line
