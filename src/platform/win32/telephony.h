// The system's telephony service: tapi32.dll of the system folder.
#pragma once

#include "platform/telephony.h"
#include "platform/win32/system_library.h"

namespace pelvaro::win32 {

class SystemTelephony : public Telephony {
 public:
  std::int32_t requestMakeCall(const std::string& number, const std::string& application,
                               const std::string& calledParty, const std::string& comment) override;

 private:
  SystemLibrary library_{"tapi32.dll"};
  SystemFunction<LONG(WINAPI*)(LPCSTR, LPCSTR, LPCSTR, LPCSTR)> requestMakeCall_{library_, "tapiRequestMakeCallA"};
};

}  // namespace pelvaro::win32
