// The scrambling of the delivered operator list beside a plain pass over its bytes, and how the cost of a list grows
// with its records. Native. Ends with 1 when a limit is missed.
//   operators_bench LIST TENTH LARGE     the delivered list, one of 10,000 records, one of 100,000
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
#include "operators/operator_list.h"
#include "scalar_pass.h"

namespace {

using namespace pelvaro;
using namespace pelvaro::operators;

constexpr int kRounds = 31, kRoundsOfLarge = 3;

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
  limits.judge(unscrambling / beside <= 3.0,
               "unscrambling %zu lines, %zu bytes: %.0f us, a plain pass %.0f us, ratio %.2f (at most 3.00)",
               lines.size(), file.size(), unscrambling, beside, unscrambling / beside);

  SeededRandom random(1);
  const auto [scrambling, besideThat] = alternating(
      kRounds,
      [&] {
        for (const auto& text : texts) sum += modEncrypt::Scramble(text, random).size();
      },
      pass);
  limits.judge(scrambling / besideThat <= 5.0,
               "scrambling them: %.0f us, a plain pass %.0f us, ratio %.2f (at most 5.00)", scrambling, besideThat,
               scrambling / besideThat);
  if (sum == 0) std::puts("nothing was scrambled");
}

// A list as the picker takes it: read, its places named, the records of one of them found.
std::size_t load(std::string_view file) {
  const OperatorList list(file);
  const auto places = list.places();
  return places.empty() ? 0 : list.rowsOf(places.back()).size();
}

void measureGrowth(Limits& limits, const std::string& tenth, const std::string& large) {
  std::size_t rows = 0;
  const auto [all, part] = alternating(
      kRoundsOfLarge, [&] { rows += load(large); }, [&] { rows += load(tenth); });
  limits.judge(rows > 0 && all / part <= 11.0,
               "loading %zu records: %.1f ms, %zu records %.2f ms, ratio %.2f (at most 11.00)",
               OperatorList(large).size(), all / 1000, OperatorList(tenth).size(), part / 1000, all / part);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) return std::fprintf(stderr, "usage: operators_bench LIST TENTH LARGE\n"), 2;
  Limits limits;
  measureScrambling(limits, contents(arguments[1]));
  measureGrowth(limits, contents(arguments[2]), contents(arguments[3]));
  return limits.exitCode();
}
