// How the practice line is to behave: its pace, the size of its records, its traffic, planted failures and extra
// entries. Read from a small text file at start and on request; never while something is enumerated.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelvaro::line {

// A planted result: the verb gives `code` without doing anything, the next `times` times.
struct PlantedFailure {
  std::string verb;  // as in DialService, "enumConnections", or "getIfTable"
  std::uint32_t code = 0;
  std::uint32_t times = 0;  // kAlways: for good
  static constexpr std::uint32_t kAlways = 0xFFFFFFFF;
};

struct Scenario {
  std::uint32_t pace = 350;       // milliseconds that each state of a dial is shown
  std::uint32_t timeout = 20000;  // milliseconds that the modem and the network are waited for
  std::uint32_t structureSize = 2884;
  std::vector<std::uint32_t> dialParamsSizes = {1060, 1052, 816};  // the sizes of dial parameters that are accepted
  std::uint32_t end = 0x2000;                                      // the last state: 0x2000, 0x1000 or 0x2001
  std::uint32_t entries = 0;      // temporary entries are added until there are so many
  std::uint32_t connections = 0;  // connections that are shown as up without a phone
  bool listDialing = false;       // whether a connection is enumerated before it is up
  bool journal = false;           // whether the calls are written down
  // The interface counters: bytes a second while a connection is up, what is added to the bytes counted, and whether
  // there is an Ethernet at all.
  std::uint32_t receiveRate = 20480, sendRate = 4096;
  std::uint32_t receivedAtStart = 0, sentAtStart = 0;
  bool ethernet = true;
  std::vector<PlantedFailure> failures;
};

// The planted result of a verb, 0 when there is none; counts it down.
std::uint32_t takePlanted(std::vector<PlantedFailure>& failures, std::string_view verb);

// Reads the text form, one "word value" a line, comments behind '#'. Nothing, and a message that names the line,
// when it is not understood.
std::optional<Scenario> parseScenario(std::string_view text, std::string& message);

}  // namespace pelvaro::line
