#include "phonebook/ras_entry_record.h"

#include <gtest/gtest.h>

namespace pelvaro {
namespace {

EntryChoices typedChoices() {
  EntryChoices choices;
  choices.automaticAddress = false;
  choices.number = "*99***1#";
  choices.device = "Cable Modem";
  choices.accessPoint = "internet";
  choices.dns = {10, 20, 30, 40};
  choices.dnsAlt = {50, 60, 70, 80};
  return choices;
}

TEST(EditorRecord, EveryFieldWithTypedAddresses) {
  const RasEntryRecord record = editorRecord(typedChoices());
  EXPECT_EQ(record.Size, 0u);
  EXPECT_EQ(record.Options, 0x3D2D011Eu);
  EXPECT_EQ(record.CountryID, 852u);
  EXPECT_EQ(record.CountryCode, 852u);
  EXPECT_EQ(record.AreaCode, "");
  EXPECT_EQ(record.LocalPhoneNumber, "*99***1#");
  EXPECT_EQ(record.AlternateNumbers, "");
  EXPECT_EQ(record.IpAddress, (Ip4{0, 0, 0, 0}));
  EXPECT_EQ(record.DnsAddress, (Ip4{10, 20, 30, 40}));
  EXPECT_EQ(record.DnsAltAddress, (Ip4{50, 60, 70, 80}));
  EXPECT_EQ(record.WinsAddress, (Ip4{0, 0, 0, 0}));
  EXPECT_EQ(record.WinsAltAddress, (Ip4{0, 0, 0, 0}));
  EXPECT_EQ(record.FrameSize, 0u);
  EXPECT_EQ(record.NetProtocols, 4u);
  EXPECT_EQ(record.FramingProtocol, 1u);
  EXPECT_EQ(record.Script, "");
  EXPECT_EQ(record.AutodialDll, "");
  EXPECT_EQ(record.AutodialFunc, "0");
  EXPECT_EQ(record.DeviceType, "modem");
  EXPECT_EQ(record.DeviceName, "Cable Modem");
  EXPECT_EQ(record.X25PadType, "");
  EXPECT_EQ(record.X25Address, "");
  EXPECT_EQ(record.X25Facilities, "");
  EXPECT_EQ(record.X25UserData, "");
  EXPECT_EQ(record.Channels, 0u);
  EXPECT_EQ(record.SubEntries, 0u);
  EXPECT_EQ(record.DialMode, 0u);
  EXPECT_EQ(record.DialExtraPercent, 0u);
  EXPECT_EQ(record.DialExtraSampleSeconds, 0u);
  EXPECT_EQ(record.HangUpExtraPercent, 0u);
  EXPECT_EQ(record.HangUpExtraSampleSeconds, 0u);
  EXPECT_EQ(record.IdleDisconnectSeconds, 0u);
  EXPECT_EQ(record.Type, 1u);
  EXPECT_EQ(record.EncryptionType, 3u);
  EXPECT_EQ(record.CustomAuthKey, 0u);
  EXPECT_EQ(record.Guid, (std::array<std::uint8_t, 16>{}));
  EXPECT_EQ(record.CustomDialDll, "");
  EXPECT_EQ(record.VpnStrategy, 0u);
  EXPECT_EQ(record.Options2, 0u);
  EXPECT_EQ(record.Options3, 0u);
  EXPECT_EQ(record.DnsSuffix, "internet");
}

TEST(EditorRecord, AutomaticAddressChangesOneOptionBitAndLeavesTheAddressesOut) {
  EntryChoices choices = typedChoices();
  choices.automaticAddress = true;
  RasEntryRecord expected = editorRecord(typedChoices());
  expected.Options = 0x3D2D011C;
  expected.DnsAddress = {0, 0, 0, 0};
  expected.DnsAltAddress = {0, 0, 0, 0};
  EXPECT_EQ(editorRecord(choices), expected);
}

// The published flags (RASEO_ of the service's header), one by one.
TEST(EditorRecord, OptionWordsAreThesePublishedFlags) {
  const std::uint32_t flags[] = {
      0x00000004,  // SpecificNameServers
      0x00000008,  // IpHeaderCompression
      0x00000010,  // RemoteDefaultGateway
      0x00000100,  // ModemLights
      0x00010000,  // SecureLocalFiles
      0x00040000,  // RequirePAP
      0x00080000,  // RequireSPAP
      0x00200000,  // PreviewPhoneNumber
      0x01000000,  // PreviewUserPw
      0x04000000,  // ShowDialingProgress
      0x08000000,  // RequireCHAP
      0x10000000,  // RequireMsCHAP
      0x20000000,  // RequireMsCHAP2
  };
  std::uint32_t word = 0;
  for (const std::uint32_t flag : flags) word |= flag;
  EntryChoices choices;
  EXPECT_EQ(editorRecord(choices).Options, word);
  choices.automaticAddress = false;
  EXPECT_EQ(editorRecord(choices).Options, word | 0x00000002);  // SpecificIpAddr
}

TEST(EditorRecord, AccessPointIsTrimmedOfBlanksOnly) {
  EntryChoices choices;
  choices.accessPoint = "  web apn\t ";
  EXPECT_EQ(editorRecord(choices).DnsSuffix, "web apn\t");
  choices.accessPoint = "   ";
  EXPECT_EQ(editorRecord(choices).DnsSuffix, "");
}

TEST(EditorRecord, NumberAndDeviceAreTakenAsTheyAre) {
  EntryChoices choices;
  choices.number = " 1 ";
  choices.device = " device ";
  EXPECT_EQ(editorRecord(choices).LocalPhoneNumber, " 1 ");
  EXPECT_EQ(editorRecord(choices).DeviceName, " device ");
}

}  // namespace
}  // namespace pelvaro
