// What the program says instead of starting: its version, or how it is called.
#pragma once

#include <optional>
#include <string_view>

namespace pelvaro::app {

// Answers "/?" and "/version" ("-" and "--" will do too), and anything else that is no word of ours; gives the exit
// code then: 0, or 2 for what it does not know. Nothing when the program is to start. The answer goes to the standard
// output where there is one, else to the console that the program was started from, else into a message box.
std::optional<int> answerCommandLine(std::string_view commandLine);

}  // namespace pelvaro::app
