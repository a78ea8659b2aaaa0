#include "operators/list_check.h"

#include <algorithm>
#include <cstdlib>

#include "base/runtime_error.h"
#include "base/text.h"
#include "operators/list_lines.h"
#include "operators/mod_encrypt.h"
#include "operators/operator_list.h"

namespace pelvaro::operators {

namespace {

int codeOf(char c) { return static_cast<unsigned char>(c); }

// What reading the line would leave out without a word.
void checkScrambling(std::string_view line, const std::function<void(const std::string&)>& fault) {
  const int first = codeOf(line.front()), last = codeOf(line.back()), distance = std::abs(first - last);
  if (first > modEncrypt::kLargestFirstKey || last > modEncrypt::kLargestLastKey) {
    fault("the key characters are " + std::to_string(first) + " and " + std::to_string(last) + ", not 0 to " +
          std::to_string(modEncrypt::kLargestFirstKey) + " and 0 to " + std::to_string(modEncrypt::kLargestLastKey));
  }
  const std::string_view whole = line.substr(1, line.size() - 2), body = trimmed(whole);
  if (body.size() != whole.size()) fault("blanks around the scrambled text are not read");
  std::size_t unmarked = 0;
  for (std::size_t i = 1; i < body.size(); i += 2) {
    const int marker = codeOf(body[i]) - distance;
    if (marker != modEncrypt::kShiftedUp && marker != modEncrypt::kShiftedDown) ++unmarked;
  }
  if (unmarked > 0) fault("characters without a marker are lost: " + std::to_string(unmarked));
  if (body.size() % 2 != 0) fault("one character too many at the end, or the line is out of step");
}

void checkFields(std::string_view text, bool header, const std::function<void(const std::string&)>& fault) {
  const auto fields = static_cast<std::size_t>(std::count(text.begin(), text.end(), ',')) + 1;
  if (fields != kFieldCount) {
    fault(std::to_string(fields) + (fields == 1 ? " field" : " fields") + ", not " + std::to_string(kFieldCount));
  }
  if (!header && (text.empty() || text.front() == ',')) fault("no country or city");
  const auto control = std::find_if(text.begin(), text.end(), [](char c) { return codeOf(c) < ' '; });
  if (control != text.end()) fault("control character " + std::to_string(codeOf(*control)) + " in the text");
}

}  // namespace

std::size_t checkList(std::string_view bytes, const FaultReport& report) {
  ListLines lines(bytes);
  while (lines.next()) {
    const auto fault = [&](const std::string& what) { report(lines.number(), what); };
    const std::string_view line = lines.line();
    if (line.size() < 2) {
      fault(line.empty() ? "empty line" : "a single character: the keys are missing");
    } else {
      try {
        const std::string text = modEncrypt::Unscramble(line);
        checkScrambling(line, fault);
        checkFields(text, lines.number() == 1, fault);
      } catch (const RuntimeError& error) {
        fault("cannot be unscrambled (run-time error " + std::to_string(error.number()) + ", " + error.description() +
              ")");
      }
    }
    if (!lines.ended()) fault("not ended by CR LF");
  }
  if (lines.number() == 0) report(1, "the header is missing");
  return lines.number() == 0 ? 0 : lines.number() - 1;
}

}  // namespace pelvaro::operators
