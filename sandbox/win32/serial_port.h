// The practice line's serial ports on Windows: COM3, COM10 ... opened as \\.\COMn at 115200 8N1, never waiting.
// Used by practice.cpp only.
#pragma once

#include "port.h"

namespace pelvaro::line {

class SerialPorts : public PortOpener {
 public:
  std::unique_ptr<Port> open(const std::string& name, std::uint32_t& error) override;
};

}  // namespace pelvaro::line
