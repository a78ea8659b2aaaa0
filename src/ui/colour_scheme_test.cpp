#include "ui/colour_scheme.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_services.h"
#include "ui/controls/checkable.h"
#include "ui/controls/combo_box.h"
#include "ui/controls/form.h"

namespace pelvaro {
namespace {

constexpr Colour kNavy = 0x800000, kPaleBlue = 0xF8E4D8;  // blue in the highest byte

TEST(ContrastRatio, GivesThePublishedFigures) {
  EXPECT_NEAR(contrastRatio(0xFFFFFF, 0x000000), 21.0, 0.01);
  EXPECT_NEAR(contrastRatio(kNavy, 0xFFFFFF), 16.0, 0.1);
  EXPECT_NEAR(contrastRatio(kPaleBlue, kNavy), 12.5, 0.1);
  EXPECT_NEAR(contrastRatio(0x777777, 0x777777), 1.0, 0.001);
}

TEST(ReadableGround, KeepsTheSystemsColourWhereTheTextStaysReadable) {
  EXPECT_EQ(readableGround(0xC8D0D4, kNavy), 0xC8D0D4u);  // as on Windows XP
  EXPECT_EQ(readableGround(0xFFFFFF, kNavy), 0xFFFFFFu);
}

TEST(ReadableGround, TakesThePaleBlueWhereItDoesNot) {
  EXPECT_EQ(readableGround(0x000000, kNavy), kPaleBlue);  // as on Windows 10 and 11
  EXPECT_EQ(readableGround(0x808080, kNavy), kPaleBlue);
}

constexpr ControlLayout kControls[] = {
    {.name = "Label1", .kind = ControlKind::label, .caption = "", .place = {0, 0, 90, 24}},
    {.name = "Option1", .kind = ControlKind::optionButton, .caption = "", .place = {0, 24, 90, 24}},
    {.name = "Check1", .kind = ControlKind::checkBox, .caption = "", .place = {0, 48, 90, 24}},
    {.name = "Text1", .kind = ControlKind::textBox, .caption = "", .place = {0, 72, 90, 24}},
    {.name = "Command1", .kind = ControlKind::commandButton, .caption = "", .place = {0, 96, 90, 28}},
    {.name = "Combo1", .kind = ControlKind::comboBox, .caption = "", .place = {0, 124, 90, 24}},
};
const FormLayout kLayout{
    .name = "Sample", .title = "Sample", .width = 90, .height = 148, .controls = kControls, .rules = {}};

struct ColourScheme : testing::Test {
  fake::Journal calls;
  fake::FakeDialService ras{calls};
  fake::FakeServices fakes{ras};
  FormGroup group;
  Form form{fakes.services, group, kLayout};
  Label Label1{form, "Label1"};
  OptionButton Option1{form, "Option1"};
  CheckBox Check1{form, "Check1"};
  TextBox Text1{form, "Text1"};
  CommandButton Command1{form, "Command1"};
  ComboBox Combo1{form, "Combo1"};

  static void expect(const Colours& colours, Colour background, Colour text) {
    EXPECT_EQ(colours.background, background);
    EXPECT_EQ(colours.text, text);
  }
};

TEST_F(ColourScheme, LabelsOptionButtonsAndCheckBoxesHaveTheColoursOfTheSurface) {
  fakes.desktop.systemColours[0x13] = 0xC8D0D4;
  accessary::applyColourScheme(form);
  expect(form.colours(), 0xC8D0D4, kNavy);
  for (const Control* control : {&Label1, static_cast<Control*>(&Option1), static_cast<Control*>(&Check1)}) {
    expect(control->colours(), 0xC8D0D4, kNavy);
  }
  expect(Text1.colours(), 0xFFFFFF, 0x1A1A1A);
  expect(Combo1.colours(), 0xFFFFFF, 0x1A1A1A);
  expect(Command1.colours(), 0xFFFFFF, kNavy);
}

TEST_F(ColourScheme, AHighContrastSchemeWins) {
  fakes.desktop.contrast = true;
  fakes.desktop.systemColours = {{5, 0x000000}, {8, 0xFFFFFF}, {15, 0x101010}, {18, 0xF0F0F0}};
  accessary::applyColourScheme(form);
  for (const Control* control : {&Label1, static_cast<Control*>(&Option1), static_cast<Control*>(&Check1), &Text1,
                                 static_cast<Control*>(&Combo1)}) {
    expect(control->colours(), 0x000000, 0xFFFFFF);
  }
  expect(Command1.colours(), 0x101010, 0xF0F0F0);
}

}  // namespace
}  // namespace pelvaro
