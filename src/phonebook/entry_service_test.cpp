// Entries written to and read from the service: its calls, sizes and results.
#include <gtest/gtest.h>

#include "phonebook/fake_entry_buffers.h"
#include "platform/fake/fake_dial_service.h"

namespace pelvaro {
namespace {

using namespace std::string_literals;
using namespace Module1;

using fake::Lines;

struct EntryServiceTest : testing::Test {
  fake::Journal journal;
  fake::FakeDialService ras{journal};
  std::uint32_t structureSize = 2884;
  std::uint32_t probeResult = 603;

  // Answers the question for the structure's size; everything else goes to `rest`.
  void plant(std::function<std::uint32_t(void* record, std::uint32_t* size)> rest) {
    ras.onGetEntry = [this, rest](const char* entry, void* record, std::uint32_t* size) -> std::uint32_t {
      if (entry) return rest(record, size);
      *size = structureSize;
      return probeResult;
    };
  }
  void SetUp() override {
    plant([](void*, std::uint32_t*) { return 623u; });
  }
};

TEST_F(EntryServiceTest, WritingProbesTheSizeThenWritesOnce) {
  Buffer written;
  ras.onSetEntry = [&](const char*, void* record, std::uint32_t size) {
    const auto* bytes = static_cast<const std::uint8_t*>(record);
    written.assign(bytes, bytes + size + 3 + 1);
    return 0u;
  };
  RasEntryRecord record = shortRecord();
  record.AlternateNumbers = "555";
  EXPECT_EQ(SetEntryProperties(ras, "Corvanti-Home", record), 0u);
  EXPECT_EQ(journal.take(), (Lines{"RasGetEntryProperties null null null 0",  //
                                   "RasSetEntryProperties null \"Corvanti-Home\" 2884"}));
  Laid laid = shortHead(2888, "\x44\x0B").text(156, "\x44\x0B");
  secondOptions(typeAndGuid(dialExtensions(shortBody(laid))))
      .text(1824, "custom")
      .text(2096, "internet")
      .text(2884, "555");
  expectSame(written, laid.bytes);
}

TEST_F(EntryServiceTest, EveryWriteProbesAnew) {
  SetEntryProperties(ras, "A", {});
  structureSize = 1672;
  SetEntryProperties(ras, "A", {});
  EXPECT_EQ(journal.take(), (Lines{"RasGetEntryProperties null null null 0", "RasSetEntryProperties null \"A\" 2884",
                                   "RasGetEntryProperties null null null 0", "RasSetEntryProperties null \"A\" 1672"}));
}

TEST_F(EntryServiceTest, WritingPassesThePhonebookOnButProbesWithout) {
  SetEntryProperties(ras, "A", {}, "C:\\book.pbk");
  EXPECT_EQ(journal.take(),
            (Lines{"RasGetEntryProperties null null null 0", "RasSetEntryProperties \"C:\\book.pbk\" \"A\" 2884"}));
}

TEST_F(EntryServiceTest, WritingReturnsAProbeThatIsNot603) {
  for (const std::uint32_t result : {0u, 602u, 604u, 632u, 0xFFFFFFFFu}) {
    probeResult = result;
    EXPECT_EQ(SetEntryProperties(ras, "A", {}), result);
    EXPECT_EQ(journal.take(), (Lines{"RasGetEntryProperties null null null 0"}));
  }
}

TEST_F(EntryServiceTest, WritingReturnsTheServicesResult) {
  ras.onSetEntry = [](const char*, void*, std::uint32_t) { return 625u; };
  EXPECT_EQ(SetEntryProperties(ras, "A", {}), 625u);
}

TEST_F(EntryServiceTest, AbsurdStructureSizeIsRefused) {
  structureSize = 0xFFFFFFFF;
  EXPECT_EQ(SetEntryProperties(ras, "A", {}), 632u);
  EXPECT_EQ(journal.take(), (Lines{"RasGetEntryProperties null null null 0"}));
  RasEntryRecord record = oldRecord();
  EXPECT_EQ(GetEntryProperties(ras, "A", record), 632u);
  EXPECT_EQ(journal.take(), (Lines{"RasGetEntryProperties null null null 0"}));
  EXPECT_EQ(record, oldRecord());
  structureSize = 1048576;
  EXPECT_EQ(SetEntryProperties(ras, "A", {}), 0u);
  structureSize = 1048577;
  EXPECT_EQ(SetEntryProperties(ras, "A", {}), 632u);
}

TEST_F(EntryServiceTest, TinyStructureSizesAreWrittenWithoutHarm) {
  for (structureSize = 0; structureSize < 200; structureSize += 3) {
    RasEntryRecord record = longRecord();
    record.AlternateNumbers = "555";
    EXPECT_EQ(SetEntryProperties(ras, "A", record), 0u);
  }
}

TEST_F(EntryServiceTest, ReadingAsksForBothSizesThenReads) {
  Laid laid = shortHead(3000, "\x44\x0B").text(156, "\x44\x0B");
  secondOptions(typeAndGuid(dialExtensions(shortBody(laid))))
      .text(1824, "custom")
      .text(2096, "internet")
      .text(2884, "555");
  Buffer given;
  plant([&](void* buffer, std::uint32_t* size) -> std::uint32_t {
    if (!buffer) {
      *size = 3000;
      return 603;
    }
    auto* bytes = static_cast<std::uint8_t*>(buffer);
    given.assign(bytes, bytes + *size);
    std::copy(laid.bytes.begin(), laid.bytes.end(), bytes);
    return 0;
  });
  RasEntryRecord record = oldRecord();
  EXPECT_EQ(GetEntryProperties(ras, "Corvanti-Home", record), 0u);
  EXPECT_EQ(journal.take(),
            (Lines{"RasGetEntryProperties null null null 0", "RasGetEntryProperties null \"Corvanti-Home\" null 0",
                   "RasGetEntryProperties null \"Corvanti-Home\" buffer 3000"}));
  expectSame(given, Laid(3000).text(0, "\x44\x0B").bytes);  // dwSize is the structure's size, all else zero
  RasEntryRecord expected = readRecord(2884);
  expected.AlternateNumbers = "555" + std::string(113, '\0');
  EXPECT_EQ(record, expected);
}

TEST_F(EntryServiceTest, ReadingPassesThePhonebookOnButProbesWithout) {
  plant([](void* buffer, std::uint32_t* size) -> std::uint32_t {
    *size = 1768;
    return buffer ? 0 : 603;
  });
  RasEntryRecord record;
  EXPECT_EQ(GetEntryProperties(ras, "A", record, "book"), 0u);
  EXPECT_EQ(journal.take(),
            (Lines{"RasGetEntryProperties null null null 0", "RasGetEntryProperties \"book\" \"A\" null 0",
                   "RasGetEntryProperties \"book\" \"A\" buffer 1768"}));
}

TEST_F(EntryServiceTest, ReadingReturnsAProbeThatIsNot603AndLeavesTheRecord) {
  for (const std::uint32_t result : {0u, 602u, 604u, 623u}) {
    probeResult = result;
    RasEntryRecord record = oldRecord();
    EXPECT_EQ(GetEntryProperties(ras, "A", record), result);
    EXPECT_EQ(record, oldRecord());
    EXPECT_EQ(journal.take(), (Lines{"RasGetEntryProperties null null null 0"}));
  }
}

TEST_F(EntryServiceTest, ReadingAnUnknownEntryReturnsTheServicesErrorAndLeavesTheRecord) {
  for (const std::uint32_t result : {623u, 0u, 5u}) {
    plant([&](void*, std::uint32_t*) { return result; });
    RasEntryRecord record = oldRecord();
    EXPECT_EQ(GetEntryProperties(ras, "A", record), result);
    EXPECT_EQ(record, oldRecord());
    EXPECT_EQ(journal.take(),
              (Lines{"RasGetEntryProperties null null null 0", "RasGetEntryProperties null \"A\" null 0"}));
  }
}

TEST_F(EntryServiceTest, FailingReadLeavesTheRecord) {
  plant([](void* buffer, std::uint32_t* size) -> std::uint32_t {
    if (buffer) {
      std::fill_n(static_cast<char*>(buffer), *size, 'x');
      return 603;
    }
    *size = 2884;
    return 603;
  });
  RasEntryRecord record = oldRecord();
  EXPECT_EQ(GetEntryProperties(ras, "A", record), 603u);
  EXPECT_EQ(record, oldRecord());
}

TEST_F(EntryServiceTest, AbsurdEntrySizeIsRefused) {
  plant([](void*, std::uint32_t* size) {
    *size = 0x7FFFFFFF;
    return 603u;
  });
  RasEntryRecord record = oldRecord();
  EXPECT_EQ(GetEntryProperties(ras, "A", record), 632u);
  EXPECT_EQ(record, oldRecord());
  EXPECT_EQ(journal.take().size(), 2u);
}

TEST_F(EntryServiceTest, SizeThatTheReadItselfNamesDoesNotMatter) {
  plant([](void* buffer, std::uint32_t* size) -> std::uint32_t {
    *size = buffer ? 0x7FFFFFFF : 1768;
    if (buffer) static_cast<std::uint8_t*>(buffer)[156] = 200;
    return buffer ? 0 : 603;
  });
  RasEntryRecord record;
  EXPECT_EQ(GetEntryProperties(ras, "A", record), 0u);
  EXPECT_EQ(record.AlternateNumbers.size(), 1568u);
}

TEST_F(EntryServiceTest, EntryOfNoBytesReadsAsZeros) {
  plant([](void* buffer, std::uint32_t* size) -> std::uint32_t {
    *size = 0;
    return buffer ? 0 : 603;
  });
  RasEntryRecord record = oldRecord();
  EXPECT_EQ(GetEntryProperties(ras, "A", record), 0u);
  EXPECT_EQ(record.LocalPhoneNumber, "");
  EXPECT_EQ(record.Options2, 0u);
  EXPECT_EQ(record.AlternateNumbers, "old");
}

}  // namespace
}  // namespace pelvaro
