// Any bytes as the system's table of interfaces, with any sizes and results, any text as a number that a user types and
// as the system's way of grouping digits. Nothing may be read outside the table; what the figures say must follow from
// it; a number is taken or overflows; grouping adds separators and nothing else.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "base/runtime_error.h"
#include "input.h"
#include "monitor/limits.h"
#include "monitor/traffic.h"
#include "platform/if_table_layout.h"

namespace {

using namespace pelvaro;

// Hands the input over as the table, with its first bytes as what the calls say.
struct AnyTable : InterfaceTable {
  ConstBytes bytes;
  std::uint32_t result = 0, size = 0;
  std::uint32_t getIfTable(void* table, std::uint32_t* given, bool) override {
    if (table) std::memcpy(table, bytes.data(), std::min<std::size_t>(*given, bytes.size()));
    *given = size;
    return result;
  }
};

// A whole text is a number that fits, or the run-time error of what is wrong with it.
void checkWhole(std::string_view text) {
  try {
    const int byte = toByte(text);
    check(toInt16(text) == byte);
  } catch (const RuntimeError& error) {
    check(error.number() == 13 || error.number() == 6);
  }
}

// Only separators are added to a number's digits.
void checkGrouping(std::int32_t number, std::string_view groups) {
  const std::string plain = std::to_string(number);
  std::string text = grouped(number, {" ", std::string(groups)});
  check(grouped(number, {"", std::string(groups)}) == plain);
  text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
  check(text == plain);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t length) {
  const ConstBytes input(data, length);
  AnyTable table;
  table.result = get32(input, 0) % 4 == 0 ? 5 : 0;
  // Sizes that nobody believes; those between cost time and find nothing.
  constexpr std::uint32_t kHuge = 1 << 25;
  table.size = get32(input, 4) % 5 == 0 ? get32(input, 4) | kHuge : get32(input, 4) % 8192;
  table.bytes = from(input, 8);
  monitor::Traffic traffic(table);
  try {
    traffic.update(true, {});
    traffic.update(false, {});
    if (table.size == 0 || table.result != 0) check(traffic.downloadRate().empty());
    check(traffic.downloadRate().empty() || traffic.downloadRate() == "0 KB/sec.");
  } catch (const RuntimeError&) {
    check(false);  // the same counters twice: no difference, no overflow
  }
  if (const auto octets = monitor::firstEthernet(table.bytes)) {
    check(table.bytes.size() >= if_table::kFirstRow + if_table::kRowSize);
    check(octets->received != octets->sent || get32(table.bytes, 0) > 0);
  }

  const std::string text(asText(input));
  checkGrouping(static_cast<std::int32_t>(get32(input, 0)), asText(from(input, 4)));
  checkWhole(text);
  try {
    const std::int16_t minutes = toInt16(leadingNumber(text));
    check(minutes == 0 || text.find_first_of("123456789") != std::string::npos);
    const std::int32_t seconds = multiply16(minutes, 60);
    const int time = monitor::timeOfDay(seconds);
    check(time >= 0 && time < 86400 && durationText(time).size() == 8);
    check(monitor::reach(seconds, seconds) != monitor::Reach::passed);
  } catch (const RuntimeError& error) {
    check(error.number() == 6);
  }
  return 0;
}
