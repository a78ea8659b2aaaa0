// The program's one loop of events: letting pending ones run, waiting while a modal form is up, ending.
#pragma once

#include <functional>

namespace pelvaro {

// Thrown by a yield or a modal wait once the program is ending, so that whatever was under way unwinds at once.
// Caught where events are dispatched and at the top; never by anything between.
struct ProgramEnded {};

struct EventLoop {
  virtual ~EventLoop() = default;

  // Runs every event that is pending, then returns. Throws ProgramEnded when the program is ending.
  virtual void yield() = 0;
  // The yield with which the handler of a timer begins.
  virtual void yieldAtTick() { yield(); }
  // Runs events until `done` gives true. Throws ProgramEnded when the program is ending.
  virtual void runUntil(const std::function<bool()>& done) = 0;
  // Makes the program end: every yield and wait unwinds, the main loop returns.
  virtual void end() = 0;
};

}  // namespace pelvaro
