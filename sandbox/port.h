// A serial port as the dial line needs it. Implemented over Windows ports in win32/ and by phones in memory in tests.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace pelvaro::line {

// An open port; destroying it closes the port. No verb waits.
struct Port {
  virtual ~Port() = default;
  // Writes all bytes. False when the port is gone.
  virtual bool write(std::string_view bytes) = 0;
  // The bytes that have arrived since the last read, possibly none.
  virtual std::string read() = 0;
  // Whether the cable has been pulled.
  virtual bool gone() = 0;
};

// Opens ports by name ("COM5").
struct PortOpener {
  virtual ~PortOpener() = default;
  // Null and a result code of the dial-up service when it cannot be opened: 797 no such port, 633 used by another.
  virtual std::unique_ptr<Port> open(const std::string& name, std::uint32_t& error) = 0;
};

}  // namespace pelvaro::line
