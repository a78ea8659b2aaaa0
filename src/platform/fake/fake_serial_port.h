// Serial ports for tests: phones that answer what a test has planted or as a function says, ports that are taken,
// vanish or cannot be opened; calls are journalled.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "base/runtime_error.h"
#include "platform/fake/journal.h"
#include "platform/serial_port.h"

namespace pelvaro::fake {

// What a phone says to what is written to it, in full.
using Phone = std::function<std::string(std::string_view written)>;

// A phone that knows these commands, line ends included, and is silent to all others.
inline Phone phoneThatSays(std::map<std::string, std::string, std::less<>> replies) {
  return [replies = std::move(replies)](std::string_view written) {
    const auto found = replies.find(written);
    return found == replies.end() ? std::string() : found->second;
  };
}

struct FakeSerialPort : SerialPort {
  explicit FakeSerialPort(Journal& log) : journal(log) {}

  struct Line {
    Phone phone;
    std::string arrived = {};                    // said by the phone, not read yet
    std::size_t piece = std::string::npos;       // the most characters that a read gives
    bool available = true;                       // what canOpen gives
    std::optional<RuntimeError> openError = {};  // what open throws
  };

  Journal& journal;
  std::map<int, Line> lines;  // the ports that exist
  int number = 0;             // of the open port, 0 for none
  int reads = 0;

  // Takes a port away. When it is the open one it is dead until it is closed, whatever is plugged in meanwhile.
  void unplug(int which) {
    lines.erase(which);
    dead_ = dead_ || which == number;
  }

  bool canOpen(const std::string& deviceName) override {
    journal.add("CanOpen " + deviceName);
    for (const auto& [existing, line] : lines) {
      if (deviceName == "\\\\.\\COM" + std::to_string(existing)) return line.available;
    }
    return false;
  }
  void open(int wanted, const std::string& settings) override {
    journal.add("Open " + std::to_string(wanted) + " " + settings);
    if (number != 0) throw RuntimeError(8005, "Port already open");
    const auto found = lines.find(wanted);
    if (found == lines.end()) throw RuntimeError(8002, "Invalid port number");
    if (found->second.openError) throw RuntimeError(*found->second.openError);
    found->second.arrived.clear();
    number = wanted;
    dead_ = false;
  }
  void close() override {
    if (number == 0) return;
    journal.add("Close " + std::to_string(number));
    number = 0;
  }
  void write(std::string_view text) override {
    Line& line = openLine();
    journal.add("Write " + std::string(text));
    if (line.phone) line.arrived += line.phone(text);
  }
  std::string read() override {
    ++reads;
    Line& line = openLine();
    const std::string piece = line.arrived.substr(0, line.piece);
    line.arrived.erase(0, piece.size());
    return piece;
  }

 private:
  Line& openLine() {
    if (number == 0) throw RuntimeError(8018, "Operation valid only when the port is open");
    if (dead_) throw RuntimeError(8020, "Error reading comm device");
    return lines[number];
  }

  bool dead_ = false;
};

}  // namespace pelvaro::fake
