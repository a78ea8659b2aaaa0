// The system's serial ports, read and written without waiting.
#pragma once

#include <memory>

#include "platform/serial_port.h"

namespace pelvaro::win32 {

// Closes a file, device or event of the kernel.
struct HandleCloser {
  void operator()(void* handle) const;
};
using Handle = std::unique_ptr<void, HandleCloser>;

class SystemSerialPort : public SerialPort {
 public:
  bool canOpen(const std::string& deviceName) override;
  void open(int number, const std::string& settings) override;
  void close() override { port_.reset(); }
  void write(std::string_view text) override;
  std::string read() override;

 private:
  Handle port_;
};

}  // namespace pelvaro::win32
