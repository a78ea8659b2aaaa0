#include "dialer/connect.h"

namespace pelvaro::connect {

int ToggleConnection(DialContext& context, frmDial& form) {
  if (context.screen.connectTooltip() == "Connect") {
    const std::string entryName = context.screen.selectedEntry();
    const RasHandle handle = form.VBAsyncronousDial(nullptr, entryName);
    context.screen.setConnectionHandle(handle);
    return context.connected ? 1 : 0;
  }
  HangUpConnection(context, context.screen.connectionHandle());
  context.screen.enableTrafficTimer(false);
  return 0;
}

bool HangUpConnection(DialContext& context, RasHandle handle) {
  const bool done = context.ras.hangUp(handle) == 0;
  context.connected = false;
  return done;
}

}  // namespace pelvaro::connect
