#include "platform/fake/headless_desktop.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace pelvaro::fake {

namespace {
// A wait that has lasted this long has nothing left to wait for. Milliseconds.
constexpr std::uint64_t kLongestWait = 1000ull * 3600 * 24 * 30;
}  // namespace

class HeadlessDesktop::HeadlessTimer : public TimerPeer {
 public:
  HeadlessTimer(HeadlessDesktop& desktop, TimerEvents& events) : desktop_(desktop), events_(events) {
    desktop_.timers_.push_back(this);
  }
  ~HeadlessTimer() override {
    *alive_ = false;
    std::erase(desktop_.timers_, this);
  }
  void start(int milliseconds) override {
    interval_ = static_cast<std::uint64_t>(milliseconds);
    due_ = desktop_.now_ + interval_;
  }
  void stop() override { due_ = 0; }
  void tickSoon() override {
    desktop_.post([this, alive = alive_] {
      if (*alive) events_.ticked();
    });
  }
  std::uint64_t due() const { return due_; }
  void fire() {
    due_ = desktop_.now_ + interval_;
    desktop_.guarded([this] { events_.ticked(); });
  }

 private:
  HeadlessDesktop& desktop_;
  TimerEvents& events_;
  std::uint64_t interval_ = 0;
  std::uint64_t due_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

class HeadlessDesktop::HeadlessForm : public FormPeer {
 public:
  HeadlessForm(HeadlessDesktop& desktop, const FormLayout& layout) : desktop_(desktop), layout_(layout) {}
  ~HeadlessForm() override { hide(); }
  std::shared_ptr<ControlPeer> createControl(const ControlLayout&, ControlEvents&) override { return nullptr; }
  std::unique_ptr<TimerPeer> createTimer(TimerEvents& events) override {
    return std::make_unique<HeadlessTimer>(desktop_, events);
  }
  void setColours(Colours) override {}
  void destroy() override {}
  // Modal ones keep those from input that are visible by then.
  void show(bool modal) override {
    if (!std::exchange(visible_, true)) ++desktop_.formsVisible_;
    if (!modal || !kept_.empty()) return;
    for (const std::weak_ptr<HeadlessForm>& form : desktop_.forms_) {
      const auto other = form.lock();
      if (other && other.get() != this && other->visible_ && !std::exchange(other->keptFromInput_, true)) {
        kept_.push_back(other);
      }
    }
  }
  void hide() override {
    if (std::exchange(visible_, false)) --desktop_.formsVisible_;
    for (const std::weak_ptr<HeadlessForm>& form : std::exchange(kept_, {})) {
      if (const auto other = form.lock()) other->keptFromInput_ = false;
    }
  }
  bool keptFromInput() const { return visible_ && keptFromInput_; }
  const FormLayout& layout() const { return layout_; }
  void moveBy(int, int) override {}
  void minimise() override {}
  void setPointer(Pointer) override {}
  Place place() override { return place_; }
  void moveTo(Place place) override { place_ = place; }

 private:
  HeadlessDesktop& desktop_;
  const FormLayout& layout_;
  bool visible_ = false;
  bool keptFromInput_ = false;                     // while a modal form is shown
  std::vector<std::weak_ptr<HeadlessForm>> kept_;  // by this one
  Place place_{100, 100};
};

std::shared_ptr<FormPeer> HeadlessDesktop::createForm(const FormLayout& layout, FormEvents&) {
  auto form = std::make_shared<HeadlessForm>(*this, layout);
  std::erase_if(forms_, [](const std::weak_ptr<HeadlessForm>& gone) { return gone.expired(); });
  forms_.push_back(form);
  return form;
}

int HeadlessDesktop::formsKeptFromInput() const {
  return static_cast<int>(std::count_if(forms_.begin(), forms_.end(), [](const std::weak_ptr<HeadlessForm>& form) {
    const auto there = form.lock();
    return there && there->keptFromInput();
  }));
}

bool HeadlessDesktop::keptFromInput(const FormLayout& layout) const {
  return std::any_of(forms_.begin(), forms_.end(), [&layout](const std::weak_ptr<HeadlessForm>& form) {
    const auto there = form.lock();
    return there && &there->layout() == &layout && there->keptFromInput();
  });
}

void HeadlessDesktop::guarded(const std::function<void()>& event) {
  if (ended_) return;
  try {
    event();
  } catch (const ProgramEnded&) {
  } catch (const RuntimeError& error) {
    if (!ended_) reported.push_back(error.report());
    ended_ = true;
  }
}

void HeadlessDesktop::postIn(int delay, std::function<void()> event) {
  delayed_.push_back({now_ + static_cast<std::uint64_t>(delay), std::move(event)});
}

void HeadlessDesktop::postMessage(WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                                  std::intptr_t lParam) {
  post([=, this] {
    const auto found = windows_.find(window);
    if (found != windows_.end() && found->second) found->second->message(window, number, wParam, lParam);
  });
}

void HeadlessDesktop::runQueue() {
  while (!queue_.empty() && !ended_) {
    const auto event = std::move(queue_.front());
    queue_.pop_front();
    guarded(event);
  }
}

void HeadlessDesktop::runDue() {
  // An event may add and remove others: look anew after each.
  for (bool ran = true; ran && !ended_;) {
    ran = false;
    for (HeadlessTimer* timer : timers_) {
      if (timer->due() == 0 || timer->due() > now_) continue;
      timer->fire();
      ran = true;
      break;
    }
    const auto due = std::find_if(delayed_.begin(), delayed_.end(), [this](const Due& d) { return d.at <= now_; });
    if (!ran && due != delayed_.end()) {
      const auto event = std::move(due->event);
      delayed_.erase(due);
      guarded(event);
      ran = true;
    }
    runQueue();
  }
}

std::uint64_t HeadlessDesktop::nextDue() const {
  std::uint64_t next = 0;
  const auto take = [&next](std::uint64_t at) {
    if (at != 0 && (next == 0 || at < next)) next = at;
  };
  for (const HeadlessTimer* timer : timers_) take(timer->due());
  for (const Due& due : delayed_) take(due.at);
  return next;
}

void HeadlessDesktop::advance(int milliseconds) {
  const std::uint64_t until = now_ + static_cast<std::uint64_t>(milliseconds);
  runQueue();
  while (!ended_ && now_ < until) {
    const std::uint64_t next = nextDue();
    now_ = next == 0 || next > until ? until : std::max(next, now_ + 1);
    if (onTime) guarded([this] { onTime(now_); });
    runQueue();
    runDue();
  }
}

void HeadlessDesktop::yield() {
  if (yieldTakes > 0 && !ended_) advance(yieldTakes);
  runQueue();
  runDue();
  if (ended_) throw ProgramEnded{};
}

void HeadlessDesktop::runUntil(const std::function<bool()>& done) {
  struct Wait {
    explicit Wait(int& depth) : waits(depth) { ++waits; }
    ~Wait() { --waits; }
    int& waits;
  } const wait(modalWaits_);
  const std::uint64_t limit = now_ + kLongestWait;
  runQueue();
  while (!ended_ && !done()) {
    const std::uint64_t next = nextDue();
    if (next == 0 || now_ > limit) throw std::logic_error("a wait that nothing ends");
    advance(static_cast<int>(next > now_ ? next - now_ : 1));
  }
  if (ended_) throw ProgramEnded{};
}

WindowHandle HeadlessDesktop::create() {
  windows_[++lastWindow_] = nullptr;
  return lastWindow_;
}

std::uint32_t HeadlessDesktop::registerMessage(const char*) { return registeredMessage; }

WindowProcedure HeadlessDesktop::hook(WindowHandle window, MessageHook& hook) {
  const auto found = windows_.find(window);
  if (found == windows_.end()) return 0;
  found->second = &hook;
  ++hooks_;
  return 1;
}

void HeadlessDesktop::restore(WindowHandle window, WindowProcedure) {
  --hooks_;
  const auto found = windows_.find(window);
  if (found != windows_.end()) found->second = nullptr;
}

}  // namespace pelvaro::fake
