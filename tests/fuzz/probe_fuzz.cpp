// Any bytes as what the phones on the serial ports say while they are looked for, and as how the ports behave: missing,
// taken, pulled out. The search ends, in a verdict or in the port's own error, and leaves the port closed.
#include <cstdlib>
#include <utility>

#include "base/bytes.h"
#include "base/runtime_error.h"
#include "devices/brand.h"
#include "devices/probe.h"
#include "input.h"

namespace {

using namespace pelvaro;

constexpr char kPieceEnd = '~', kPulledOut = '!', kSilence = '?';
constexpr int kLongSilence = 6000;  // reads

// Says one piece of the input at each read. The first piece that begins with '?' comes after a long silence; a phone
// that has nothing more to say is pulled out.
struct TalkingPort : SerialPort {
  std::string_view left;
  unsigned missing = 0, taken = 0;  // ports, a bit each
  bool isOpen = false;
  int silence = 0;  // reads that are still to give nothing
  bool silenced = false;

  bool canOpen(const std::string& name) override { return (missing >> (std::atoi(name.c_str() + 7) - 3) & 1) == 0; }
  void open(int number, const std::string&) override {
    check(!isOpen);
    if (taken >> (number - 3) & 1) throw RuntimeError(8005, "Port already open");
    isOpen = true;
  }
  void close() override { isOpen = false; }
  void write(std::string_view) override {
    check(isOpen);
    if (left.starts_with(kPulledOut)) lost();
  }
  std::string read() override {
    check(isOpen);
    if (silence > 0 && --silence > 0) return {};
    if (left.empty()) lost();
    if (left.starts_with(kSilence) && !std::exchange(silenced, true)) silence = kLongSilence;
    const std::size_t end = std::min(left.find(kPieceEnd), left.size());
    std::string piece(left.substr(0, end));
    left.remove_prefix(std::min(end + 1, left.size()));
    return piece;
  }
  [[noreturn]] static void lost() { throw RuntimeError(8020, "Error reading comm device"); }
};

// Every so many turns something else cancels the search.
struct InterruptingLoop : EventLoop {
  devices::Probe* probe = nullptr;
  unsigned turns = 0, interruptedAt = 0;
  void yield() override {
    if (++turns == interruptedAt) probe->cancel();
  }
  void runUntil(const std::function<bool()>&) override {}
  void end() override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kHead = 4;
  const ConstBytes input(data, size);
  TalkingPort port;
  port.missing = get32(input, 0) & 0xFFF;
  port.taken = get32(input, 1) & 0xFFF;
  port.left = asText(from(input, kHead));
  InterruptingLoop loop;
  loop.interruptedAt = get32(input, 3) & 0xFF;
  devices::Probe probe(port, loop);
  loop.probe = &probe;
  try {
    if (probe.validateDevice("6230", {"Nokia 6230 USB Modem", std::string(port.left)})) check(!probe.brand().empty());
  } catch (const RuntimeError& error) {
    check(error.number() == 8020 && (port.left.empty() || port.left.starts_with(kPulledOut)));
  }
  check(!port.isOpen);
  check(devices::formatBrand(probe.brand()) == probe.brand());
  return 0;
}
