// An entry's saved dial parameters, and the parameters record that a dial is made with.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/dial_service.h"

namespace pelvaro {

// What a dial says: the fields of RASDIALPARAMS in their order. Texts may have any length and are cut when packed.
struct DialRecord {
  std::string EntryName;
  std::string PhoneNumber;
  std::string CallbackNumber;
  std::string UserName;
  std::string Password;
  std::string Domain;
};

namespace Module1 {

// Asks for the saved parameters with each record size in turn until one is taken. Gives the last call's result; on 0
// `buffer` holds the record and `passwordSaved` tells whether a password is stored with the entry.
std::uint32_t GetEntryDialParams(DialService& ras, std::vector<std::uint8_t>& buffer, const char* phonebook,
                                 const std::string& entryName, bool& passwordSaved);

// The record size that the service takes (1060, 1052 or 816), 0 when it takes none.
std::uint32_t acceptedDialParamsSize(DialService& ras);

// The record of `size` bytes with the fields at their places.
std::vector<std::uint8_t> packDialParams(const DialRecord& record, std::uint32_t size);

}  // namespace Module1
}  // namespace pelvaro
