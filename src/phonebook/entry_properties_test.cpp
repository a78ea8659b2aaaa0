// Entries packed into the service's buffers, and the fields of text that they are made of.
#include "phonebook/entry_properties.h"

#include <gtest/gtest.h>

#include "phonebook/fake_entry_buffers.h"

namespace pelvaro {
namespace {

using namespace std::string_literals;
using namespace Module1;

TEST(PackEntry, SizeOf1672HasA33ByteDeviceNameAndShiftsWhatFollows) {
  Laid brief = shortHead(1673, "\x88\x06");
  brief.text(1022, "pad")
      .text(1055, "address")
      .text(1256, "facilities")
      .text(1457, "user data")
      .text(1660, "\x61\x62\x63\x64");
  Laid full = longHead(1673, "\x88\x06");
  full.fill(989, 33, 'g').fill(1022, 33, 'h').fill(1055, 201, 'i').fill(1256, 201, 'j').fill(1457, 201, 'k');
  full.text(1660, "\x61\x62\x63\x64");
  expectLayout(1672, brief, full);
}

TEST(PackEntry, SizeOf1671OrLessAnd1673HaveA129ByteDeviceName) {
  RasEntryRecord record;
  record.DeviceName = std::string(400, 'g');
  record.X25PadType = "pad";
  Laid below = Laid(1672).text(0, "\x87\x06").fill(989, 129, 'g').text(1118, "pad");
  expectSame(packEntry(record, 1671), below.bytes);
  Laid above = Laid(1674).text(0, "\x89\x06").fill(989, 129, 'g').text(1118, "pad");
  expectSame(packEntry(record, 1673), above.bytes);
}

TEST(PackEntry, SizeOf1768StopsBehindTheChannelsAndLeavesTheReservedFieldsZero) {
  Laid brief = shortHead(1769, "\xE8\x06");
  Laid full = longHead(1769, "\xE8\x06");
  expectLayout(1768, shortBody(brief), longBody(full));
}

TEST(PackEntry, SizeOf1769BeginsTheDialExtensionsCutAtTheBuffersEnd) {
  Laid brief = shortHead(1770, "\xE9\x06");
  Laid full = longHead(1770, "\xE9\x06");
  expectLayout(1769, shortBody(brief).text(1768, "\x71\x72"), longBody(full).text(1768, "\x71\x72"));
}

TEST(PackEntry, SizeOf1796HasTheDialExtensionsAndNoType) {
  Laid brief = shortHead(1797, "\x04\x07");
  Laid full = longHead(1797, "\x04\x07");
  expectLayout(1796, dialExtensions(shortBody(brief)), dialExtensions(longBody(full)));
  EXPECT_EQ(packEntry(shortRecord(), 1796)[1796], 0);
}

TEST(PackEntry, SizeOf1797WritesTwoBytesOfTheTypeAndIsCutThere) {
  Laid brief = shortHead(1798, "\x05\x07");
  Laid full = longHead(1798, "\x05\x07");
  expectLayout(1797, dialExtensions(shortBody(brief)).text(1796, "\xE1\xE2"),
               dialExtensions(longBody(full)).text(1796, "\xE1\xE2"));
}

TEST(PackEntry, SizeOf2088HasTypeGuidAndVpnAndNoSecondOptions) {
  Laid brief = shortHead(2089, "\x28\x08");
  Laid full = longHead(2089, "\x28\x08");
  expectLayout(2088, typeAndGuid(dialExtensions(shortBody(brief))).text(1824, "custom"),
               typeAndGuid(dialExtensions(longBody(full))).fill(1824, 260, 'l'));
  EXPECT_EQ(packEntry(shortRecord(), 2088)[2088], 0);
}

TEST(PackEntry, SizeOf2089WritesTwoBytesOfTheSecondOptionsAndIsCutThere) {
  Laid brief = shortHead(2090, "\x29\x08");
  Laid full = longHead(2090, "\x29\x08");
  expectLayout(2089, typeAndGuid(dialExtensions(shortBody(brief))).text(1824, "custom").text(2088, "\xB0\xAF"),
               typeAndGuid(dialExtensions(longBody(full))).fill(1824, 260, 'l').text(2088, "\xB0\xAF"));
}

TEST(PackEntry, SizeOf2096HasRoomForOneByteOfTheSuffix) {
  Laid brief = shortHead(2097, "\x30\x08");
  Laid full = longHead(2097, "\x30\x08");
  expectLayout(2096, secondOptions(typeAndGuid(dialExtensions(shortBody(brief)))).text(1824, "custom").text(2096, "i"),
               secondOptions(typeAndGuid(dialExtensions(longBody(full)))).fill(1824, 260, 'l').text(2096, "m"));
}

TEST(PackEntry, SizeOf2352CutsTheSuffixAt257Bytes) {
  Laid brief = shortHead(2353, "\x30\x09");
  Laid full = longHead(2353, "\x30\x09");
  expectLayout(2352,
               secondOptions(typeAndGuid(dialExtensions(shortBody(brief)))).text(1824, "custom").text(2096, "internet"),
               secondOptions(typeAndGuid(dialExtensions(longBody(full)))).fill(1824, 260, 'l').fill(2096, 257, 'm'));
}

TEST(PackEntry, SizeOf2884CopiesASuffixOf260BytesIntoTheFieldBehind) {
  Laid brief = shortHead(2885, "\x44\x0B");
  Laid full = longHead(2885, "\x44\x0B");
  expectLayout(2884,
               secondOptions(typeAndGuid(dialExtensions(shortBody(brief)))).text(1824, "custom").text(2096, "internet"),
               secondOptions(typeAndGuid(dialExtensions(longBody(full)))).fill(1824, 260, 'l').fill(2096, 260, 'm'));
}

TEST(PackEntry, SizeFieldOfTheRecordIsNotUsed) {
  RasEntryRecord record;
  record.Size = 1;
  expectSame(packEntry(record, 2884), Laid(2885).text(0, "\x44\x0B").bytes);
}

TEST(PackEntry, TextsThatFillTheirFieldExactlyHaveNoTerminator) {
  RasEntryRecord record;
  record.AreaCode = "12345678901";
  record.LocalPhoneNumber = std::string(129, '5');
  record.DeviceType = "12345678901234567";
  record.DeviceName = std::string(129, 'n');
  record.X25PadType = "p";
  Laid laid = Laid(2885).text(0, "\x44\x0B").text(16, "12345678901").fill(27, 129, '5').text(972, "12345678901234567");
  expectSame(packEntry(record, 2884), laid.fill(989, 129, 'n').text(1118, "p").bytes);
}

TEST(PackEntry, NumbersOf129DigitsAndMoreTouchTheAlternateOffset) {
  for (const std::size_t digits : {128u, 129u, 130u, 1000u}) {
    RasEntryRecord record;
    record.LocalPhoneNumber = std::string(digits, '7');
    record.AlternateNumbers = "1";
    Laid laid = Laid(1770).text(0, "\xE8\x06").fill(27, std::min<std::size_t>(digits, 129), '7');
    expectSame(packEntry(record, 1768), laid.text(156, "\xE8\x06").text(1768, "1").bytes);
  }
}

TEST(PackEntry, AlternateNumbersLieBehindTheStructureWithOneNul) {
  RasEntryRecord record;
  record.AlternateNumbers =
      "555-1\0"
      "555-2"s;
  const struct {
    std::uint32_t size;
    std::string written;
  } table[] = {{1672, "\x88\x06"}, {1768, "\xE8\x06"}, {1796, "\x04\x07"}, {2884, "\x44\x0B"}};
  for (const auto& row : table) {
    Laid laid = Laid(row.size + 12)
                    .text(0, row.written)
                    .text(156, row.written)
                    .text(row.size,
                          "555-1\0"
                          "555-2"s);
    expectSame(packEntry(record, row.size), laid.bytes);
  }
}

TEST(PackEntry, WithoutAlternateNumbersTheOffsetIsZero) {
  const Buffer buffer = packEntry(shortRecord(), 2884);
  EXPECT_EQ((Buffer(buffer.begin() + 156, buffer.begin() + 160)), (Buffer{0, 0, 0, 0}));
}

TEST(PackEntry, LaterFieldsOverwriteAlternateNumbersAtSize1797) {
  RasEntryRecord record = shortRecord();
  record.CustomDialDll.clear();
  record.AlternateNumbers = std::string(300, '*');
  Laid laid = shortHead(2098, "\x05\x07").text(156, "\x05\x07").fill(1797, 300, '*');
  typeAndGuid(dialExtensions(shortBody(laid)));  // an empty CustomDialDll at 1824 writes nothing
  expectSame(packEntry(record, 1797), laid.bytes);
}

TEST(PackEntry, SuffixOverwritesAlternateNumbersAtSize2089) {
  RasEntryRecord record = shortRecord();
  record.AlternateNumbers = std::string(300, '*');
  Laid laid = shortHead(2390, "\x29\x08").text(156, "\x29\x08").fill(2089, 300, '*');
  secondOptions(typeAndGuid(dialExtensions(shortBody(laid)))).text(1824, "custom").text(2096, "internet");
  expectSame(packEntry(record, 2089), laid.bytes);
}

TEST(PackEntry, AlternateNumbersGoOverThePhoneNumberAndUnderTheScriptInATinyStructure) {
  RasEntryRecord record;
  record.LocalPhoneNumber = std::string(129, '7');
  record.AlternateNumbers = std::string(200, '*');
  record.Script = "script";
  Laid laid = Laid(301).text(0, "\x64").fill(27, 129, '7').fill(100, 200, '*').text(156, "\x64"s + "\0\0\0"s);
  laid.text(160, std::string(32, '\0')).text(192, "script");
  expectSame(packEntry(record, 100), laid.bytes);
}

TEST(PackEntry, StructureOfNoBytesIsOneZero) { expectSame(packEntry(longRecord(), 0), Buffer{0}); }

TEST(CopyStringToBytes, CopiesAtMostTheMaximumAndWritesNoTerminator) {
  const struct {
    std::string text;
    std::size_t maximum;
    std::string expected;
  } table[] = {
      {"", 4, "......"},         {"ab", 4, "ab...."},   {"abcd", 4, "abcd.."},    {"abcde", 4, "abcd.."},
      {"abcdefgh", 8, "abcdef"}, {"abcd", 0, "......"}, {"a\0b"s, 4, "a\0b..."s},
  };
  for (const auto& row : table) {
    Buffer buffer(6, '.');
    CopyStringToBytes(buffer, row.text, row.maximum);
    EXPECT_EQ(asText(buffer), row.expected);
  }
  CopyStringToBytes({}, "abc", 3);
}

TEST(BytesToString, EndsAtTheFirstNulOrAtTheWidth) {
  const Buffer buffer{'a', 'b', 0xE4, 0, 'c', 'd'};
  EXPECT_EQ(BytesToString(buffer, 6), "ab\xE4");
  EXPECT_EQ(BytesToString(buffer, 3), "ab\xE4");
  EXPECT_EQ(BytesToString(buffer, 2), "ab");
  EXPECT_EQ(BytesToString(buffer, 0), "");
  EXPECT_EQ(BytesToString(ConstBytes(buffer).subspan(3), 3), "");
  EXPECT_EQ(BytesToString(ConstBytes(buffer).subspan(4), 100), "cd");
  EXPECT_EQ(BytesToString({}, 4), "");
}

}  // namespace
}  // namespace pelvaro
