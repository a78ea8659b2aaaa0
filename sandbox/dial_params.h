// The dial parameters record (RASDIALPARAMSA) in its three sizes, as texts.
// Used by the dial line, which has checked dwSize before.
#pragma once

#include <string>

namespace pelvaro::line {

struct DialParams {
  std::string entryName, number, callbackNumber, user, password, domain;
};

// The texts of a record whose dwSize is one of ras::dial_params::kSizes.
DialParams unpackDialParams(const void* record);

// Puts user, password and domain into such a record; the rest of it stays.
void putCredentials(void* record, const std::string& user, const std::string& password, const std::string& domain);

}  // namespace pelvaro::line
