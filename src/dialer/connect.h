// The one way in for connecting and disconnecting, used by the credentials prompt and the splash.
#pragma once

#include "dialer/dial_context.h"
#include "dialer/dial_form.h"

namespace pelvaro::connect {

// Dials the selected connection when the connect image's tooltip is exactly "Connect", else hangs the current one up.
// Gives 1 when a dial was started and accepted, otherwise 0.
int ToggleConnection(DialContext& context, frmDial& form);

// Hangs the connection up. Gives whether the service did.
bool HangUpConnection(DialContext& context, RasHandle handle);

}  // namespace pelvaro::connect
