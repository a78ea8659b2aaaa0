#include "dialer/asyndial.h"

#include "dialer/fake_dialer.h"

namespace pelvaro {
namespace {

using asyndial::OnRasDialEvent;
using asyndial::progressText;
using asyndial::RasDialEventHook;
using fake::Lines;

// ---- progress texts ----

TEST(ProgressText, IsBoundToTheseStates) {
  EXPECT_STREQ(progressText(0), "Opening port...");
  EXPECT_STREQ(progressText(1), "Port opened...");
  EXPECT_STREQ(progressText(2), "Connecting device...");
  EXPECT_STREQ(progressText(3), "Device connected...");
  EXPECT_STREQ(progressText(5), "Checking username and password...");
  EXPECT_STREQ(progressText(21), "Logging on the network...");
  EXPECT_STREQ(progressText(0x1000), "Connect successfully.");
}

TEST(ProgressText, EveryOtherStateHasNone) {
  for (std::uint32_t state = 0; state <= 0x2100; ++state) {
    if (state <= 3 || state == 5 || state == 21 || state == 0x1000) continue;
    EXPECT_EQ(progressText(state), nullptr) << state;
  }
  EXPECT_EQ(progressText(0xFFFFFFFF), nullptr);
}

// ---- what an event does ----

struct OnRasDialEventTest : fake::DialerTest {
  void SetUp() override {
    form.load();
    form.lngHConn = 77;
    journal.take();
  }
  // A loaded form gets one event; what it leads to.
  Lines event(std::uint32_t state, std::uint32_t error) {
    form.load();
    journal.take();
    OnRasDialEvent(context, form, state, error);
    Lines lines = journal.take();
    // Windows are numbered anew at each load; the first one's numbers stand for all of them.
    for (std::string& line : lines) {
      if (line.starts_with("SetWindowProc")) line = "unhook";
      if (line.starts_with("DestroyWindow")) line = "destroy";
    }
    return lines;
  }
};

TEST_F(OnRasDialEventTest, StatesUnderWayShowTheirTextOnly) {
  for (std::uint32_t state = 0; state <= 30; ++state) {
    Lines expected;
    if (state == 0) expected = {"progress Opening port..."};
    if (state == 1) expected = {"progress Port opened..."};
    if (state == 2) expected = {"progress Connecting device..."};
    if (state == 3) expected = {"progress Device connected..."};
    if (state == 5) expected = {"progress Checking username and password..."};
    if (state == 21) expected = {"progress Logging on the network..."};
    EXPECT_EQ(event(state, 0), expected) << state;
    EXPECT_TRUE(form.loaded());
  }
  EXPECT_EQ(event(0xFFFFFFFF, 0), Lines{});
}

TEST_F(OnRasDialEventTest, ErrorShowsTheTextOfItsStateAndThenTheFailure) {
  for (std::uint32_t state = 0; state <= 30; ++state) {
    Lines expected;
    if (state == 0) expected = {"progress Opening port..."};
    if (state == 1) expected = {"progress Port opened..."};
    if (state == 2) expected = {"progress Connecting device..."};
    if (state == 3) expected = {"progress Device connected..."};
    if (state == 5) expected = {"progress Checking username and password..."};
    if (state == 21) expected = {"progress Logging on the network..."};
    for (const char* line : {"Timer2 off", "RasGetErrorString 691 512", "unhook", "destroy", "RasHangUp 77",
                             "progress Fail to connect", "Retry"}) {
      expected.push_back(line);
    }
    EXPECT_EQ(event(state, 691), expected) << state;
    EXPECT_FALSE(form.loaded());
  }
}

TEST_F(OnRasDialEventTest, ErrorWhileThePortOpensShowsBothTextsInOneEvent) {
  OnRasDialEvent(context, form, 0, 633);
  EXPECT_EQ(journal.take(),
            (Lines{"progress Opening port...", "Timer2 off", "RasGetErrorString 633 512", "SetWindowProc 501 1501",
                   "DestroyWindow 501", "RasHangUp 77", "progress Fail to connect", "Retry"}));
}

TEST_F(OnRasDialEventTest, InteractiveShowsTheSuccessTextAndConnects) {
  EXPECT_EQ(event(0x1000, 0), (Lines{"progress Connect successfully.", "Timer2 on", "unhook", "destroy",
                                     "hide frmStatus", "hide Form4"}));
  EXPECT_FALSE(form.loaded());
}

TEST_F(OnRasDialEventTest, ConnectedShowsNoTextAndConnects) {
  EXPECT_EQ(event(0x2000, 0), (Lines{"Timer2 on", "unhook", "destroy", "hide frmStatus", "hide Form4"}));
  EXPECT_FALSE(form.loaded());
}

TEST_F(OnRasDialEventTest, DisconnectedHidesThePromptHangsUpAndOffersRetry) {
  EXPECT_EQ(event(0x2001, 0), (Lines{"Timer2 off", "unhook", "destroy", "hide Form4", "RasHangUp 77",
                                     "progress Fail to connect", "Retry"}));
  EXPECT_FALSE(form.loaded());
}

TEST_F(OnRasDialEventTest, DisconnectedWithAnErrorHangsUpTwice) {
  EXPECT_EQ(event(0x2001, 691),
            (Lines{"Timer2 off", "unhook", "destroy", "hide Form4", "RasHangUp 77", "progress Fail to connect", "Retry",
                   "Timer2 off", "RasGetErrorString 691 512", "RasHangUp 77", "progress Fail to connect", "Retry"}));
}

TEST_F(OnRasDialEventTest, SuccessWithAnErrorConnectsAndThenFails) {
  EXPECT_EQ(event(0x1000, 691),
            (Lines{"progress Connect successfully.", "Timer2 on", "unhook", "destroy", "hide frmStatus", "hide Form4",
                   "Timer2 off", "RasGetErrorString 691 512", "RasHangUp 77", "progress Fail to connect", "Retry"}));
  EXPECT_EQ(event(0x2000, 691),
            (Lines{"Timer2 on", "unhook", "destroy", "hide frmStatus", "hide Form4", "Timer2 off",
                   "RasGetErrorString 691 512", "RasHangUp 77", "progress Fail to connect", "Retry"}));
}

TEST_F(OnRasDialEventTest, NeighboursOfTheEndingStatesDoNothing) {
  for (const std::uint32_t state : {0xFFFu, 0x1001u, 0x1005u, 0x1FFFu, 0x2002u}) {
    EXPECT_EQ(event(state, 0), Lines{}) << state;
    EXPECT_TRUE(form.loaded());
  }
}

TEST_F(OnRasDialEventTest, SystemErrorIsLookedUpAsSuch) {
  const Lines lines = event(4, 5);
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[1], "FormatMessage 4096 5 0 512");
}

TEST_F(OnRasDialEventTest, NegativeErrorIsAnError) {
  const Lines lines = event(4, 0xFFFFFFFF);
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[1], "FormatMessage 4096 4294967295 0 512");
}

TEST_F(OnRasDialEventTest, HandleZeroIsHungUpToo) {
  form.lngHConn = 0;
  const Lines lines = event(0x2001, 0);
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[4], "RasHangUp 0");
}

TEST_F(OnRasDialEventTest, HangUpIsOfTheFormsHandleAndLeavesBothHandles) {
  screen.handle = 5;
  event(0x2001, 691);
  EXPECT_EQ(form.lngHConn, 77u);
  EXPECT_EQ(screen.handle, 5u);
}

TEST_F(OnRasDialEventTest, LastHangUpResultIsThatOfTheLastFailure) {
  std::uint32_t result = 600;
  ras.onHangUp = [&](RasHandle) { return ++result; };
  event(0x2001, 0);
  EXPECT_EQ(context.lastHangUpResult, 601u);
  event(0x2001, 691);
  EXPECT_EQ(context.lastHangUpResult, 603u);
  event(0x2000, 0);
  EXPECT_EQ(context.lastHangUpResult, 603u);
  ras.onHangUp = nullptr;
  event(3, 691);
  EXPECT_EQ(context.lastHangUpResult, 0u);
}

TEST_F(OnRasDialEventTest, FailureLeavesTheConnectedFlagAndTheLastDialResult) {
  context.connected = true;
  context.lastDialResult = "0";
  event(0x2001, 691);
  EXPECT_TRUE(context.connected);
  EXPECT_EQ(context.lastDialResult, "0");
}

TEST_F(OnRasDialEventTest, UnloadedFormIsNotUnloadedAgain) {
  form.unload();
  journal.take();
  OnRasDialEvent(context, form, 0x2000, 0);
  EXPECT_EQ(journal.take(), (Lines{"Timer2 on", "hide frmStatus", "hide Form4"}));
}

// ---- the hook ----

struct RasDialEventHookTest : fake::DialerTest {
  RasDialEventHook hook{context, form};
  WindowHandle first = windows.create();   // 501
  WindowHandle second = windows.create();  // 502

  void SetUp() override { journal.take(); }
};

TEST_F(RasDialEventHookTest, InstallingHooksThenRegistersTheMessage) {
  hook.install(first);
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 hook", "RegisterWindowMessage RasDialEvent"}));
  EXPECT_EQ(context.dialEventMessage, 50000u);
  EXPECT_EQ(hook.hookedWindow(), first);
}

TEST_F(RasDialEventHookTest, MessageIsRegisteredOnceAProcess) {
  hook.install(first);
  hook.remove();
  journal.take();
  hook.install(second);
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 502 hook"}));
  RasDialEventHook another(context, form);
  hook.remove();
  journal.take();
  another.install(first);
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 hook"}));
}

TEST_F(RasDialEventHookTest, RegistrationOfZeroFallsBackTo52429) {
  windows.registered = 0;
  hook.install(first);
  EXPECT_EQ(context.dialEventMessage, 52429u);
  form.lngHConn = 77;
  journal.take();
  windows.send(first, 0xCCCD, 1, 0);
  EXPECT_EQ(journal.take(), (Lines{"progress Port opened...", "CallWindowProc 1501 501 52429 1 0"}));
  hook.remove();
  hook.install(second);
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 1501", "SetWindowProc 502 hook"}));
}

TEST_F(RasDialEventHookTest, FallbackNumberMeansNothingWhenAnotherIsRegistered) {
  hook.install(first);
  journal.take();
  windows.send(first, 0xCCCD, 0x2001, 691);
  EXPECT_EQ(journal.take(), (Lines{"CallWindowProc 1501 501 52429 8193 691"}));
}

TEST_F(RasDialEventHookTest, SecondInstallRestoresTheFirstWindowBeforeHooking) {
  hook.install(first);
  journal.take();
  hook.install(second);
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 1501", "SetWindowProc 502 hook"}));
  EXPECT_EQ(hook.hookedWindow(), second);
  hook.remove();
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 502 1502"}));
}

TEST_F(RasDialEventHookTest, SecondInstallOnTheSameWindowKeepsTheTruePreviousProcedure) {
  hook.install(first);
  hook.install(first);
  journal.take();
  hook.remove();
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 1501"}));
}

TEST_F(RasDialEventHookTest, RemovingWithoutAHookDoesNothing) {
  hook.remove();
  EXPECT_EQ(journal.take(), Lines{});
  hook.install(first);
  hook.remove();
  EXPECT_EQ(hook.hookedWindow(), 0u);
  journal.take();
  hook.remove();
  EXPECT_EQ(journal.take(), Lines{});
}

TEST_F(RasDialEventHookTest, WindowThatCouldNotBeHookedGetsNoProcedureBack) {
  windows.unhookable = true;
  hook.install(first);
  EXPECT_EQ(hook.hookedWindow(), 0u);
  journal.take();
  hook.remove();
  EXPECT_EQ(journal.take(), Lines{});
}

TEST_F(RasDialEventHookTest, OtherMessagesArePassedOnAndNotHandled) {
  hook.install(first);
  journal.take();
  windows.previousResult = 42;
  for (const std::uint32_t number : {0u, 2u, 0x0111u, 49999u, 50001u}) {
    EXPECT_EQ(windows.send(first, number, 0x2001, 691), 42);
    EXPECT_EQ(journal.take(), (Lines{"CallWindowProc 1501 501 " + std::to_string(number) + " 8193 691"}));
  }
}

TEST_F(RasDialEventHookTest, DialEventIsHandledAndThenPassedOnWithItsResult) {
  hook.install(first);
  journal.take();
  windows.previousResult = -5;
  EXPECT_EQ(windows.send(first, 50000, 3, 0), -5);
  EXPECT_EQ(journal.take(), (Lines{"progress Device connected...", "CallWindowProc 1501 501 50000 3 0"}));
}

TEST_F(RasDialEventHookTest, ErrorOfMinusOneIsTakenAs32Bits) {
  hook.install(first);
  journal.take();
  windows.send(first, 50000, 4, -1);
  const Lines lines = journal.take();
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[1], "FormatMessage 4096 4294967295 0 512");
  EXPECT_EQ(lines.back(), "CallWindowProc 1501 501 50000 4 -1");
}

// ---- the form's own hook ----

struct HookedFormTest : fake::DialerTest {};

TEST_F(HookedFormTest, WindowThatCouldNotBeHookedIsHookedByTheNextLoad) {
  windows.unhookable = true;
  form.load();
  windows.unhookable = false;
  journal.take();
  form.load();
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 hook"}));
  form.load();
  form.unload();
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 1501", "DestroyWindow 501"}));
}

TEST_F(HookedFormTest, EventThatUnloadsTheFormIsStillPassedOn) {
  form.load();
  form.lngHConn = 77;
  journal.take();
  windows.previousResult = 9;
  EXPECT_EQ(windows.send(501, 50000, 0x2000, 0), 9);
  EXPECT_EQ(journal.take(), (Lines{"Timer2 on", "SetWindowProc 501 1501", "DestroyWindow 501", "hide frmStatus",
                                   "hide Form4", "CallWindowProc 1501 501 50000 8192 0"}));
  EXPECT_FALSE(form.loaded());
}

TEST_F(HookedFormTest, EventGoesToTheOldProcedureWhenTheHandlerLoadsTheFormAgain) {
  form.load();
  form.lngHConn = 77;
  ras.onHangUp = [this](RasHandle) {
    form.load();  // a dial made by somebody that the handler has let run
    return 0u;
  };
  journal.take();
  windows.send(501, 50000, 0x2001, 0);
  EXPECT_EQ(journal.take(), (Lines{"Timer2 off", "SetWindowProc 501 1501", "DestroyWindow 501", "hide Form4",
                                   "RasHangUp 77", "CreateWindow 502", "SetWindowProc 502 hook",
                                   "progress Fail to connect", "Retry", "CallWindowProc 1501 501 50000 8193 0"}));
  EXPECT_TRUE(form.loaded());
  windows.send(502, 15, 0, 0);
  EXPECT_EQ(journal.take(), (Lines{"CallWindowProc 1502 502 15 0 0"}));
}

TEST_F(HookedFormTest, EventsBehindTheLastOneAreLost) {
  form.load();
  windows.send(501, 50000, 0x2000, 0);
  journal.take();
  windows.send(501, 50000, 0x2001, 691);
  EXPECT_EQ(journal.take(), Lines{});
}

}  // namespace
}  // namespace pelvaro
