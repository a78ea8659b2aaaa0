// Traffic, rates and limits: what the main window shows once a second, and what happens near a limit and past it.
#include "limits.h"
#include "line_interface_table.h"

namespace pelvaro {
namespace {

TEST_F(Limits, TheTrafficIsShownOnceASecondWhileConnected) {
  EXPECT_EQ(main().Label1.text(), "Total bytes received: 0 KB");
  EXPECT_EQ(main().Label5.text(), "Upload rate: 0 KB/sec.");
  connect();
  world.interfaces.count(2048, 2048);
  ticks(1);
  EXPECT_EQ(main().Label1.text(), "Total bytes received: 2048 KB");
  EXPECT_EQ(main().Label2.text(), "Total bytes transmitted: 2048 KB");
  EXPECT_EQ(main().Label4.text(), "Download rate: 2,048 KB/sec.");
  EXPECT_EQ(main().Label5.text(), "Upload rate: 2 KB/sec.");
  ticks(1);
  EXPECT_EQ(main().Label1.text(), "Total bytes received: 2048 KB");
  EXPECT_EQ(main().Label4.text(), "Download rate: 0 KB/sec.");
}

TEST_F(Limits, NothingIsCountedWhileDisconnected) {
  world.interfaces.count(100, 100);
  ticks(5);
  EXPECT_EQ(main().Label1.text(), "Total bytes received: 0 KB");
  connect();
  ticks(1);
  EXPECT_EQ(main().Label1.text(), "Total bytes received: 100 KB") << "counted since the window was opened";
}

TEST_F(Limits, TheFiguresFollowThePracticeLinesCounters) {
  line::LineInterfaceTable table(world.line);
  world.interfaces.behind = &table;
  start();
  connect();
  ticks(10);
  const std::string total = main().Label1.text();
  EXPECT_EQ(main().Label4.text(), "Download rate: 20 KB/sec.");
  EXPECT_NE(total, "Total bytes received: 0 KB");
  user([this] { main().Image2.click(); });
  ticks(10);
  EXPECT_EQ(main().Label1.text(), total);
}

TEST_F(Limits, RatesAreGroupedAsTheLocaleSaysAtThatMoment) {
  connect();
  world.environment.style = {".", "3;0"};
  receive(1234567);
  EXPECT_EQ(main().Label4.text(), "Download rate: 1.234.567 KB/sec.");
  EXPECT_EQ(main().Label1.text(), "Total bytes received: 1234567 KB");
}

TEST_F(Limits, AFailureWritesTheOldFiguresAgain) {
  connect();
  receive(30);
  world.interfaces.failure = 5;
  user([this] { main().Label1.setText("a script was here"); });
  world.interfaces.count(9000, 9000);
  ticks(3);
  EXPECT_EQ(main().Label1.text(), "Total bytes received: 30 KB");
  EXPECT_EQ(main().Label4.text(), "Download rate: 30 KB/sec.");
  EXPECT_TRUE(asked.empty());
}

TEST_F(Limits, BeforeAnySuccessTheRatesAreEmpty) {
  World other;
  other.interfaces.failure = 5;
  Windows second(other.services);
  other.desktop.guarded([&] { second.form1.show(); });
  EXPECT_EQ(second.form1.Label1.text(), "Total bytes received: 0 KB");
  EXPECT_EQ(second.form1.Label4.text(), "Download rate: ");
  EXPECT_EQ(second.form1.Label5.text(), "Upload rate: ");
}

TEST_F(Limits, WithoutALimitOnlyTheTrafficLabelsChange) {
  connect();
  main().Label7.setText("seven");
  main().Label10.setText("ten");
  main().settingflag = 9;
  receive(50000);
  ticks(5000);
  EXPECT_EQ(main().Label7.text(), "seven");
  EXPECT_EQ(main().Label10.text(), "ten");
  EXPECT_FALSE(main().Label10.visible());
  EXPECT_TRUE(asked.empty());
}

TEST_F(Limits, AnotherSettingThanTimeOrSizeWatchesNothing) {
  connect();
  limitSize("10");
  main().settingflag = 2;
  receive(5000);
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(main().Label10.text(), "");
  EXPECT_EQ(status(), kUp);
}

TEST_F(Limits, ASizeLimitAsksOnceNearItAndDisconnectsPastIt) {
  connect();
  limitSize("100");
  EXPECT_FALSE(dialog().loaded());
  EXPECT_EQ(main().Label9.text(), "Size elapse");
  EXPECT_EQ(main().Label11.text(), "Size remain");
  EXPECT_EQ(main().Label12.text(), "100 KB");
  EXPECT_TRUE(main().Label12.visible());
  receive(70);
  EXPECT_EQ(main().Label10.text(), "70 KB");
  EXPECT_EQ(main().Label7.text(), "");
  EXPECT_TRUE(asked.empty());
  receive(1);
  EXPECT_EQ(main().Label7.text(), "size remained: 29 KB");
  EXPECT_EQ(asked, (Texts{kNear}));
  receive(19);
  EXPECT_EQ(main().Label7.text(), "size remained: 10 KB") << "renewed every second, also after No";
  receive(10);
  EXPECT_EQ(main().Label7.text(), "size remained: 0 KB");
  EXPECT_EQ(status(), kUp) << "exactly the limit is not past it";
  EXPECT_EQ(asked.size(), 1u);
  receive(1);
  EXPECT_EQ(asked, (Texts{kNear, kSizePassed}));
  EXPECT_EQ(status(), kDown);
  EXPECT_EQ(main().Label7.text(), "");
  EXPECT_EQ(main().Label10.text(), "101 KB");
  EXPECT_FALSE(main().Timer2.enabled());
  EXPECT_FALSE(windows->form4.visible()) << "the answer was No";
  EXPECT_EQ(world.desktop.formsVisible(), 1);
}

TEST_F(Limits, ATimeLimitOfAMinuteAsksAtTick43AndDisconnectsAtTick61) {
  connect();
  limitTime("1");
  EXPECT_EQ(main().requiredtime, 60);
  EXPECT_EQ(main().Label9.text(), "Time elapse");
  EXPECT_EQ(main().Label12.text(), "00:01:00");
  ticks(42);
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(main().Label7.text(), "");
  EXPECT_EQ(main().Label10.text(), "00:00:42");
  ticks(1);
  EXPECT_EQ(asked, (Texts{kNear}));
  EXPECT_EQ(main().Label7.text(), "Time left: 17 Second(s)");
  ticks(17);
  EXPECT_EQ(main().Label7.text(), "Time left: 0 Second(s)");
  EXPECT_EQ(status(), kUp);
  ticks(1);
  EXPECT_EQ(asked, (Texts{kNear, kTimePassed}));
  EXPECT_EQ(status(), kDown);
  EXPECT_EQ(main().Label7.text(), "");
}

TEST_F(Limits, YesNearTheLimitDisconnectsAtOnceWithoutAFurtherQuestion) {
  connect();
  limitSize("100");
  answer = kAnswerYes;
  receive(71);
  EXPECT_EQ(asked, (Texts{kNear}));
  EXPECT_EQ(main().Label7.text(), "");
  wait(100);
  EXPECT_EQ(status(), kDown);
  EXPECT_FALSE(main().Timer2.enabled());
  EXPECT_FALSE(windows->form4.visible());
  EXPECT_EQ(world.desktop.formsVisible(), 1) << "the splash is gone";
}

TEST_F(Limits, AfterYesAndAReconnectTheQuestionComesAgain) {
  connect();
  limitSize("100");
  answer = kAnswerYes;
  receive(71);
  wait(100);
  connect();
  ticks(1);
  EXPECT_EQ(asked, (Texts{kNear, kNear})) << "only No ends the asking";
}

TEST_F(Limits, YesToReconnectOpensTheFilledPromptWhichIsOneEnterAwayFromBeingOnline) {
  connect();
  limitSize("100");
  answer = kAnswerYes;
  receive(101);
  EXPECT_EQ(asked, (Texts{kSizePassed})) << "past the limit at once: nothing was asked near it";
  EXPECT_TRUE(windows->form4.visible());
  EXPECT_EQ(windows->form4.Text1.text(), line::kPracticeUser);
  EXPECT_EQ(windows->form4.Text2.text(), line::kPracticePassword);
  EXPECT_EQ(status(), kDown);
  user([this] { windows->form4.Command1.click(); });
  ASSERT_TRUE(waitForStatus(kUp));
  // The limit is still passed.
  answer = kAnswerNo;
  ticks(1);
  EXPECT_EQ(asked, (Texts{kSizePassed, kSizePassed}));
  EXPECT_EQ(status(), kDown);
}

TEST_F(Limits, AnAnswerThatComesBeforeThePollHangsUpAgainInsteadOfReconnecting) {
  connect();
  limitSize("100");
  world.dialogs.onMessage = [this](const std::string& text) {
    asked.push_back(text);
    return kAnswerYes;  // at once
  };
  receive(101);
  EXPECT_EQ(asked, (Texts{kSizePassed}));
  wait(100);
  EXPECT_EQ(status(), kDown);
  EXPECT_EQ(tooltip(), "Connect");
}

TEST_F(Limits, AQuestionThatStaysForAnHourHoldsTheTickAndNotThePoll) {
  connect();
  limitTime("1");
  int asking = 0;
  world.dialogs.onMessage = [&](const std::string&) {
    ++asking;
    world.interfaces.count(500, 0);
    world.ports.unplug("COM5");
    wait(3600'000);
    EXPECT_EQ(status(), kDown) << "the poll went on";
    EXPECT_EQ(tooltip(), "Connect");
    EXPECT_EQ(main().Label1.text(), "Total bytes received: 0 KB") << "the tick waited";
    return kAnswerNo;
  };
  ticks(43);
  EXPECT_EQ(asking, 1);
  EXPECT_EQ(main().Label7.text(), "Time left: 17 Second(s)");
}

TEST_F(Limits, WhileAQuestionIsOpenAtMostOneTickWaits) {
  connect();
  limitTime("1");
  world.dialogs.onMessage = [&](const std::string&) {
    wait(3600'000);
    return kAnswerNo;
  };
  ticks(43);
  wait(1);
  EXPECT_EQ(main().Label7.text(), "Time left: 16 Second(s)") << "one tick had waited, the rest is not made up";
  EXPECT_EQ(main().Label10.text(), "01:00:43");
}

TEST_F(Limits, OnlyReceivedKilobytesCountTowardTheSize) {
  connect();
  limitSize("100");
  world.interfaces.count(10, 5000);
  ticks(2);
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(main().Label10.text(), "10 KB");
}

TEST_F(Limits, TheCounterIsNeverResetSoTwoHoursCountAgainstANewTimeLimit) {
  connect();
  ticks(7200);
  limitTime("90");
  ticks(1);
  EXPECT_EQ(asked, (Texts{kTimePassed}));
  EXPECT_EQ(main().Label10.text(), "00:00:01") << "but the elapsed time counts from the setting";
}

TEST_F(Limits, SecondsThatAreNotConnectedDoNotCount) {
  connect();
  ticks(30);
  user([this] { main().Image2.click(); });
  ticks(600);
  connect();
  limitTime("1");
  ticks(12);
  EXPECT_TRUE(asked.empty());
  ticks(1);
  EXPECT_EQ(asked, (Texts{kNear}));
}

TEST_F(Limits, TheElapsedTimeGoesOverMidnight) {
  world.timeAtStart = 86400 - 10;
  connect();
  limitTime("60");
  ticks(30);
  EXPECT_EQ(main().Label10.text(), "00:00:30");
}

TEST_F(Limits, ALimitChangedFromTimeToSizeAndBackWhileConnected) {
  connect();
  limitTime("1");
  ticks(43);
  EXPECT_EQ(asked, (Texts{kNear}));
  limitSize("100");
  EXPECT_EQ(main().requiredtime, 60) << "the other limit stays as it is";
  EXPECT_EQ(main().Label7.text(), "Time left: 17 Second(s)") << "nothing clears it on a new limit";
  EXPECT_EQ(main().Label9.text(), "Size elapse");
  ticks(60);
  EXPECT_EQ(status(), kUp) << "the time is not watched any more";
  receive(71);
  EXPECT_EQ(asked, (Texts{kNear, kNear})) << "a new limit may ask again";
  open();
  EXPECT_TRUE(dialog().Option1.checked()) << "always the time limit at first";
  EXPECT_EQ(dialog().Text1.text(), "1");
  EXPECT_EQ(dialog().Text2.text(), "100");
  accept();
  ticks(1);
  EXPECT_EQ(asked, (Texts{kNear, kNear, kTimePassed}));
  EXPECT_EQ(main().requiredbyte, 100);
}

// What the tick lets run: an event that waits when it begins has run when it is done, or has not.
TEST_F(Limits, PendingEventsRunInsideTheTickWhereALimitIsWatched) {
  connect();
  bool ran = false;
  const auto tickRunsEvents = [&] {
    ran = false;
    bool during = false;
    user([&] {
      world.desktop.post([&] { ran = true; });
      main().Timer2.ticked();
      during = ran;
    });
    return during;
  };
  EXPECT_FALSE(tickRunsEvents()) << "without a limit";
  limitSize("100");
  EXPECT_TRUE(tickRunsEvents()) << "far from the size";
  main().settingflag = 7;
  EXPECT_TRUE(tickRunsEvents()) << "neither time nor size";
  main().settingflag = 1;
  main().limitAsked = true;
  world.interfaces.count(71, 0);
  EXPECT_TRUE(tickRunsEvents()) << "near the size, after No";
  limitTime("1");
  EXPECT_TRUE(tickRunsEvents()) << "far from the time";
  main().tickCounter = 50;
  main().limitAsked = true;
  EXPECT_FALSE(tickRunsEvents()) << "near the time, after No";
}

TEST_F(Limits, EndingTheProgramBehindTheQuestionUnwindsTheTick) {
  connect();
  limitSize("100");
  world.dialogs.onMessage = [this](const std::string&) {
    main().closeRequested();
    return kAnswerYes;
  };
  receive(71);
  EXPECT_TRUE(world.desktop.ended());
  EXPECT_FALSE(main().loaded());
  EXPECT_TRUE(world.desktop.reported.empty());
}

TEST_F(Limits, ALimitOfZeroLeftBehindByAWrongInputIsPassedAtOnceWhileTheOtherOneIsSet) {
  connect();
  limitTime("60");
  limitSize("50");
  limitSize("x");  // writes 0 and complains
  user([this] { dialog().Command2.click(); });
  EXPECT_EQ(main().requiredbyte, 0);
  EXPECT_EQ(main().requiredtime, 3600);
  asked.clear();
  receive(1);
  EXPECT_EQ(asked, (Texts{kSizePassed}));
}

TEST_F(Limits, ATotalThatWrappedIsNegativeAndFarFromEveryLimit) {
  world.interfaces.rows[1] = {6, 0xFFFFFC00, 0};
  start();
  connect();
  limitSize("100");
  world.interfaces.rows[1] = {6, 0, 0};
  ticks(1);
  EXPECT_EQ(main().Label10.text(), "-4194303 KB");
  EXPECT_EQ(main().Label4.text(), "Download rate: -4,194,303 KB/sec.");
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(status(), kUp);
}

TEST_F(Limits, AnUnlistedInterfaceKeepsTheLimitsGoing) {
  connect();
  limitSize("100");
  receive(50);
  world.interfaces.rows = {{24, 1, 1}};
  ticks(5);
  EXPECT_EQ(main().Label10.text(), "50 KB");
  EXPECT_EQ(main().Label4.text(), "Download rate: 50 KB/sec.");
  EXPECT_EQ(status(), kUp);
}

TEST_F(Limits, AnOverflowOfTheTickCounterIsReportedAndEndsTheProgram) {
  connect();
  main().tickCounter = 2147483646;
  ticks(1);
  EXPECT_TRUE(world.desktop.reported.empty());
  ticks(1);
  EXPECT_EQ(world.desktop.reported, (Texts{"Run-time error '6':\n\nOverflow"}));
  EXPECT_TRUE(world.desktop.ended());
}

}  // namespace
}  // namespace pelvaro
