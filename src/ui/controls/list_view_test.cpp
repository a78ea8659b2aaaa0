// Lists with several columns whose rows the form keeps, as plain values and with a peer. Lists of one column are tested
// with the other controls.
#include "ui/controls/list_view.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_services.h"
#include "ui/controls/fake_control_screen.h"
#include "ui/controls/form.h"

namespace pelvaro {
namespace {

constexpr ControlLayout kControls[] = {
    {.name = "ListView2", .kind = ControlKind::listView, .caption = "", .place = {0, 0, 90, 90}, .headings = true},
};
const FormLayout kLayout{
    .name = "Sample", .title = "Sample", .width = 90, .height = 90, .controls = kControls, .rules = {}};

// A list on a screen, and its user.
struct Peer : fake::FakeControl {
  using FakeControl::FakeControl;
  std::vector<int> counts;  // every count that it was told
  std::vector<std::string> headings;
  int columnsSet = 0;
  int selection = -1;
  std::vector<int> brought;  // the rows that were brought into view

  void setRowCount(int count) override { counts.push_back(count); }
  int selectedRow() override { return selection; }
  void selectRow(int row) override {
    selection = row;
    if (row >= 0) brought.push_back(row);
  }
  void setColumns(std::span<const ListColumn> columns) override {
    ++columnsSet;
    headings.clear();
    for (const ListColumn& column : columns) headings.push_back(column.heading);
  }
  void userChooses(int row) {
    selection = row;
    events.itemClicked();
  }
};

struct SampleForm : Form {
  SampleForm(Services& services, FormGroup& group) : Form(services, group, kLayout) {
    ListView2.onItemClick = [this] { log += "item" + std::to_string(ListView2.selectedRow()) + ' '; };
    ListView2.onActivate = [this] { log += "activate" + std::to_string(ListView2.selectedRow()) + ' '; };
  }
  ListView ListView2{*this, "ListView2"};
  std::string log;
};

struct Sample {
  explicit Sample(bool onScreen) : fakes(ras, {.forms = onScreen ? &screen : nullptr}) {}
  fake::Journal calls;
  fake::FakeDialService ras{calls};
  fake::FakeControlScreen<Peer> screen;
  fake::FakeServices fakes;
  FormGroup group;
  SampleForm form{fakes.services, group};
  ListView& list = form.ListView2;
  std::vector<std::vector<std::string>> rows{{"Lisbon", "Norline", "x"}, {"Lisbon", "Telvira", "y"}};

  ListView::CellSource source() {
    return [this](int row, int column) -> std::string_view {
      return rows.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    };
  }
  void fill() {
    list.setColumns({{"Place", 0}, {"Operator", 128}, {"APN", 160}});
    list.setRows(static_cast<int>(rows.size()), source());
  }
  Peer& peer() { return *screen.peers.at("ListView2"); }
};

// With a screen and without.
struct HeadedLists : testing::TestWithParam<bool>, Sample {
  HeadedLists() : Sample(GetParam()) {}
};
INSTANTIATE_TEST_SUITE_P(Plain, HeadedLists, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(OnScreen, HeadedLists, testing::Values(true));

TEST_P(HeadedLists, GiveEveryCellOfTheFormsRows) {
  fill();
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.itemText(0, 0), "Lisbon");
  EXPECT_EQ(list.itemText(1, 1), "Telvira");
  EXPECT_EQ(list.itemText(1, 2), "y");
  EXPECT_EQ(list.columns().at(1), (ListColumn{"Operator", 128}));
  EXPECT_EQ(form.log, "");
}

TEST_P(HeadedLists, AskTheFormOnlyForCellsThatThereAre) {
  fill();  // the source throws at others
  EXPECT_EQ(list.itemText(-1, 0), "");
  EXPECT_EQ(list.itemText(2, 0), "");
  EXPECT_EQ(list.itemText(0, -1), "");
  EXPECT_EQ(list.itemText(0, 3), "");
  EXPECT_EQ(list.itemText(-1), "");
}

TEST_P(HeadedLists, TheItemsOwnTextIsThatOfTheFirstColumn) {
  rows = {{"Lisbon", "", ""}, {"Porto", "", ""}};
  fill();
  EXPECT_EQ(list.itemText(1), "Porto");
  list.selectRow(0);
  EXPECT_EQ(list.selectedText(), "Lisbon");
}

TEST_P(HeadedLists, ACellThatTheFormWritesIsGivenAndKeepsTheSelection) {
  fill();
  list.selectRow(1);
  rows[1][2] = "written";
  list.refresh();
  EXPECT_EQ(list.itemText(1, 2), "written");
  EXPECT_EQ(list.selectedRow(), 1);
  EXPECT_EQ(form.log, "");
}

TEST_P(HeadedLists, OtherRowsLoseTheSelectionInSilence) {
  fill();
  list.selectRow(1);
  fill();
  EXPECT_EQ(list.selectedRow(), -1);
  list.selectRow(1);
  list.setRows(0, nullptr);
  EXPECT_EQ(list.count(), 0);
  EXPECT_EQ(list.selectedRow(), -1);
  EXPECT_EQ(list.itemText(0, 0), "");
  EXPECT_EQ(form.log, "");
}

TEST_P(HeadedLists, ADoubleClickChoosesARowAndActivatesIt) {
  fill();
  list.activateRow(1);
  EXPECT_EQ(form.log, "item1 activate1 ");
}

TEST_P(HeadedLists, NothingIsActivatedThatIsNotThereOrCannotBeReached) {
  fill();
  list.activateRow(2);
  list.activateRow(-1);
  list.setEnabled(false);
  list.activateRow(0);
  list.setEnabled(true);
  list.setVisible(false);
  list.activateRow(0);
  form.unload();
  list.activateRow(0);
  EXPECT_EQ(form.log, "");
  EXPECT_FALSE(form.loaded());
}

TEST_P(HeadedLists, TheSecondClickFindsWhatTheFirstHasLeft) {
  fill();
  list.onItemClick = [this] { list.setRows(1, source()); };
  list.activateRow(1);
  EXPECT_EQ(form.log, "") << "the row is gone";
  fill();
  list.onItemClick = [this] { form.unload(); };
  list.activateRow(1);
  EXPECT_EQ(form.log, "");
  EXPECT_FALSE(form.loaded());
}

TEST_P(HeadedLists, AHandlerMayUnloadTheForm) {
  fill();
  list.onActivate = [this] { form.unload(); };
  list.activateRow(1);
  EXPECT_FALSE(form.loaded());
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(list.columns().empty());
}

TEST_P(HeadedLists, RowsOfOneTextTakeTheirPlaceAndGiveItBack) {
  fill();
  list.setItems({"a", "b", "c"});
  EXPECT_EQ(list.count(), 3);
  EXPECT_EQ(list.itemText(2), "c");
  EXPECT_EQ(list.itemText(2, 0), "c");
  EXPECT_EQ(list.itemText(2, 1), "");
  fill();
  EXPECT_EQ(list.count(), 2);
  list.removeItem(0);
  EXPECT_EQ(list.count(), 2) << "those rows are the form's";
}

TEST_P(HeadedLists, ManyRowsAreNotCopied) {
  int asked = 0;
  list.setRows(100'000, [&](int, int) -> std::string_view {
    ++asked;
    return "cell";
  });
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(list.itemText(99'999, 0), "cell");
}

struct HeadedListOnScreen : testing::Test, Sample {
  HeadedListOnScreen() : Sample(true) { fill(); }
};

TEST_F(HeadedListOnScreen, TheScreenHasTheColumnsAndTheRows) {
  EXPECT_EQ(peer().headings, (std::vector<std::string>{"Place", "Operator", "APN"}));
  EXPECT_EQ(peer().counts, std::vector<int>{2}) << "the scroll bars are drawn once";
  EXPECT_EQ(peer().brought, std::vector<int>{0}) << "it begins at the first row";
  EXPECT_EQ(peer().selection, -1);
  EXPECT_EQ(peer().events.cellText(1, 1), "Telvira");
  list.refresh();
  EXPECT_EQ(peer().counts, (std::vector<int>{2, 2}));
  list.setRows(0, nullptr);
  EXPECT_EQ(peer().counts.back(), 0);
  EXPECT_EQ(peer().brought, std::vector<int>{0});
}

TEST_F(HeadedListOnScreen, TheSameColumnsKeepTheirWidths) {
  fill();
  EXPECT_EQ(peer().columnsSet, 1);
  list.setColumns({{"Place", 0}, {"Operator", 128}});
  EXPECT_EQ(peer().columnsSet, 2);
}

TEST_F(HeadedListOnScreen, TheUsersActivationIsReportedWithTheSelectionOnTheScreen) {
  peer().userChooses(1);
  peer().events.itemActivated();
  EXPECT_EQ(form.log, "item1 activate1 ");
  peer().selection = -1;
  peer().events.itemActivated();
  EXPECT_EQ(form.log, "item1 activate1 ") << "no row is selected";
}

}  // namespace
}  // namespace pelvaro
