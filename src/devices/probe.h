// Looks for the phone on the serial ports: which port answers, who made the phone, whether it is a given modem device.
// Used by the connection editor, whose public methods of the same names lead here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/serial_port.h"

namespace pelvaro::devices {

class Reply;

// Every poll yields, so another probe may run from inside one; it takes the port away. The one that it interrupted then
// reads nothing more and ends with false.
class Probe {
 public:
  Probe(SerialPort& port, EventLoop& loop) : port_(port), loop_(loop) {}
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;

  // Whether the system can open the port at this moment.
  bool COMAvailableVB(std::int16_t number);

  // Opens the port and says "AT"; true when the phone answers "OK" within 5,001 polls. The port stays open. A run-time
  // error on the way is false.
  bool OpenCOMPort(std::int16_t number);

  // Whether a phone on COM3 to COM16 is this device: one of the keys' names contains the phone's brand and the device's
  // name. A phone that has answered "AT" is waited for without limit. Every exit, an exception too, leaves the port
  // closed. A run-time error of the port while the phone is asked for its maker goes up.
  bool validateDevice(const std::string& deviceName, const std::vector<std::string>& modemKeys);

  // Ends every check that is under way, as though no phone had answered.
  void cancel();

  // Of the last phone that was asked; empty when nothing was recognised.
  const std::string& brand() const { return brand_; }

 private:
  class Closing;
  void close();
  // One poll. False, with nothing read, when another probe has closed the port since `closings` was taken.
  bool poll(Reply& reply, unsigned closings);

  SerialPort& port_;
  EventLoop& loop_;
  std::string brand_;
  unsigned cancels_ = 0;
  unsigned closings_ = 0;  // how often the port was closed: tells one opening from the next
};

}  // namespace pelvaro::devices
