// Asserts at compile time that ras_layout.h says what <ras.h> says.
#include "platform/ras_layout.h"
#include "platform/win32/windows_header.h"

// Behind windows_header.h.
#include <ras.h>
#include <raserror.h>

namespace pelvaro::ras {
namespace {

// NOLINTBEGIN(bugprone-macro-parentheses, bugprone-sizeof-expression): the arguments are names of types and members
#define PELVARO_SAME_FIELD(record, field, ours)             \
  static_assert(offsetof(record, field) == (ours).offset && \
                sizeof(static_cast<record*>(nullptr)->field) == (ours).width)

static_assert(sizeof(RASENTRYA) == entry::kSizeToday);
PELVARO_SAME_FIELD(RASENTRYA, dwSize, entry::kSize);
PELVARO_SAME_FIELD(RASENTRYA, dwfOptions, entry::kOptions);
PELVARO_SAME_FIELD(RASENTRYA, dwCountryID, entry::kCountryId);
PELVARO_SAME_FIELD(RASENTRYA, dwCountryCode, entry::kCountryCode);
PELVARO_SAME_FIELD(RASENTRYA, szAreaCode, entry::kAreaCode);
PELVARO_SAME_FIELD(RASENTRYA, szLocalPhoneNumber, entry::kLocalPhoneNumber);
PELVARO_SAME_FIELD(RASENTRYA, dwAlternateOffset, entry::kAlternateOffset);
PELVARO_SAME_FIELD(RASENTRYA, ipaddr, entry::kIpAddress);
PELVARO_SAME_FIELD(RASENTRYA, ipaddrDns, entry::kDnsAddress);
PELVARO_SAME_FIELD(RASENTRYA, ipaddrDnsAlt, entry::kDnsAltAddress);
PELVARO_SAME_FIELD(RASENTRYA, ipaddrWins, entry::kWinsAddress);
PELVARO_SAME_FIELD(RASENTRYA, ipaddrWinsAlt, entry::kWinsAltAddress);
PELVARO_SAME_FIELD(RASENTRYA, dwFrameSize, entry::kFrameSize);
PELVARO_SAME_FIELD(RASENTRYA, dwfNetProtocols, entry::kNetProtocols);
PELVARO_SAME_FIELD(RASENTRYA, dwFramingProtocol, entry::kFramingProtocol);
PELVARO_SAME_FIELD(RASENTRYA, szScript, entry::kScript);
PELVARO_SAME_FIELD(RASENTRYA, szAutodialDll, entry::kAutodialDll);
PELVARO_SAME_FIELD(RASENTRYA, szAutodialFunc, entry::kAutodialFunc);
PELVARO_SAME_FIELD(RASENTRYA, szDeviceType, entry::kDeviceType);
PELVARO_SAME_FIELD(RASENTRYA, szDeviceName, entry::kDeviceName);
constexpr std::size_t kX25 = entry::kDeviceName.offset + entry::kDeviceName.width;
PELVARO_SAME_FIELD(RASENTRYA, szX25PadType, (Field{kX25, entry::kPadType}));
PELVARO_SAME_FIELD(RASENTRYA, szX25Address, (Field{kX25 + 33, entry::kAddress}));
PELVARO_SAME_FIELD(RASENTRYA, szX25Facilities, (Field{kX25 + 33 + 201, entry::kFacilities}));
PELVARO_SAME_FIELD(RASENTRYA, szX25UserData, (Field{kX25 + 33 + 402, entry::kUserData}));
PELVARO_SAME_FIELD(RASENTRYA, dwChannels, (Field{kX25 + 33 + 402 + entry::kChannelsAfterUserData, 4}));
PELVARO_SAME_FIELD(RASENTRYA, dwSubEntries, entry::kSubEntries);
PELVARO_SAME_FIELD(RASENTRYA, dwDialMode, entry::kDialMode);
PELVARO_SAME_FIELD(RASENTRYA, dwDialExtraPercent, entry::kDialExtraPercent);
PELVARO_SAME_FIELD(RASENTRYA, dwDialExtraSampleSeconds, entry::kDialExtraSampleSeconds);
PELVARO_SAME_FIELD(RASENTRYA, dwHangUpExtraPercent, entry::kHangUpExtraPercent);
PELVARO_SAME_FIELD(RASENTRYA, dwHangUpExtraSampleSeconds, entry::kHangUpExtraSampleSeconds);
PELVARO_SAME_FIELD(RASENTRYA, dwIdleDisconnectSeconds, entry::kIdleDisconnectSeconds);
PELVARO_SAME_FIELD(RASENTRYA, dwType, entry::kType);
PELVARO_SAME_FIELD(RASENTRYA, dwEncryptionType, entry::kEncryptionType);
PELVARO_SAME_FIELD(RASENTRYA, dwCustomAuthKey, entry::kCustomAuthKey);
PELVARO_SAME_FIELD(RASENTRYA, guidId, entry::kGuid);
PELVARO_SAME_FIELD(RASENTRYA, szCustomDialDll, entry::kCustomDialDll);
PELVARO_SAME_FIELD(RASENTRYA, dwVpnStrategy, entry::kVpnStrategy);
PELVARO_SAME_FIELD(RASENTRYA, dwfOptions2, entry::kOptions2);
PELVARO_SAME_FIELD(RASENTRYA, dwfOptions3, entry::kOptions3);
PELVARO_SAME_FIELD(RASENTRYA, szDnsSuffix, entry::kDnsSuffix);

// The forms of these three that every system takes are shorter than today's; their fields lie where they always lay.
static_assert(sizeof(RASENTRYNAMEA) == 532 && sizeof(RASCONNA) == 704);
PELVARO_SAME_FIELD(RASENTRYNAMEA, dwSize, entry_name::kSize);
PELVARO_SAME_FIELD(RASENTRYNAMEA, szEntryName, entry_name::kName);
static_assert(offsetof(RASENTRYNAMEA, dwFlags) == entry_name::kRecordSize);
PELVARO_SAME_FIELD(RASCONNA, dwSize, connection::kSize);
PELVARO_SAME_FIELD(RASCONNA, hrasconn, connection::kHandle);
PELVARO_SAME_FIELD(RASCONNA, szEntryName, connection::kEntryName);
PELVARO_SAME_FIELD(RASCONNA, szDeviceType, connection::kDeviceType);
PELVARO_SAME_FIELD(RASCONNA, szDeviceName, connection::kDeviceName);
static_assert(offsetof(RASCONNA, szPhonebook) == connection::kDeviceName.offset + connection::kDeviceName.width);

static_assert(sizeof(RASDEVINFOA) == device::kRecordSize);
PELVARO_SAME_FIELD(RASDEVINFOA, dwSize, device::kSize);
PELVARO_SAME_FIELD(RASDEVINFOA, szDeviceType, device::kType);
PELVARO_SAME_FIELD(RASDEVINFOA, szDeviceName, device::kName);

static_assert(sizeof(RASDIALPARAMSA) == dial_params::kSizes[0]);
PELVARO_SAME_FIELD(RASDIALPARAMSA, dwSize, dial_params::kSize);
PELVARO_SAME_FIELD(RASDIALPARAMSA, szEntryName, dial_params::kEntryName);
PELVARO_SAME_FIELD(RASDIALPARAMSA, szPhoneNumber, (Field{261, dial_params::kPhoneNumber}));
PELVARO_SAME_FIELD(RASDIALPARAMSA, szCallbackNumber, (Field{390, dial_params::kCallbackNumber}));
PELVARO_SAME_FIELD(RASDIALPARAMSA, szUserName, (Field{519, dial_params::kUserName}));
PELVARO_SAME_FIELD(RASDIALPARAMSA, szPassword, (Field{776, dial_params::kPassword}));
PELVARO_SAME_FIELD(RASDIALPARAMSA, szDomain, (Field{1033, dial_params::kDomain}));
static_assert(offsetof(RASDIALPARAMSA, dwSubEntry) == dial_params::kSizes[1]);

static_assert(ERROR_BUFFER_TOO_SMALL == kErrorBufferTooSmall);
static_assert(ERROR_INVALID_SIZE == kErrorInvalidSize);
static_assert(ERROR_CANNOT_FIND_PHONEBOOK_ENTRY == kErrorCannotFindPhonebookEntry);
static_assert(WM_RASDIALEVENT == kDialEventFallback);

// NOLINTEND(bugprone-macro-parentheses, bugprone-sizeof-expression)

}  // namespace
}  // namespace pelvaro::ras
