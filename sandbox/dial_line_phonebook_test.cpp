#include "line_fixture.h"

namespace pelvaro::line {
namespace {

using DialLinePhonebook = LineTest;

// A record of `size` bytes with a byte of its own at every place.
Bytes patterned(std::size_t size) {
  Bytes record(size);
  for (std::size_t i = 0; i < size; ++i) record[i] = static_cast<std::uint8_t>(i * 7 + i / 256 + 1);
  putNumber(record.data(), static_cast<std::uint32_t>(size));
  putNumber(record.data() + ras::entry::kAlternateOffset.offset, 0);
  return record;
}

TEST_F(DialLinePhonebook, AskingForTheStructureSizeGivesTheScenariosOne) {
  for (const std::size_t size : kRecordSizes) {
    Scenario scenario = quick();
    scenario.structureSize = static_cast<std::uint32_t>(size);
    line_.setScenario(scenario);
    std::uint32_t asked = 0;
    EXPECT_EQ(line_.getEntryProperties(nullptr, nullptr, nullptr, &asked), 603u);
    EXPECT_EQ(asked, size);
    asked = 0;
    EXPECT_EQ(line_.getEntryProperties(nullptr, "", nullptr, &asked), 603u);
    EXPECT_EQ(asked, size);
  }
}

TEST_F(DialLinePhonebook, AnEntrysOwnSizeIsGivenBeforeItsBytes) {
  std::uint32_t size = 0;
  EXPECT_EQ(line_.getEntryProperties(nullptr, "Work", nullptr, &size), 603u);
  EXPECT_EQ(size, 2884u);
  Bytes record(2884);
  putNumber(record.data(), 2884);
  size = 2883;
  EXPECT_EQ(line_.getEntryProperties(nullptr, "Work", record.data(), &size), 603u);
  EXPECT_EQ(size, 2884u);
  EXPECT_EQ(line_.getEntryProperties(nullptr, "Work", record.data(), &size), 0u);
  EXPECT_EQ(getText(record.data() + 27, 129), "*99#");
  EXPECT_EQ(getText(record.data() + 989, 129), "Nokia 6230 USB Modem");
}

TEST_F(DialLinePhonebook, ReadingChecksItsArguments) {
  Bytes record(2884);
  std::uint32_t size = 2884;
  putNumber(record.data(), 1672);
  EXPECT_EQ(line_.getEntryProperties(nullptr, "Work", record.data(), &size), 632u);
  EXPECT_EQ(line_.getEntryProperties(nullptr, "Nobody", record.data(), &size), 623u);
  EXPECT_EQ(line_.getEntryProperties("other.pbk", "Work", record.data(), &size), 621u);
  EXPECT_EQ(line_.getEntryProperties(nullptr, "Work", record.data(), nullptr), 87u);
}

TEST_F(DialLinePhonebook, EveryByteOfAWrittenRecordComesBackInEverySize) {
  for (const std::size_t size : kRecordSizes) {
    SCOPED_TRACE(size);
    Scenario scenario = quick();
    scenario.structureSize = static_cast<std::uint32_t>(size);
    line_.setScenario(scenario);
    const Bytes written = patterned(size);
    const auto count = static_cast<std::uint32_t>(size);
    ASSERT_EQ(line_.setEntryProperties(nullptr, "Patterned", written.data(), count), 0u);
    Bytes read(size);
    putNumber(read.data(), count);
    std::uint32_t room = count;
    ASSERT_EQ(line_.getEntryProperties(nullptr, "Patterned", read.data(), &room), 0u);
    EXPECT_EQ(read, written);
  }
}

TEST_F(DialLinePhonebook, WritingAgainReplacesTheEntryWhole) {
  ASSERT_EQ(line_.setEntryProperties(nullptr, "Work", patterned(2884).data(), 2884), 0u);
  Bytes plain(2884);
  putNumber(plain.data(), 2884);
  ASSERT_EQ(line_.setEntryProperties(nullptr, "Work", plain.data(), 2884), 0u);
  Bytes read(2884);
  putNumber(read.data(), 2884);
  std::uint32_t room = 2884;
  ASSERT_EQ(line_.getEntryProperties(nullptr, "Work", read.data(), &room), 0u);
  EXPECT_EQ(read, plain);
  EXPECT_EQ(saves_, 2);
}

TEST_F(DialLinePhonebook, NamesThatNoEntryMayHaveAreRefused) {
  const Bytes record = patterned(2884);
  const std::string longest(256, 'x'), tooLong(257, 'x');
  for (const char* name :
       {"", " ", "    ", ".hidden", "a|b", "a>b", "a<b", "a?b", "a*b", "a\\b", "a/b", "a:b", "a\"b", tooLong.c_str()}) {
    EXPECT_EQ(line_.setEntryProperties(nullptr, name, record.data(), 2884), 123u) << '[' << name << ']';
    EXPECT_EQ(line_.validateEntryName(nullptr, name), 123u) << '[' << name << ']';
  }
  for (const char* name : {"a", " a", "a.", "Corvanti-\xE9", longest.c_str()}) {
    EXPECT_EQ(line_.validateEntryName(nullptr, name), 0u) << name;
    EXPECT_EQ(line_.setEntryProperties(nullptr, name, record.data(), 2884), 0u) << name;
    EXPECT_EQ(line_.validateEntryName(nullptr, name), 183u) << name;
  }
}

TEST_F(DialLinePhonebook, WritingChecksItsArguments) {
  Bytes record = patterned(2884);
  EXPECT_EQ(line_.setEntryProperties(nullptr, nullptr, record.data(), 2884), 87u);
  EXPECT_EQ(line_.setEntryProperties(nullptr, "New", nullptr, 2884), 87u);
  EXPECT_EQ(line_.setEntryProperties("other.pbk", "New", record.data(), 2884), 621u);
  EXPECT_EQ(line_.setEntryProperties(nullptr, "New", record.data(), 2883), 632u);
  putNumber(record.data(), 2088);
  EXPECT_EQ(line_.setEntryProperties(nullptr, "New", record.data(), 2884), 632u);
  EXPECT_EQ(saves_, 0);
}

TEST_F(DialLinePhonebook, AnEntryWhoseNameDiffersOnlyInCaseIsTheSame) {
  const auto before = line_.phonebook().entries.size();
  ASSERT_EQ(line_.setEntryProperties(nullptr, "WORK", patterned(2884).data(), 2884), 0u);
  EXPECT_EQ(line_.phonebook().entries.size(), before);
}

TEST_F(DialLinePhonebook, AFailedSaveTakesTheChangeBack) {
  savesWork_ = false;
  const Phonebook before = line_.phonebook();
  EXPECT_EQ(line_.setEntryProperties(nullptr, "New", patterned(2884).data(), 2884), 624u);
  EXPECT_EQ(line_.deleteEntry(nullptr, "Work"), 624u);
  EXPECT_EQ(line_.setEntryDialParams(nullptr, params("Work").data(), false), 624u);
  EXPECT_EQ(line_.phonebook(), before);
}

TEST_F(DialLinePhonebook, AChangeIsMadeInWhatAnotherProgramLeft) {
  Phonebook fresh = firstPhonebook();
  fresh.entries[0].name = "From elsewhere";
  elsewhere_ = fresh;
  ASSERT_EQ(line_.deleteEntry(nullptr, "Work"), 0u);
  fresh.entries.pop_back();
  EXPECT_EQ(line_.phonebook(), fresh);
}

TEST_F(DialLinePhonebook, AFailedSaveKeepsWhatAnotherProgramLeft) {
  Phonebook fresh = firstPhonebook();
  fresh.entries[0].name = "From elsewhere";
  elsewhere_ = fresh;
  savesWork_ = false;
  EXPECT_EQ(line_.deleteEntry(nullptr, "Work"), 624u);
  EXPECT_EQ(line_.phonebook(), fresh);
}

TEST_F(DialLinePhonebook, OnlyAChangeLooksAtThePhonebookElsewhere) {
  std::uint32_t size = 0, count = 0;
  std::int32_t saved = 0;
  Bytes record = params("Work");
  line_.enumEntries(nullptr, nullptr, &size, &count);
  line_.enumDevices(nullptr, &size, &count);
  line_.enumConnections(nullptr, &size, &count);
  line_.getEntryProperties(nullptr, "Work", nullptr, &size);
  line_.getEntryDialParams(nullptr, record.data(), &saved);
  line_.validateEntryName(nullptr, "Work");
  dial(params("Work"));
  EXPECT_EQ(rereads_, 0);
  line_.deleteEntry(nullptr, "Work");
  EXPECT_EQ(rereads_, 1);
}

// Writes the record with a block at offset 2884 and reads what comes back behind the structure.
std::string alternateBack(DialLine& line, const std::string& block, std::uint32_t sizePassed) {
  Bytes record(2884 + block.size());
  putNumber(record.data(), 2884);
  putNumber(record.data() + 156, 2884);
  std::copy(block.begin(), block.end(), record.begin() + 2884);
  EXPECT_EQ(line.setEntryProperties(nullptr, "Alternate", record.data(), sizePassed), 0u);
  std::uint32_t size = 0;
  EXPECT_EQ(line.getEntryProperties(nullptr, "Alternate", nullptr, &size), 603u);
  Bytes read(size);
  putNumber(read.data(), 2884);
  EXPECT_EQ(line.getEntryProperties(nullptr, "Alternate", read.data(), &size), 0u);
  EXPECT_EQ(getNumber(read.data() + 156), size == 2884 ? 0u : 2884u);
  return {read.begin() + 2884, read.end()};
}

TEST_F(DialLinePhonebook, AlternateNumbersComeBackBehindTheStructure) {
  using std::string_literals::operator""s;
  EXPECT_EQ(alternateBack(line_, "123\0"s, 2884), "123\0\0"s) << "one text behind the size that was passed";
  EXPECT_EQ(alternateBack(line_, "123\0"s, 2888), "123\0\0"s);
  EXPECT_EQ(alternateBack(line_, "1\0\0"s, 2887), "1\0\0"s);
  EXPECT_EQ(alternateBack(line_, "1\0\0002\0\0"s, 2890), "1\0\0"s) << "a list ends at its empty text";
  EXPECT_EQ(alternateBack(line_, "1\0002\0\0"s, 2889), "1\0002\0\0"s);
  EXPECT_EQ(alternateBack(line_, "\0"s, 2884), ""s);
}

TEST_F(DialLinePhonebook, TheLongestAlternateNumbersAndTheMostEntriesCanBeReadAgain) {
  Bytes record(2884 + 9000, '7');
  std::fill_n(record.begin(), 2884, '\0');
  putNumber(record.data(), 2884);
  putNumber(record.data() + 156, 2884);
  Phonebook book = firstPhonebook();
  while (book.entries.size() + 1 < kMostEntries)
    book.entries.emplace_back(book.entries[0]).name = "E" + std::to_string(book.entries.size());
  line_.setPhonebook(book);
  ASSERT_EQ(line_.setEntryProperties(nullptr, "Last", record.data(), 2884 + 8999), 0u);
  EXPECT_EQ(line_.setEntryProperties(nullptr, "One more", record.data(), 2884 + 8999), 624u);
  std::string message;
  EXPECT_EQ(parsePhonebook(phonebookText(line_.phonebook()), message), line_.phonebook()) << message;
}

TEST_F(DialLinePhonebook, AnAlternateOffsetInsideTheStructureOrFarAwayIsRefused) {
  Bytes record(2884);
  putNumber(record.data(), 2884);
  for (const std::uint32_t offset : {1u, 2883u, 65537u, 0xFFFFFFFFu}) {
    putNumber(record.data() + 156, offset);
    EXPECT_EQ(line_.setEntryProperties(nullptr, "New", record.data(), 2884), 87u);
  }
}

TEST_F(DialLinePhonebook, DialParametersAreGivenInEverySizeWithAMaskedPassword) {
  for (const std::uint32_t size : {1060u, 1052u, 816u}) {
    Bytes record(size);
    const std::size_t nameWidth = size == 816 ? 21 : 257;
    putNumber(record.data(), size);
    putText(record.data() + 4, nameWidth, "Corvanti-Office");
    std::int32_t saved = 0;
    ASSERT_EQ(line_.getEntryDialParams(nullptr, record.data(), &saved), 0u);
    EXPECT_EQ(saved, 1);
    const std::uint8_t* user = record.data() + 4 + nameWidth + 129 + 129;
    EXPECT_EQ(getText(user, 257), "guest");
    EXPECT_EQ(getText(user + 257, 257), kMaskedPassword);
    EXPECT_EQ(getText(user + 514, 16), "");
  }
}

TEST_F(DialLinePhonebook, ReadingDialParametersChecksSizeThenName) {
  Bytes record(1060);
  std::int32_t saved = 0;
  for (const std::uint32_t size : {0u, 1059u, 1061u, 815u}) {
    putNumber(record.data(), size);
    EXPECT_EQ(line_.getEntryDialParams(nullptr, record.data(), &saved), 632u);
  }
  putNumber(record.data(), 1060);
  EXPECT_EQ(line_.getEntryDialParams(nullptr, record.data(), &saved), 623u) << "no name";
  putText(record.data() + 4, 257, "Nobody");
  EXPECT_EQ(line_.getEntryDialParams(nullptr, record.data(), &saved), 623u);
  EXPECT_EQ(line_.getEntryDialParams(nullptr, nullptr, &saved), 87u);
  EXPECT_EQ(line_.getEntryDialParams(nullptr, record.data(), nullptr), 87u);
}

TEST_F(DialLinePhonebook, TheScenarioSaysWhichSizesOfDialParametersAreKnown) {
  Scenario scenario = quick();
  scenario.dialParamsSizes = {1052};
  line_.setScenario(scenario);
  std::int32_t saved = 0;
  EXPECT_EQ(line_.getEntryDialParams(nullptr, params("Work").data(), &saved), 632u);
  EXPECT_EQ(dial(params("Work")), 632u);
}

TEST_F(DialLinePhonebook, DialParametersAreSavedAndForgotten) {
  const auto read = [this] {
    Bytes record = params("Work", "", "");
    std::int32_t saved = 9;
    EXPECT_EQ(line_.getEntryDialParams(nullptr, record.data(), &saved), 0u);
    return getText(record.data() + 519, 257) + "/" + getText(record.data() + 776, 257) + "/" + std::to_string(saved);
  };
  EXPECT_EQ(read(), "//0");
  ASSERT_EQ(line_.setEntryDialParams(nullptr, params("Work", "anna", "secret").data(), false), 0u);
  EXPECT_EQ(read(), "anna/****************/1");
  ASSERT_EQ(line_.setEntryDialParams(nullptr, params("Work", "ben", kMaskedPassword).data(), false), 0u);
  EXPECT_EQ(line_.phonebook().entries[2].password, "secret") << "the mask keeps what is saved";
  ASSERT_EQ(line_.setEntryDialParams(nullptr, params("Work", "ben").data(), true), 0u);
  EXPECT_EQ(read(), "ben//0");
  EXPECT_EQ(line_.setEntryDialParams(nullptr, params("Nobody").data(), false), 623u);
}

}  // namespace
}  // namespace pelvaro::line
