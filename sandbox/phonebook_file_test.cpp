#include "phonebook_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "bytes.h"
#include "codes.h"

namespace pelvaro::line {
namespace {

namespace fs = std::filesystem;

std::optional<Phonebook> parsed(std::string_view text, std::string* message = nullptr) {
  std::string ignored;
  return parsePhonebook(text, message ? *message : ignored);
}

TEST(PhonebookText, TheFirstPhonebookComesBack) {
  const Phonebook first = firstPhonebook();
  ASSERT_EQ(first.entries.size(), 3u);
  EXPECT_EQ(parsed(phonebookText(first)), first);
}

TEST(PhonebookText, APersonCanReadIt) {
  const std::string text = phonebookText(firstPhonebook());
  for (const char* line : {"[devices]", "modem = COM5 Nokia 6230 USB Modem", "[entry Corvanti-Home]",
                           "number = *99***1#", "device = Samsung D500 USB Modem", "suffix = internet",
                           "options = 3D2D011C", "user = guest", "password saved = yes", "[end]"})
    EXPECT_NE(text.find(std::string("\n") + line + "\n"), std::string::npos) << line;
}

TEST(PhonebookText, AChangedNumberIsTaken) {
  std::string text = phonebookText(firstPhonebook());
  text.replace(text.find("*99***1#"), 8, "12");
  const auto book = parsed(text);
  ASSERT_TRUE(book);
  EXPECT_EQ(readableFields(book->entries[1].record).number, "12");
}

TEST(PhonebookText, EveryByteOfEveryRecordComesBack) {
  std::mt19937 random(1);
  for (const std::size_t size : kRecordSizes)
    for (const int density : {1, 2, 20, 1000}) {
      Phonebook book;
      Entry& entry = book.entries.emplace_back();
      entry.name = "x";
      entry.record.resize(size);
      for (auto& byte : entry.record)
        if (random() % static_cast<unsigned>(density) == 0) byte = static_cast<std::uint8_t>(random());
      putNumber(entry.record.data(), static_cast<std::uint32_t>(size));
      EXPECT_EQ(parsed(phonebookText(book)), book);
    }
}

TEST(PhonebookText, EveryCharacterOfEveryTextComesBack) {
  std::string all = " ";
  for (int c = 1; c < 256; ++c) all += static_cast<char>(c);
  all += ' ';
  Phonebook book = firstPhonebook();
  Entry& entry = book.entries[0];
  entry.name = entry.user = entry.password = entry.domain = all;
  entry.alternate = {'1', 0, '2', 0, 0};
  entry.passwordSaved = true;
  book.devices.push_back({all, ";a=b", "COM16"});
  EXPECT_EQ(parsed(phonebookText(book)), book);
}

TEST(PhonebookText, TemporaryEntriesAreLeftOut) {
  Phonebook book = firstPhonebook();
  book.entries[1].temporary = true;
  EXPECT_EQ(parsed(phonebookText(book))->entries.size(), 2u);
}

TEST(PhonebookText, WindowsLineEndsAndCommentsAreFine) {
  const auto book = parsed("; mine\r\n[devices]\r\n\r\nmodem = COM9 Some Modem\r\n[end]\r\n");
  ASSERT_TRUE(book);
  EXPECT_EQ(book->devices, (std::vector<Device>{{"Some Modem", "modem", "COM9"}}));
}

struct Damage {
  const char* text;
  const char* message;
};

TEST(PhonebookText, DamageIsNamedWithItsLine) {
  constexpr Damage kDamages[] = {
      {"", "line 0: the end is missing"},
      {"[devices]\n", "line 1: the end is missing"},
      {"number = 1\n[end]\n", "line 1: this line is not understood"},
      {"[devices]\nmodem COM5\n[end]\n", "line 2: '=' is missing"},
      {"[devices]\nmodem = COM5\n[end]\n", "line 2: this line is not understood"},
      {"[entry a\n[end]\n", "line 1: a section's name must end with ']'"},
      {"[other]\n[end]\n", "line 1: this section is not known"},
      {"[entry %4]\n[end]\n", "line 1: this name is not understood"},
      {"[entry a]\nsize = 1000\n[end]\n", "line 2: this line is not understood"},
      {"[entry a]\noptions = 123456789\n[end]\n", "line 2: this line is not understood"},
      {"[entry a]\nbytes 10 = 1\n[end]\n", "line 2: this line is not understood"},
      {"[entry a]\nbytes 10 = GG\n[end]\n", "line 2: this line is not understood"},
      {"[entry a]\npassword saved = maybe\n[end]\n", "line 2: this line is not understood"},
      {"\n[entry a]\nbytes 2883 = 0102\n[end]\n", "line 4: the entry before has bytes outside its record"},
      {"\n[entry a]\nbytes 0 = 01\n[end]\n", "line 4: the entry before has bytes outside its record"},
      {"[devices]\nmodem = COM%205 Modem\n[end]\n", "line 2: this line is not understood"},
      {"[end]\nmore\n", "line 2: there is text behind the end"},
  };
  for (const Damage& damage : kDamages) {
    std::string message;
    EXPECT_FALSE(parsed(damage.text, &message)) << damage.text;
    EXPECT_EQ(message, damage.message) << damage.text;
  }
}

TEST(PhonebookText, AFileCutAnywhereIsDamagedOrWhole) {
  const Phonebook first = firstPhonebook();
  const std::string text = phonebookText(first);
  for (std::size_t count = 0; count < text.size(); ++count) {
    const auto book = parsed(text.substr(0, count));
    if (!book) continue;
    EXPECT_EQ(*book, first) << count;
  }
}

class PhonebookFile : public testing::Test {
 protected:
  PhonebookFile() : folder_(fs::path(testing::TempDir()) / ("phonebook_" + std::to_string(std::random_device()()))) {
    fs::create_directories(folder_);
    path_ = (folder_ / "phonebook.txt").string();
  }
  ~PhonebookFile() override { fs::remove_all(folder_); }

  void write(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& file : fs::directory_iterator(folder_)) names.push_back(file.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  fs::path folder_;
  std::string path_;
};

TEST_F(PhonebookFile, WithoutAFileTheFirstPhonebookIsGiven) {
  const LoadedPhonebook loaded = loadPhonebook(path_);
  EXPECT_EQ(loaded.book, firstPhonebook());
  EXPECT_EQ(loaded.message, "");
  EXPECT_TRUE(files().empty());
}

TEST_F(PhonebookFile, WhatIsSavedIsLoaded) {
  Phonebook book = firstPhonebook();
  book.entries.pop_back();
  ASSERT_TRUE(replaceFile(path_, phonebookText(book)));
  EXPECT_EQ(loadPhonebook(path_).book, book);
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt"});
}

TEST_F(PhonebookFile, AKillAtAnyByteOfASaveLeavesTheOldOrTheNew) {
  Phonebook changed = firstPhonebook();
  changed.entries.erase(changed.entries.begin());
  const std::string before = phonebookText(firstPhonebook()), after = phonebookText(changed);
  for (std::size_t count = 0; count <= after.size(); ++count) {
    write(path_, before);
    write(path_ + ".new", after.substr(0, count));  // the save got so far
    LoadedPhonebook loaded = loadPhonebook(path_);
    ASSERT_EQ(loaded.message, "");
    ASSERT_EQ(loaded.book, firstPhonebook()) << count;
  }
  ASSERT_TRUE(replaceFile(path_, after)) << "the rest of a killed save is in nobody's way";
  EXPECT_EQ(loadPhonebook(path_).book, changed);
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt"});
}

TEST_F(PhonebookFile, ADamagedFileIsKeptAsideAndNamed) {
  write(path_, "[devices]\nwhat is this\n");
  LoadedPhonebook loaded = loadPhonebook(path_);
  EXPECT_EQ(loaded.book, firstPhonebook());
  EXPECT_NE(loaded.message.find("line 2: '=' is missing"), std::string::npos) << loaded.message;
  EXPECT_NE(loaded.message.find("phonebook.txt.damaged"), std::string::npos) << loaded.message;
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt.damaged"});
  EXPECT_EQ(readFile(path_ + ".damaged"), "[devices]\nwhat is this\n");
}

TEST_F(PhonebookFile, ASecondDamagedFileDoesNotReplaceTheFirst) {
  write(path_, "first");
  loadPhonebook(path_);
  write(path_, "second");
  loadPhonebook(path_);
  EXPECT_EQ(readFile(path_ + ".damaged"), "first");
  EXPECT_EQ(readFile(path_ + ".damaged2"), "second");
}

TEST_F(PhonebookFile, ASaveThatCannotBeMadeSaysSo) {
  EXPECT_FALSE(replaceFile((folder_ / "missing" / "phonebook.txt").string(), "text"));
  fs::create_directory(path_);
  EXPECT_FALSE(replaceFile(path_, "text")) << "a folder stands there";
}

}  // namespace
}  // namespace pelvaro::line
