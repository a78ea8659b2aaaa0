// The hidden window that the dial-up service posts its progress to, and the replacing of its window procedure.
// Used by the dialer; implemented over user32 in win32/ and by a journal in fake/.
#pragma once

#include <cstdint>

namespace pelvaro {

using WindowHandle = std::uintptr_t;  // an HWND; 0 is "none"
using WindowProcedure =
    std::uintptr_t;  // a window procedure's address as SetWindowLongA gives it; opaque above the seam

// What takes the place of a window's procedure: gets every message and gives the result for the system.
struct MessageHook {
  virtual ~MessageHook() = default;
  virtual std::intptr_t message(WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                                std::intptr_t lParam) = 0;
};

struct DialEventWindow {
  virtual ~DialEventWindow() = default;

  // Makes the window (class "Pelvaro.frmDial", never visible). Gives its handle.
  virtual WindowHandle create() = 0;
  // DestroyWindow. May be called while the window's own procedure runs.
  virtual void destroy(WindowHandle window) = 0;
  // RegisterWindowMessageA. Gives 0 on failure.
  virtual std::uint32_t registerMessage(const char* name) = 0;
  // SetWindowLongA(GWL_WNDPROC) with a procedure that calls `hook`. Gives the previous procedure. One hook at a time.
  virtual WindowProcedure hook(WindowHandle window, MessageHook& hook) = 0;
  // SetWindowLongA(GWL_WNDPROC) with a procedure that hook() gave.
  virtual void restore(WindowHandle window, WindowProcedure previous) = 0;
  // CallWindowProcA. The window may be gone by now.
  virtual std::intptr_t callPrevious(WindowProcedure previous, WindowHandle window, std::uint32_t number,
                                     std::uintptr_t wParam, std::intptr_t lParam) = 0;
};

}  // namespace pelvaro
