// For the tests of phonebook entries: records with every field set, and buffers laid by hand at literal places.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "phonebook/entry_properties.h"

namespace pelvaro {

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
inline RasEntryRecord shortRecord() {
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
inline RasEntryRecord longRecord() {
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
inline Laid shortHead(std::size_t size, const char* dwSize) {
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
inline Laid longHead(std::size_t size, const char* dwSize) {
  Laid laid = shortHead(size, dwSize);
  return laid.fill(16, 11, 'a')
      .fill(27, 129, 'b')
      .fill(192, 260, 'c')
      .fill(452, 260, 'd')
      .fill(712, 260, 'e')
      .fill(972, 17, 'f');
}

// What follows a device name of 129 bytes.
inline Laid& shortBody(Laid& laid) {
  return laid.text(1118, "pad")
      .text(1151, "address")
      .text(1352, "facilities")
      .text(1553, "user data")
      .text(1756, "\x61\x62\x63\x64");
}
inline Laid& longBody(Laid& laid) {
  return laid.fill(989, 129, 'g')
      .fill(1118, 33, 'h')
      .fill(1151, 201, 'i')
      .fill(1352, 201, 'j')
      .fill(1553, 201, 'k')
      .text(1756, "\x61\x62\x63\x64");
}

inline Laid& dialExtensions(Laid& laid) {
  return laid.text(1768, "\x71\x72\x73\x74")
      .text(1772, "\x81\x82\x83\x84")
      .text(1776, "\x91\x92\x93\x94")
      .text(1780, "\xA1\xA2\xA3\xA4")
      .text(1784, "\xB1\xB2\xB3\xB4")
      .text(1788, "\xC1\xC2\xC3\xC4")
      .text(1792, "\xD1\xD2\xD3\xD4");
}

inline Laid& typeAndGuid(Laid& laid) {
  return laid.text(1796, "\xE1\xE2\xE3\xE4")
      .text(1800, "\xF1\xF2\xF3\xF4")
      .text(1804, "\x38\x27\x16\x05")
      .text(1808, "0123456789:;<=>?")
      .text(2084, "\x7C\x6B\x5A\x49");
}

inline Laid& secondOptions(Laid& laid) { return laid.text(2088, "\xB0\xAF\x9E\x8D").text(2092, "\xF4\xE3\xD2\xC1"); }

inline void expectSame(const Buffer& actual, const Buffer& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    ASSERT_EQ(static_cast<int>(actual[i]), static_cast<int>(expected[i])) << "at byte " << i;
  }
}

// One layout, packed from short and from overlong texts.
inline void expectLayout(std::uint32_t size, const Laid& shortLaid, const Laid& longLaid) {
  expectSame(Module1::packEntry(shortRecord(), size), shortLaid.bytes);
  expectSame(Module1::packEntry(longRecord(), size), longLaid.bytes);
}

// The short record as it is read from a layout: the size is the buffer's own.
inline RasEntryRecord readRecord(std::uint32_t size) {
  RasEntryRecord record = shortRecord();
  record.Size = size;
  return record;
}

// A record in which every field has a value that no test lays.
inline RasEntryRecord oldRecord() {
  RasEntryRecord record;
  record.Size = 99;
  record.AreaCode = record.LocalPhoneNumber = record.AlternateNumbers = record.Script = record.DnsSuffix = "old";
  record.X25PadType = record.X25UserData = record.CustomDialDll = record.DeviceName = "old";
  record.Channels = record.SubEntries = record.IdleDisconnectSeconds = record.Type = record.VpnStrategy = 99;
  record.Options2 = record.Options3 = 99;
  record.Guid.fill(99);
  return record;
}

}  // namespace pelvaro
