#include "ui/accessary.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_dialogs.h"
#include "platform/fake/fake_system.h"

namespace pelvaro::accessary {
namespace {

using fake::Lines;

struct Accessary : testing::Test {
  fake::Journal journal;
  fake::FakeDialogs dialogs{journal};
  fake::FakeRegistry registry{journal};
};

TEST_F(Accessary, APopupMenuCountsItsItemsFromOneAndTakesADashAsASeparator) {
  dialogs.onMenu = [] { return 3u; };
  EXPECT_EQ(popupMenu(dialogs, {"Edit", " - ", "Delete"}), 3u);
  EXPECT_EQ(journal.lines(), (Lines{"AppendMenu 0 1 Edit", "AppendMenu 2048 2  - ", "AppendMenu 0 3 Delete",
                                    "TrackPopupMenu 386 100 200 77", "DestroyMenu"}));
}

TEST_F(Accessary, AMenuThatIsLeftGivesZeroAndIsDestroyed) {
  EXPECT_EQ(popupMenu(dialogs, {"Edit"}), 0u);
  EXPECT_EQ(journal.lines().back(), "DestroyMenu");
}

TEST_F(Accessary, ModemKeysComeInOrderFromThePlainView) {
  registry.plainView = {"b", "A", "c"};
  registry.view64Missing = false;
  registry.view64 = {"other"};
  EXPECT_EQ(modemKeyNames(registry), (Lines{"b", "A", "c"}));
  EXPECT_EQ(registry.open, 0);
}

TEST_F(Accessary, ModemKeysComeFromTheSixtyFourBitViewWhenThePlainOneHasNone) {
  registry.view64Missing = false;
  registry.view64 = {"key"};
  EXPECT_EQ(modemKeyNames(registry), (Lines{"key"}));
  registry.plainMissing = true;
  EXPECT_EQ(modemKeyNames(registry), (Lines{"key"}));
}

TEST_F(Accessary, WithoutTheKeyThereAreNoModemKeys) {
  registry.plainMissing = true;
  EXPECT_TRUE(modemKeyNames(registry).empty());
  EXPECT_EQ(registry.open, 0);
}

}  // namespace
}  // namespace pelvaro::accessary
