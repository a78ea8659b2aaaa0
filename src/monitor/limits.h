// The limits of a connection as pure decisions: how near a used amount is to its limit, and how long a time limit has
// run. Used by the main window once a second.
#pragma once

#include <cstdint>

namespace pelvaro::monitor {

// Which of the two limits is watched; any other number watches none.
constexpr std::int16_t kTimeLimit = 0;
constexpr std::int16_t kSizeLimit = 1;

enum class Reach {
  below,  // at most 70 % of the limit
  close,  // more than 70 %
  passed  // more than the limit
};

// 70 % of a limit, rounded to a whole number, halves to the even one.
std::int32_t nearThreshold(std::int32_t limit);

// How near `used` is to `limit` (seconds or kilobytes). Strictly: exactly 70 % is below, exactly the limit is close.
Reach reach(std::int32_t used, std::int32_t limit);

// Seconds from one time of day to another (0 to 86399); an earlier one is tomorrow's, the same one is no time at all.
int elapsedSeconds(int start, int now);

// A number of seconds added to midnight, as a time of day in seconds.
int timeOfDay(std::int32_t seconds);

}  // namespace pelvaro::monitor
