#include "platform/win32/dial_event_window.h"

namespace pelvaro::win32 {

namespace {

constexpr const char* kClass = "Pelvaro.frmDial";

// A window procedure has no argument of ours, so what the one hooked window calls is kept here.
struct Hooked {
  MessageHook* hook = nullptr;
  MessageLoop* loop = nullptr;
} g_hooked;

LRESULT CALLBACK hookProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  bool passedOn = false;
  const Hooked hooked = g_hooked;
  if (hooked.hook) {
    hooked.loop->guarded([&] {
      passedOn = true;
      result = hooked.hook->message(reinterpret_cast<WindowHandle>(window), message, wParam, lParam);
    });
  }
  // Once the program is ending no event of ours runs; the window still needs its messages.
  return passedOn ? result : ::DefWindowProcA(window, message, wParam, lParam);
}

HWND asWindow(WindowHandle window) { return reinterpret_cast<HWND>(window); }

}  // namespace

WindowHandle HiddenDialWindow::create() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = ::DefWindowProcA;
  windowClass.hInstance = ::GetModuleHandleA(nullptr);
  windowClass.lpszClassName = kClass;
  ::RegisterClassA(&windowClass);  // fails harmlessly when it is registered already
  return reinterpret_cast<WindowHandle>(::CreateWindowExA(WS_EX_TOOLWINDOW, kClass, "", WS_POPUP, 0, 0, 0, 0, nullptr,
                                                          nullptr, windowClass.hInstance, nullptr));
}

void HiddenDialWindow::destroy(WindowHandle window) { ::DestroyWindow(asWindow(window)); }

std::uint32_t HiddenDialWindow::registerMessage(const char* name) { return ::RegisterWindowMessageA(name); }

WindowProcedure HiddenDialWindow::hook(WindowHandle window, MessageHook& hook) {
  g_hooked = {&hook, &loop_};
  return static_cast<WindowProcedure>(
      ::SetWindowLongA(asWindow(window), GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(&hookProcedure))));
}

void HiddenDialWindow::restore(WindowHandle window, WindowProcedure previous) {
  ::SetWindowLongA(asWindow(window), GWL_WNDPROC, static_cast<LONG>(previous));
  g_hooked = {};
}

std::intptr_t HiddenDialWindow::callPrevious(WindowProcedure previous, WindowHandle window, std::uint32_t number,
                                             std::uintptr_t wParam, std::intptr_t lParam) {
  return ::CallWindowProcA(reinterpret_cast<WNDPROC>(previous), asWindow(window), number, wParam, lParam);
}

}  // namespace pelvaro::win32
