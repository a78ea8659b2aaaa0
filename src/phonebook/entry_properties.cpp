#include "phonebook/entry_properties.h"

#include <algorithm>

#include "base/text.h"
#include "platform/ras_layout.h"

namespace pelvaro::Module1 {

namespace {

namespace lay = ras::entry;

// The fields in the order in which they are laid, as one walk for both directions: F has number, text, block and
// alternateNumbers; the first three take the place of the field in the buffer and the record's member.
template <typename Record, typename F>
void walkFields(Record& r, std::uint32_t structureSize, F& f) {
  f.number(lay::kOptions, r.Options);
  f.number(lay::kCountryId, r.CountryID);
  f.number(lay::kCountryCode, r.CountryCode);
  f.text(lay::kAreaCode, r.AreaCode);
  f.text(lay::kLocalPhoneNumber, r.LocalPhoneNumber);
  f.alternateNumbers(r.AlternateNumbers);
  f.block(lay::kIpAddress, r.IpAddress);
  f.block(lay::kDnsAddress, r.DnsAddress);
  f.block(lay::kDnsAltAddress, r.DnsAltAddress);
  f.block(lay::kWinsAddress, r.WinsAddress);
  f.block(lay::kWinsAltAddress, r.WinsAltAddress);
  f.number(lay::kFrameSize, r.FrameSize);
  f.number(lay::kNetProtocols, r.NetProtocols);
  f.number(lay::kFramingProtocol, r.FramingProtocol);
  f.text(lay::kScript, r.Script);
  f.text(lay::kAutodialDll, r.AutodialDll);
  f.text(lay::kAutodialFunc, r.AutodialFunc);
  f.text(lay::kDeviceType, r.DeviceType);

  const std::size_t nameWidth = structureSize == lay::kOldestSize ? lay::kOldestDeviceName : lay::kDeviceName.width;
  f.text({lay::kDeviceName.offset, nameWidth}, r.DeviceName);
  const std::size_t padType = lay::kDeviceName.offset + nameWidth;
  const std::size_t address = padType + lay::kPadType;
  const std::size_t facilities = address + lay::kAddress;
  const std::size_t userData = facilities + lay::kFacilities;
  f.text({padType, lay::kPadType}, r.X25PadType);
  f.text({address, lay::kAddress}, r.X25Address);
  f.text({facilities, lay::kFacilities}, r.X25Facilities);
  f.text({userData, lay::kUserData}, r.X25UserData);
  f.number({userData + lay::kChannelsAfterUserData, 4}, r.Channels);

  if (structureSize > lay::kNoDialExtensions) {
    f.number(lay::kSubEntries, r.SubEntries);
    f.number(lay::kDialMode, r.DialMode);
    f.number(lay::kDialExtraPercent, r.DialExtraPercent);
    f.number(lay::kDialExtraSampleSeconds, r.DialExtraSampleSeconds);
    f.number(lay::kHangUpExtraPercent, r.HangUpExtraPercent);
    f.number(lay::kHangUpExtraSampleSeconds, r.HangUpExtraSampleSeconds);
    f.number(lay::kIdleDisconnectSeconds, r.IdleDisconnectSeconds);
  }
  if (structureSize >= lay::kWithType) {
    f.number(lay::kType, r.Type);
    f.number(lay::kEncryptionType, r.EncryptionType);
    f.number(lay::kCustomAuthKey, r.CustomAuthKey);
    f.block(lay::kGuid, r.Guid);
    f.text(lay::kCustomDialDll, r.CustomDialDll);
    f.number(lay::kVpnStrategy, r.VpnStrategy);
  }
  if (structureSize >= lay::kWithOptions2) {
    f.number(lay::kOptions2, r.Options2);
    f.number(lay::kOptions3, r.Options3);
    // Kept on purpose: 260 bytes, last of all, so that a longer suffix runs into the field behind it.
    f.text({lay::kDnsSuffix.offset, lay::kDnsSuffixCopied}, r.DnsSuffix);
  }
}

// Lays the fields into a zero-filled buffer.
struct Packer {
  Bytes buffer;
  std::uint32_t structureSize;

  void number(ras::Field field, std::uint32_t value) { put32(buffer, field.offset, value); }
  void text(ras::Field field, const std::string& value) {
    CopyStringToBytes(from(buffer, field.offset), value, field.width);
  }
  template <std::size_t N>
  void block(ras::Field field, const std::array<std::uint8_t, N>& value) {
    const Bytes place = from(buffer, field.offset);
    std::copy_n(value.begin(), std::min(N, place.size()), place.begin());
  }
  // Kept on purpose: one text and its NUL, not the list with two NULs that the service documents.
  void alternateNumbers(const std::string& value) {
    if (value.empty()) return;
    CopyStringToBytes(from(buffer, structureSize), value, value.size());
    put32(buffer, lay::kAlternateOffset.offset, structureSize);
  }
};

// Takes the fields out of a buffer.
struct Unpacker {
  ConstBytes buffer;

  void number(ras::Field field, std::uint32_t& value) { value = get32(buffer, field.offset); }
  void text(ras::Field field, std::string& value) { value = BytesToString(from(buffer, field.offset), field.width); }
  template <std::size_t N>
  void block(ras::Field field, std::array<std::uint8_t, N>& value) {
    const ConstBytes place = from(buffer, field.offset);
    value.fill(0);
    std::copy_n(place.begin(), std::min(N, place.size()), value.begin());
  }
  // All bytes to the end of the buffer, NULs included.
  void alternateNumbers(std::string& value) {
    const std::uint32_t offset = get32(buffer, lay::kAlternateOffset.offset);
    if (offset != 0 && offset < buffer.size()) value = asText(from(buffer, offset));
  }
};

// No entry is larger: a service that names more is broken, and its size is refused instead of allocated.
constexpr std::uint32_t kLargestEntry = 1 << 20;

// Asks for the size of an entry, or of the bare RASENTRY when `entryName` is null. Anything but 603 is the caller's
// result.
std::uint32_t askSize(DialService& ras, const char* phonebook, const char* entryName, std::uint32_t& size) {
  size = 0;
  const std::uint32_t result = ras.getEntryProperties(phonebook, entryName, nullptr, &size);
  if (result == ras::kErrorBufferTooSmall && size > kLargestEntry) return ras::kErrorInvalidSize;
  return result;
}

}  // namespace

void CopyStringToBytes(Bytes destination, std::string_view text, std::size_t maximum) {
  std::copy_n(text.begin(), std::min({text.size(), maximum, destination.size()}), destination.begin());
}

std::string BytesToString(ConstBytes source, std::size_t width) {
  return std::string(upToNul(asText(source.first(std::min(width, source.size())))));
}

std::vector<std::uint8_t> packEntry(const RasEntryRecord& record, std::uint32_t structureSize) {
  std::vector<std::uint8_t> buffer(structureSize + record.AlternateNumbers.size() + 1);
  put32(buffer, lay::kSize.offset, structureSize);
  Packer packer{buffer, structureSize};
  walkFields(record, structureSize, packer);
  return buffer;
}

void unpackEntry(ConstBytes buffer, std::uint32_t structureSize, RasEntryRecord& record) {
  record.Size = get32(buffer, lay::kSize.offset);
  Unpacker unpacker{buffer};
  walkFields(record, structureSize, unpacker);
}

std::uint32_t SetEntryProperties(DialService& ras, const std::string& entryName, const RasEntryRecord& record,
                                 const char* phonebook) {
  std::uint32_t size = 0;
  const std::uint32_t asked = askSize(ras, nullptr, nullptr, size);
  if (asked != ras::kErrorBufferTooSmall) return asked;
  std::vector<std::uint8_t> buffer = packEntry(record, size);
  // Kept on purpose: the size passed leaves out the alternate numbers.
  return ras.setEntryProperties(phonebook, entryName.c_str(), buffer.data(), size);
}

std::uint32_t GetEntryProperties(DialService& ras, const std::string& entryName, RasEntryRecord& record,
                                 const char* phonebook) {
  std::uint32_t structureSize = 0;
  const std::uint32_t asked = askSize(ras, nullptr, nullptr, structureSize);
  if (asked != ras::kErrorBufferTooSmall) return asked;

  std::uint32_t size = 0;
  const std::uint32_t found = askSize(ras, phonebook, entryName.c_str(), size);
  if (found != ras::kErrorBufferTooSmall) return found;

  std::vector<std::uint8_t> buffer(std::max<std::size_t>(size, 4));
  put32(buffer, lay::kSize.offset, structureSize);
  std::uint32_t given = size;
  const std::uint32_t result = ras.getEntryProperties(phonebook, entryName.c_str(), buffer.data(), &given);
  if (result == 0) unpackEntry(ConstBytes(buffer).first(size), structureSize, record);
  return result;
}

}  // namespace pelvaro::Module1
