// A pseudo-terminal that a program under Wine can open as a serial port. Used by the phone exchange.
#pragma once

#include <string>
#include <string_view>

namespace pelvaro::line {

class Pty {
 public:
  // Opens a raw pair. Throws std::system_error when the system has none.
  Pty();
  ~Pty();
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  // The phone's end, for poll().
  int descriptor() const { return master_; }
  // The device file of the program's end.
  const std::string& path() const { return path_; }
  // What the program has written since the last read.
  std::string read();
  // Says something to the program; what it does not read is lost once the system's buffer is full.
  void write(std::string_view bytes);

  // Throws away what was said and not read.
  void forget();

 private:
  int master_ = -1;
  int slave_ = -1;  // kept open, or reading the other end fails while no program has it open
  std::string path_;
};

}  // namespace pelvaro::line
