// The world that a random user lives in: the practice line, phones and services that may fail, with a watch over what
// the program may never do.
#pragma once

#include <functional>
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

// Knows which phone it is connected to, and tells when it is opened: the user may lose patience.
class WatchedSerialPort : public line::MemorySerialPort {
 public:
  WatchedSerialPort(line::MemoryPorts& ports, fake::HeadlessDesktop& desktop)
      : MemorySerialPort(ports), desktop_(desktop) {}

  std::string openPort;  // "COM5"; empty when none is open
  bool pulled = false;   // the phone was pulled out of the port that was opened last
  std::function<void()> onOpen;

  bool isOpen() const { return !openPort.empty(); }
  // The phone on this port is pulled out. An open port has lost it, whatever is plugged in there afterwards.
  void noteUnplugged(const std::string& port) { pulled = pulled || port == openPort; }

  // Time passes while a phone is asked, and only then in every yield.
  void open(int number, const std::string& settings) override {
    MemorySerialPort::open(number, settings);
    openPort = "COM" + std::to_string(number);
    pulled = false;
    desktop_.yieldTakes = 1;
    if (onOpen) onOpen();
  }
  void close() override {
    MemorySerialPort::close();
    openPort.clear();
    desktop_.yieldTakes = 0;
  }

 private:
  fake::HeadlessDesktop& desktop_;
};

struct RandomWorld : World {
  RandomWorld();

  WatchedDialService dialService{line};
  WatchedSerialPort probePort{ports, desktop};
  // Whether the program may end with the run-time error of this number, for what is planted at this moment, at which it
  // ended, explains it.
  bool mayReport(const std::string& number) const;
  bool writesNoAddress = false;  // an entry is being written with an address that is none
  bool mayEnd = false;           // the user has closed the main window or agreed to a restart
  Services watched;
};

}  // namespace pelvaro
