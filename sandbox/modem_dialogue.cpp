#include "modem_dialogue.h"

#include <algorithm>
#include <utility>

#include "codes.h"
#include "phone.h"

namespace pelvaro::line {
namespace {

constexpr std::size_t kMostWaiting = 4096;

struct FinalReply {
  const char* text;
  std::uint32_t error;
};
constexpr FinalReply kFailures[] = {
    {"BUSY", kLineBusy},           {"NO ANSWER", kNoAnswer}, {"NO CARRIER", kNoCarrier}, {"NO DIALTONE", kNoDialtone},
    {"NO DIAL TONE", kNoDialtone}, {"VOICE", kVoiceAnswer},  {"ERROR", kPortOrDevice}};

// What may stand in a command: everything but control characters and the quotes that enclose it.
std::string plain(std::string text) {
  text.erase(
      std::remove_if(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"'; }),
      text.end());
  return text;
}

}  // namespace

ModemDialogue::~ModemDialogue() { std::fill(call_.password.begin(), call_.password.end(), '\0'); }

ModemDialogue::Result ModemDialogue::connect(std::uint64_t nowMs, std::uint32_t timeout) {
  if (!started_) {
    started_ = true;
    commands_ = {"ATZ"};
    if (!call_.suffix.empty()) commands_.push_back("AT+CGDCONT=1,\"IP\",\"" + plain(call_.suffix) + "\"");
    commands_.push_back("ATD" + plain(call_.number));
    hangUp();  // a call that was left open would swallow the commands
    received_.clear();
    return sendCommand(nowMs, timeout);
  }
  receive();
  const bool calling = commands_.size() == 1;
  for (std::string line = nextLine(); !line.empty(); line = nextLine()) {
    if (calling && line.starts_with("CONNECT")) return Result::kDone;
    for (const FinalReply& failure : kFailures)
      if (line == failure.text) return fail(failure.error);
    if (calling || line != "OK") continue;
    commands_.erase(commands_.begin());
    return sendCommand(nowMs, timeout);
  }
  if (nowMs < deadline_) return Result::kWaiting;
  return fail(calling ? kNoAnswer : kPortOrDevice);  // a call without an answer; a modem that does not react
}

ModemDialogue::Result ModemDialogue::logIn(std::uint64_t nowMs, std::uint32_t timeout) {
  if (!loginStarted_) {
    loginStarted_ = true;
    sent_.clear();  // the network does not echo
    deadline_ = nowMs + timeout;
  }
  receive();
  for (std::string line = nextLine(); !line.empty(); line = nextLine()) {
    // Each is answered once: a network that goes on asking does not go on for ever.
    if (line == "login?" && !std::exchange(userSent_, true)) return sendLine(plain(call_.user), nowMs, timeout);
    if (line == "password?" && !std::exchange(passwordSent_, true))
      return sendLine(plain(call_.password), nowMs, timeout);
    if (line == "welcome") return Result::kDone;
    if (line == "denied") return fail(kAuthenticationFailure);
    if (line == "NO CARRIER") return fail(kRemoteDisconnection);
  }
  return nowMs < deadline_ ? Result::kWaiting : fail(kPppTimeout);
}

bool ModemDialogue::stillUp() {
  receive();
  for (std::string line = nextLine(); !line.empty(); line = nextLine())
    if (line == "NO CARRIER") return false;
  return true;
}

void ModemDialogue::hangUp() { port_.write({&kLineDropped, 1}); }

// Takes what has arrived, once a step, so that a phone that never stops talking does not hold up the step. Of more than
// anybody waits for only the end is kept, without the line that was cut.
void ModemDialogue::receive() {
  received_ += port_.read();
  if (received_.size() <= kMostWaiting) return;
  received_.erase(0, received_.size() - kMostWaiting);
  const auto end = received_.find_first_of("\r\n");
  if (end != std::string::npos) received_.erase(0, end);
}

// The next whole line that says something; the echo of a command is passed over. Empty when none has arrived.
std::string ModemDialogue::nextLine() {
  for (;;) {
    const auto end = received_.find_first_of("\r\n");
    if (end == std::string::npos) return {};
    std::string line = received_.substr(0, end);
    received_.erase(0, end + 1);
    if (!line.empty() && line != sent_) return line;
  }
}

ModemDialogue::Result ModemDialogue::fail(std::uint32_t error) {
  error_ = error;
  return Result::kFailed;
}

ModemDialogue::Result ModemDialogue::sendCommand(std::uint64_t nowMs, std::uint32_t timeout) {
  sent_ = commands_.front();
  return sendLine(sent_, nowMs, timeout);
}

ModemDialogue::Result ModemDialogue::sendLine(const std::string& text, std::uint64_t nowMs, std::uint32_t timeout) {
  deadline_ = nowMs + timeout;
  return port_.write(text + "\r") ? Result::kWaiting : fail(kPortDisconnected);
}

}  // namespace pelvaro::line
