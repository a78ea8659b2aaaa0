// Other programs: run and waited for, or started only.
#pragma once

#include <cstdint>
#include <string>

#include "platform/processes.h"

namespace pelvaro::modWait {

// Runs a program and waits without limit until it has ended; no event is served meanwhile. Gives its exit code, or -1
// when it could not be started.
std::int32_t RunAndWait(Processes& processes, const std::string& commandLine);

// Starts a program without waiting for it. Throws run-time error 53, "File not found", when it cannot be started.
void start(Processes& processes, const std::string& commandLine, std::uint16_t windowStyle);

// The command line of the system's applet for adding a modem.
constexpr const char* kModemApplet = "RunDLL32 shell32.dll,Control_RunDLL MODEM.CPL,Modems,Add";

}  // namespace pelvaro::modWait
