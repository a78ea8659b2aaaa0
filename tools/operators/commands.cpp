#include "commands.h"

#include "base/runtime_error.h"
#include "csv.h"
#include "operators/list_check.h"
#include "operators/list_lines.h"
#include "operators/mod_encrypt.h"
#include "operators/operator_list.h"

namespace pelvaro::operators {

namespace {

std::string atLine(std::size_t line, const std::string& what) { return "line " + std::to_string(line) + ": " + what; }

// The text of a row, or what a list cannot hold of it.
std::string joined(const CsvRow& row, std::string& fault) {
  std::string text;
  for (const auto& field : row.fields) {
    if (&field != &row.fields.front()) text += ',';
    if (field.find(',') != std::string::npos) fault = "a comma in the field \"" + field + "\"";
    text += field;
  }
  if (row.fields.size() != kFieldCount) {
    fault = std::to_string(row.fields.size()) + (row.fields.size() == 1 ? " field" : " fields") + ", not " +
            std::to_string(kFieldCount);
  }
  return text;
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
      auto fields = splitFields(text);
      if (lines.number() > 1 && fields.size() < kFieldCount) fields.resize(kFieldCount);
      for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) outcome.output += ',';
        appendCsvField(fields[i], outcome.output);
      }
      outcome.output += '\n';
    } catch (const RuntimeError&) {
      return {Exit::faulty, {}, atLine(lines.number(), "cannot be unscrambled\n")};
    }
  }
  return outcome;
}

Outcome fromCsv(std::string_view csv, RandomSource& random) {
  Outcome outcome;
  CsvReader rows(csv);
  while (const auto row = rows.next()) {
    std::string fault;
    const std::string text = joined(*row, fault), line = modEncrypt::Scramble(text, random);
    if (fault.empty() && !comesBack(line, text)) fault = "a character that a list cannot hold";
    if (!fault.empty()) {
      outcome.message += atLine(row->line, fault) + "\n";
    } else {
      (outcome.output += line) += kLineEnd;
    }
  }
  if (!rows.damage().empty()) outcome.message += atLine(rows.line(), rows.damage()) + "\n";
  if (outcome.message.empty() && outcome.output.empty()) outcome.message = "line 1: the header is missing\n";
  if (!outcome.message.empty()) return {Exit::faulty, {}, outcome.message};
  return outcome;
}

Outcome check(std::string_view list) {
  Outcome outcome;
  std::size_t faults = 0;
  const auto records = checkList(list, [&](std::size_t line, const std::string& what) {
    ++faults;
    outcome.output += atLine(line, what) + "\n";
  });
  outcome.output += std::to_string(records) + (records == 1 ? " record, " : " records, ") +
                    (faults == 0 ? "nothing" : std::to_string(faults) + (faults == 1 ? " thing" : " things")) +
                    " wrong\n";
  outcome.exit = faults == 0 ? Exit::fine : Exit::faulty;
  return outcome;
}

}  // namespace pelvaro::operators
