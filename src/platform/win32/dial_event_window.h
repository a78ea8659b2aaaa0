// The hidden window frmDial and the replacing of its procedure.
#pragma once

#include "platform/dial_event_window.h"
#include "platform/win32/event_loop.h"

namespace pelvaro::win32 {

class HiddenDialWindow : public DialEventWindow {
 public:
  explicit HiddenDialWindow(MessageLoop& loop) : loop_(loop) {}

  WindowHandle create() override;
  void destroy(WindowHandle window) override;
  std::uint32_t registerMessage(const char* name) override;
  WindowProcedure hook(WindowHandle window, MessageHook& hook) override;
  void restore(WindowHandle window, WindowProcedure previous) override;
  std::intptr_t callPrevious(WindowProcedure previous, WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                             std::intptr_t lParam) override;

 private:
  MessageLoop& loop_;
};

}  // namespace pelvaro::win32
