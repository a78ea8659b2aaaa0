// The system's local time.
#pragma once

#include "platform/clock.h"

namespace pelvaro::win32 {

struct SystemClock : Clock {
  int secondsOfDay() override;
};

}  // namespace pelvaro::win32
