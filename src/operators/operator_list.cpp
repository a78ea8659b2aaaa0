#include "operators/operator_list.h"

#include <stdexcept>
#include <unordered_set>

#include "operators/list_lines.h"
#include "operators/mod_encrypt.h"

namespace pelvaro::operators {

namespace {
constexpr char kSeparator = ',';
}  // namespace

std::vector<std::string_view> splitFields(std::string_view line) {
  std::vector<std::string_view> fields;
  for (;;) {
    const auto comma = line.find(kSeparator);
    fields.push_back(line.substr(0, comma));
    if (comma == std::string_view::npos) return fields;
    line.remove_prefix(comma + 1);
  }
}

OperatorList::OperatorList(std::string_view bytes) {
  text_.reserve(bytes.size() / 2);  // a text is at most half as long as its line
  ListLines lines(bytes);
  if (lines.next()) modEncrypt::appendUnscrambled(lines.line(), text_);
  headerSize_ = text_.size();
  while (lines.next()) {
    begins_.push_back(static_cast<std::uint32_t>(text_.size()));
    modEncrypt::appendUnscrambled(lines.line(), text_);
  }
}

std::string OperatorList::bytes(RandomSource& random) const {
  std::string result, joined;
  // Two bytes a character, keys and line end; a record gets at most ten commas that its line did not have.
  std::size_t most = 2 * text_.size() + 4 + (2 * (kFieldCount - 1) + 4) * size();
  for (const auto& [row, fields] : edited_) {
    for (const std::string& field : fields) most += 2 * field.size();
  }
  result.reserve(most);
  modEncrypt::appendScrambled(header(), random, result);
  result += kLineEnd;
  for (std::size_t row = 0; row < size(); ++row) {
    const Record written = record(row);
    joined = written.fields[0];
    for (std::size_t i = 1; i < kFieldCount; ++i) (joined += kSeparator) += written.fields[i];
    joined += written.rest;
    modEncrypt::appendScrambled(joined, random, result);
    result += kLineEnd;
  }
  return result;
}

std::vector<std::string_view> OperatorList::headings() const {
  return header().empty() ? std::vector<std::string_view>() : splitFields(header());
}

Record OperatorList::record(std::size_t row) const {
  Record result;
  std::string_view left = line(row);
  for (auto& field : result.fields) {
    const auto comma = left.find(kSeparator);
    field = left.substr(0, comma);
    left.remove_prefix(comma == std::string_view::npos ? left.size() : comma);
    if (&field != &result.fields.back() && !left.empty()) left.remove_prefix(1);
  }
  result.rest = left;
  if (const auto edited = edited_.find(row); edited != edited_.end()) {
    for (std::size_t i = 0; i < kFieldCount; ++i) result.fields[i] = edited->second[i];
  }
  return result;
}

void OperatorList::setField(std::size_t row, std::size_t number, std::string_view value) {
  if (number == 0 || number >= kFieldCount) throw std::out_of_range("a field that cannot be changed");
  auto edited = edited_.find(row);
  if (edited == edited_.end()) {
    const Record read = record(row);
    edited = edited_.try_emplace(row).first;
    for (std::size_t i = 0; i < kFieldCount; ++i) edited->second[i] = read.fields[i];
  }
  edited->second[number] = std::string(value);  // `value` may be a view of what is changed here
}

std::string_view OperatorList::line(std::size_t row) const {
  const std::size_t begin = begins_.at(row);
  const std::size_t end = row + 1 < size() ? begins_[row + 1] : text_.size();
  return std::string_view(text_).substr(begin, end - begin);
}

std::string_view OperatorList::place(std::size_t row) const {
  const std::string_view whole = line(row);
  return whole.substr(0, whole.find(kSeparator));
}

std::vector<std::string_view> OperatorList::places() const {
  std::vector<std::string_view> result;
  std::unordered_set<std::string_view> seen;
  for (std::size_t row = 0; row < size(); ++row) {
    const auto name = place(row);
    // Most records stand behind another one of their place.
    if (!result.empty() && result.back() == name) continue;
    if (seen.insert(name).second) result.push_back(name);
  }
  return result;
}

std::vector<std::size_t> OperatorList::rowsOf(std::string_view wanted) const {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < size(); ++row) {
    if (place(row) == wanted) rows.push_back(row);
  }
  return rows;
}

}  // namespace pelvaro::operators
