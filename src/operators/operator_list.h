// The list of mobile operators by country or city: the header and the records of a list file as a value. Used by the
// picker and by the tool for list files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/random_source.h"

namespace pelvaro::operators {

// Of a record; field 0 is the country or city.
constexpr std::size_t kFieldCount = 11;

// Views into the list, good until it is changed or goes.
struct Record {
  std::array<std::string_view, kFieldCount> fields;  // those that the line did not have are empty
  // What the line had behind the eleventh field, its commas included; mostly empty. Nobody shows it, but it is written
  // back with the record, so that saving loses nothing.
  std::string_view rest;
};

// Keeps all texts in one buffer: a record costs its text and four bytes. Edited records are kept beside it.
class OperatorList {
 public:
  // An empty list: no header, no record.
  OperatorList() = default;
  // The list of a file's bytes: the first line is the header, every other one a record, an empty one too. Throws
  // run-time error 5 when a line cannot be unscrambled.
  explicit OperatorList(std::string_view bytes);

  // The bytes of a file: the header as it was read, then every record, each scrambled on its own.
  std::string bytes(RandomSource& random) const;

  std::string_view header() const { return std::string_view(text_).substr(0, headerSize_); }
  // As many as it has; none when the file was empty.
  std::vector<std::string_view> headings() const;

  std::size_t size() const { return begins_.size(); }  // of records
  Record record(std::size_t row) const;
  std::string_view field(std::size_t row, std::size_t number) const { return record(row).fields.at(number); }
  // Changes one of the fields 1 to 10. One with a comma in it falls into two when the list is saved and read again.
  void setField(std::size_t row, std::size_t number, std::string_view value);

  // The countries and cities in the order of their first appearance, each once; case counts.
  std::vector<std::string_view> places() const;
  // The records of one, in the order of the file.
  std::vector<std::size_t> rowsOf(std::string_view place) const;

 private:
  std::string_view line(std::size_t row) const;
  std::string_view place(std::size_t row) const;

  std::string text_;  // the header and all records as they were read, with nothing between them
  std::size_t headerSize_ = 0;
  std::vector<std::uint32_t> begins_;  // of each record in text_
  std::map<std::size_t, std::array<std::string, kFieldCount>> edited_;
};

// The pieces of a line between its commas; an empty line has one, which is empty.
std::vector<std::string_view> splitFields(std::string_view line);

}  // namespace pelvaro::operators
