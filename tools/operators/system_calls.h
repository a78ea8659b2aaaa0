// What every system does in its own way. One side for each.
#pragma once

#include <string>

// Standard input and output as bytes: nothing is translated on the way.
void useByteStreams();
// Gives a file another's name, in its place when there is one. False when that failed.
bool moveOver(const std::string& from, const std::string& to);
