// The message loop of the user-interface thread, and the guard that every event of ours runs in.
#pragma once

#include <functional>

#include "base/runtime_error.h"
#include "platform/event_loop.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

class MessageLoop : public EventLoop {
 public:
  // What is done about an error that no handler took: called once, then the program ends.
  std::function<void(const RuntimeError&)> onError;

  void yield() override;
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
  void fail(const RuntimeError& error);
  bool ended() const { return ended_; }

 private:
  void dispatch(MSG& message);

  bool ended_ = false;
  bool failed_ = false;
};

}  // namespace pelvaro::win32
