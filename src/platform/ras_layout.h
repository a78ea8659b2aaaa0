// Where the fields of the dial-up service's records lie: byte offsets and widths, written once for the packing code,
// the practice line and the tests. win32/ras_layout_check.cpp asserts them against <ras.h>.
#pragma once

#include <cstddef>
#include <cstdint>

namespace pelvaro::ras {

// Result codes that the program looks at (raserror.h, winerror.h).
constexpr std::uint32_t kErrorBufferTooSmall = 603;
constexpr std::uint32_t kErrorInvalidSize = 632;
constexpr std::uint32_t kErrorCannotFindPhonebookEntry = 623;

// RasDialA's notifier type for "post the dial event message to this window" (ras.h).
constexpr std::uint32_t kNotifierWindow = 0xFFFFFFFF;
// WM_RASDIALEVENT (ras.h), the message number when "RasDialEvent" cannot be registered.
constexpr std::uint32_t kDialEventFallback = 0xCCCD;

// One field of a record: where it begins and how many bytes it has.
struct Field {
  std::size_t offset;
  std::size_t width;
};

// RASENTRYA. The X.25 block follows the device name, which has 33 bytes in the oldest layout (1672 bytes).
namespace entry {
constexpr Field kSize{0, 4}, kOptions{4, 4}, kCountryId{8, 4}, kCountryCode{12, 4}, kAreaCode{16, 11},
    kLocalPhoneNumber{27, 129}, kAlternateOffset{156, 4}, kIpAddress{160, 4}, kDnsAddress{164, 4},
    kDnsAltAddress{168, 4}, kWinsAddress{172, 4}, kWinsAltAddress{176, 4}, kFrameSize{180, 4}, kNetProtocols{184, 4},
    kFramingProtocol{188, 4}, kScript{192, 260}, kAutodialDll{452, 260}, kAutodialFunc{712, 260}, kDeviceType{972, 17},
    kDeviceName{989, 129};
constexpr std::size_t kOldestSize = 1672;  // Windows 95 and NT 4: device names of 33 bytes
constexpr std::size_t kOldestDeviceName = 33;
constexpr std::size_t kNoDialExtensions = 1768;  // up to this size there are no sub-entry fields
constexpr std::size_t kWithType = 1797;          // from this size on dwType and what follows are there
constexpr std::size_t kWithOptions2 = 2089;      // from this size on dwfOptions2 and what follows are there
// Relative to the end of the device name.
constexpr std::size_t kPadType = 33, kAddress = 201, kFacilities = 201, kUserData = 201;
constexpr std::size_t kChannelsAfterUserData = 203;  // two bytes of alignment behind szX25UserData
constexpr Field kSubEntries{1768, 4}, kDialMode{1772, 4}, kDialExtraPercent{1776, 4}, kDialExtraSampleSeconds{1780, 4},
    kHangUpExtraPercent{1784, 4}, kHangUpExtraSampleSeconds{1788, 4}, kIdleDisconnectSeconds{1792, 4}, kType{1796, 4},
    kEncryptionType{1800, 4}, kCustomAuthKey{1804, 4}, kGuid{1808, 16}, kCustomDialDll{1824, 260},
    kVpnStrategy{2084, 4}, kOptions2{2088, 4}, kOptions3{2092, 4}, kDnsSuffix{2096, 256};
constexpr std::size_t kDnsSuffixCopied = 260;  // kept on purpose: four bytes more than the field has
constexpr std::size_t kSizeToday = 2884;       // _WIN32_WINNT 0x0501
}  // namespace entry

// RASENTRYNAMEA, the form that every system takes (RASENTRYNAME of Windows NT 4; today's is 532 bytes).
namespace entry_name {
constexpr std::size_t kRecordSize = 264;
constexpr Field kSize{0, 4}, kName{4, 257};
}  // namespace entry_name

// RASCONNA, the form that every system takes (today's is 704 bytes).
namespace connection {
constexpr std::size_t kRecordSize = 412;
constexpr Field kSize{0, 4}, kHandle{4, 4}, kEntryName{8, 257}, kDeviceType{265, 17}, kDeviceName{282, 129};
}  // namespace connection

// RASDEVINFOA.
namespace device {
constexpr std::size_t kRecordSize = 152;
constexpr Field kSize{0, 4}, kType{4, 17}, kName{21, 129};
}  // namespace device

// RASDIALPARAMSA: 1060 bytes with sub-entry and callback identifier, 1052 without, 816 with entry names of 21 bytes.
namespace dial_params {
constexpr std::size_t kSizes[] = {1060, 1052, 816};  // in the order in which they are tried
constexpr std::size_t kOldestSize = 816;
constexpr Field kSize{0, 4}, kEntryName{4, 257}, kOldestEntryName{4, 21};
// Widths of the fields behind the entry name, in their order and without gaps.
constexpr std::size_t kPhoneNumber = 129, kCallbackNumber = 129, kUserName = 257, kPassword = 257, kDomain = 16;
// How much of an entry name is copied in when saved parameters are asked for; kept on purpose: one less than the field.
constexpr std::size_t kAskedName = 256, kOldestAskedName = 20;
}  // namespace dial_params

}  // namespace pelvaro::ras
