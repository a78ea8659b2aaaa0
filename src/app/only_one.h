// One program a session: a second start brings the window of the first one forward.
#pragma once

#include "platform/win32/windows_header.h"

namespace pelvaro::app {

class OnlyOne {
 public:
  OnlyOne();
  ~OnlyOne();
  OnlyOne(const OnlyOne&) = delete;
  OnlyOne& operator=(const OnlyOne&) = delete;

  // Whether no other one runs in this session.
  bool first() const { return first_; }
  // Brings the other one's window forward, or the box or window that stands over it. False when it shows none for two
  // seconds: it hangs, or is ending.
  static bool showTheFirst();

 private:
  HANDLE mutex_;
  bool first_;
};

}  // namespace pelvaro::app
