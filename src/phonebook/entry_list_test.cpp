#include "phonebook/entry_list.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/fake/fake_dial_service.h"

namespace pelvaro {
namespace {

using fake::FakeDialService;
using fake::Journal;
using fake::Lines;

// Plants entries that the service enumerates as the real one does: 603 and the needed size when the buffer is small.
void plantEntries(FakeDialService& ras, const std::vector<std::string>& names) {
  ras.onEnumEntries = [names](void* records, std::uint32_t* size, std::uint32_t* count) -> std::uint32_t {
    const auto needed = static_cast<std::uint32_t>(names.size() * 264);
    *count = static_cast<std::uint32_t>(names.size());
    const bool fits = *size >= needed;
    auto* bytes = static_cast<std::uint8_t*>(records);
    for (std::size_t i = 0; i < *size / 264; ++i) EXPECT_EQ(get32({bytes, *size}, i * 264), 264u) << "record " << i;
    *size = needed;
    if (!fits) return 603;
    for (std::size_t i = 0; i < names.size(); ++i) {
      std::memcpy(bytes + i * 264 + 4, names[i].data(), std::min<std::size_t>(names[i].size(), 257));
    }
    return 0;
  };
}

void plantConnections(FakeDialService& ras, const std::vector<std::string>& names, std::uint32_t result = 0) {
  ras.onEnumConnections = [names, result](void* records, std::uint32_t* size, std::uint32_t* count) -> std::uint32_t {
    auto* bytes = static_cast<std::uint8_t*>(records);
    EXPECT_EQ(get32({bytes, *size}, 0), 412u);
    *count = static_cast<std::uint32_t>(names.size());
    if (result != 0) return result;
    for (std::size_t i = 0; i < std::min<std::size_t>(names.size(), *size / 412); ++i) {
      std::memset(bytes + i * 412 + 8, 0, 257);
      std::memcpy(bytes + i * 412 + 8, names[i].data(), std::min<std::size_t>(names[i].size(), 257));
    }
    return 0;
  };
}

struct EntryList : testing::Test {
  Journal journal;
  FakeDialService ras{journal};
};

TEST_F(EntryList, NamesAreCutAtTheirFirstNul) {
  plantEntries(ras, {"Corvanti-Office", std::string("Work\0rest", 9), ""});
  EXPECT_EQ(listEntries(ras), (Lines{"Corvanti-Office", "Work", ""}));
  EXPECT_EQ(journal.lines(), (Lines{"RasEnumEntries null 67584"}));
}

TEST_F(EntryList, ANameThatFillsItsFieldIsTakenWhole) {
  plantEntries(ras, {std::string(257, 'x')});
  EXPECT_EQ(listEntries(ras), (Lines{std::string(257, 'x')}));
}

TEST_F(EntryList, MoreThan256EntriesAreAskedForOnceMoreAndTheFirst256Shown) {
  std::vector<std::string> names;
  for (int i = 0; i < 300; ++i) names.push_back("entry " + std::to_string(i));
  plantEntries(ras, names);
  const auto listed = listEntries(ras);
  ASSERT_EQ(listed.size(), 256u);
  EXPECT_EQ(listed.front(), "entry 0");
  EXPECT_EQ(listed.back(), "entry 255");
  EXPECT_EQ(journal.lines(), (Lines{"RasEnumEntries null 67584", "RasEnumEntries null 79200"}));
}

TEST_F(EntryList, AFailedEnumerationListsNothing) {
  ras.onEnumEntries = [](auto...) { return 621u; };
  EXPECT_TRUE(listEntries(ras).empty());
}

TEST_F(EntryList, AServiceThatNamesAnAbsurdSizeIsNotAskedAgain) {
  ras.onEnumEntries = [](void*, std::uint32_t* size, std::uint32_t* count) {
    *size = 0xFFFFFFFF;
    *count = 0xFFFFFFFF;
    return 603u;
  };
  EXPECT_TRUE(listEntries(ras).empty());
  EXPECT_EQ(journal.lines().size(), 1u);
}

TEST_F(EntryList, AListOf16MegabytesIsBelieved) {
  for (const std::uint32_t size : {16u << 20, (16u << 20) + 1}) {
    std::vector<std::uint32_t> given;
    ras.onEnumEntries = [&](void*, std::uint32_t* bytes, std::uint32_t*) {
      given.push_back(*bytes);
      *bytes = size;
      return given.size() == 1 ? 603u : 1u;
    };
    listEntries(ras);
    const std::vector<std::uint32_t> once{264 * 256}, twice{264 * 256, 16 << 20};
    EXPECT_EQ(given, size == 16 << 20 ? twice : once);
  }
}

TEST_F(EntryList, AServiceThatWantsTheSizeItWasGivenIsNotAskedAgain) {
  ras.onEnumEntries = [](auto...) { return 603u; };
  EXPECT_TRUE(listEntries(ras).empty());
  EXPECT_EQ(journal.lines().size(), 1u);
}

TEST_F(EntryList, ASecondCallThatNamesNoCountHasNothing) {
  ras.onEnumEntries = [](void*, std::uint32_t* size, std::uint32_t* count) {
    if (*size > 264 * 256) return 0u;
    *size = 264 * 300;
    *count = 300;
    return 603u;
  };
  EXPECT_TRUE(listEntries(ras).empty());
}

TEST_F(EntryList, ACountLargerThanTheBufferIsCut) {
  ras.onEnumEntries = [](void*, std::uint32_t*, std::uint32_t* count) {
    *count = 0xFFFFFFFF;
    return 0u;
  };
  EXPECT_EQ(listEntries(ras).size(), 256u);
}

TEST_F(EntryList, AServiceThatNamesNoCountHasNothing) {
  const auto fill = [](void* records, std::uint32_t* size, std::uint32_t*) {
    std::memset(records, 'x', *size);
    return 0u;
  };
  ras.onEnumEntries = fill;
  EXPECT_TRUE(listEntries(ras).empty());
  ras.onEnumConnections = fill;
  EXPECT_FALSE(ActiveConnections(ras).isUp(std::string(257, 'x')));
}

TEST_F(EntryList, AConnectionIsUpOnlyUnderExactlyItsName) {
  plantConnections(ras, {"Corvanti-Office", "Work"});
  ActiveConnections connections(ras);
  EXPECT_TRUE(connections.isUp("Work"));
  EXPECT_FALSE(connections.isUp("work"));
  EXPECT_FALSE(connections.isUp("Wor"));
  EXPECT_FALSE(connections.isUp("Work "));
  EXPECT_FALSE(connections.isUp(""));
  EXPECT_EQ(journal.lines().front(), "RasEnumConnections 105472");
}

TEST_F(EntryList, AConnectionWithANameOfOneByteIsUp) {
  plantConnections(ras, {"x", "W"});
  EXPECT_TRUE(ActiveConnections(ras).isUp("W"));
  EXPECT_FALSE(ActiveConnections(ras).isUp("w"));
}

TEST_F(EntryList, ConnectionNamesOf256And257BytesAreCompared) {
  const std::string full(257, 'n');
  plantConnections(ras, {full});
  ActiveConnections connections(ras);
  EXPECT_TRUE(connections.isUp(full));
  EXPECT_FALSE(connections.isUp(std::string(256, 'n')));
  EXPECT_FALSE(connections.isUp(std::string(258, 'n')));
}

TEST_F(EntryList, NothingSelectedIsNotUpEvenIfAConnectionHasNoName) {
  plantConnections(ras, {""});
  EXPECT_FALSE(ActiveConnections(ras).isUp(""));
  EXPECT_EQ(journal.lines().size(), 1u) << "the connections are asked for all the same";
}

TEST_F(EntryList, AFailedConnectionEnumerationMeansNotUp) {
  plantConnections(ras, {"Work"}, 603);
  EXPECT_FALSE(ActiveConnections(ras).isUp("Work"));
}

TEST_F(EntryList, AConnectionCountLargerThanTheBufferIsCut) {
  plantConnections(ras, std::vector<std::string>(300, "other"));
  EXPECT_FALSE(ActiveConnections(ras).isUp("Work"));
}

}  // namespace
}  // namespace pelvaro
