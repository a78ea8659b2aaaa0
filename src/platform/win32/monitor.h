// The screen that a window is on, or would be.
#pragma once

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

inline MONITORINFO monitorInfo(HMONITOR monitor) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  ::GetMonitorInfoA(monitor, &info);
  return info;
}

inline MONITORINFO monitorOf(HWND window) { return monitorInfo(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST)); }

inline MONITORINFO monitorOf(const RECT& area) {
  return monitorInfo(::MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST));
}

}  // namespace pelvaro::win32
