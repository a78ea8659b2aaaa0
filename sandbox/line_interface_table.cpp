#include "line_interface_table.h"

namespace pelvaro::line {

std::uint32_t LineInterfaceTable::getIfTable(void* table, std::uint32_t* size, bool sorted) {
  return line_.counters().getIfTable(table, size, sorted, line_.now());
}

}  // namespace pelvaro::line
