// frmDial: the hidden form that owns a dial. Its window receives the service's notifications while it is loaded.
#pragma once

#include <string>

#include "dialer/asyndial.h"
#include "dialer/dial_context.h"

namespace pelvaro {

class frmDial {
 public:
  explicit frmDial(DialContext& context) : context_(context), hook_(context, *this) {}
  ~frmDial() { unload(); }
  frmDial(const frmDial&) = delete;
  frmDial& operator=(const frmDial&) = delete;

  // Makes the hidden window and hooks it; does nothing when that is done.
  void load();
  // Removes the hook and destroys the window; the two members below keep their values.
  void unload();
  bool loaded() const { return window_ != 0; }

  // Starts the dial of an entry and returns at once. Gives the connection's handle: 0 when the entry's saved
  // parameters cannot be read. The user name, the password and the name that is dialed come from the screen, read
  // after pending events have run; `entryName` names the saved parameters.
  RasHandle VBAsyncronousDial(const char* phonebook, const std::string& entryName);

  RasHandle lngHConn = 0;        // the connection of the last dial
  std::uint32_t lastResult = 0;  // of the last RasDialA

 private:
  // The window's handle; an unloaded form is loaded first.
  WindowHandle window();

  DialContext& context_;
  asyndial::RasDialEventHook hook_;
  WindowHandle window_ = 0;
};

}  // namespace pelvaro
