#include "monitor/limits.h"

#include "base/numbers.h"

namespace pelvaro::monitor {

namespace {
constexpr int kDay = 86400;
}  // namespace

std::int32_t nearThreshold(std::int32_t limit) {
  // Stored, so that a processor with wider registers rounds the product as all others do: 5 x 0.7 is 3.5.
  const volatile double product = limit * 0.7;
  return toInt32(product);
}

Reach reach(std::int32_t used, std::int32_t limit) {
  if (used > limit) return Reach::passed;
  return used > nearThreshold(limit) ? Reach::close : Reach::below;
}

int elapsedSeconds(int start, int now) { return now < start ? now - start + kDay : now - start; }

int timeOfDay(std::int32_t seconds) { return (seconds % kDay + kDay) % kDay; }

}  // namespace pelvaro::monitor
