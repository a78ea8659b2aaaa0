// The glue to the system, tried for real: hidden window and hook, registry, libraries of the system folder, forms and
// controls as windows that another program sees.
#include <gtest/gtest.h>

#include <string>

#include "platform/win32/dial_event_window.h"
#include "platform/win32/environment.h"
#include "platform/win32/form_window.h"
#include "platform/win32/registry.h"
#include "platform/win32/system_library.h"

namespace pelvaro::win32 {
namespace {

// As another program reads a control's name.
bool hasControlName(HWND window, const char* name) {
  const auto atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(::GetPropA(window, "ControlName")));
  return atom != 0 && atom == ::GlobalFindAtomA(name);
}

struct RecordingHook : MessageHook {
  HiddenDialWindow& windows;
  WindowProcedure previous = 0;
  std::uint32_t wanted = 0;
  int seen = 0;
  bool destroyInside = false;

  explicit RecordingHook(HiddenDialWindow& w) : windows(w) {}
  std::intptr_t message(WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                        std::intptr_t lParam) override {
    const WindowProcedure before = previous;
    if (number == wanted) {
      ++seen;
      if (destroyInside) {
        windows.restore(window, before);
        windows.destroy(window);
      }
    }
    return windows.callPrevious(before, window, number, wParam, lParam);
  }
};

struct Glue : testing::Test {
  MessageLoop loop;
  HiddenDialWindow windows{loop};
  RecordingHook hook{windows};
};

TEST_F(Glue, APostedDialEventReachesTheHookOfTheHiddenWindow) {
  const WindowHandle window = windows.create();
  ASSERT_NE(window, 0u);
  char name[32];
  ::GetClassNameA(reinterpret_cast<HWND>(window), name, sizeof name);
  EXPECT_STREQ(name, "Pelvaro.frmDial");
  EXPECT_FALSE(::IsWindowVisible(reinterpret_cast<HWND>(window)));
  hook.wanted = windows.registerMessage("RasDialEvent");
  EXPECT_GE(hook.wanted, 0xC000u);
  hook.previous = windows.hook(window, hook);
  ::PostMessageA(reinterpret_cast<HWND>(window), hook.wanted, 5, 691);
  loop.yield();
  EXPECT_EQ(hook.seen, 1);
  windows.restore(window, hook.previous);
  ::SendMessageA(reinterpret_cast<HWND>(window), hook.wanted, 5, 691);
  EXPECT_EQ(hook.seen, 1);
  windows.destroy(window);
}

TEST_F(Glue, ATimersHandlerBeginsWithAYieldButForATickOfTheSystemsOwn) {
  const WindowHandle window = windows.create();
  hook.wanted = windows.registerMessage("RasDialEvent");
  hook.previous = windows.hook(window, hook);
  const auto post = [&] { ::PostMessageA(reinterpret_cast<HWND>(window), hook.wanted, 5, 0); };
  post();
  loop.tick([&] {
    loop.yieldAtTick();
    EXPECT_EQ(hook.seen, 0) << "such a tick comes when nothing is pending";
    loop.yieldAtTick();
    EXPECT_EQ(hook.seen, 1) << "a handler within the handler";
  });
  post();
  loop.yieldAtTick();
  EXPECT_EQ(hook.seen, 2);
  loop.tick([] {});
  post();
  loop.yieldAtTick();
  EXPECT_EQ(hook.seen, 3);
  windows.restore(window, hook.previous);
  windows.destroy(window);
}

TEST_F(Glue, TheHiddenWindowMayGoInsideItsOwnProcedure) {
  const WindowHandle window = windows.create();
  hook.wanted = 0xCCCD;
  hook.destroyInside = true;
  hook.previous = windows.hook(window, hook);
  ::PostMessageA(reinterpret_cast<HWND>(window), 0xCCCD, 0x2000, 0);
  ::PostMessageA(reinterpret_cast<HWND>(window), 0xCCCD, 0x2001, 0);
  loop.yield();
  EXPECT_EQ(hook.seen, 1) << "events queued behind are lost";
  EXPECT_FALSE(::IsWindow(reinterpret_cast<HWND>(window)));
}

TEST_F(Glue, AnErrorInAnEventIsReportedOnceAndEndsTheProgram) {
  int reports = 0;
  loop.onError = [&](const RuntimeError& error) {
    ++reports;
    EXPECT_EQ(error.report(), "Run-time error '6':\n\nOverflow");
    loop.guarded([] { throw RuntimeError(11, "no event runs behind the report"); });
  };
  loop.guarded([] { throw RuntimeError(6, "Overflow"); });
  EXPECT_EQ(reports, 1);
  EXPECT_TRUE(loop.ended());
  EXPECT_THROW(loop.yield(), ProgramEnded);
  MSG message;
  ::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

TEST(SystemRegistryKeys, SubKeysAreListedInOrderUntilThereAreNoMore) {
  SystemRegistry registry;
  const RegistryKey key = registry.openLocalMachine("SOFTWARE\\Microsoft\\Windows", false);
  ASSERT_NE(key, 0u);
  std::string name;
  bool found = false;
  std::uint32_t index = 0;
  for (; registry.enumerateKey(key, index, name); ++index) found = found || name == "CurrentVersion";
  EXPECT_TRUE(found);
  EXPECT_GT(index, 0u);
  registry.close(key);
  EXPECT_EQ(registry.openLocalMachine("SOFTWARE\\No such key of ours", false), 0u);
  EXPECT_EQ(registry.openLocalMachine("SOFTWARE\\No such key of ours", true), 0u);
}

TEST(SystemEnvironmentFolder, IsTheFolderOfTheRunningProgram) {
  const std::string folder = SystemEnvironment().programFolder();
  ASSERT_FALSE(folder.empty());
  EXPECT_NE(folder.back(), '\\');
  char path[MAX_PATH];
  ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  EXPECT_EQ(std::string(path).substr(0, folder.size()), folder);
}

TEST(SystemLibraries, AFunctionOfTheSystemFolderIsFoundAndCalled) {
  SystemLibrary library("version.dll");
  EXPECT_NE(library.find("GetFileVersionInfoA"), nullptr);
  SystemLibrary kernel("kernel32.dll");
  SystemFunction<DWORD(WINAPI*)()> ticks(kernel, "GetTickCount");
  EXPECT_NE(ticks.call(0), 0u);
}

constexpr ControlLayout kControls[] = {
    {.name = "Label1", .kind = ControlKind::label, .caption = "a & b", .place = {0, 0, 50, 20}},
    {.name = "Image2", .kind = ControlKind::pictureButton, .caption = "Connect", .place = {0, 20, 100, 60}},
    {.name = "ListView1", .kind = ControlKind::listView, .caption = "", .place = {0, 90, 200, 100}},
    {.name = "Text2", .kind = ControlKind::passwordBox, .caption = "", .place = {0, 200, 100, 24}},
    {.name = "Command1", .kind = ControlKind::commandButton, .caption = "OK", .place = {0, 230, 80, 28}},
};
const FormLayout kLayout{.name = "Sample",
                         .title = "Sample",
                         .width = 300,
                         .height = 300,
                         .controls = kControls,
                         .rules = {},
                         .defaultButton = "Command1",
                         .firstFocus = "ListView1"};

struct Events : FormEvents, ControlEvents {
  std::string log;
  std::vector<std::string> rows;
  void activated() override { log += "activated "; }
  void closeRequested() override { log += "close "; }
  void escapePressed() override { log += "escape "; }
  void coloursChanged() override { log += "colours "; }
  void mousePressed(MouseButton button, int, int) override { log += button == MouseButton::right ? "right " : "left "; }
  void mouseReleased(MouseButton, int, int) override { log += "released "; }
  void clicked() override { log += "clicked "; }
  void itemClicked() override { log += "item "; }
  std::string_view cellText(int row, int) override { return rows[static_cast<std::size_t>(row)]; }
};

struct OnScreen : testing::Test {
  MessageLoop loop;
  FormScreen screen{loop};
  Events events;
  std::shared_ptr<FormPeer> form = screen.createForm(kLayout, events);
  std::vector<std::shared_ptr<ControlPeer>> controls;

  OnScreen() {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_ANIMATE_CLASS | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    for (const ControlLayout& row : kControls) controls.push_back(form->createControl(row, events));
    for (const auto& control : controls) control->setColours({0xFFFFFF, 0});
    form->show(false);
    loop.yield();
    events.log.clear();
  }
  HWND child(const char* name) {
    for (HWND w = ::GetWindow(screen.mainWindow(), GW_CHILD); w; w = ::GetWindow(w, GW_HWNDNEXT)) {
      if (hasControlName(w, name)) return w;
    }
    return nullptr;
  }
  static std::string text(HWND window) {
    char buffer[100] = "";
    ::SendMessageA(window, WM_GETTEXT, sizeof buffer, reinterpret_cast<LPARAM>(buffer));
    return buffer;
  }
};

TEST_F(OnScreen, EveryControlIsAChildWindowWithItsNameAndText) {
  for (const ControlLayout& row : kControls) {
    ASSERT_NE(child(row.name), nullptr) << row.name;
    EXPECT_EQ(text(child(row.name)), row.caption);
  }
}

TEST_F(OnScreen, ATextThatAScriptSetsIsTheTruth) {
  ::SendMessageA(child("Label1"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("by a script"));
  EXPECT_EQ(controls[0]->text(), "by a script");
  ::SendMessageA(child("Text2"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("secret"));
  EXPECT_EQ(controls[3]->text(), "secret");
  controls[1]->setText("Hang Up");
  EXPECT_EQ(text(child("Image2")), "Hang Up");
}

TEST_F(OnScreen, ButtonsReactToTheirClickMessage) {
  ::SendMessageA(child("Command1"), BM_CLICK, 0, 0);
  EXPECT_NE(events.log.find("clicked"), std::string::npos);
  events.log.clear();
  ::EnableWindow(child("Command1"), FALSE);
  ::SendMessageA(child("Command1"), BM_CLICK, 0, 0);
  EXPECT_EQ(events.log.find("clicked"), std::string::npos);
}

TEST_F(OnScreen, ASelectionMadeInCodeIsSilentAndOneMadeByAScriptIsAUsers) {
  events.rows = {"one", "two", "three"};
  controls[2]->setRowCount(3);
  controls[2]->selectRow(1);
  EXPECT_EQ(controls[2]->selectedRow(), 1);
  EXPECT_EQ(events.log, "");
  LVITEMA item{};
  item.state = item.stateMask = LVIS_SELECTED;
  ::SendMessageA(child("ListView1"), LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(controls[2]->selectedRow(), 2);
  EXPECT_EQ(events.log, "item ");
  controls[2]->selectRow(-1);
  EXPECT_EQ(controls[2]->selectedRow(), -1);
}

TEST_F(OnScreen, AListGivesTheTextOfEveryRow) {
  events.rows = {"one", std::string(256, 'x')};
  controls[2]->setRowCount(2);
  EXPECT_EQ(::SendMessageA(child("ListView1"), LVM_GETITEMCOUNT, 0, 0), 2);
  char buffer[300];
  LVITEMA item{};
  item.pszText = buffer;
  item.cchTextMax = sizeof buffer;
  ::SendMessageA(child("ListView1"), LVM_GETITEMTEXTA, 1, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(std::string(buffer), std::string(256, 'x'));
  item.cchTextMax = 10;
  ::SendMessageA(child("ListView1"), LVM_GETITEMTEXTA, 1, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(std::string(buffer), std::string(9, 'x'));
}

TEST_F(OnScreen, ALetterKeyFindsTheNextRowThatBeginsWithIt) {
  events.rows = {"Corvanti-Office", "corvanti-home", "Work"};
  controls[2]->setRowCount(3);
  const auto find = [this](const char* what, int after, UINT flags) {
    LVFINDINFOA info{};
    info.flags = flags;
    info.psz = what;
    return ::SendMessageA(child("ListView1"), LVM_FINDITEMA, static_cast<WPARAM>(after),
                          reinterpret_cast<LPARAM>(&info));
  };
  EXPECT_EQ(find("Work", -1, LVFI_STRING), 2);
  EXPECT_EQ(find("CORVANTI-H", -1, LVFI_PARTIAL | LVFI_STRING), 1);
  EXPECT_EQ(find("w", -1, LVFI_PARTIAL | LVFI_STRING | LVFI_WRAP), 2);
  EXPECT_EQ(find("x", -1, LVFI_PARTIAL | LVFI_STRING | LVFI_WRAP), -1);
  EXPECT_EQ(find("Wor", -1, LVFI_STRING), -1) << "not the whole text";
  ::SendMessageA(child("ListView1"), WM_CHAR, 'w', 1);
  EXPECT_EQ(controls[2]->selectedRow(), 2);
}

// What the platform reports of a press with the right button that selects a row.
struct RightPress : OnScreen {
  RightPress() {
    events.rows = {"one", "two"};
    controls[2]->setRowCount(2);
    // The release is queued first: the platform's procedure waits for it inside the press.
    ::PostMessageA(child("ListView1"), WM_RBUTTONUP, 0, MAKELPARAM(20, 30));
    ::SendMessageA(child("ListView1"), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(20, 30));
    loop.yield();
  }
};

TEST_F(RightPress, IsReportedOnceAtTheReleaseAndThenTheReleaseItself) {
  EXPECT_EQ(events.log, "right item released ") << "the menu belongs to the release";
  EXPECT_EQ(controls[2]->selectedRow(), 1);
}

TEST_F(RightPress, ArrowKeysAreHeardAfterIt) {
  events.log.clear();
  ::SendMessageA(child("ListView1"), WM_KEYDOWN, VK_UP, 1);
  EXPECT_EQ(events.log, "item ");
}

TEST_F(OnScreen, ARightPressWhoseReleaseIsLostStillCountsAsAClick) {
  events.rows = {"one", "two"};
  controls[2]->setRowCount(2);
  const HWND list = child("ListView1");
  NMLISTVIEW change{};
  change.hdr = {list, static_cast<UINT_PTR>(::GetDlgCtrlID(list)), static_cast<UINT>(LVN_BEGINRDRAG)};
  // The press selects inside the platform's procedure; a drag begins before the release.
  ::PostMessageA(list, WM_MOUSEMOVE, MK_RBUTTON, MAKELPARAM(90, 60));
  ::PostMessageA(list, WM_RBUTTONUP, 0, MAKELPARAM(90, 60));
  ::SendMessageA(list, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(20, 30));
  ::SendMessageA(screen.mainWindow(), WM_NOTIFY, change.hdr.idFrom, reinterpret_cast<LPARAM>(&change));
  loop.yield();
  EXPECT_NE(events.log.find("item"), std::string::npos) << events.log;
  events.log.clear();
  ::SendMessageA(list, WM_KEYDOWN, VK_UP, 1);
  EXPECT_EQ(events.log, "item ") << "the keys are heard again";
}

HWND tooltipsOf(HWND form) {
  HWND tip = ::FindWindowExA(nullptr, nullptr, TOOLTIPS_CLASSA, nullptr);
  while (tip && ::GetWindow(tip, GW_OWNER) != form) tip = ::FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr);
  return tip;
}

// A tool that stays keeps what the tooltip has hooked to the control's window.
TEST_F(OnScreen, AControlTakesItsTooltipAlong) {
  const HWND tip = tooltipsOf(screen.mainWindow());
  const auto tools = [&] { return ::SendMessageA(tip, TTM_GETTOOLCOUNT, 0, 0); };
  const auto before = tools();
  ASSERT_GE(before, 1);
  controls[1].reset();
  EXPECT_EQ(tools(), before - 1);
}

TEST_F(OnScreen, APictureButtonsTooltipFollowsItsText) {
  const HWND tip = tooltipsOf(screen.mainWindow());
  ASSERT_NE(tip, nullptr) << "it is there once the form is shown";
  const auto toolText = [&] {
    char text[80] = "";
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.hwnd = screen.mainWindow();
    tool.uId = reinterpret_cast<UINT_PTR>(child("Image2"));
    tool.lpszText = text;
    ::SendMessageA(tip, TTM_GETTEXTA, sizeof text, reinterpret_cast<LPARAM>(&tool));
    return std::string(text);
  };
  EXPECT_EQ(toolText(), "Connect");
  controls[1]->setText("Hang Up");
  EXPECT_EQ(toolText(), "Hang Up");
  ::SendMessageA(child("Image2"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("by a script"));
  EXPECT_EQ(toolText(), "by a script");
}

TEST_F(OnScreen, AFormHiddenWhileTheMainOneWasMinimisedStaysHidden) {
  Events others;
  const FormLayout dialogLayout{
      .name = "Dialog", .title = "Dialog", .width = 100, .height = 100, .controls = {}, .rules = {}};
  auto dialog = screen.createForm(dialogLayout, others);
  const HWND window = screen.forms().back()->window();
  dialog->show(false);
  form->minimise();
  dialog->hide();
  ::SendMessageA(window, WM_SHOWWINDOW, TRUE, SW_PARENTOPENING);
  ::ShowWindow(screen.mainWindow(), SW_RESTORE);
  loop.yield();
  EXPECT_FALSE(::IsWindowVisible(window));
}

TEST_F(OnScreen, EscapeAndCloseAreReportedAndLeaveTheWindow) {
  ::SendMessageA(screen.mainWindow(), WM_COMMAND, IDCANCEL, 0);
  ::SendMessageA(screen.mainWindow(), WM_CLOSE, 0, 0);
  EXPECT_EQ(events.log, "escape close ");
  EXPECT_TRUE(::IsWindow(screen.mainWindow()));
}

TEST_F(OnScreen, AFormThatGoesInsideItsOwnEventLeavesNothingBehind) {
  const HWND window = screen.mainWindow();
  const HWND button = child("Command1");
  struct Closing : ControlEvents {
    std::function<void()> what;
    void clicked() override { what(); }
  } closing;
  controls.push_back(form->createControl(kControls[4], closing));
  const HWND second = ::GetWindow(window, GW_CHILD);
  closing.what = [&] {
    controls.clear();
    form->destroy();
    form.reset();
  };
  ASSERT_NE(second, nullptr);
  HWND last = nullptr;
  for (HWND w = second; w; w = ::GetWindow(w, GW_HWNDNEXT)) last = w;
  ::SendMessageA(last == button ? second : last, BM_CLICK, 0, 0);
  EXPECT_FALSE(::IsWindow(window));
  EXPECT_FALSE(::IsWindow(button));
  EXPECT_TRUE(screen.forms().empty());
}

TEST_F(OnScreen, AModalFormKeepsTheOthersFromInputUntilItIsHidden) {
  Events others;
  const FormLayout dialogLayout{
      .name = "Dialog", .title = "Dialog", .width = 100, .height = 100, .controls = {}, .rules = {}};
  auto dialog = screen.createForm(dialogLayout, others);
  dialog->show(true);
  EXPECT_FALSE(::IsWindowEnabled(screen.mainWindow()));
  dialog->hide();
  EXPECT_TRUE(::IsWindowEnabled(screen.mainWindow()));
  dialog->show(true);
  dialog->destroy();
  EXPECT_TRUE(::IsWindowEnabled(screen.mainWindow()));
}

}  // namespace
}  // namespace pelvaro::win32
