#include "phonebook/entry_properties.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/fake/fake_dial_service.h"

namespace pelvaro {
namespace {

using fake::Lines;
using namespace std::string_literals;
using namespace Module1;
using Buffer = std::vector<std::uint8_t>;

// A buffer laid by hand at literal places; what does not fit is left out byte by byte.
struct Laid {
  Buffer bytes;

  explicit Laid(std::size_t size) : bytes(size) {}
  Laid& text(std::size_t offset, const std::string& value) {
    for (const char c : value) {
      if (offset < bytes.size()) bytes[offset] = static_cast<std::uint8_t>(c);
      ++offset;
    }
    return *this;
  }
  Laid& fill(std::size_t offset, std::size_t count, char c) { return text(offset, std::string(count, c)); }
};

// Every field of the record, distinct, texts shorter than their fields.
RasEntryRecord shortRecord() {
  RasEntryRecord r;
  r.Size = 0xDEADBEEF;
  r.Options = 0x04030201;
  r.CountryID = 0x14131211;
  r.CountryCode = 0x24232221;
  r.AreaCode = "area";
  r.LocalPhoneNumber = "*99#";
  r.IpAddress = {1, 2, 3, 4};
  r.DnsAddress = {5, 6, 7, 8};
  r.DnsAltAddress = {9, 10, 11, 12};
  r.WinsAddress = {13, 14, 15, 16};
  r.WinsAltAddress = {17, 18, 19, 20};
  r.FrameSize = 0x34333231;
  r.NetProtocols = 0x44434241;
  r.FramingProtocol = 0x54535251;
  r.Script = "script";
  r.AutodialDll = "dll";
  r.AutodialFunc = "func";
  r.DeviceType = "modem";
  r.DeviceName = "device";
  r.X25PadType = "pad";
  r.X25Address = "address";
  r.X25Facilities = "facilities";
  r.X25UserData = "user data";
  r.Channels = 0x64636261;
  r.SubEntries = 0x74737271;
  r.DialMode = 0x84838281;
  r.DialExtraPercent = 0x94939291;
  r.DialExtraSampleSeconds = 0xA4A3A2A1;
  r.HangUpExtraPercent = 0xB4B3B2B1;
  r.HangUpExtraSampleSeconds = 0xC4C3C2C1;
  r.IdleDisconnectSeconds = 0xD4D3D2D1;
  r.Type = 0xE4E3E2E1;
  r.EncryptionType = 0xF4F3F2F1;
  r.CustomAuthKey = 0x05162738;
  r.Guid = {0x30, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39, 0x3A, 0x3B, 0x3C, 0x3D, 0x3E, 0x3F};
  r.CustomDialDll = "custom";
  r.VpnStrategy = 0x495A6B7C;
  r.Options2 = 0x8D9EAFB0;
  r.Options3 = 0xC1D2E3F4;
  r.DnsSuffix = "internet";
  return r;
}

// The same with every text longer than any field.
RasEntryRecord longRecord() {
  RasEntryRecord r = shortRecord();
  r.AreaCode = std::string(400, 'a');
  r.LocalPhoneNumber = std::string(400, 'b');
  r.Script = std::string(400, 'c');
  r.AutodialDll = std::string(400, 'd');
  r.AutodialFunc = std::string(400, 'e');
  r.DeviceType = std::string(400, 'f');
  r.DeviceName = std::string(400, 'g');
  r.X25PadType = std::string(400, 'h');
  r.X25Address = std::string(400, 'i');
  r.X25Facilities = std::string(400, 'j');
  r.X25UserData = std::string(400, 'k');
  r.CustomDialDll = std::string(400, 'l');
  r.DnsSuffix = std::string(400, 'm');
  return r;
}

// What every layout has up to the device name.
Laid shortHead(std::size_t size, const char* dwSize) {
  return Laid(size)
      .text(0, std::string(dwSize, 2))
      .text(4, "\x01\x02\x03\x04")
      .text(8, "\x11\x12\x13\x14")
      .text(12, "\x21\x22\x23\x24")
      .text(16, "area")
      .text(27, "*99#")
      .text(160, "\x01\x02\x03\x04")
      .text(164, "\x05\x06\x07\x08")
      .text(168, "\x09\x0A\x0B\x0C")
      .text(172, "\x0D\x0E\x0F\x10")
      .text(176, "\x11\x12\x13\x14")
      .text(180, "\x31\x32\x33\x34")
      .text(184, "\x41\x42\x43\x44")
      .text(188, "\x51\x52\x53\x54")
      .text(192, "script")
      .text(452, "dll")
      .text(712, "func")
      .text(972, "modem")
      .text(989, "device");
}
Laid longHead(std::size_t size, const char* dwSize) {
  Laid laid = shortHead(size, dwSize);
  return laid.fill(16, 11, 'a')
      .fill(27, 129, 'b')
      .fill(192, 260, 'c')
      .fill(452, 260, 'd')
      .fill(712, 260, 'e')
      .fill(972, 17, 'f');
}

// What follows a device name of 129 bytes.
Laid& shortBody(Laid& laid) {
  return laid.text(1118, "pad")
      .text(1151, "address")
      .text(1352, "facilities")
      .text(1553, "user data")
      .text(1756, "\x61\x62\x63\x64");
}
Laid& longBody(Laid& laid) {
  return laid.fill(989, 129, 'g')
      .fill(1118, 33, 'h')
      .fill(1151, 201, 'i')
      .fill(1352, 201, 'j')
      .fill(1553, 201, 'k')
      .text(1756, "\x61\x62\x63\x64");
}

Laid& dialExtensions(Laid& laid) {
  return laid.text(1768, "\x71\x72\x73\x74")
      .text(1772, "\x81\x82\x83\x84")
      .text(1776, "\x91\x92\x93\x94")
      .text(1780, "\xA1\xA2\xA3\xA4")
      .text(1784, "\xB1\xB2\xB3\xB4")
      .text(1788, "\xC1\xC2\xC3\xC4")
      .text(1792, "\xD1\xD2\xD3\xD4");
}

Laid& typeAndGuid(Laid& laid) {
  return laid.text(1796, "\xE1\xE2\xE3\xE4")
      .text(1800, "\xF1\xF2\xF3\xF4")
      .text(1804, "\x38\x27\x16\x05")
      .text(1808, "0123456789:;<=>?")
      .text(2084, "\x7C\x6B\x5A\x49");
}

Laid& secondOptions(Laid& laid) { return laid.text(2088, "\xB0\xAF\x9E\x8D").text(2092, "\xF4\xE3\xD2\xC1"); }

void expectSame(const Buffer& actual, const Buffer& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    ASSERT_EQ(static_cast<int>(actual[i]), static_cast<int>(expected[i])) << "at byte " << i;
  }
}

// One layout, packed from short and from overlong texts.
void expectLayout(std::uint32_t size, const Laid& shortLaid, const Laid& longLaid) {
  expectSame(packEntry(shortRecord(), size), shortLaid.bytes);
  expectSame(packEntry(longRecord(), size), longLaid.bytes);
}

// ---- packing ----

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

// ---- unpacking ----

// The short record as it is read from a layout: the size is the buffer's own.
RasEntryRecord readRecord(std::uint32_t size) {
  RasEntryRecord record = shortRecord();
  record.Size = size;
  return record;
}

// A record in which every field has a value that no test lays.
RasEntryRecord oldRecord() {
  RasEntryRecord record;
  record.Size = 99;
  record.AreaCode = record.LocalPhoneNumber = record.AlternateNumbers = record.Script = record.DnsSuffix = "old";
  record.X25PadType = record.X25UserData = record.CustomDialDll = record.DeviceName = "old";
  record.Channels = record.SubEntries = record.IdleDisconnectSeconds = record.Type = record.VpnStrategy = 99;
  record.Options2 = record.Options3 = 99;
  record.Guid.fill(99);
  return record;
}

TEST(UnpackEntry, SizeOf2884GivesEveryField) {
  Laid laid = shortHead(2884, "\x44\x0B");
  secondOptions(typeAndGuid(dialExtensions(shortBody(laid)))).text(1824, "custom").text(2096, "internet");
  RasEntryRecord record = oldRecord();
  unpackEntry(laid.bytes, 2884, record);
  RasEntryRecord expected = readRecord(2884);
  expected.AlternateNumbers = "old";
  EXPECT_EQ(record, expected);
}

TEST(UnpackEntry, SizeOf1672ReadsA33ByteDeviceNameAndTheShiftedFields) {
  Laid laid = shortHead(1672, "\x88\x06").fill(989, 33, 'g');
  laid.text(1022, "pad")
      .text(1055, "address")
      .text(1256, "facilities")
      .text(1457, "user data")
      .text(1660, "\x61\x62\x63\x64");
  RasEntryRecord record;
  unpackEntry(laid.bytes, 1672, record);
  EXPECT_EQ(record.DeviceName, std::string(33, 'g'));
  EXPECT_EQ(record.X25PadType, "pad");
  EXPECT_EQ(record.X25Address, "address");
  EXPECT_EQ(record.X25Facilities, "facilities");
  EXPECT_EQ(record.X25UserData, "user data");
  EXPECT_EQ(record.Channels, 0x64636261u);
  EXPECT_EQ(record.SubEntries, 0u);
}

TEST(UnpackEntry, FieldsBehindAThresholdAreReadOnlyFromItOn) {
  // All sizes are read from the same bytes, so only the thresholds tell.
  Laid laid = shortHead(2884, "\x44\x0B");
  secondOptions(typeAndGuid(dialExtensions(shortBody(laid)))).text(1824, "custom").text(2096, "internet");
  const struct {
    std::uint32_t size;
    bool extensions, type, options2;
  } table[] = {
      {1671, false, false, false}, {1768, false, false, false}, {1769, true, false, false}, {1796, true, false, false},
      {1797, true, true, false},   {2088, true, true, false},   {2089, true, true, true},   {2884, true, true, true},
  };
  for (const auto& row : table) {
    const RasEntryRecord old = oldRecord();
    RasEntryRecord record = old;
    unpackEntry(laid.bytes, row.size, record);
    EXPECT_EQ(record.SubEntries, row.extensions ? 0x74737271 : 99) << row.size;
    EXPECT_EQ(record.IdleDisconnectSeconds, row.extensions ? 0xD4D3D2D1 : 99) << row.size;
    EXPECT_EQ(record.Type, row.type ? 0xE4E3E2E1 : 99) << row.size;
    EXPECT_EQ(record.Guid, row.type ? shortRecord().Guid : old.Guid) << row.size;
    EXPECT_EQ(record.CustomDialDll, row.type ? "custom" : "old") << row.size;
    EXPECT_EQ(record.VpnStrategy, row.type ? 0x495A6B7C : 99) << row.size;
    EXPECT_EQ(record.Options2, row.options2 ? 0x8D9EAFB0 : 99) << row.size;
    EXPECT_EQ(record.Options3, row.options2 ? 0xC1D2E3F4 : 99) << row.size;
    EXPECT_EQ(record.DnsSuffix, row.options2 ? "internet" : "old") << row.size;
  }
}

TEST(UnpackEntry, TextsAreReadToTheFullWidthOfTheirFieldsAndNoFurther) {
  Laid laid = longHead(2884, "\x44\x0B");
  secondOptions(typeAndGuid(dialExtensions(longBody(laid)))).fill(1824, 260, 'l').fill(2096, 300, 'm');
  RasEntryRecord record;
  unpackEntry(laid.fill(156, 4, '\0').bytes, 2884, record);
  EXPECT_EQ(record.AreaCode, std::string(11, 'a'));
  EXPECT_EQ(record.LocalPhoneNumber, std::string(129, 'b'));
  EXPECT_EQ(record.Script, std::string(260, 'c'));
  EXPECT_EQ(record.AutodialDll, std::string(260, 'd'));
  EXPECT_EQ(record.AutodialFunc, std::string(260, 'e'));
  EXPECT_EQ(record.DeviceType, std::string(17, 'f'));
  EXPECT_EQ(record.DeviceName, std::string(129, 'g'));
  EXPECT_EQ(record.X25PadType, std::string(33, 'h'));
  EXPECT_EQ(record.X25Address, std::string(201, 'i'));
  EXPECT_EQ(record.X25Facilities, std::string(201, 'j'));
  EXPECT_EQ(record.X25UserData, std::string(201, 'k'));
  EXPECT_EQ(record.CustomDialDll, std::string(260, 'l'));
  EXPECT_EQ(record.DnsSuffix, std::string(260, 'm'));
}

TEST(UnpackEntry, BytesThatAreNotThereReadAsZero) {
  Laid laid = shortHead(1797, "\x05\x07");
  dialExtensions(shortBody(laid)).text(1796, "\xE1");
  RasEntryRecord record = oldRecord();
  unpackEntry(laid.bytes, 1797, record);
  EXPECT_EQ(record.Type, 0x000000E1u);
  EXPECT_EQ(record.EncryptionType, 0u);
  EXPECT_EQ(record.Guid, (std::array<std::uint8_t, 16>{}));
  EXPECT_EQ(record.CustomDialDll, "");
  EXPECT_EQ(record.VpnStrategy, 0u);
  EXPECT_EQ(record.Options2, 99u);

  unpackEntry(Laid(2089).text(2088, "\xB0").bytes, 2089, record);
  EXPECT_EQ(record.Options2, 0xB0u);
  EXPECT_EQ(record.Options3, 0u);
  EXPECT_EQ(record.DnsSuffix, "");

  unpackEntry(Laid(2096 + 257).fill(2096, 257, 'm').bytes, 2352, record);
  EXPECT_EQ(record.DnsSuffix, std::string(257, 'm'));
}

TEST(UnpackEntry, GuidCutInTheMiddleReadsZerosBehind) {
  RasEntryRecord record = oldRecord();
  unpackEntry(Laid(1811).text(1808, "012").bytes, 1811, record);
  EXPECT_EQ(record.Guid, (std::array<std::uint8_t, 16>{'0', '1', '2'}));
}

TEST(UnpackEntry, AlternateNumbersRunToTheEndWithTheirTrailingNuls) {
  const Laid laid = Laid(1768 + 12)
                        .text(156, "\xE8\x06")
                        .text(1768,
                              "555\0"
                              "666\0"s);
  RasEntryRecord record = oldRecord();
  unpackEntry(laid.bytes, 1768, record);
  EXPECT_EQ(record.AlternateNumbers,
            "555\0"
            "666\0\0\0\0\0"s);
}

TEST(UnpackEntry, AlternateNumbersAtTheLastByteAreOneNul) {
  RasEntryRecord record = oldRecord();
  unpackEntry(Laid(1769).text(156, "\xE8\x06").bytes, 1768, record);
  EXPECT_EQ(record.AlternateNumbers, "\0"s);
}

TEST(UnpackEntry, AlternateNumbersStayAtOffsetZeroAndBehindTheBuffer) {
  for (const std::string& offset :
       {"\0\0\0\0"s, "\xE9\x06\0\0"s, "\xEA\x06\0\0"s, "\xFF\xFF\xFF\x7F"s, "\xFF\xFF\xFF\xFF"s}) {
    RasEntryRecord record = oldRecord();
    unpackEntry(Laid(1769).text(156, offset).bytes, 1768, record);
    EXPECT_EQ(record.AlternateNumbers, "old");
  }
}

TEST(UnpackEntry, AlternateNumbersMayLieAnywhere) {
  RasEntryRecord record;
  unpackEntry(Laid(200).text(156, "\xC4").text(196, "abcd").bytes, 1768, record);
  EXPECT_EQ(record.AlternateNumbers, "abcd");
}

TEST(UnpackEntry, AddressesKeepTheirOrderOfBytes) {
  RasEntryRecord record;
  unpackEntry(Laid(1768).text(164, "\xC0\xA8\x01\xFE").bytes, 1768, record);
  EXPECT_EQ(record.DnsAddress, (Ip4{192, 168, 1, 254}));
}

// ---- both directions ----

struct RandomRecords {
  std::mt19937 random{20240229};

  std::uint32_t number() { return static_cast<std::uint32_t>(random()); }
  // Up to `width` bytes without a NUL; every third text fills its field.
  std::string text(std::size_t width) {
    std::string value(random() % 3 == 0 ? width : random() % (width + 1), ' ');
    for (char& c : value) c = static_cast<char>(1 + random() % 255);
    return value;
  }
  template <std::size_t N>
  void bytes(std::array<std::uint8_t, N>& value) {
    for (auto& byte : value) byte = static_cast<std::uint8_t>(random());
  }

  RasEntryRecord record(std::uint32_t size) {
    RasEntryRecord r;
    r.Size = size;
    for (std::uint32_t* n :
         {&r.Options, &r.CountryID, &r.CountryCode, &r.FrameSize, &r.NetProtocols, &r.FramingProtocol, &r.Channels}) {
      *n = number();
    }
    for (Ip4* address : {&r.IpAddress, &r.DnsAddress, &r.DnsAltAddress, &r.WinsAddress, &r.WinsAltAddress})
      bytes(*address);
    r.AreaCode = text(11);
    r.LocalPhoneNumber = text(129);
    r.Script = text(260);
    r.AutodialDll = text(260);
    r.AutodialFunc = text(260);
    r.DeviceType = text(17);
    r.DeviceName = text(size == 1672 ? 33 : 129);
    r.X25PadType = text(33);
    r.X25Address = text(201);
    r.X25Facilities = text(201);
    r.X25UserData = text(201);
    if (size > 1768) {
      for (std::uint32_t* n : {&r.SubEntries, &r.DialMode, &r.DialExtraPercent, &r.DialExtraSampleSeconds,
                               &r.HangUpExtraPercent, &r.HangUpExtraSampleSeconds, &r.IdleDisconnectSeconds}) {
        *n = number();
      }
    }
    if (size >= 1797) {
      for (std::uint32_t* n : {&r.Type, &r.EncryptionType, &r.CustomAuthKey, &r.VpnStrategy}) *n = number();
      bytes(r.Guid);
      r.CustomDialDll = text(260);
    }
    if (size >= 2089) {
      r.Options2 = number();
      r.Options3 = number();
      r.DnsSuffix = text(260);
    }
    return r;
  }
};

TEST(EntryRoundTrip, SizesWithWholeFieldsGiveTheRecordBack) {
  RandomRecords records;
  for (const std::uint32_t size : {1672u, 1768u, 1796u, 2088u, 2884u}) {
    for (int i = 0; i < 200; ++i) {
      const RasEntryRecord record = records.record(size);
      RasEntryRecord read;
      unpackEntry(packEntry(record, size), size, read);
      ASSERT_EQ(read, record) << size;
    }
  }
}

TEST(EntryRoundTrip, AlternateNumbersComeBackWithTheNulBehindThem) {
  RandomRecords records;
  for (const std::uint32_t size : {1672u, 1768u, 1796u, 2088u, 2884u}) {
    RasEntryRecord record = records.record(size);
    record.AlternateNumbers =
        "0800 1\0"
        "0800 2"s;
    RasEntryRecord read;
    unpackEntry(packEntry(record, size), size, read);
    record.AlternateNumbers += '\0';
    EXPECT_EQ(read, record) << size;
  }
}

TEST(EntryRoundTrip, SizesThatCutAFieldGiveTheSameBytesAgain) {
  RandomRecords records;
  for (const std::uint32_t size : {1769u, 1797u, 1900u, 2089u, 2096u, 2352u}) {
    for (int i = 0; i < 100; ++i) {
      const Buffer buffer = packEntry(records.record(size), size);
      RasEntryRecord read;
      unpackEntry(buffer, size, read);
      ASSERT_EQ(packEntry(read, size), buffer) << size;
    }
  }
}

TEST(EntryRoundTrip, AnyBytesOfAnyLengthCanBeRead) {
  std::mt19937 random(7);
  for (std::size_t size = 0; size < 3000; size += 13) {
    Buffer buffer(size);
    for (auto& byte : buffer) byte = static_cast<std::uint8_t>(random());
    for (const std::uint32_t structureSize : {0u, 1672u, 1768u, 1797u, 2089u, 2884u, 0xFFFFFFFFu}) {
      RasEntryRecord record;
      unpackEntry(buffer, structureSize, record);
      EXPECT_LE(record.LocalPhoneNumber.size(), 129u);
    }
  }
}

// ---- text fields ----

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

// ---- the service ----

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
