#include "line_interface_table.h"

#include "line_fixture.h"
#include "platform/if_table_layout.h"

namespace pelvaro::line {
namespace {

struct LineInterfaceTableTest : LineTest {
  LineInterfaceTable interfaces{line_};
  InterfaceTable& seam = interfaces;
  Bytes table = Bytes(if_table::kFirstRow + 3 * if_table::kRowSize);

  // What the second row has received.
  std::uint32_t received() {
    auto size = static_cast<std::uint32_t>(table.size());
    EXPECT_EQ(seam.getIfTable(table.data(), &size, true), 0u);
    return getNumber(table.data() + if_table::kFirstRow + if_table::kRowSize + if_table::kInOctets);
  }
  // What it receives in a second.
  std::uint32_t second() {
    const std::uint32_t before = received();
    line_.step(now_ += 1000);
    return received() - before;
  }
  void dialUntilUp(const std::string& entry) {
    ASSERT_EQ(dial(params(entry)), 0u);
    settle();
    ASSERT_EQ(told_.back().state, kConnected);
  }
};

TEST_F(LineInterfaceTableTest, EveryArgumentReachesTheCounters) {
  EXPECT_EQ(seam.getIfTable(table.data(), nullptr, true), 87u);
  std::uint32_t size = 5;
  EXPECT_EQ(seam.getIfTable(nullptr, &size, true), 122u);
  EXPECT_EQ(size, table.size());
  for (const bool sorted : {true, false}) {
    EXPECT_EQ(seam.getIfTable(table.data(), &size, sorted), 0u);
    EXPECT_EQ(getNumber(table.data() + if_table::kFirstRow + if_table::kType),
              sorted ? if_table::kLoopback : if_table::kEthernet);
  }
}

TEST_F(LineInterfaceTableTest, NothingMovesUntilTheConnectionIsUp) {
  EXPECT_EQ(second(), 0u);
  Scenario scenario = quick();
  scenario.pace = 500;
  line_.setScenario(scenario);
  ASSERT_EQ(dial(params("Work")), 0u);
  for (int i = 0; i < 1000 && line_.dialing(); ++i) {
    line_.step(now_ += 100);
    EXPECT_EQ(received(), 0u);
  }
  ASSERT_EQ(told_.back(), (Told{kWindow, kConnected, 0}));
  EXPECT_EQ(second(), 20480u);
  EXPECT_EQ(second(), 20480u);
}

TEST_F(LineInterfaceTableTest, NothingMovesAfterAFailedDial) {
  ASSERT_EQ(dial(params("Work", "guest", "wrong")), 0u);
  settle();
  ASSERT_EQ(told_.back().error, 691u);
  EXPECT_EQ(second(), 0u);
}

TEST_F(LineInterfaceTableTest, AHangUpStopsItAndTheNextDialGoesOn) {
  dialUntilUp("Work");
  second();
  const std::uint32_t before = received();
  EXPECT_EQ(line_.hangUp(handle_), 0u);
  EXPECT_EQ(received(), before);
  EXPECT_EQ(second(), 0u);
  dialUntilUp("Work");
  EXPECT_EQ(received(), before);
  EXPECT_EQ(second(), 20480u);
}

TEST_F(LineInterfaceTableTest, APulledCableStopsIt) {
  dialUntilUp("Work");
  ports_.unplug("COM5");
  line_.step(now_ += 1);
  EXPECT_EQ(second(), 0u);
}

TEST_F(LineInterfaceTableTest, OneOfTwoConnectionsIsEnough) {
  dialUntilUp("Work");
  const std::uint32_t first = handle_;
  dialUntilUp("Corvanti-Home");
  EXPECT_EQ(second(), 20480u) << "two are not quicker";
  EXPECT_EQ(line_.hangUp(first), 0u);
  EXPECT_EQ(second(), 20480u);
  EXPECT_EQ(line_.hangUp(handle_), 0u);
  EXPECT_EQ(second(), 0u);
}

TEST_F(LineInterfaceTableTest, ConnectionsThatAreOnlyShownMoveNothing) {
  Scenario scenario = quick();
  scenario.connections = 3;
  line_.setScenario(scenario);
  ASSERT_EQ(connected().size(), 3u);
  EXPECT_EQ(second(), 0u);
}

TEST_F(LineInterfaceTableTest, TheScenarioSetsTheTraffic) {
  dialUntilUp("Work");
  ASSERT_EQ(second(), 20480u);
  const std::uint32_t before = received();
  Scenario scenario = quick();
  scenario.receiveRate = 1000;
  scenario.failures = {{"getIfTable", 5, 1}};
  line_.setScenario(scenario);
  std::uint32_t size = 0;
  EXPECT_EQ(seam.getIfTable(nullptr, &size, true), 5u);
  EXPECT_EQ(received(), before);
  EXPECT_EQ(second(), 1000u);
}

// The line that a scenario is given at its start has it as well.
TEST_F(LineInterfaceTableTest, TheFirstScenarioCounts) {
  Scenario scenario = quick();
  scenario.receivedAtStart = 77;
  DialLine other(firstPhonebook(), scenario, ports_, {});
  LineInterfaceTable others(other);
  auto size = static_cast<std::uint32_t>(table.size());
  ASSERT_EQ(others.getIfTable(table.data(), &size, true), 0u);
  EXPECT_EQ(getNumber(table.data() + if_table::kFirstRow + if_table::kRowSize + if_table::kInOctets), 77u);
}

}  // namespace
}  // namespace pelvaro::line
