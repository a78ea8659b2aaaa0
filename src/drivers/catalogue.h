// The phones that the program carries drivers for: brands, their models and the driver code of each model.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pelvaro::drivers {

// The brands as they are listed; their place in the list, counted from 0, is what settings hold.
std::span<const std::string_view> brands();

// The rows of a brand, "V3x|04": a model, "|" and its driver code, two digits from "01" to "16". In the order of the
// model list, code by code; none for an index that no brand has.
std::vector<std::string> codedRows(int brand);

// The model of a row: all but its last three characters.
std::string_view modelOf(std::string_view row);
// The driver code of a row: what stands between its first "|" and the next one.
std::string_view codeOf(std::string_view row);

}  // namespace pelvaro::drivers
