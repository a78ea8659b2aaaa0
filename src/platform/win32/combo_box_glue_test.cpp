// Combo boxes as windows: what scripts, the keyboard and the eye find.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/win32/control_window.h"
#include "platform/win32/form_window.h"
#include "platform/win32/paint.h"
#include "platform/win32/window_drawing.h"

namespace pelvaro::win32 {
namespace {

constexpr ControlLayout kControls[] = {
    {.name = "Text1", .kind = ControlKind::textBox, .caption = "", .place = {0, 20, 90, 24}},
    {.name = "Combo1", .kind = ControlKind::comboBox, .caption = "", .place = {0, 50, 111, 24}},
    {.name = "Command1", .kind = ControlKind::commandButton, .caption = "OK", .place = {0, 80, 90, 28}},
};
const FormLayout kLayout{.name = "Combos",
                         .title = "Combos",
                         .width = 200,
                         .height = 200,
                         .controls = kControls,
                         .rules = {},
                         .defaultButton = "Command1",
                         .firstFocus = "Text1"};

constexpr Colour kInputText = 0x1A1A1A;

struct Events : FormEvents, ControlEvents {
  std::function<void()> onClick;
  std::vector<std::string> rows;
  int clicks = 0, escapes = 0, closes = 0;
  void closeRequested() override { ++closes; }
  void escapePressed() override { ++escapes; }
  void clicked() override {
    ++clicks;
    if (onClick) onClick();
  }
  std::string_view cellText(int row, int) override {
    return row >= 0 && row < static_cast<int>(rows.size()) ? std::string_view(rows[static_cast<std::size_t>(row)]) : "";
  }
};

struct ComboBox : testing::Test {
  MessageLoop loop;
  FormScreen screen{loop};
  Events formEvents, events, buttonEvents, textEvents;
  std::shared_ptr<FormPeer> form = screen.createForm(kLayout, formEvents);
  std::shared_ptr<ControlPeer> text = form->createControl(kControls[0], textEvents);
  std::shared_ptr<ControlPeer> combo = form->createControl(kControls[1], events);
  std::shared_ptr<ControlPeer> button = form->createControl(kControls[2], buttonEvents);
  HWND Combo1 = dynamic_cast<ControlWindow&>(*combo).window();

  ComboBox() {
    for (const auto& control : {text, combo}) control->setColours({0xFFFFFF, kInputText});
    form->show(false);
    loop.yield();
    fill({"Nokia", "Samsung", "Siemens", "Motorola"});
  }
  void fill(std::vector<std::string> rows) {
    combo->setRowCount(0);
    events.rows = std::move(rows);
    combo->setRowCount(static_cast<int>(events.rows.size()));
  }
  LRESULT ask(UINT number, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageA(Combo1, number, wParam, lParam);
  }
  std::string shown() const {
    char buffer[100] = "?";
    ask(WM_GETTEXT, sizeof buffer, reinterpret_cast<LPARAM>(buffer));
    return buffer;
  }
  std::string entry(int row) const {
    char buffer[100] = "?";
    ask(CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(buffer));
    return buffer;
  }
  // As a script makes a choice that is to be noticed.
  void choose(int row) const {
    ask(CB_SETCURSEL, static_cast<WPARAM>(row));
    ::SendMessageA(screen.mainWindow(), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(Combo1), CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(Combo1));
  }
  bool dropped() const { return ask(CB_GETDROPPEDSTATE) != 0; }
  HWND list() const {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ::GetComboBoxInfo(Combo1, &info);
    return info.hwndList;
  }
  // Its list as it drops down, without the edges: width and height.
  SIZE drops() const {
    ask(CB_SHOWDROPDOWN, TRUE);
    RECT area{};
    ::GetClientRect(list(), &area);
    ask(CB_SHOWDROPDOWN, FALSE);
    return {area.right, area.bottom};
  }
  int scaled(int length) { return screen.metrics().scaled(length); }
  // A key as the message loop hands it on, to the control that has the focus.
  void key(WPARAM code, UINT down = WM_KEYDOWN) {
    constexpr LPARAM kAlt = 1 << 29;
    MSG message{::GetFocus(), down, code, down == WM_SYSKEYDOWN ? kAlt | 1 : 1, 0, {}};
    if (!::IsDialogMessageA(screen.mainWindow(), &message)) ::DispatchMessageA(&message);
  }
  WindowDrawing drawing() {
    RECT area{};
    ::GetClientRect(Combo1, &area);
    return {Combo1, static_cast<int>(area.right), static_cast<int>(area.bottom)};
  }
};

TEST_F(ComboBox, IsThePlatformsOwnDropDownListWithItsEntries) {
  char name[32];
  ::GetClassNameA(Combo1, name, sizeof name);
  EXPECT_STREQ(name, "ComboBox");
  const LONG style = ::GetWindowLongA(Combo1, GWL_STYLE);
  EXPECT_EQ(style & CBS_DROPDOWNLIST, CBS_DROPDOWNLIST);
  EXPECT_TRUE(style & CBS_HASSTRINGS);
  EXPECT_TRUE(style & WS_TABSTOP);
  EXPECT_EQ(ask(CB_GETCOUNT), 4);
  EXPECT_EQ(entry(0), "Nokia");
  EXPECT_EQ(entry(3), "Motorola");
}

TEST_F(ComboBox, ItsTextIsThatOfTheSelectedEntry) {
  EXPECT_EQ(shown(), "");
  combo->selectRow(1);
  EXPECT_EQ(shown(), "Samsung");
  combo->selectRow(-1);
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(events.clicks, 0);
}

TEST_F(ComboBox, ASelectionThatAScriptMakesIsSeenAndNotReported) {
  EXPECT_EQ(combo->selectedRow(), -1);
  ask(CB_SETCURSEL, 2);
  EXPECT_EQ(combo->selectedRow(), 2);
  ask(CB_SETCURSEL, static_cast<WPARAM>(-1));
  EXPECT_EQ(combo->selectedRow(), -1);
  EXPECT_EQ(events.clicks, 0);
}

TEST_F(ComboBox, AChoiceIsReportedOnceWithTheSelectionOnTheScreen) {
  events.onClick = [this] { EXPECT_EQ(combo->selectedRow(), 1); };
  choose(1);
  EXPECT_EQ(events.clicks, 1);
  choose(1);
  EXPECT_EQ(events.clicks, 2) << "chosen already";
  combo->setEnabled(false);
  choose(1);
  EXPECT_EQ(events.clicks, 2);
}

TEST_F(ComboBox, KeysChooseAndEveryChoiceIsReported) {
  combo->focus();
  key(VK_DOWN);
  EXPECT_EQ(shown(), "Nokia");
  key(VK_DOWN);
  EXPECT_EQ(shown(), "Samsung");
  key(VK_UP);
  EXPECT_EQ(shown(), "Nokia");
  key(VK_END);
  EXPECT_EQ(shown(), "Motorola");
  EXPECT_EQ(events.clicks, 4);
  key('s', WM_CHAR);
  EXPECT_EQ(shown(), "Samsung");
  key('s', WM_CHAR);
  EXPECT_EQ(shown(), "Siemens");
  EXPECT_EQ(events.clicks, 6);
  EXPECT_EQ(::GetFocus(), Combo1);
}

TEST_F(ComboBox, TheListOpensAndClosesByKey) {
  combo->focus();
  key(VK_F4);
  EXPECT_TRUE(dropped());
  key(VK_F4);
  EXPECT_FALSE(dropped());
  key(VK_DOWN, WM_SYSKEYDOWN);
  EXPECT_TRUE(dropped());
  key(VK_UP, WM_SYSKEYDOWN);
  EXPECT_FALSE(dropped());
  EXPECT_EQ(events.clicks, 0);
  key(VK_F4);
  text->focus();
  EXPECT_FALSE(dropped()) << "the focus has gone";
}

TEST_F(ComboBox, EscClosesTheListAndOnlyThenTheForm) {
  combo->focus();
  key(VK_F4);
  key(VK_ESCAPE);
  EXPECT_FALSE(dropped());
  EXPECT_EQ(formEvents.escapes, 0);
  key(VK_ESCAPE);
  EXPECT_EQ(formEvents.escapes, 1);
}

TEST_F(ComboBox, EnterTakesTheEntryOfAnOpenListAndOnlyThenPressesTheDefaultButton) {
  combo->focus();
  key(VK_F4);
  key(VK_DOWN);
  key(VK_RETURN);
  EXPECT_FALSE(dropped());
  EXPECT_EQ(shown(), "Nokia");
  EXPECT_EQ(events.clicks, 1);
  EXPECT_EQ(buttonEvents.clicks, 0);
  key(VK_RETURN);
  EXPECT_EQ(buttonEvents.clicks, 1);
}

TEST_F(ComboBox, AltF4IsLeftToTheForm) {
  combo->focus();
  key(VK_F4, WM_SYSKEYDOWN);
  loop.yield();
  EXPECT_EQ(formEvents.closes, 1);
}

TEST_F(ComboBox, AddingKeepsTheSelectionAndEmptyingLosesIt) {
  combo->selectRow(1);
  events.rows.emplace_back("Sony Ericsson");
  combo->setRowCount(5);
  EXPECT_EQ(entry(4), "Sony Ericsson");
  EXPECT_EQ(combo->selectedRow(), 1);
  fill(events.rows);
  EXPECT_EQ(ask(CB_GETCOUNT), 5);
  EXPECT_EQ(combo->selectedRow(), -1);
  EXPECT_EQ(events.clicks, 0);
}

TEST_F(ComboBox, AnEmptyListCanBeOpenedAndHasNothingToChoose) {
  fill({});
  combo->focus();
  key(VK_F4);
  EXPECT_TRUE(dropped());
  loop.yield();
  key(VK_DOWN);
  key(VK_RETURN);
  key('s', WM_CHAR);
  EXPECT_EQ(combo->selectedRow(), -1);
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(events.clicks, 0);
}

TEST_F(ComboBox, TheListMayBeFilledAnewWhileItIsOpen) {
  combo->selectRow(1);
  combo->focus();
  key(VK_F4);
  for (int i = 0; i < 20; ++i) {
    fill(i % 3 ? std::vector<std::string>{"one", "two"} : std::vector<std::string>(40, "many"));
    loop.yield();
    EXPECT_TRUE(dropped());
    EXPECT_EQ(combo->selectedRow(), -1);
  }
  fill({});
  loop.yield();
  fill({"one", "two"});
  key(VK_DOWN);
  EXPECT_EQ(shown(), "one");
  key(VK_ESCAPE);
  EXPECT_FALSE(dropped());
  EXPECT_EQ(events.clicks, 1);
}

TEST_F(ComboBox, AFormMayGoInsideTheClick) {
  events.onClick = [this] {
    text.reset();
    combo.reset();
    button.reset();
    form->destroy();
    form.reset();
  };
  const HWND dropDown = list();
  ask(CB_SHOWDROPDOWN, TRUE);
  choose(1);
  EXPECT_FALSE(::IsWindow(Combo1));
  EXPECT_FALSE(::IsWindow(dropDown));
}

TEST_F(ComboBox, TheBoxIsAsHighAsItsPlaceAndStaysSo) {
  const auto size = [this] {
    RECT area{};
    ::GetWindowRect(Combo1, &area);
    return std::pair(area.right - area.left, area.bottom - area.top);
  };
  const RECT place = screen.metrics().scaled(kControls[1].place);
  const std::pair wanted(place.right, place.bottom - place.top);
  EXPECT_EQ(size(), wanted);
  drops();
  EXPECT_EQ(size(), wanted);
  fill(std::vector<std::string>(300, "row"));
  drops();
  EXPECT_EQ(size(), wanted);
}

TEST_F(ComboBox, TheListIsAsHighAsItsRowsUpToTwelve) {
  const int row = scaled(24);
  EXPECT_EQ(drops().cy, 4 * row);
  fill(std::vector<std::string>(300, "row"));
  EXPECT_EQ(drops().cy, 12 * row);
  EXPECT_TRUE(::GetWindowLongA(list(), GWL_STYLE) & WS_VSCROLL);
  fill({});
  EXPECT_EQ(drops().cy, row);
  fill({"one", "two"});
  EXPECT_EQ(drops().cy, 2 * row);
}

TEST_F(ComboBox, TheListIsAsWideAsItsLongestEntry) {
  const LONG box = scaled(111) - 2;
  EXPECT_EQ(drops().cx, box) << "no narrower than the box";
  fill({"short", std::string(40, 'm')});
  const LONG wide = drops().cx;
  EXPECT_GT(wide, 2 * box);
  fill({"short", std::string(20, 'm')});
  EXPECT_GT(drops().cx, box);
  EXPECT_LT(drops().cx, wide);
  fill({"short", std::string(400, 'm')});
  EXPECT_EQ(drops().cx, scaled(480) - 2);
}

TEST_F(ComboBox, TheBoxIsAnInputWithAnArrow) {
  EXPECT_EQ(drawing().at(0, 0), palette::kEdge);
  EXPECT_EQ(drawing().at(scaled(4), scaled(4)), palette::kWhite);
  EXPECT_EQ(drawing().count(kInputText), 0);
  EXPECT_GT(drawing().count(palette::kText), 0) << "the arrow";
  combo->selectRow(0);
  EXPECT_GT(drawing().count(kInputText), 0);
  combo->focus();
  EXPECT_EQ(drawing().at(1, 1), palette::kAccent);
}

TEST_F(ComboBox, WithoutASelectionItsCaptionIsShownMuted) {
  constexpr ControlLayout prompting{
      .name = "Combo2", .kind = ControlKind::comboBox, .caption = "Choose the Brand", .place = {0, 120, 150, 24}};
  Events others;
  const std::shared_ptr<ControlPeer> box = form->createControl(prompting, others);
  box->setColours({0xFFFFFF, kInputText});
  const auto drawn = [&] {
    return WindowDrawing(dynamic_cast<ControlWindow&>(*box).window(), scaled(150), scaled(24));
  };
  EXPECT_GT(drawn().count(palette::kMuted), 0);
  EXPECT_EQ(drawn().count(kInputText), 0);
  others.rows = {"Nokia"};
  box->setRowCount(1);
  box->selectRow(0);
  EXPECT_EQ(drawn().count(palette::kMuted), 0);
  EXPECT_GT(drawn().count(kInputText), 0);
}

TEST_F(ComboBox, ADisabledBoxHasTheDisabledGroundAndMutedText) {
  combo->selectRow(0);
  combo->setEnabled(false);
  EXPECT_EQ(drawing().at(0, 0), palette::kHairline);
  EXPECT_EQ(drawing().at(scaled(4), scaled(4)), palette::kDisabledInput);
  EXPECT_EQ(drawing().count(kInputText), 0);
  EXPECT_GT(drawing().count(palette::kMuted), 0);
  combo->setEnabled(true);
  EXPECT_EQ(drawing().at(scaled(4), scaled(4)), palette::kWhite);
}

TEST_F(ComboBox, ALongTextEndsBeforeTheArrow) {
  fill({"", std::string(60, 'm')});
  const int arrow = scaled(111 - 20);
  const auto ink = [&] {
    int found = 0;
    const WindowDrawing drawn = drawing();
    for (int y = 0; y < drawn.height; ++y) {
      for (int x = arrow; x < drawn.width; ++x) found += drawn.at(x, y) == kInputText;
    }
    return found;
  };
  combo->selectRow(1);
  EXPECT_EQ(ink(), 0);
}

// The platform moves the selection with the pointer, and back when nothing is chosen.
TEST_F(ComboBox, ItsSelectionAndTextStayWhileThePointerIsInTheList) {
  combo->selectRow(0);
  ask(CB_SHOWDROPDOWN, TRUE);
  const int before = drawing().count(kInputText);
  ::SendMessageA(list(), LB_SETCURSEL, 3, 0);
  EXPECT_EQ(combo->selectedRow(), 0);
  EXPECT_EQ(drawing().count(kInputText), before);
  ask(CB_SETCURSEL, 2);
  EXPECT_EQ(combo->selectedRow(), 2) << "by a script";
  fill({"Nokia", "Samsung"});
  EXPECT_EQ(combo->selectedRow(), -1) << "emptied";
  EXPECT_EQ(drawing().count(kInputText), 0);
}

TEST_F(ComboBox, EnterTakesTheRowUnderThePointerAndReportsItOnce) {
  combo->selectRow(0);
  combo->focus();
  key(VK_F4);
  ::SendMessageA(list(), LB_SETCURSEL, 3, 0);
  events.onClick = [this] { EXPECT_EQ(combo->selectedRow(), 3); };
  key(VK_RETURN);
  loop.yield();
  EXPECT_FALSE(dropped());
  EXPECT_EQ(shown(), "Motorola");
  EXPECT_EQ(events.clicks, 1);
  EXPECT_EQ(buttonEvents.clicks, 0);
}

TEST_F(ComboBox, EscLeavesTheRowUnderThePointer) {
  combo->selectRow(1);
  combo->focus();
  key(VK_F4);
  ::SendMessageA(list(), LB_SETCURSEL, 3, 0);
  key(VK_ESCAPE);
  loop.yield();
  EXPECT_FALSE(dropped());
  EXPECT_EQ(combo->selectedRow(), 1);
  EXPECT_EQ(shown(), "Samsung");
  EXPECT_EQ(events.clicks, 0);
}

TEST_F(ComboBox, AClickInTheListIsReportedOnce) {
  combo->selectRow(0);
  combo->focus();
  key(VK_F4);
  loop.yield();
  RECT row{};
  ::SendMessageA(list(), LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
  const LPARAM place = MAKELPARAM((row.left + row.right) / 2, (row.top + row.bottom) / 2);
  for (const UINT number : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP}) ::SendMessageA(list(), number, 0, place);
  loop.yield();
  EXPECT_FALSE(dropped());
  EXPECT_EQ(shown(), "Siemens");
  EXPECT_EQ(events.clicks, 1);
}

// The platform would draw parts of it, in its own look.
TEST_F(ComboBox, AChangeOfStateIsDrawnWithTheNextPaintAndByUs) {
  const std::function<void()> changes[] = {
      [this] { combo->selectRow(1); },
      [this] { combo->setRowCount(0); },
      [this] { combo->focus(); },
      [this] { text->focus(); },
      [this] {
        ask(CB_SHOWDROPDOWN, TRUE);
        ::UpdateWindow(Combo1);
        ask(CB_SHOWDROPDOWN, FALSE);
      },
      [this] { choose(-1); },
      [this] { ::EnableWindow(Combo1, FALSE); },
  };
  RECT whole{}, next{};
  ::GetClientRect(Combo1, &whole);
  for (const auto& change : changes) {
    ::UpdateWindow(Combo1);
    ASSERT_FALSE(::GetUpdateRect(Combo1, nullptr, FALSE));
    change();
    ::GetUpdateRect(Combo1, &next, FALSE);
    EXPECT_TRUE(::EqualRect(&next, &whole)) << "change " << &change - changes;
  }
}

TEST_F(ComboBox, TheSelectedRowOfTheListHasAGroundOfItsOwn) {
  combo->selectRow(1);
  ask(CB_SHOWDROPDOWN, TRUE);
  const WindowDrawing drawn(list(), scaled(100), 4 * scaled(24));
  EXPECT_EQ(drawn.at(1, scaled(12)), palette::kWhite);
  EXPECT_EQ(drawn.at(1, scaled(24 + 12)), palette::kSelected);
  EXPECT_GT(drawn.count(kInputText), 0);
}

TEST_F(ComboBox, TheEdgeOfTheListIsOurs) {
  ask(CB_SHOWDROPDOWN, TRUE);
  const WindowDrawing drawn(list(), scaled(50), scaled(50));
  ::SendMessageA(list(), WM_PRINT, reinterpret_cast<WPARAM>(drawn.dc), PRF_NONCLIENT);
  EXPECT_EQ(drawn.at(0, 0), palette::kEdge);
  EXPECT_EQ(drawn.at(0, scaled(24)), palette::kEdge);
}

TEST_F(ComboBox, OnlyTheGroundBelowTheRowsIsErased) {
  constexpr COLORREF kGround = RGB(1, 2, 3), kBefore = RGB(9, 9, 9);
  combo->setColours({kGround, kInputText});
  const WindowDrawing drawn(list(), scaled(50), scaled(200));
  const auto erase = [&] {
    win32::fill(drawn.dc, {0, 0, drawn.width, drawn.height}, kBefore);
    ::SendMessageA(list(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(drawn.dc), 0);
  };
  ask(CB_SHOWDROPDOWN, TRUE);
  erase();
  EXPECT_EQ(drawn.count(kGround), 0);
  fill({"one"});
  erase();
  EXPECT_EQ(drawn.at(1, scaled(24) - 1), kBefore);
  EXPECT_EQ(drawn.at(1, scaled(24)), kGround);
  EXPECT_NE(ask(WM_CTLCOLORLISTBOX, reinterpret_cast<WPARAM>(drawn.dc), reinterpret_cast<LPARAM>(list())), 0);
  EXPECT_EQ(::GetBkColor(drawn.dc), kGround) << "what else the platform may erase";
}

}  // namespace
}  // namespace pelvaro::win32
