#include "csv.h"

#include <algorithm>

namespace pelvaro::operators {

bool CsvReader::atLineEnd() const { return rest_.starts_with('\n') || rest_.starts_with("\r\n"); }

void CsvReader::passLineEnd() {
  if (rest_.empty()) return;
  rest_.remove_prefix(rest_.front() == '\n' ? 1 : 2);
  ++line_;
}

std::optional<CsvRow> CsvReader::next() {
  if (!damage_.empty()) return std::nullopt;
  while (atLineEnd()) passLineEnd();
  if (rest_.empty()) return std::nullopt;
  CsvRow row;
  row.line = line_;
  for (;;) {
    std::string field;
    if (!rest_.starts_with('"')) {
      field = plainField();
    } else if (!quotedField(field)) {
      line_ = row.line;
      return std::nullopt;
    }
    if (row.count++ < kept_) row.fields.push_back(std::move(field));
    if (!rest_.starts_with(',')) break;
    rest_.remove_prefix(1);
  }
  passLineEnd();
  return row;
}

std::string CsvReader::plainField() {
  std::size_t end = rest_.find_first_of(",\n");
  if (end == std::string_view::npos) end = rest_.size();
  if (end > 0 && end < rest_.size() && rest_[end] == '\n' && rest_[end - 1] == '\r') --end;
  std::string field(rest_.substr(0, end));
  rest_.remove_prefix(end);
  return field;
}

bool CsvReader::quotedField(std::string& field) {
  for (rest_.remove_prefix(1);; rest_.remove_prefix(2)) {  // past the quote, and past every doubled one
    const auto quote = rest_.find('"');
    if (quote == std::string_view::npos) {
      damage_ = "a quote that is not closed";
      return false;
    }
    field += rest_.substr(0, quote);
    rest_.remove_prefix(quote);
    if (!rest_.starts_with("\"\"")) break;
    field += '"';
  }
  line_ += static_cast<std::size_t>(std::count(field.begin(), field.end(), '\n'));
  rest_.remove_prefix(1);
  if (rest_.empty() || rest_.front() == ',' || atLineEnd()) return true;
  damage_ = "text behind a closing quote";
  return false;
}

void appendCsvField(std::string_view field, std::string& to) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
    to += field;
    return;
  }
  to += '"';
  for (const char c : field) to.append(c == '"' ? 2 : 1, c);
  to += '"';
}

}  // namespace pelvaro::operators
