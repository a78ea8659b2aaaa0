// Files in use: replaced when the system next starts.
#pragma once

#include <string>

#include "platform/environment.h"
#include "platform/event_loop.h"
#include "platform/files.h"

namespace pelvaro::modReplaceFiles {

// The system's own means for it, and the loop that can end the program.
struct System {
  Files& files;
  Environment& environment;
  EventLoop& loop;
};

// Has the file `destination`, which is in use, replaced by `source` when the system next starts; on the older family
// of Windows it is deleted then, by a line in "WinInit.ini". A step that fails is skipped and nothing is said. With
// `endProgram` the program then ends at once.
void ReplaceFileAtRestart(const System& system, const std::string& destination, const std::string& source,
                          bool endProgram);

// The 8.3 form of an existing file's full path, cut at 165 bytes; empty when there is no such file.
std::string GetShortName(Files& files, const std::string& path);

}  // namespace pelvaro::modReplaceFiles
