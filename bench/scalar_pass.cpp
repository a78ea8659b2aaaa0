#include "scalar_pass.h"

#include <array>
#include <cstddef>

namespace pelvaro {

namespace {

std::array<char, 256> makeTable() {
  std::array<char, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<char>(static_cast<unsigned char>(i * 7 + 3));
  return table;
}

const std::array<char, 256> kTable = makeTable();

}  // namespace

void scalarPass(std::string_view from, std::string& to) {
  char* out = to.data();
  for (const char c : from) *out++ = kTable[static_cast<unsigned char>(c)];
}

}  // namespace pelvaro
