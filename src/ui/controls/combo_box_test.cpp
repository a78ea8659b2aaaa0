// Combo boxes, as plain values and with a peer whose selection changes as scripts and users change it.
#include "ui/controls/combo_box.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_services.h"
#include "ui/controls/fake_control_screen.h"
#include "ui/controls/form.h"

namespace pelvaro {
namespace {

constexpr ControlLayout kControls[] = {
    {.name = "Combo1", .kind = ControlKind::comboBox, .caption = "", .place = {0, 0, 90, 24}},
};
const FormLayout kLayout{
    .name = "Sample", .title = "Sample", .width = 90, .height = 24, .controls = kControls, .rules = {}};

// A combo box on a screen: it asks for the rows that are new, and scripts select in it.
struct Peer : fake::FakeControl {
  using FakeControl::FakeControl;
  std::vector<std::string> rows;
  int selection = -1;
  int emptied = 0;

  void setRowCount(int count) override {
    if (count < static_cast<int>(rows.size())) {
      rows.clear();
      selection = -1;
      ++emptied;
    }
    while (static_cast<int>(rows.size()) < count) {
      rows.emplace_back(events.cellText(static_cast<int>(rows.size()), 0));
    }
  }
  int selectedRow() override { return selection; }
  void selectRow(int row) override { selection = row; }
  void userChooses(int row) {
    selection = row;
    events.clicked();
  }
};

struct SampleForm : Form {
  SampleForm(Services& services, FormGroup& group) : Form(services, group, kLayout) {
    Combo1.onClick = [this] { log += std::to_string(Combo1.selected()) + ':' + Combo1.text() + ' '; };
  }
  ComboBox Combo1{*this, "Combo1"};
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
  ComboBox& Combo1 = form.Combo1;

  void fill(std::initializer_list<const char*> texts) {
    Combo1.clear();
    for (const char* text : texts) Combo1.add(text);
  }
  Peer& peer() { return *screen.peers.at("Combo1"); }
};

// With a screen and without.
struct ComboBoxes : testing::TestWithParam<bool>, Sample {
  ComboBoxes() : Sample(GetParam()) {}
};
INSTANTIATE_TEST_SUITE_P(Plain, ComboBoxes, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(OnScreen, ComboBoxes, testing::Values(true));

TEST_P(ComboBoxes, AreEmptyByDesign) {
  EXPECT_EQ(Combo1.count(), 0);
  EXPECT_EQ(Combo1.selected(), -1);
  EXPECT_EQ(Combo1.text(), "");
  EXPECT_EQ(Combo1.itemText(0), "");
  EXPECT_TRUE(form.loaded());
}

TEST_P(ComboBoxes, FillingIsSilentAndSelectsNothing) {
  fill({"USB", "Bluetooth"});
  EXPECT_EQ(Combo1.count(), 2);
  EXPECT_EQ(Combo1.itemText(0), "USB");
  EXPECT_EQ(Combo1.itemText(1), "Bluetooth");
  EXPECT_EQ(Combo1.itemText(2), "");
  EXPECT_EQ(Combo1.itemText(-1), "");
  EXPECT_EQ(Combo1.selected(), -1);
  EXPECT_EQ(form.log, "");
}

TEST_P(ComboBoxes, ClearingIsSilentAndLeavesNothingSelected) {
  fill({"a", "b"});
  Combo1.select(1);
  form.log.clear();
  Combo1.clear();
  EXPECT_EQ(Combo1.count(), 0);
  EXPECT_EQ(Combo1.selected(), -1);
  EXPECT_EQ(Combo1.text(), "");
  fill({"a", "b"});
  EXPECT_EQ(Combo1.selected(), -1) << "the same entries are new ones";
  EXPECT_EQ(form.log, "");
}

TEST_P(ComboBoxes, AddingKeepsTheSelection) {
  fill({"a", "b"});
  Combo1.select(1);
  Combo1.add("c");
  EXPECT_EQ(Combo1.text(), "b");
  EXPECT_EQ(form.log, "1:b ");
}

TEST_P(ComboBoxes, SelectingInCodeRaisesTheClickOnEveryAssignment) {
  fill({"a", "b"});
  Combo1.select(0);
  Combo1.select(0);
  Combo1.select(1);
  Combo1.select(-1);
  Combo1.select(-1);
  EXPECT_EQ(form.log, "0:a 0:a 1:b -1: -1: ");
}

TEST_P(ComboBoxes, AnIndexThatTheListDoesNotHaveChangesNothing) {
  fill({"a", "b"});
  Combo1.select(1);
  Combo1.select(2);
  Combo1.select(-2);
  EXPECT_EQ(Combo1.selected(), 1);
  EXPECT_EQ(form.log, "1:b ");
}

TEST_P(ComboBoxes, SelectingInCodeCountsAlsoForADisabledOrHiddenBox) {
  fill({"a", "b"});
  Combo1.setEnabled(false);
  Combo1.select(0);
  Combo1.setVisible(false);
  Combo1.select(1);
  EXPECT_EQ(form.log, "0:a 1:b ");
}

TEST_P(ComboBoxes, SettingAListedTextSelectsItsFirstEntry) {
  fill({"a", "b", "b"});
  Combo1.setText("b");
  Combo1.setText("b");
  EXPECT_EQ(form.log, "1:b 1:b ");
}

TEST_P(ComboBoxes, SettingAnUnlistedTextDeselectsInSilence) {
  fill({"a", "b"});
  Combo1.select(0);
  for (const char* text : {"c", "A", "a ", ""}) {
    Combo1.setText(text);
    EXPECT_EQ(Combo1.selected(), -1) << text;
    EXPECT_EQ(Combo1.text(), "");
  }
  EXPECT_EQ(form.log, "0:a ");
}

TEST_P(ComboBoxes, TheTextIsThatOfTheSelectionAlsoForOneWhoKnowsNoKind) {
  fill({"a", "b"});
  Control& control = Combo1;
  control.setText("b");
  EXPECT_EQ(control.text(), "b");
  EXPECT_EQ(Combo1.selected(), 1);
}

TEST_P(ComboBoxes, AnEmptyEntryIsAnEntry) {
  fill({"a", ""});
  Combo1.setText("");
  EXPECT_EQ(Combo1.selected(), 1);
}

TEST_P(ComboBoxes, AUsersChoiceRaisesTheClick) {
  fill({"a", "b"});
  Combo1.chooseItem(1);
  Combo1.chooseItem(1);
  EXPECT_EQ(form.log, "1:b 1:b ");
}

TEST_P(ComboBoxes, AUserChoosesNothingThatIsNotThereOrCannotBeReached) {
  fill({"a", "b"});
  Combo1.chooseItem(2);
  Combo1.chooseItem(-1);
  Combo1.setEnabled(false);
  Combo1.chooseItem(0);
  Combo1.setEnabled(true);
  Combo1.setVisible(false);
  Combo1.chooseItem(0);
  form.unload();
  Combo1.chooseItem(0);
  EXPECT_EQ(form.log, "");
  EXPECT_FALSE(form.loaded());
}

TEST_P(ComboBoxes, AHandlerMayRefillTheListOrUnloadTheForm) {
  fill({"a", "b"});
  Combo1.onClick = [this] { fill({"c"}); };
  Combo1.select(1);
  EXPECT_EQ(Combo1.count(), 1);
  EXPECT_EQ(Combo1.selected(), -1);
  Combo1.onClick = [this] { form.unload(); };
  Combo1.setText("c");
  EXPECT_FALSE(form.loaded());
}

TEST_P(ComboBoxes, UnloadingForgetsTheListAndHidingKeepsIt) {
  form.show();
  fill({"a", "b"});
  Combo1.select(1);
  form.hide();
  EXPECT_EQ(Combo1.text(), "b");
  form.unload();
  EXPECT_EQ(Combo1.count(), 0);
  EXPECT_EQ(Combo1.selected(), -1);
}

struct ComboBoxOnScreen : testing::Test, Sample {
  ComboBoxOnScreen() : Sample(true) { fill({"a", "b"}); }
};

TEST_F(ComboBoxOnScreen, TheScreenHasTheEntries) {
  EXPECT_EQ(peer().rows, (std::vector<std::string>{"a", "b"}));
  Combo1.add("c");
  EXPECT_EQ(peer().rows, (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(peer().emptied, 0) << "adding leaves alone what is there";
  fill({"d", "e", "f"});
  EXPECT_EQ(peer().rows, (std::vector<std::string>{"d", "e", "f"}));
}

TEST_F(ComboBoxOnScreen, TheScreenHasTheSelection) {
  Combo1.select(1);
  EXPECT_EQ(peer().selection, 1);
  Combo1.setText("a");
  EXPECT_EQ(peer().selection, 0);
  Combo1.setText("c");
  EXPECT_EQ(peer().selection, -1);
  Combo1.chooseItem(1);
  EXPECT_EQ(peer().selection, 1);
}

TEST_F(ComboBoxOnScreen, ASelectionThatAScriptMakesIsTheTruthAndRaisesNothing) {
  Combo1.select(0);
  form.log.clear();
  peer().selection = 1;
  EXPECT_EQ(Combo1.selected(), 1);
  EXPECT_EQ(Combo1.text(), "b");
  peer().selection = -1;
  EXPECT_EQ(Combo1.selected(), -1);
  EXPECT_EQ(Combo1.text(), "");
  EXPECT_EQ(form.log, "");
}

TEST_F(ComboBoxOnScreen, AUsersChoiceIsReportedOnceWithTheSelectionOnTheScreen) {
  peer().userChooses(1);
  peer().userChooses(1);
  EXPECT_EQ(form.log, "1:b 1:b ");
  Combo1.setEnabled(false);
  peer().userChooses(0);
  EXPECT_EQ(form.log, "1:b 1:b ");
}

}  // namespace
}  // namespace pelvaro
