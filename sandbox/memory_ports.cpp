#include "memory_ports.h"

#include <utility>

#include "speech.h"

namespace pelvaro::line {

// What a port's two ends share.
struct MemoryPorts::Cable {
  explicit Cable(PhoneTable table) : phone(std::move(table)), speech(phone.pace()) {}
  Phone phone;
  Speech speech;
  bool plugged = true;
  bool open = false;
};

class MemoryPorts::CablePort : public Port {
 public:
  CablePort(MemoryPorts& ports, std::shared_ptr<Cable> cable) : ports_(ports), cable_(std::move(cable)) {
    cable_->speech.clear();
    cable_->open = true;
  }
  ~CablePort() override { cable_->open = false; }
  CablePort(const CablePort&) = delete;
  CablePort& operator=(const CablePort&) = delete;

  bool write(std::string_view bytes) override {
    if (!cable_->plugged) return false;
    if (bytes.find(kLineDropped) != std::string_view::npos) cable_->speech.clear();
    cable_->speech.add(cable_->phone.feed(bytes));
    return true;
  }
  std::string read() override { return cable_->speech.speaking() ? cable_->speech.take(ports_.now()) : std::string(); }
  bool gone() override { return !cable_->plugged; }

 private:
  MemoryPorts& ports_;
  std::shared_ptr<Cable> cable_;
};

Phone& MemoryPorts::plug(const std::string& port, PhoneTable table) {
  unplug(port);
  auto& cable = cables_[port];
  cable = std::make_shared<Cable>(std::move(table));
  return cable->phone;
}

void MemoryPorts::unplug(const std::string& port) {
  const auto found = cables_.find(port);
  if (found == cables_.end()) return;
  found->second->plugged = false;
  cables_.erase(found);
}

void MemoryPorts::occupy(const std::string& port, bool occupied) {
  if (occupied)
    occupied_.insert(port);
  else
    occupied_.erase(port);
}

void MemoryPorts::say(const std::string& port, std::string_view text) {
  const auto found = cables_.find(port);
  if (found != cables_.end()) found->second->speech.add(found->second->phone.say(text));
}

bool MemoryPorts::canOpen(const std::string& name) const {
  const auto found = cables_.find(name);
  return found != cables_.end() && !found->second->open && !occupied_.contains(name);
}

std::unique_ptr<Port> MemoryPorts::open(const std::string& name, std::uint32_t& error) {
  const auto found = cables_.find(name);
  if (canOpen(name)) return std::make_unique<CablePort>(*this, found->second);
  error = found == cables_.end() ? kDeviceNotFound : kPortNotAvailable;
  return nullptr;
}

}  // namespace pelvaro::line
