// Tables as comma-separated text: a field with a comma, a quote or a line end in it stands in quotes, quotes in it are
// doubled. Bytes in, bytes out.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelvaro::operators {

struct CsvRow {
  std::size_t line = 0;             // that it begins on, from 1
  std::vector<std::string> fields;  // the first ones, as many as are kept
  std::size_t count = 0;            // of all fields
};

// Goes over the rows of a text. Lines end with LF or CR LF; empty ones are passed over. Of a row no more than `kept`
// fields are kept: a line may be all commas.
class CsvReader {
 public:
  CsvReader(std::string_view text, std::size_t kept) : rest_(text), kept_(kept) {}

  // The next row; nothing at the end, and at the first damaged one.
  std::optional<CsvRow> next();
  // What is wrong with the row at line(); empty when nothing is.
  const std::string& damage() const { return damage_; }
  std::size_t line() const { return line_; }

 private:
  bool atLineEnd() const;
  void passLineEnd();
  bool quotedField(std::string& field);
  std::string plainField();

  std::string_view rest_;
  std::size_t kept_;
  std::size_t line_ = 1;
  std::string damage_;
};

// Appends a field as it stands in a row.
void appendCsvField(std::string_view field, std::string& to);

}  // namespace pelvaro::operators
