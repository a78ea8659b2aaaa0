// What the tests of the dial line share: a line on phones in memory, a clock turned by hand, and all that it told.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bytes.h"
#include "codes.h"
#include "dial_line.h"
#include "memory_ports.h"

namespace pelvaro::line {

struct Told {
  std::uintptr_t window;
  std::uint32_t state, error;
  bool operator==(const Told&) const = default;
};

inline void PrintTo(const Told& told, std::ostream* out) {
  *out << "window " << told.window << " state " << told.state << " error " << told.error;
}

constexpr std::uintptr_t kWindow = 77;

class LineTest : public testing::Test {
 protected:
  LineTest() {
    // The phones that the first phonebook's modems are on.
    ports_.plug("COM5", table());
    ports_.plug("COM7", table());
  }

  static PhoneTable table() {
    std::string message;
    return *parsePhoneTable("AT+CGDCONT=* => OK\n", message);
  }

  static Scenario quick() {
    Scenario scenario;
    scenario.pace = 0;
    scenario.timeout = 1000;
    return scenario;
  }

  LineCallbacks callbacks() {
    LineCallbacks result;
    result.notify = [this](std::uintptr_t window, std::uint32_t state, std::uint32_t error) {
      told_.push_back({window, state, error});
      if (onTold_) onTold_(told_.back());
    };
    result.reread = [this] {
      ++rereads_;
      return std::exchange(elsewhere_, std::nullopt);
    };
    result.save = [this](const Phonebook&) {
      ++saves_;
      return savesWork_;
    };
    result.journal = [this](const std::string& text) { journal_.push_back(text); };
    return result;
  }

  // Dial parameters of 1060 bytes.
  static Bytes params(const std::string& entry, const std::string& user = kPracticeUser,
                      const std::string& password = kPracticePassword, const std::string& number = "") {
    Bytes record(1060);
    putNumber(record.data(), 1060);
    putText(record.data() + 4, 257, entry);
    putText(record.data() + 261, 129, number);
    putText(record.data() + 519, 257, user);
    putText(record.data() + 776, 257, password);
    return record;
  }

  // Dials for window kWindow; the handle is in handle_.
  std::uint32_t dial(const Bytes& record) {
    handle_ = 0;
    return line_.dial(nullptr, record.data(), 0xFFFFFFFF, kWindow, &handle_);
  }

  // Steps until nothing is dialing any more, at most a thousand times.
  void settle() {
    for (int i = 0; i < 1000 && line_.dialing(); ++i) line_.step(now_ += 1);
    EXPECT_FALSE(line_.dialing());
  }

  // Steps until the state has been told.
  void stepUntil(std::uint32_t state) {
    for (int i = 0; i < 1000 && (told_.empty() || told_.back().state != state); ++i) line_.step(now_ += 1);
    ASSERT_FALSE(told_.empty());
    ASSERT_EQ(told_.back().state, state);
  }

  // The names of the enumerated connections.
  std::vector<std::string> connected() {
    std::vector<std::uint8_t> records(std::size_t{412} * 300);
    putNumber(records.data(), 412);
    auto size = static_cast<std::uint32_t>(records.size());
    std::uint32_t count = 0;
    EXPECT_EQ(line_.enumConnections(records.data(), &size, &count), 0u);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i) names.push_back(getText(records.data() + i * 412 + 8, 257));
    return names;
  }

  MemoryPorts ports_;
  std::vector<Told> told_;
  std::function<void(const Told&)> onTold_;
  std::vector<std::string> journal_;
  int saves_ = 0, rereads_ = 0;
  std::optional<Phonebook> elsewhere_;  // what another program has made of the phonebook
  bool savesWork_ = true;
  DialLine line_{firstPhonebook(), quick(), ports_, callbacks()};
  std::uint32_t handle_ = 0;
  std::uint64_t now_ = 1000;
};

}  // namespace pelvaro::line
