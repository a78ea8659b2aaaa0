// What the pieces of the dialer share: the services they call, the windows they see, and the state of the one
// connection. One object a program.
#pragma once

#include <string>

#include "dialer/dialer_screen.h"
#include "platform/dial_event_window.h"
#include "platform/dial_service.h"
#include "platform/event_loop.h"

namespace pelvaro {

struct DialContext {
  DialService& ras;
  DialEventWindow& windows;
  EventLoop& loop;
  DialerScreen& screen;

  bool connected = false;              // the service has accepted a dial request
  std::string lastDialResult{};        // the last RasDialA result as decimal text
  std::uint32_t lastHangUpResult = 0;  // of the hang-up after a failure
  std::uint32_t dialEventMessage = 0;  // the registered message, 0 until the first hook
};

}  // namespace pelvaro
