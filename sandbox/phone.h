// A simulated phone used as modem, with the network behind it: AT text goes in, AT text comes out.
// Used by phone_exchange on a real serial port and by tests without one. Never waits, never touches a port.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "codes.h"

namespace pelvaro::line {

// What a maker's phone says: a file of "COMMAND => line | line", "echo on|off", "pace MILLISECONDS" and comments behind
// '#'. A byte that is no plain character is written %XX, and so are '%' and '|' in what is said.
struct PhoneTable {
  struct Reply {
    std::string command;             // lower case, no blanks; a '*' at its end stands for any rest
    std::vector<std::string> lines;  // none: the phone says nothing
  };
  bool echo = true;
  std::uint32_t pace = 0;      // milliseconds between two bytes of what is said; 0: all of it comes at once
  std::vector<Reply> replies;  // the first that fits is taken, before what every phone can do by itself
};

// Reads a phone's table. Nothing, and a message that names the line, when the text is not one.
std::optional<PhoneTable> parsePhoneTable(std::string_view text, std::string& message);

// A byte that stands for the dropped DTR signal, which a pseudo-terminal cannot carry: the phone hangs up without a
// word, and what it said before and nobody read is thrown away.
constexpr char kLineDropped = '\x04';

// What becomes of a call. kSilent: the call is never answered; kMute: the phone answers no command at all.
enum class Answer { kConnect, kBusy, kNoAnswer, kNoCarrier, kNoDialtone, kError, kSilent, kMute };

// The answer of this name ("busy"), or nothing.
std::optional<Answer> parseAnswer(std::string_view name);
// The name of an answer.
const char* answerName(Answer answer);

// What a person can set on a phone.
struct PhoneSwitches {
  Answer answer = Answer::kConnect;
  std::string user = kPracticeUser;
  std::string password = kPracticePassword;
};

class Phone {
 public:
  explicit Phone(PhoneTable table) : table_(std::move(table)), echo_(table_.echo) {}

  // Takes what was written to the phone and gives what it says to that.
  std::string feed(std::string_view bytes);
  // Says a line of its own accord. "NO CARRIER" ends a call.
  std::string say(std::string_view text);

  // How fast it speaks, in milliseconds a byte.
  std::uint32_t pace() const { return table_.pace; }
  PhoneSwitches& switches() { return switches_; }
  const PhoneSwitches& switches() const { return switches_; }
  // The number being called or connected to; empty when there is no call.
  const std::string& number() const { return number_; }
  // Whether the network has let the caller in.
  bool online() const { return mode_ == Mode::kOnline; }
  // Whether the next line is a password.
  bool awaitsPassword() const { return mode_ == Mode::kPassword; }

 private:
  enum class Mode { kCommand, kUser, kPassword, kDenied, kOnline };

  std::string line(const std::string& text);
  std::string command(std::string_view text);
  std::string call(std::string number);
  std::string logIn(const std::string& text);
  std::string hangUp(const char* reply);

  PhoneTable table_;
  PhoneSwitches switches_;
  Mode mode_ = Mode::kCommand;
  bool echo_;
  std::string received_;
  std::string number_;
  std::string user_;
};

}  // namespace pelvaro::line
