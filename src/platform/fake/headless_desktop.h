// A desktop without a screen, for whole-program tests: forms and controls stay plain values, timers run on a clock that
// the test turns by hand, events and dial notifications queue up and are run by the loop as the system does.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "platform/control_peer.h"
#include "platform/dial_event_window.h"
#include "platform/event_loop.h"

namespace pelvaro::fake {

class HeadlessDesktop : public EventLoop, public FormFactory, public DialEventWindow {
 public:
  // Called whenever the clock has moved on.
  std::function<void(std::uint64_t milliseconds)> onTime;
  // The run-time errors that nobody handled; the first one ends the program.
  std::vector<std::string> reported;
  std::map<int, Colour> systemColours;
  bool contrast = false;
  std::uint32_t registeredMessage = 50000;
  int yieldTakes = 0;  // milliseconds that pass in a yield

  std::uint64_t now() const { return now_; }
  bool ended() const { return ended_; }

  // Lets an event run at the next turn of the loop, or `delay` milliseconds from now.
  void post(std::function<void()> event) { queue_.push_back(std::move(event)); }
  void postIn(int delay, std::function<void()> event);
  // A message to the hidden window; lost when the window is gone by then.
  void postMessage(WindowHandle window, std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam);
  // Runs one event as the system would: nothing that it throws gets out.
  void guarded(const std::function<void()>& event);
  // Turns the clock, running everything that comes due on the way. May be called from inside an event.
  void advance(int milliseconds);
  int formsVisible() const { return formsVisible_; }
  // How many visible forms a modal one keeps from input, whether it keeps the one of this layout, and how many waits
  // for modal forms are under way.
  int formsKeptFromInput() const;
  bool keptFromInput(const FormLayout& layout) const;
  int modalWaits() const { return modalWaits_; }
  int hiddenWindows() const { return static_cast<int>(windows_.size()); }
  // The hooks that were put in place less those that were given back: one that goes with its window counts on.
  int hooks() const { return hooks_; }

  void yield() override;
  void runUntil(const std::function<bool()>& done) override;
  void end() override { ended_ = true; }

  std::shared_ptr<FormPeer> createForm(const FormLayout& layout, FormEvents& events) override;
  Colour systemColour(int index) override { return systemColours[index]; }
  bool highContrast() override { return contrast; }

  WindowHandle create() override;
  void destroy(WindowHandle window) override { windows_.erase(window); }
  std::uint32_t registerMessage(const char* name) override;
  WindowProcedure hook(WindowHandle window, MessageHook& hook) override;
  void restore(WindowHandle window, WindowProcedure previous) override;
  std::intptr_t callPrevious(WindowProcedure, WindowHandle, std::uint32_t, std::uintptr_t, std::intptr_t) override {
    return 0;
  }

 private:
  class HeadlessForm;
  class HeadlessTimer;
  struct Due {
    std::uint64_t at;
    std::function<void()> event;
  };

  void runQueue();
  // Runs the timers and delayed events that are due now.
  void runDue();
  // When the next of them comes due, 0 when there is none.
  std::uint64_t nextDue() const;

  std::uint64_t now_ = 1;
  bool ended_ = false;
  int formsVisible_ = 0;
  int modalWaits_ = 0;
  std::vector<std::weak_ptr<HeadlessForm>> forms_;
  std::deque<std::function<void()>> queue_;
  std::vector<Due> delayed_;
  std::vector<HeadlessTimer*> timers_;
  std::map<WindowHandle, MessageHook*> windows_;
  WindowHandle lastWindow_ = 500;
  int hooks_ = 0;
};

}  // namespace pelvaro::fake
