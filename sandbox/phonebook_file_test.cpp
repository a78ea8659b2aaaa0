#include "phonebook_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "bytes.h"
#include "codes.h"
#include "dial_line.h"
#include "memory_ports.h"

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

class PhonebookFileTest : public testing::Test {
 protected:
  PhonebookFileTest()
      : folder_(fs::path(testing::TempDir()) / ("phonebook_" + std::to_string(std::random_device()()))) {
    fs::create_directories(folder_);
    path_ = (folder_ / "phonebook.txt").string();
  }
  ~PhonebookFileTest() override { fs::remove_all(folder_); }

  void write(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
  LoadedPhonebook load() { return PhonebookFile(path_).load(); }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& file : fs::directory_iterator(folder_)) names.push_back(file.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  fs::path folder_;
  std::string path_;
};

TEST_F(PhonebookFileTest, WithoutAFileTheFirstPhonebookIsGiven) {
  const LoadedPhonebook loaded = load();
  EXPECT_EQ(loaded.book, firstPhonebook());
  EXPECT_EQ(loaded.message, "");
  EXPECT_TRUE(files().empty());
}

TEST_F(PhonebookFileTest, WhatIsSavedIsLoaded) {
  Phonebook book = firstPhonebook();
  book.entries.pop_back();
  ASSERT_TRUE(replaceFile(path_, phonebookText(book)));
  EXPECT_EQ(load().book, book);
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt"});
}

TEST_F(PhonebookFileTest, AKillAtAnyByteOfASaveLeavesTheOldOrTheNew) {
  Phonebook changed = firstPhonebook();
  changed.entries.erase(changed.entries.begin());
  const std::string before = phonebookText(firstPhonebook()), after = phonebookText(changed);
  for (std::size_t count = 0; count <= after.size(); ++count) {
    write(path_, before);
    write(path_ + ".new", after.substr(0, count));  // the save got so far
    LoadedPhonebook loaded = load();
    ASSERT_EQ(loaded.message, "");
    ASSERT_EQ(loaded.book, firstPhonebook()) << count;
  }
  ASSERT_TRUE(replaceFile(path_, after)) << "the rest of a killed save is in nobody's way";
  EXPECT_EQ(load().book, changed);
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt"});
}

TEST_F(PhonebookFileTest, ADamagedFileIsKeptAsideAndNamed) {
  write(path_, "[devices]\nwhat is this\n");
  LoadedPhonebook loaded = load();
  EXPECT_EQ(loaded.book, firstPhonebook());
  EXPECT_NE(loaded.message.find("line 2: '=' is missing"), std::string::npos) << loaded.message;
  EXPECT_NE(loaded.message.find("phonebook.txt.damaged"), std::string::npos) << loaded.message;
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt.damaged"});
  EXPECT_EQ(readFile(path_ + ".damaged"), "[devices]\nwhat is this\n");
}

TEST_F(PhonebookFileTest, ASecondDamagedFileDoesNotReplaceTheFirst) {
  write(path_, "first");
  load();
  write(path_, "second");
  load();
  EXPECT_EQ(readFile(path_ + ".damaged"), "first");
  EXPECT_EQ(readFile(path_ + ".damaged2"), "second");
}

TEST_F(PhonebookFileTest, ASaveThatCannotBeMadeSaysSo) {
  EXPECT_FALSE(replaceFile((folder_ / "missing" / "phonebook.txt").string(), "text"));
  fs::create_directory(path_);
  EXPECT_FALSE(replaceFile(path_, "text")) << "a folder stands there";
}

// A damaged file, and every name that it could be kept under is taken.
struct UnmovableFile : PhonebookFileTest {
  UnmovableFile() {
    write(path_, "damaged");
    for (int n = 1; n <= 99; ++n) write(path_ + ".damaged" + (n == 1 ? "" : std::to_string(n)), "");
  }
};

TEST_F(UnmovableFile, IsNeverReplaced) {
  PhonebookFile file(path_);
  const LoadedPhonebook loaded = file.load();
  EXPECT_EQ(loaded.book, firstPhonebook());
  EXPECT_NE(loaded.message.find("is damaged: line 1: '=' is missing. It could not be kept aside."), std::string::npos)
      << loaded.message;
  EXPECT_NE(loaded.message.find("changes are not kept until it is out of the way."), std::string::npos)
      << loaded.message;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(file.reread(), std::nullopt);
    EXPECT_FALSE(file.save(loaded.book));
  }
  EXPECT_EQ(readFile(path_), "damaged");
}

TEST_F(UnmovableFile, ChangesAreKeptAgainWhenItIsOutOfTheWay) {
  PhonebookFile file(path_);
  const LoadedPhonebook loaded = file.load();
  fs::remove(path_);
  EXPECT_EQ(file.reread(), std::nullopt) << "the line goes on with what it has";
  EXPECT_TRUE(file.save(loaded.book));
  EXPECT_EQ(load().book, loaded.book);
}

TEST_F(UnmovableFile, AMendedOneIsTaken) {
  PhonebookFile file(path_);
  file.load();
  Phonebook mended = firstPhonebook();
  mended.entries.pop_back();
  write(path_, phonebookText(mended));
  EXPECT_EQ(file.reread(), mended);
  EXPECT_TRUE(file.save(firstPhonebook()));
}

TEST_F(PhonebookFileTest, AFileThatCannotBeReadIsNeitherMovedNorReplaced) {
  fs::create_directory(path_);  // it exists, and opening or reading it fails
  PhonebookFile file(path_);
  const LoadedPhonebook loaded = file.load();
  EXPECT_EQ(loaded.book, firstPhonebook());
  EXPECT_NE(loaded.message.find("cannot be read."), std::string::npos) << loaded.message;
  EXPECT_NE(loaded.message.find("changes are not kept until it can be read."), std::string::npos) << loaded.message;
  EXPECT_EQ(loaded.message.find("damaged"), std::string::npos) << loaded.message;
  EXPECT_EQ(file.reread(), std::nullopt);
  EXPECT_FALSE(file.save(loaded.book));
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt"});
  fs::remove(path_);
  write(path_, phonebookText(firstPhonebook()));
  EXPECT_EQ(file.reread(), firstPhonebook());
  EXPECT_TRUE(file.save(firstPhonebook()));
}

TEST_F(PhonebookFileTest, AFileThatCannotBeLookedForIsNotMissing) {
  std::error_code error;
  fs::create_symlink("phonebook.txt", path_, error);  // a link to itself
  if (error) GTEST_SKIP() << "no symbolic links here";
  PhonebookFile file(path_);
  EXPECT_NE(file.load().message.find("cannot be read."), std::string::npos);
  EXPECT_FALSE(file.save(firstPhonebook()));
  EXPECT_TRUE(fs::is_symlink(fs::symlink_status(path_)));
}

TEST_F(PhonebookFileTest, AFileThatAnotherProgramChangedIsReadAgainAndNotReplacedUnread) {
  PhonebookFile file(path_), other(path_);
  Phonebook book = file.load().book;
  EXPECT_EQ(other.load().book, book);
  ASSERT_TRUE(file.save(book));
  EXPECT_EQ(file.reread(), std::nullopt) << "its own text is no news";
  EXPECT_FALSE(other.save(book)) << "made by the other meanwhile";
  book.entries.pop_back();
  ASSERT_TRUE(file.save(book));
  EXPECT_EQ(other.reread(), book);
  EXPECT_EQ(other.reread(), std::nullopt);
  EXPECT_TRUE(other.save(firstPhonebook()));
  EXPECT_FALSE(file.save(book));
}

TEST_F(PhonebookFileTest, AFileOfTheSameSizeButOtherTextIsAnotherFile) {
  PhonebookFile file(path_);
  std::string text = phonebookText(firstPhonebook());
  write(path_, text);
  file.load();
  text.replace(text.find("*99#"), 4, "*98#");
  write(path_, text);
  EXPECT_FALSE(file.save(firstPhonebook()));
  EXPECT_EQ(readableFields(file.reread()->entries[0].record).number, "*98#");
}

TEST_F(PhonebookFileTest, AFileDamagedMeanwhileIsNotReplaced) {
  PhonebookFile file(path_);
  const Phonebook book = file.load().book;
  ASSERT_TRUE(file.save(book));
  write(path_, "half a");
  EXPECT_EQ(file.reread(), std::nullopt);
  EXPECT_FALSE(file.save(book));
  EXPECT_EQ(files(), std::vector<std::string>{"phonebook.txt"});
  EXPECT_EQ(readFile(path_), "half a");
}

TEST_F(PhonebookFileTest, AFileDeletedMeanwhileIsWrittenAgain) {
  PhonebookFile file(path_);
  const Phonebook book = file.load().book;
  ASSERT_TRUE(file.save(book));
  fs::remove(path_);
  EXPECT_EQ(file.reread(), std::nullopt);
  EXPECT_TRUE(file.save(book));
  EXPECT_EQ(load().book, book);
}

// A program with its own line on the same file.
struct Program {
  explicit Program(const std::string& path) : file(path) {}
  LineCallbacks callbacks() {
    LineCallbacks result;
    result.reread = [this] { return file.reread(); };
    result.save = [this](const Phonebook& book) { return file.save(book); };
    return result;
  }
  std::uint32_t set(const char* entry) {
    const Bytes record = freshRecord(2884, {"1", "", "", 0});
    return line.setEntryProperties(nullptr, entry, record.data(), 2884);
  }
  std::uint32_t setUser(const char* entry, const char* user) {
    Bytes record(1060);
    putNumber(record.data(), 1060);
    putText(record.data() + 4, 257, entry);
    putText(record.data() + 519, 257, user);
    return line.setEntryDialParams(nullptr, record.data(), false);
  }
  PhonebookFile file;
  MemoryPorts ports;
  DialLine line{file.load().book, {}, ports, callbacks()};
};

TEST_F(PhonebookFileTest, TwoProgramsKeepEachOthersChanges) {
  Program one(path_), two(path_);
  EXPECT_EQ(one.set("One"), 0u);
  EXPECT_EQ(two.set("Two"), 0u);
  EXPECT_EQ(one.line.deleteEntry(nullptr, "Work"), 0u);
  EXPECT_EQ(two.setUser("One", "anna"), 0u);
  EXPECT_EQ(two.setUser("Work", "anna"), 623u) << "the other program has deleted it";
  EXPECT_EQ(one.line.deleteEntry(nullptr, "Two"), 0u) << "an entry that only the other program had made";
  EXPECT_EQ(one.setUser("Corvanti-Home", "ben"), 0u);
  std::vector<std::string> found;
  for (const Entry& entry : load().book.entries) found.push_back(entry.name + "/" + entry.user);
  EXPECT_EQ(found, (std::vector<std::string>{"Corvanti-Office/guest", "Corvanti-Home/ben", "One/anna"}));
}

TEST_F(PhonebookFileTest, ARefusedSaveIs624AndTakesTheChangeBack) {
  Program program(path_);
  ASSERT_EQ(program.set("Kept"), 0u);
  const Phonebook before = program.line.phonebook();
  write(path_, "damaged");
  EXPECT_EQ(program.set("New"), 624u);
  EXPECT_EQ(program.line.deleteEntry(nullptr, "Work"), 624u);
  EXPECT_EQ(program.setUser("Work", "anna"), 624u);
  EXPECT_EQ(program.line.phonebook(), before);
  EXPECT_EQ(readFile(path_), "damaged");
}

}  // namespace
}  // namespace pelvaro::line
