// Any bytes as an operator list file: a list, or run-time error 5. What was read comes back when it is saved; the check
// names a line for every error. As CSV a list that is taken again keeps its records. The same bytes as CSV: a list that
// comes back as CSV, or messages.
#include <algorithm>
#include <cstdlib>

#include "base/runtime_error.h"
#include "commands.h"
#include "input.h"
#include "operators/list_check.h"
#include "operators/list_lines.h"
#include "operators/mod_encrypt.h"
#include "operators/operator_list.h"

namespace {

using namespace pelvaro;
using namespace pelvaro::operators;

// Whether a text is sure to come back: a NUL never does, and some others need keys that do not go together.
bool comesBack(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) <= 10; });
}
bool comesBack(const Record& record) {
  return comesBack(record.rest) && std::all_of(record.fields.begin(), record.fields.end(),
                                               [](std::string_view field) { return comesBack(field); });
}

void checkSaved(const OperatorList& list, SeededRandom& random) {
  bool all = comesBack(list.header());
  for (std::size_t row = 0; row < list.size(); ++row) all = all && comesBack(list.record(row));
  try {
    const OperatorList again(list.bytes(random));
    check(again.size() == list.size());
    for (std::size_t row = 0; row < list.size(); ++row) {
      const Record before = list.record(row), after = again.record(row);
      check(!comesBack(before) || (before.fields == after.fields && before.rest == after.rest));
    }
  } catch (const RuntimeError&) {
    check(!all);  // a line that is out of step
  }
}

void checkPlaces(const OperatorList& list) {
  std::size_t rows = 0, places = 0;
  for (const auto place : list.places()) {
    if (++places > 20) return;
    const auto found = list.rowsOf(place);
    check(!found.empty() && list.field(found.front(), 0) == place);
    rows += found.size();
  }
  check(rows == list.size());
}

// A field that is changed is the new one, and no other is.
void checkEdited(OperatorList list, std::string_view value) {
  check(list.headings().size() == (list.header().empty() ? 0 : splitFields(list.header()).size()));
  if (list.size() == 0) return;
  const std::size_t row = value.size() % list.size(), number = value.size() % (kFieldCount - 1) + 1;
  const std::string place(list.field(row, 0)), rest(list.record(row).rest);
  list.setField(row, number, value);
  check(list.field(row, number) == value && list.field(row, 0) == place && list.record(row).rest == rest);
  SeededRandom random(1);
  check(list.bytes(random).ends_with(kLineEnd));
}

// A list that was written as CSV is refused, or comes back with as many records.
void checkCsv(std::string_view bytes, bool damaged, SeededRandom& random) {
  const Outcome csv = toCsv(bytes);
  check((csv.exit == Exit::faulty) == damaged);
  if (damaged) return;
  const Outcome made = fromCsv(csv.output, random);
  if (made.exit == Exit::fine) check(OperatorList(made.output).size() == OperatorList(bytes).size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  SeededRandom random(size > 0 ? data[0] : 0);
  bool damaged = false;
  const std::size_t records = checkList(bytes, [&](std::size_t line, const std::string& what) {
    check(line > 0);
    damaged = damaged || what.starts_with("cannot be unscrambled");
  });
  try {
    const OperatorList list(bytes);
    check(!damaged && list.size() == records);
    checkPlaces(list);
    checkEdited(list, bytes.substr(0, 40));
    checkSaved(list, random);
  } catch (const RuntimeError& error) {
    check(damaged && error.number() == 5);
  }
  checkCsv(bytes, damaged, random);
  if (size < 4096) check(operators::check(bytes).exit != Exit::fine || !damaged);

  const std::string line = modEncrypt::Scramble(bytes, random);
  check(line.size() <= 2 * bytes.size() + 2);
  if (comesBack(bytes)) check(modEncrypt::Unscramble(line) == bytes);

  const Outcome made = fromCsv(bytes, random);
  check((made.exit == Exit::fine) == made.message.empty());
  if (made.exit == Exit::fine) {
    const Outcome csv = toCsv(made.output);
    SeededRandom other(1);
    const Outcome again = fromCsv(csv.output, other);
    check(again.exit == Exit::fine && toCsv(again.output).output == csv.output);
  }
  return 0;
}
