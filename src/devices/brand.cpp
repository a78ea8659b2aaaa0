#include "devices/brand.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace pelvaro::devices {

namespace {

// What a maker's text contains, in lower case, and its brand. The last row that fits counts.
constexpr struct {
  std::string_view part, brand;
} kBrands[] = {
    {"ericsson", "ericsson"}, {"sony", "ericsson"},   {"samsung", "samsung"},    {"motorola", "motorola"},
    {"nokia", "nokia"},       {"siemens", "siemens"}, {"gipsy soft", "siemens"},
};

// One pass from left to right: what comes together when a part is taken out stays.
std::string without(std::string_view text, std::string_view part) {
  std::string result;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part)) {
    result += text.substr(0, at);
    text.remove_prefix(at + part.size());
  }
  return result.append(text);
}

}  // namespace

std::string lettersOnly(std::string_view text) {
  std::string letters;
  std::copy_if(text.begin(), text.end(), std::back_inserter(letters), isSmallLetter);
  return letters;
}

std::string formatBrand(std::string_view text) {
  const std::string low = lowered(text);
  std::string brand(text);
  for (const auto& row : kBrands) {
    if (contains(low, row.part)) brand = row.brand;
  }
  return brand;
}

// Kept on purpose: only "sony" in small letters is taken out. "Sony Ericsson" keeps its first word, which changes
// nothing, and "Sony" alone becomes "ericsson".
std::string brandOfLine(std::string_view line) { return formatBrand(lettersOnly(lowered(without(line, "sony")))); }

bool keyFits(const std::vector<std::string>& modemKeys, const std::string& brand, const std::string& deviceName) {
  if (brand.empty()) return false;
  const std::string device = lowered(deviceName);
  return std::any_of(modemKeys.begin(), modemKeys.end(), [&](const std::string& name) {
    const std::string key = lowered(name);
    return contains(key, brand) && contains(key, device);
  });
}

std::string GetDevicesBrand(const std::vector<std::string>& modemKeys, std::string_view text) {
  const auto found =
      std::find_if(modemKeys.begin(), modemKeys.end(), [text](const std::string& key) { return contains(key, text); });
  return found == modemKeys.end() ? std::string() : lowered(*found);
}

}  // namespace pelvaro::devices
