#include "line_fixture.h"

namespace pelvaro::line {
namespace {

using DialLineVerbs = LineTest;

TEST_F(DialLineVerbs, ADialChecksItsArguments) {
  const Bytes good = params("Work");
  std::uint32_t handle = 0;
  EXPECT_EQ(line_.dial(nullptr, nullptr, 0xFFFFFFFF, kWindow, &handle), 87u);
  EXPECT_EQ(line_.dial(nullptr, good.data(), 0xFFFFFFFF, kWindow, nullptr), 87u);
  for (const std::uint32_t type : {0u, 1u, 2u, 3u, 0xFFFFFFFEu})
    EXPECT_EQ(line_.dial(nullptr, good.data(), type, kWindow, &handle), 87u);
  EXPECT_EQ(line_.dial(nullptr, good.data(), 0xFFFFFFFF, 0, &handle), 87u);
  EXPECT_EQ(line_.dial("other.pbk", good.data(), 0xFFFFFFFF, kWindow, &handle), 621u);
  Bytes wrongSize = good;
  putNumber(wrongSize.data(), 1064);
  EXPECT_EQ(line_.dial(nullptr, wrongSize.data(), 0xFFFFFFFF, kWindow, &handle), 632u);
  EXPECT_EQ(dial(params("Nobody")), 623u);
  EXPECT_EQ(dial(params("")), 623u);
  EXPECT_EQ(handle_, 0u);
  handle = 5;
  EXPECT_EQ(line_.dial(nullptr, good.data(), 0xFFFFFFFF, kWindow, &handle), 6u) << "the handle must be 0 before";
  EXPECT_FALSE(line_.anythingUp());
}

TEST_F(DialLineVerbs, AHangUpOfAnUnknownHandleIs6) {
  EXPECT_EQ(line_.hangUp(0), 6u);
  EXPECT_EQ(line_.hangUp(12345), 6u);
}

TEST_F(DialLineVerbs, DeletingAnEntry) {
  EXPECT_EQ(line_.deleteEntry(nullptr, "Nobody"), 623u);
  EXPECT_EQ(line_.deleteEntry(nullptr, ""), 623u);
  EXPECT_EQ(line_.deleteEntry(nullptr, nullptr), 87u);
  EXPECT_EQ(line_.deleteEntry(nullptr, "Work"), 0u);
  EXPECT_EQ(line_.deleteEntry(nullptr, "Work"), 623u);
  EXPECT_EQ(saves_, 1);
}

TEST_F(DialLineVerbs, EditingAnEntryOnlyLooksWhetherItIsThere) {
  EXPECT_EQ(line_.editPhonebookEntry(0, nullptr, "Work"), 0u);
  EXPECT_EQ(line_.editPhonebookEntry(0, nullptr, "Nobody"), 623u);
  EXPECT_EQ(line_.editPhonebookEntry(0, nullptr, nullptr), 87u);
}

TEST_F(DialLineVerbs, ErrorTexts) {
  char text[512] = "";
  EXPECT_EQ(line_.errorString(676, text, sizeof text), 0u);
  EXPECT_STREQ(text, "The phone line is busy.");
  for (const std::uint32_t code :
       {600u, 601u, 602u, 603u, 617u, 618u, 619u, 621u, 622u, 623u, 624u, 628u, 629u, 630u, 632u,
        633u, 635u, 638u, 642u, 645u, 646u, 648u, 649u, 651u, 660u, 666u, 668u, 676u, 677u, 678u,
        679u, 680u, 691u, 692u, 711u, 718u, 720u, 721u, 731u, 734u, 756u, 777u, 797u}) {
    EXPECT_EQ(line_.errorString(code, text, sizeof text), 0u) << code;
    EXPECT_GT(std::strlen(text), 8u) << code;
  }
  for (const std::uint32_t code : {0u, 5u, 599u, 700u, 798u, 0xFFFFFFFFu})
    EXPECT_EQ(line_.errorString(code, text, sizeof text), 87u) << code;
  EXPECT_EQ(line_.errorString(676, text, 23), 603u) << "there is no room for the end";
  EXPECT_EQ(line_.errorString(676, text, 24), 0u);
  EXPECT_EQ(line_.errorString(676, text, 0), 603u);
  EXPECT_EQ(line_.errorString(676, nullptr, 24), 87u);
}

TEST_F(DialLineVerbs, PlantedFailuresAreCountedDown) {
  Scenario scenario = quick();
  scenario.failures = {{"enumConnections", 5, 3}, {"hangUp", 617, PlantedFailure::kAlways}};
  line_.setScenario(scenario);
  std::uint32_t size = 0, count = 0;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(line_.enumConnections(nullptr, &size, &count), 5u);
  EXPECT_EQ(line_.enumConnections(nullptr, &size, &count), 0u);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(line_.hangUp(1), 617u);
}

TEST_F(DialLineVerbs, TheJournalTellsCallsAndNotificationsButNoPassword) {
  Scenario scenario = quick();
  scenario.journal = true;
  line_.setScenario(scenario);
  std::uint32_t size = 0, count = 0;
  line_.enumConnections(nullptr, &size, &count);
  line_.enumEntries(nullptr, nullptr, &size, &count);
  EXPECT_TRUE(journal_.empty()) << "what is asked all the time is left out";
  ASSERT_EQ(dial(params("Work", "guest", "topsecret")), 0u);
  settle();
  line_.setEntryDialParams(nullptr, params("Work", "guest", "topsecret").data(), false);
  line_.hangUp(handle_);
  ASSERT_GT(journal_.size(), 3u);
  EXPECT_EQ(journal_.front(), "dial entry=Work number= user=guest handle=0x10001 -> 0");
  EXPECT_EQ(journal_[1], "notify state=0x0 error=0");
  EXPECT_EQ(journal_.back(), "hangUp handle=0x10001 -> 0");
  for (const std::string& text : journal_) EXPECT_EQ(text.find("topsecret"), std::string::npos) << text;
}

}  // namespace
}  // namespace pelvaro::line
