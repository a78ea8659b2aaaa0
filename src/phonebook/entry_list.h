// The phonebook's entries and the active connections, as the main window lists and polls them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dial_service.h"

namespace pelvaro {

// The names of the default phonebook's entries, at most the first 256; empty when they cannot be listed.
std::vector<std::string> listEntries(DialService& ras);

// Asks for the active connections again and again without allocating: the buffer is kept.
class ActiveConnections {
 public:
  explicit ActiveConnections(DialService& ras);

  // Whether a connection of exactly this name is up; false for the empty name (nothing is selected) and when the
  // connections cannot be enumerated (more than 256 of them included).
  bool isUp(std::string_view entryName);

 private:
  DialService& ras_;
  std::vector<std::uint8_t> buffer_;
};

}  // namespace pelvaro
