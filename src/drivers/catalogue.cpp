#include "drivers/catalogue.h"

#include <algorithm>

namespace pelvaro::drivers {

namespace {

constexpr std::string_view kBrands[] = {"Motorola", "Nokia", "Samsung", "Siemens", "Sony Ericsson"};
constexpr std::size_t kCodeLength = 3;  // with its "|"

// The models of one code, divided by blanks. Kept in this order on purpose: a saved choice is a place in the list.
struct Models {
  int brand;
  const char* code;
  std::string_view names;
};

constexpr Models kModels[] = {
    {0, "01", "C975 E398 E550 E1000 V80 V300 V303 V400 V500 V501 V505 V525 V550 V551 V600 V600i V635 V975 V980 V1050"},
    {0, "02", "L6 L7"},
    {0, "03", "C650 U6 V3 V3i V180"},
    {0, "04", "V3x"},
    {0, "05", "C350 V220"},
    {1, "06", "3100 3108 3120 3200 3220 5100 5140 6100 6108 6200 6220 6610 6610i 6800 6810 6820 7200 7210 7250 7250i"},
    {1, "07", "6230"},
    {2, "08",
     "D410 D418 D420 E105 E310 E600 E610 E710 E715 E810 P400 P510 P730 V200 C120 X105 X200 X450 X480 X488 E608 P408 "
     "S300 S307 S308 V205 V206 V208"},
    {2, "09",
     "D480 E100 E330 E330N E630 E700 E800 E820 N620 S500 T400 X100 X460 X600 X620 X640 E108 E638 E708 E808 S508 X108 "
     "X468 X608 X648"},
    {2, "10", "D500 E340 E640 E730 E738 D508"},
    {3, "11", "C65 CF62 M55 MC60 S55 S57 SL55 SL5C S65"},
    {3, "12", "A60 A65"},
    {4, "13", "K600i K608i"},
    {4, "14", "F500i J300i K500i K508i K700i S700i Z1010 Z600 T610 T616 T618 T628 T630 T637 V800 V802 Z800i"},
    {4, "15", "K750i W800i Z520i Z530i"},
    {4, "16", "W550i W810i"},
};

}  // namespace

std::span<const std::string_view> brands() { return kBrands; }

std::vector<std::string> codedRows(int brand) {
  std::vector<std::string> rows;
  for (const Models& models : kModels) {
    if (models.brand != brand) continue;
    for (std::string_view left = models.names; !left.empty();) {
      const std::size_t end = std::min(left.find(' '), left.size());
      rows.push_back(std::string(left.substr(0, end)) + "|" + models.code);
      left.remove_prefix(std::min(end + 1, left.size()));
    }
  }
  return rows;
}

std::string_view modelOf(std::string_view row) { return row.substr(0, row.size() - std::min(row.size(), kCodeLength)); }

std::string_view codeOf(std::string_view row) {
  const std::size_t bar = row.find('|');
  if (bar == std::string_view::npos) return {};
  const std::string_view code = row.substr(bar + 1);
  return code.substr(0, code.find('|'));
}

}  // namespace pelvaro::drivers
