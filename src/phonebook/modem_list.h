// The list of the system's modem devices, as the connection editor and the driver window show it.
#pragma once

#include <functional>
#include <string>

#include "platform/dial_service.h"
#include "platform/dialogs.h"

namespace pelvaro {

// The editor's say in which modems are listed. Asked anew for every device: the user may change the choice meanwhile.
struct DeviceFilter {
  virtual ~DeviceFilter() = default;
  virtual bool wanted() = 0;  // whether devices are to be validated (the editor's check box)
  virtual bool validateDevice(const std::string& name) = 0;
};

namespace Module1 {

// Calls `add` with the name of every modem device, in the system's order, those that `filter` refuses left out.
// A failing enumeration shows its bare number in a message box and adds nothing.
void FillModemList(DialService& ras, Dialogs& dialogs, DeviceFilter& filter,
                   const std::function<void(const std::string&)>& add);

}  // namespace Module1
}  // namespace pelvaro
