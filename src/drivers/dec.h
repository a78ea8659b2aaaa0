// Restarting the system.
#pragma once

#include "platform/shutdown.h"

namespace pelvaro::dec {

// Gives the program the right to restart the system, as far as the user has it. No result of the system is looked at.
void EnableShutdownPrivilege(Shutdown& shutdown);

// Asks the system to restart. Its answer is not looked at; the caller ends the program right after.
void RestartWindows(Shutdown& shutdown);

}  // namespace pelvaro::dec
