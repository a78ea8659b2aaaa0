// What the fuzzers share: a check that ends the program, which libFuzzer reports, and the input's lines.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace pelvaro {

inline void check(bool holds) {
  if (!holds) std::abort();
}

// The text up to the next line end, which is taken away with it.
inline std::string takeLine(std::string_view& left) {
  const std::size_t end = std::min(left.find('\n'), left.size());
  std::string line(left.substr(0, end));
  left.remove_prefix(std::min(end + 1, left.size()));
  return line;
}

}  // namespace pelvaro
