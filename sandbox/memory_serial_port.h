// The program's serial port on phones in memory, which the dial line shares. Used by whole-program tests.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "memory_ports.h"
#include "platform/serial_port.h"

namespace pelvaro::line {

// A port that is open, be it here or for a connection of the dial line, cannot be opened by anybody else.
class MemorySerialPort : public SerialPort {
 public:
  explicit MemorySerialPort(MemoryPorts& ports) : ports_(ports) {}

  bool canOpen(const std::string& deviceName) override;
  // A phone in memory understands every setting.
  void open(int number, const std::string& settings) override;
  void close() override { port_.reset(); }
  void write(std::string_view text) override;
  std::string read() override;

 private:
  MemoryPorts& ports_;
  std::unique_ptr<Port> port_;
};

}  // namespace pelvaro::line
