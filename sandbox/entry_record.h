// One phonebook entry's connection record as raw bytes, and how it is seen by systems with a longer or shorter record.
// Used by the phonebook file (readable fields) and by the dial line (reading an entry in the size that is asked for).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pelvaro::line {

using Bytes = std::vector<std::uint8_t>;

// The sizes of a connection record that the line can play, oldest first.
constexpr std::size_t kRecordSizes[] = {1672, 1768, 1796, 1797, 2088, 2089, 2884};

// Whether a record can have this size.
bool isRecordSize(std::size_t size);

// The fields that a person looks for in the phonebook file.
struct ReadableFields {
  std::string number;
  std::string device;
  std::string suffix;
  std::uint32_t options = 0;
};

// The readable fields of a record. Texts end at their first NUL or at the end of their field.
ReadableFields readableFields(const Bytes& record);

// A record of `size` bytes that holds the readable fields and dwSize and is zero everywhere else.
Bytes recordOf(std::size_t size, const ReadableFields& fields);

// A new entry's record as the phonebook itself would make it: a modem that is dialed for the Internet.
Bytes freshRecord(std::size_t size, const ReadableFields& fields);

// The same record in another size: what both sizes have is kept, what is new is zero.
Bytes resized(const Bytes& record, std::size_t size);

}  // namespace pelvaro::line
