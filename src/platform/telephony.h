// Voice calls by way of the system's telephony service.
#pragma once

#include <cstdint>
#include <string>

namespace pelvaro {

struct Telephony {
  virtual ~Telephony() = default;
  // tapiRequestMakeCallA.
  virtual std::int32_t requestMakeCall(const std::string& number, const std::string& application,
                                       const std::string& calledParty, const std::string& comment) = 0;
};

}  // namespace pelvaro
