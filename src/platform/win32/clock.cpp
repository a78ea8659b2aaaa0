#include "platform/win32/clock.h"

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

int SystemClock::secondsOfDay() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
}

}  // namespace pelvaro::win32
