// What screen readers are told of controls, as they ask for it; and what the tooltips say.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/win32/control_window.h"
#include "platform/win32/form_window.h"
// Behind the Windows headers.
#include <objbase.h>
#include <oleauto.h>
// Behind those.
#include <oleacc.h>

namespace pelvaro::win32 {
namespace {

constexpr ControlLayout kControls[] = {
    {.name = "Label1", .kind = ControlKind::label, .caption = "Brand", .place = {0, 0, 60, 24}},
    {.name = "Text1", .kind = ControlKind::textBox, .caption = "typed", .place = {60, 0, 90, 24}},
    {.name = "Combo1", .kind = ControlKind::comboBox, .caption = "", .place = {0, 30, 90, 24}, .spoken = "Spoken"},
    {.name = "Label2",
     .kind = ControlKind::label,
     .caption = "",
     .place = {0, 60, 60, 24},
     .style = TextStyle::cut,
     .spoken = "Nothing yet"},
    {.name = "Combo2", .kind = ControlKind::comboBox, .caption = "", .place = {60, 60, 90, 24}},
    {.name = "Option1", .kind = ControlKind::optionButton, .caption = "This & that", .place = {0, 90, 90, 24}},
    {.name = "Combo3", .kind = ControlKind::comboBox, .caption = "", .place = {0, 120, 90, 24}},
};
const FormLayout kLayout{.name = "Spoken",
                         .title = "Spoken",
                         .width = 200,
                         .height = 200,
                         .controls = kControls,
                         .rules = {},
                         .firstFocus = "Text1"};

struct Events : FormEvents, ControlEvents {
  std::string entry = "an entry";
  std::string_view cellText(int, int) override { return entry; }
};

VARIANT itself() {
  VARIANT child{};
  child.vt = VT_I4;
  return child;
}

struct Accessible : testing::Test {
  MessageLoop loop;
  FormScreen screen{loop};
  Events events;
  std::shared_ptr<FormPeer> form = screen.createForm(kLayout, events);
  std::map<std::string, std::shared_ptr<ControlPeer>> controls;

  Accessible() {
    ::CoInitialize(nullptr);
    for (const ControlLayout& row : kControls) controls[row.name] = form->createControl(row, events);
    form->show(false);
    loop.yield();
  }
  ControlWindow& control(const std::string& name) { return dynamic_cast<ControlWindow&>(*controls.at(name)); }
  IAccessible* object(const std::string& name) {
    IAccessible* result = nullptr;
    ::AccessibleObjectFromWindow(control(name).window(), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                 reinterpret_cast<void**>(&result));
    return result;
  }
  static std::string text(IAccessible* object, HRESULT (STDMETHODCALLTYPE IAccessible::*get)(VARIANT, BSTR*)) {
    BSTR wide = nullptr;
    if ((object->*get)(itself(), &wide) != S_OK) return "(none)";
    std::string result;
    for (const wchar_t* c = wide; *c; ++c) result += static_cast<char>(*c);
    ::SysFreeString(wide);
    return result;
  }
  std::string name(const std::string& of) {
    IAccessible* const asked = object(of);
    std::string result = text(asked, &IAccessible::get_accName);
    asked->Release();
    return result;
  }
};

TEST_F(Accessible, AControlIsCalledByItsTextOrByTheLabelBeforeItOrAsItsLayoutSays) {
  EXPECT_EQ(name("Label1"), "Brand");
  EXPECT_EQ(name("Text1"), "Brand");
  EXPECT_EQ(name("Combo1"), "Spoken");
  EXPECT_EQ(name("Label2"), "Nothing yet");
  EXPECT_EQ(name("Combo2"), "Nothing yet") << "as its label is called";
  EXPECT_EQ(name("Option1"), "This & that") << "the mark of an access key it is not";
  EXPECT_EQ(control("Combo3").accessibleName(), "") << "no label stands before it";
}

TEST_F(Accessible, WhatAClientHoldsKeepsStepWithTheControl) {
  controls["Combo2"]->setRowCount(1);
  controls["Combo2"]->selectRow(0);
  IAccessible* const label = object("Label2");
  IAccessible* const box = object("Combo2");
  controls["Label2"]->setText("Model");
  EXPECT_EQ(text(label, &IAccessible::get_accName), "Model");
  EXPECT_EQ(text(box, &IAccessible::get_accName), "Model");
  EXPECT_EQ(text(box, &IAccessible::get_accValue), "an entry");
  label->Release();
  box->Release();
}

TEST_F(Accessible, WhatThePlatformHasRightIsLeftToIt) {
  EXPECT_EQ(::SendMessageA(control("Text1").window(), WM_GETOBJECT, 0, OBJID_CLIENT), 0);
}

TEST_F(Accessible, OnlyTheControlItselfIsAnsweredFor) {
  for (const LONG part : {OBJID_WINDOW, OBJID_CARET, OBJID_NATIVEOM}) {
    EXPECT_EQ(::SendMessageA(control("Combo1").window(), WM_GETOBJECT, 0, part), 0) << part;
  }
}

TEST_F(Accessible, AnObjectMayBeHeldLongerThanThereIsAWindow) {
  IAccessible* const held = object("Combo1");
  controls.clear();
  form->destroy();
  BSTR name = nullptr;
  EXPECT_NE(held->get_accName(itself(), &name), S_OK);
  VARIANT state{};
  held->get_accState(itself(), &state);  // the platform's affair
  EXPECT_EQ(held->Release(), 0u);
}

TEST_F(Accessible, TooltipsSayTheWholeOfATextThatIsCut) {
  EXPECT_EQ(control("Label2").tooltip(), "");
  controls["Label2"]->setText("short");
  EXPECT_EQ(control("Label2").tooltip(), "");
  controls["Label2"]->setText("one that is too long for it");
  EXPECT_EQ(control("Label2").tooltip(), "one that is too long for it");
  controls["Label2"]->setVisible(false);
  EXPECT_EQ(control("Label2").tooltip(), "") << "nobody sees it";
  controls["Combo3"]->setRowCount(1);
  EXPECT_EQ(control("Combo3").tooltip(), "") << "nothing is selected";
  controls["Combo3"]->selectRow(0);
  EXPECT_EQ(control("Combo3").tooltip(), "");
  events.entry = "an entry that is too long for it";
  EXPECT_EQ(control("Combo3").tooltip(), events.entry);
  ::SendMessageA(control("Combo3").window(), CB_SHOWDROPDOWN, TRUE, 0);
  EXPECT_EQ(control("Combo3").tooltip(), "") << "its list lies there";
}

}  // namespace
}  // namespace pelvaro::win32
