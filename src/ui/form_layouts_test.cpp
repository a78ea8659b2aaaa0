// The layout tables: sizes, titles and places as drawn, everything inside its form and nothing over anything else.
#include "ui/form_layouts.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace pelvaro::layouts {
namespace {

const FormLayout* const kAll[] = {&kForm1, &kForm2,     &kForm3,   &kForm4,    &kForm5,
                                  &kForm6, &kFrmDriver, &kFrmEdit, &kFrmStatus};

const ControlLayout& control(const FormLayout& form, const std::string& name) {
  for (const ControlLayout& row : form.controls) {
    if (row.name == name) return row;
  }
  ADD_FAILURE() << "no control " << name;
  return form.controls.front();
}

std::string place(const Rect96& r) {
  return std::to_string(r.x) + "," + std::to_string(r.y) + "," + std::to_string(r.width) + "," +
         std::to_string(r.height);
}

TEST(Layouts, FormsHaveTheirTitlesAndSizes) {
  const std::map<std::string, std::string> expected{{"Form1", "Pelvaro 376x412"},
                                                    {"Form2", "Pelvaro - Connection 456x432"},
                                                    {"Form3", "Pelvaro - Operators 600x364"},
                                                    {"Form4", "Pelvaro - Connect 360x172"},
                                                    {"frmEdit", "Pelvaro - Edit 568x268"},
                                                    {"frmDriver", "Pelvaro - Drivers 376x232"},
                                                    {"Form5", "Pelvaro 280x148"},
                                                    {"Form6", "Pelvaro - Limitation 304x168"},
                                                    {"frmStatus", "Connection 328x148"}};
  for (const FormLayout* form : kAll) {
    EXPECT_EQ(std::string(form->title) + " " + std::to_string(form->width) + "x" + std::to_string(form->height),
              expected.at(form->name));
  }
}

TEST(Layouts, ControlsStandWhereTheyAreDrawn) {
  EXPECT_EQ(place(control(kForm1, "Image2").place), "136,44,104,64");
  EXPECT_EQ(place(control(kForm1, "ListView1").place), "16,124,344,148");
  EXPECT_EQ(place(control(kForm1, "statuslbl").place), "40,280,144,24");
  EXPECT_EQ(place(control(kForm1, "Label12").place), "260,376,100,20");
  EXPECT_EQ(place(control(kForm2, "Check1").place), "176,342,16,16");
  EXPECT_EQ(place(control(kForm2, "Image2").place), "344,264,96,32");
  EXPECT_EQ(place(control(kForm3, "ListView2").place), "16,80,568,224");
  EXPECT_EQ(place(control(kFrmEdit, "Text1(9)").place), "392,172,160,24");
  EXPECT_EQ(place(control(kFrmDriver, "driverlbl").place), "136,140,224,24");
  EXPECT_EQ(place(control(kForm4, "Text2").place), "152,76,192,24");
  EXPECT_EQ(place(control(kForm5, "Animation1").place), "48,44,184,64");
  EXPECT_EQ(place(control(kForm6, "Option2").place), "16,76,112,24");
  EXPECT_EQ(place(control(kForm6, "Text2").place), "136,76,88,24");
  EXPECT_EQ(place(control(kFrmStatus, "Command1").place), "224,104,88,28");
}

TEST(Layouts, DesignCaptionsAreExactlyAsTheyAreCompared) {
  EXPECT_STREQ(control(kFrmStatus, "Command1").caption, "cancel");
  EXPECT_STREQ(control(kForm4, "Label1").caption, "User Name:");
  EXPECT_STREQ(control(kForm4, "Label2").caption, "Password:");
  EXPECT_STREQ(control(kForm4, "Command1").caption, "OK");
  EXPECT_STREQ(control(kForm4, "Command2").caption, "Cancel");
  EXPECT_STREQ(control(kForm2, "numberLabel").caption, "Server or Dialup Number");
  EXPECT_STREQ(control(kForm2, "Option2").caption, "Use address below");
  EXPECT_STREQ(control(kForm2, "Check1").caption, "Validate Device");
  EXPECT_STREQ(control(kForm2, "Command1").caption, "Add Now");
  EXPECT_STREQ(control(kForm2, "Command4").caption, "Add Device Manually");
  EXPECT_STREQ(control(kForm6, "Option1").caption, "Time Limit ");
  EXPECT_STREQ(control(kForm6, "Option2").caption, "Size limit");
  EXPECT_STREQ(control(kForm6, "Label2").caption, "Limitation");
  EXPECT_STREQ(control(kForm1, "Label9").caption, "Time elaspe");
  EXPECT_STREQ(control(kForm1, "Label11").caption, "Time remain");
}

TEST(Layouts, EveryControlLiesInsideItsFormAndHasANameOfItsOwn) {
  for (const FormLayout* form : kAll) {
    std::set<std::string> names;
    for (const ControlLayout& row : form->controls) {
      EXPECT_TRUE(names.insert(row.name).second) << form->name << "." << row.name;
      EXPECT_GE(row.place.x, 1) << row.name;
      EXPECT_GE(row.place.y, 1) << row.name;
      EXPECT_LE(row.place.x + row.place.width, form->width - 1) << row.name;
      EXPECT_LE(row.place.y + row.place.height, form->height - 1) << row.name;
    }
  }
}

TEST(Layouts, NoControlLiesOverAnother) {
  for (const FormLayout* form : kAll) {
    for (std::size_t i = 0; i < form->controls.size(); ++i) {
      for (std::size_t j = i + 1; j < form->controls.size(); ++j) {
        const Rect96 a = form->controls[i].place;
        const Rect96 b = form->controls[j].place;
        const bool apart =
            a.x + a.width <= b.x || b.x + b.width <= a.x || a.y + a.height <= b.y || b.y + b.height <= a.y;
        EXPECT_TRUE(apart) << form->name << ": " << form->controls[i].name << " and " << form->controls[j].name;
      }
    }
  }
}

TEST(Layouts, FirstFocusAndDefaultButtonAreControlsOfTheForm) {
  for (const FormLayout* form : kAll) {
    control(*form, form->firstFocus);
    if (!form->defaultButton) continue;
    EXPECT_EQ(control(*form, form->defaultButton).kind, ControlKind::commandButton);
  }
}

TEST(Layouts, TheTabulatorGoesFromLeftToRightAndDownWithTheMarksLast) {
  using Names = std::vector<std::string>;
  const auto order = [](const FormLayout& form) {
    Names names;
    for (const ControlLayout& row : form.controls) {
      if (row.kind != ControlKind::label && row.kind != ControlKind::picture) names.emplace_back(row.name);
    }
    return names;
  };
  EXPECT_EQ(order(kForm1), (Names{"Image1", "Image2", "Image3", "ListView1", "Label6", "Label3"}));
  EXPECT_EQ(order(kForm2), (Names{"Text1", "Text2", "Text3", "Option1", "Option2", "Text4", "Text5", "Combo3", "Image2",
                                  "Combo1", "Check1", "Command4", "Command2", "Command1", "Command3", "Label7"}));
  EXPECT_EQ(order(kForm3), (Names{"Combo1", "ListView2", "Command3", "Command4", "Command2", "Command1", "closeMark"}));
  // The two options are one group, for the arrow keys.
  EXPECT_EQ(order(kForm6), (Names{"Option1", "Option2", "Text1", "Text2", "Command1", "Command2", "closeMark"}));
}

}  // namespace
}  // namespace pelvaro::layouts
