// Lists with headings as windows: what scripts, the keyboard, the mouse and the eye find.
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
    {.name = "Text1", .kind = ControlKind::textBox, .caption = "", .place = {8, 40, 90, 24}},
    {.name = "ListView2", .kind = ControlKind::listView, .caption = "", .place = {8, 80, 300, 150}, .headings = true},
    {.name = "Command1", .kind = ControlKind::commandButton, .caption = "OK", .place = {8, 240, 90, 28}},
};
const FormLayout kLayout{.name = "Lists",
                         .title = "Lists",
                         .width = 400,
                         .height = 300,
                         .controls = kControls,
                         .rules = {},
                         .defaultButton = "Command1",
                         .firstFocus = "ListView2"};

// The first column and the last are not to be seen.
const std::vector<ListColumn> kColumns{{"Place", 0}, {"Operator", 101}, {"APN", 150}, {"User Name", 90}, {"Code", 0}};

constexpr int kRow = 24, kHeader = 24;  // at 96 dpi
constexpr Colour kInk = palette::kText;

struct Events : FormEvents, ControlEvents {
  std::vector<std::vector<std::string>> rows;
  std::string log;
  std::function<void()> onActivate;
  void mousePressed(MouseButton button, int, int) override { log += button == MouseButton::right ? "right " : ""; }
  void mouseReleased(MouseButton button, int, int) override { log += button == MouseButton::right ? "released " : ""; }
  void clicked() override { log += "clicked "; }
  void itemClicked() override { log += "item "; }
  void itemActivated() override {
    log += "activated ";
    if (onActivate) onActivate();
  }
  std::string_view cellText(int row, int column) override {
    if (row < 0 || row >= static_cast<int>(rows.size())) return {};
    const auto& cells = rows[static_cast<std::size_t>(row)];
    return column < static_cast<int>(cells.size()) ? std::string_view(cells[static_cast<std::size_t>(column)]) : "";
  }
};

struct HeadedList : testing::Test {
  MessageLoop loop;
  FormScreen screen{loop};
  Events formEvents, events, buttonEvents, textEvents;
  std::shared_ptr<FormPeer> form = screen.createForm(kLayout, formEvents);
  std::shared_ptr<ControlPeer> text = form->createControl(kControls[0], textEvents);
  std::shared_ptr<ControlPeer> list = form->createControl(kControls[1], events);
  std::shared_ptr<ControlPeer> button = form->createControl(kControls[2], buttonEvents);
  HWND ListView2 = dynamic_cast<ControlWindow&>(*list).window();

  HeadedList() {
    list->setColours({palette::kWhite, kInk});
    list->setColumns(kColumns);
    form->show(false);
    loop.yield();
    fill({{"Lisbon", "Norline", "internet.example", "user", "7"},
          {"Lisbon", "Telvira", "data.example", "guest", "8"},
          {"Lisbon", "Marisol", "", "", "9"}});
    list->focus();
    loop.yield();
  }
  void fill(std::vector<std::vector<std::string>> rows) {
    events.rows = std::move(rows);
    list->setRowCount(static_cast<int>(events.rows.size()));
  }
  LRESULT ask(UINT number, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageA(ListView2, number, wParam, lParam);
  }
  HWND header() const { return reinterpret_cast<HWND>(ask(LVM_GETHEADER)); }
  // As a script reads a cell.
  std::string cell(int row, int column) const {
    char buffer[300] = "?";
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = buffer;
    item.cchTextMax = sizeof buffer;
    ask(LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return buffer;
  }
  std::string heading(int column) const {
    char buffer[100] = "?";
    LVCOLUMNA asked{};
    asked.mask = LVCF_TEXT;
    asked.pszText = buffer;
    asked.cchTextMax = sizeof buffer;
    ask(LVM_GETCOLUMNA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&asked));
    return buffer;
  }
  LONG width(int column) const { return static_cast<LONG>(ask(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column))); }
  RECT place(int row) const {
    RECT area{LVIR_BOUNDS, 0, 0, 0};
    ask(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
    return area;
  }
  int scaled(int length) { return screen.metrics().scaled(length); }
  // A key as the message loop hands it on, to the control that has the focus.
  void key(WPARAM code) {
    ::PostMessageA(::GetFocus(), WM_KEYDOWN, code, 1);
    loop.yield();
  }
  // Two clicks of the mouse in the middle of a row, at a distance from the left edge.
  void doubleClick(int row, int x) {
    const RECT area = place(row);
    const LPARAM point = MAKELPARAM(x, (area.top + area.bottom) / 2);
    for (const UINT press : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
      // The release is queued first: the platform's procedure waits for it inside the press.
      ::PostMessageA(ListView2, WM_LBUTTONUP, 0, point);
      ::SendMessageA(ListView2, press, MK_LBUTTON, point);
      loop.yield();
    }
  }
  void close() {
    text.reset();
    list.reset();
    button.reset();
    form->destroy();
    form.reset();
  }
  WindowDrawing drawing(HWND window) const {
    RECT area{};
    ::GetClientRect(window, &area);
    return {window, static_cast<int>(area.right), static_cast<int>(area.bottom)};
  }
};

TEST_F(HeadedList, GivesEveryCellAlsoOfColumnsThatAreNotSeen) {
  EXPECT_EQ(ask(LVM_GETITEMCOUNT), 3);
  EXPECT_EQ(::SendMessageA(header(), HDM_GETITEMCOUNT, 0, 0), 5);
  EXPECT_EQ(cell(0, 0), "Lisbon");
  EXPECT_EQ(cell(0, 1), "Norline");
  EXPECT_EQ(cell(1, 2), "data.example");
  EXPECT_EQ(cell(2, 3), "");
  EXPECT_EQ(cell(2, 4), "9");
}

TEST_F(HeadedList, ItsColumnsHaveTheirHeadingsAndWidths) {
  for (int i = 0; i < 5; ++i) EXPECT_EQ(heading(i), kColumns[static_cast<std::size_t>(i)].heading);
  EXPECT_EQ(width(0), 0);
  EXPECT_EQ(width(1), scaled(101));
  EXPECT_EQ(width(2), scaled(251) - scaled(101));
  EXPECT_EQ(width(3), scaled(341) - scaled(251));
  EXPECT_EQ(width(4), 0);
  list->setColumns(std::vector<ListColumn>{{"One", 60}, {"Two", 70}});
  EXPECT_EQ(::SendMessageA(header(), HDM_GETITEMCOUNT, 0, 0), 2);
  EXPECT_EQ(heading(1), "Two");
  EXPECT_EQ(width(1), scaled(130) - scaled(60));
  EXPECT_EQ(ask(LVM_GETITEMCOUNT), 3) << "the rows stay";
  EXPECT_EQ(cell(1, 1), "Telvira");
}

TEST_F(HeadedList, TheHeaderStandsOverTheRowsAndIsAsHighAsOne) {
  RECT area{};
  ::GetClientRect(header(), &area);
  EXPECT_EQ(area.bottom, scaled(kHeader) + screen.metrics().lineWidth());
  EXPECT_EQ(place(0).top, area.bottom);
  EXPECT_EQ(place(0).bottom - place(0).top, scaled(kRow));
  EXPECT_EQ(place(2).top - place(1).top, scaled(kRow));
  EXPECT_FALSE(::GetWindowLongA(header(), GWL_STYLE) & HDS_BUTTONS) << "nothing is sorted";
}

TEST_F(HeadedList, AColumnThatIsNotSeenStaysSo) {
  ask(LVM_SETCOLUMNWIDTH, 4, scaled(50));
  EXPECT_EQ(width(4), 0);
  ask(LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE);
  EXPECT_EQ(width(0), 0);
  ask(LVM_SETCOLUMNWIDTH, 1, scaled(50));
  EXPECT_EQ(width(1), scaled(50)) << "the others have the width that the user likes";
}

TEST_F(HeadedList, ScrollsSidewaysWhenTheColumnsAreWider) {
  EXPECT_TRUE(::GetWindowLongA(ListView2, GWL_STYLE) & WS_HSCROLL);
  ask(LVM_SCROLL, static_cast<WPARAM>(scaled(20)), 0);
  EXPECT_EQ(place(0).left, -scaled(20));
  RECT area{};
  ::GetWindowRect(header(), &area);
  ::MapWindowPoints(nullptr, ListView2, reinterpret_cast<POINT*>(&area), 2);
  EXPECT_EQ(area.left, -scaled(20)) << "the header goes with the rows";
  list->setColumns(std::vector<ListColumn>{{"One", 60}});
  EXPECT_FALSE(::GetWindowLongA(ListView2, GWL_STYLE) & WS_HSCROLL);
}

TEST_F(HeadedList, ArrowKeysScrollSidewaysAsFarAsTheColumnsGo) {
  key(VK_RIGHT);
  EXPECT_EQ(place(0).left, -scaled(24));
  for (int i = 0; i < 9; ++i) key(VK_RIGHT);
  RECT area{};
  ::GetClientRect(ListView2, &area);
  EXPECT_EQ(place(0).right, area.right);
  for (int i = 0; i < 9; ++i) key(VK_LEFT);
  EXPECT_EQ(place(0).left, 0);
  list->setColumns(std::vector<ListColumn>{{"One", 60}});
  key(VK_RIGHT);
  EXPECT_EQ(place(0).left, 0);
  EXPECT_EQ(events.log, "") << "no row is chosen by it";
}

TEST_F(HeadedList, OtherRowsBeginAtTheFirst) {
  const auto many = [](int count) { return std::vector<std::vector<std::string>>(static_cast<std::size_t>(count)); };
  fill(many(100'000));
  ask(LVM_ENSUREVISIBLE, 99'999);
  EXPECT_GT(ask(LVM_GETTOPINDEX), 90'000);
  fill(many(100'000));
  list->selectRow(0);
  list->selectRow(-1);
  EXPECT_EQ(ask(LVM_GETTOPINDEX), 0);
  EXPECT_EQ(events.log, "") << "and nobody hears of it";
}

TEST_F(HeadedList, ADoubleClickOnARowActivatesItOnce) {
  doubleClick(1, scaled(40));
  EXPECT_EQ(events.log, "item activated ");
  EXPECT_EQ(list->selectedRow(), 1);
  events.log.clear();
  doubleClick(2, scaled(250));
  EXPECT_EQ(events.log, "item activated ") << "on any cell";
}

TEST_F(HeadedList, ADoubleClickBelowTheRowsActivatesNothing) {
  list->selectRow(1);
  const RECT last = place(2);
  const LPARAM point = MAKELPARAM(scaled(40), last.bottom + scaled(10));
  for (const UINT press : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
    ::PostMessageA(ListView2, WM_LBUTTONUP, 0, point);
    ::SendMessageA(ListView2, press, MK_LBUTTON, point);
    loop.yield();
  }
  EXPECT_EQ(events.log, "");
}

TEST_F(HeadedList, EnterActivatesTheSelectedRowAndPressesNoButton) {
  key(VK_DOWN);
  key(VK_DOWN);
  const int row = list->selectedRow();
  EXPECT_GE(row, 0);
  events.log.clear();
  key(VK_RETURN);
  EXPECT_EQ(events.log, "activated ");
  EXPECT_EQ(buttonEvents.log, "");
  EXPECT_EQ(list->selectedRow(), row);
}

TEST_F(HeadedList, EnterPressesTheDefaultButtonWhileNoRowIsSelected) {
  key(VK_RETURN);
  EXPECT_EQ(events.log, "");
  EXPECT_EQ(buttonEvents.log, "clicked ");
  buttonEvents.log.clear();
  list->selectRow(1);
  text->focus();
  key(VK_RETURN);
  EXPECT_EQ(events.log, "") << "the focus is elsewhere";
  EXPECT_EQ(buttonEvents.log, "clicked ");
}

TEST_F(HeadedList, AnActivationThatTheListReportsByItselfIsRaised) {
  NMITEMACTIVATE activation{};
  activation.hdr = {ListView2, static_cast<UINT_PTR>(::GetDlgCtrlID(ListView2)), static_cast<UINT>(LVN_ITEMACTIVATE)};
  const auto notify = [&] {
    ::SendMessageA(screen.mainWindow(), WM_NOTIFY, activation.hdr.idFrom, reinterpret_cast<LPARAM>(&activation));
  };
  notify();
  EXPECT_EQ(events.log, "") << "no row is selected";
  list->selectRow(2);
  notify();
  EXPECT_EQ(events.log, "activated ");
}

TEST_F(HeadedList, AFormMayGoInsideTheActivation) {
  events.onActivate = [this] { close(); };
  doubleClick(1, scaled(40));
  EXPECT_EQ(events.log, "item activated ");
  EXPECT_FALSE(::IsWindow(ListView2));
}

TEST_F(HeadedList, AFormMayGoInsideTheActivationByKey) {
  events.onActivate = [this] { close(); };
  list->selectRow(0);
  key(VK_RETURN);
  EXPECT_EQ(events.log, "activated ");
  EXPECT_FALSE(::IsWindow(ListView2));
}

TEST_F(HeadedList, KeysChooseRows) {
  key(VK_END);
  EXPECT_EQ(list->selectedRow(), 2);
  key(VK_HOME);
  EXPECT_EQ(list->selectedRow(), 0);
  key(VK_DOWN);
  EXPECT_EQ(list->selectedRow(), 1);
  key(VK_UP);
  EXPECT_EQ(list->selectedRow(), 0);
  EXPECT_EQ(events.log, "item item item item ");
  ::SendMessageA(ListView2, WM_CHAR, 'm', 1);
  EXPECT_EQ(list->selectedRow(), 2) << "by the first column that is seen";
}

TEST_F(HeadedList, ARightClickIsReportedAtItsRelease) {
  const LPARAM point = MAKELPARAM(scaled(150), place(1).top + 5);
  ::PostMessageA(ListView2, WM_RBUTTONUP, 0, point);
  ::SendMessageA(ListView2, WM_RBUTTONDOWN, MK_RBUTTON, point);
  loop.yield();
  EXPECT_EQ(events.log, "right item released ");
  EXPECT_EQ(list->selectedRow(), 1);
  events.log.clear();
  ::SendMessageA(ListView2, WM_CONTEXTMENU, 0, -1);
  EXPECT_EQ(events.log, "right item released ") << "the menu key";
}

TEST_F(HeadedList, ARowCountOfZeroAndAColumnLessListAreDrawn) {
  list->setColumns({});
  EXPECT_EQ(cell(0, 0), "Lisbon");
  loop.yield();
  fill({});
  loop.yield();
  EXPECT_EQ(drawing(ListView2).count(kInk), 0);
}

TEST_F(HeadedList, TheHeaderIsTintedWithTextsAndRules) {
  const WindowDrawing drawn = drawing(header());
  const int line = screen.metrics().lineWidth();
  EXPECT_EQ(drawn.at(scaled(4), scaled(4)), palette::kTint);
  EXPECT_EQ(drawn.at(scaled(4), drawn.height - 1), palette::kHairline);
  EXPECT_EQ(drawn.at(scaled(4), drawn.height - line - 1), palette::kTint);
  EXPECT_EQ(drawn.at(scaled(101) - 1, scaled(4)), palette::kHairline);
  EXPECT_EQ(drawn.at(scaled(101), scaled(4)), palette::kTint);
  EXPECT_EQ(drawn.at(scaled(251) - 1, scaled(4)), palette::kHairline);
  EXPECT_EQ(drawn.at(0, scaled(4)), palette::kTint) << "no rule of the column that is not seen";
  EXPECT_GT(drawn.count(kInk), 0);
}

TEST_F(HeadedList, TheSelectedRowIsDrawnOverTheWholeWidth) {
  list->setColumns(std::vector<ListColumn>{{"", 0}, {"Operator", 100}});
  list->selectRow(1);
  const RECT area = place(1);
  const WindowDrawing drawn = drawing(ListView2);
  EXPECT_EQ(drawn.at(2, area.top + scaled(3)), palette::kSelected);
  EXPECT_EQ(drawn.at(scaled(200), area.top + scaled(3)), palette::kSelected);
  EXPECT_EQ(drawn.at(scaled(200), area.top), palette::kSelectedEdge);
  EXPECT_EQ(drawn.at(drawn.width - 1, area.top + scaled(3)), palette::kSelectedEdge);
  EXPECT_EQ(drawn.at(scaled(200), area.top - 2), palette::kWhite);
}

// The ink of a row between two distances from the left edge.
int inkOf(const WindowDrawing& drawn, const RECT& row, int left, int right) {
  int found = 0;
  for (LONG y = row.top; y < row.bottom; ++y) {
    for (int x = left; x < right; ++x) found += drawn.at(x, static_cast<int>(y)) == kInk;
  }
  return found;
}

TEST_F(HeadedList, EveryCellIsDrawnInItsColumnAndCutThere) {
  const std::string longest(60, 'm');
  fill({{longest, longest, "", "", longest}, {"", "", longest, "", ""}});
  const WindowDrawing drawn = drawing(ListView2);
  EXPECT_EQ(inkOf(drawn, place(0), 0, scaled(8)), 0);
  EXPECT_GT(inkOf(drawn, place(0), scaled(8), scaled(95)), 0);
  EXPECT_EQ(inkOf(drawn, place(0), scaled(96), drawn.width), 0);
  EXPECT_EQ(inkOf(drawn, place(1), 0, scaled(108)), 0);
  EXPECT_GT(inkOf(drawn, place(1), scaled(109), scaled(245)), 0);
  EXPECT_EQ(inkOf(drawn, place(1), scaled(246), drawn.width), 0);
}

TEST_F(HeadedList, CellsAreDrawnWhereTheyAreScrolledTo) {
  fill({{"", "mmmm", "", "", ""}});
  ask(LVM_SCROLL, static_cast<WPARAM>(scaled(20)), 0);
  const WindowDrawing drawn = drawing(ListView2);
  EXPECT_GT(inkOf(drawn, place(0), 0, scaled(20)), 0);
  EXPECT_EQ(inkOf(drawn, place(0), scaled(81), drawn.width), 0);
}

}  // namespace
}  // namespace pelvaro::win32
