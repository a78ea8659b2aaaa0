#include "allocation_count.h"
#include "line_fixture.h"

namespace pelvaro::line {
namespace {

using DialLineEnumeration = LineTest;

Bytes nameRecords(std::size_t count, std::uint32_t size) {
  Bytes records(count * size);
  for (std::size_t i = 0; i < count; ++i) putNumber(records.data() + i * size, size);
  return records;
}

TEST_F(DialLineEnumeration, EntriesAreEnumeratedInBothRecordSizes) {
  for (const std::uint32_t recordSize : {264u, 532u}) {
    Bytes records = nameRecords(256, recordSize);
    auto size = static_cast<std::uint32_t>(records.size());
    std::uint32_t count = 0;
    ASSERT_EQ(line_.enumEntries(nullptr, records.data(), &size, &count), 0u);
    ASSERT_EQ(count, 3u);
    EXPECT_EQ(size, 3 * recordSize);
    EXPECT_EQ(getText(records.data() + 4, 257), "Corvanti-Office");
    EXPECT_EQ(getText(records.data() + recordSize + 4, 257), "Corvanti-Home");
    EXPECT_EQ(getText(records.data() + std::size_t{2} * recordSize + 4, 257), "Work");
    EXPECT_EQ(getNumber(records.data() + std::size_t{2} * recordSize), recordSize);
  }
}

TEST_F(DialLineEnumeration, TooLittleRoomForTheEntriesIs603WithSizeAndCount) {
  Bytes records = nameRecords(2, 264);
  std::uint32_t size = 2 * 264, count = 0;
  EXPECT_EQ(line_.enumEntries(nullptr, records.data(), &size, &count), 603u);
  EXPECT_EQ(size, 3u * 264);
  EXPECT_EQ(count, 3u);
  EXPECT_EQ(getText(records.data() + 264 + 4, 257), "Corvanti-Home") << "what there is room for is filled";
  size = 0;
  EXPECT_EQ(line_.enumEntries(nullptr, nullptr, &size, &count), 603u);
}

TEST_F(DialLineEnumeration, EveryEntryRecordMustSayItsSize) {
  Bytes records = nameRecords(3, 264);
  std::uint32_t size = 3 * 264, count = 0;
  putNumber(records.data() + std::size_t{2} * 264, 0);
  EXPECT_EQ(line_.enumEntries(nullptr, records.data(), &size, &count), 632u);
  records = nameRecords(3, 264);
  putNumber(records.data(), 263);
  EXPECT_EQ(line_.enumEntries(nullptr, records.data(), &size, &count), 632u);
  EXPECT_EQ(line_.enumEntries(nullptr, records.data(), nullptr, &count), 87u);
  EXPECT_EQ(line_.enumEntries(nullptr, records.data(), &size, nullptr), 87u);
}

TEST_F(DialLineEnumeration, AnEmptyPhonebookIsEnumeratedAsNothing) {
  line_.setPhonebook({});
  std::uint32_t size = 0, count = 9;
  EXPECT_EQ(line_.enumEntries(nullptr, nullptr, &size, &count), 0u);
  EXPECT_EQ(count, 0u);
  size = 0;
  EXPECT_EQ(line_.enumDevices(nullptr, &size, &count), 0u);
  EXPECT_EQ(size, 0u);
}

TEST_F(DialLineEnumeration, DevicesAreCountedThenEnumerated) {
  std::uint32_t size = 0, count = 0;
  EXPECT_EQ(line_.enumDevices(nullptr, &size, &count), 603u);
  EXPECT_EQ(size, 304u);
  EXPECT_EQ(count, 2u);
  Bytes records(size);
  putNumber(records.data(), 152);  // only the first says its size
  EXPECT_EQ(line_.enumDevices(records.data(), &size, &count), 0u);
  EXPECT_EQ(getText(records.data() + 4, 17), "modem");
  EXPECT_EQ(getText(records.data() + 152 + 21, 129), "Samsung D500 USB Modem");
}

TEST_F(DialLineEnumeration, SizeAndCountOfTheDevicesMayBeOneVariable) {
  Bytes records(304);
  putNumber(records.data(), 152);
  std::uint32_t both = 304;
  EXPECT_EQ(line_.enumDevices(records.data(), &both, &both), 0u);
  EXPECT_EQ(both, 2u);
  EXPECT_EQ(getText(records.data() + 21, 129), "Nokia 6230 USB Modem");
}

TEST_F(DialLineEnumeration, ADeviceRecordOfAnotherSizeIs632) {
  Bytes records(304);
  putNumber(records.data(), 150);
  std::uint32_t size = 304, count = 0;
  EXPECT_EQ(line_.enumDevices(records.data(), &size, &count), 632u);
  putNumber(records.data(), 152);
  size = 303;
  EXPECT_EQ(line_.enumDevices(records.data(), &size, &count), 603u);
}

TEST_F(DialLineEnumeration, ConnectionsAreEnumeratedInBothRecordSizes) {
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  for (const std::uint32_t recordSize : {412u, 704u}) {
    Bytes records(std::size_t{4} * recordSize);
    putNumber(records.data(), recordSize);
    auto size = static_cast<std::uint32_t>(records.size());
    std::uint32_t count = 0;
    ASSERT_EQ(line_.enumConnections(records.data(), &size, &count), 0u);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(size, recordSize);
    EXPECT_EQ(getNumber(records.data()), recordSize);
    EXPECT_EQ(getNumber(records.data() + 4), handle_);
    EXPECT_EQ(getText(records.data() + 8, 257), "Work");
    EXPECT_EQ(getText(records.data() + 265, 17), "modem");
    EXPECT_EQ(getText(records.data() + 282, 129), "Nokia 6230 USB Modem");
  }
}

TEST_F(DialLineEnumeration, EnumeratingConnectionsChecksItsArguments) {
  std::uint32_t size = 0, count = 9;
  EXPECT_EQ(line_.enumConnections(nullptr, &size, &count), 0u) << "there is none";
  EXPECT_EQ(count, 0u);
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  size = 0;
  EXPECT_EQ(line_.enumConnections(nullptr, &size, &count), 603u);
  Bytes records(std::size_t{412} * 2);
  putNumber(records.data(), 411);
  size = 412 * 2;
  EXPECT_EQ(line_.enumConnections(records.data(), &size, &count), 632u);
  putNumber(records.data(), 412);
  size = 411;
  EXPECT_EQ(line_.enumConnections(records.data(), &size, &count), 603u);
  EXPECT_EQ(size, 412u);
  EXPECT_EQ(line_.enumConnections(records.data(), nullptr, &count), 87u);
  EXPECT_EQ(line_.enumConnections(records.data(), &size, nullptr), 87u);
}

TEST_F(DialLineEnumeration, TheStateOfAConnectionCanBeAsked) {
  Bytes record(288);
  putNumber(record.data(), 288);
  EXPECT_EQ(line_.getConnectStatus(1, record.data()), 6u);
  ASSERT_EQ(dial(params("Work", "guest", "wrong")), 0u);
  settle();
  ASSERT_EQ(line_.getConnectStatus(handle_, record.data()), 0u);
  EXPECT_EQ(getNumber(record.data() + 4), kAuthenticate);
  EXPECT_EQ(getNumber(record.data() + 8), 691u);
  EXPECT_EQ(getText(record.data() + 29, 129), "Nokia 6230 USB Modem");
  EXPECT_EQ(getText(record.data() + 158, 129), "*99#");
  putNumber(record.data(), 287);
  EXPECT_EQ(line_.getConnectStatus(handle_, record.data()), 632u);
  EXPECT_EQ(line_.getConnectStatus(handle_, nullptr), 87u);
}

TEST_F(DialLineEnumeration, TheScenarioAddsEntriesAndConnections) {
  Scenario scenario = quick();
  scenario.entries = 256;
  scenario.connections = 256;
  line_.setScenario(scenario);
  Bytes records = nameRecords(256, 264);
  auto size = static_cast<std::uint32_t>(records.size());
  std::uint32_t count = 0;
  EXPECT_EQ(line_.enumEntries(nullptr, records.data(), &size, &count), 0u);
  EXPECT_EQ(count, 256u);
  EXPECT_EQ(connected().size(), 256u);
  EXPECT_EQ(dial(params("Extra 256")), 0u);
  settle();
  EXPECT_EQ(connected().size(), 257u);
  EXPECT_EQ(connected().back(), "Extra 256");
  std::string message;
  EXPECT_EQ(parsePhonebook(phonebookText(line_.phonebook()), message)->entries.size(), 3u);
  line_.setScenario(quick());
  EXPECT_EQ(connected().size(), 1u);
  EXPECT_EQ(line_.phonebook().entries.size(), 3u);
}

TEST_F(DialLineEnumeration, EnumeratingAllocatesNothing) {
  Scenario scenario = quick();
  scenario.entries = 256;
  scenario.connections = 255;
  line_.setScenario(scenario);
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  Bytes names = nameRecords(256, 264), records(std::size_t{412} * 256);
  putNumber(records.data(), 412);
  const std::size_t before = allocationCount();
  for (int i = 0; i < 1000; ++i) {
    auto size = static_cast<std::uint32_t>(names.size());
    std::uint32_t count = 0;
    ASSERT_EQ(line_.enumEntries(nullptr, names.data(), &size, &count), 0u);
    size = static_cast<std::uint32_t>(records.size());
    ASSERT_EQ(line_.enumConnections(records.data(), &size, &count), 0u);
    line_.step(now_ += 1);
  }
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace
}  // namespace pelvaro::line
