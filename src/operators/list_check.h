// What is wrong with an operator list file, line by line. Used by the tool for list files; the program itself takes a
// list as it is.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace pelvaro::operators {

// Told each fault with the number of its line, from 1, in the order of the lines.
using FaultReport = std::function<void(std::size_t line, const std::string& what)>;

// Looks at a file's bytes; gives the number of records (0 when there is only a header, or nothing).
std::size_t checkList(std::string_view bytes, const FaultReport& report);

}  // namespace pelvaro::operators
