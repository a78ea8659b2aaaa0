// The message loop of the user-interface thread, and the guard that every event of ours runs in.
#pragma once

#include <functional>

#include "base/runtime_error.h"
#include "platform/event_loop.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

// To a form's window, with a timer in wParam: a tick of it as soon as other pending events have run. Never WM_TIMER,
// which comes when nothing else is pending.
constexpr UINT kTickSoon = WM_APP + 4;

class MessageLoop : public EventLoop {
 public:
  // What is done about an error that no handler took: called once, then the program ends.
  std::function<void(const RuntimeError&)> onError;

  void yield() override;
  // A tick of the system's own comes only when nothing else is pending, so there is nothing to run then; to look all
  // the same, twenty times a second, would be a third of what an idle program costs.
  void yieldAtTick() override;
  void runUntil(const std::function<bool()>& done) override;
  void end() override;

  // Runs until the program ends.
  void run();

  // Runs one event; nothing that it throws gets out. Once the program is ending no event is run any more.
  template <typename Event>
  void guarded(Event event) {
    if (ended_ || failed_) return;
    try {
      event();
    } catch (const ProgramEnded&) {
    } catch (const RuntimeError& error) {
      fail(error);
    } catch (const std::exception& error) {
      fail(internalError(error.what()));
    }
  }
  // Runs the handler of a timer at a tick of the system's own.
  template <typename Handler>
  void tick(Handler handler) {
    atTick_ = true;
    guarded(handler);
    atTick_ = false;
  }
  void fail(const RuntimeError& error);
  bool ended() const { return ended_; }

 private:
  void dispatch(MSG& message);

  bool ended_ = false;
  bool failed_ = false;
  bool atTick_ = false;  // at the beginning of a timer's handler
};

}  // namespace pelvaro::win32
