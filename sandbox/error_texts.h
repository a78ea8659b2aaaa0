// The texts of the dial-up service's error codes. Used by the dial line's errorString().
#pragma once

#include <cstdint>

namespace pelvaro::line {

// The text of a code, null when there is none.
const char* errorText(std::uint32_t code);

// The text of a system error code as the system words it (with its trailing CR LF), null when the line knows none.
const char* systemText(std::uint32_t code);

}  // namespace pelvaro::line
