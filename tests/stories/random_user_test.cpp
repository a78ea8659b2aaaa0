// A random user who does anything at any moment, for a great many events, with what must always hold checked after
// each. A failure names the seed that replays it.
#include <cstdlib>
#include <random>

#include "operators/mod_encrypt.h"
#include "phonebook/entry_properties.h"
#include "story.h"

namespace pelvaro {
namespace {

// What must hold whenever the program is at rest.
void checkInvariants(World& world, Windows& windows) {
  ASSERT_TRUE(world.desktop.reported.empty()) << world.desktop.reported.front();
  EXPECT_LE(world.desktop.hiddenWindows(), 1) << "at most one hidden dial window";
  EXPECT_EQ(world.desktop.hiddenWindows() == 1, windows.dialForm.loaded());
  Form1& main = windows.form1;
  const bool connect = main.Image2.toolTipText() == "Connect";
  EXPECT_TRUE(connect || main.Image2.toolTipText() == "Hang Up");
  const std::string caption = windows.statusForm.loaded() ? windows.statusForm.Command1.text() : "cancel";
  EXPECT_TRUE(caption == "cancel" || caption == "Retry") << caption;
  EXPECT_FALSE(windows.form5.visible()) << "no splash is left behind";
  EXPECT_TRUE(main.visible());
  if (main.requiredbyte < 1 && main.requiredtime < 1 && main.Timer1.enabled()) {
    world.desktop.advance(50);
    EXPECT_FALSE(main.Label12.visible()) << "no limit, no limit labels";
  }
  EXPECT_LE(main.requiredtime, 32760);
  EXPECT_LE(main.requiredbyte, 32767);
  EXPECT_TRUE(main.Label1.text().starts_with("Total bytes received: ")) << main.Label1.text();
  if (windows.form6.loaded()) {
    EXPECT_NE(windows.form6.Option1.checked(), windows.form6.Option2.checked());
    EXPECT_EQ(windows.form6.Option1.checked(), windows.form6.Text1.enabled());
  }
}

class RandomUser {
 public:
  RandomUser(World& world, Windows& windows, unsigned seed) : world_(world), windows_(windows), random_(seed) {}

  void act() {
    Form1& main = windows_.form1;
    Form4& prompt = windows_.form4;
    frmStatus& status = windows_.statusForm;
    Form6& limits = windows_.form6;
    world_.dialogs.onMessage = [this](const std::string& text) {
      if (pick(2)) world_.desktop.advance(pick(3000));
      if (pick(8) == 0) useDrivers();
      if (text.starts_with("Restart")) return kAnswerNo;  // it would end the run
      return pick(2) ? kAnswerYes : kAnswerNo;
    };
    world_.files.onCopy = [this] {
      if (pick(8) == 0) useDrivers();
    };
    Form2& editor = windows_.form2;
    const int what = pick(37);
    world_.desktop.guarded([&] {
      switch (what) {
        case 0:
        case 1:
        case 2: main.ListView1.chooseRow(pick(4)); break;
        case 3:
        case 4: main.Image2.click(); break;
        case 5:
          if (prompt.visible()) prompt.Command1.click();
          break;
        case 6:
          if (prompt.visible()) {
            prompt.Text1.setText("guest");
            prompt.Text2.setText(pick(3) == 0 ? "wrong" : line::kPracticePassword);
            prompt.Command1.click();
          }
          break;
        case 7:
          if (prompt.visible()) prompt.Command2.click();
          break;
        case 8:
        case 9:
          if (status.visible()) status.Command1.click();
          break;
        case 10:
          if (status.visible()) status.closeMark.click();
          break;
        case 11: world_.ports.unplug(pick(2) ? "COM5" : "COM7"); break;
        case 12: world_.ports.plug(pick(2) ? "COM5" : "COM7", World::phone()); break;
        case 13: main.refreshList(); break;
        case 14: rightClick(pick(4)); break;
        case 15: main.ListView1.selectRow(-1); break;
        case 16: replaceEntry(); break;
        case 17:
          world_.desktop.postMessage(pick(3) + 500, world_.desktop.registeredMessage, pick(0x2002), pick(2) ? 691 : 0);
          break;
        case 18: main.Image3.click(); break;
        case 19:
        case 20:
          if (limits.visible()) setLimit(limits);
          break;
        case 21:
          if (limits.visible()) limits.Command2.click();
          break;
        case 22: moveCounters(); break;
        case 23: main.Image1.click(); break;
        case 24:
          world_.dialogs.onMenu = [] { return 1u; };
          static_cast<ControlEvents&>(main.ListView1).mousePressed(MouseButton::right, 1, 1);
          main.ListView1.chooseRow(pick(4));
          break;
        case 25:
          if (editor.visible()) fillEditor(editor);
          break;
        case 26:
          if (editor.visible()) editor.Command1.click();
          break;
        case 27:
          if (editor.visible()) (pick(2) ? editor.Option1 : editor.Option2).click();
          break;
        case 28:
          if (editor.visible()) editor.Check1.click();
          break;
        case 29:
          if (editor.visible()) editor.Command4.click();
          break;
        case 30:
          if (editor.visible()) editor.Combo3.chooseItem(pick(2));
          if (editor.visible()) editor.Combo1.chooseItem(pick(3));
          break;
        case 31:
          if (editor.loaded()) editor.Command3.click();
          break;
        case 32:
          if (editor.visible() && editor.Image2.visible()) editor.Image2.click();
          break;
        case 33:
        case 34: useDrivers(); break;
        case 35: world_.desktop.post([this] { useDrivers(); }); break;
        case 36:
          if (editor.visible()) usePicker(editor);
          break;
        default: break;
      }
    });
    world_.desktop.advance(pick(10) == 0 ? 5000 : pick(200));
  }

 private:
  int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  void rightClick(int row) {
    world_.dialogs.onMenu = [this] { return static_cast<std::uint32_t>(pick(4)); };
    static_cast<ControlEvents&>(windows_.form1.ListView1).mousePressed(MouseButton::right, 1, 1);
    windows_.form1.ListView1.chooseRow(row);
  }
  // The picker keeps whoever opened it until it is closed.
  void usePicker(Form2& editor) {
    Form3& picker = windows_.form3;
    for (int i = pick(6); i > 0; --i) {
      world_.desktop.postIn(pick(30), [this, &picker] {
        if (!picker.visible()) return;
        switch (pick(6)) {
          case 0: picker.Combo1.chooseItem(pick(3)); break;
          case 1: picker.ListView2.chooseRow(pick(3)); break;
          case 2: picker.ListView2.activateRow(pick(3)); break;
          case 3: picker.Command3.click(); break;
          case 4: picker.Command2.click(); break;
          default: picker.Command4.click(); break;
        }
        if (windows_.recordForm.visible() && pick(2)) windows_.recordForm.Command1.click();
      });
    }
    world_.desktop.postIn(40, [&picker] { picker.unload(); });
    editor.Command2.click();
  }
  // In the driver window, also while one of its installations is under way.
  void useDrivers() {
    frmDriver& drivers = windows_.driverForm;
    if (!drivers.visible()) return;
    switch (pick(8)) {
      case 0: drivers.Combo1.chooseItem(pick(5)); break;
      case 1: drivers.Combo2.chooseItem(pick(30)); break;
      case 2: drivers.Combo3.chooseItem(pick(2)); break;
      case 3:
        if (depth_ < 3) {
          ++depth_;
          drivers.Command1.click();
          --depth_;
        }
        break;
      case 4: drivers.cmdOK.click(); break;
      case 5: drivers.Command3.click(); break;
      case 6: (pick(2) ? drivers.Combo2 : drivers.Combo1).select(pick(3) - 1); break;
      default: drivers.mousePressed(MouseButton::left, pick(50), pick(50)); break;
    }
  }
  void setLimit(Form6& limits) {
    const char* inputs[] = {"1", "2", "50", "546", "547", "0", "-3", "", "abc", "32767", "99999", "1e9"};
    (pick(2) ? limits.Option1 : limits.Option2).click();
    limits.Text1.setText(inputs[pick(12)]);
    limits.Text2.setText(inputs[pick(12)]);
    limits.Command1.click();
  }
  void fillEditor(Form2& editor) {
    const char* names[] = {"Office", "Home", "Garden", " ", "", "a/b"};
    const char* addresses[] = {"", "-", "10.0.0.1", "1.2.3.4.5"};
    editor.Text1.setText(names[pick(6)]);
    editor.Text2.setText(pick(4) ? "*99#" : " ");
    editor.Text3.setText("apn");
    editor.Text4.setText(addresses[pick(4)]);
    editor.Text5.setText(addresses[pick(4)]);
  }
  void moveCounters() {
    world_.interfaces.failure = pick(10) == 0 ? 5 : 0;
    world_.interfaces.rows[1].type = pick(10) == 0 ? 23 : 6;
    world_.interfaces.rows[1].received += random_() % (pick(10) == 0 ? 0xFFFFFFFFu : 30'000u);
    world_.interfaces.rows[1].sent += random_() % 30'000;
  }
  void replaceEntry() {
    EntryChoices choices;
    choices.number = "*99#";
    choices.device = pick(2) ? "Nokia 6230 USB Modem" : "Samsung D500 USB Modem";
    const char* names[] = {"Corvanti-Office", "Corvanti-Home", "Work"};
    Module1::SetEntryProperties(world_.ras, names[pick(3)], editorRecord(choices));
  }

  World& world_;
  Windows& windows_;
  std::mt19937 random_;
  int depth_ = 0;  // of installations in installations
};

TEST(RandomUserStory, NothingBreaksWhateverTheUserDoes) {
  const char* asked = std::getenv("PELVARO_RANDOM_EVENTS");
  const int events = asked ? std::atoi(asked) : 20'000;
  const char* seeded = std::getenv("PELVARO_RANDOM_SEED");
  constexpr int kEventsPerWorld = 2'000;
  unsigned seed = seeded ? static_cast<unsigned>(std::atoi(seeded)) : 1;
  for (int done = 0; done < events; done += kEventsPerWorld, ++seed) {
    SCOPED_TRACE("PELVARO_RANDOM_SEED=" + std::to_string(seed));
    World world;
    world.environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Programs"}};
    fake::FakeRandom random;
    std::string& list = world.files.contents["C:\\Pelvaro\\Default.DAT"];
    for (const char* line : {"Country/ City,Operator,APN,User Name,Password,Primary DNS,Secondary DNS,Plan,A,B,C",
                             "Lisbon,Norline,internet,[blank],[blank],192.0.2.1,,,,,",
                             "Porto,Telvira,data,guest,,,,,,,", "Lisbon,Marisol,marisol,,,,,,,,"}) {
      list += modEncrypt::Scramble(line, random) + "\r\n";
    }
    world.files.folders = {"C:\\WINDOWS\\SYSTEM32"};
    for (const char* file : {"MT\\a.sys", "MT\\win2k\\b.inf", "NK-A01\\c.sys", "SS-A01\\d.sys", "SE-A01\\e.inf"}) {
      world.files.contents[std::string("C:\\Programs\\corvanti\\common\\driver\\") + file] = "driver";
    }
    Windows windows(world.services);
    world.desktop.guarded([&] { windows.form1.show(); });
    RandomUser user(world, windows, seed);
    for (int i = 0; i < kEventsPerWorld && !testing::Test::HasFailure(); ++i) {
      user.act();
      checkInvariants(world, windows);
    }
    if (testing::Test::HasFailure()) return;
  }
}

}  // namespace
}  // namespace pelvaro
