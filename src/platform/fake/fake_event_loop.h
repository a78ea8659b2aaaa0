// The loop of events for tests: a yield or wait is journalled and runs what the test has planted as pending.
#pragma once

#include "platform/event_loop.h"
#include "platform/fake/journal.h"

namespace pelvaro::fake {

struct FakeEventLoop : EventLoop {
  explicit FakeEventLoop(Journal& log) : journal(log) {}

  Journal& journal;
  std::function<void()> onYield;  // the pending events of every yield
  std::function<void()> onWait;  // the events of a wait, called until it is over; without one the wait ends the program
  bool ended = false;

  void yield() override {
    journal.add("Yield");
    if (ended) throw ProgramEnded{};
    if (onYield) onYield();
    if (ended) throw ProgramEnded{};
  }
  void runUntil(const std::function<bool()>& done) override {
    journal.add("RunUntil");
    while (!done()) {
      if (ended || !onWait) throw ProgramEnded{};
      onWait();
    }
  }
  void end() override {
    journal.add("End");
    ended = true;
  }
};

}  // namespace pelvaro::fake
