// The talk with a phone on an open port, one step at a time: the AT commands that make the call, then the login.
// Used by the dial line in its states ConnectDevice and Authenticate.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "port.h"

namespace pelvaro::line {

// What a call needs to be told to the phone and to the network.
struct Call {
  std::string number;
  std::string suffix;  // the access point; empty: the phone's own
  std::string user;
  std::string password;
};

class ModemDialogue {
 public:
  enum class Result { kWaiting, kDone, kFailed };

  ModemDialogue(Port& port, Call call) : port_(port), call_(std::move(call)) {}
  ~ModemDialogue();
  ModemDialogue(const ModemDialogue&) = delete;
  ModemDialogue& operator=(const ModemDialogue&) = delete;

  // Goes on with making the call. `timeout` is how long each answer is waited for.
  Result connect(std::uint64_t nowMs, std::uint32_t timeout);
  // Goes on with the login behind a call that was made.
  Result logIn(std::uint64_t nowMs, std::uint32_t timeout);
  // Looks at what the phone says while the connection is up: false when it has ended.
  bool stillUp();
  // Ends the call.
  void hangUp();

  // How much of what the phone said is kept until it can be looked at; a few thousand bytes at most.
  std::size_t waiting() const { return received_.size(); }
  // Why it failed, a result code of the dial-up service.
  std::uint32_t error() const { return error_; }

 private:
  void receive();
  std::string nextLine();
  Result fail(std::uint32_t error);
  Result sendCommand(std::uint64_t nowMs, std::uint32_t timeout);
  Result sendLine(const std::string& text, std::uint64_t nowMs, std::uint32_t timeout);

  Port& port_;
  Call call_;
  std::vector<std::string> commands_;  // the first has been sent, the others wait for its "OK"
  std::string sent_;                   // the command whose echo is passed over
  std::string received_;
  std::uint64_t deadline_ = 0;
  std::uint32_t error_ = 0;
  bool started_ = false;
  bool loginStarted_ = false;
  bool userSent_ = false;
  bool passwordSent_ = false;
};

}  // namespace pelvaro::line
