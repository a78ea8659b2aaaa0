// The driver window: the choice of a phone, and the installation of its driver with every call to the system.
#include <fstream>
#include <map>
#include <sstream>

#include "drivers/catalogue.h"
#include "editor.h"

namespace pelvaro {
namespace {

constexpr const char* kUnplug = "Please remove cable before installing driver.";
constexpr const char* kNoDriver = "No driver available. Please manually install the driver.";
constexpr const char* kNothing = "No items selected";

struct Drivers : Editor {
  void SetUp() override {
    Editor::SetUp();
    world.environment.variables = {
        {"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Program Files"}};
    world.files.folders = {"C:\\WINDOWS\\SYSTEM32\\drivers", "C:\\WINDOWS\\SYSTEM\\drivers", "C:\\WINDOWS\\inf"};
    add();
  }
  frmDriver& drivers() { return windows->driverForm; }
  void open() {
    user([this] { editor().Image2.click(); });
  }
  void install() {
    user([this] { drivers().Command1.click(); });
  }
  Texts models() {
    Texts texts;
    for (int i = 0; i < drivers().Combo2.count(); ++i) texts.push_back(drivers().Combo2.itemText(i));
    return texts;
  }
  // From now on the system does not list its modems.
  void failListing() {
    line::Scenario scenario = World::quickScenario();
    scenario.failures = {{"enumDevices", 5, line::PlantedFailure::kAlways}};
    world.line.setScenario(scenario);
  }
  std::string saved(const char* key) { return world.settings.get("Setting", key); }
  void answer(int restart) {
    world.dialogs.onMessage = [this, restart](const std::string& text) {
      asked.push_back(text);
      return text.starts_with("Restart") ? restart : 0;
    };
  }
  // Chooses the first model of a code.
  void chooseCode(const std::string& code) {
    for (int brand = 0; brand < drivers().Combo1.count(); ++brand) {
      drivers().Combo1.chooseItem(brand);
      for (std::size_t i = 1; i < drivers().Combo5.size(); ++i) {
        if (drivers::codeOf(drivers().Combo5[i]) != code) continue;
        drivers().Combo2.chooseItem(static_cast<int>(i));
        return;
      }
    }
    FAIL() << code;
  }
};

TEST_F(Drivers, TheFirstStartShowsTheFirstBrandAndNoDriver) {
  open();
  EXPECT_TRUE(drivers().visible());
  EXPECT_TRUE(editor().visible());
  EXPECT_EQ(drivers().Combo1.text(), "Motorola");
  EXPECT_EQ(drivers().Combo2.text(), "# Other Model #");
  EXPECT_EQ(drivers().Combo3.text(), "USB");
  EXPECT_EQ(drivers().driverlbl.text(), "No");
  EXPECT_EQ(drivers().commonPath(), "C:\\Program Files\\corvanti\\common");
  EXPECT_EQ(drivers().systemPath(), "C:\\WINDOWS\\SYSTEM32");
  EXPECT_EQ(drivers().windowsPath(), "C:\\WINDOWS");
  EXPECT_EQ(drivers().pointer(), Pointer::arrow);
  Texts brands, types;
  for (int i = 0; i < drivers().Combo1.count(); ++i) brands.push_back(drivers().Combo1.itemText(i));
  for (int i = 0; i < drivers().Combo3.count(); ++i) types.push_back(drivers().Combo3.itemText(i));
  EXPECT_EQ(brands, (Texts{"Motorola", "Nokia", "Samsung", "Siemens", "Sony Ericsson"}));
  EXPECT_EQ(types, (Texts{"USB", "Bluetooth"}));
}

TEST_F(Drivers, ABrandListsItsModelsAndNoOthers) {
  open();
  drivers().Combo1.chooseItem(1);
  EXPECT_EQ(models().size(), 22u);
  EXPECT_EQ(models().front(), "# Other Model #");
  EXPECT_EQ(models().back(), "6230");
  EXPECT_EQ(drivers().Combo2.selected(), 0);
  drivers().Combo1.chooseItem(4);
  EXPECT_EQ(models()[1], "K600i");
  drivers().Combo1.chooseItem(0);
  EXPECT_EQ(models().size(), 31u);
  EXPECT_EQ(models()[1], "C975");
  EXPECT_EQ(models().back(), "V220");
  ASSERT_EQ(drivers().Combo5.size(), models().size());
  EXPECT_EQ(drivers().Combo5[0], "---Other---");
  for (std::size_t i = 1; i < models().size(); ++i) EXPECT_EQ(drivers::modelOf(drivers().Combo5[i]), models()[i]);
}

TEST_F(Drivers, SupportFollowsTheModelAndTheLink) {
  open();
  drivers().Combo2.chooseItem(28);
  EXPECT_EQ(drivers().Combo2.text(), "V3x");
  EXPECT_EQ(drivers().driverlbl.text(), "Yes");
  drivers().Combo3.chooseItem(1);
  EXPECT_EQ(drivers().driverlbl.text(), "No");
  drivers().Combo3.chooseItem(0);
  EXPECT_EQ(drivers().driverlbl.text(), "Yes");
  drivers().Combo2.chooseItem(0);
  EXPECT_EQ(drivers().driverlbl.text(), "No");
  drivers().Combo2.chooseItem(3);
  drivers().Combo1.chooseItem(2);
  EXPECT_EQ(drivers().driverlbl.text(), "No") << "another brand begins with no model";
}

TEST_F(Drivers, TheLastChoiceIsRestoredAndWhatIsNotOneIsPassedOver) {
  const struct {
    const char *brand, *model, *type;
    int brandIs, modelIs, typeIs;
    const char* support;
  } table[] = {
      {"1", "21", "0", 1, 21, 0, "Yes"},
      {"2", "1", "1", 2, 1, 1, "No"},
      {"", "", "", 0, 0, 0, "No"},
      {"x", "7", "y", 0, 7, 0, "Yes"},
      {"5", "31", "2", 0, 0, 0, "No"},
      {"1", "22", "0", 1, 0, 0, "No"},
      {"-1", "0", "0", -1, 0, 0, "No"},
      {"0", "-1", "0", 0, -1, 0, "Yes"},
      {"0", "4", "-1", 0, 4, -1, "Yes"},
      {"-2", "-2", "-2", 0, 0, 0, "No"},
      {"40000", "70000", "9e9", 0, 0, 0, "No"},
      {" 1 ", "0.5", "1.5", 1, 0, 0, "No"},
      {"1x", "2 3", "--1", 0, 0, 0, "No"},
      {"0.5", "1.5", "0.4", 0, 2, 0, "Yes"},
      {"99999999999999999999", "", "", 0, 0, 0, "No"},
  };
  for (const auto& row : table) {
    world.settings.plant("Setting", "brand", row.brand);
    world.settings.plant("Setting", "model", row.model);
    world.settings.plant("Setting", "type", row.type);
    open();
    const std::string which = std::string(row.brand) + " " + row.model + " " + row.type;
    EXPECT_EQ(drivers().Combo1.selected(), row.brandIs) << which;
    EXPECT_EQ(drivers().Combo2.selected(), row.modelIs) << which;
    EXPECT_EQ(drivers().Combo3.selected(), row.typeIs) << which;
    EXPECT_EQ(drivers().driverlbl.text(), row.support) << which;
    EXPECT_EQ(world.desktop.reported, Texts{}) << which;
    user([this] { drivers().Command3.click(); });
    EXPECT_FALSE(drivers().loaded());
  }
}

TEST_F(Drivers, WithoutAnEnvironmentTheWindowOpensAllTheSame) {
  world.environment.variables.clear();
  open();
  EXPECT_TRUE(drivers().visible());
  EXPECT_EQ(drivers().systemPath(), "\\SYSTEM");
}

TEST_F(Drivers, OkShowsTheEditorAsItStandsAndKeepsTheChoices) {
  open();
  drivers().Combo1.chooseItem(3);
  editor().Text1.setText("Mine");
  world.settings.plant("Setting", "brand", "1");
  user([this] { drivers().cmdOK.click(); });
  EXPECT_FALSE(drivers().visible());
  EXPECT_TRUE(drivers().loaded());
  EXPECT_EQ(editor().Text1.text(), "Mine");
  open();
  EXPECT_EQ(drivers().Combo1.text(), "Siemens") << "settings are not read again";
}

TEST_F(Drivers, OkBringsAnEditorBackThatWasClosed) {
  open();
  user([this] { editor().Command3.click(); });
  EXPECT_FALSE(editor().loaded());
  user([this] { drivers().cmdOK.click(); });
  EXPECT_TRUE(editor().visible());
  EXPECT_EQ(devices().size(), 2u);
}

TEST_F(Drivers, TheCloseMarkAndEscTakeItAway) {
  for (const auto& leave : std::initializer_list<std::function<void()>>{[this] { drivers().Label4.click(); },
                                                                        [this] { drivers().escapePressed(); },
                                                                        [this] { drivers().closeRequested(); }}) {
    open();
    user(leave);
    EXPECT_FALSE(drivers().loaded());
    EXPECT_TRUE(editor().visible());
  }
}

TEST_F(Drivers, ForBluetoothItIsNotOpened) {
  editor().Combo3.chooseItem(1);
  editor().Image2.setVisible(true);
  user([this] { editor().Image2.click(); });
  EXPECT_FALSE(drivers().loaded());
}

TEST_F(Drivers, DraggingNeedsBothCoordinatesOfItsBeginning) {
  open();
  drivers().mousePressed(MouseButton::left, 10, 20);
  drivers().mouseMoved(MouseButton::left, 15, 18);
  EXPECT_EQ(drivers().movedX(), 5);
  EXPECT_EQ(drivers().movedY(), -2);
  drivers().mouseMoved(MouseButton::right, 90, 90);
  drivers().mouseMoved(MouseButton::none, 90, 90);
  drivers().mouseReleased(MouseButton::left, 15, 18);
  drivers().mouseMoved(MouseButton::left, 90, 90);
  EXPECT_EQ(drivers().movedX(), 5) << "released";
  for (const auto& [x, y] : {std::pair{0, 9}, std::pair{9, 0}, std::pair{0, 0}}) {
    drivers().mousePressed(MouseButton::left, x, y);
    drivers().mouseMoved(MouseButton::left, x + 40, y + 40);
    EXPECT_EQ(drivers().movedX(), 5);
    EXPECT_EQ(drivers().movedY(), -2);
  }
  drivers().mousePressed(MouseButton::right, 3, 3);
  drivers().mouseMoved(MouseButton::left, 4, 4);
  EXPECT_EQ(drivers().movedX(), 6) << "any button begins a drag";
}

TEST_F(Drivers, AnotherModelHasNoDriverAndLeavesTheHourglass) {
  open();
  drivers().Combo1.chooseItem(1);
  drivers().Combo3.chooseItem(1);
  install();
  EXPECT_EQ(asked, (Texts{kNoDriver}));
  EXPECT_TRUE(drivers().visible());
  EXPECT_EQ(drivers().pointer(), Pointer::hourglass);
  EXPECT_EQ(saved("brand") + "," + saved("model") + "," + saved("type"), "1,0,1");
  EXPECT_EQ(editor().Combo1.text(), kNokia) << "the editor's list was left alone";
  user([this] { drivers().Command3.click(); });
  open();
  EXPECT_EQ(drivers().pointer(), Pointer::arrow);
}

TEST_F(Drivers, NothingChosenIsSavedAsMinusOneAndClosesTheWindow) {
  open();
  drivers().Combo2.select(-1);
  EXPECT_EQ(drivers().driverlbl.text(), "Yes") << "kept on purpose";
  install();
  EXPECT_EQ(asked, (Texts{kNothing}));
  EXPECT_EQ(saved("brand") + "," + saved("model") + "," + saved("type"), "0,-1,0");
  EXPECT_FALSE(drivers().loaded());
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung}));
  EXPECT_EQ(editor().Combo1.selected(), -1) << "filled anew, and nothing is selected";
  open();
  EXPECT_EQ(drivers().Combo2.selected(), -1);
  drivers().Combo1.select(-1);
  install();
  EXPECT_EQ(asked, (Texts{kNothing, kNothing}));
  EXPECT_EQ(saved("brand") + "," + saved("model"), "-1,0");
}

TEST_F(Drivers, AWindowThatIsClosedBehindTheFirstMessageInstallsNothing) {
  open();
  drivers().Combo2.chooseItem(1);
  world.dialogs.onMessage = [this](const std::string&) {
    drivers().Label4.click();
    return 0;
  };
  world.journal.take();
  install();
  EXPECT_EQ(world.journal.take().back(), std::string("MessageBox 0 ") + kUnplug);
  EXPECT_FALSE(drivers().loaded());
}

TEST_F(Drivers, AWindowThatIsClosedBehindTheQuestionLetsTheRestBeDone) {
  open();
  chooseCode("06");
  world.dialogs.onMessage = [this](const std::string& text) {
    if (text.starts_with("Restart")) drivers().unload();
    return text.starts_with("Restart") ? kAnswerNo : 0;
  };
  install();
  EXPECT_EQ(world.journal.take().back(), "Start 2 RunDLL32 shell32.dll,Control_RunDLL MODEM.CPL,Modems,Add");
  EXPECT_FALSE(drivers().loaded());
  EXPECT_EQ(editor().Combo1.selected(), -1);
}

TEST_F(Drivers, AnEditorThatWasClosedIsLoadedAndFilled) {
  open();
  chooseCode("07");
  answer(kAnswerNo);
  user([this] { editor().Command3.click(); });
  install();
  EXPECT_TRUE(editor().loaded());
  EXPECT_FALSE(editor().visible());
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung}));
  EXPECT_EQ(editor().Combo1.selected(), -1);
}

TEST_F(Drivers, TheRowIsLookedUpBehindTheUnplugMessage) {
  open();
  chooseCode("07");
  answer(kAnswerNo);
  const auto answers = world.dialogs.onMessage;
  world.dialogs.onMessage = [&, answers](const std::string& text) {
    EXPECT_EQ(drivers().pointer(), Pointer::hourglass);
    if (text == kUnplug) drivers().Combo2.chooseItem(1);
    return answers(text);
  };
  install();
  EXPECT_EQ(saved("model"), "21") << "saved before";
  EXPECT_EQ(world.journal.take().back(), "Start 2 RunDLL32 shell32.dll,Control_RunDLL MODEM.CPL,Modems,Add") << "06";
  open();
  drivers().Combo2.chooseItem(2);
  world.dialogs.onMessage = [&](const std::string&) {
    drivers().Combo2.select(-1);
    return 0;
  };
  world.journal.take();
  install();
  EXPECT_EQ(world.journal.take().back(), std::string("MessageBox 0 ") + kUnplug) << "no model, nothing to do";
  EXPECT_FALSE(drivers().loaded());
}

TEST_F(Drivers, AnUnselectedLinkIsSavedAndHindersNothing) {
  open();
  chooseCode("07");
  drivers().Combo3.select(-1);
  answer(kAnswerNo);
  install();
  EXPECT_EQ(saved("type"), "-1");
  EXPECT_EQ(asked.size(), 3u);
}

TEST_F(Drivers, TheListIsFilledWithThePointerBackAndTheWindowStillThere) {
  open();
  chooseCode("07");
  failListing();
  std::string seen;
  world.dialogs.onMessage = [&](const std::string& text) {
    if (text == "5") {
      seen = drivers().loaded() && drivers().pointer() == Pointer::arrow ? "as it should be" : "too late";
      EXPECT_EQ(editor().Combo1.count(), 0);
    }
    return text.starts_with("Restart") ? kAnswerNo : 0;
  };
  install();
  EXPECT_EQ(seen, "as it should be");
  EXPECT_FALSE(drivers().loaded());
}

TEST_F(Drivers, ADragDoesNotOutliveTheWindow) {
  open();
  drivers().mousePressed(MouseButton::left, 10, 20);
  user([this] { drivers().Command3.click(); });
  open();
  drivers().mouseMoved(MouseButton::left, 50, 60);
  EXPECT_EQ(drivers().movedX(), 0);
}

TEST_F(Drivers, NothingChosenAndClosedBehindItsMessageFillsTheEditorAllTheSame) {
  open();
  drivers().Combo2.select(-1);
  world.dialogs.onMessage = [this](const std::string&) {
    drivers().Label4.click();
    return 0;
  };
  install();
  EXPECT_FALSE(drivers().loaded());
  EXPECT_EQ(editor().Combo1.selected(), -1);
}

TEST_F(Drivers, TheFlagsBeginAnewInEveryFolder) {
  world.files.contents = {{"C:\\Program Files\\corvanti\\common\\driver\\MT\\a.sys", "x"},
                          {"C:\\Program Files\\corvanti\\common\\driver\\MT\\win2k\\a.inf", "x"}};
  open();
  chooseCode("04");
  answer(kAnswerNo);
  install();
  int plain = 0;
  for (const std::string& call : world.journal.take()) plain += call.starts_with("SHFileOperation copy 0 ");
  EXPECT_EQ(plain, 1);
}

// What a user can do while an installation lets events run, and while the shell asks.
struct DriversMeanwhile : Drivers {
  static constexpr const char* kPackages = "C:\\Program Files\\corvanti\\common\\driver\\";
  void SetUp() override {
    Drivers::SetUp();
    for (const char* name : {"NK-A01\\nk.sys", "NK-A01\\nk.inf", "SM-A02-2\\sm.sys", "SM-A02-2\\sm.inf"}) {
      world.files.contents[std::string(kPackages) + name] = "new";
    }
    open();
    chooseCode("06");
    answer(kAnswerNo);
    world.journal.take();
  }
  void meanwhile(const std::function<void()>& event) { world.desktop.post(event); }
  int calls(const std::string& beginning) {
    int count = 0;
    for (const std::string& call : world.journal.lines()) count += call.starts_with(beginning);
    return count;
  }
};

TEST_F(DriversMeanwhile, PressedAgainEachInstallationCopiesItsOwnFiles) {
  meanwhile([this] {
    drivers().Combo1.chooseItem(3);
    drivers().Combo2.chooseItem(10);
    drivers().Command1.click();
  });
  install();
  for (const char* file : {"NK-A01\\nk.sys", "NK-A01\\nk.inf", "SM-A02-2\\sm.sys", "SM-A02-2\\sm.inf"}) {
    EXPECT_EQ(calls(std::string("SHFileOperation copy 256 ") + kPackages + file), 1) << file;
  }
  EXPECT_EQ(calls("SHFileOperation"), 4);
  EXPECT_EQ(calls("MoveFileEx"), 0);
  EXPECT_FALSE(drivers().loaded());
}

TEST_F(DriversMeanwhile, TheProgramIsEndedAndNothingMoreIsDone) {
  meanwhile([this] { main().closeRequested(); });
  install();
  EXPECT_EQ(calls("SHFileOperation") + calls("MessageBox 4") + calls("Start 2"), 0);
  EXPECT_TRUE(world.desktop.ended());
  EXPECT_EQ(world.desktop.reported, Texts{});
}

TEST_F(DriversMeanwhile, TheProgramIsEndedWhileTheShellAsks) {
  world.files.onCopy = [this] { main().closeRequested(); };
  install();
  EXPECT_EQ(calls("SHFileOperation"), 1);
  EXPECT_EQ(calls("MessageBox 4") + calls("Start 2"), 0);
  EXPECT_EQ(world.desktop.reported, Texts{});
}

TEST_F(DriversMeanwhile, ARestartIsAgreedToInASecondInstallation) {
  answer(kAnswerYes);
  world.files.onCopy = [this] {
    world.files.onCopy = nullptr;
    world.desktop.guarded([this] { drivers().Command1.click(); });
  };
  install();
  EXPECT_EQ(world.journal.lines().back(), "ExitWindowsEx 2 4294967295");
  EXPECT_EQ(calls("ExitWindowsEx"), 1);
}

TEST_F(DriversMeanwhile, TheEditorIsClosedAndFilledHiddenAtTheEnd) {
  meanwhile([this] { editor().Command3.click(); });
  install();
  EXPECT_FALSE(editor().visible());
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung}));
}

TEST_F(DriversMeanwhile, TheWindowIsClosedAndEverythingIsDone) {
  meanwhile([this] { drivers().Command3.click(); });
  install();
  EXPECT_EQ(calls("SHFileOperation"), 2);
  EXPECT_EQ(calls("MessageBox 4") + calls("Start 2"), 2);
  EXPECT_FALSE(drivers().loaded());
}

TEST_F(DriversMeanwhile, AWindowThatIsOpenedAnewStays) {
  meanwhile([this] {
    drivers().Command3.click();
    editor().Image2.click();
    drivers().Combo1.chooseItem(3);
  });
  install();
  EXPECT_TRUE(drivers().visible());
  EXPECT_EQ(drivers().Combo1.text(), "Siemens");
  EXPECT_EQ(drivers().pointer(), Pointer::arrow);
  EXPECT_EQ(editor().Combo1.selected(), -1) << "filled anew";
}

TEST_F(Drivers, AnEditorThatIsClosedInItsOwnLoadIsNotShown) {
  open();
  user([this] { editor().Command3.click(); });
  failListing();
  world.dialogs.onMessage = [this](const std::string&) {
    editor().Command3.click();
    return 0;
  };
  user([this] { drivers().cmdOK.click(); });
  EXPECT_FALSE(editor().visible());
  EXPECT_FALSE(editor().loaded());
}

TEST_F(Drivers, AMissingCableInstallerEndsTheProgramWithTheReport) {
  open();
  chooseCode("06");
  world.processes.missing = true;
  install();
  ASSERT_EQ(world.desktop.reported.size(), 1u);
  EXPECT_EQ(world.desktop.reported[0], "Run-time error '53':\n\nFile not found");
  EXPECT_TRUE(world.desktop.ended());
  EXPECT_EQ(saved("model"), "1") << "the choices were saved before";
}

TEST_F(Drivers, APackageInstallerThatFailsOrIsMissingSaysNothing) {
  for (const bool missing : {false, true}) {
    open();
    chooseCode("10");
    answer(kAnswerNo);
    asked.clear();
    world.processes.unstartable = missing;
    world.processes.exit = 1603;
    install();
    ASSERT_EQ(asked.size(), 3u);
    EXPECT_EQ(asked[2], "Please plug in the cable now & install the modem.");
    EXPECT_FALSE(drivers().loaded());
  }
  EXPECT_EQ(world.desktop.reported, Texts{});
}

TEST_F(Drivers, OnOtherFamiliesTheOtherFolderAndTheIniAreUsed) {
  for (const char* os : {"", "Windows_98", "windows_nt"}) {
    world.environment.variables["os"] = os;
    const std::string drivers32 = std::string("C:\\WINDOWS\\SYSTEM") + (*os ? "32" : "") + "\\drivers\\";
    world.files.contents = {{"C:\\Program Files\\corvanti\\common\\driver\\MT\\winxp\\m.sys", "new"},
                            {drivers32 + "m.sys", "old"}};
    open();
    chooseCode("04");
    answer(kAnswerNo);
    install();
    EXPECT_EQ(world.files.contents["C:\\WINDOWS\\WinInit.ini"], "[Rename]\r\nNUL=" + drivers32 + "m.sys~1\r\n") << os;
    EXPECT_EQ(world.files.contents[drivers32 + "m.sys"], "old");
  }
}

// Every code in every state, against the whole list of calls.

const std::pair<std::string, std::string> kShort[] = {
    {"C:\\Program Files\\corvanti\\common\\driver", "{driver}"},
    {"C:\\WINDOWS\\SYSTEM32\\drivers", "{drivers}"},
    {"C:\\WINDOWS\\inf", "{inf}"},
};

Texts shortened(Texts lines) {
  for (std::string& line : lines) {
    for (const auto& [path, name] : kShort) {
      for (auto at = line.find(path); at != std::string::npos; at = line.find(path))
        line.replace(at, path.size(), name);
    }
  }
  return lines;
}

// "codes: state" and the indented calls below it.
std::map<std::string, Texts> expectedCalls() {
  std::map<std::string, Texts> result;
  std::ifstream file(PELVARO_DRIVER_CALLS);
  EXPECT_TRUE(file) << PELVARO_DRIVER_CALLS;
  std::vector<std::string> sections;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty() || line.starts_with('#')) continue;
    if (line.starts_with("  ")) {
      for (const std::string& section : sections) result[section].push_back(line.substr(2));
      continue;
    }
    sections.clear();
    std::istringstream codes(line.substr(0, line.find(':')));
    for (std::string code; codes >> code;) sections.push_back(code + line.substr(line.find(':')));
    for (const std::string& section : sections) result[section] = {};
  }
  return result;
}

struct State {
  const char* name;
  bool packages, there;
  int restart;
};
constexpr State kStates[] = {{"fresh, no restart", true, false, kAnswerNo},
                             {"fresh, restart", true, false, kAnswerYes},
                             {"files there, no restart", true, true, kAnswerNo},
                             {"no package, no restart", false, false, kAnswerNo}};

struct DriverCalls : Drivers, testing::WithParamInterface<std::tuple<int, State>> {};

TEST_P(DriverCalls, AreExactlyThese) {
  const auto& [number, state] = GetParam();
  const std::string code = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
  const std::string section = code + ": " + state.name;
  if (state.packages) {
    for (const char* folder :
         {"MT", "MT\\win2k", "MT\\winxp", "NK-A01", "SS-A01", "SS-A02", "SM-A02-1", "SM-A02-2", "SE-A01"}) {
      for (const char* name : {"b.sys", "a.sys", "c.inf"}) {
        world.files.contents[kShort[0].first + "\\" + folder + "\\" + name] = "new";
      }
    }
  }
  if (state.there) world.files.contents[kShort[1].first + "\\b.sys"] = "old";
  open();
  chooseCode(code);
  answer(state.restart);
  world.journal.take();
  install();
  Texts calls = shortened(world.journal.take());
  ASSERT_GE(calls.size(), 4u);
  const char* const chosen[] = {"0,1,0",  "0,21,0", "0,23,0", "0,28,0", "0,29,0", "1,1,0", "1,21,0", "2,1,0",
                                "2,29,0", "2,54,0", "3,1,0",  "3,10,0", "4,1,0",  "4,3,0", "4,20,0", "4,24,0"};
  EXPECT_EQ(saved("brand") + "," + saved("model") + "," + saved("type"), chosen[number - 1]);
  EXPECT_EQ(calls[0], "SaveSetting setting\\brand=" + saved("brand")) << "first of all";
  EXPECT_EQ(calls[1], "SaveSetting setting\\model=" + saved("model"));
  EXPECT_EQ(calls[2], "SaveSetting setting\\type=" + saved("type"));
  calls.erase(calls.begin(), calls.begin() + 3);
  const bool restarted = calls.back().starts_with("ExitWindowsEx");
  EXPECT_EQ(world.desktop.ended(), restarted);
  EXPECT_EQ(drivers().loaded(), restarted);
  EXPECT_EQ(world.processes.openHandles, 0);
  if (!restarted) {
    EXPECT_EQ(devices(), (Texts{kNokia, kSamsung}));
    EXPECT_EQ(editor().Combo1.selected(), -1);
  }
  const auto expected = expectedCalls();
  EXPECT_EQ(expected.size(), 64u);
  const auto wanted = expected.find(section);
  ASSERT_NE(wanted, expected.end()) << section;
  EXPECT_EQ(calls, wanted->second) << section;
}

INSTANTIATE_TEST_SUITE_P(EveryCode, DriverCalls, testing::Combine(testing::Range(1, 17), testing::ValuesIn(kStates)));

}  // namespace
}  // namespace pelvaro
