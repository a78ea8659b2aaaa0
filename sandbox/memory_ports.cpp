#include "memory_ports.h"

#include <utility>

namespace pelvaro::line {

class MemoryPorts::CablePort : public Port {
 public:
  explicit CablePort(std::shared_ptr<Cable> cable) : cable_(std::move(cable)) {}
  bool write(std::string_view bytes) override {
    if (!cable_->plugged) return false;
    if (bytes.find(kLineDropped) != std::string_view::npos) cable_->said.clear();
    cable_->said += cable_->phone.feed(bytes);
    return true;
  }
  std::string read() override { return std::exchange(cable_->said, {}); }
  bool gone() override { return !cable_->plugged; }

 private:
  std::shared_ptr<Cable> cable_;
};

Phone& MemoryPorts::plug(const std::string& port, PhoneTable table) {
  unplug(port);
  auto& cable = cables_[port];
  cable = std::make_shared<Cable>(Cable{Phone(std::move(table)), {}, true});
  return cable->phone;
}

void MemoryPorts::unplug(const std::string& port) {
  const auto found = cables_.find(port);
  if (found == cables_.end()) return;
  found->second->plugged = false;
  cables_.erase(found);
}

void MemoryPorts::occupy(const std::string& port, bool occupied) { occupied_[port] = occupied; }

void MemoryPorts::say(const std::string& port, std::string_view text) {
  const auto found = cables_.find(port);
  if (found != cables_.end()) found->second->said += found->second->phone.say(text);
}

std::unique_ptr<Port> MemoryPorts::open(const std::string& name, std::uint32_t& error) {
  const auto found = cables_.find(name);
  if (found == cables_.end()) {
    error = kDeviceNotFound;
    return nullptr;
  }
  if (occupied_[name]) {
    error = kPortNotAvailable;
    return nullptr;
  }
  return std::make_unique<CablePort>(found->second);
}

}  // namespace pelvaro::line
