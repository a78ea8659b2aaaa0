// Detecting the phone from the editor: which modems are listed, adding one by hand, and what may happen meanwhile.
#include "editor.h"

namespace pelvaro {
namespace {

constexpr const char* kApplet = "Start 2 RunDLL32 shell32.dll,Control_RunDLL MODEM.CPL,Modems,Add";

TEST_F(Editor, WithoutAPhoneTheOnlyEntryIsThatThereIsNone) {
  add();
  validate();
  EXPECT_TRUE(editor().Check1.checked());
  EXPECT_EQ(devices(), (Texts{kNoModem}));
  EXPECT_EQ(editor().Combo1.text(), kNoModem);
  fill("Garden");
  EXPECT_FALSE(editor().Command1.enabled());
  validate();
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung}));
  EXPECT_EQ(editor().Combo1.selected(), 0);
  wait(100);
  EXPECT_TRUE(editor().Command1.enabled());
}

TEST_F(Editor, OnlyTheModemWhosePhoneAnswersIsListed) {
  plug("COM16", "SAMSUNG ELECTRONICS CO. | OK");
  add();
  validate();
  EXPECT_EQ(devices(), (Texts{kSamsung}));
  EXPECT_TRUE(portIsFree("COM16"));
}

TEST_F(Editor, PhonesOnPortsThatAreNotAskedAreNotFound) {
  plug("COM1", "Nokia | OK");
  plug("COM2", "Nokia | OK");
  plug("COM17", "Nokia | OK");
  add();
  validate();
  EXPECT_EQ(devices(), (Texts{kNoModem}));
}

TEST_F(Editor, OfTwoPhonesTheFirstOnesMakerCountsForBoth) {
  plug("COM4", "Acme Ltd | OK");
  plug("COM6", "Nokia | OK");
  add();
  validate();
  EXPECT_EQ(devices(), (Texts{kNoModem})) << "the reply is kept between ports, and its first maker is found again";
}

TEST_F(Editor, AModemIsAddedByHandAndTheListFollows) {
  add();
  world.journal.take();
  user([this] { editor().Command4.click(); });
  EXPECT_EQ(world.journal.take(), (Texts{kApplet}));
  EXPECT_TRUE(editor().timerRefresh.enabled());
  wait(1000);
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung}));
  EXPECT_EQ(editor().Combo1.selected(), -1) << "nothing is selected while the list is rebuilt";
  EXPECT_TRUE(editor().timerRefresh.enabled());
  line::Phonebook book = world.line.phonebook();
  book.devices.push_back(book.devices.front());
  book.devices.back().name = "Third Modem";
  world.line.setPhonebook(book);
  wait(100);
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung, "Third Modem"}));
  EXPECT_EQ(editor().Combo1.selected(), 0);
  EXPECT_FALSE(editor().timerRefresh.enabled());
}

TEST_F(Editor, AListThatHasBecomeEmptyEndsTheWatchingTooAndSelectsNothing) {
  add();
  user([this] { editor().Command4.click(); });
  line::Phonebook book = world.line.phonebook();
  book.devices.clear();
  world.line.setPhonebook(book);
  wait(100);
  EXPECT_EQ(editor().Combo1.count(), 0);
  EXPECT_FALSE(editor().timerRefresh.enabled());
}

TEST_F(Editor, ChoosingADeviceEndsTheWatching) {
  add();
  user([this] { editor().Command4.click(); });
  wait(300);
  user([this] { editor().Combo1.chooseItem(1); });
  EXPECT_FALSE(editor().timerRefresh.enabled());
  wait(300);
  EXPECT_EQ(editor().Combo1.text(), kSamsung);
}

TEST_F(Editor, TickingTheBoxEndsTheWatchingToo) {
  add();
  user([this] { editor().Command4.click(); });
  validate();
  EXPECT_FALSE(editor().timerRefresh.enabled());
  EXPECT_EQ(editor().Combo1.text(), kNoModem);
}

TEST_F(Editor, ThePlaceholderCountsAsAnEntryWhenAModemIsToBeAdded) {
  add();
  validate();
  user([this] { editor().Command4.click(); });
  wait(100);
  EXPECT_EQ(editor().Combo1.count(), 0) << "one entry before, none now: the list has changed";
  EXPECT_FALSE(editor().timerRefresh.enabled());
}

TEST_F(Editor, ForBluetoothTheHiddenPictureGivesAdviceWhenAMessageReachesIt) {
  add();
  user([this] { editor().Combo3.chooseItem(1); });
  user([this] { editor().Image2.click(); });
  EXPECT_TRUE(asked.empty()) << "nobody can see it";
  world.journal.take();
  user([this] { static_cast<ControlEvents&>(editor().Image2).clicked(); });
  EXPECT_EQ(asked, (Texts{"Please manually add the device for bluetooth connection."}));
  EXPECT_EQ(world.journal.take().back(), kApplet);
  EXPECT_TRUE(editor().timerRefresh.enabled());
}

TEST_F(Editor, AnEditorClosedBehindTheAdviceStaysClosed) {
  add();
  user([this] { editor().Combo3.chooseItem(1); });
  world.dialogs.onMessage = [this](const std::string&) {
    editor().closeRequested();
    return 0;
  };
  user([this] { static_cast<ControlEvents&>(editor().Image2).clicked(); });
  EXPECT_FALSE(editor().loaded());
}

TEST_F(Editor, EveryFillingProbesAnew) {
  plug("COM5", "Acme Ltd | OK");
  add();
  validate();
  EXPECT_EQ(editor().brand(), "acmeltd");
  EXPECT_EQ(devices(), (Texts{kNoModem}));
  plug("COM5", "Nokia | OK");
  user([this] { editor().Check1.setChecked(true); });
  EXPECT_EQ(devices(), (Texts{kNokia})) << "nothing of the last time is kept";
}

TEST_F(Editor, TheRebuiltListIsValidatedToo) {
  plug("COM5", "Nokia | OK");
  add();
  validate();
  user([this] { editor().Command4.click(); });
  wait(500);
  EXPECT_EQ(devices(), (Texts{kNokia}));
  EXPECT_TRUE(editor().timerRefresh.enabled());
  plug("COM5", "SAMSUNG | OK");
  wait(200);
  EXPECT_EQ(devices(), (Texts{kSamsung})) << "as many as before: the watching goes on";
  EXPECT_TRUE(editor().timerRefresh.enabled());
}

TEST_F(Editor, ReopenedWithTheBoxTickedAndNoPhoneTheListStaysEmpty) {
  add();
  validate();
  user([this] { editor().hide(); });
  add();
  EXPECT_TRUE(editor().Check1.checked());
  EXPECT_EQ(devices(), Texts{}) << "only the click adds the entry that there is none";
}

TEST_F(Editor, AMissingAppletIsARunTimeError) {
  world.processes.missing = true;
  add();
  user([this] { editor().Command4.click(); });
  EXPECT_EQ(world.desktop.reported, (Texts{"Run-time error '53':\n\nFile not found"}));
}

TEST_F(Editor, TheSplashOfTheDeviceReadingDialsNothing) {
  add();
  EXPECT_FALSE(windows->dialForm.loaded());
  EXPECT_EQ(status(), kDown);
  EXPECT_EQ(windows->form5.textLabel.text(), "Get Device");
}

TEST_F(Editor, TheBrandOfTheLastProbeAndTheKeysAreAtHand) {
  plug("COM3", "Sony Ericsson | OK");
  add();
  bool found = true;
  user([&] { found = editor().validateDevice("K700"); });
  EXPECT_TRUE(found);
  EXPECT_EQ(editor().GetDevicesBrand("D500"), "samsung d500 usb modem");
  EXPECT_EQ(Form2::formatBrand("Gipsy Soft 2"), "siemens");
  user([&] { EXPECT_TRUE(editor().COMAvailableVB(3)); });
  user([&] { EXPECT_FALSE(editor().COMAvailableVB(4)); });
}

// What may happen while a phone lets the editor wait.
struct Waiting : Editor {
  void SetUp() override {
    Editor::SetUp();
    plug("COM9", "");  // says OK to "AT", and nothing to the question who made it
    world.desktop.yieldTakes = 1;
    add();
    ASSERT_TRUE(editor().visible());
  }
  // The user does something a while after the probe has begun.
  void meanwhile(std::function<void()> action) {
    world.desktop.postIn(50, std::move(action));
    validate();
  }
};

TEST_F(Waiting, TheOtherTimersGoOn) {
  bool seen = false;
  meanwhile([&] {
    editor().Command1.setText("a script was here");
    main().statuslbl.setText("a script was here");
    world.desktop.postIn(2000, [&] {
      EXPECT_EQ(editor().Command1.text(), "Add Now") << "the editor's own timer";
      EXPECT_EQ(status(), kDown) << "the main window's poll";
      seen = true;
      editor().Command3.click();
    });
  });
  EXPECT_TRUE(seen);
}

TEST_F(Waiting, ClosingTheEditorEndsTheProbeAndFreesThePort) {
  meanwhile([this] { editor().Command3.click(); });
  EXPECT_FALSE(editor().loaded()) << "and nothing loads it again";
  EXPECT_TRUE(portIsFree("COM9"));
  EXPECT_TRUE(world.desktop.reported.empty());
}

TEST_F(Waiting, ReopeningTheEditorMeanwhileShowsAWholeList) {
  meanwhile([this] {
    editor().Command3.click();
    main().Image1.click();
  });
  EXPECT_TRUE(editor().visible());
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung})) << "the old filling adds nothing to it";
  EXPECT_TRUE(portIsFree("COM9"));
}

TEST_F(Waiting, EndingTheProgramEndsTheProbeAtOnce) {
  meanwhile([this] { main().closeRequested(); });
  EXPECT_TRUE(world.desktop.ended());
  EXPECT_FALSE(main().loaded());
  EXPECT_TRUE(portIsFree("COM9"));
  EXPECT_TRUE(world.desktop.reported.empty());
}

TEST_F(Waiting, ASecondProbeTakesThePortAndBothEnd) {
  meanwhile([this] {
    plug("COM9", "Nokia | OK");  // and it answers now
    editor().Check1.setChecked(true);
  });
  EXPECT_TRUE(portIsFree("COM9"));
  EXPECT_TRUE(world.desktop.reported.empty());
  EXPECT_EQ(devices(), (Texts{kNokia})) << "of the second filling; the first has lost its port and adds nothing";
}

TEST_F(Waiting, UntickingTheBoxMeanwhileListsTheOthersUnasked) {
  meanwhile([this] {
    editor().Check1.click();  // lists both, and the wait goes on
    world.desktop.postIn(50, [this] { editor().stopProbe(); });
  });
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung, kSamsung})) << "the second modem is not asked about any more";
}

TEST_F(Waiting, ACablePulledMeanwhileIsARunTimeErrorAndNeverAHang) {
  meanwhile([this] { world.ports.unplug("COM9"); });
  ASSERT_EQ(world.desktop.reported.size(), 1u);
  EXPECT_TRUE(world.desktop.reported[0].starts_with("Run-time error '80")) << world.desktop.reported[0];
  EXPECT_TRUE(world.desktop.ended());
}

TEST_F(Waiting, WritingMeanwhileWritesOnceAndHidesTheEditor) {
  meanwhile([this] {
    editor().Text1.setText("Garden");
    editor().Text2.setText("*99#");
    editor().Text3.setText("apn");
    editor().Combo1.add("A modem of before");
    editor().Combo1.chooseItem(0);
    editor().Command1.setEnabled(true);
    editor().Command1.click();
  });
  EXPECT_EQ(entries().back(), "Corvanti-Garden");
  EXPECT_EQ(entries().size(), 4u);
  EXPECT_TRUE(editor().loaded());
  EXPECT_FALSE(editor().visible());
  EXPECT_TRUE(portIsFree("COM9")) << "the new connection may want it";
}

TEST_F(Waiting, TheSplashCanBeClosedWhichEndsTheProbeOfAnOpening) {
  meanwhile([this] {
    editor().hide();
    editor().stopProbe();
  });
  ASSERT_TRUE(editor().Check1.checked());
  world.desktop.postIn(50, [this] {
    EXPECT_TRUE(windows->form5.visible());
    EXPECT_EQ(windows->form5.textLabel.text(), "Get Device");
    windows->form5.closeMark.click();
  });
  add();
  EXPECT_TRUE(editor().visible());
  EXPECT_FALSE(windows->form5.visible());
  EXPECT_TRUE(portIsFree("COM9"));
}

TEST_F(Waiting, AHangUpWhileTheSplashOfAnOpeningIsUp) {
  world.desktop.yieldTakes = 0;
  world.ports.plug("COM5", World::phone());
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  world.desktop.yieldTakes = 1;
  meanwhile([this] { editor().hide(), editor().stopProbe(); });
  world.desktop.postIn(50, [this] {
    ASSERT_TRUE(windows->form5.visible());
    main().Image2.click();
    world.desktop.postIn(300, [this] {
      EXPECT_EQ(status(), kDown);
      editor().stopProbe();
    });
  });
  add();
  EXPECT_EQ(status(), kDown);
  EXPECT_FALSE(windows->form5.visible());
  EXPECT_TRUE(editor().visible());
  EXPECT_TRUE(world.desktop.reported.empty());
}

TEST_F(Waiting, EndingTheProgramWhileTheSplashOfAnOpeningIsUp) {
  meanwhile([this] { editor().hide(), editor().stopProbe(); });
  world.desktop.postIn(50, [this] { main().closeRequested(); });
  add();
  EXPECT_TRUE(world.desktop.ended());
  EXPECT_TRUE(portIsFree("COM9"));
  EXPECT_TRUE(world.desktop.reported.empty());
}

TEST_F(Waiting, AHangUpMeanwhileUsesTheSplashAndHangsUp) {
  world.desktop.yieldTakes = 0;
  world.ports.plug("COM5", World::phone());
  dial("Corvanti-Office");
  ASSERT_TRUE(waitForStatus(kUp));
  world.desktop.yieldTakes = 1;
  meanwhile([this] {
    main().Image2.click();
    world.desktop.postIn(200, [this] { editor().unload(); });
  });
  wait(100);
  EXPECT_EQ(status(), kDown);
  EXPECT_FALSE(windows->form5.visible());
}

}  // namespace
}  // namespace pelvaro
