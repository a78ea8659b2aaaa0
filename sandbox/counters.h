// The practice line's table of network interfaces: a loopback, an Ethernet whose octets move while a connection is up,
// and an idle Ethernet behind it. Told of the connections by DialLine; asked by LineInterfaceTable and by the stand-in
// iphlpapi.dll, from any thread.
#pragma once

#include <array>
#include <cstdint>
#include <mutex>

#include "platform/if_table_layout.h"
#include "scenario.h"

namespace pelvaro::line {

class Counters {
 public:
  Counters();

  // Takes another scenario's rates, start values, rows and failures; what has been counted stays.
  void setScenario(const Scenario& scenario, std::uint64_t nowMs);
  // Octets move while `up`, and stay where they are afterwards.
  void setUp(bool up, std::uint64_t nowMs);
  // Arguments, table and results of the service's function of the same name. `sorted` gives the rows in the order of
  // their indices, otherwise they come the other way round.
  std::uint32_t getIfTable(void* table, std::uint32_t* size, bool sorted, std::uint64_t nowMs);

 private:
  // What has passed in one direction. A started octet is kept, so that it does not matter how often it is counted.
  struct Flow {
    std::uint32_t octets = 0;       // wraps
    std::uint32_t thousandths = 0;  // of the next one
    void run(std::uint32_t rate, std::uint64_t milliseconds);
  };
  using Row = std::array<std::uint8_t, if_table::kRowSize>;

  void countUntil(std::uint64_t nowMs);

  std::mutex mutex_;  // so that asking never waits for what the line does on its ports
  Scenario scenario_;
  bool up_ = false;
  std::uint64_t counted_ = 0;  // until when
  Flow received_, sent_;
  std::array<Row, 3> rows_{};  // laid out once; only the octets of the second one change
};

}  // namespace pelvaro::line
