// Going online and offline again, and all the ways in which that fails.
#include "story.h"

namespace pelvaro {
namespace {

TEST_F(Story, AtTheStartTheEntriesAreListedAndNothingIsUp) {
  Form1& main = windows->form1;
  ASSERT_EQ(main.ListView1.count(), 3);
  EXPECT_EQ(main.ListView1.itemText(0), "Corvanti-Office");
  EXPECT_EQ(main.ListView1.itemText(2), "Work");
  EXPECT_EQ(main.ListView1.selectedRow(), -1);
  EXPECT_EQ(status(), kDown);
  EXPECT_EQ(tooltip(), "Connect");
  EXPECT_FALSE(main.Image2.enabled());
  EXPECT_TRUE(main.Timer1.enabled());
  EXPECT_FALSE(main.Timer2.enabled());
  EXPECT_TRUE(main.visible());
}

TEST_F(Story, ADialShowsEveryProgressTextAndConnects) {
  dial("Corvanti-Office");
  EXPECT_TRUE(windows->statusForm.visible());
  EXPECT_TRUE(windows->form4.visible());
  for (const char* text : {"Opening port...", "Port opened...", "Connecting device...", "Device connected...",
                           "Checking username and password...", "Logging on the network..."}) {
    EXPECT_TRUE(waitForProgress(text)) << text;
  }
  ASSERT_TRUE(waitForStatus(kUp));
  EXPECT_EQ(tooltip(), "Hang Up");
  EXPECT_TRUE(windows->form1.Timer2.enabled());
  EXPECT_FALSE(windows->statusForm.visible());
  EXPECT_FALSE(windows->form4.visible());
  EXPECT_FALSE(windows->dialForm.loaded());
  EXPECT_EQ(world.desktop.hiddenWindows(), 0);
  EXPECT_NE(windows->form1.p_iConnID, 0u);
  EXPECT_EQ(windows->form1.p_iConnID, windows->dialForm.lngHConn);
  EXPECT_EQ(windows->dial.lastDialResult, "0");
}

TEST_F(Story, HangingUpGoesThroughTheSplashAndLeavesNoWindowBehind) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  user([this] { windows->form1.Image2.click(); });
  EXPECT_EQ(windows->mode(), "Connect");
  EXPECT_FALSE(windows->form5.visible());
  EXPECT_EQ(windows->form5.Animation1.file(), "C:\\Pelvaro\\loading.avi");
  EXPECT_EQ(windows->form5.textLabel.text(), "");
  wait(60);
  EXPECT_EQ(status(), kDown);
  EXPECT_EQ(tooltip(), "Connect");
  EXPECT_FALSE(windows->form1.Timer2.enabled());
  EXPECT_FALSE(windows->dial.connected);
  EXPECT_EQ(world.desktop.formsVisible(), 1);
}

TEST_F(Story, AWrongPasswordOffersRetryAndTheCorrectedOneConnects) {
  dial("Corvanti-Office", "guest", "wrong");
  ASSERT_TRUE(waitForProgress("Fail to connect"));
  EXPECT_EQ(windows->statusForm.Command1.text(), "Retry");
  EXPECT_TRUE(windows->statusForm.visible());
  EXPECT_TRUE(windows->form4.visible());  // an error alone does not take the prompt away
  EXPECT_EQ(world.told.back(), "5/691");
  EXPECT_FALSE(windows->dialForm.loaded());
  EXPECT_EQ(status(), kDown);
  // The boxes still hold what was typed.
  EXPECT_EQ(windows->form4.Text1.text(), "guest");
  windows->form4.Text2.setText(line::kPracticePassword);
  user([this] { windows->statusForm.Command1.click(); });
  EXPECT_TRUE(waitForStatus(kUp));
}

TEST_F(Story, RetryStartsANewDialEachTimeAndLeavesTheMainWindowsHandle) {
  dial("Corvanti-Office", "guest", "wrong");
  ASSERT_TRUE(waitForProgress("Fail to connect"));
  const RasHandle failed = windows->form1.p_iConnID;
  for (int i = 0; i < 3; ++i) {
    windows->statusForm.Label1.setText("");
    user([this] { windows->statusForm.Command1.click(); });
    EXPECT_EQ(windows->statusForm.Command1.text(), "Retry");
    ASSERT_TRUE(waitForProgress("Fail to connect")) << i;
  }
  EXPECT_EQ(windows->form1.p_iConnID, failed);
  windows->form4.Text2.setText(line::kPracticePassword);
  user([this] { windows->statusForm.Command1.click(); });
  ASSERT_TRUE(waitForStatus(kUp));
  EXPECT_NE(windows->dialForm.lngHConn, failed);
  // "Hang Up" hangs up the old handle, so the connection stays.
  user([this] { windows->form1.Image2.click(); });
  wait(200);
  EXPECT_EQ(status(), kUp);
}

TEST_F(Story, CancelInMidDialHangsUpAndTakesBothWindowsAway) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForProgress("Connecting device..."));
  user([this] { windows->statusForm.Command1.click(); });
  EXPECT_FALSE(windows->statusForm.visible());
  EXPECT_TRUE(windows->statusForm.loaded()) << "hidden, and so it keeps its text";
  EXPECT_EQ(progress(), "Connecting device...");
  EXPECT_FALSE(windows->form4.visible());
  EXPECT_FALSE(windows->dialForm.loaded());
  const std::size_t told = world.told.size();
  wait(5000);
  EXPECT_EQ(world.told.size(), told) << "no notification after a hang-up";
  EXPECT_EQ(status(), kDown);
  EXPECT_FALSE(world.line.anythingUp());
}

TEST_F(Story, OnlyTheExactCaptionCancels) {
  dial("Corvanti-Office", "guest", "wrong");
  ASSERT_TRUE(waitForProgress("Fail to connect"));
  const std::size_t told = world.told.size();
  windows->statusForm.Command1.setText("Cancel");
  user([this] { windows->statusForm.Command1.click(); });
  wait(500);
  EXPECT_GT(world.told.size(), told) << "any other caption dials again";
  EXPECT_TRUE(windows->statusForm.visible());
}

TEST_F(Story, ThePromptLetsPendingEventsRunBeforeItConnects) {
  choose("Work");
  user([this] { windows->form1.Image2.click(); });
  world.desktop.post([this] { windows->form1.Image2.setToolTipText("Hang Up"); });
  user([this] { windows->form4.Command1.click(); });
  EXPECT_FALSE(windows->dialForm.loaded()) << "the tooltip of that moment decides";
}

TEST_F(Story, HangingUpTakesThePromptAndTheStatusWindowAway) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  choose("Work");
  ASSERT_TRUE(waitForStatus(kDown));
  user([this] { windows->form1.Image2.click(); });
  user([this] { windows->statusForm.show(); });
  choose("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  user([this] { windows->form1.Image2.click(); });
  EXPECT_FALSE(windows->form4.visible());
  EXPECT_FALSE(windows->statusForm.visible());
  EXPECT_TRUE(windows->form4.loaded());
}

TEST_F(Story, ClosingTheStatusWindowInMidDialHidesThePromptAndTheDialGoesOn) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForProgress("Opening port..."));
  user([this] { windows->statusForm.closeMark.click(); });
  EXPECT_FALSE(windows->statusForm.loaded());
  EXPECT_FALSE(windows->form4.visible());
  ASSERT_TRUE(waitForStatus(kUp));
  EXPECT_FALSE(windows->statusForm.visible()) << "a progress text loads the window and never shows it";
}

TEST_F(Story, EscapeClosesTheStatusWindowAndNeverClicksRetry) {
  dial("Corvanti-Office", "guest", "wrong");
  ASSERT_TRUE(waitForProgress("Fail to connect"));
  const std::size_t told = world.told.size();
  user([this] { windows->statusForm.escapePressed(); });
  EXPECT_FALSE(windows->statusForm.loaded());
  wait(3000);
  EXPECT_EQ(world.told.size(), told);
}

TEST_F(Story, PullingTheCableInMidDialFails) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForProgress("Device connected..."));
  world.ports.unplug("COM5");
  ASSERT_TRUE(waitForProgress("Fail to connect"));
  EXPECT_EQ(windows->statusForm.Command1.text(), "Retry");
  EXPECT_FALSE(windows->dialForm.loaded());
}

TEST_F(Story, PullingTheCableWhileConnectedIsSeenByThePoll) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  world.ports.unplug("COM5");
  EXPECT_TRUE(waitForStatus(kDown));
  EXPECT_EQ(tooltip(), "Connect");
}

TEST_F(Story, TwoConnectionsAtOnceAreFollowedByTheSelectedOne) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  choose("Corvanti-Home");
  ASSERT_TRUE(waitForStatus(kDown));
  EXPECT_EQ(tooltip(), "Connect");
  dial("Corvanti-Home");
  ASSERT_TRUE(waitForStatus(kUp));
  choose("Work");
  EXPECT_TRUE(waitForStatus(kDown));
  EXPECT_FALSE(windows->form1.Timer2.enabled());
  choose("Corvanti-Office");
  EXPECT_TRUE(waitForStatus(kUp));
  EXPECT_TRUE(windows->form1.Timer2.enabled()) << "the poll turns the traffic tick on again";
}

TEST_F(Story, AConnectionUnderANameThatIsNotSelectedShowsDisconnected) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  windows->form1.ListView1.selectRow(-1);
  EXPECT_TRUE(waitForStatus(kDown));
  EXPECT_EQ(tooltip(), "Connect");
  EXPECT_FALSE(windows->form1.Timer2.enabled());
}

TEST_F(Story, ADialWithoutASelectedRowEndsSilently) {
  choose("Work");
  windows->form1.ListView1.selectRow(-1);
  user([this] { windows->form1.Image2.click(); });
  user([this] { windows->form4.Command1.click(); });
  wait(2000);
  EXPECT_EQ(windows->form1.p_iConnID, 0u);
  EXPECT_TRUE(windows->dialForm.loaded());
  EXPECT_TRUE(windows->statusForm.visible());
  EXPECT_EQ(progress(), "");
  EXPECT_TRUE(world.told.empty());
}

TEST_F(Story, CancellingThePromptStartsNothingAndForgetsTheBoxes) {
  choose("Work");
  for (const bool byMark : {false, true}) {
    user([this] { windows->form1.Image2.click(); });
    EXPECT_TRUE(windows->form4.visible());
    windows->form4.Text1.setText("somebody");
    user([&] { byMark ? windows->form4.Label3.click() : windows->form4.Command2.click(); });
    EXPECT_FALSE(windows->form4.loaded());
    user([this] { windows->form1.Image2.click(); });
    EXPECT_EQ(windows->form4.Text1.text(), "");
    user([this] { windows->form4.escapePressed(); });
    EXPECT_FALSE(windows->form4.loaded());
  }
  EXPECT_TRUE(world.told.empty());
}

TEST_F(Story, TheSelectionMayGoWhileTheDialYields) {
  choose("Corvanti-Office");
  user([this] { windows->form1.Image2.click(); });
  world.desktop.post([this] { windows->form1.ListView1.selectRow(-1); });
  user([this] { windows->form4.Command1.click(); });
  wait(3000);
  EXPECT_EQ(status(), kDown);
}

TEST_F(Story, EndingTheProgramDoesNotHangUpAndAfterARestartTheHandleIsZero) {
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  user([this] { windows->form1.Label3.click(); });
  EXPECT_TRUE(world.desktop.ended());
  EXPECT_FALSE(windows->form1.loaded());
  EXPECT_TRUE(world.line.anythingUp());
  EXPECT_TRUE(world.desktop.reported.empty());
}

TEST_F(Story, APlantedRefusalOfTheDialShowsNothing) {
  line::Scenario scenario = World::quickScenario();
  scenario.failures = {{"dial", 633, 1}};
  world.line.setScenario(scenario);
  dial("Corvanti-Office");
  wait(1000);
  EXPECT_EQ(progress(), "");
  EXPECT_EQ(windows->statusForm.Command1.text(), "cancel");
  EXPECT_EQ(windows->dial.lastDialResult, "633");
  EXPECT_FALSE(windows->dial.connected);
  EXPECT_TRUE(windows->dialForm.loaded());
  // A second OK dials, over the first one's window.
  user([this] { windows->form4.Command1.click(); });
  EXPECT_TRUE(waitForStatus(kUp));
}

struct EndsInteractive : Story {
  EndsInteractive() : Story(scenario()) {}
  static line::Scenario scenario() {
    line::Scenario s = World::quickScenario();
    s.end = 0x1000;
    return s;
  }
};

TEST_F(EndsInteractive, TheSuccessTextBelongsToTheInteractiveState) {
  dial("Work");
  ASSERT_TRUE(waitForProgress("Connect successfully."));
  EXPECT_FALSE(windows->statusForm.visible());
  EXPECT_FALSE(windows->dialForm.loaded());
}

struct EndsDisconnected : Story {
  EndsDisconnected() : Story(scenario()) {}
  static line::Scenario scenario() {
    line::Scenario s = World::quickScenario();
    s.end = 0x2001;
    return s;
  }
};

TEST_F(EndsDisconnected, ADisconnectionTakesThePromptAwayAndOffersRetry) {
  dial("Work");
  ASSERT_TRUE(waitForProgress("Fail to connect"));
  EXPECT_FALSE(windows->form4.visible());
  EXPECT_TRUE(windows->form4.loaded()) << "hidden only: Retry reads the boxes again";
  EXPECT_EQ(windows->statusForm.Command1.text(), "Retry");
  EXPECT_TRUE(windows->statusForm.visible());
}

}  // namespace
}  // namespace pelvaro
