// Runs a piece of a test in a process of its own, so that the test outlives a crash in it. Where the system has no such
// processes it runs in this one.
#pragma once

#include <functional>
#include <string>

namespace pelvaro {

struct ChildsEnd {
  bool whole = false;  // it came to its end
  std::string said;    // what the piece gave; of one that crashed all that it printed
};

// `seconds` is the longest that it may take.
ChildsEnd inChild(const std::function<std::string()>& piece, unsigned seconds);

// Whether there are such processes.
bool childrenCanCrash();

}  // namespace pelvaro
