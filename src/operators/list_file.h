// The two files of the operator list in the program's folder, the delivered one and the user's own, and the setting
// that says which of them is loaded. Used by the picker.
#pragma once

#include <string>

#include "operators/operator_list.h"
#include "platform/files.h"
#include "platform/settings.h"

namespace pelvaro::operators {

std::string deliveredPath(const std::string& folder);
std::string ownPath(const std::string& folder);

// The setting that names the list to load; empty when there is none.
std::string chosenPath(Settings& settings);
bool choosePath(Settings& settings, const std::string& path);

// The file to load: the chosen one, or the delivered one when none is chosen or it is not there.
std::string pathToLoad(Settings& settings, Files& files, const std::string& folder);

// Throws run-time error 53 when the file is missing, 75 when it cannot be read, 5 when it is damaged.
OperatorList loadList(Files& files, const std::string& path);

// Writes the user's own file; it is the old one or the new one, never half. The setting is the caller's to change, once
// the user has been told. False when it failed, also for want of memory.
bool saveList(Files& files, RandomSource& random, const std::string& folder, const OperatorList& list);

}  // namespace pelvaro::operators
