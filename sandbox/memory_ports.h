// Serial ports in memory with a simulated phone on each: the practice line without cables, ports or threads.
// Used by the line's own tests and by whole-program tests.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "phone.h"
#include "port.h"

namespace pelvaro::line {

class MemoryPorts : public PortOpener {
 public:
  // Puts a phone on a port ("COM5"), in place of the one before. It stays valid until the port gets another one.
  Phone& plug(const std::string& port, PhoneTable table = {});
  // Pulls the cable: an open port is gone from now on, and opening gives 797.
  void unplug(const std::string& port);
  // Lets opening fail with 633, as if another program had the port; false frees it.
  void occupy(const std::string& port, bool occupied);
  // Lets the phone say something of its own accord.
  void say(const std::string& port, std::string_view text);

  std::unique_ptr<Port> open(const std::string& name, std::uint32_t& error) override;

 private:
  // What a port's two ends share.
  struct Cable {
    Phone phone;
    std::string said;  // by the phone, not read yet
    bool plugged = true;
  };
  class CablePort;

  std::map<std::string, std::shared_ptr<Cable>> cables_;
  std::map<std::string, bool> occupied_;
};

}  // namespace pelvaro::line
