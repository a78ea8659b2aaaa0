#include "platform/win32/telephony.h"

namespace pelvaro::win32 {

namespace {
constexpr LONG kNoRequestRecipient = -2;  // TAPIERR_NOREQUESTRECIPIENT (tapi.h)
}  // namespace

std::int32_t SystemTelephony::requestMakeCall(const std::string& number, const std::string& application,
                                              const std::string& calledParty, const std::string& comment) {
  return requestMakeCall_.call(kNoRequestRecipient, number.c_str(), application.c_str(), calledParty.c_str(),
                               comment.c_str());
}

}  // namespace pelvaro::win32
