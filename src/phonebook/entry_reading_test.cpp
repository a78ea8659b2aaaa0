// Entries read from buffers, laid by hand or packed before.
#include <gtest/gtest.h>

#include <random>

#include "phonebook/fake_entry_buffers.h"

namespace pelvaro {
namespace {

using namespace std::string_literals;
using namespace Module1;

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

}  // namespace
}  // namespace pelvaro
