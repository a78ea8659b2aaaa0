#include "dialer/connect.h"

#include "dialer/fake_dialer.h"

namespace pelvaro {
namespace {

using connect::HangUpConnection;
using connect::ToggleConnection;
using fake::Lines;

struct ConnectTest : fake::DialerTest {
  void SetUp() override {
    ras.onDialParams = [](void* params, std::int32_t*) -> std::uint32_t {
      const bool named = static_cast<const char*>(params)[4] != '\0';
      return named ? 0 : 623;
    };
    ras.onDial = [](void*, RasHandle* connection) -> std::uint32_t {
      *connection = 77;
      return 0;
    };
  }
};

TEST_F(ConnectTest, TooltipConnectDialsAndStoresTheHandle) {
  EXPECT_EQ(ToggleConnection(context, form), 1);
  EXPECT_EQ(journal.take(),
            (Lines{"CreateWindow 501", "SetWindowProc 501 hook", "RegisterWindowMessage RasDialEvent", "Yield",
                   "RasGetEntryDialParams null 1060 \"Corvanti-Home\"", "RasGetEntryDialParams null 1060 \"\"",
                   "RasDial null 4294967295 501 0", "p_iConnID 77"}));
  EXPECT_TRUE(context.connected);
  EXPECT_EQ(screen.handle, 77u);
}

TEST_F(ConnectTest, LoadedFormIsNotLoadedAgain) {
  form.load();
  journal.take();
  EXPECT_EQ(ToggleConnection(context, form), 1);
  EXPECT_EQ(journal.take(),
            (Lines{"Yield", "RasGetEntryDialParams null 1060 \"Corvanti-Home\"", "RasGetEntryDialParams null 1060 \"\"",
                   "RasDial null 4294967295 501 0", "p_iConnID 77"}));
}

TEST_F(ConnectTest, RefusedDialGivesZeroAndStoresTheHandleAsItIs) {
  ras.onDial = [](void*, RasHandle* connection) -> std::uint32_t {
    *connection = 78;
    return 756;
  };
  EXPECT_EQ(ToggleConnection(context, form), 0);
  EXPECT_EQ(screen.handle, 78u);
  EXPECT_EQ(journal.take().back(), "p_iConnID 78");
}

TEST_F(ConnectTest, UnreadableParametersGiveZeroAndStoreHandleZero) {
  ras.onDialParams = [](void*, std::int32_t*) { return 623u; };
  screen.handle = 5;
  EXPECT_EQ(ToggleConnection(context, form), 0);
  EXPECT_EQ(screen.handle, 0u);
  EXPECT_EQ(journal.take().back(), "p_iConnID 0");
}

TEST_F(ConnectTest, NoSelectionDialsWithTheEmptyName) {
  screen.selected = "";
  ras.onDialParams = [](void*, std::int32_t*) { return 623u; };
  EXPECT_EQ(ToggleConnection(context, form), 0);
  const Lines lines = journal.take();
  ASSERT_GE(lines.size(), 5u);
  EXPECT_EQ(lines[4], "RasGetEntryDialParams null 1060 \"\"");
}

TEST_F(ConnectTest, AnyOtherTooltipHangsUp) {
  for (const char* tooltip : {"connect", "CONNECT", "Connect ", " Connect", "Hang Up", "", "Connecting", "&Connect"}) {
    context.connected = true;
    screen.tooltip = tooltip;
    screen.handle = 12;
    form.lngHConn = 99;
    EXPECT_EQ(ToggleConnection(context, form), 0) << tooltip;
    EXPECT_EQ(journal.take(), (Lines{"RasHangUp 12", "Timer2 off"})) << tooltip;
    EXPECT_FALSE(context.connected);
    EXPECT_EQ(screen.handle, 12u);
    EXPECT_FALSE(form.loaded());
  }
}

TEST_F(ConnectTest, TooltipIsReadBeforeThePendingEventsRun) {
  loop.onYield = [this] { screen.tooltip = "Hang Up"; };
  EXPECT_EQ(ToggleConnection(context, form), 1);
  EXPECT_EQ(journal.take().back(), "p_iConnID 77");
}

TEST_F(ConnectTest, HangUpOfHandleZeroIsMade) {
  screen.tooltip = "Hang Up";
  EXPECT_EQ(ToggleConnection(context, form), 0);
  EXPECT_EQ(journal.take(), (Lines{"RasHangUp 0", "Timer2 off"}));
}

TEST_F(ConnectTest, FailedHangUpStillSwitchesTheTimerOff) {
  screen.tooltip = "Hang Up";
  ras.onHangUp = [](RasHandle) { return 6u; };
  EXPECT_EQ(ToggleConnection(context, form), 0);
  EXPECT_EQ(journal.take(), (Lines{"RasHangUp 0", "Timer2 off"}));
}

TEST_F(ConnectTest, HangUpConnectionCallsOnceAndTellsWhetherItWasDone) {
  for (const std::uint32_t result : {0u, 6u, 0xFFFFFFFFu}) {
    ras.onHangUp = [&](RasHandle) { return result; };
    context.connected = true;
    EXPECT_EQ(HangUpConnection(context, 31), result == 0);
    EXPECT_FALSE(context.connected);
    EXPECT_EQ(journal.take(), (Lines{"RasHangUp 31"}));
    EXPECT_EQ(context.lastHangUpResult, 0u);
  }
}

TEST_F(ConnectTest, ConnectedFlagIsClearedAfterTheHangUp) {
  context.connected = true;
  ras.onHangUp = [this](RasHandle) {
    EXPECT_TRUE(context.connected);
    return 0u;
  };
  HangUpConnection(context, 31);
  EXPECT_FALSE(context.connected);
}

}  // namespace
}  // namespace pelvaro
