// The world that a random user lives in: the practice line, phones and services that may fail, with a watch over what
// the program may never do.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "dial_params.h"
#include "story.h"

namespace pelvaro {

// Tells of dials. Its windows are those that dials have named, the last one at the end.
class WatchedDialService : public line::LineDialService {
 public:
  explicit WatchedDialService(line::DialLine& line) : LineDialService(line), line_(line) {}

  std::function<void(const std::string& entry, bool exists)> onDial;
  std::vector<std::uintptr_t> windows;

  std::uint32_t dial(const char* phonebook, void* params, std::uint32_t notifierType, std::uintptr_t notifier,
                     RasHandle* connection) override;

 private:
  line::DialLine& line_;
};

// Knows whether it is open, and tells when it is opened: the user may lose patience.
class WatchedSerialPort : public line::MemorySerialPort {
 public:
  WatchedSerialPort(line::MemoryPorts& ports, fake::HeadlessDesktop& desktop)
      : MemorySerialPort(ports), desktop_(desktop) {}

  bool isOpen = false;
  std::function<void()> onOpen;

  // Time passes while a phone is asked, and only then in every yield.
  void open(int number, const std::string& settings) override {
    MemorySerialPort::open(number, settings);
    isOpen = true;
    desktop_.yieldTakes = 1;
    if (onOpen) onOpen();
  }
  void close() override {
    MemorySerialPort::close();
    isOpen = false;
    desktop_.yieldTakes = 0;
  }

 private:
  fake::HeadlessDesktop& desktop_;
};

struct RandomWorld : World {
  RandomWorld();

  WatchedDialService dialService{line};
  WatchedSerialPort probePort{ports, desktop};
  // The numbers of the run-time errors that may end the program from now on, for what was planted explains them.
  std::set<std::string> mayReport;
  bool mayEnd = false;  // the user has closed the main window or agreed to a restart
  Services watched;
};

}  // namespace pelvaro
