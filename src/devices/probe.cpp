#include "devices/probe.h"

#include "base/runtime_error.h"
#include "devices/brand.h"
#include "devices/reply.h"

namespace pelvaro::devices {

namespace {

constexpr std::int16_t kFirstPort = 3;
constexpr std::int16_t kLastPort = 16;
constexpr const char* kSettings = "115200,N,8,1";
constexpr const char* kGreeting = "AT\r\n";
constexpr const char* kWhoMadeYou = "AT+cgmi\r\n";
// A number of polls, not a time; nothing sleeps between them.
constexpr int kMostPolls = 5001;

}  // namespace

// Closes the port at the end of a check, unless it has become another probe's.
class Probe::Closing {
 public:
  explicit Closing(Probe& probe) : probe_(probe) {}
  ~Closing() {
    if (!lost_) probe_.close();
  }
  Closing(const Closing&) = delete;
  Closing& operator=(const Closing&) = delete;

  void portIsLost() { lost_ = true; }

 private:
  Probe& probe_;
  bool lost_ = false;
};

void Probe::close() {
  ++closings_;
  port_.close();
}

void Probe::cancel() {
  ++cancels_;
  close();
}

bool Probe::poll(Reply& reply, unsigned closings) {
  loop_.yield();
  if (closings_ != closings) return false;
  reply.append(port_.read());
  return true;
}

bool Probe::COMAvailableVB(std::int16_t number) { return port_.canOpen("\\\\.\\COM" + std::to_string(number)); }

bool Probe::OpenCOMPort(std::int16_t number) {
  try {
    close();
    const unsigned cancels = cancels_;
    loop_.yield();
    if (cancels_ != cancels) return false;
    port_.open(number, kSettings);
    const unsigned closings = closings_;
    port_.write(kGreeting);
    // A reply of its own, thrown away; what arrives behind its "OK" is read with the answer to the next command.
    Reply reply;
    for (int polls = 0; polls < kMostPolls && !reply.ended(); ++polls) {
      if (!poll(reply, closings)) return false;
    }
    return reply.saysOk();
  } catch (const RuntimeError&) {
    return false;
  }
}

bool Probe::validateDevice(const std::string& deviceName, const std::vector<std::string>& modemKeys) {
  Closing closing(*this);
  // Kept on purpose: one reply for all ports. Behind a phone that has answered, the next one's answer counts as ended
  // at the first poll, and the first one's lines are looked at first again.
  Reply reply;
  const unsigned cancels = cancels_;
  for (std::int16_t number = kFirstPort; number <= kLastPort && cancels_ == cancels; ++number) {
    if (!COMAvailableVB(number) || !OpenCOMPort(number)) continue;
    const unsigned closings = closings_;
    port_.write(kWhoMadeYou);
    // Kept on purpose: no limit. Ending the program, or another probe, ends the wait.
    do {
      if (!poll(reply, closings)) {
        closing.portIsLost();
        return false;
      }
    } while (!reply.ended());
    brand_ = brandOfLine(reply.manufacturerLine());
    if (keyFits(modemKeys, brand_, deviceName)) return true;
    close();
  }
  return false;
}

}  // namespace pelvaro::devices
