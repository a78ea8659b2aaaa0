#include "monitor/traffic.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/runtime_error.h"
#include "platform/fake/fake_interface_table.h"

namespace pelvaro::monitor {
namespace {

const NumberStyle kEnglish;

struct TrafficTest : testing::Test {
  fake::FakeInterfaceTable table;
  Traffic traffic{table};
  void update() { traffic.update(false, kEnglish); }
  void baseline() { traffic.update(true, kEnglish); }
  void expectFigures(std::int32_t received, std::int32_t sent, const char* down, const char* up) {
    EXPECT_EQ(traffic.receivedKb(), received);
    EXPECT_EQ(traffic.sentKb(), sent);
    EXPECT_EQ(traffic.downloadRate(), down);
    EXPECT_EQ(traffic.uploadRate(), up);
  }
};

TEST_F(TrafficTest, EveryUpdateAsksForTheSizeAndThenForTheTable) {
  update();
  EXPECT_EQ(table.calls, 2);
  EXPECT_EQ(table.fills, 1);
  EXPECT_EQ(table.unsorted, 0);
}

TEST_F(TrafficTest, TotalsCountFromTheBaseline) {
  table.count(5000, 300);
  baseline();
  expectFigures(0, 0, "0 KB/sec.", "0 KB/sec.");
  table.count(5010, 301);
  update();
  expectFigures(10, 1, "10 KB/sec.", "0 KB/sec.");
  table.count(5015, 301);
  update();
  expectFigures(15, 1, "5 KB/sec.", "0 KB/sec.");
}

TEST_F(TrafficTest, UploadDifferencesAreDividedOnceMoreAndDownloadDifferencesAreNot) {
  baseline();
  table.count(2048, 2048);
  update();
  expectFigures(2048, 2048, "2,048 KB/sec.", "2 KB/sec.");
}

TEST_F(TrafficTest, TheUploadRateRoundsHalvesAwayFromZero) {
  baseline();
  table.count(0, 512);
  update();
  EXPECT_EQ(traffic.uploadRate(), "1 KB/sec.");
  table.count(0, 512 + 511);
  update();
  EXPECT_EQ(traffic.uploadRate(), "0 KB/sec.");
  table.count(0, 512 + 511 - 512);
  update();
  EXPECT_EQ(traffic.uploadRate(), "-1 KB/sec.");
}

TEST_F(TrafficTest, KilobytesRoundHalvesAwayFromZero) {
  table.rows[1] = {6, 1536, 512};  // 1.5 and 0.5 KB: the baselines are 2 and 1
  baseline();
  expectFigures(-1, -1, "-1 KB/sec.", "0 KB/sec.");
  table.rows[1] = {6, 2560, 1535};  // 2.5 - 2, 1.499 - 1
  update();
  expectFigures(1, 0, "2 KB/sec.", "0 KB/sec.");
}

TEST_F(TrafficTest, ABaselineInTheMiddleStartsTheTotalsAnew) {
  baseline();
  table.count(100, 50);
  update();
  baseline();
  expectFigures(0, 0, "-100 KB/sec.", "0 KB/sec.");
}

TEST_F(TrafficTest, WithoutABaselineTheTotalsAreTheCounters) {
  table.count(4000000, 7);
  update();
  expectFigures(4000000, 7, "4,000,000 KB/sec.", "0 KB/sec.");
}

TEST_F(TrafficTest, CountersAreUnsignedAndAfterAWrapTotalsAndRatesAreNegative) {
  table.rows[1] = {6, 0xFFFFFC00, 0xFFFFFC00};  // 4194303 KB
  baseline();
  expectFigures(0, 0, "0 KB/sec.", "0 KB/sec.");
  table.rows[1] = {6, 0, 0};
  update();
  expectFigures(-4194303, -4194303, "-4,194,303 KB/sec.", "-4,096 KB/sec.");
  table.rows[1] = {6, 0xFFFFFFFF, 0xFFFFFFFF};  // 4194303.999 KB
  update();
  expectFigures(1, 1, "4,194,304 KB/sec.", "4,096 KB/sec.");
}

TEST_F(TrafficTest, TheFirstEthernetRowCountsThoughItIsIdle) {
  table.rows = {{23, 9000 * 1024, 9000 * 1024}, {6, 1024, 2048}, {6, 8000 * 1024, 8000 * 1024}};
  update();
  expectFigures(1, 2, "1 KB/sec.", "0 KB/sec.");
}

TEST_F(TrafficTest, FailuresLeaveEveryFigure) {
  update();
  EXPECT_EQ(traffic.downloadRate(), "0 KB/sec.");
  table.count(30, 2048);
  update();
  const auto same = [&] { expectFigures(30, 2048, "30 KB/sec.", "2 KB/sec."); };
  table.count(60, 60);
  table.failure = 5;
  update();
  same();
  table.failure = 0;
  table.rows = {{24, 1, 1}, {23, 1, 1}, {71, 1, 1}};
  update();
  same();
  table.rows.clear();
  update();
  same();
}

TEST_F(TrafficTest, BeforeAnySuccessTheRatesAreEmpty) {
  table.failure = 5;
  baseline();
  expectFigures(0, 0, "", "");
}

TEST_F(TrafficTest, TheBaselineIsNotMadeUpWhenItFailed) {
  table.failure = 5;
  baseline();
  table.failure = 0;
  table.count(77, 1);
  update();
  EXPECT_EQ(traffic.receivedKb(), 77);
}

struct NoSize : InterfaceTable {
  int fills = 0;
  std::uint32_t size = 0;
  std::uint32_t getIfTable(void* table, std::uint32_t* needed, bool) override {
    if (table) ++fills;
    *needed = size;
    return 0;
  }
};

TEST(Traffic, ASizeBelowOneOrBeyondAllReasonIsAFailure) {
  NoSize table;
  Traffic traffic(table);
  for (const std::uint32_t size : {0u, 0x80000000u, 0xFFFFFFFFu, (16u << 20) + 1}) {
    table.size = size;
    traffic.update(false, kEnglish);
    EXPECT_EQ(table.fills, 0) << size;
    EXPECT_EQ(traffic.downloadRate(), "");
  }
}

TEST(Traffic, AnySizeUpTo16MegabytesIsAskedFor) {
  NoSize table;
  Traffic traffic(table);
  for (const std::uint32_t size : {1u, 16u << 20}) {
    table.size = size;
    table.fills = 0;
    traffic.update(false, kEnglish);
    EXPECT_EQ(table.fills, 1) << size;
  }
}

TEST_F(TrafficTest, ACountBeyondTheTableIsCutAtItsEnd) {
  table.rows = {{24, 1, 1}, {23, 1, 1}};
  table.claimedRows = 0xFFFFFFFF;
  update();
  EXPECT_EQ(traffic.downloadRate(), "");
}

TEST_F(TrafficTest, ATableThatGrewBetweenTheCallsIsReadAsFarAsItWasGiven) {
  table.claimedSize = 4 + 860;  // of the first call; the Ethernet row lies behind it
  update();
  EXPECT_EQ(traffic.downloadRate(), "");
  table.claimedSize = 3;
  update();
  EXPECT_EQ(traffic.downloadRate(), "");
}

TEST_F(TrafficTest, ASmallerTableIsNotReadBeyondItsEndThoughAnEarlierOneWasLonger) {
  table.count(9, 9);
  update();
  table.rows = {{24, 1, 1}};
  table.claimedRows = 2;
  update();
  expectFigures(9, 9, "9 KB/sec.", "0 KB/sec.");
}

TEST_F(TrafficTest, RatesAreGroupedAsTheLocaleDoes) {
  traffic.update(true, kEnglish);
  table.count(1234567, 0);
  traffic.update(false, {".", "3;0"});
  EXPECT_EQ(traffic.downloadRate(), "1.234.567 KB/sec.");
  EXPECT_EQ(traffic.receivedKb(), 1234567);
}

TEST(FirstEthernet, NeedsAWholeRow) {
  std::vector<std::uint8_t> bytes(4 + 860);
  put32(bytes, 0, 1);
  put32(bytes, 4 + 516, 6);
  put32(bytes, 4 + 552, 11);
  put32(bytes, 4 + 576, 22);
  const auto found = firstEthernet(bytes);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->received, 11u);
  EXPECT_EQ(found->sent, 22u);
  bytes.pop_back();
  EXPECT_FALSE(firstEthernet(bytes));
  EXPECT_FALSE(firstEthernet({}));
}

}  // namespace
}  // namespace pelvaro::monitor
