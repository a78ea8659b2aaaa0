#include "memory_serial_port.h"

#include "base/runtime_error.h"

namespace pelvaro::line {
namespace {

RuntimeError invalidPort() { return {8002, "Invalid port number"}; }
RuntimeError portInUse() { return {8005, "Port already open"}; }
RuntimeError notOpen() { return {8018, "Operation valid only when the port is open"}; }
RuntimeError cannotRead() { return {8020, "Error reading comm device"}; }
RuntimeError cannotWrite() { return {8020, "Error writing comm device"}; }

}  // namespace

bool MemorySerialPort::canOpen(const std::string& deviceName) {
  constexpr std::string_view kDevices = "\\\\.\\";
  return deviceName.starts_with(kDevices) && ports_.canOpen(deviceName.substr(kDevices.size()));
}

void MemorySerialPort::open(int number, const std::string&) {
  if (port_) throw portInUse();
  std::uint32_t error = kSuccess;
  port_ = ports_.open("COM" + std::to_string(number), error);
  if (!port_) throw error == kPortNotAvailable ? portInUse() : invalidPort();
}

void MemorySerialPort::write(std::string_view text) {
  if (!port_) throw notOpen();
  if (!port_->write(text)) throw cannotWrite();
}

std::string MemorySerialPort::read() {
  if (!port_) throw notOpen();
  if (port_->gone()) throw cannotRead();
  return port_->read();
}

}  // namespace pelvaro::line
