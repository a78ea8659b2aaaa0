// The main window: its list, menu, poll, pictures and frame.
#include "story.h"
#include "ui/button_pictures.h"

namespace pelvaro {
namespace {

using fake::Lines;

struct MainWindow : Story {
  Form1& main() { return windows->form1; }
  // What the platform's list reports of a right click on a row.
  void rightClick(int row) {
    auto& list = static_cast<ControlEvents&>(main().ListView1);
    user([&] { list.mousePressed(MouseButton::right, 5, 5); });
    user([&] { main().ListView1.chooseRow(row); });
  }
  void leftClick(int row) {
    auto& list = static_cast<ControlEvents&>(main().ListView1);
    user([&] { list.mousePressed(MouseButton::left, 5, 5); });
    user([&] { main().ListView1.chooseRow(row); });
    user([&] { list.mouseReleased(MouseButton::left, 5, 5); });
  }
};

TEST_F(MainWindow, ALeftClickEnablesTheConnectImageAndOpensNoMenu) {
  leftClick(1);
  EXPECT_TRUE(main().Image2.enabled());
  EXPECT_EQ(main().Image2.picture(), Picture::connect);
  EXPECT_TRUE(world.dialogs.captions.empty());
}

TEST_F(MainWindow, ARightClickOpensTheMenuAtThePointer) {
  world.journal.take();
  rightClick(0);
  EXPECT_EQ(world.journal.take(),
            (Lines{"AppendMenu 0 1 Edit", "AppendMenu 0 2 Delete", "TrackPopupMenu 386 100 200 77", "DestroyMenu"}));
}

TEST_F(MainWindow, TheMenuSwallowsTheReleaseAndTheNextArrowKeyDoesNotOpenIt) {
  rightClick(0);
  world.dialogs.captions.clear();
  user([this] { main().ListView1.chooseRow(1); });  // by an arrow key: no press, no release
  EXPECT_TRUE(world.dialogs.captions.empty());
}

TEST_F(MainWindow, ARightClickOnTheRowThatIsSelectedCounts) {
  leftClick(0);
  rightClick(0);
  EXPECT_EQ(world.dialogs.captions, (Lines{"Edit", "Delete"}));
}

TEST_F(MainWindow, DeleteRemovesTheEntryAtOnceWithoutAQuestionAndKeepsTheOrder) {
  world.dialogs.onMenu = [] { return 2u; };
  world.dialogs.onMessage = [](const std::string& text) -> int {
    ADD_FAILURE() << text;
    return 1;
  };
  rightClick(1);
  ASSERT_EQ(main().ListView1.count(), 2);
  EXPECT_EQ(main().ListView1.itemText(0), "Corvanti-Office");
  EXPECT_EQ(main().ListView1.itemText(1), "Work");
  EXPECT_EQ(main().ListView1.selectedRow(), -1);
  EXPECT_TRUE(main().Image2.enabled());
  EXPECT_EQ(world.line.phonebook().entries.size(), 2u);
}

TEST_F(MainWindow, AnEntryThatIsGoneAlreadyStillLeavesTheList) {
  world.line.deleteEntry(nullptr, "Work");
  world.dialogs.onMenu = [] { return 2u; };
  rightClick(2);
  EXPECT_EQ(main().ListView1.count(), 2);
}

TEST_F(MainWindow, TheSelectionMayGoWhileTheMenuIsOpen) {
  world.dialogs.onMenu = [this] {
    main().refreshList();
    return 2u;
  };
  rightClick(1);
  EXPECT_EQ(main().ListView1.count(), 3) << "nothing was selected any more: nothing is deleted";
}

TEST_F(MainWindow, EndingTheProgramBehindTheOpenMenuDeletesNothing) {
  world.dialogs.onMenu = [this] {
    main().closeRequested();
    return 2u;
  };
  rightClick(1);
  EXPECT_TRUE(world.desktop.ended());
  EXPECT_FALSE(main().loaded()) << "nothing that was under way may load it again";
  EXPECT_EQ(world.line.phonebook().entries.size(), 3u);
}

TEST_F(MainWindow, EndingTheProgramBehindAQuestionUnwindsWhoAsked) {
  world.dialogs.onMessage = [this](const std::string&) {
    main().closeRequested();
    return kAnswerYes;
  };
  world.journal.take();
  user([this] { main().CallPhone("1", "Ann"); });
  EXPECT_TRUE(world.desktop.ended());
  ASSERT_EQ(world.journal.lines().size(), 2u) << "asked, and not called";
  EXPECT_EQ(world.journal.lines()[1], "SaveSetting Window\\Form1=100,100");
}

TEST_F(MainWindow, AddOpensTheEditorAndRefillsTheListAtOnce) {
  leftClick(1);
  world.line.deleteEntry(nullptr, "Work");
  user([this] { main().Image1.click(); });
  EXPECT_TRUE(windows->form2.visible());
  EXPECT_EQ(main().ListView1.count(), 2);
  EXPECT_EQ(main().ListView1.selectedRow(), -1);
}

TEST_F(MainWindow, TheMenusEditOpensTheEditorOfTheSelectedEntry) {
  world.dialogs.onMenu = [] { return 1u; };
  rightClick(1);
  EXPECT_TRUE(windows->form2.visible());
  EXPECT_EQ(windows->form2.Command1.text(), "Modify");
  EXPECT_EQ(windows->form2.Text1.text(), "Home");
  EXPECT_EQ(main().ListView1.selectedRow(), 1);
}

TEST_F(MainWindow, AnEmptyPhonebookGivesAnEmptyListAndADisabledImage) {
  for (const char* name : {"Corvanti-Office", "Corvanti-Home", "Work"}) world.line.deleteEntry(nullptr, name);
  user([this] { main().refreshList(); });
  wait(100);
  EXPECT_EQ(main().ListView1.count(), 0);
  EXPECT_FALSE(main().Image2.enabled());
  EXPECT_EQ(status(), kDown);
}

TEST_F(MainWindow, MoreThan256EntriesShowTheFirst256) {
  line::Scenario scenario = World::quickScenario();
  scenario.entries = 300;
  world.line.setScenario(scenario);
  user([this] { main().refreshList(); });
  EXPECT_EQ(main().ListView1.count(), 256);
}

TEST_F(MainWindow, AFailedEnumerationOfConnectionsLeavesDisconnected) {
  dial("Work");
  ASSERT_TRUE(waitForStatus(kUp));
  line::Scenario scenario = World::quickScenario();
  scenario.failures = {{"enumConnections", 5, 3}};
  world.line.setScenario(scenario);
  wait(60);
  EXPECT_EQ(status(), kDown);
  EXPECT_TRUE(waitForStatus(kUp, 1000)) << "the next good poll brings it back";
}

TEST_F(MainWindow, WithoutALimitThePollHidesTheLimitLabelsAndEmptiesTheirCaptions) {
  for (Label* label : {&main().Label9, &main().Label10, &main().Label11, &main().Label12}) {
    EXPECT_FALSE(label->visible());
  }
  EXPECT_EQ(main().Label9.text(), " elapse");
  EXPECT_EQ(main().Label11.text(), " remain");
}

TEST_F(MainWindow, WithALimitThePollLeavesTheLimitLabelsAlone) {
  main().requiredbyte = 1;
  user([this] { main().setSetting("Size", true); });
  wait(200);
  EXPECT_EQ(main().Label9.text(), "Size elapse");
  EXPECT_EQ(main().Label11.text(), "Size remain");
  EXPECT_TRUE(main().Label12.visible());
  main().requiredbyte = 0;
  main().requiredtime = 1;
  wait(200);
  EXPECT_TRUE(main().Label9.visible());
  main().requiredtime = 0;
  wait(60);
  EXPECT_FALSE(main().Label9.visible());
}

TEST_F(MainWindow, ThePollGoesOnBehindAQuestion) {
  dial("Work");
  ASSERT_TRUE(waitForStatus(kUp));
  world.dialogs.onMessage = [this](const std::string&) {
    world.ports.unplug("COM5");
    wait(3600'000);
    EXPECT_EQ(status(), kDown);
    return kAnswerNo;
  };
  user([this] { main().CallPhone("123", "Ann"); });
}

TEST_F(MainWindow, ThePollGoesOnBehindAQuestionThatOpensInsideItsOwnYield) {
  dial("Work");
  ASSERT_TRUE(waitForStatus(kUp));
  bool asked = false;
  world.dialogs.onMessage = [&](const std::string&) {
    asked = true;
    world.ports.unplug("COM5");
    wait(1000);
    EXPECT_EQ(status(), kDown);
    return kAnswerNo;
  };
  // Comes due together with a poll, so that the poll's yield serves it.
  world.desktop.post([this] {
    world.desktop.post([this] { main().CallPhone("123", "Ann"); });
    static_cast<TimerEvents&>(main().Timer1).ticked();
  });
  wait(100);
  EXPECT_TRUE(asked);
}

TEST_F(MainWindow, TextsThatAreReadFromTheScreenDecideNotCopies) {
  // A script sets the status text: step 4 of the poll goes by what is there.
  dial("Work");
  ASSERT_TRUE(waitForStatus(kUp));
  windows->form1.Image2.setToolTipText("connect");
  user([this] { windows->form1.connectOrHangUp(); });
  EXPECT_FALSE(windows->form4.visible()) << "not exactly Connect: it hangs up";
  wait(100);
  EXPECT_EQ(status(), kDown);
}

TEST_F(MainWindow, TheModemKeysAreReadOnceWithTheSixtyFourBitViewAsTheSecondTry) {
  World other;
  other.registry.plainMissing = true;
  other.registry.view64Missing = false;
  other.registry.view64 = {"Nokia 6230 USB Modem", "Siemens S65"};
  Windows second(other.services);
  other.desktop.guarded([&] { second.form1.show(); });
  EXPECT_EQ(second.form1.modemKeys, (Lines{"Nokia 6230 USB Modem", "Siemens S65"}));
  EXPECT_EQ(other.registry.open, 0);
  const std::string key = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Unimodem\\DeviceSpecific";
  EXPECT_EQ(other.journal.lines(), (Lines{"RegOpenKey " + key, "RegOpenKey " + key + " 64"}));
}

TEST_F(MainWindow, CallPhoneAsksAndHandsTheTrimmedTextsOn) {
  world.journal.take();
  user([this] { main().CallPhone("  0123 ", " Ann "); });
  EXPECT_EQ(world.journal.take(), (Lines{"MessageBox 4 About to call Ann at phone number 0123\r\nDo it?",
                                         "tapiRequestMakeCall 0123|Pelvaro|Ann|"}));
}

TEST_F(MainWindow, CallPhoneDoesNothingOnNoOrWithoutANumber) {
  world.journal.take();
  user([this] { main().CallPhone("   ", "Ann"); });
  EXPECT_TRUE(world.journal.take().empty());
  world.dialogs.onMessage = [](const std::string&) { return kAnswerNo; };
  user([this] { main().CallPhone("1", ""); });
  EXPECT_EQ(world.journal.take(), (Lines{"MessageBox 4 About to call  at phone number 1\r\nDo it?"}));
}

TEST_F(MainWindow, DraggingMovesTheWindowByThePointersOffset) {
  main().mousePressed(MouseButton::left, 100, 50);
  main().mouseMoved(MouseButton::left, 103, 45);
  EXPECT_EQ(main().movedX(), 3);
  EXPECT_EQ(main().movedY(), -5);
  main().mouseReleased(MouseButton::left, 103, 45);
  main().mouseMoved(MouseButton::none, 200, 200);
  EXPECT_EQ(main().movedX(), 3);
}

TEST_F(MainWindow, ThePromptIsDraggedOnlyWhileTheLeftButtonIsHeld) {
  choose("Work");
  user([this] { main().Image2.click(); });
  Form4& prompt = windows->form4;
  prompt.mouseMoved(MouseButton::left, 50, 50);
  EXPECT_EQ(prompt.movedX(), 0) << "no press was recorded";
  prompt.mousePressed(MouseButton::left, 0, 10);
  prompt.mouseMoved(MouseButton::left, 7, 12);
  EXPECT_EQ(prompt.movedX(), 7) << "a press at the left edge drags too";
  EXPECT_EQ(prompt.movedY(), 2);
  prompt.mouseMoved(MouseButton::none, 99, 99);
  prompt.mouseReleased(MouseButton::left, 7, 12);
  prompt.mouseMoved(MouseButton::left, 99, 99);
  EXPECT_EQ(prompt.movedX(), 7);
}

TEST_F(MainWindow, TheImageButtonsShowNormalHoverAndPressed) {
  leftClick(0);
  auto& events = static_cast<ControlEvents&>(main().Image2);
  events.mouseMoved(MouseButton::none, 1, 1);
  EXPECT_EQ(main().Image2.look(), Look::hover);
  events.mousePressed(MouseButton::left, 1, 1);
  EXPECT_EQ(main().Image2.look(), Look::pressed);
  events.mouseMoved(MouseButton::left, 2, 2);
  EXPECT_EQ(main().Image2.look(), Look::pressed);
  events.mouseReleased(MouseButton::left, 1, 1);
  EXPECT_EQ(main().Image2.look(), Look::normal);
  static_cast<ControlEvents&>(main().Image3).mouseMoved(MouseButton::none, 1, 1);
  EXPECT_EQ(main().Image3.look(), Look::hover);
  main().mouseMoved(MouseButton::none, 1, 1);
  EXPECT_EQ(main().Image3.look(), Look::normal);
}

TEST_F(MainWindow, TheConnectImageTurnsIntoHangUpWithTheState) {
  dial("Work");
  ASSERT_TRUE(waitForStatus(kUp));
  EXPECT_EQ(main().Image2.picture(), Picture::hangUp);
  EXPECT_EQ(main().Image4.picture(), Picture::connected);
  choose("Corvanti-Home");
  ASSERT_TRUE(waitForStatus(kDown));
  EXPECT_EQ(main().Image2.picture(), Picture::connect);
  EXPECT_EQ(main().Image4.picture(), Picture::disconnected);
}

TEST_F(MainWindow, MinimiseMarkMinimisesAndEscapeDoesNotEndTheProgram) {
  user([this] { main().Label6.click(); });
  EXPECT_TRUE(main().minimised());
  user([this] { main().escapePressed(); });
  EXPECT_FALSE(world.desktop.ended());
  user([this] { main().closeRequested(); });
  EXPECT_TRUE(world.desktop.ended());
}

TEST_F(MainWindow, ASplashWhoseTextIsNotExactlyConnectDoesNothing) {
  dial("Work");
  ASSERT_TRUE(waitForStatus(kUp));
  windows->setMode("Get Device");
  user([this] { windows->form5.show(); });
  EXPECT_EQ(windows->form5.textLabel.text(), "Get Device");
  wait(100);
  EXPECT_EQ(status(), kUp);
  // A hang-up asks for the same splash while it is up and the active one.
  user([this] { main().connectOrHangUp(); });
  wait(100);
  EXPECT_EQ(status(), kDown);
  EXPECT_FALSE(windows->form5.visible());
}

TEST_F(MainWindow, ComingBackFromAnotherProgramDoesNotActivateTheSplashAgain) {
  windows->setMode("connect");  // not exactly Connect: the first activation does nothing
  user([this] { windows->form5.show(); });
  windows->setMode("Connect");
  user([this] { windows->form5.activated(); });
  EXPECT_FALSE(windows->dialForm.loaded()) << "it was the active one among our own all the time";
}

TEST_F(MainWindow, ADoubleClickConnectsWhileTheTooltipSaysSo) {
  user([this] { main().ListView1.activateRow(1); });
  EXPECT_TRUE(windows->form4.visible());
  windows->form4.Text1.setText(line::kPracticeUser);
  windows->form4.Text2.setText(line::kPracticePassword);
  user([this] { windows->form4.Command1.click(); });
  ASSERT_TRUE(waitForStatus(kUp));
  wait(100);
  ASSERT_EQ(tooltip(), "Hang Up");
  const std::string entry = main().ListView1.selectedText();
  user([this] { main().ListView1.activateRow(main().ListView1.selectedRow()); });
  wait(200);
  EXPECT_EQ(status(), kUp) << "it hangs nothing up";
  EXPECT_FALSE(windows->form4.visible());
  EXPECT_EQ(main().ListView1.selectedText(), entry);
}

TEST_F(MainWindow, F1ShowsTheManualOrSaysWhereItIs) {
  world.journal.take();
  user([this] { main().helpRequested(); });
  ASSERT_EQ(world.journal.lines().size(), 1u);
  EXPECT_TRUE(world.journal.take()[0].starts_with("MessageBox 0 The manual is the file manual.html"));
  world.files.contents["C:\\Pelvaro\\manual.html"] = "<html>";
  user([this] { main().helpRequested(); });
  EXPECT_EQ(world.journal.take(), (Lines{"ShellExecute open C:\\Pelvaro\\manual.html"}));
  world.processes.missing = true;
  user([this] { windows->form4.show(); });
  user([this] { windows->form4.helpRequested(); });
  EXPECT_EQ(world.journal.take().size(), 2u) << "nothing shows it: the words instead";
}

TEST_F(MainWindow, ItOpensWhereItWasLeftAndThatIsKeptBesideTheSettings) {
  EXPECT_EQ(main().place(), (Place{100, 100})) << "nothing is kept yet";
  main().moveTo({40, -7});
  user([this] { main().Label3.click(); });
  EXPECT_EQ(world.settings.get("Window", "Form1"), "40,-7");
  EXPECT_EQ(world.settings.get("Setting", "Form1"), "");
}

struct WindowPlaces : MainWindow, testing::WithParamInterface<std::pair<const char*, Place>> {
  void SetUp() override {
    world.settings.plant("Window", "Form1", GetParam().first);
    MainWindow::SetUp();
  }
};

TEST_P(WindowPlaces, AreTakenOrPassedOver) {
  EXPECT_EQ(main().place(), GetParam().second);
  EXPECT_TRUE(main().visible());
}

INSTANTIATE_TEST_SUITE_P(Kept, WindowPlaces,
                         testing::Values(std::pair{"40,50", Place{40, 50}}, std::pair{"-5,0", Place{-5, 0}},
                                         std::pair{"", Place{100, 100}}, std::pair{"40", Place{100, 100}},
                                         std::pair{"a,b", Place{100, 100}}, std::pair{"1,2,3", Place{100, 100}},
                                         std::pair{"99999,1", Place{100, 100}}, std::pair{",", Place{100, 100}}));

TEST_F(MainWindow, TheColourSchemeIsAppliedAndFollowsAColourChange) {
  EXPECT_EQ(main().colours().background, 0xF8E4D8u);
  EXPECT_EQ(main().Label1.colours().text, 0x800000u);
  EXPECT_EQ(main().Label1.colours().background, 0xF8E4D8u);
  choose("Work");
  user([this] { main().Image2.click(); });
  EXPECT_EQ(windows->form4.Command1.colours().background, 0xFFFFFFu);
  world.desktop.systemColours[19] = 0xC0FFFF;
  user([this] { main().coloursChanged(); });
  EXPECT_EQ(main().colours().background, 0xC0FFFFu);
  world.desktop.systemColours[19] = 0x000000;  // as on later systems: navy on black cannot be read
  user([this] { main().coloursChanged(); });
  EXPECT_EQ(main().colours().background, 0xF8E4D8u);
}

}  // namespace
}  // namespace pelvaro
