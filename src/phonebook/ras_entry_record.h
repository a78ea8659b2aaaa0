// RasEntryRecord: the program's own record of one phonebook entry, and the one that the connection editor saves.
// Packed into and unpacked from the service's buffer by entry_properties.h.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace pelvaro {

using Ip4 = std::array<std::uint8_t, 4>;  // a.b.c.d in this order

// Numbers are 32-bit as in RASENTRY; texts may have any length and are cut to the field's width when packed.
struct RasEntryRecord {
  std::uint32_t Size = 0;  // not used: dwSize is always the service's own
  std::uint32_t Options = 0;
  std::uint32_t CountryID = 0;
  std::uint32_t CountryCode = 0;
  std::string AreaCode;
  std::string LocalPhoneNumber;
  std::string AlternateNumbers;
  Ip4 IpAddress{};
  Ip4 DnsAddress{};
  Ip4 DnsAltAddress{};
  Ip4 WinsAddress{};
  Ip4 WinsAltAddress{};
  std::uint32_t FrameSize = 0;
  std::uint32_t NetProtocols = 0;
  std::uint32_t FramingProtocol = 0;
  std::string Script;
  std::string AutodialDll;
  std::string AutodialFunc;
  std::string DeviceType;
  std::string DeviceName;
  std::string X25PadType;
  std::string X25Address;
  std::string X25Facilities;
  std::string X25UserData;
  std::uint32_t Channels = 0;
  std::uint32_t SubEntries = 0;
  std::uint32_t DialMode = 0;
  std::uint32_t DialExtraPercent = 0;
  std::uint32_t DialExtraSampleSeconds = 0;
  std::uint32_t HangUpExtraPercent = 0;
  std::uint32_t HangUpExtraSampleSeconds = 0;
  std::uint32_t IdleDisconnectSeconds = 0;
  std::uint32_t Type = 0;
  std::uint32_t EncryptionType = 0;
  std::uint32_t CustomAuthKey = 0;
  std::array<std::uint8_t, 16> Guid{};
  std::string CustomDialDll;
  std::uint32_t VpnStrategy = 0;
  std::uint32_t Options2 = 0;
  std::uint32_t Options3 = 0;
  std::string DnsSuffix;

  bool operator==(const RasEntryRecord&) const = default;
};

// What the user chooses of an entry; everything else is fixed.
struct EntryChoices {
  bool automaticAddress = true;  // the editor's "Auto Detect"
  std::string number;
  std::string device;
  std::string accessPoint;  // kept in the DNS suffix of the entry
  Ip4 dns{};                // used only without "Auto Detect"
  Ip4 dnsAlt{};
};

// The record that the connection editor saves for these choices.
RasEntryRecord editorRecord(const EntryChoices& choices);

}  // namespace pelvaro
