// The hidden window that gets the dial notifications, for tests: windows 501, 502, ..., each with a procedure of its
// own (1501, 1502, ...), every call journalled, messages delivered by hand.
#pragma once

#include <map>

#include "platform/dial_event_window.h"
#include "platform/fake/journal.h"

namespace pelvaro::fake {

struct FakeDialEventWindow : DialEventWindow {
  explicit FakeDialEventWindow(Journal& log) : journal(log) {}

  static constexpr WindowProcedure kHookProcedure = 7777;

  Journal& journal;
  std::uint32_t registered = 50000;  // what registerMessage gives
  std::intptr_t previousResult = 0;  // what the previous procedures give
  WindowHandle lastWindow = 500;
  std::map<WindowHandle, WindowProcedure> procedures;  // of the windows that exist
  MessageHook* hooked = nullptr;
  bool unhookable = false;  // hooking fails

  // Delivers a message to a window as the system does: to the hook when it is in place, else to nobody.
  std::intptr_t send(WindowHandle window, std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) {
    const auto found = procedures.find(window);
    if (found == procedures.end() || found->second != kHookProcedure) return 0;
    return hooked->message(window, number, wParam, lParam);
  }

  WindowHandle create() override {
    ++lastWindow;
    procedures[lastWindow] = lastWindow + 1000;
    journal.add("CreateWindow " + std::to_string(lastWindow));
    return lastWindow;
  }
  void destroy(WindowHandle window) override {
    journal.add("DestroyWindow " + std::to_string(window));
    procedures.erase(window);
  }
  std::uint32_t registerMessage(const char* name) override {
    journal.add("RegisterWindowMessage " + std::string(name));
    return registered;
  }
  WindowProcedure hook(WindowHandle window, MessageHook& hook) override {
    journal.add("SetWindowProc " + std::to_string(window) + " hook");
    if (unhookable) return 0;
    hooked = &hook;
    return std::exchange(procedures[window], kHookProcedure);
  }
  void restore(WindowHandle window, WindowProcedure previous) override {
    journal.add("SetWindowProc " + std::to_string(window) + " " + std::to_string(previous));
    procedures[window] = previous;
  }
  std::intptr_t callPrevious(WindowProcedure previous, WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                             std::intptr_t lParam) override {
    journal.add("CallWindowProc " + std::to_string(previous) + " " + std::to_string(window) + " " +
                std::to_string(number) + " " + std::to_string(wParam) + " " + std::to_string(lParam));
    return previousResult;
  }
};

}  // namespace pelvaro::fake
