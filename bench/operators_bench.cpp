// The scrambling of the delivered operator list beside a plain pass over its bytes. Native. Ends with 1 when a limit is
// missed.
//   operators_bench LIST
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "alternating.h"
#include "limits.h"
#include "operators/list_lines.h"
#include "operators/mod_encrypt.h"
#include "scalar_pass.h"

namespace {

using namespace pelvaro;
using namespace pelvaro::operators;

constexpr int kRounds = 31;

std::string contents(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string_view> linesOf(std::string_view bytes) {
  std::vector<std::string_view> found;
  for (ListLines lines(bytes); lines.next();) found.push_back(lines.line());
  return found;
}

// What the picker does: a text of its own for every line against one pass over the whole file into a text that is
// there.
void measureScrambling(Limits& limits, const std::string& file) {
  const std::vector<std::string_view> lines = linesOf(file);
  std::vector<std::string> texts;
  texts.reserve(lines.size());
  for (const auto line : lines) texts.push_back(modEncrypt::Unscramble(line));
  std::string passed(file.size(), '\0');
  const auto pass = [&] { scalarPass(file, passed); };
  std::size_t sum = 0;

  const auto [unscrambling, beside] = alternating(
      kRounds,
      [&] {
        for (const auto line : lines) sum += modEncrypt::Unscramble(line).size();
      },
      pass);
  limits.judgeRatio(unscrambling / beside, 3.0,
                    {text("unscrambling the delivered list, %zu bytes", file.size()), text("%.0f us", unscrambling),
                     text("plain pass over memory %.0f us", beside), "", ""});

  SeededRandom random(1);
  const auto [scrambling, besideThat] = alternating(
      kRounds,
      [&] {
        for (const auto& text : texts) sum += modEncrypt::Scramble(text, random).size();
      },
      pass);
  limits.judgeRatio(
      scrambling / besideThat, 5.0,
      {"scrambling it", text("%.0f us", scrambling), text("plain pass over memory %.0f us", besideThat), "", ""});
  if (sum == 0) std::puts("nothing was scrambled");
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return std::fprintf(stderr, "usage: operators_bench LIST\n"), 2;
  Limits limits;
  measureScrambling(limits, contents(arguments[1]));
  return limits.exitCode();
}
