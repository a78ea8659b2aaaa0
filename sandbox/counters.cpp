#include "counters.h"

#include <cstring>

#include "bytes.h"
#include "codes.h"

namespace pelvaro::line {
namespace {

namespace layout = if_table;

// MIB_IF_ADMIN_STATUS_UP and IF_OPER_STATUS_OPERATIONAL.
constexpr std::uint32_t kAdminUp = 1, kOperational = 5;
constexpr std::uint32_t kSpeed = 10000000;  // bits a second

// The rows as they are at first. Those that stay so have octets too: whoever reads the wrong row shows it.
constexpr struct {
  std::string_view description;
  std::uint32_t type, mtu, received, sent;
} kRows[] = {
    {"Loopback", layout::kLoopback, 1520, 7000000, 7000000},
    {"Practice Ethernet", layout::kEthernet, 1500, 0, 0},
    {"Idle Ethernet", layout::kEthernet, 1500, 9000000, 8000000},
};
constexpr std::size_t kMoving = 1;

}  // namespace

Counters::Counters() {
  static_assert(std::size(kRows) == std::tuple_size_v<decltype(rows_)>);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    std::uint8_t* row = rows_[i].data();
    putNumber(row + layout::kIndex, static_cast<std::uint32_t>(i + 1));
    putNumber(row + layout::kType, kRows[i].type);
    putNumber(row + layout::kMtu, kRows[i].mtu);
    putNumber(row + layout::kSpeed, kSpeed);
    putNumber(row + layout::kAdminStatus, kAdminUp);
    putNumber(row + layout::kOperStatus, kOperational);
    putNumber(row + layout::kInOctets, kRows[i].received);
    putNumber(row + layout::kOutOctets, kRows[i].sent);
    putNumber(row + layout::kDescriptionLength, static_cast<std::uint32_t>(kRows[i].description.size()));
    putText(row + layout::kDescription, layout::kRowSize - layout::kDescription, kRows[i].description);
  }
}

void Counters::setScenario(const Scenario& scenario, std::uint64_t nowMs) {
  const std::lock_guard lock(mutex_);
  countUntil(nowMs);
  scenario_ = scenario;
}

void Counters::setUp(bool up, std::uint64_t nowMs) {
  const std::lock_guard lock(mutex_);
  countUntil(nowMs);
  up_ = up;
}

std::uint32_t Counters::getIfTable(void* table, std::uint32_t* size, bool sorted, std::uint64_t nowMs) {
  const std::lock_guard lock(mutex_);
  if (const auto code = takePlanted(scenario_.failures, "getIfTable")) return code;
  if (!size) return kInvalidParameter;
  const std::size_t count = scenario_.ethernet ? rows_.size() : kMoving;
  const auto needed = static_cast<std::uint32_t>(layout::kFirstRow + count * layout::kRowSize);
  if (!table || *size < needed) {
    *size = needed;
    return kInsufficientBuffer;
  }
  countUntil(nowMs);
  putNumber(rows_[kMoving].data() + layout::kInOctets, scenario_.receivedAtStart + received_.octets);
  putNumber(rows_[kMoving].data() + layout::kOutOctets, scenario_.sentAtStart + sent_.octets);
  auto* to = static_cast<std::uint8_t*>(table);
  putNumber(to + layout::kCount, static_cast<std::uint32_t>(count));
  to += layout::kFirstRow;
  for (std::size_t i = 0; i < count; ++i, to += layout::kRowSize)
    std::memcpy(to, rows_[sorted ? i : count - 1 - i].data(), layout::kRowSize);
  return kSuccess;
}

void Counters::Flow::run(std::uint32_t rate, std::uint64_t milliseconds) {
  const std::uint64_t passed = rate * milliseconds + thousandths;
  octets += static_cast<std::uint32_t>(passed / 1000);
  thousandths = static_cast<std::uint32_t>(passed % 1000);
}

// Who asks may be ahead of who tells: time that has been counted is not counted again.
void Counters::countUntil(std::uint64_t nowMs) {
  if (nowMs <= counted_) return;
  if (up_) {
    received_.run(scenario_.receiveRate, nowMs - counted_);
    sent_.run(scenario_.sendRate, nowMs - counted_);
  }
  counted_ = nowMs;
}

}  // namespace pelvaro::line
