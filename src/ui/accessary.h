// Helpers that several forms share: the popup menu, the manual and the names of the phone modems' driver keys.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/registry.h"
#include "platform/services.h"

namespace pelvaro::accessary {

// Shows the captions as a popup menu at the pointer; one that trims to "-" is a separator. Gives the chosen item's
// identifier, counted from 1, or 0 for none.
std::uint32_t popupMenu(Dialogs& dialogs, const std::vector<std::string>& captions);

// The names of the sub-keys of the machine's Unimodem device-specific key, in order. On a 64-bit system they lie in the
// 64-bit view, which is tried when the plain key gives none.
std::vector<std::string> modemKeyNames(Registry& registry);

// Shows the manual that lies beside the program; where there is none, or nothing to show it with, says so.
void showHelp(Services& services);

}  // namespace pelvaro::accessary
