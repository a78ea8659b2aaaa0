// The platform's message for a dial-up or system error code.
#pragma once

#include <cstdint>
#include <string>

#include "platform/dial_service.h"

namespace pelvaro::Module1 {

// The text of a code, empty when there is none. Codes below 601 (as signed numbers) are the system's own, the others
// the dial-up service's. A line end that the system puts behind its text stays.
std::string RasErrorText(DialService& ras, std::int32_t code);

}  // namespace pelvaro::Module1
