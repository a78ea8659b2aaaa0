#include "commands.h"

#include "base/runtime_error.h"
#include "csv.h"
#include "operators/list_check.h"
#include "operators/list_lines.h"
#include "operators/mod_encrypt.h"
#include "operators/operator_list.h"

namespace pelvaro::operators {

namespace {

constexpr std::size_t kMostFaults = 1000;  // that are named
constexpr std::size_t kMostShown = 40;     // characters of a field, in a message
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What is wrong with an input, a line each.
class Faults {
 public:
  void add(std::size_t line, const std::string& what) {
    if (++count_ <= kMostFaults) text_ += "line " + std::to_string(line) + ": " + what + "\n";
  }
  std::size_t count() const { return count_; }
  std::string text() const {
    return count_ > kMostFaults ? text_ + "and " + std::to_string(count_ - kMostFaults) + " more\n" : text_;
  }

 private:
  std::string text_;
  std::size_t count_ = 0;
};

// As much of a text as a message takes, without what would upset a screen.
std::string shown(std::string_view text) {
  std::string result(text.substr(0, kMostShown));
  for (char& c : result) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = '?';
  }
  return text.size() > kMostShown ? result + "..." : result;
}

// The text of a row, or what a list cannot hold of it.
std::string joined(const CsvRow& row, std::string& fault) {
  std::string text;
  for (const auto& field : row.fields) {
    if (&field != &row.fields.front()) text += ',';
    if (field.find(',') != std::string::npos) fault = "a comma in the field \"" + shown(field) + "\"";
    text += field;
  }
  if (row.count != kFieldCount) {
    fault =
        std::to_string(row.count) + (row.count == 1 ? " field" : " fields") + ", not " + std::to_string(kFieldCount);
  }
  return text;
}

// Appends a line of a list as CSV, with at least so many fields.
void appendCsvRow(std::string_view text, std::size_t least, std::string& to) {
  std::size_t fields = 1;
  for (auto comma = text.find(','); comma != std::string_view::npos; comma = text.find(','), ++fields) {
    appendCsvField(text.substr(0, comma), to);
    to += ',';
    text.remove_prefix(comma + 1);
  }
  appendCsvField(text, to);
  if (fields < least) to.append(least - fields, ',');
}

bool comesBack(std::string_view line, std::string_view text) {
  try {
    return modEncrypt::Unscramble(line) == text;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace

Outcome toCsv(std::string_view list) {
  Outcome outcome;
  ListLines lines(list);
  while (lines.next()) {
    try {
      const std::string text = modEncrypt::Unscramble(lines.line());
      const bool header = lines.number() == 1;
      if (header && text.empty()) outcome.output += "\"\"";  // an empty line would be passed over
      appendCsvRow(text, header ? 1 : kFieldCount, outcome.output);
      outcome.output += '\n';
    } catch (const RuntimeError&) {
      Faults faults;
      faults.add(lines.number(), "cannot be unscrambled");
      return {Exit::faulty, {}, faults.text()};
    }
  }
  return outcome;
}

Outcome fromCsv(std::string_view csv, RandomSource& random) {
  Outcome outcome;
  Faults faults;
  CsvReader rows(csv, kFieldCount);
  for (bool first = true; const auto row = rows.next(); first = false) {
    std::string fault, line;
    const std::string text = joined(*row, fault);
    if (first && text.starts_with(kByteOrderMark)) fault = "a byte order mark: this is UTF-8, not Windows-1252";
    if (fault.empty()) {
      line = modEncrypt::Scramble(text, random);
      if (!comesBack(line, text)) fault = "a character that a list cannot hold";
    }
    if (!fault.empty()) faults.add(row->line, fault);
    if (faults.count() == 0) (outcome.output += line) += kLineEnd;
  }
  if (!rows.damage().empty()) faults.add(rows.line(), rows.damage());
  if (faults.count() == 0 && outcome.output.empty()) faults.add(1, "the header is missing");
  if (faults.count() > 0) return {Exit::faulty, {}, faults.text()};
  return outcome;
}

Outcome check(std::string_view list) {
  Faults faults;
  const auto records =
      checkList(list, [&faults](std::size_t line, const std::string& what) { faults.add(line, what); });
  const std::size_t count = faults.count();
  Outcome outcome;
  outcome.output = faults.text() + std::to_string(records) + (records == 1 ? " record, " : " records, ") +
                   (count == 0 ? "nothing" : std::to_string(count) + (count == 1 ? " thing" : " things")) + " wrong\n";
  outcome.exit = count == 0 ? Exit::fine : Exit::faulty;
  return outcome;
}

}  // namespace pelvaro::operators
