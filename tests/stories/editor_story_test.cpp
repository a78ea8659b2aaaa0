// The connection editor: adding, modifying and renaming connections, and what it makes of bad input.
#include "editor.h"

namespace pelvaro {
namespace {

TEST_F(Editor, AddOpensItWithTheDesignValuesAndTheFirstDevice) {
  add();
  EXPECT_TRUE(editor().visible());
  EXPECT_EQ(editor().Command1.text(), "Add Now");
  EXPECT_EQ(editor().Text1.text(), "");
  EXPECT_EQ(editor().Text2.text(), "");
  EXPECT_EQ(editor().Text3.text(), "");
  EXPECT_TRUE(editor().Option1.checked());
  EXPECT_FALSE(editor().Option2.checked());
  EXPECT_FALSE(editor().Check1.checked());
  EXPECT_EQ(editor().Combo3.text(), "USB");
  EXPECT_EQ(editor().Combo3.itemText(1), "Bluetooth");
  EXPECT_EQ(devices(), (Texts{kNokia, kSamsung}));
  EXPECT_EQ(editor().Combo1.text(), kNokia);
  EXPECT_EQ(windows->mode(), "Get Device");
  EXPECT_FALSE(windows->form5.visible()) << "the splash is gone";
  EXPECT_TRUE(editor().Timer1.enabled());
  EXPECT_FALSE(editor().timerRefresh.enabled());
}

TEST_F(Editor, ANewConnectionIsWrittenUnderThePrefixedName) {
  add();
  fill("Garden", "  *99***1#  ", " internet.example ");
  editor().Combo1.chooseItem(1);
  write();
  EXPECT_EQ(entries().back(), "Corvanti-Garden");
  const RasEntryRecord written = record("Corvanti-Garden");
  EXPECT_EQ(written.LocalPhoneNumber, "*99***1#");
  EXPECT_EQ(written.DnsSuffix, "internet.example");
  EXPECT_EQ(written.DeviceName, kSamsung);
  EXPECT_EQ(written.DeviceType, "modem");
  EXPECT_EQ(written.Options, 0x3D2D011Cu);
  EXPECT_EQ(written.CountryID, 852u);
  EXPECT_EQ(written.CountryCode, 852u);
  EXPECT_EQ(written.NetProtocols, 4u);
  EXPECT_EQ(written.FramingProtocol, 1u);
  EXPECT_EQ(written.Type, 1u);
  EXPECT_EQ(written.EncryptionType, 3u);
  EXPECT_EQ(written.DnsAddress, Ip4{});
  EXPECT_TRUE(asked.empty());
  EXPECT_FALSE(editor().visible());
  EXPECT_TRUE(editor().loaded()) << "hidden, not unloaded";
  EXPECT_EQ(main().ListView1.count(), 4);
}

TEST_F(Editor, TheNameIsNotTrimmed) {
  add();
  fill(" Garden ");
  write();
  EXPECT_EQ(entries().back(), "Corvanti- Garden ");
}

TEST_F(Editor, TheWriteButtonFollowsTheBoxesTenTimesASecond) {
  add();
  wait(100);
  EXPECT_FALSE(editor().Command1.enabled());
  fill("Garden");
  EXPECT_TRUE(editor().Command1.enabled());
  for (TextBox* box : {&editor().Text1, &editor().Text2, &editor().Text3}) {
    const std::string before = box->text();
    box->setText("");
    wait(100);
    EXPECT_FALSE(editor().Command1.enabled()) << box->layout().name;
    box->setText(" ");
    wait(100);
    EXPECT_TRUE(editor().Command1.enabled()) << "a blank passes here";
    box->setText(before);
  }
  user([this] { editor().Combo1.select(-1); });
  wait(100);
  EXPECT_FALSE(editor().Command1.enabled()) << "no device is selected";
}

TEST_F(Editor, TheCaptionIsSetAgainFromTheMode) {
  add();
  editor().Command1.setText("anything");
  wait(100);
  EXPECT_EQ(editor().Command1.text(), "Add Now");
}

TEST_F(Editor, EditShowsTheEntryWithoutThePrefix) {
  edit("Corvanti-Home");
  EXPECT_EQ(editor().Command1.text(), "Modify");
  EXPECT_EQ(editor().Text1.text(), "Home");
  EXPECT_EQ(editor().Text2.text(), "*99***1#");
  EXPECT_EQ(editor().Combo1.text(), kSamsung);
  EXPECT_EQ(editor().Combo3.text(), "USB");
}

TEST_F(Editor, AfterLoadingBothBoxesShowThePrimaryAddressAndAPlainModifyStoresNone) {
  EntryChoices choices;
  choices.automaticAddress = false;
  choices.number = "*99#";
  choices.device = kNokia;
  choices.accessPoint = "old.apn";
  choices.dns = {10, 0, 0, 1};
  choices.dnsAlt = {192, 168, 255, 254};
  Module1::SetEntryProperties(world.ras, "Corvanti-Home", editorRecord(choices));
  edit("Corvanti-Home");
  EXPECT_EQ(editor().Text4.text(), "10.0.0.1");
  EXPECT_EQ(editor().Text5.text(), "10.0.0.1");
  EXPECT_EQ(editor().Text3.text(), "old.apn");
  EXPECT_TRUE(editor().Option1.checked());
  EXPECT_FALSE(editor().Text4.enabled());
  wait(100);
  write();
  EXPECT_EQ(record("Corvanti-Home").DnsAddress, Ip4{});
  EXPECT_EQ(record("Corvanti-Home").DnsAltAddress, Ip4{});
  EXPECT_EQ(record("Corvanti-Home").Options, 0x3D2D011Cu);
}

TEST_F(Editor, AModifyWithoutARenameDeletesNothing) {
  edit("Corvanti-Office");
  fill("Office", "*99*2#");
  write();
  EXPECT_EQ(entries(), (Texts{"Corvanti-Office", "Corvanti-Home", "Work"}));
  EXPECT_EQ(record("Corvanti-Office").LocalPhoneNumber, "*99*2#");
}

TEST_F(Editor, ARenameWritesTheNewEntryAndDeletesTheOldOne) {
  edit("Corvanti-Office");
  fill("Garden");
  write();
  EXPECT_EQ(entries(), (Texts{"Corvanti-Home", "Work", "Corvanti-Garden"}));
  EXPECT_EQ(main().ListView1.count(), 3);
  EXPECT_TRUE(asked.empty());
}

TEST_F(Editor, TheOldEntryIsDeletedOnlyAfterTheNewOneWasWritten) {
  line::Scenario scenario = World::quickScenario();
  scenario.journal = true;
  world.line.setScenario(scenario);
  edit("Corvanti-Office");
  fill("Garden");
  world.calls.clear();
  write();
  Texts changes;
  for (const std::string& call : world.calls) {
    if (call.starts_with("setEntry") || call.starts_with("deleteEntry"))
      changes.push_back(call.substr(0, call.find(' ')));
  }
  ASSERT_GE(changes.size(), 2u);
  EXPECT_EQ(changes.back(), "deleteEntry");
  EXPECT_EQ(changes[changes.size() - 2], "setEntryProperties");
}

// Kept on purpose: the names differ, so the old one is deleted; for a service that compares without case it is the new.
TEST_F(Editor, ARenameInLetterCaseAloneDeletesWhatTheServiceTakesForTheSame) {
  edit("Corvanti-Office");
  fill("office");
  write();
  EXPECT_EQ(entries(), (Texts{"Corvanti-Home", "Work"}));
}

TEST_F(Editor, AFailedWriteKeepsTheOldEntryAndTheFormOpen) {
  edit("Corvanti-Office");
  fill("Garden");
  line::Scenario scenario = World::quickScenario();
  scenario.failures = {{"setEntryProperties", 624, line::PlantedFailure::kAlways}};
  world.line.setScenario(scenario);
  write();
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0], Module1::RasErrorText(world.ras, 624));
  EXPECT_TRUE(editor().visible());
  EXPECT_EQ(entries(), (Texts{"Corvanti-Office", "Corvanti-Home", "Work"}));
}

TEST_F(Editor, TheResultOfTheDeletionDoesNotMatter) {
  edit("Corvanti-Office");
  fill("Garden");
  world.line.deleteEntry(nullptr, "Corvanti-Office");
  write();
  EXPECT_TRUE(asked.empty());
  EXPECT_FALSE(editor().visible());
}

TEST_F(Editor, AnEntryMadeElsewhereIsKeptAndAPrefixedOneIsWritten) {
  edit("Work");
  EXPECT_EQ(editor().Text1.text(), "Work");
  fill("Work");
  write();
  EXPECT_EQ(entries(), (Texts{"Corvanti-Office", "Corvanti-Home", "Work", "Corvanti-Work"}));
}

TEST_F(Editor, ThePrefixIsTakenOutOnceWhereverItStands) {
  EntryChoices choices;
  choices.device = kNokia;
  Module1::SetEntryProperties(world.ras, "My Corvanti-Corvanti-Line", editorRecord(choices));
  user([this] { main().refreshList(); });
  edit("My Corvanti-Corvanti-Line");
  EXPECT_EQ(editor().Text1.text(), "My Corvanti-Line");
}

TEST_F(Editor, AnEntryWhoseDeviceIsNotThereSelectsNone) {
  EntryChoices choices;
  choices.device = "Another Modem";
  Module1::SetEntryProperties(world.ras, "Corvanti-Home", editorRecord(choices));
  edit("Corvanti-Home");
  EXPECT_EQ(editor().Combo1.selected(), -1);
  fill("Home");
  EXPECT_FALSE(editor().Command1.enabled());
}

TEST_F(Editor, TypedAddressesAreStored) {
  const struct {
    const char *primary, *secondary;
    Ip4 dns, dnsAlt;
  } table[] = {
      {"10.0.0.1", "192.168.1.254", {10, 0, 0, 1}, {192, 168, 1, 254}},
      {"-", "1.2.3.4", {}, {1, 2, 3, 4}},
      {"", "", {}, {}},
      {"1.2.3.4.5", "-", {1, 2, 3, 4}, {}},
      {"255.255.255.255", " 1. 2 .3.4 ", {255, 255, 255, 255}, {1, 2, 3, 4}},
  };
  for (const auto& row : table) {
    edit("Corvanti-Home");
    user([this] { editor().Option2.click(); });
    fill("Home");
    editor().Text4.setText(row.primary);
    editor().Text5.setText(row.secondary);
    write();
    const RasEntryRecord written = record("Corvanti-Home");
    EXPECT_EQ(written.Options, 0x3D2D011Eu);
    EXPECT_EQ(written.DnsAddress, row.dns) << row.primary;
    EXPECT_EQ(written.DnsAltAddress, row.dnsAlt) << row.secondary;
  }
}

TEST_F(Editor, AnAddressThatIsNoneIsARunTimeErrorAndTheOldEntryStays) {
  const struct {
    const char* text;
    const char* report;
  } table[] = {
      {"1.2.3", "Run-time error '9':\n\nSubscript out of range"}, {"256.1.1.1", "Run-time error '6':\n\nOverflow"},
      {"a.b.c.d", "Run-time error '13':\n\nType mismatch"},       {"1.2.3.-4", "Run-time error '6':\n\nOverflow"},
      {"1..2.3", "Run-time error '13':\n\nType mismatch"},        {" ", "Run-time error '13':\n\nType mismatch"},
      {"10", "Run-time error '9':\n\nSubscript out of range"},    {"1.2.3.", "Run-time error '13':\n\nType mismatch"},
  };
  for (const auto& row : table) {
    World other;
    Windows program(other.services);
    other.desktop.guarded([&] { program.form1.show(); });
    other.desktop.guarded([&] {
      program.form2.open(false);
      program.form2.Option2.click();
      program.form2.Text2.setText("*99#");
      program.form2.Text4.setText(row.text);  // and no name
      program.form2.Command1.click();
    });
    EXPECT_EQ(other.desktop.reported, (Texts{row.report})) << row.text;
    EXPECT_TRUE(other.desktop.ended());
    EXPECT_EQ(other.line.phonebook().entries.size(), 3u) << row.text;
  }
}

TEST_F(Editor, AMissingNumberIsAskedForFirst) {
  add();
  fill("", "*99#");
  editor().Text2.setText("");
  editor().Command1.setEnabled(true);
  write();
  EXPECT_EQ(asked, (Texts{"Please enter the dialup number."}));
  EXPECT_TRUE(editor().visible());
}

TEST_F(Editor, ABlankNumberPassesAndIsStoredEmpty) {
  add();
  fill("Garden", "   ");
  write();
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(record("Corvanti-Garden").LocalPhoneNumber, "");
}

TEST_F(Editor, ABlankNameIsRefused) {
  add();
  fill("   ");
  EXPECT_TRUE(editor().Command1.enabled());
  write();
  EXPECT_EQ(asked, (Texts{"Please fill in the name"}));
  EXPECT_TRUE(editor().visible());
  EXPECT_EQ(entries().size(), 3u);
}

TEST_F(Editor, ANameThatTheServiceRefusesIsReportedInItsWords) {
  for (const std::string& name : {std::string(300, 'n'), std::string("a/b"), std::string("a*b")}) {
    add();
    fill(name);
    asked.clear();
    write();
    ASSERT_EQ(asked.size(), 1u) << name;
    EXPECT_EQ(asked[0], Module1::RasErrorText(world.ras, 123)) << name;
    EXPECT_TRUE(editor().visible());
    EXPECT_EQ(entries().size(), 3u);
  }
}

TEST_F(Editor, OptionsOpenAndCloseTheAddressBoxes) {
  add();
  EXPECT_FALSE(editor().Text4.enabled());
  EXPECT_EQ(editor().Text4.colours().background, world.desktop.systemColours[15]);
  user([this] { editor().Option2.click(); });
  EXPECT_TRUE(editor().Text4.enabled());
  EXPECT_TRUE(editor().Text5.enabled());
  EXPECT_EQ(editor().Text5.colours().background, 0xFFFFFFu);
  user([this] { editor().Label10.click(); });
  EXPECT_TRUE(editor().Option1.checked()) << "the words beside the mark choose too";
  EXPECT_FALSE(editor().Text5.enabled());
  world.desktop.systemColours[15] = 0x123456;
  user([this] { editor().coloursChanged(); });
  EXPECT_EQ(editor().Text4.colours().background, 0x123456u);
}

TEST_F(Editor, BluetoothHidesWhatIsForCables) {
  add();
  const auto seen = [this] {
    std::string text;
    for (Control* control : std::initializer_list<Control*>{&editor().Label8, &editor().Check1, &editor().Command4,
                                                            &editor().Image1, &editor().Image2}) {
      text += control->visible() ? '1' : '0';
    }
    return text;
  };
  EXPECT_EQ(seen(), "11111");
  user([this] { editor().Combo3.chooseItem(1); });
  EXPECT_EQ(seen(), "00000");
  user([this] { editor().Combo3.chooseItem(0); });
  EXPECT_EQ(seen(), "11111");
}

TEST_F(Editor, CancelCloseAndEscapeWriteNothing) {
  for (int way = 0; way < 3; ++way) {
    edit("Corvanti-Office");
    fill("Garden");
    user([&] {
      if (way == 0) editor().Command3.click();
      if (way == 1) editor().Label7.click();
      if (way == 2) editor().escapePressed();
    });
    EXPECT_FALSE(editor().loaded());
    EXPECT_EQ(entries(), (Texts{"Corvanti-Office", "Corvanti-Home", "Work"}));
  }
}

TEST_F(Editor, TheOpeningStepsRunOnEveryOpeningAlsoAfterItWasOnlyHidden) {
  edit("Corvanti-Office");
  fill("Office");
  user([this] {
    editor().Option2.click();
    editor().Combo3.chooseItem(1);
  });
  editor().Text4.setText("");
  editor().Text5.setText("");
  write();
  ASSERT_TRUE(editor().loaded());
  ASSERT_FALSE(editor().visible());
  add();
  EXPECT_TRUE(editor().Option1.checked());
  EXPECT_EQ(editor().Combo3.text(), "USB");
  EXPECT_EQ(editor().Command1.text(), "Add Now");
  EXPECT_EQ(editor().Combo1.text(), kNokia);
  EXPECT_EQ(editor().Text1.text(), "Office") << "hiding keeps what was typed";
}

TEST_F(Editor, WithAHighContrastSchemeTheBoxesKeepTheSystemsColours) {
  world.desktop.contrast = true;
  world.desktop.systemColours[5] = 0x000000;
  world.desktop.systemColours[8] = 0xFFFFFF;
  add();
  user([this] { editor().Option2.click(); });
  EXPECT_EQ(editor().Text4.colours().background, 0x000000u);
  EXPECT_EQ(editor().Text4.colours().text, 0xFFFFFFu);
  user([this] { editor().Option1.click(); });
  EXPECT_EQ(editor().Text4.colours().background, 0x000000u);
}

TEST_F(Editor, AnEmptyListOfDevicesStaysEmptyAtOpening) {
  line::Phonebook book = world.line.phonebook();
  book.devices.clear();
  world.line.setPhonebook(book);
  add();
  EXPECT_EQ(devices(), Texts{});
  fill("Garden");
  EXPECT_FALSE(editor().Command1.enabled());
}

TEST_F(Editor, AnEventInTheYieldBeforeTheWritingMayCloseItAndThenNothingIsWritten) {
  add();
  fill("Garden");
  user([this] {
    world.desktop.post([this] { editor().Command3.click(); });
    editor().Command1.click();
  });
  EXPECT_FALSE(editor().loaded());
  EXPECT_EQ(entries().size(), 3u);
  EXPECT_TRUE(asked.empty());
}

}  // namespace
}  // namespace pelvaro
