// The operator picker: choosing an operator for the editor, editing rows, saving the list and going back.
#include "editor.h"
#include "operators/list_file.h"
#include "operators/mod_encrypt.h"
#include "ui/form_layouts.h"

namespace pelvaro {
namespace {

constexpr const char* kDelivered = "C:\\Pelvaro\\Default.DAT";
constexpr const char* kOwn = "C:\\Pelvaro\\Default2.DAT";

// A line that cannot be unscrambled.
const std::string kDamaged(
    "\x0A\x09"
    "5\0",
    4);

// A list file with these lines behind the header.
std::string listFile(const Texts& records, const std::string& title = "Operator") {
  fake::FakeRandom random;
  std::string bytes;
  Texts lines = records;
  lines.insert(lines.begin(),
               "Country/ City," + title + ",APN,User Name,Password,Primary DNS,Secondary DNS,Plan,A,B,C");
  for (const std::string& line : lines) bytes += modEncrypt::Scramble(line, random) + "\r\n";
  return bytes;
}

struct Operators : Editor {
  void SetUp() override {
    Editor::SetUp();
    world.files.contents[kDelivered] =
        listFile({"Lisbon,Norline,internet.norline,[blank],[blank],192.0.2.1,192.0.2.2,Mobile,,,",
                  "Porto,Telvira,data.telvira,guest,sec[blank]ret,198.51.100.7,,Prepaid,x,y,z",
                  "Lisbon,Marisol,marisol,,,,,,,,", "lisbon,Small,small,,,,,,,,"});
    add();
  }
  Form3& picker() { return windows->form3; }
  frmEdit& boxes() { return windows->recordForm; }
  // Opens the picker, does things in it, and closes it unless that was done.
  void pick(const std::function<void()>& actions) {
    world.desktop.postIn(10, [this, actions] {
      actions();
      picker().unload();
    });
    user([this] { editor().Command2.click(); });
  }
  Texts rows() {
    Texts texts;
    for (int i = 0; i < picker().ListView2.count(); ++i) texts.emplace_back(picker().ListView2.itemText(i, 1));
    return texts;
  }
  Texts places() {
    Texts texts;
    for (int i = 0; i < picker().Combo1.count(); ++i) texts.push_back(picker().Combo1.itemText(i));
    return texts;
  }
  std::string chosenPath() { return world.settings.get("Setting", "path"); }
  void choosePlace(const std::string& place) { picker().Combo1.setText(place); }
  // Opens the boxes for a row, writes into the first one and accepts.
  void rename(int row, const std::string& name) {
    picker().ListView2.chooseRow(row);
    picker().Command3.click();
    boxes().Text1[0].setText(name);
    boxes().Command1.click();
  }
  void clickRow(MouseButton button, int row) {
    auto& list = static_cast<ControlEvents&>(picker().ListView2);
    list.mousePressed(button, 1, 1);
    picker().ListView2.chooseRow(row);
    list.mouseReleased(button, 1, 1);
  }
  // What was asked of the files, the settings and the user since the last time, in order.
  Texts steps() {
    Texts result;
    for (const std::string& line : world.journal.take()) {
      for (const char* verb : {"ReplaceFile ", "ReadFile ", "MessageBox ", "SaveSetting Setting\\path"}) {
        if (line.starts_with(verb)) result.push_back(line);
      }
    }
    return result;
  }
};

TEST_F(Operators, PlacesAreListedOnceInTheOrderOfTheFileAndCaseCounts) {
  pick([this] {
    EXPECT_TRUE(picker().visible());
    EXPECT_EQ(places(), (Texts{"Lisbon", "Porto", "lisbon"}));
    EXPECT_EQ(picker().Combo1.text(), "Lisbon");
    EXPECT_EQ(rows(), (Texts{"Norline", "Marisol"})) << "from both places of the file, in its order";
    EXPECT_EQ(picker().ListView2.columns()[1].heading, "Operator");
    EXPECT_EQ(picker().ListView2.itemText(0, 0), "Lisbon") << "every field is there, seen or not";
    EXPECT_EQ(picker().ListView2.itemText(0, 5), "192.0.2.1");
    EXPECT_FALSE(picker().Command3.enabled());
    choosePlace("lisbon");
    EXPECT_EQ(rows(), (Texts{"Small"}));
  });
  EXPECT_FALSE(picker().loaded());
  EXPECT_TRUE(editor().visible());
}

TEST_F(Operators, TheColumnsThatAreSeenStandSideBySideInTheList) {
  constexpr int kFrame = 2, kScrollBar = 17;
  pick([this] {
    Texts seen;
    int width = 0;
    for (const ListColumn& column : picker().ListView2.columns()) {
      EXPECT_GE(column.width, 0);
      if (column.width > 0) seen.push_back(column.heading);
      width += column.width;
    }
    EXPECT_EQ(seen, (Texts{"Operator", "APN", "User Name", "Primary DNS", "Secondary DNS", "Plan"}));
    for (const ControlLayout& control : layouts::kForm3.controls) {
      if (control.kind != ControlKind::listView) continue;
      EXPECT_LE(width, control.place.width - kFrame - kScrollBar);
    }
  });
}

TEST_F(Operators, AHeaderMayHaveFewerOrMoreFieldsThanARecord) {
  fake::FakeRandom random;
  const struct {
    const char* header;
    Texts headings;  // of the columns 1, 2, 3 and 10
  } table[] = {{"Place,Name,Point", {"Name", "Point", "", ""}}, {"a,b,c,d,e,f,g,h,i,j,k,l,m", {"b", "c", "d", "k"}}};
  for (const auto& row : table) {
    world.files.contents[kDelivered] = modEncrypt::Scramble(row.header, random) + "\r\n" +
                                       modEncrypt::Scramble("Faro,Mine,apn,u,,,,,,,end", random) + "\r\n";
    pick([&] {
      const auto& columns = picker().ListView2.columns();
      ASSERT_EQ(columns.size(), operators::kFieldCount);
      EXPECT_EQ((Texts{columns[1].heading, columns[2].heading, columns[3].heading, columns[10].heading}), row.headings);
      EXPECT_EQ(picker().ListView2.itemText(0, 10), "end");
      picker().ListView2.chooseRow(0);
      picker().Command3.click();
      EXPECT_EQ(boxes().Label1[0].text(), row.headings[0]);
      EXPECT_EQ(boxes().Label1[9].text(), row.headings[3]);
      EXPECT_EQ(boxes().Text1[9].text(), "end");
      picker().Command2.click();
      EXPECT_EQ(operators::loadList(world.files, kOwn).header(), row.header) << "it is written back as it was";
    });
    world.settings.plant("Setting", "path", "");
  }
}

TEST_F(Operators, OnANokiaAnOperatorFillsTheEditorAndThePrompt) {
  pick([this] {
    choosePlace("Porto");
    picker().ListView2.activateRow(0);
    EXPECT_FALSE(picker().loaded()) << "a choice closes the picker";
  });
  EXPECT_EQ(editor().Text2.text(), "*99#");
  EXPECT_EQ(editor().Text3.text(), "data.telvira");
  EXPECT_EQ(editor().Text4.text(), "198.51.100.7");
  EXPECT_EQ(editor().Text5.text(), "");
  EXPECT_EQ(windows->form4.Text1.text(), "guest");
  EXPECT_EQ(windows->form4.Text2.text(), "secret");
  EXPECT_FALSE(windows->form4.visible());
}

// Found by the random user: the editor comes back with the first of its texts, its modems cannot be listed, and the
// list of operators is gone by the answer.
TEST_F(Operators, AChoiceSurvivesThePickersEndInAQuestionOfTheEditor) {
  int questions = 0;
  pick([&] {
    editor().unload();
    line::Scenario scenario = World::quickScenario();
    scenario.failures = {{"enumDevices", 621, line::PlantedFailure::kAlways}};
    world.line.setScenario(scenario);
    world.dialogs.onMessage = [&](const std::string&) {
      ++questions;
      picker().unload();
      return 1;
    };
    choosePlace("Porto");
    rename(0, "a row of its own memory");
    ASSERT_FALSE(editor().loaded());
    picker().ListView2.activateRow(0);
    EXPECT_GE(questions, 1);
  });
  EXPECT_EQ(editor().Text3.text(), "data.telvira");
  EXPECT_EQ(editor().Text4.text(), "198.51.100.7");
  EXPECT_EQ(windows->form4.Text1.text(), "guest");
}

TEST_F(Operators, OnASamsungTheUserNameIsTheNumberUnlessItIsEmpty) {
  editor().Combo1.setText(kSamsung);
  const struct {
    const char* place;
    int row;
    const char *number, *user, *password;
  } table[] = {
      {"Porto", 0, "guest", "guest", "secret"}, {"Lisbon", 0, "[blank]", "", ""}, {"Lisbon", 1, "*99**1*1#", "", ""}};
  for (const auto& row : table) {
    pick([&] {
      choosePlace(row.place);
      picker().ListView2.activateRow(row.row);
    });
    EXPECT_EQ(editor().Text2.text(), row.number);
    EXPECT_EQ(windows->form4.Text1.text(), row.user);
    EXPECT_EQ(windows->form4.Text2.text(), row.password);
  }
}

TEST_F(Operators, EveryBlankMarkIsTakenOutOfACredentialOnce) {
  const struct {
    const char *field, *used;
  } table[] = {{"[blank]a[blank][blank]b", "ab"},
               {"[bl[blank]ank]", "[blank]"},
               {"[BLANK]", "[BLANK]"},
               {"[blank", "[blank"},
               {"[[blank]]", "[]"}};
  for (const auto& row : table) {
    const std::string field = row.field;
    world.files.contents[kDelivered] = listFile({"Faro,Mine,apn," + field + "," + field + ",,,,,,"});
    pick([this] { picker().ListView2.activateRow(0); });
    EXPECT_EQ(windows->form4.Text1.text(), row.used) << field;
    EXPECT_EQ(windows->form4.Text2.text(), row.used) << field;
  }
}

TEST_F(Operators, WithoutASelectedRowNothingHappens) {
  pick([this] {
    picker().ListView2.onActivate();
    EXPECT_TRUE(picker().visible());
    picker().Command3.setEnabled(true);
    picker().Command3.click();
    EXPECT_FALSE(boxes().loaded());
  });
  EXPECT_EQ(editor().Text3.text(), "");
}

TEST_F(Operators, SelectingARowAllowsToEditItAndStaysAllowed) {
  pick([this] {
    picker().ListView2.chooseRow(1);
    EXPECT_TRUE(picker().Command3.enabled());
    choosePlace("Porto");
    EXPECT_TRUE(picker().Command3.enabled());
  });
}

TEST_F(Operators, AnEditedRowReachesTheListsAndTheSavedFileAndIsThereAfterARestart) {
  pick([this] {
    picker().ListView2.chooseRow(1);
    picker().Command3.click();
    ASSERT_TRUE(boxes().visible());
    EXPECT_EQ(boxes().Label1[0].text(), "Operator");
    EXPECT_EQ(boxes().Label1[9].text(), "C");
    EXPECT_EQ(boxes().Text1[0].text(), "Marisol");
    boxes().Text1[0].setText("Marisol Cell");
    boxes().Text1[9].setText("last");
    boxes().Command1.click();
    EXPECT_FALSE(boxes().loaded());
    EXPECT_EQ(rows(), (Texts{"Norline", "Marisol Cell"}));
    EXPECT_EQ(world.files.contents.count(kOwn), 0u) << "nothing is written before it is saved";
    choosePlace("Porto");
    choosePlace("Lisbon");
    EXPECT_EQ(rows(), (Texts{"Norline", "Marisol Cell"}));
    picker().Command2.click();
    EXPECT_EQ(asked, (Texts{"File saved."}));
    EXPECT_EQ(chosenPath(), kOwn);
    EXPECT_TRUE(picker().Command4.enabled());
  });
  start();
  add();
  pick([this] {
    EXPECT_EQ(rows(), (Texts{"Norline", "Marisol Cell"}));
    EXPECT_EQ(picker().ListView2.itemText(1, 10), "last");
    EXPECT_EQ(places(), (Texts{"Lisbon", "Porto", "lisbon"}));
  });
}

TEST_F(Operators, CancellingTheBoxesWritesNothing) {
  pick([this] {
    for (int way = 0; way < 3; ++way) {
      picker().ListView2.chooseRow(0);
      picker().Command3.click();
      boxes().Text1[0].setText("other");
      if (way == 0) boxes().Command2.click();
      if (way == 1) boxes().closeMark.click();
      if (way == 2) boxes().escapePressed();
      EXPECT_FALSE(boxes().loaded());
    }
    EXPECT_EQ(rows()[0], "Norline");
  });
}

TEST_F(Operators, WhatIsEditedIsTheRowThatWasOpened) {
  pick([this] {
    picker().ListView2.chooseRow(0);
    picker().Command3.click();
    choosePlace("Porto");
    boxes().Text1[0].setText("Norline 2");
    boxes().Command1.click();
    EXPECT_EQ(rows(), (Texts{"Telvira"}));
    choosePlace("Lisbon");
    EXPECT_EQ(rows()[0], "Norline 2");
  });
}

TEST_F(Operators, UnsavedEditsAreLostWhenThePickerCloses) {
  pick([this] {
    picker().ListView2.chooseRow(0);
    picker().Command3.click();
    boxes().Text1[0].setText("gone");
    boxes().Command1.click();
    picker().Command1.click();
    EXPECT_FALSE(picker().loaded());
  });
  pick([this] { EXPECT_EQ(rows()[0], "Norline"); });
}

TEST_F(Operators, ARightClickOffersToEdit) {
  pick([this] {
    world.dialogs.onMenu = [] { return 1u; };
    static_cast<ControlEvents&>(picker().ListView2).mousePressed(MouseButton::right, 1, 1);
    picker().ListView2.chooseRow(1);
    EXPECT_EQ(world.dialogs.captions, (Texts{"Edit"}));
    EXPECT_TRUE(boxes().visible());
    EXPECT_EQ(boxes().Text1[0].text(), "Marisol");
  });
  EXPECT_FALSE(boxes().loaded()) << "the boxes go with the picker";
}

TEST_F(Operators, ALeftClickAfterTheMenuOpensNone) {
  pick([this] {
    int menus = 0;
    world.dialogs.onMenu = [&menus] { return ++menus, 0u; };
    clickRow(MouseButton::right, 0);
    EXPECT_EQ(menus, 1);
    EXPECT_FALSE(boxes().loaded()) << "the menu was declined";
    EXPECT_TRUE(picker().Command3.enabled());
    clickRow(MouseButton::left, 1);
    EXPECT_EQ(menus, 1);
    static_cast<ControlEvents&>(picker().ListView2).mousePressed(MouseButton::right, 1, 1);
    picker().ListView2.chooseRow(1);
    picker().ListView2.chooseRow(0);  // by the keyboard; the menu took the release
    EXPECT_EQ(menus, 2);
    EXPECT_FALSE(boxes().loaded());
    EXPECT_TRUE(picker().Command3.enabled());
    world.dialogs.onMenu = nullptr;
  });
}

TEST_F(Operators, DefaultGoesBackToTheDeliveredListAndIsOnlyThereForThat) {
  world.files.contents[kOwn] = listFile({"Faro,Mine,apn,,,,,,,,"});
  world.settings.plant("Setting", "path", kOwn);
  pick([this] {
    EXPECT_EQ(places(), (Texts{"Faro"}));
    ASSERT_TRUE(picker().Command4.enabled());
    picker().Command4.click();
    EXPECT_EQ(places(), (Texts{"Lisbon", "Porto", "lisbon"}));
    EXPECT_EQ(chosenPath(), kDelivered);
    EXPECT_FALSE(picker().Command4.enabled());
  });
  EXPECT_EQ(world.files.contents.count(kOwn), 1u) << "the user's own file stays";
}

TEST_F(Operators, DefaultClosesTheBoxesOfARow) {
  world.files.contents[kOwn] = listFile({"Faro,Mine,apn,,,,,,,,"});
  world.settings.plant("Setting", "path", kOwn);
  pick([this] {
    picker().ListView2.chooseRow(0);
    picker().Command3.click();
    boxes().Text1[0].setText("other");
    picker().Command4.click();
    EXPECT_FALSE(boxes().loaded());
    EXPECT_EQ(rows(), (Texts{"Norline", "Marisol"}));
    EXPECT_EQ(asked, Texts());
  });
}

TEST_F(Operators, DefaultChoosesTheDeliveredListAndThenReadsIt) {
  world.files.contents[kOwn] = listFile({"Faro,Mine,apn,,,,,,,,"});
  world.settings.plant("Setting", "path", kOwn);
  pick([this] {
    steps();
    picker().Command4.click();
    EXPECT_EQ(steps(),
              (Texts{std::string("SaveSetting Setting\\path=") + kDelivered, std::string("ReadFile ") + kDelivered}));
  });
}

TEST_F(Operators, ADamagedDeliveredListIsChosenBeforeItEndsTheProgram) {
  world.files.contents[kOwn] = listFile({"Faro,Mine,apn,,,,,,,,"});
  world.files.contents[kDelivered] += kDamaged;
  world.settings.plant("Setting", "path", kOwn);
  pick([this] { picker().Command4.click(); });
  EXPECT_EQ(world.desktop.reported, (Texts{"Run-time error '5':\n\nInvalid procedure call or argument"}));
  EXPECT_EQ(chosenPath(), kDelivered);
}

TEST_F(Operators, AMissingDeliveredListIsReportedAndTheShownOneStays) {
  world.files.contents[kOwn] = listFile({"Faro,Mine,apn,,,,,,,,"});
  world.files.contents.erase(kDelivered);
  world.settings.plant("setting", "PATH", kOwn);
  pick([this] {
    picker().Command4.click();
    EXPECT_EQ(asked, (Texts{"File not found, please reinstall."}));
    EXPECT_EQ(places(), (Texts{"Faro"}));
    EXPECT_EQ(chosenPath(), kOwn);
  });
}

TEST_F(Operators, ASaveThatFailsIsReportedAndChangesNothing) {
  world.files.readOnly.insert(kOwn);
  world.files.contents[kOwn] = "old";
  pick([this] {
    picker().Command2.click();
    EXPECT_EQ(asked, (Texts{"Fail to save file."}));
    EXPECT_EQ(world.files.contents[kOwn], "old");
    EXPECT_EQ(chosenPath(), "");
  });
}

TEST_F(Operators, AfterASaveThatFailedThereIsNothingToGoBackFrom) {
  world.files.diskFull = true;
  pick([this] {
    rename(0, "Norline 2");
    picker().Command2.click();
    EXPECT_EQ(asked, (Texts{"Fail to save file."}));
    EXPECT_FALSE(picker().Command4.enabled());
    EXPECT_EQ(rows()[0], "Norline 2") << "the edit is still there to be saved";
    picker().Command1.click();
    EXPECT_FALSE(picker().loaded());
  });
  EXPECT_EQ(world.files.contents.count(kOwn), 0u);
  EXPECT_EQ(chosenPath(), "");
}

TEST_F(Operators, ASaveWritesTheFileTellsTheUserAndThenChoosesIt) {
  pick([this] {
    steps();
    picker().Command2.click();
    EXPECT_EQ(steps(), (Texts{std::string("ReplaceFile ") + kOwn, "MessageBox 0 File saved.",
                              std::string("SaveSetting Setting\\path=") + kOwn}));
  });
}

TEST_F(Operators, ASaveGoesToTheOwnFileWhereverTheListCameFrom) {
  const std::string other = "D:\\mine.dat";
  for (const std::string& path : {other, std::string(kDelivered), std::string(kOwn)}) {
    world.files.contents[other] = world.files.contents[kDelivered];
    world.files.contents[kOwn] = listFile({"Lisbon,Old,apn,,,,,,,,"});
    const auto before = world.files.contents;
    world.settings.plant("Setting", "path", path);
    pick([&] {
      rename(0, "New");
      picker().Command2.click();
      EXPECT_EQ(chosenPath(), kOwn);
    });
    EXPECT_EQ(operators::loadList(world.files, kOwn).field(0, 1), "New") << path;
    EXPECT_EQ(world.files.contents[other], before.at(other)) << path;
    EXPECT_EQ(world.files.contents[kDelivered], before.at(kDelivered)) << path;
    EXPECT_EQ(world.files.contents.size(), 3u) << path;
  }
}

TEST_F(Operators, EveryStateOfTheSettingLeadsToAList) {
  world.files.contents["D:\\mine.dat"] = listFile({"Elsewhere,Mine,apn,,,,,,,,"});
  world.files.folders.insert("D:\\folder");
  const struct {
    std::string path;
    const char* place;
  } table[] = {{"", "Lisbon"},
               {"C:\\missing.dat", "Lisbon"},
               {"D:\\folder", "Lisbon"},
               {"D:\\mine.dat", "Elsewhere"},
               {std::string(300, 'p') + ".dat", "Lisbon"},
               {kDelivered, "Lisbon"}};
  for (const auto& row : table) {
    world.settings.plant("Setting", "path", row.path);
    pick([&] { EXPECT_EQ(picker().Combo1.text(), row.place) << row.path; });
  }
}

TEST_F(Operators, AnEmptyFileGivesAnEmptyPicker) {
  world.files.contents[kDelivered] = "";
  pick([this] {
    EXPECT_EQ(picker().Combo1.count(), 0);
    EXPECT_EQ(picker().ListView2.count(), 0);
  });
}

TEST_F(Operators, ADamagedListIsARunTimeErrorWhenItIsOpened) {
  world.files.contents["D:\\mine.dat"] = kDamaged;
  world.settings.plant("Setting", "path", "D:\\mine.dat");
  user([this] { editor().Command2.click(); });
  EXPECT_EQ(world.desktop.reported, (Texts{"Run-time error '5':\n\nInvalid procedure call or argument"}));
  EXPECT_FALSE(picker().visible());
}

TEST_F(Operators, AnUnreadableListIsARunTimeErrorWhenItIsOpened) {
  world.files.unreadable.insert(kDelivered);
  user([this] { editor().Command2.click(); });
  EXPECT_EQ(world.desktop.reported, (Texts{"Run-time error '75':\n\nPath/File access error"}));
  EXPECT_FALSE(picker().visible());
}

TEST_F(Operators, WithoutAnyListItIsARunTimeError) {
  world.files.contents.erase(kDelivered);
  user([this] { editor().Command2.click(); });
  EXPECT_EQ(world.desktop.reported, (Texts{"Run-time error '53':\n\nFile not found"}));
}

}  // namespace
}  // namespace pelvaro
