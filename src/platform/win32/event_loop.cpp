#include "platform/win32/event_loop.h"

#include <utility>

namespace pelvaro::win32 {

namespace {

// A yield that has lasted this long returns after its next timer message: timers that come due faster than their
// handlers end must not keep it for ever. Milliseconds.
constexpr DWORD kLongYield = 50;

}  // namespace

void MessageLoop::dispatch(MSG& message) {
  if (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST) {
    // Enter held down must not press the button of the next window that opens.
    constexpr LPARAM kRepeated = 1 << 30;
    if (message.message == WM_KEYDOWN && message.wParam == VK_RETURN && (message.lParam & kRepeated)) return;
    const HWND form = ::GetAncestor(message.hwnd, GA_ROOT);
    if (form && ::IsDialogMessageA(form, &message)) return;
    ::TranslateMessage(&message);
  }
  ::DispatchMessageA(&message);
}

void MessageLoop::yield() {
  const DWORD start = ::GetTickCount();
  MSG message;
  while (!ended_ && ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      ended_ = true;
      ::PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    dispatch(message);
    const bool timer = message.message == WM_TIMER || message.message == kTickSoon;
    if (timer && ::GetTickCount() - start > kLongYield) break;
  }
  if (ended_) throw ProgramEnded{};
}

void MessageLoop::yieldAtTick() {
  if (ended_ || !std::exchange(atTick_, false)) yield();
}

void MessageLoop::runUntil(const std::function<bool()>& done) {
  MSG message;
  while (!ended_ && !done()) {
    if (::GetMessageA(&message, nullptr, 0, 0) <= 0) {
      ended_ = true;
      ::PostQuitMessage(0);
      break;
    }
    dispatch(message);
  }
  if (ended_) throw ProgramEnded{};
}

void MessageLoop::end() {
  ended_ = true;
  ::PostQuitMessage(0);
}

void MessageLoop::run() {
  MSG message;
  while (!ended_ && ::GetMessageA(&message, nullptr, 0, 0) > 0) dispatch(message);
  ended_ = true;
}

void MessageLoop::fail(const RuntimeError& error) {
  if (failed_ || ended_) return;
  failed_ = true;
  if (onError) onError(error);
  end();
}

}  // namespace pelvaro::win32
