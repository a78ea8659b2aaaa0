// The dialog that sets a limit: what it opens with, what it takes, refuses and leaves alone.
#include "limits.h"

namespace pelvaro {
namespace {

TEST_F(Limits, TheDialogOpensOnTheTimeLimitWithEmptyBoxes) {
  open();
  EXPECT_TRUE(dialog().visible());
  EXPECT_TRUE(dialog().Option1.checked());
  EXPECT_FALSE(dialog().Option2.checked());
  EXPECT_EQ(dialog().Option1.text(), "Time Limit ");
  EXPECT_EQ(dialog().Label2.text(), "Limitation");
  EXPECT_EQ(dialog().Text1.text(), "");
  EXPECT_EQ(dialog().Text2.text(), "");
  EXPECT_TRUE(dialog().Text1.enabled());
  EXPECT_FALSE(dialog().Text2.enabled());
  EXPECT_EQ(dialog().Text1.colours().background, 0xFFFFFFu);
}

TEST_F(Limits, AnOptionEnablesItsBoxAndDisablesTheOther) {
  open();
  user([this] { dialog().Option2.click(); });
  EXPECT_FALSE(dialog().Text1.enabled());
  EXPECT_TRUE(dialog().Text2.enabled());
  EXPECT_EQ(dialog().Text2.colours().background, 0xFFFFFFu);
  user([this] { dialog().Option1.click(); });
  EXPECT_TRUE(dialog().Text1.enabled());
  EXPECT_FALSE(dialog().Text2.enabled());
}

TEST_F(Limits, CancelCloseAndEscapeChangeNothing) {
  limitTime("90");
  for (int way = 0; way < 3; ++way) {
    open();
    dialog().Text1.setText("5");
    user([&] {
      if (way == 0) dialog().Command2.click();
      if (way == 1) dialog().closeMark.click();
      if (way == 2) dialog().escapePressed();
    });
    EXPECT_FALSE(dialog().loaded());
    EXPECT_EQ(main().requiredtime, 5400);
    EXPECT_EQ(main().Label12.text(), "01:30:00");
  }
}

TEST_F(Limits, NinetyMinutesAreShownAsADurationAndOnReopening) {
  limitTime("90");
  EXPECT_EQ(main().requiredtime, 5400);
  EXPECT_EQ(main().settingflag, 0);
  EXPECT_EQ(main().startTime, world.clock.time);
  EXPECT_EQ(main().Label12.text(), "01:30:00");
  open();
  EXPECT_EQ(dialog().Text1.text(), "90");
  EXPECT_EQ(dialog().Text2.text(), "");
}

TEST_F(Limits, TheStartTimeIsWrittenForATimeLimitOnly) {
  limitTime("90");
  const int start = main().startTime;
  wait(5000);
  limitSize("10");
  EXPECT_EQ(main().startTime, start);
}

TEST_F(Limits, LettersInTheSizeBoxEmptyTheTimeBox) {
  open();
  dialog().Text1.setText("17");
  user([this] { dialog().Option2.click(); });
  dialog().Text2.setText("abc");
  accept();
  EXPECT_EQ(asked, (Texts{kInvalid}));
  EXPECT_TRUE(dialog().visible());
  EXPECT_EQ(dialog().Text1.text(), "");
  EXPECT_EQ(dialog().Text2.text(), "abc");
  EXPECT_EQ(main().requiredbyte, 0);
}

TEST_F(Limits, WhatEachTimeInputDoes) {
  const char* const kRange = "The time limit can be 1 to 546 minutes. Please enter again.";
  const struct {
    std::string input;
    std::int32_t requiredtime;  // the limit before is ten minutes
    const char* message;        // none: accepted
    const char* label;
  } table[] = {
      {"1", 60, nullptr, "00:01:00"},
      {"546", 32760, nullptr, "09:06:00"},
      {"547", 600, kRange, "00:10:00"},
      {"32767", 600, kRange, "00:10:00"},
      {"32768", 600, kRange, "00:10:00"},
      {std::string(400, '9'), 600, kRange, "00:10:00"},
      {"-40000", 600, kRange, "00:10:00"},
      {"0", 0, kInvalid, "00:10:00"},
      {"", 0, kInvalid, "00:10:00"},
      {"   ", 0, kInvalid, "00:10:00"},
      {"abc", 0, kInvalid, "00:10:00"},
      {"0.5", 0, kInvalid, "00:10:00"},
      {"1.5", 120, nullptr, "00:02:00"},
      {"2.5", 120, nullptr, "00:02:00"},
      {" 90 minutes", 5400, nullptr, "01:30:00"},
      {"-5", -300, nullptr, "23:55:00"},
      {"-1", -60, nullptr, "23:59:00"},
  };
  for (const auto& row : table) {
    limitTime("10");
    main().limitAsked = true;
    main().settingflag = 1;
    asked.clear();
    limitTime(row.input);
    EXPECT_EQ(main().requiredtime, row.requiredtime) << row.input;
    EXPECT_EQ(asked, row.message ? Texts{row.message} : Texts{}) << row.input;
    EXPECT_EQ(dialog().loaded(), row.message != nullptr) << row.input;
    EXPECT_EQ(main().limitAsked, row.message != nullptr) << row.input;
    EXPECT_EQ(main().settingflag, row.message ? 1 : 0) << row.input;
    EXPECT_EQ(main().Label12.text(), row.label) << row.input;
    if (row.message) {
      EXPECT_EQ(dialog().Text1.text(), row.message == kInvalid ? "" : row.input);
    }
    user([this] { dialog().unload(); });
  }
}

TEST_F(Limits, WhatEachSizeInputDoes) {
  const char* const kRange = "The size limit can be 1 to 32767 KB. Please enter again.";
  const struct {
    std::string input;
    std::int32_t requiredbyte;  // the limit before is 10 KB
    const char* message;
    const char* label;
  } table[] = {
      {"1", 1, nullptr, "1 KB"},
      {"32767", 32767, nullptr, "32767 KB"},
      {"32767.4", 32767, nullptr, "32767 KB"},
      {"32768", 10, kRange, "10 KB"},
      {std::string(400, '7'), 10, kRange, "10 KB"},
      {"0", 0, kInvalid, "10 KB"},
      {"", 0, kInvalid, "10 KB"},
      {"KB 5", 0, kInvalid, "10 KB"},
      {"0.5", 0, kInvalid, "10 KB"},
      {"1.5", 2, nullptr, "2 KB"},
      {"-32768", -32768, nullptr, "-32768 KB"},
      {"-32769", 10, kRange, "10 KB"},
  };
  for (const auto& row : table) {
    limitSize("10");
    main().limitAsked = true;
    main().settingflag = 0;
    asked.clear();
    limitSize(row.input);
    EXPECT_EQ(main().requiredbyte, row.requiredbyte) << row.input;
    EXPECT_EQ(asked, row.message ? Texts{row.message} : Texts{}) << row.input;
    EXPECT_EQ(dialog().loaded(), row.message != nullptr) << row.input;
    EXPECT_EQ(main().limitAsked, row.message != nullptr) << row.input;
    EXPECT_EQ(main().settingflag, row.message ? 0 : 1) << row.input;
    EXPECT_EQ(main().Label12.text(), row.label) << row.input;
    EXPECT_EQ(main().requiredtime, 0);
    user([this] { dialog().unload(); });
  }
}

TEST_F(Limits, AfterAnOverflowTheEarlierLimitIsStillInForce) {
  connect();
  limitSize("100");
  limitSize("40000");
  EXPECT_TRUE(dialog().visible());
  EXPECT_EQ(dialog().Text2.text(), "40000");
  asked.clear();
  receive(101);
  EXPECT_EQ(asked, (Texts{kSizePassed}));
}

TEST_F(Limits, ALimitThatIsNotPositiveIsNotWatchedAndItsLabelsGoWithTheNextPoll) {
  connect();
  limitTime("-5");
  EXPECT_TRUE(main().Label12.visible());
  wait(60);
  EXPECT_FALSE(main().Label12.visible());
  ticks(5);
  EXPECT_TRUE(asked.empty());
}

TEST_F(Limits, ADialogThatIsClosedBehindItsMessageStaysClosed) {
  open();
  world.dialogs.onMessage = [this](const std::string&) {
    dialog().closeRequested();
    return kAnswerOk;
  };
  accept();
  EXPECT_FALSE(dialog().loaded());
}

TEST_F(Limits, TheDialogIsMovedByItsSurface) {
  open();
  dialog().mousePressed(MouseButton::left, 10, 10);
  dialog().mouseMoved(MouseButton::left, 15, 12);
  EXPECT_EQ(dialog().movedX(), 5);
  EXPECT_EQ(dialog().movedY(), 2);
  dialog().mouseReleased(MouseButton::left, 15, 12);
  dialog().mouseMoved(MouseButton::none, 50, 50);
  EXPECT_EQ(dialog().movedX(), 5);
}

}  // namespace
}  // namespace pelvaro
