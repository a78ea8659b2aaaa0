#include "counters.h"

#include <gtest/gtest.h>

#include <string>

#include "allocation_count.h"
#include "bytes.h"
#include "codes.h"
#include "entry_record.h"

namespace pelvaro::line {
namespace {

constexpr std::uint32_t kThreeRows = 4 + 3 * 860;
constexpr std::uint8_t kCanary = 0xA5;

class CountersTest : public testing::Test {
 protected:
  CountersTest() { counters_.setScenario(scenario_, 0); }

  // Fills table_.
  void read(std::uint64_t nowMs, bool sorted = true) {
    auto size = static_cast<std::uint32_t>(table_.size());
    ASSERT_EQ(counters_.getIfTable(table_.data(), &size, sorted, nowMs), 0u);
  }
  // A number of a row, counted from 0.
  std::uint32_t number(std::size_t row, std::size_t offset) const {
    return getNumber(table_.data() + 4 + row * 860 + offset);
  }
  std::string description(std::size_t row) const { return getText(table_.data() + 4 + row * 860 + 604, 256); }

  std::uint32_t received(std::uint64_t nowMs) {
    read(nowMs);
    return number(1, 552);
  }
  std::uint32_t sent(std::uint64_t nowMs) {
    read(nowMs);
    return number(1, 576);
  }

  Scenario scenario_;
  Counters counters_;
  Bytes table_ = Bytes(kThreeRows);
};

TEST_F(CountersTest, ALoopbackComesFirstThenTheEthernetThatMovesThenAnIdleOne) {
  read(0);
  ASSERT_EQ(getNumber(table_.data()), 3u);
  const struct {
    std::uint32_t type, mtu, received, sent;
    std::string description;
  } expected[] = {
      {24, 1520, 7000000, 7000000, "Loopback"},
      {6, 1500, 0, 0, "Practice Ethernet"},
      {6, 1500, 9000000, 8000000, "Idle Ethernet"},
  };
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_EQ(number(row, 512), row + 1) << "index";
    EXPECT_EQ(number(row, 516), expected[row].type);
    EXPECT_EQ(number(row, 520), expected[row].mtu);
    EXPECT_EQ(number(row, 524), 10000000u) << "speed";
    EXPECT_EQ(number(row, 540), 1u) << "administrative status";
    EXPECT_EQ(number(row, 544), 5u) << "operational status";
    EXPECT_EQ(number(row, 552), expected[row].received);
    EXPECT_EQ(number(row, 576), expected[row].sent);
    EXPECT_EQ(number(row, 600), expected[row].description.size());
    EXPECT_EQ(description(row), expected[row].description);
  }
}

TEST_F(CountersTest, UnsortedTheyComeTheOtherWayRound) {
  counters_.setUp(true, 0);
  read(1000, false);
  EXPECT_EQ(description(0), "Idle Ethernet");
  EXPECT_EQ(description(1), "Practice Ethernet");
  EXPECT_EQ(number(1, 552), 20480u);
  EXPECT_EQ(description(2), "Loopback");
}

TEST_F(CountersTest, OctetsMoveOnlyWhileUp) {
  EXPECT_EQ(received(5000), 0u);
  counters_.setUp(true, 6000);
  EXPECT_EQ(received(6000), 0u);
  EXPECT_EQ(received(8000), 2u * 20480);
  EXPECT_EQ(sent(8000), 2u * 4096);
  counters_.setUp(true, 8500);
  counters_.setUp(false, 9000);
  EXPECT_EQ(received(9000), 3u * 20480);
  EXPECT_EQ(received(60000), 3u * 20480);
  counters_.setUp(true, 60000);
  EXPECT_EQ(received(61000), 4u * 20480);
  EXPECT_EQ(sent(61000), 4u * 4096);
}

TEST_F(CountersTest, TheOtherRowsNeverMove) {
  counters_.setUp(true, 0);
  read(100000);
  EXPECT_EQ(number(0, 552), 7000000u);
  EXPECT_EQ(number(0, 576), 7000000u);
  EXPECT_EQ(number(2, 552), 9000000u);
  EXPECT_EQ(number(2, 576), 8000000u);
}

TEST_F(CountersTest, RatesAreExactHoweverTheTimeIsCutUp) {
  for (const std::uint32_t rate : {0u, 1u, 3u, 999u, 1001u, 20480u, 1234567u, 0xFFFFFFFFu}) {
    for (const std::uint32_t longest : {1u, 7u, 1000u, 100000u}) {
      Scenario scenario;
      scenario.receiveRate = rate;
      scenario.sendRate = rate / 3;
      Counters counters;
      counters.setScenario(scenario, 0);
      std::uint64_t now = 500;
      counters.setUp(true, now);
      auto size = static_cast<std::uint32_t>(table_.size());
      for (std::uint32_t i = 0, step = 1; i < 3000; ++i, step = step * 48271 % 2147483647) {
        now += 1 + step % longest;
        if (step % 3 == 0) counters.setUp(true, now);
        if (step % 3 == 1) counters.setScenario(scenario, now);
        if (step % 3 == 2) {
          ASSERT_EQ(counters.getIfTable(table_.data(), &size, true, now), 0u);
          ASSERT_EQ(number(1, 552), static_cast<std::uint32_t>((now - 500) * rate / 1000)) << rate << " until " << now;
        }
      }
      counters.setUp(false, now);
      ASSERT_EQ(counters.getIfTable(table_.data(), &size, true, now + 12345), 0u);
      EXPECT_EQ(number(1, 552), static_cast<std::uint32_t>((now - 500) * rate / 1000)) << rate;
      EXPECT_EQ(number(1, 576), static_cast<std::uint32_t>((now - 500) * (rate / 3) / 1000)) << rate;
    }
  }
}

TEST_F(CountersTest, NoSecondOfAWeekDiffersFromAnother) {
  scenario_.receiveRate = 123457;
  counters_.setScenario(scenario_, 0);
  counters_.setUp(true, 0);
  std::uint32_t before = 0;
  for (std::uint64_t second = 1; second <= 604800; ++second) {
    const std::uint32_t now = received(second * 1000);
    ASSERT_EQ(now - before, 123457u) << second;
    before = now;
  }
}

TEST_F(CountersTest, OctetsBeginAtTheStartValuesAndWrap) {
  scenario_.receivedAtStart = 4294960000;
  scenario_.sentAtStart = 0xFFFFFFFF;
  counters_.setScenario(scenario_, 0);
  EXPECT_EQ(received(0), 4294960000u);
  EXPECT_EQ(sent(0), 0xFFFFFFFFu);
  counters_.setUp(true, 0);
  EXPECT_EQ(received(1000), 13184u);
  EXPECT_EQ(sent(1000), 4095u);
}

TEST_F(CountersTest, AnotherScenarioKeepsWhatWasCounted) {
  counters_.setUp(true, 0);
  scenario_.receiveRate = 100;
  scenario_.sendRate = 0;
  counters_.setScenario(scenario_, 10000);
  EXPECT_EQ(received(10000), 10u * 20480);
  EXPECT_EQ(received(12000), 10u * 20480 + 200);
  EXPECT_EQ(sent(12000), 10u * 4096);
  scenario_.receivedAtStart = 5;
  counters_.setScenario(scenario_, 12000);
  EXPECT_EQ(received(12000), 10u * 20480 + 205);
}

TEST_F(CountersTest, WithoutEthernetTheLoopbackIsAlone) {
  counters_.setUp(true, 0);
  scenario_.ethernet = false;
  counters_.setScenario(scenario_, 1000);
  for (const bool sorted : {true, false}) {
    std::uint32_t size = 4 + 860;
    Bytes table(size);
    ASSERT_EQ(counters_.getIfTable(table.data(), &size, sorted, 2000), 0u);
    EXPECT_EQ(getNumber(table.data()), 1u);
    EXPECT_EQ(getNumber(table.data() + 4 + 516), 24u);
  }
  std::uint32_t size = 0;
  EXPECT_EQ(counters_.getIfTable(nullptr, &size, true, 2000), 122u);
  EXPECT_EQ(size, 4u + 860);
  scenario_.ethernet = true;
  counters_.setScenario(scenario_, 3000);
  EXPECT_EQ(received(3000), 3u * 20480) << "it went on unseen";
}

TEST_F(CountersTest, ANullSizeIs87) {
  EXPECT_EQ(counters_.getIfTable(nullptr, nullptr, true, 0), 87u);
  EXPECT_EQ(counters_.getIfTable(table_.data(), nullptr, true, 0), 87u);
}

TEST_F(CountersTest, WithoutATableTheNeededSizeIsToldWhateverTheSizeWas) {
  for (const std::uint32_t given : {0u, 1u, kThreeRows, kThreeRows + 1, 0xFFFFFFFFu}) {
    std::uint32_t size = given;
    EXPECT_EQ(counters_.getIfTable(nullptr, &size, true, 0), 122u);
    EXPECT_EQ(size, kThreeRows);
  }
}

TEST_F(CountersTest, TooSmallATableIsLeftAlone) {
  const Bytes untouched(kThreeRows, kCanary);
  for (const std::uint32_t given : {0u, 3u, 4u, 864u, kThreeRows - 1}) {
    table_ = untouched;
    std::uint32_t size = given;
    EXPECT_EQ(counters_.getIfTable(table_.data(), &size, true, 0), 122u) << given;
    EXPECT_EQ(size, kThreeRows) << given;
    EXPECT_EQ(table_, untouched) << given;
  }
}

TEST_F(CountersTest, NothingIsWrittenBehindTheRows) {
  for (const std::uint32_t given : {kThreeRows, kThreeRows + 1, kThreeRows + 100}) {
    Bytes table(kThreeRows + 100, kCanary);
    std::uint32_t size = given;
    EXPECT_EQ(counters_.getIfTable(table.data(), &size, true, 0), 0u);
    EXPECT_EQ(size, given) << "only a size that does not do is changed";
    EXPECT_EQ(Bytes(table.begin() + kThreeRows, table.end()), Bytes(100, kCanary));
    EXPECT_NE(table[kThreeRows - 1], kCanary) << "the last row is written to its end";
  }
}

TEST_F(CountersTest, PlantedFailuresAreCountedDownAndTouchNothing) {
  scenario_.failures = {{"enumConnections", 617, PlantedFailure::kAlways}, {"getIfTable", 5, 3}};
  counters_.setScenario(scenario_, 0);
  const Bytes untouched(kThreeRows, kCanary);
  table_ = untouched;
  std::uint32_t size = kThreeRows;
  EXPECT_EQ(counters_.getIfTable(table_.data(), &size, true, 0), 5u);
  EXPECT_EQ(table_, untouched);
  size = 7;
  EXPECT_EQ(counters_.getIfTable(nullptr, &size, true, 0), 5u);
  EXPECT_EQ(size, 7u);
  EXPECT_EQ(counters_.getIfTable(nullptr, nullptr, true, 0), 5u);
  EXPECT_EQ(counters_.getIfTable(nullptr, &size, true, 0), 122u);
  scenario_.failures = {{"getIfTable", 50, PlantedFailure::kAlways}};
  counters_.setScenario(scenario_, 0);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(counters_.getIfTable(nullptr, &size, true, 0), 50u);
}

TEST_F(CountersTest, OctetsMoveWhileAFailureHidesThem) {
  counters_.setUp(true, 0);
  scenario_.failures = {{"getIfTable", 5, 1}};
  counters_.setScenario(scenario_, 0);
  std::uint32_t size = 0;
  EXPECT_EQ(counters_.getIfTable(nullptr, &size, true, 1000), 5u);
  EXPECT_EQ(received(2000), 2u * 20480);
}

TEST_F(CountersTest, TimeThatWasCountedIsNotCountedAgain) {
  counters_.setUp(true, 1000);
  EXPECT_EQ(received(3000), 2u * 20480);
  EXPECT_EQ(received(2500), 2u * 20480);
  counters_.setUp(false, 2900);
  EXPECT_EQ(received(4000), 2u * 20480);
  counters_.setUp(true, 3500);
  EXPECT_EQ(received(5000), 3u * 20480);
}

TEST_F(CountersTest, AskingAllocatesNothing) {
  scenario_.failures = {{"getIfTable", 5, 500}};
  counters_.setScenario(scenario_, 0);
  const std::size_t before = allocationCount();
  for (std::uint64_t now = 0; now < 1000; ++now) {
    counters_.setUp(now % 2 == 0, now);
    std::uint32_t size = 0;
    counters_.getIfTable(nullptr, &size, true, now);
    size = kThreeRows;
    counters_.getIfTable(table_.data(), &size, true, now);
  }
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(getNumber(table_.data()), 3u) << "the failures were over halfway";
}

}  // namespace
}  // namespace pelvaro::line
