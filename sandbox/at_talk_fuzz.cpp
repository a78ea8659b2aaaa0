// Any bytes as what a phone and the network answer, in any pieces; any bytes as what is written to the port of a phone
// that any table describes; any text as such a table or as a scenario. The first byte says which. Everything ends, and
// little is kept of what is said.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/runtime_error.h"
#include "memory_serial_port.h"
#include "modem_dialogue.h"
#include "phone.h"
#include "scenario.h"

namespace {

using namespace pelvaro::line;

constexpr std::size_t kMostKept = 4096;
constexpr std::size_t kMostSaid = 65536;
constexpr std::size_t kLongestNumber = 1024;
constexpr char kPieceEnd = '~', kFlood = '^', kCableOut = '!';
constexpr std::size_t kFloodTimes = 64;

// The next piece, up to a '~'. One that begins with '^' comes many times over.
std::string takePiece(std::string_view& left) {
  const auto end = std::min(left.find(kPieceEnd), left.size());
  std::string_view piece = left.substr(0, end);
  left.remove_prefix(std::min(end + 1, left.size()));
  if (!piece.starts_with(kFlood)) return std::string(piece);
  std::string flood;
  for (std::size_t i = 0; i < kFloodTimes; ++i) flood += piece.substr(1);
  return flood;
}

// Says one piece of the input at each look. A piece that begins with '!' is said by a port that can no longer be
// written.
struct TalkingPort : Port {
  explicit TalkingPort(std::string_view text) : left(text) {}
  bool write(std::string_view bytes) override {
    written += bytes.size();
    return works;
  }
  std::string read() override {
    std::string piece = takePiece(left);
    if (piece.starts_with(kCableOut)) works = false;
    return piece;
  }
  bool gone() override { return !works; }
  std::string_view left;
  std::size_t written = 0;
  bool works = true;
};

void check(bool holds) {
  if (!holds) std::abort();
}

void talkWithModem(std::string_view text) {
  using Result = ModemDialogue::Result;
  TalkingPort port(text);
  const std::string number = takePiece(port.left), suffix = takePiece(port.left);
  ModemDialogue dialogue(port, {number, suffix, "guest", "practice"});
  const auto afterStep = [&] {
    check(dialogue.waiting() <= kMostKept);
    check(port.written <= number.size() + suffix.size() + 1000);
  };
  std::uint64_t now = 0;
  int steps = 0;
  // Three commands with an answer each, and a login with two: none is waited for longer than ten steps.
  const auto finish = [&](auto step) {
    Result result;
    do {
      result = step();
      afterStep();
      check(++steps < 100);
      now += 10;
    } while (result == Result::kWaiting);
    check((result == Result::kFailed) == (dialogue.error() != 0));
    return result == Result::kDone;
  };
  if (finish([&] { return dialogue.connect(now, 100); }) && finish([&] { return dialogue.logIn(now, 100); }))
    while (!port.left.empty() && dialogue.stillUp()) afterStep();
  dialogue.hangUp();
  dialogue.stillUp();
  afterStep();
}

void checkTable(std::string_view text) {
  std::string message;
  const auto table = parsePhoneTable(text, message);
  check(table.has_value() == message.empty());
  if (!table) return;
  check(table->pace <= 1000);
  for (const PhoneTable::Reply& reply : table->replies)
    for (const std::string& line : reply.lines) check(line.size() <= kLongestNumber);
}

void talkToPhone(std::string_view text) {
  std::string message;
  auto table = parsePhoneTable(takePiece(text), message);
  MemoryPorts ports;
  Phone& phone = ports.plug("COM5", table ? std::move(*table) : PhoneTable());
  const auto answer = parseAnswer(takePiece(text));
  if (answer) phone.switches().answer = *answer;
  MemorySerialPort port(ports);
  port.open(5, "115200,N,8,1");
  while (!text.empty()) {
    port.write(takePiece(text));
    check(port.read().size() <= (phone.pace() == 0 ? kMostSaid : 1));
    check(phone.number().size() <= kLongestNumber);
  }
  ports.say("COM5", "NO CARRIER");
  check(phone.number().empty() && !phone.online());
  ports.unplug("COM5");
  try {
    port.read();
    check(false);
  } catch (const pelvaro::RuntimeError&) {
  }
}

void checkScenario(std::string_view text) {
  std::string message;
  check(parseScenario(text, message).has_value() == message.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr void (*kWays[])(std::string_view) = {talkWithModem, talkToPhone, checkTable, checkScenario};
  if (size != 0) kWays[data[0] % 4]({reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
