#include "ui/controls/timer.h"

#include <utility>

#include "ui/controls/form.h"

namespace pelvaro {

namespace {

// Sets a flag for as long as a handler runs, however it ends.
struct Running {
  explicit Running(bool& flag) : flag_(flag) { flag_ = true; }
  ~Running() { flag_ = false; }
  bool& flag_;
};

}  // namespace

Timer::Timer(Form& form, Design design)
    : form_(form), design_(design), interval_(design.interval), enabled_(design.enabled) {
  form.add(*this);
}

void Timer::setEnabled(bool enabled) {
  form_.load();
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  if (!enabled) waiting_ = false;
  apply();
}

void Timer::setInterval(int milliseconds) {
  form_.load();
  if (interval_ == milliseconds) return;
  interval_ = milliseconds;
  apply();
}

void Timer::ticked() {
  if (!enabled_ || !form_.loaded()) return;
  if (running_) {
    waiting_ = true;
    return;
  }
  if (design_.yieldsFirst) {
    form_.services().loop.yieldAtTick();
    // Anything may have happened in there; another tick of ours has run to its end.
    if (!enabled_ || !form_.loaded()) return;
  }
  {
    const Running running(running_);
    if (onTick) onTick();
  }
  if (std::exchange(waiting_, false) && enabled_ && peer_) peer_->tickSoon();
}

void Timer::apply() {
  if (!peer_) return;
  if (enabled_) {
    peer_->start(interval_);
  } else {
    peer_->stop();
  }
}

void Timer::attach(std::unique_ptr<TimerPeer> peer) {
  peer_ = std::move(peer);
  interval_ = design_.interval;
  enabled_ = design_.enabled;
  apply();
}

void Timer::detach() {
  peer_.reset();
  enabled_ = false;
  waiting_ = false;
}

}  // namespace pelvaro
