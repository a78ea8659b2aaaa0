// Timer: raises a tick every so many milliseconds while enabled. It never re-enters its own handler: a tick that comes
// while the handler runs (a question is open, a yield is under way) waits, one at most; other timers go on.
#pragma once

#include <functional>
#include <memory>

#include "platform/control_peer.h"

namespace pelvaro {

class Form;

class Timer : public TimerEvents {
 public:
  // The design values; a load of the form goes back to them.
  struct Design {
    int interval;  // milliseconds
    bool enabled;
    // The handler begins with a yield, and counts as running only after it, so that it goes on behind a question
    // that opens inside that yield.
    bool yieldsFirst = false;
  };

  Timer(Form& form, Design design);

  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);
  int interval() const { return interval_; }
  void setInterval(int milliseconds);

  // One tick, as the screen reports it.
  void ticked() override;
  std::function<void()> onTick;

 private:
  friend class Form;
  void attach(std::unique_ptr<TimerPeer> peer);
  void detach();
  void apply();

  Form& form_;
  const Design design_;
  std::unique_ptr<TimerPeer> peer_;
  int interval_;
  bool enabled_;
  bool running_ = false;
  bool waiting_ = false;
};

}  // namespace pelvaro
