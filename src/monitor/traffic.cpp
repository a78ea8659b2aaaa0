#include "monitor/traffic.h"

#include <algorithm>

#include "platform/if_table_layout.h"

namespace pelvaro::monitor {

namespace {

constexpr double kOctetsPerKb = 1024;
// No machine has so many interfaces; a size beyond it is a table that cannot be read.
constexpr std::uint32_t kLargestTable = 16u << 20;

void rate(std::string& text, double kbPerSecond, const NumberStyle& style) {
  text.assign(grouped(roundedForText(kbPerSecond), style)).append(" KB/sec.");
}

}  // namespace

std::optional<Octets> firstEthernet(ConstBytes table) {
  const std::size_t there = from(table, if_table::kFirstRow).size() / if_table::kRowSize;
  const std::size_t rows = std::min<std::size_t>(get32(table, if_table::kCount), there);
  for (std::size_t i = 0; i < rows; ++i) {
    const ConstBytes row = from(table, if_table::kFirstRow + i * if_table::kRowSize);
    if (get32(row, if_table::kType) != if_table::kEthernet) continue;
    return Octets{get32(row, if_table::kInOctets), get32(row, if_table::kOutOctets)};
  }
  return std::nullopt;
}

// Of the first call only the size is looked at: asked without a buffer it always fails.
std::optional<Octets> Traffic::read() {
  std::uint32_t size = 0;
  interfaces_.getIfTable(nullptr, &size, true);
  if (size < 1 || size > kLargestTable) return std::nullopt;
  if (table_.size() < size) table_.resize(size);
  const std::size_t given = size;
  if (interfaces_.getIfTable(table_.data(), &size, true) != 0) return std::nullopt;
  return firstEthernet(ConstBytes(table_).first(given));
}

void Traffic::Counted::count(std::uint32_t octets, bool takeBaseline) {
  previous = total;
  const double kb = octets / kOctetsPerKb;
  if (takeBaseline) baseline = roundedForText(kb);
  total = roundedForText(kb - baseline);
}

void Traffic::update(bool baseline, const NumberStyle& style) {
  const std::optional<Octets> octets = read();
  if (!octets) return;
  received_.count(octets->received, baseline);
  sent_.count(octets->sent, baseline);
  rate(downloadRate_, received_.difference(), style);
  // Kept on purpose: the upload difference is divided once more, the download difference is not.
  rate(uploadRate_, sent_.difference() / kOctetsPerKb, style);
}

}  // namespace pelvaro::monitor
