// The time of day.
#pragma once

namespace pelvaro {

struct Clock {
  virtual ~Clock() = default;
  // Whole seconds since local midnight, 0 to 86399.
  virtual int secondsOfDay() = 0;
};

}  // namespace pelvaro
