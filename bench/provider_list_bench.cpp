// Loading the delivered operator list and listing a country, beside parsing the XML provider list that its data comes
// from with libxml2. Native. Ends with 1 when a limit is missed.
//   provider_list_bench time LIST XML    the times of both
//   provider_list_bench list LIST        one of them once, inside listCountry ...
//   provider_list_bench xml XML          ... or parseProviders, for a count of instructions
#include <libxml/parser.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "alternating.h"
#include "limits.h"
#include "operators/operator_list.h"

namespace {

constexpr const char* kCountry = "Germany";
constexpr int kRounds = 9;

}  // namespace

// Both read their file. Each is a function with a plain name, so that the count can be told to begin and end there.
extern "C" {

// How many fields of the country's records hold something: all are looked at. 0 when something is wrong.
[[gnu::noinline]] std::size_t listCountry(const char* path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  std::string bytes(file ? static_cast<std::size_t>(file.tellg()) : 0, '\0');
  file.seekg(0);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  const pelvaro::operators::OperatorList list(bytes);
  std::size_t filled = 0;
  if (list.places().empty()) return 0;
  for (const std::size_t row : list.rowsOf(kCountry)) {
    for (const auto field : list.record(row).fields) filled += field.empty() ? 0 : 1;
  }
  return filled;
}

// 1 when the file was parsed.
[[gnu::noinline]] std::size_t parseProviders(const char* path) {
  xmlDoc* const document = xmlReadFile(path, nullptr, XML_PARSE_NONET);
  if (!document) return 0;
  xmlFreeDoc(document);
  return 1;
}

}  // extern "C"

int main(int count, char** arguments) {
  using namespace pelvaro;
  const std::string what = count > 2 ? arguments[1] : "";
  if (what == "list" && count == 3) return listCountry(arguments[2]) > 0 ? 0 : 1;
  if (what == "xml" && count == 3) return parseProviders(arguments[2]) > 0 ? 0 : 1;
  if (what != "time" || count != 4)
    return std::fprintf(stderr, "usage: provider_list_bench time LIST XML | list LIST | xml XML\n"), 2;
  Limits limits;
  bool all = true;
  const auto [list, xml] = alternating(
      kRounds, [&] { all = listCountry(arguments[2]) > 0 && all; },
      [&] { all = parseProviders(arguments[3]) > 0 && all; });
  limits.judge(all && list / xml <= 0.100, {"operator list loaded and a country listed", text("%.0f us", list),
                                            text("provider list's XML parsed %.0f us", xml), text("%.3f", list / xml),
                                            all ? "ratio at most 0.100" : "all done"});
  return limits.exitCode();
}
