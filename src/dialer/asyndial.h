// The dial notifications: the hook on the hidden window that they are posted to, and what is done about each.
#pragma once

#include <cstdint>

#include "dialer/dial_context.h"

namespace pelvaro {

class frmDial;

namespace asyndial {

// The text shown for a RAS connection state (RASCS_ values of ras.h), null when the state has none.
const char* progressText(std::uint32_t state);

// What is done about one notification: progress text, then success, then disconnection, then error.
void OnRasDialEvent(DialContext& context, frmDial& form, std::uint32_t state, std::uint32_t error);

// The hook that takes the place of the hidden window's procedure. One window at a time.
class RasDialEventHook : public MessageHook {
 public:
  RasDialEventHook(DialContext& context, frmDial& form) : context_(context), form_(form) {}

  // Hooks the window; a window hooked before gets its procedure back first. Registers the dial event message once.
  void install(WindowHandle window);
  // Gives the hooked window its procedure back; does nothing when none is hooked.
  void remove();
  WindowHandle hookedWindow() const { return hookedWindow_; }

  std::intptr_t message(WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                        std::intptr_t lParam) override;

 private:
  DialContext& context_;
  frmDial& form_;
  WindowHandle hookedWindow_ = 0;
  WindowProcedure previous_ = 0;
};

}  // namespace asyndial
}  // namespace pelvaro
