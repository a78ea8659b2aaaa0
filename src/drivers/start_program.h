// Starting another program without waiting for it. Used by the installer and the connection editor.
#pragma once

#include <cstdint>
#include <string>

#include "platform/processes.h"

namespace pelvaro::drivers {

// The command line of the system's applet for adding a modem.
constexpr const char* kModemApplet = "RunDLL32 shell32.dll,Control_RunDLL MODEM.CPL,Modems,Add";

// Throws run-time error 53, "File not found", when the program cannot be started.
void startProgram(Processes& processes, const std::string& commandLine, std::uint16_t windowStyle);

}  // namespace pelvaro::drivers
