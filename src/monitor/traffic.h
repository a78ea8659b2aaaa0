// The traffic of a connection, from the octet counters of the network interfaces: kilobytes received and sent since the
// baseline, and the rates of the last second. Used by the main window once a second.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/numbers.h"
#include "platform/interface_table.h"

namespace pelvaro::monitor {

// Octet counters of an interface: 32 bits that wrap.
struct Octets {
  std::uint32_t received, sent;
};

// The counters of the first row of type 6 in a table as GetIfTable gives it; nothing when there is none. Kept on
// purpose: the first Ethernet row counts, even an idle one, and no row of another type (a PPP one, say) ever does.
std::optional<Octets> firstEthernet(ConstBytes table);

class Traffic {
 public:
  explicit Traffic(InterfaceTable& interfaces) : interfaces_(interfaces) {}

  // Reads the counters and works every figure out anew; with `baseline` the totals count from now. When the table
  // cannot be read or has no Ethernet row, every figure stays as it is. Rates are grouped as `style` says. Throws
  // run-time error 6 when a difference does not fit 32 bits. Allocates nothing once the table has been seen.
  void update(bool baseline, const NumberStyle& style);

  std::int32_t receivedKb() const { return received_.total; }
  std::int32_t sentKb() const { return sent_.total; }
  // "2,048 KB/sec."; empty before the first success.
  const std::string& downloadRate() const { return downloadRate_; }
  const std::string& uploadRate() const { return uploadRate_; }

 private:
  // One direction, in kilobytes.
  struct Counted {
    std::int32_t baseline = 0, total = 0, previous = 0;
    void count(std::uint32_t octets, bool takeBaseline);
    std::int32_t difference() const { return subtract32(total, previous); }
  };
  std::optional<Octets> read();

  InterfaceTable& interfaces_;
  std::vector<std::uint8_t> table_;
  Counted received_, sent_;
  std::string downloadRate_, uploadRate_;
};

}  // namespace pelvaro::monitor
