// Counts the memory that the test program asks for, to show where none is asked for.
#pragma once

#include <cstddef>

namespace pelvaro::line {

// How often operator new has run since the start.
std::size_t allocationCount();

}  // namespace pelvaro::line
