// Every call to the platform fails once: each story of the program is told unbroken first, then again for every call
// that it makes and every outcome that the call can have instead of its own, for that call alone and for it and all
// later ones. Afterwards nothing is lost or left open and the program is usable, or it has ended as it may.
//   PELVARO_FAULTS=all          every call, not only the first and the last of each verb
//   PELVARO_FAULTS=some words   only the faults whose description has these words in it
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "operators/list_file.h"
#include "phonebook/entry_properties.h"
#include "platform/fake/breaking_services.h"
#include "story.h"

namespace pelvaro {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kDelivered = "C:\\Pelvaro\\Default.DAT";
constexpr const char* kOwn = "C:\\Pelvaro\\Default2.DAT";
constexpr const char* kPackages = "C:\\Programs\\corvanti\\common\\driver\\";
constexpr const char* kDrivers = "C:\\WINDOWS\\SYSTEM32\\drivers\\";
constexpr const char* kIni = "C:\\WINDOWS\\WinInit.ini";
constexpr const char* kOldIni = "[Rename]\r\nNUL=C:\\OTHER\r\n";

Texts operatorNames(Files& files, const std::string& path) {
  Texts names;
  const operators::OperatorList list = operators::loadList(files, path);
  for (const std::string_view place : list.places()) {
    for (const std::size_t row : list.rowsOf(place)) names.emplace_back(list.field(row, 1));
  }
  return names;
}

// The program on services that break, and a user who uses whatever is there.
struct Broken {
  explicit Broken(fake::Faults& planned) : faults(planned) {
    world.environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Programs"}};
    world.registry.plainView = {"Nokia 6230 USB Modem", "Samsung D500 USB Modem"};
    world.settings.plant("Window", "Form1", "120,130");
    auto& files = world.files;
    files.contents[kDelivered] = smallOperatorList();
    files.contents["C:\\Pelvaro\\manual.html"] = "manual";
    for (const char* name : {"NK-A01\\old.sys", "NK-A01\\new.sys", "NK-A01\\cable.inf"}) {
      files.contents[std::string(kPackages) + name] = std::string("from the package: ") + name;
    }
    files.contents[std::string(kDrivers) + "old.sys"] = "in use";
    files.contents[kIni] = kOldIni;
    files.folders = {"C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM32", "C:\\WINDOWS\\SYSTEM32\\drivers", "C:\\WINDOWS\\inf"};
    filesBefore = files.contents;
    entriesBefore = world.line.phonebook().entries;
    world.desktop.yieldTakes = 1;
    world.dialogs.onMessage = [this](const std::string& text) {
      wait(300);
      return answer(text);
    };
    services.dialWindow.onFallback = [this] { world.desktop.registeredMessage = ras::kDialEventFallback; };
    services.setEnding([this] {
      endedByFault = true;
      user([this] { windows->form1.closeRequested(); });
    });
  }

  void start() {
    windows = std::make_unique<Windows>(services.services);
    user([this] { windows->form1.show(); });
    wait(60);
  }
  void user(const std::function<void()>& action) { world.desktop.guarded(action); }
  void wait(int milliseconds) { world.desktop.advance(milliseconds); }
  Form1& main() { return windows->form1; }
  Form2& editor() { return windows->form2; }
  bool is(const char* status) { return main().loaded() && main().statuslbl.text() == status; }
  bool waitFor(const char* status) {
    for (int i = 0; i < 300 && !is(status) && !world.desktop.ended(); ++i) wait(10);
    return is(status);
  }
  bool choose(const std::string& entry, MouseButton button = MouseButton::left) {
    if (!main().loaded()) return false;
    ListView& list = main().ListView1;
    for (int row = 0; row < list.count(); ++row) {
      if (list.itemText(row) != entry) continue;
      user([&] { static_cast<ControlEvents&>(list).mousePressed(button, 1, 1); });
      user([&] { list.chooseRow(row); });
      if (main().loaded()) user([&] { static_cast<ControlEvents&>(list).mouseReleased(button, 1, 1); });
      return true;
    }
    return false;
  }
  void menu(const std::string& entry, std::uint32_t item) {
    world.dialogs.onMenu = [item] { return item; };
    choose(entry, MouseButton::right);
    world.dialogs.onMenu = nullptr;
  }
  // Clicks a control of a form that the user sees.
  template <typename F, typename C>
  void click(F& form, C& control) {
    if (form.visible()) user([&control] { control.click(); });
  }
  void signIn(const std::string& password = line::kPracticePassword) {
    Form4& prompt = windows->form4;
    if (!prompt.visible()) return;
    prompt.Text1.setText(line::kPracticeUser);
    prompt.Text2.setText(password);
    click(prompt, prompt.Command1);
  }
  void dial(const std::string& entry, const std::string& password = line::kPracticePassword) {
    if (!choose(entry)) return;
    wait(100);
    click(main(), main().Image2);
    signIn(password);
  }
  void hangUp() {
    wait(100);
    if (is(kUp)) click(main(), main().Image2);
    wait(200);
  }
  void fill(const std::string& name, const std::string& number) {
    if (!editor().visible()) return;
    editor().Text1.setText(name);
    editor().Text2.setText(number);
    editor().Text3.setText("internet");
    wait(200);
  }
  // Opens the picker, does this in it and closes it.
  void pick(const std::function<void()>& actions) {
    Form3& picker = windows->form3;
    world.desktop.postIn(20, [this, &picker, actions] {
      if (picker.visible()) actions();
    });
    world.desktop.postIn(5000, [&picker] {
      if (picker.visible()) picker.unload();
    });
    click(editor(), editor().Command2);
  }
  // Whoever does not get an answer in time gives the probe up.
  void impatiently(const std::function<void()>& action) {
    const auto waiting = std::make_shared<bool>(true);
    world.desktop.postIn(8000, [this, waiting] {
      if (*waiting && editor().loaded()) editor().Command3.click();
    });
    user(action);
    *waiting = false;
  }
  void installCode(int brand, int model) {
    click(main(), main().Image1);
    click(editor(), editor().Image2);
    frmDriver& drivers = windows->driverForm;
    if (!drivers.visible()) return;
    user([&] { drivers.Combo1.chooseItem(brand); });
    user([&] { drivers.Combo2.chooseItem(model); });
    click(drivers, drivers.Command1);
    wait(200);
  }
  bool hasEntry(const std::string& name) {
    const auto& entries = world.line.phonebook().entries;
    return std::any_of(entries.begin(), entries.end(), [&](const line::Entry& e) { return e.name == name; });
  }
  bool made(const std::string& beginning) {
    const auto& lines = world.journal.lines();
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& l) { return l.starts_with(beginning); });
  }

  static line::Scenario fastScenario() {
    line::Scenario scenario = World::quickScenario();
    scenario.pace = 20;
    return scenario;
  }

  World world{fastScenario()};
  fake::Faults& faults;
  fake::BreakingServices services{world.services, faults};
  std::unique_ptr<Windows> windows;
  std::function<int(const std::string&)> answer = [](const std::string&) { return 0; };
  std::map<std::string, std::string> filesBefore;
  std::vector<line::Entry> entriesBefore;
  bool endedByFault = false;
};

// What a story is, and what it may change.
struct Told {
  const char* name;
  void (*play)(Broken&);
  bool (*reached)(Broken&);  // by the unbroken story
  const char* touched = "";  // the entry that it writes, renames or deletes
  const char* becomes = "";  // and what may be there instead; with nothing it may be gone
  bool ends = false;         // the story ends the program
};

// ---- the stories ----

void addWithAnOperator(Broken& p) {
  p.click(p.main(), p.main().Image1);
  p.pick([&p] {
    Form3& picker = p.windows->form3;
    picker.Combo1.setText("Porto");
    picker.ListView2.activateRow(0);
  });
  p.fill("Garden", "*99#");
  p.click(p.editor(), p.editor().Command1);
  p.wait(200);
}

void editAndRename(Broken& p) {
  p.menu("Corvanti-Office", 1);
  p.fill("Office", "*98#");
  p.click(p.editor(), p.editor().Command1);
  p.wait(100);
  p.menu("Corvanti-Office", 1);
  if (p.editor().visible()) p.editor().Text1.setText("Garden");
  p.wait(200);
  p.click(p.editor(), p.editor().Command1);
  p.wait(100);
}

void connectAndHangUp(Broken& p) {
  p.dial("Work");
  p.waitFor(kUp);
  p.wait(2500);
  p.hangUp();
  p.waitFor(kDown);
}

void wrongPasswordRetryAndCancel(Broken& p) {
  frmStatus& status = p.windows->statusForm;
  p.dial("Work", "wrong");
  for (int i = 0; i < 200 && status.visible() && status.Command1.text() != "Retry"; ++i) p.wait(10);
  if (p.windows->form4.visible()) p.windows->form4.Text2.setText(line::kPracticePassword);
  p.click(status, status.Command1);
  p.waitFor(kUp);
  p.world.ports.unplug("COM5");
  p.waitFor(kDown);
  p.world.ports.plug("COM5", World::phone());
  p.dial("Corvanti-Office");
  p.wait(60);
  if (status.visible()) status.Command1.setText("cancel");  // a new status window has it from the start
  p.click(status, status.Command1);
  p.wait(500);
}

void limitReachedAndReconnect(Broken& p) {
  p.answer = [](const std::string& text) { return text.ends_with("econnect?") ? kAnswerYes : kAnswerNo; };
  p.dial("Work");
  p.waitFor(kUp);
  Form6& limits = p.windows->form6;
  p.click(p.main(), p.main().Image3);
  p.click(limits, limits.Option2);
  if (limits.visible()) limits.Text2.setText("100");
  p.click(limits, limits.Command1);
  for (const std::uint32_t kb : {50u, 80u, 101u}) {
    p.world.interfaces.count(kb, 3);
    p.wait(1200);
  }
  p.answer = [](const std::string&) { return kAnswerNo; };
  p.click(p.main(), p.main().Image3);
  if (limits.visible()) limits.Text1.setText("546");
  p.click(limits, limits.Command1);
  p.signIn();
  p.waitFor(kUp);
  p.wait(2200);
}

void probePhones(Broken& p) {
  std::string message;
  p.world.ports.plug("COM4", *line::parsePhoneTable("AT+CGMI => Acme Ltd | OK\n", message));
  p.world.ports.plug("COM9", *line::parsePhoneTable("AT+CGMI => SAMSUNG | OK\n", message));
  p.world.ports.unplug("COM5");
  p.click(p.main(), p.main().Image1);
  if (p.editor().visible()) p.impatiently([&p] { p.editor().Check1.click(); });
  p.wait(200);
  if (p.editor().visible()) p.impatiently([&p] { p.editor().Command4.click(); });
  p.impatiently([&p] { p.wait(250); });
  if (p.editor().visible()) p.impatiently([&p] { p.editor().Check1.click(); });
  p.world.ports.plug("COM5", World::phone());
  p.click(p.editor(), p.editor().Command3);
}

void saveAndRestoreOperators(Broken& p) {
  p.click(p.main(), p.main().Image1);
  p.pick([&p] {
    Form3& picker = p.windows->form3;
    frmEdit& boxes = p.windows->recordForm;
    p.world.dialogs.onMenu = [] { return 1u; };
    static_cast<ControlEvents&>(picker.ListView2).mousePressed(MouseButton::right, 1, 1);
    picker.ListView2.chooseRow(0);
    p.world.dialogs.onMenu = nullptr;
    if (boxes.visible()) {
      boxes.Text1[0].setText("Norline 2");
      boxes.Command1.click();
    }
    if (picker.visible()) picker.Command2.click();
    if (picker.visible()) picker.Command1.click();
  });
  p.pick([&p] {
    Form3& picker = p.windows->form3;
    if (picker.Command4.enabled()) picker.Command4.click();
    if (picker.visible()) picker.Command2.click();
    if (picker.visible()) picker.Command1.click();
  });
  p.click(p.editor(), p.editor().Command3);
}

int noRestart(const std::string& text) { return text.starts_with("Restart") ? kAnswerNo : 0; }
int restart(const std::string& text) { return text.starts_with("Restart") ? kAnswerYes : 0; }

void installACable(Broken& p) {
  p.answer = noRestart;
  p.installCode(1, 1);
}

void installACableOnOtherSystems(Broken& p) {
  p.world.environment.variables["os"] = "Other";
  p.world.files.folders.erase("C:\\WINDOWS\\SYSTEM32\\drivers");
  installACable(p);
}

void installAPackage(Broken& p) {
  p.answer = noRestart;
  p.installCode(1, 21);
}

void installAPackageAndRestart(Broken& p) {
  p.answer = restart;
  p.installCode(1, 21);
}

void deleteAnEntry(Broken& p) {
  p.menu("Work", 2);
  p.wait(100);
  p.choose("Corvanti-Office");
  p.wait(100);
}

void helpAndCalls(Broken& p) {
  p.answer = [](const std::string&) { return kAnswerYes; };
  p.user([&p] { accessary::showHelp(p.services.services); });
  p.user([&p] { p.main().CallPhone("5551234", "Ann"); });
  p.user([&p] { p.main().EditEntry("Work", ""); });
  p.click(p.main(), p.main().Image1);
  p.fill("a/b", "*99#");
  p.click(p.editor(), p.editor().Command1);
  p.click(p.editor(), p.editor().Command3);
  p.wait(100);
}

void startAndEnd(Broken& p) {
  p.wait(200);
  p.user([&p] { p.main().closeRequested(); });
}

const Told kStories[] = {
    {"adding a connection with an operator", addWithAnOperator,
     [](Broken& p) { return p.hasEntry("Corvanti-Garden"); }},
    {"editing and renaming", editAndRename,
     [](Broken& p) { return p.hasEntry("Corvanti-Garden") && !p.hasEntry("Corvanti-Office"); }, "Corvanti-Office",
     "Corvanti-Garden"},
    {"connecting and hanging up", connectAndHangUp,
     [](Broken& p) { return p.is(kDown) && p.world.told.size() > 5 && !p.world.line.anythingUp(); }},
    {"a wrong password, Retry, an unplugged phone and Cancel", wrongPasswordRetryAndCancel,
     [](Broken& p) { return p.is(kDown) && !p.world.line.anythingUp() && p.world.told.size() > 12; }},
    {"a limit that is reached and connecting again", limitReachedAndReconnect,
     [](Broken& p) { return p.is(kUp) && p.main().requiredtime == 32760 && p.main().limitAsked == false; }},
    {"asking the phones", probePhones, [](Broken& p) { return p.made("Start 2") && !p.editor().loaded(); }},
    {"saving the operators and going back", saveAndRestoreOperators,
     [](Broken& p) { return p.world.files.contents.count(kOwn) == 1; }},
    {"the driver of a cable", installACable, [](Broken& p) { return p.made("MoveFileEx") && p.made("Start 2"); }},
    {"the driver of a cable on other systems", installACableOnOtherSystems,
     [](Broken& p) { return p.made("CreateDirectory") && p.world.files.contents[kIni] != kOldIni; }},
    {"the driver of a package", installAPackage, [](Broken& p) { return p.made("CreateProcess"); }},
    {"the driver of a package and a restart", installAPackageAndRestart,
     [](Broken& p) { return p.made("ExitWindowsEx") && p.world.desktop.ended(); }, "", "", true},
    {"deleting", deleteAnEntry, [](Broken& p) { return !p.hasEntry("Work"); }, "Work"},
    {"help, a call and a refused name", helpAndCalls, [](Broken& p) { return p.made("tapiRequestMakeCall"); }},
    {"starting and ending", startAndEnd, [](Broken& p) { return p.world.desktop.ended(); }, "", "", true},
};

// ---- what must hold afterwards ----

void expectNoEntryLost(Broken& p, const Told& story) {
  const auto& now = p.world.line.phonebook().entries;
  for (const line::Entry& before : p.entriesBefore) {
    const bool asBefore = std::find(now.begin(), now.end(), before) != now.end();
    if (before.name != story.touched) {
      EXPECT_TRUE(asBefore) << before.name << " is lost or changed";
      continue;
    }
    EXPECT_TRUE(*story.becomes == 0 || p.hasEntry(before.name) || p.hasEntry(story.becomes)) << before.name;
  }
  for (const line::Entry& entry : now) {
    RasEntryRecord record;
    EXPECT_EQ(Module1::GetEntryProperties(p.world.ras, entry.name, record), 0u) << entry.name;
    EXPECT_TRUE(record.LocalPhoneNumber.starts_with("*9")) << entry.name << ": " << record.LocalPhoneNumber;
  }
}

void expectNoFileLost(Broken& p) {
  const auto& now = p.world.files.contents;
  for (const auto& [path, bytes] : p.filesBefore) {
    const auto found = now.find(path);
    ASSERT_TRUE(found != now.end()) << path << " is lost";
    if (path == kIni) {
      EXPECT_TRUE(found->second.starts_with(kOldIni)) << path;
    } else if (path.starts_with(kDrivers)) {
      EXPECT_TRUE(found->second == bytes || found->second.starts_with("from the package: ")) << path;
    } else {
      EXPECT_EQ(found->second, bytes) << path;
    }
  }
  if (now.count(kOwn) == 0) return;
  const Texts names = operatorNames(p.world.files, kOwn);
  EXPECT_TRUE(names == (Texts{"Norline", "Marisol", "Telvira"}) || names == (Texts{"Norline 2", "Marisol", "Telvira"}))
      << names.size();
}

void expectNothingLeftOpen(Broken& p) {
  EXPECT_EQ(p.world.registry.open, 0) << "registry keys";
  EXPECT_EQ(p.world.processes.openHandles, 0) << "processes";
  EXPECT_TRUE(p.services.dialogs.menus.empty()) << "menus";
  EXPECT_FALSE(p.services.serial.isOpen) << "a port";
  EXPECT_EQ(p.services.dialWindow.misuses, 0) << "procedures of the hidden window";
  EXPECT_LE(p.world.desktop.hiddenWindows(), 1);
  EXPECT_EQ(p.world.desktop.hiddenWindows() == 1, p.windows->dialForm.loaded());
  // A form that could not be hooked has a window alone.
  EXPECT_GE(p.world.desktop.hooks(), 0);
  EXPECT_LE(p.world.desktop.hooks(), p.world.desktop.hiddenWindows());
}

// The user closes what is open, sees the whole list, connects with another entry and hangs up.
void expectUsable(Broken& p) {
  p.answer = [](const std::string&) { return kAnswerNo; };
  Windows& w = *p.windows;
  p.click(w.form3, w.form3.Command1);
  p.click(w.driverForm, w.driverForm.Command3);
  p.click(p.editor(), p.editor().Command3);
  p.click(w.form6, w.form6.Command2);
  if (w.statusForm.Command1.text() == "cancel") {
    p.click(w.statusForm, w.statusForm.Command1);
  } else {
    p.click(w.statusForm, w.statusForm.closeMark);
  }
  p.click(w.form4, w.form4.Command2);
  p.wait(300);
  EXPECT_EQ(p.world.desktop.formsVisible(), 1) << "windows";
  p.click(p.main(), p.main().Image1);
  ASSERT_TRUE(p.editor().visible());
  p.click(p.editor(), p.editor().Command3);
  Texts listed, there;
  for (int i = 0; i < p.main().ListView1.count(); ++i) listed.emplace_back(p.main().ListView1.itemText(i));
  for (const line::Entry& entry : p.world.line.phonebook().entries) there.push_back(entry.name);
  EXPECT_EQ(listed, there);
  ASSERT_TRUE(p.choose("Corvanti-Home"));
  p.wait(200);
  EXPECT_TRUE(p.is(kDown));
  p.dial("Corvanti-Home");
  EXPECT_TRUE(p.waitFor(kUp)) << w.statusForm.Label1.text();
  EXPECT_FALSE(w.statusForm.visible());
  p.hangUp();
  EXPECT_TRUE(p.waitFor(kDown));
  EXPECT_TRUE(p.world.desktop.reported.empty());
}

// The calls whose failure is a run-time error that ends the program, with the error's numbers.
const std::map<std::string, std::set<std::string>> kMayReport = {
    {"CreateProcess (no wait)", {"53"}},  // a missing applet or cable installer
    {"CreateDirectory", {"75"}},          // no folder for the drivers
    {"is a folder", {"75", "76"}},
    {"is a file", {"53"}},  // no operator list
    {"read a file", {"53", "75"}},
    {"GetModuleFileName", {"53"}},
    {"write to a port", {"8018", "8020"}},  // behind the greeting
    {"read from a port", {"8018", "8020"}},
};

enum class Outcome { survived, reported, ended };

struct Figures {
  std::size_t calls = 0, faults = 0, survived = 0, reported = 0, ended = 0;
};

std::string described(const Told& story, const fake::Faults::Plan& plan) {
  return std::string(story.name) + ": " + plan.verb + " -> " + plan.outcome + ", call " + std::to_string(plan.call) +
         (plan.forGood ? " and all later ones" : "");
}

Outcome expectHeld(Broken& p, const Told& story, const fake::Faults::Plan& plan) {
  expectNoEntryLost(p, story);
  expectNoFileLost(p);
  expectNothingLeftOpen(p);
  Outcome outcome = Outcome::ended;
  if (!p.world.desktop.reported.empty()) {
    const std::string report = p.world.desktop.reported.front();
    const auto may = kMayReport.find(plan.verb);
    const std::string number = report.substr(0, report.find("':")).substr(report.find('\'') + 1);
    EXPECT_TRUE(may != kMayReport.end() && may->second.count(number) == 1) << report;
    outcome = Outcome::reported;
  } else if (p.world.desktop.ended()) {
    EXPECT_TRUE(story.ends || p.endedByFault);
    EXPECT_FALSE(p.main().loaded() && p.endedByFault);
    if (!p.endedByFault) outcome = Outcome::survived;  // as the story ends
  } else {
    expectUsable(p);
    expectNothingLeftOpen(p);
    outcome = Outcome::survived;
  }
  p.windows.reset();
  EXPECT_EQ(p.world.desktop.hiddenWindows(), 0);
  EXPECT_EQ(p.world.desktop.hooks(), 0);
  EXPECT_EQ(p.services.dialWindow.misuses, 0);
  return outcome;
}

class Faults : public testing::Test {
 protected:
  static void TearDownTestSuite() {
    Figures sum;
    std::printf("\n%-28s %8s %8s %9s %9s %7s\n", "call", "calls", "faults", "survived", "reported", "ended");
    for (const auto& [verb, f] : figures) {
      std::printf("%-28s %8zu %8zu %9zu %9zu %7zu\n", verb.c_str(), f.calls, f.faults, f.survived, f.reported, f.ended);
      sum.calls += f.calls, sum.faults += f.faults, sum.survived += f.survived;
      sum.reported += f.reported, sum.ended += f.ended;
    }
    std::printf("%-28s %8zu %8zu %9zu %9zu %7zu\n\n", (std::to_string(figures.size()) + " verbs").c_str(), sum.calls,
                sum.faults, sum.survived, sum.reported, sum.ended);
  }
  static std::map<std::string, Figures> figures;
};

std::map<std::string, Figures> Faults::figures;

// The calls of a verb that are made to fail: all of them, or the first and the last.
std::vector<int> chosenCalls(int calls, bool all) {
  std::vector<int> chosen;
  for (int call = 1; call <= calls; ++call) {
    if (all || call == 1 || call == calls) chosen.push_back(call);
  }
  return chosen;
}

void tell(const Told& story, const fake::Faults::Plan& plan, Figures& figures) {
  SCOPED_TRACE("PELVARO_FAULTS=\"" + described(story, plan) + "\"");
  fake::Faults faults;
  faults.plan(plan);
  Broken program(faults);
  try {
    program.start();
    story.play(program);
    EXPECT_TRUE(faults.struck());
    faults.lift();
    const Outcome outcome = expectHeld(program, story, plan);
    ++figures.faults;
    ++(outcome == Outcome::survived   ? figures.survived
       : outcome == Outcome::reported ? figures.reported
                                      : figures.ended);
  } catch (const std::exception& error) {
    ADD_FAILURE() << error.what();
  }
}

TEST_F(Faults, NothingIsLostWhateverCallFails) {
  const char* asked = std::getenv("PELVARO_FAULTS");
  const std::string filter = asked ? asked : "";
  const bool all = !filter.empty();
  for (const Told& story : kStories) {
    fake::Faults counted;
    {
      Broken program(counted);
      program.start();
      story.play(program);
      EXPECT_TRUE(story.reached(program)) << story.name;
      EXPECT_TRUE(program.world.desktop.reported.empty()) << story.name;
    }
    for (const auto& [verb, calls] : counted.verbs()) {
      figures[verb].calls += static_cast<std::size_t>(calls.calls);
      for (const std::string& outcome : calls.outcomes) {
        for (const int call : chosenCalls(calls.calls, all)) {
          for (const bool forGood : {false, true}) {
            if (forGood && (outcome == fake::kProgramEnds || (!all && call > 1))) continue;
            const fake::Faults::Plan plan{verb, outcome, call, forGood};
            if (all && filter != "all" && described(story, plan).find(filter) == std::string::npos) continue;
            tell(story, plan, figures[verb]);
          }
        }
      }
    }
  }
  for (const std::string_view verb : fake::kVerbs) {
    EXPECT_EQ(figures.count(std::string(verb)), 1u) << "no story calls " << verb;
  }
}

}  // namespace
}  // namespace pelvaro
