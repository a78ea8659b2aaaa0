#include "ui/windows.h"

namespace pelvaro {

Windows::Windows(Services& services)
    : form1(*this, services, group_),
      form2(*this, services, group_),
      form3(*this, services, group_),
      form4(*this, services, group_),
      form5(*this, services, group_),
      form6(*this, services, group_),
      driverForm(*this, services, group_),
      recordForm(services, group_),
      statusForm(*this, services, group_),
      dial{.ras = services.ras, .windows = services.dialWindow, .loop = services.loop, .screen = *this},
      dialForm(dial) {}

void Windows::setMode(const std::string& text) {
  mode_ = text;
  if (form5.loaded()) form5.showSharedText();
}

}  // namespace pelvaro
