// One connection of the practice line, from the accepted dial until it is hung up or lost. Used inside DialLine only.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

#include "dial_line.h"

namespace pelvaro::line {

struct DialLine::Connection {
  enum class Phase { kDialing, kUp, kFailed, kGone };

  std::uint32_t handle = 0;
  std::uintptr_t window = 0;
  std::string entryName, deviceType, deviceName, portName;
  Call call;

  Phase phase = Phase::kDialing;
  bool begun = false;        // whether the first state has been entered
  std::size_t position = 0;  // in the list of states
  std::uint32_t state = 0;
  std::uint32_t error = 0;
  std::uint64_t since = 0;  // when the state was entered
  bool holdsPort = false;   // from the opened port until the hang-up
  std::unique_ptr<Port> port;
  std::unique_ptr<ModemDialogue> dialogue;  // refers to the port

  // Ends the call and closes the port.
  void release() {
    if (dialogue) dialogue->hangUp();
    dialogue.reset();
    port.reset();
    std::fill(call.password.begin(), call.password.end(), '\0');
  }
};

}  // namespace pelvaro::line
