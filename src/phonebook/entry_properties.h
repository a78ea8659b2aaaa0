// Writing and reading phonebook entries: the program's flat record to and from the service's RASENTRY buffer, whose
// size differs from system to system. Used by the main window and the connection editor.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "phonebook/ras_entry_record.h"
#include "platform/dial_service.h"

namespace pelvaro::Module1 {

// Copies the text's first `maximum` bytes to the start of `destination`, cut at its end. Writes no terminator.
void CopyStringToBytes(Bytes destination, std::string_view text, std::size_t maximum);

// The first `width` bytes of `source` up to the first NUL; bytes that are not there count as NUL.
std::string BytesToString(ConstBytes source, std::size_t width);

// The buffer of `structureSize` bytes, the alternate numbers and one NUL, as it goes to RasSetEntryPropertiesA.
std::vector<std::uint8_t> packEntry(const RasEntryRecord& record, std::uint32_t structureSize);

// Fills the record from a buffer as RasGetEntryPropertiesA gives it. AlternateNumbers stays when the entry has none.
void unpackEntry(ConstBytes buffer, std::uint32_t structureSize, RasEntryRecord& record);

// Creates the entry or replaces it whole, in the default phonebook when `phonebook` is null. Gives the service's
// result.
std::uint32_t SetEntryProperties(DialService& ras, const std::string& entryName, const RasEntryRecord& record,
                                 const char* phonebook = nullptr);

// Reads the entry. Gives the service's result; unless that is 0 the record is left as it was.
std::uint32_t GetEntryProperties(DialService& ras, const std::string& entryName, RasEntryRecord& record,
                                 const char* phonebook = nullptr);

}  // namespace pelvaro::Module1
