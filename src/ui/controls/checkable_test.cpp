// Option buttons and check boxes, as plain values and with peers whose marks change as the system changes them.
#include "ui/controls/checkable.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_services.h"
#include "ui/controls/fake_control_screen.h"
#include "ui/controls/form.h"

namespace pelvaro {
namespace {

constexpr ControlLayout kControls[] = {
    {.name = "Option1", .kind = ControlKind::optionButton, .caption = "one", .place = {0, 0, 90, 24}},
    {.name = "Option2", .kind = ControlKind::optionButton, .caption = "two", .place = {0, 24, 90, 24}},
    {.name = "Option3", .kind = ControlKind::optionButton, .caption = "three", .place = {0, 48, 90, 24}},
    {.name = "Check1", .kind = ControlKind::checkBox, .caption = "check", .place = {0, 72, 90, 24}},
};
const FormLayout kLayout{
    .name = "Sample", .title = "Sample", .width = 90, .height = 96, .controls = kControls, .rules = {}};

// A control on a screen: scripts change its mark, and the system does before it reports a click.
struct Peer : fake::FakeControl {
  using FakeControl::FakeControl;
  bool mark = false;
  bool checked() override { return mark; }
  void setChecked(bool checked) override { mark = checked; }
};

struct Screen : fake::FakeControlScreen<Peer> {
  void userClicks(const std::string& name) {
    Peer& clicked = *peers.at(name);
    if (clicked.layout.kind == ControlKind::checkBox) {
      clicked.mark = !clicked.mark;
    } else {
      for (const auto& [otherName, peer] : peers) {
        // The system leaves out disabled ones.
        if (peer->layout.kind == ControlKind::optionButton && peer->enabled) peer->mark = peer.get() == &clicked;
      }
    }
    clicked.events.clicked();
  }
};

struct SampleForm : Form {
  SampleForm(Services& services, FormGroup& group) : Form(services, group, kLayout) {
    for (OptionButton* option : {&Option1, &Option2, &Option3}) {
      option->onClick = [this, option] { log += option->layout().caption + std::string(marks()); };
    }
    Check1.onClick = [this] { log += Check1.checked() ? "on " : "off "; };
  }
  OptionButton Option1{*this, "Option1"};
  OptionButton Option2{*this, "Option2"};
  OptionButton Option3{*this, "Option3"};
  CheckBox Check1{*this, "Check1"};
  std::string log;

  std::string marks() {
    std::string result = ":";
    for (OptionButton* option : {&Option1, &Option2, &Option3}) result += option->checked() ? '*' : '-';
    return result + ' ';
  }
};

struct Sample {
  explicit Sample(bool onScreen) : fakes(ras, {.forms = onScreen ? &screen : nullptr}) {}
  fake::Journal calls;
  fake::FakeDialService ras{calls};
  Screen screen;
  fake::FakeServices fakes;
  FormGroup group;
  SampleForm form{fakes.services, group};
};

// With a screen and without.
struct Checkables : testing::TestWithParam<bool>, Sample {
  Checkables() : Sample(GetParam()) {}
};
INSTANTIATE_TEST_SUITE_P(Plain, Checkables, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(OnScreen, Checkables, testing::Values(true));

TEST_P(Checkables, NothingIsMarkedByDesign) {
  EXPECT_EQ(form.marks(), ":--- ");
  EXPECT_FALSE(form.Check1.checked());
  EXPECT_TRUE(form.loaded());
}

TEST_P(Checkables, AClickOnAnOptionChoosesItAndClearsTheOthers) {
  form.load();
  form.Option1.click();
  form.Option3.click();
  form.Option3.click();
  EXPECT_EQ(form.log, "one:*-- three:--* three:--* ");
}

TEST_P(Checkables, ChoosingInCodeRaisesTheClickOnEveryAssignment) {
  form.Option2.choose();
  form.Option2.choose();
  form.Option1.choose();
  EXPECT_EQ(form.log, "two:-*- two:-*- one:*-- ");
}

TEST_P(Checkables, ChoosingInCodeCountsAlsoForADisabledOrHiddenOption) {
  form.Option1.setEnabled(false);
  form.Option2.setVisible(false);
  form.Option1.choose();
  form.Option2.choose();
  EXPECT_EQ(form.log, "one:*-- two:-*- ");
}

TEST_P(Checkables, ADisabledOptionLosesItsMarkToo) {
  form.Option1.choose();
  form.Option1.setEnabled(false);
  form.Option2.click();
  EXPECT_EQ(form.marks(), ":-*- ");
}

TEST_P(Checkables, AClickOnACheckBoxTogglesItAndRaisesTheClick) {
  form.load();
  form.Check1.click();
  form.Check1.click();
  form.Check1.click();
  EXPECT_EQ(form.log, "on off on ");
  EXPECT_EQ(form.marks(), ":--- ") << "it belongs to no group";
}

TEST_P(Checkables, SettingACheckBoxInCodeRaisesTheClickOnEveryAssignment) {
  form.Check1.setChecked(true);
  form.Check1.setChecked(true);
  form.Check1.setChecked(false);
  EXPECT_EQ(form.log, "on on off ");
}

TEST_P(Checkables, AClickDoesNothingWhileDisabledHiddenOrUnloaded) {
  form.Option1.click();
  form.Check1.click();
  EXPECT_FALSE(form.loaded());
  for (Control* control : {static_cast<Control*>(&form.Option1), static_cast<Control*>(&form.Check1)}) {
    control->setEnabled(false);
    control->click();
    control->setEnabled(true);
    control->setVisible(false);
    control->click();
  }
  EXPECT_EQ(form.log, "");
  EXPECT_EQ(form.marks(), ":--- ");
  EXPECT_FALSE(form.Check1.checked());
}

TEST_P(Checkables, UnloadingForgetsTheMarksAndHidingKeepsThem) {
  form.show();
  form.Option2.choose();
  form.Check1.setChecked(true);
  form.hide();
  EXPECT_EQ(form.marks(), ":-*- ");
  EXPECT_TRUE(form.Check1.checked());
  form.unload();
  EXPECT_EQ(form.marks(), ":--- ");
  EXPECT_FALSE(form.Check1.checked());
}

TEST_P(Checkables, AClickThatUnloadsTheFormIsTheLastThing) {
  form.load();
  form.Option1.onClick = form.Check1.onClick = [this] { form.unload(); };
  form.Option1.click();
  EXPECT_FALSE(form.loaded());
  form.load();
  form.Check1.click();
  EXPECT_FALSE(form.loaded());
}

struct CheckablesOnScreen : testing::Test, Sample {
  CheckablesOnScreen() : Sample(true) { form.load(); }
};

TEST_F(CheckablesOnScreen, AUsersClickIsReportedOnceWithTheMarksAsTheSystemLeftThem) {
  screen.userClicks("Option2");
  screen.userClicks("Option1");
  screen.userClicks("Check1");
  screen.userClicks("Check1");
  EXPECT_EQ(form.log, "two:-*- one:*-- on off ");
}

TEST_F(CheckablesOnScreen, AUsersClickTakesTheMarkFromADisabledOptionToo) {
  form.Option1.choose();
  form.Option1.setEnabled(false);
  screen.userClicks("Option3");
  EXPECT_EQ(form.marks(), ":--* ");
}

TEST_F(CheckablesOnScreen, AMarkThatAScriptSetsIsTheTruth) {
  form.Option1.choose();
  form.log.clear();
  screen.peers["Option1"]->mark = false;
  screen.peers["Option2"]->mark = true;
  screen.peers["Check1"]->mark = true;
  EXPECT_EQ(form.marks(), ":-*- ");
  EXPECT_TRUE(form.Check1.checked());
  EXPECT_EQ(form.log, "");
  form.Option1.choose();
  EXPECT_FALSE(screen.peers["Option2"]->mark);
  form.Check1.click();
  EXPECT_FALSE(screen.peers["Check1"]->mark);
}

}  // namespace
}  // namespace pelvaro
