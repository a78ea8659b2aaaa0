// Serial ports in memory with a simulated phone on each: the practice line without cables, ports or threads.
// Used by the line's own tests and by whole-program tests.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "phone.h"
#include "port.h"

namespace pelvaro::line {

// Outlives what was opened on it.
class MemoryPorts : public PortOpener {
 public:
  // Puts a phone on a port ("COM5"), in place of the one before. It stays valid until the port is unplugged or gets
  // another one.
  Phone& plug(const std::string& port, PhoneTable table = {});
  // Pulls the cable: an open port is gone from now on, and opening gives 797.
  void unplug(const std::string& port);
  // Lets opening fail with 633, as if another program had the port; false frees it.
  void occupy(const std::string& port, bool occupied);
  // Lets the phone say something of its own accord.
  void say(const std::string& port, std::string_view text);
  // Tells the time in milliseconds, for phones with a pace. Without a clock one passes at every read of such a phone.
  void setClock(std::function<std::uint64_t()> clock) { clock_ = std::move(clock); }

  // Whether opening would succeed: a port can be open only once.
  bool canOpen(const std::string& name) const;
  // What the phone said before is forgotten.
  std::unique_ptr<Port> open(const std::string& name, std::uint32_t& error) override;

 private:
  struct Cable;
  class CablePort;
  std::uint64_t now() { return clock_ ? clock_() : ++reads_; }

  std::map<std::string, std::shared_ptr<Cable>> cables_;
  std::set<std::string> occupied_;
  std::function<std::uint64_t()> clock_;
  std::uint64_t reads_ = 0;
};

}  // namespace pelvaro::line
