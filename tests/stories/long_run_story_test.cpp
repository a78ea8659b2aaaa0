// A day and a night of use without a pause: calls that drop, limits, every window opened and closed. After each hour
// there is as much of everything as after the first one, and the time that is shown is that of the clock.
#include <algorithm>
#include <map>

#include "editor.h"
#include "line_interface_table.h"
#include "monitor/limits.h"

#ifdef __SANITIZE_ADDRESS__
// As the sanitizers' allocator_interface.h has it, which not every compiler brings.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#elif __has_include(<malloc.h>)
#include <malloc.h>
#endif

namespace pelvaro {
namespace {

constexpr int kMinute = 60'000;            // milliseconds
constexpr int kMinutes = 60, kHours = 24;  // of an hour, of the run
constexpr int kLongestLimit = 546;         // minutes
constexpr int kLargestLimit = 32767;       // KB

// Bytes of memory in use; 0 where the C library does not tell.
std::size_t memoryInUse() {
#if defined(__SANITIZE_ADDRESS__)
  return __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
  return ::mallinfo2().uordblks;
#else
  return 0;
#endif
}

using Counts = std::map<std::string, int>;

struct CountedTimer : TimerPeer {
  CountedTimer(std::unique_ptr<TimerPeer> behind, int& living) : real(std::move(behind)), count(living) { ++count; }
  ~CountedTimer() override { --count; }
  void start(int milliseconds) override { real->start(milliseconds); }
  void stop() override { real->stop(); }
  void tickSoon() override { real->tickSoon(); }
  std::unique_ptr<TimerPeer> real;
  int& count;
};

struct CountedForm : FormPeer {
  CountedForm(std::shared_ptr<FormPeer> behind, Counts& counts)
      : real(std::move(behind)), forms(counts["forms"]), timers(counts["timers"]) {
    ++forms;
  }
  ~CountedForm() override { --forms; }
  std::shared_ptr<ControlPeer> createControl(const ControlLayout& layout, ControlEvents& events) override {
    return real->createControl(layout, events);
  }
  std::unique_ptr<TimerPeer> createTimer(TimerEvents& events) override {
    return std::make_unique<CountedTimer>(real->createTimer(events), timers);
  }
  void setColours(Colours colours) override { real->setColours(colours); }
  void destroy() override { real->destroy(); }
  void show(bool modal) override { real->show(modal); }
  void hide() override { real->hide(); }
  void moveBy(int dx, int dy) override { real->moveBy(dx, dy); }
  void minimise() override { real->minimise(); }
  void setPointer(Pointer pointer) override { real->setPointer(pointer); }
  Place place() override { return real->place(); }
  void moveTo(Place place) override { real->moveTo(place); }
  std::shared_ptr<FormPeer> real;
  int &forms, &timers;
};

struct CountedForms : FormFactory {
  CountedForms(FormFactory& behind, Counts& living) : real(behind), counts(living) {}
  std::shared_ptr<FormPeer> createForm(const FormLayout& layout, FormEvents& events) override {
    return std::make_shared<CountedForm>(real.createForm(layout, events), counts);
  }
  Colour systemColour(int index) override { return real.systemColour(index); }
  bool highContrast() override { return real.highContrast(); }
  FormFactory& real;
  Counts& counts;
};

line::Scenario daysTraffic() {
  line::Scenario scenario = World::quickScenario();
  scenario.receiveRate = 300;  // so that the largest size limit is not passed in a day
  scenario.sendRate = 60;
  return scenario;
}

struct LongRun : Story {
  LongRun() : Story(daysTraffic()) {}
  ~LongRun() override { windows.reset(); }  // before what it is made of

  void SetUp() override {
    world.interfaces.behind = &table;
    world.registry.plainView = {"Nokia 6230 USB Modem", "Samsung D500 USB Modem"};
    world.environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Programs"}};
    world.files.folders = {"C:\\WINDOWS\\SYSTEM32", "C:\\WINDOWS\\SYSTEM32\\drivers", "C:\\WINDOWS\\inf"};
    world.files.contents["C:\\Programs\\corvanti\\common\\driver\\NK-A01\\cable.sys"] = "driver";
    world.files.contents["C:\\Pelvaro\\Default.DAT"] = smallOperatorList();
    world.dialogs.onMessage = [this](const std::string& text) {
      ++asked[text];
      wait(1500);
      return text.ends_with("econnect?") ? reconnect : kAnswerNo;
    };
    windows = std::make_unique<Windows>(services);
    user([this] { main().show(); });
    wait(60);
  }

  Form1& main() { return windows->form1; }
  Form2& editor() { return windows->form2; }
  Form3& picker() { return windows->form3; }
  Form6& limits() { return windows->form6; }

  // ---- what there is ----

  Counts living() {
    counts["forms seen"] = world.desktop.formsVisible();
    counts["hidden windows"] = world.desktop.hiddenWindows();
    counts["hooks"] = world.desktop.hooks();
    counts["menus"] = world.dialogs.menus;
    counts["registry keys"] = world.registry.open;
    counts["handles of programs"] = world.processes.openHandles;
    counts["connections"] = connectionsUp();
    counts["ports in use"] = 0;
    for (const char* port : {"COM5", "COM7"}) counts["ports in use"] += world.ports.canOpen(port) ? 0 : 1;
    counts["entries"] = static_cast<int>(world.line.phonebook().entries.size());
    return counts;
  }
  int connectionsUp() {
    std::vector<std::uint8_t> room(64 * 1024);
    put32(room, 0, ras::connection::kRecordSize);
    auto size = static_cast<std::uint32_t>(room.size());
    std::uint32_t count = 0;
    EXPECT_EQ(world.ras.enumConnections(room.data(), &size, &count), 0u);
    return static_cast<int>(count);
  }
  std::size_t memory() {
    world.journal.take();
    world.told = {};
    world.calls = {};
    return memoryInUse();
  }

  // ---- time ----

  // So many minutes of being online. Each has its sixty ticks, and the time shown is that of the clock.
  void online(int minutes) {
    for (; minutes > 0 && !HasFailure(); --minutes) {
      ASSERT_EQ(status(), kUp);
      const int before = main().tickCounter;
      wait(kMinute);
      ASSERT_EQ(status(), kUp);
      ASSERT_EQ(main().tickCounter - before, 60);
      ASSERT_EQ(world.desktop.hooks(), windows->dialForm.loaded() ? 1 : 0);
      checkElapsed();
    }
  }
  void checkElapsed() {
    if (main().settingflag != monitor::kTimeLimit || main().requiredtime == 0) return;
    const int gone = static_cast<int>(world.desktop.now() / 1000 - limitSetAt / 1000);
    const int behind = gone - seconds(main().Label10.text());
    EXPECT_GE(behind, 0);
    EXPECT_LE(behind, 1) << "one tick at most since it was shown";
    ++compared;
  }
  static int seconds(const std::string& text) {
    int h = 0, m = 0, s = 0;
    EXPECT_EQ(std::sscanf(text.c_str(), "%d:%d:%d", &h, &m, &s), 3) << text;
    return (h * 60 + m) * 60 + s;
  }

  // ---- the user ----

  void connect() {
    entry = entry == "Work" ? "Corvanti-Office" : "Work";
    dial(entry);
    ASSERT_TRUE(waitForStatus(kUp));
  }
  void drop(bool byCable) {
    if (byCable) {
      world.ports.unplug("COM5");
    } else {
      world.ports.say("COM5", "\r\nNO CARRIER\r\n");
    }
    ASSERT_TRUE(waitForStatus(kDown));
    ++drops;
    wait(5000);
    if (byCable) world.ports.plug("COM5", World::phone());
  }
  void rightClick(const std::string& row, std::uint32_t item) {
    world.dialogs.onMenu = [item] { return item; };
    user([this] { static_cast<ControlEvents&>(main().ListView1).mousePressed(MouseButton::right, 1, 1); });
    choose(row);
    world.dialogs.onMenu = nullptr;
  }
  void useEditor() {
    user([this] { main().Image1.click(); });
    user([this] { editor().Check1.click(); });  // the phones are asked
    wait(2000);
    world.ports.unplug("COM7");
    user([this] { editor().Command4.click(); });
    wait(15'000);
    world.ports.plug("COM7", World::phone());
    user([this] { editor().Check1.click(); });
    editor().Text1.setText("Garden");
    editor().Text2.setText("*99#");
    usePicker();
    wait(200);
    user([this] { editor().Command1.click(); });
    wait(200);
    EXPECT_FALSE(editor().visible()) << "it is written";
    rightClick("Corvanti-Garden", 1);
    user([this] { editor().Command3.click(); });
    rightClick("Corvanti-Garden", 2);
    choose(entry);  // the state is that of the chosen one
    wait(2000);
  }
  void usePicker() {
    world.desktop.postIn(1000, [this] {
      picker().Combo1.setText("Porto");
      picker().ListView2.chooseRow(0);
      picker().Command3.click();
      windows->recordForm.Command1.click();
      picker().Command2.click();
      picker().Command4.click();
      picker().ListView2.activateRow(0);
    });
    user([this] { editor().Command2.click(); });
    EXPECT_FALSE(picker().loaded());
  }
  void useDrivers() {
    user([this] { main().Image1.click(); });
    user([this] { editor().Image2.click(); });
    user([this] { windows->driverForm.Combo1.chooseItem(1); });
    user([this] { windows->driverForm.Combo2.chooseItem(1); });
    user([this] { windows->driverForm.Command1.click(); });
    EXPECT_FALSE(windows->driverForm.loaded());
    user([this] { editor().Command3.click(); });
  }
  void limitTime(int minutes) {
    user([this] { main().Image3.click(); });
    limits().Text1.setText(std::to_string(minutes));
    user([this] { limits().Command1.click(); });
    EXPECT_FALSE(limits().loaded());
    limitSetAt = world.desktop.now();
  }
  void limitSize(int kilobytes) {
    user([this] { main().Image3.click(); });
    user([this] { limits().Option2.click(); });
    limits().Text2.setText(std::to_string(kilobytes));
    user([this] { limits().Command1.click(); });
    EXPECT_FALSE(limits().loaded());
  }
  // Until a limit has been passed, and what comes of it.
  void untilPassed(int minutes) {
    for (int i = 0; i < minutes * 60 && status() == kUp; ++i) wait(1000);
    ASSERT_EQ(status(), kDown);
    ++passed;
  }

  // Calls that drop by themselves twice an hour, two limits that are passed, every window once.
  void anHour() {
    // The ticks that a time limit counts are never reset: after nine hours every one is passed at once.
    const bool timed = main().tickCounter < (kLongestLimit - kMinutes) * 60;
    timed ? limitTime(kLongestLimit) : limitSize(kLargestLimit);
    online(15);
    useEditor();
    online(6);
    drop(true);
    useDrivers();
    connect();
    reconnect = kAnswerNo;
    limitTime(std::min(main().tickCounter / 60 + 5, kLongestLimit));
    untilPassed(7);
    timed ? limitTime(kLongestLimit) : limitSize(kLargestLimit);
    connect();
    online(10);
    drop(false);
    connect();
    reconnect = kAnswerYes;
    limitSize(receivedKb() + 60);
    untilPassed(6);
    user([this] { windows->form4.Command2.click(); });  // and thinks better of it
    limitSize(kLargestLimit);
    connect();
    user([this] { main().Image3.click(); });
    user([this] { limits().Command2.click(); });
    while (!HasFailure() && world.desktop.now() < startedAt + static_cast<std::uint64_t>(hour + 1) * 60 * kMinute)
      online(1);
  }
  int receivedKb() {
    int kb = 0;
    EXPECT_EQ(std::sscanf(main().Label1.text().c_str(), "Total bytes received: %d KB", &kb), 1);
    return kb;
  }

  Counts counts;
  line::LineInterfaceTable table{world.line};
  CountedForms forms{world.desktop, counts};
  Services services{.clock = world.clock,
                    .ras = world.ras,
                    .dialWindow = world.desktop,
                    .dialogs = world.dialogs,
                    .environment = world.environment,
                    .files = world.files,
                    .loop = world.desktop,
                    .forms = forms,
                    .interfaces = world.interfaces,
                    .processes = world.processes,
                    .random = world.random,
                    .registry = world.registry,
                    .serial = world.port,
                    .settings = world.settings,
                    .shutdown = world.shutdown,
                    .telephony = world.telephony};
  std::string entry;
  Counts asked;  // questions, by their text
  int reconnect = kAnswerNo;
  std::uint64_t limitSetAt = 0, startedAt = 0;
  int hour = 0, drops = 0, passed = 0, compared = 0;
};

TEST_F(LongRun, ADayOfUseNeedsNoMoreThanItsFirstHourAndTheTimeShownIsTheClocks) {
  connect();
  Counts livingAtFirst;
  std::size_t memoryAtFirst = 0;
  startedAt = world.desktop.now();
  for (hour = 0; hour < kHours; ++hour) {
    SCOPED_TRACE("hour " + std::to_string(hour));
    anHour();
    ASSERT_FALSE(HasFailure());
    ASSERT_TRUE(world.desktop.reported.empty()) << world.desktop.reported.front();
    const Counts now = living();
    const std::size_t bytes = memory();
    if (hour == 0) livingAtFirst = now;
    if (hour == 1) memoryAtFirst = bytes;  // the longest texts have been shown by now
    EXPECT_EQ(now, livingAtFirst);
    if (hour > 1) {
      EXPECT_LE(bytes, memoryAtFirst + 256);
    }
  }
  EXPECT_GE(drops, 2 * kHours);
  EXPECT_GE(passed, 2 * kHours);
  EXPECT_GE(asked["You are about to reach limit, disconnect now?"], kHours);
  EXPECT_GE(compared, 200) << "times shown";
  windows.reset();
  EXPECT_EQ(world.desktop.hooks(), 0);
}

}  // namespace
}  // namespace pelvaro
