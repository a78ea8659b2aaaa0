// What the tool for operator list files does: texts in, texts and an exit code out.
#pragma once

#include <string>
#include <string_view>

#include "platform/random_source.h"

namespace pelvaro::operators {

enum class Exit { fine = 0, faulty = 1, failed = 2 };

struct Outcome {
  Exit exit = Exit::fine;
  std::string output;   // for standard output
  std::string message;  // for standard error, its lines ended
};

// A list file as CSV: the header, an empty one as "", then each record with at least 11 fields. Stops at a damaged line
// and names it.
Outcome toCsv(std::string_view list);
// CSV as a list file. Nothing is written when a row does not have 11 fields or holds what a list cannot. Of very many
// faults, here and in a check, the first thousand are named.
Outcome fromCsv(std::string_view csv, RandomSource& random);
// Says on standard output what is wrong, line by line.
Outcome check(std::string_view list);

}  // namespace pelvaro::operators
