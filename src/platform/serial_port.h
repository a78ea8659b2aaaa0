// A serial port as the connection editor talks to a phone on it: at most one port is open at a time. Used by devices/.
#pragma once

#include <string>
#include <string_view>

namespace pelvaro {

struct SerialPort {
  virtual ~SerialPort() = default;

  // CreateFileA with access 0 on a device name ("\\.\COM5"), closed again at once: whether the port could be opened at
  // this moment.
  virtual bool canOpen(const std::string& deviceName) = 0;

  // Opens COM<number> with settings such as "115200,N,8,1" (bit/s, parity, data bits, stop bits), what arrived before
  // forgotten. Throws a run-time error when the port cannot be opened or set so, or when one is open already.
  virtual void open(int number, const std::string& settings) = 0;
  // Nothing happens when no port is open.
  virtual void close() = 0;

  // Writes the text. Throws a run-time error when no port is open or the port is gone; never waits long.
  virtual void write(std::string_view text) = 0;
  // Every character that has arrived since the last call, possibly none; never waits. Throws as write() does.
  virtual std::string read() = 0;
};

}  // namespace pelvaro
