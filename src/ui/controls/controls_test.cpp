// Forms, controls and timers as values: loading, design values, activation, the tick that waits for its handler.
#include <gtest/gtest.h>

#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_services.h"
#include "ui/controls/animation.h"
#include "ui/controls/form.h"
#include "ui/controls/image.h"
#include "ui/controls/list_view.h"
#include "ui/controls/timer.h"

namespace pelvaro {
namespace {

using Log = std::vector<std::string>;

constexpr ControlLayout kControls[] = {
    {.name = "Text1", .kind = ControlKind::textBox, .caption = "design", .place = {0, 0, 10, 10}},
    {.name = "ListView1", .kind = ControlKind::listView, .caption = "", .place = {0, 0, 10, 10}},
    {.name = "Image1",
     .kind = ControlKind::pictureButton,
     .caption = "tip",
     .place = {0, 0, 10, 10},
     .picture = Picture::add},
    {.name = "Label1", .kind = ControlKind::label, .caption = "hidden", .place = {0, 0, 10, 10}, .visible = false},
};
const FormLayout kLayout{
    .name = "Sample", .title = "Sample", .width = 10, .height = 10, .controls = kControls, .rules = {}};

struct SampleForm : Form {
  SampleForm(Services& services, FormGroup& group, Log& events) : Form(services, group, kLayout), log(events) {}
  Log& log;
  Control Text1{*this, "Text1"};
  ListView ListView1{*this, "ListView1"};
  Image Image1{*this, "Image1"};
  Label Label1{*this, "Label1"};
  Timer slow{*this, {.interval = 1000, .enabled = false}};
  Timer poll{*this, {.interval = 50, .enabled = true, .yieldsFirst = true}};

  void onLoad() override { log.push_back("load"); }
  void onUnload() override { log.push_back("unload"); }
  void onActivate() override { log.push_back("activate"); }
};

struct Controls : testing::Test {
  fake::Journal calls;
  fake::FakeDialService ras{calls};
  fake::FakeServices fakes{ras};
  fake::HeadlessDesktop& desktop = fakes.desktop;
  Services& services = fakes.services;
  FormGroup group;
  Log log;
  SampleForm form{services, group, log};
  SampleForm other{services, group, log};
};

TEST_F(Controls, TouchingAControlOfAnUnloadedFormLoadsItHidden) {
  EXPECT_FALSE(form.loaded());
  EXPECT_EQ(form.Text1.text(), "design");
  EXPECT_TRUE(form.loaded());
  EXPECT_FALSE(form.visible());
  EXPECT_EQ(log, (Log{"load"}));
}

TEST_F(Controls, HidingAnUnloadedFormDoesNothing) {
  form.hide();
  form.unload();
  EXPECT_FALSE(form.loaded());
  EXPECT_TRUE(log.empty());
}

TEST_F(Controls, UnloadingForgetsTextsListsAndStatesAndHidingKeepsThem) {
  form.show();
  form.Text1.setText("typed");
  form.ListView1.setItems({"a", "b"});
  form.ListView1.selectRow(1);
  form.Image1.setEnabled(false);
  form.Image1.setPicture(Picture::limits, Look::pressed);
  form.Label1.setVisible(true);
  form.slow.setEnabled(true);
  form.moveBy(3, 4);
  form.hide();
  EXPECT_EQ(form.Text1.text(), "typed");
  EXPECT_EQ(form.ListView1.selectedText(), "b");
  form.unload();
  EXPECT_EQ(form.Text1.text(), "design");
  EXPECT_EQ(form.ListView1.count(), 0);
  EXPECT_EQ(form.ListView1.selectedRow(), -1);
  EXPECT_TRUE(form.Image1.enabled());
  EXPECT_EQ(form.Image1.picture(), Picture::add);
  EXPECT_EQ(form.Image1.look(), Look::normal);
  EXPECT_FALSE(form.Label1.visible());
  EXPECT_FALSE(form.slow.enabled());
  EXPECT_EQ(form.movedX(), 0);
}

TEST_F(Controls, ActivationIsRaisedWhenTheFormBecomesTheActiveOneAmongOurOwn) {
  form.show();
  form.show();
  form.activated();  // back from another program
  EXPECT_EQ(log, (Log{"load", "activate"}));
  other.show();
  form.activated();
  EXPECT_EQ(log, (Log{"load", "activate", "load", "activate", "activate"}));
}

TEST_F(Controls, AHiddenFormIsNotActivated) {
  form.load();
  form.activated();
  EXPECT_EQ(log, (Log{"load"}));
}

TEST_F(Controls, AModalFormReturnsWhenItIsHidden) {
  desktop.postIn(500, [this] { form.hide(); });
  form.showModal();
  EXPECT_EQ(desktop.now(), 501u);
}

TEST_F(Controls, AModalFormThatIsHiddenByItsOwnActivationReturnsAtOnce) {
  struct Brief : SampleForm {
    using SampleForm::SampleForm;
    void onActivate() override { hide(); }
  } brief(services, group, log);
  brief.showModal();
  EXPECT_EQ(desktop.now(), 1u);
}

TEST_F(Controls, AClickDoesNothingWhileDisabledHiddenOrUnloaded) {
  int clicks = 0;
  form.Image1.onClick = [&] { ++clicks; };
  form.Image1.click();
  EXPECT_EQ(clicks, 0);
  form.load();
  form.Image1.click();
  form.Image1.setEnabled(false);
  form.Image1.click();
  form.Image1.setEnabled(true);
  form.Image1.setVisible(false);
  form.Image1.click();
  EXPECT_EQ(clicks, 1);
}

TEST_F(Controls, SelectingARowInCodeRaisesNothingAndAUsersChoiceRaisesTheClick) {
  int clicks = 0;
  form.ListView1.onItemClick = [&] { ++clicks; };
  form.ListView1.setItems({"a", "b"});
  form.ListView1.selectRow(0);
  EXPECT_EQ(clicks, 0);
  form.ListView1.chooseRow(0);
  form.ListView1.chooseRow(0);
  form.ListView1.chooseRow(2);
  EXPECT_EQ(clicks, 2);
}

TEST_F(Controls, RemovingARowLosesTheSelectionAndKeepsTheOrder) {
  form.ListView1.setItems({"a", "b", "c"});
  form.ListView1.selectRow(2);
  form.ListView1.removeItem(1);
  EXPECT_EQ(form.ListView1.itemText(0) + form.ListView1.itemText(1), "ac");
  EXPECT_EQ(form.ListView1.selectedRow(), -1);
  form.ListView1.removeItem(-1);
  form.ListView1.removeItem(9);
  EXPECT_EQ(form.ListView1.count(), 2);
  EXPECT_EQ(form.ListView1.itemText(-1), "");
}

TEST_F(Controls, ATimerNeverReentersItsHandlerAndOneTickWaits) {
  int ticks = 0;
  form.slow.onTick = [&] {
    if (++ticks == 1) {
      desktop.advance(10'000);  // a question that stays open
      EXPECT_EQ(ticks, 1);
    }
  };
  form.slow.setEnabled(true);
  desktop.advance(1000);
  EXPECT_EQ(ticks, 2) << "one tick waited; the other nine are not made up";
}

TEST_F(Controls, TheWaitingTickIsDroppedWhenTheHandlerDisablesTheTimer) {
  int ticks = 0;
  form.slow.onTick = [&] {
    ++ticks;
    desktop.advance(5000);
    form.slow.setEnabled(false);
  };
  form.slow.setEnabled(true);
  desktop.advance(1000);
  EXPECT_EQ(ticks, 1);
}

TEST_F(Controls, OtherTimersGoOnBehindAHandler) {
  int polls = 0;
  form.poll.onTick = [&] { ++polls; };
  form.slow.onTick = [&] { desktop.advance(990); };
  form.slow.setEnabled(true);
  desktop.advance(1000);
  EXPECT_GE(polls, 38);
}

TEST_F(Controls, APollThatYieldsFirstGoesOnBehindAQuestionInsideThatYield) {
  int polls = 0;
  form.load();
  form.poll.onTick = [&] { ++polls; };
  desktop.post([this, &polls] {
    desktop.post([this, &polls] {
      const int before = polls;
      desktop.advance(1000);
      EXPECT_GE(polls, before + 18);
    });
    form.poll.ticked();
  });
  desktop.advance(50);
}

TEST_F(Controls, AnErrorInAHandlerLeavesTheTimerUsable) {
  int ticks = 0;
  form.load();
  form.slow.onTick = [&] {
    ++ticks;
    throw RuntimeError(6, "Overflow");
  };
  form.slow.setEnabled(true);
  EXPECT_THROW(form.slow.ticked(), RuntimeError);
  EXPECT_THROW(form.slow.ticked(), RuntimeError);
  EXPECT_EQ(ticks, 2);
}

TEST_F(Controls, AYieldUnwindsAtOnceWhenTheProgramIsEnding) {
  desktop.end();
  EXPECT_THROW(desktop.yield(), ProgramEnded);
  form.load();
  EXPECT_THROW(form.showModal(), ProgramEnded);
}

}  // namespace
}  // namespace pelvaro
