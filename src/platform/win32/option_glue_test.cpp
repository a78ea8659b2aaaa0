// Option buttons, check boxes and disabled text boxes as windows: what scripts, the keyboard and the eye find.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <string>

#include "platform/win32/control_window.h"
#include "platform/win32/form_window.h"
#include "platform/win32/paint.h"
#include "platform/win32/window_drawing.h"

namespace pelvaro::win32 {
namespace {

constexpr ControlLayout kControls[] = {
    {.name = "Option1", .kind = ControlKind::optionButton, .caption = "Time & more ", .place = {0, 20, 112, 24}},
    {.name = "Option2", .kind = ControlKind::optionButton, .caption = "Size", .place = {0, 50, 112, 24}},
    {.name = "Option3", .kind = ControlKind::optionButton, .caption = "Neither", .place = {0, 80, 16, 16}},
    {.name = "Check1", .kind = ControlKind::checkBox, .caption = "Check", .place = {0, 110, 16, 16}},
    {.name = "Text1", .kind = ControlKind::textBox, .caption = "8", .place = {0, 140, 90, 24}},
    {.name = "Text2",
     .kind = ControlKind::textBox,
     .caption = "8",
     .place = {0, 170, 90, 24},
     .style = TextStyle::right},
};
const FormLayout kLayout{.name = "Options",
                         .title = "Options",
                         .width = 200,
                         .height = 200,
                         .controls = kControls,
                         .rules = {},
                         .firstFocus = "Text1"};

constexpr Colour kSurface = 0xF8E4D8, kInk = 0x800000, kInputText = 0x1A1A1A;

struct Events : FormEvents, ControlEvents {
  std::function<void()> onClick;
  int clicks = 0;
  void clicked() override {
    ++clicks;
    if (onClick) onClick();
  }
};

// The rim of a circle is mixed with what lies behind it.
bool alike(COLORREF one, COLORREF other) {
  constexpr int kMost = 8;
  return std::abs(GetRValue(one) - GetRValue(other)) < kMost && std::abs(GetGValue(one) - GetGValue(other)) < kMost &&
         std::abs(GetBValue(one) - GetBValue(other)) < kMost;
}

struct Options : testing::Test {
  MessageLoop loop;
  FormScreen screen{loop};
  Events formEvents;
  std::map<std::string, Events> events;
  std::shared_ptr<FormPeer> form = screen.createForm(kLayout, formEvents);
  std::map<std::string, std::shared_ptr<ControlPeer>> controls;
  HWND Option1 = make("Option1"), Option2 = make("Option2"), Option3 = make("Option3");
  HWND Check1 = make("Check1"), Text1 = make("Text1"), Text2 = make("Text2");

  Options() {
    form->show(false);
    loop.yield();
  }
  HWND make(const std::string& name) {
    for (const ControlLayout& row : kControls) {
      if (row.name != name) continue;
      controls[name] = form->createControl(row, events[name]);
      const bool input = row.kind == ControlKind::textBox;
      controls[name]->setColours(input ? Colours{0xFFFFFF, kInputText} : Colours{kSurface, kInk});
      return dynamic_cast<ControlWindow&>(*controls[name]).window();
    }
    return nullptr;
  }
  static bool marked(HWND window) { return ::SendMessageA(window, BM_GETCHECK, 0, 0) == BST_CHECKED; }
  std::string marks() {
    std::string result;
    for (const char* name : {"Option1", "Option2", "Option3"}) result += controls[name]->checked() ? '*' : '-';
    return result;
  }
  static bool has(HWND window, DWORD style) {
    return (static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE)) & style) == style;
  }
  std::string tabStops() const {
    std::string result;
    for (const HWND option : {Option1, Option2, Option3}) result += has(option, WS_TABSTOP) ? '*' : '-';
    return result;
  }
  // A key as the message loop hands it on, to the control that has the focus.
  void key(WPARAM code) {
    for (const UINT number : {WM_KEYDOWN, WM_KEYUP}) {
      MSG message{::GetFocus(), number, code, number == WM_KEYUP ? static_cast<LPARAM>(0xC0000001) : 1, 0, {}};
      if (!::IsDialogMessageA(screen.mainWindow(), &message)) ::DispatchMessageA(&message);
    }
  }
};

TEST_F(Options, AreThePlatformsOwnAutomaticButtonsWithTheirText) {
  char name[32];
  ::GetClassNameA(Option1, name, sizeof name);
  EXPECT_STREQ(name, "Button");
  EXPECT_EQ(::GetWindowLongA(Option1, GWL_STYLE) & 0xF, BS_AUTORADIOBUTTON);
  EXPECT_EQ(::GetWindowLongA(Check1, GWL_STYLE) & 0xF, BS_AUTOCHECKBOX);
  char text[32];
  ::SendMessageA(Option1, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  EXPECT_STREQ(text, "Time & more ");
  ::SendMessageA(Option3, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  EXPECT_STREQ(text, "Neither") << "also where a label shows it";
  ::SendMessageA(Check1, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("by a script"));
  EXPECT_EQ(controls["Check1"]->text(), "by a script");
}

TEST_F(Options, AClickMessageChoosesOneClearsTheOthersAndIsReportedOnce) {
  ::SendMessageA(Option2, BM_CLICK, 0, 0);
  EXPECT_EQ(marks(), "-*-");
  ::SendMessageA(Option1, BM_CLICK, 0, 0);
  EXPECT_EQ(marks(), "*--");
  EXPECT_EQ(events["Option1"].clicks, 1);
  EXPECT_EQ(events["Option2"].clicks, 1);
  ::SendMessageA(Option1, BM_CLICK, 0, 0);
  EXPECT_EQ(events["Option1"].clicks, 2) << "chosen already";
}

TEST_F(Options, AClickMessageTogglesACheckBox) {
  events["Check1"].onClick = [this] { EXPECT_EQ(marked(Check1), events["Check1"].clicks % 2 == 1); };
  for (int i = 0; i < 3; ++i) ::SendMessageA(Check1, BM_CLICK, 0, 0);
  EXPECT_EQ(events["Check1"].clicks, 3);
  EXPECT_TRUE(controls["Check1"]->checked());
}

TEST_F(Options, AMarkIsSetInSilenceByScriptsAndByCode) {
  ::SendMessageA(Option2, BM_SETCHECK, BST_CHECKED, 0);
  ::SendMessageA(Check1, BM_SETCHECK, BST_CHECKED, 0);
  EXPECT_EQ(marks(), "-*-");
  EXPECT_TRUE(controls["Check1"]->checked());
  controls["Option2"]->setChecked(false);
  controls["Option3"]->setChecked(true);
  EXPECT_FALSE(marked(Option2));
  EXPECT_TRUE(marked(Option3));
  for (const auto& [name, heard] : events) EXPECT_EQ(heard.clicks, 0) << name;
}

TEST_F(Options, AClickMessageReachesAHiddenOneAndNotADisabledOne) {
  controls["Option1"]->setEnabled(false);
  controls["Check1"]->setVisible(false);
  ::SendMessageA(Option1, BM_CLICK, 0, 0);
  ::SendMessageA(Check1, BM_CLICK, 0, 0);
  EXPECT_EQ(marks(), "---");
  EXPECT_EQ(events["Option1"].clicks, 0);
  EXPECT_TRUE(marked(Check1));
  EXPECT_EQ(events["Check1"].clicks, 1);
}

TEST_F(Options, ARunOfOptionsIsAGroup) {
  EXPECT_TRUE(has(Option1, WS_GROUP));
  EXPECT_FALSE(has(Option2, WS_GROUP));
  EXPECT_FALSE(has(Option3, WS_GROUP));
  EXPECT_TRUE(has(Check1, WS_GROUP));
  EXPECT_FALSE(has(Text1, WS_GROUP));
}

TEST_F(Options, TheTabulatorStopsAtTheMarkedOptionAndAtTheFirstWhileNoneIs) {
  EXPECT_EQ(tabStops(), "*--");
  controls["Option2"]->setChecked(true);
  EXPECT_EQ(tabStops(), "-*-");
  ::SendMessageA(Option3, BM_CLICK, 0, 0);
  EXPECT_EQ(tabStops(), "--*");
  controls["Option3"]->setChecked(false);
  EXPECT_EQ(tabStops(), "*--");
  EXPECT_TRUE(has(Check1, WS_TABSTOP));
}

TEST_F(Options, TheFocusAloneChoosesNothing) {
  ::SetFocus(Text2);
  key(VK_TAB);
  EXPECT_EQ(::GetFocus(), Option1);
  controls["Option2"]->focus();
  EXPECT_EQ(::GetFocus(), Option2);
  EXPECT_EQ(marks(), "---");
  key(VK_TAB);
  EXPECT_EQ(::GetFocus(), Check1);
  for (const auto& [name, heard] : events) EXPECT_EQ(heard.clicks, 0) << name;
}

TEST_F(Options, ArrowKeysMoveInTheGroupAndChoose) {
  controls["Option1"]->setChecked(true);
  controls["Option1"]->focus();
  key(VK_DOWN);
  EXPECT_EQ(::GetFocus(), Option2);
  EXPECT_EQ(marks(), "-*-");
  EXPECT_EQ(events["Option2"].clicks, 1);
  key(VK_RIGHT);
  key(VK_RIGHT);
  EXPECT_EQ(::GetFocus(), Option1) << "around the group, not out of it";
  EXPECT_EQ(marks(), "*--");
  controls["Option3"]->setEnabled(false);
  key(VK_UP);
  EXPECT_EQ(marks(), "-*-") << "past a disabled one";
  key(VK_LEFT);
  EXPECT_EQ(marks(), "*--");
  EXPECT_EQ(events["Option1"].clicks, 2);
  EXPECT_EQ(events["Option2"].clicks, 2);
  EXPECT_EQ(events["Option3"].clicks, 1);
}

TEST_F(Options, TheSpaceBarClicks) {
  controls["Option2"]->focus();
  key(VK_SPACE);
  EXPECT_EQ(marks(), "-*-");
  EXPECT_EQ(events["Option2"].clicks, 1);
  controls["Check1"]->focus();
  key(VK_DOWN);
  EXPECT_EQ(events["Check1"].clicks, 0) << "an arrow key is not for a check box";
  controls["Check1"]->focus();
  key(VK_SPACE);
  EXPECT_TRUE(marked(Check1));
}

TEST_F(Options, AFormMayGoInsideTheClickHoweverItWasMade) {
  const std::function<void()> ways[] = {
      [this] { ::SendMessageA(Option2, BM_CLICK, 0, 0); },
      [this] {
        ::SendMessageA(Option2, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        ::SendMessageA(Option2, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
      },
      [this] {
        controls["Option2"]->focus();
        key(VK_SPACE);
      },
      [this] {
        controls["Option1"]->focus();
        key(VK_DOWN);
      },
  };
  events["Option2"].onClick = [this] {
    controls.clear();
    form->destroy();
    form.reset();
  };
  for (const auto& way : ways) {
    way();
    EXPECT_FALSE(::IsWindow(Option2));
    EXPECT_TRUE(screen.forms().empty());
    form = screen.createForm(kLayout, formEvents);
    Option1 = make("Option1");
    Option2 = make("Option2");
    form->show(false);
  }
  EXPECT_EQ(events["Option2"].clicks, 4);
}

// The platform would draw at once, in its own look: it only gets to see a control that is not on the screen.
TEST_F(Options, AChangeOfStateIsDrawnWithTheNextPaintAndByUs) {
  const std::function<void()> changes[] = {
      [this] { ::SendMessageA(Option1, BM_SETCHECK, BST_CHECKED, 0); },
      [this] { ::SendMessageA(Option1, BM_SETSTATE, TRUE, 0); },
      [this] { ::SendMessageA(Option1, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("new")); },
      [this] { controls["Option1"]->focus(); },
      [this] { controls["Option2"]->focus(); },
      [this] { ::EnableWindow(Option1, FALSE); },
  };
  for (const auto& change : changes) {
    ::UpdateWindow(Option1);
    ASSERT_FALSE(::GetUpdateRect(Option1, nullptr, FALSE));
    change();
    EXPECT_TRUE(::GetUpdateRect(Option1, nullptr, FALSE));
    EXPECT_FALSE(::GetUpdateRect(screen.mainWindow(), nullptr, FALSE)) << "the form below stays as it is";
    EXPECT_TRUE(::IsWindowVisible(Option1));
  }
  controls["Option3"]->setVisible(false);
  ::SendMessageA(Option3, BM_SETCHECK, BST_CHECKED, 0);
  EXPECT_FALSE(::IsWindowVisible(Option3)) << "a hidden one stays hidden";
}

TEST_F(Options, AnOptionIsACircleWithADotAtTheLeftEdge) {
  const int middle = screen.metrics().scaled(12), size = screen.metrics().scaled(16);
  const auto look = [&](int x, int y) { return WindowDrawing(Option1, 200, 60).at(x, y); };
  const int top = middle - size / 2;
  EXPECT_EQ(look(size / 2, middle), palette::kWhite);
  EXPECT_EQ(look(1, top + 1), kSurface) << "round, on the colour of the form";
  EXPECT_EQ(look(size / 2, 0), kSurface);
  EXPECT_TRUE(alike(look(screen.metrics().scaled(1), middle), palette::kEdge));
  controls["Option1"]->setChecked(true);
  EXPECT_EQ(look(size / 2, middle), kInk);
  controls["Option1"]->setEnabled(false);
  EXPECT_EQ(look(size / 2, middle), palette::kMuted);
  EXPECT_TRUE(alike(look(screen.metrics().scaled(1), middle), palette::kHairline));
}

TEST_F(Options, TheFocusIsSeenWithAndWithoutACaption) {
  const int size = screen.metrics().scaled(16);
  for (const HWND window : {Option3, Check1}) {
    EXPECT_EQ(WindowDrawing(window, size, size).count(palette::kText), 0);
    ::SetFocus(window);
    EXPECT_GT(WindowDrawing(window, size, size).count(palette::kText), 2 * size);
  }
}

TEST_F(Options, ACheckBoxIsASquareWithATick) {
  const int size = screen.metrics().scaled(16);
  EXPECT_EQ(WindowDrawing(Check1, size, size).count(kInk), 0);
  EXPECT_GT(WindowDrawing(Check1, size, size).count(palette::kWhite), size * size / 2);
  controls["Check1"]->setChecked(true);
  EXPECT_GT(WindowDrawing(Check1, size, size).count(kInk), size / 2);
  ::SendMessageA(Check1, BM_SETSTATE, TRUE, 0);
  EXPECT_EQ(WindowDrawing(Check1, size, size).at(size / 4, size / 4), palette::kButtonPressed);
}

TEST_F(Options, ADisabledTextBoxHasTheDisabledGroundAndMutedText) {
  RECT area{};
  ::GetClientRect(Text2, &area);
  const int width = static_cast<int>(area.right), height = static_cast<int>(area.bottom);
  const auto count = [&](COLORREF colour) { return WindowDrawing(Text2, width, height).count(colour); };
  EXPECT_GT(count(0xFFFFFF), width * height / 2);
  EXPECT_GT(count(kInputText), 0);
  controls["Text2"]->setColours({palette::kDisabledInput, kInputText});
  controls["Text2"]->setEnabled(false);
  EXPECT_EQ(count(0xFFFFFF), 0);
  EXPECT_GT(count(palette::kDisabledInput), width * height / 2);
  EXPECT_GT(count(palette::kMuted), 0);
  ::SendMessageA(Text2, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("1"));
  EXPECT_EQ(controls["Text2"]->text(), "1");
  controls["Text2"]->setColours({0xFFFFFF, kInputText});
  controls["Text2"]->setEnabled(true);
  EXPECT_GT(count(0xFFFFFF), width * height / 2);
  EXPECT_EQ(count(palette::kMuted), 0);
}

TEST_F(Options, ATextBoxMayHoldItsTextAtTheRight) {
  EXPECT_FALSE(has(Text1, ES_RIGHT));
  EXPECT_TRUE(has(Text2, ES_RIGHT));
}

}  // namespace
}  // namespace pelvaro::win32
