#include "operators/list_file.h"

#include <gtest/gtest.h>

#include <new>

#include "base/runtime_error.h"
#include "platform/fake/fake_files.h"
#include "platform/fake/fake_random.h"
#include "platform/fake/fake_settings.h"

namespace pelvaro::operators {
namespace {

using namespace std::string_literals;

constexpr const char* kFolder = "C:\\Pelvaro";
constexpr const char* kDelivered = "C:\\Pelvaro\\Default.DAT";
constexpr const char* kOwn = "C:\\Pelvaro\\Default2.DAT";

struct ListFile : testing::Test {
  fake::Journal journal;
  fake::FakeFiles files{journal};
  fake::FakeSettings settings{journal};
  fake::FakeRandom random;

  std::string path() { return pathToLoad(settings, files, kFolder); }
  int errorOfLoading(const std::string& name) {
    try {
      loadList(files, name);
    } catch (const RuntimeError& error) {
      return error.number();
    }
    return 0;
  }
};

TEST_F(ListFile, LiesInTheFolderOfTheProgram) {
  EXPECT_EQ(deliveredPath(kFolder), kDelivered);
  EXPECT_EQ(ownPath(kFolder), kOwn);
}

TEST_F(ListFile, IsTheDeliveredOneWithoutASetting) { EXPECT_EQ(path(), kDelivered); }

TEST_F(ListFile, IsTheOneThatTheSettingNames) {
  files.contents["D:\\other.dat"] = "";
  settings.plant("setting", "PATH", "D:\\other.dat");
  EXPECT_EQ(path(), "D:\\other.dat");
}

TEST_F(ListFile, IsTheDeliveredOneWhenTheChosenOneIsMissingOrAFolderOrItsPathTooLong) {
  files.folders = {"D:\\folder"};
  for (const auto& name : {"D:\\missing.dat"s, "D:\\folder"s, "D:\\" + std::string(300, 'x')}) {
    EXPECT_TRUE(choosePath(settings, name));
    EXPECT_EQ(chosenPath(settings), name);
    EXPECT_EQ(path(), kDelivered);
  }
}

TEST_F(ListFile, MissingOrUnreadableIsARuntimeError) {
  EXPECT_EQ(errorOfLoading(kDelivered), 53);
  files.contents[kDelivered] = "x";
  files.unreadable = {kDelivered};
  EXPECT_EQ(errorOfLoading(kDelivered), 75);
}

TEST_F(ListFile, DamagedIsARuntimeError) {
  files.contents[kDelivered] =
      "\x0A\x09"
      "5\0"s;
  EXPECT_EQ(errorOfLoading(kDelivered), 5);
}

TEST_F(ListFile, ComesBackAfterSaving) {
  files.contents[kDelivered] =
      "\0h+\0\r\n\x02"
      "C-\0"s;
  OperatorList list = loadList(files, kDelivered);
  list.setField(0, 1, "x");
  EXPECT_TRUE(saveList(files, random, kFolder, list));
  EXPECT_EQ(journal.take(), (fake::Lines{"ReadFile "s + kDelivered, "ReplaceFile "s + kOwn}))
      << "the setting is not touched";
  EXPECT_EQ(loadList(files, kOwn).header(), "h");
  EXPECT_EQ(loadList(files, kOwn).field(0, 0), "A");
  EXPECT_EQ(loadList(files, kOwn).field(0, 1), "x");
  EXPECT_EQ(files.contents[kDelivered],
            "\0h+\0\r\n\x02"
            "C-\0"s)
      << "the delivered file is never written";
}

TEST_F(ListFile, AFailedSaveKeepsTheOldFile) {
  files.contents[kOwn] = "old";
  files.readOnly = {kOwn};
  EXPECT_FALSE(saveList(files, random, kFolder, {}));
  files.readOnly = {};
  files.diskFull = true;
  EXPECT_FALSE(saveList(files, random, kFolder, {}));
  EXPECT_EQ(files.contents[kOwn], "old");
}

TEST_F(ListFile, WithoutMemoryForItTheSaveFails) {
  struct : RandomSource {
    double next() override { throw std::bad_alloc(); }
  } noMemory;
  files.contents[kOwn] = "old";
  EXPECT_FALSE(saveList(files, noMemory, kFolder, {}));
  EXPECT_EQ(files.contents[kOwn], "old");
}

TEST_F(ListFile, AFolderInItsPlaceFailsTheSave) {
  files.folders = {kOwn};
  EXPECT_FALSE(saveList(files, random, kFolder, {}));
}

}  // namespace
}  // namespace pelvaro::operators
