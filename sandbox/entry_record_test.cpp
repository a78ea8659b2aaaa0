#include "entry_record.h"

#include <gtest/gtest.h>

#include "bytes.h"

namespace pelvaro::line {
namespace {

constexpr char kNumber[] = "*99***1#", kDevice[] = "Nokia 6230 USB Modem", kSuffix[] = "internet";

TEST(EntryRecord, ReadableFieldsLieWhereTheServiceHasThem) {
  const Bytes record = recordOf(2884, {kNumber, kDevice, kSuffix, 0x3D2D011C});
  EXPECT_EQ(record.size(), 2884u);
  EXPECT_EQ(getNumber(record.data()), 2884u);
  EXPECT_EQ(getNumber(record.data() + 4), 0x3D2D011Cu);
  EXPECT_EQ(getText(record.data() + 27, 129), kNumber);
  EXPECT_EQ(getText(record.data() + 989, 129), kDevice);
  EXPECT_EQ(getText(record.data() + 2096, 256), kSuffix);
}

TEST(EntryRecord, ReadableFieldsComeBackInEverySize) {
  for (const std::size_t size : kRecordSizes) {
    SCOPED_TRACE(size);
    const ReadableFields fields = readableFields(recordOf(size, {kNumber, kDevice, size == 2884 ? kSuffix : "", 7}));
    EXPECT_EQ(fields.number, kNumber);
    EXPECT_EQ(fields.device, kDevice);
    EXPECT_EQ(fields.suffix, size == 2884 ? kSuffix : "");
    EXPECT_EQ(fields.options, 7u);
  }
}

TEST(EntryRecord, AFieldFilledToItsLastByteHasNoEnd) {
  const std::string number(129, '5');
  EXPECT_EQ(readableFields(recordOf(2884, {number, kDevice, "", 0})).number, number);
  EXPECT_EQ(readableFields(recordOf(1672, {"", std::string(40, 'd'), "", 0})).device, std::string(33, 'd'));
}

TEST(EntryRecord, ALongerRecordKeepsWhatTheShorterOneSaid) {
  for (const std::size_t from : kRecordSizes)
    for (const std::size_t to : kRecordSizes) {
      SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
      Bytes record = recordOf(from, {kNumber, kDevice, "", 9});
      const std::size_t x25 = from == 1672 ? 1022 : 1118;
      putText(record.data() + x25, 33, "pad");
      const Bytes other = resized(record, to);
      ASSERT_EQ(other.size(), to);
      EXPECT_EQ(getNumber(other.data()), to);
      EXPECT_EQ(readableFields(other).device, kDevice);
      EXPECT_EQ(getText(other.data() + (to == 1672 ? 1022 : 1118), 33), "pad")
          << "the X.25 fields follow the device name";
      if (from > to) continue;
      EXPECT_EQ(resized(other, from), record);
    }
}

TEST(EntryRecord, OnlyThePlayedSizesAreSizes) {
  for (const std::size_t size : {0u, 1671u, 1673u, 2885u}) EXPECT_FALSE(isRecordSize(size));
  EXPECT_TRUE(isRecordSize(1797));
}

}  // namespace
}  // namespace pelvaro::line
