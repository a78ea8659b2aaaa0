#include "phone.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "bytes.h"

namespace pelvaro::line {
namespace {

constexpr std::size_t kLongestLine = 1024;
constexpr std::uint32_t kSlowestPace = 1000;

struct NamedAnswer {
  Answer answer;
  const char* name;
  const char* digits;  // a number that holds these fails in this way by itself
  const char* reply;
};
constexpr NamedAnswer kAnswers[] = {
    {Answer::kConnect, "connect", nullptr, "CONNECT 115200"},
    {Answer::kBusy, "busy", "676", "BUSY"},
    {Answer::kNoAnswer, "noanswer", "678", "NO ANSWER"},
    {Answer::kNoCarrier, "nocarrier", "679", "NO CARRIER"},
    {Answer::kNoDialtone, "nodialtone", "680", "NO DIALTONE"},
    {Answer::kError, "error", "692", "ERROR"},
    {Answer::kSilent, "silent", "638", nullptr},
    {Answer::kMute, "mute", nullptr, nullptr},
};
// Numbers that get through and fail at the network.
constexpr char kDeniedNumber[] = "691", kDroppedNumber[] = "629", kUnansweredLogin[] = "718";

std::string framed(std::string_view text) { return "\r\n" + std::string(text) + "\r\n"; }

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

bool fits(const std::string& pattern, const std::string& command) {
  if (!pattern.ends_with('*')) return pattern == command;
  return command.starts_with(std::string_view(pattern).substr(0, pattern.size() - 1));
}

std::string withoutBlanks(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
  return text;
}

bool readPace(std::string_view text, std::uint32_t& pace) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), pace);
  return error == std::errc() && end == text.data() + text.size() && pace <= kSlowestPace;
}

// Takes one line of a table. Gives what is wrong with it, null when nothing is.
const char* takeLine(std::string_view line, PhoneTable& table) {
  if (line.size() > kLongestLine) return "longer than 1024 characters";
  if (line == "echo on" || line == "echo off") {
    table.echo = line == "echo on";
    return nullptr;
  }
  constexpr std::string_view kPace = "pace ";
  if (line.starts_with(kPace))
    return readPace(trimmed(line.substr(kPace.size())), table.pace) ? nullptr : "a pace is 0 to 1000 milliseconds";
  const auto arrow = line.find("=>");
  if (arrow == std::string_view::npos || arrow == 0)
    return "expected 'COMMAND => reply | reply', 'echo on' or 'pace 5'";
  PhoneTable::Reply reply{withoutBlanks(lowered(trimmed(line.substr(0, arrow)))), {}};
  for (std::string_view rest = trimmed(line.substr(arrow + 2)); !rest.empty();) {
    const auto bar = rest.find('|');
    if (!unescape(trimmed(rest.substr(0, bar)), reply.lines.emplace_back()))
      return "a '%' needs two hexadecimal digits";
    rest = bar == std::string_view::npos ? std::string_view() : rest.substr(bar + 1);
  }
  table.replies.push_back(std::move(reply));
  return nullptr;
}

}  // namespace

std::optional<PhoneTable> parsePhoneTable(std::string_view text, std::string& message) {
  PhoneTable table;
  for (int number = 1; !text.empty(); ++number) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    line = trimmed(line);
    if (line.empty() || line.front() == '#') continue;
    if (const char* wrong = takeLine(line, table)) {
      message = "line " + std::to_string(number) + ": " + wrong;
      return std::nullopt;
    }
  }
  return table;
}

std::optional<Answer> parseAnswer(std::string_view name) {
  for (const NamedAnswer& named : kAnswers)
    if (name == named.name) return named.answer;
  return std::nullopt;
}

const char* answerName(Answer answer) { return kAnswers[static_cast<int>(answer)].name; }

std::string Phone::feed(std::string_view bytes) {
  std::string said;
  for (const char c : bytes) {
    if (c == '\n') continue;  // a command ends with CR; what follows it is nothing
    if (c == kLineDropped) {
      received_.clear();
      said = hangUp(nullptr);
      continue;
    }
    if (c != '\r') {
      if (received_.size() == kLongestLine) received_.clear();  // nothing that long is meant for anybody
      received_ += c;
      if (mode_ == Mode::kCommand || !received_.ends_with("+++")) continue;
      received_.clear();
      said += hangUp("OK");
      continue;
    }
    said += line(std::exchange(received_, {}));
  }
  return said;
}

std::string Phone::say(std::string_view text) {
  if (text == "NO CARRIER") hangUp(nullptr);
  return framed(text);
}

std::string Phone::line(const std::string& text) {
  if (mode_ != Mode::kCommand) return logIn(text);
  if (switches_.answer == Answer::kMute) return {};
  const auto at = lowered(text).find("at");  // what stands before "AT" was meant for somebody else
  if (at == std::string::npos) return {};
  const std::string reply = command(std::string_view(text).substr(at));
  return echo_ ? text.substr(at) + "\r" + reply : reply;
}

std::string Phone::command(std::string_view text) {
  const std::string plain = withoutBlanks(lowered(text));
  if (plain == "atz") echo_ = table_.echo;
  for (const PhoneTable::Reply& reply : table_.replies) {
    if (!fits(reply.command, plain)) continue;
    std::string said;
    for (const std::string& replyLine : reply.lines) said += framed(replyLine);
    return said;
  }
  if (plain.starts_with("atd")) return call(std::string(trimmed(text.substr(3))));
  if (plain == "ath" || plain == "ath0") return hangUp("OK");
  if (plain == "ate0" || plain == "ate1") {
    const bool before = std::exchange(echo_, plain == "ate1");
    std::string reply = framed("OK");
    if (before && !echo_) reply = std::string(text) + "\r" + reply;  // this command itself is still echoed
    return reply;
  }
  return framed(plain == "at" || plain == "atz" ? "OK" : "ERROR");
}

std::string Phone::call(std::string number) {
  if (!number.empty() && (number[0] == 't' || number[0] == 'T' || number[0] == 'p' || number[0] == 'P'))
    number.erase(0, 1);
  const NamedAnswer* answer = &kAnswers[static_cast<int>(switches_.answer)];
  if (answer->answer == Answer::kConnect)
    for (const NamedAnswer& named : kAnswers)
      if (named.digits && contains(number, named.digits)) answer = &named;
  if (answer->answer != Answer::kConnect) return answer->reply ? framed(answer->reply) : std::string();
  number_ = std::move(number);
  mode_ = Mode::kUser;
  std::string said = framed(answer->reply);
  if (contains(number_, kUnansweredLogin)) return said;
  if (contains(number_, kDroppedNumber)) return said + hangUp("NO CARRIER");
  return said + framed("login?");
}

std::string Phone::logIn(const std::string& text) {
  if (mode_ == Mode::kUser) {
    if (contains(number_, kUnansweredLogin)) return {};
    user_ = text;
    mode_ = Mode::kPassword;
    return framed("password?");
  }
  if (mode_ != Mode::kPassword) return {};
  const bool right = user_ == switches_.user && text == switches_.password && !contains(number_, kDeniedNumber);
  mode_ = right ? Mode::kOnline : Mode::kDenied;
  return framed(right ? "welcome" : "denied");
}

std::string Phone::hangUp(const char* reply) {
  mode_ = Mode::kCommand;
  number_.clear();
  user_.clear();
  return reply ? framed(reply) : std::string();
}

}  // namespace pelvaro::line
