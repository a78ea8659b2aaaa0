#include "phonebook/ras_entry_record.h"

#include "base/text.h"

namespace pelvaro {

namespace {

// RASEO_ flags (ras.h): SpecificNameServers, IpHeaderCompression, RemoteDefaultGateway, ModemLights, SecureLocalFiles,
// RequirePAP, RequireSPAP, PreviewPhoneNumber, PreviewUserPw, ShowDialingProgress, RequireCHAP, RequireMsCHAP,
// RequireMsCHAP2.
constexpr std::uint32_t kOptionsAutomatic = 0x3D2D011C;
// Kept on purpose: what tells "Use address below" is RASEO_SpecificIpAddr, though the addresses are name servers'.
constexpr std::uint32_t kOptionsTyped = 0x3D2D011E;

constexpr std::uint32_t kCountry = 852;
constexpr std::uint32_t kRasnpIp = 4;
constexpr std::uint32_t kRasfpPpp = 1;
constexpr std::uint32_t kRasetPhone = 1;
constexpr std::uint32_t kEtOptional = 3;

}  // namespace

RasEntryRecord editorRecord(const EntryChoices& choices) {
  RasEntryRecord record;
  record.Options = choices.automaticAddress ? kOptionsAutomatic : kOptionsTyped;
  record.CountryID = kCountry;
  record.CountryCode = kCountry;
  record.LocalPhoneNumber = choices.number;
  if (!choices.automaticAddress) {
    record.DnsAddress = choices.dns;
    record.DnsAltAddress = choices.dnsAlt;
  }
  record.NetProtocols = kRasnpIp;
  record.FramingProtocol = kRasfpPpp;
  record.AutodialFunc = "0";  // kept on purpose: the text of the number zero
  record.DeviceType = "modem";
  record.DeviceName = choices.device;
  record.Type = kRasetPhone;
  record.EncryptionType = kEtOptional;
  record.DnsSuffix = trimmed(choices.accessPoint);
  return record;
}

}  // namespace pelvaro
