#include "operators/list_file.h"

#include <new>

#include "base/runtime_error.h"

namespace pelvaro::operators {

namespace {
constexpr const char* kSection = "Setting";
constexpr const char* kKey = "path";
}  // namespace

std::string deliveredPath(const std::string& folder) { return folder + "\\Default.DAT"; }
std::string ownPath(const std::string& folder) { return folder + "\\Default2.DAT"; }

std::string chosenPath(Settings& settings) { return settings.get(kSection, kKey); }
bool choosePath(Settings& settings, const std::string& path) { return settings.save(kSection, kKey, path); }

std::string pathToLoad(Settings& settings, Files& files, const std::string& folder) {
  std::string chosen = chosenPath(settings);
  return !chosen.empty() && files.isFile(chosen) ? chosen : deliveredPath(folder);
}

OperatorList loadList(Files& files, const std::string& path) {
  const auto bytes = files.readWhole(path);
  if (bytes) return OperatorList(*bytes);
  if (!files.isFile(path)) throw RuntimeError(53, "File not found");
  throw RuntimeError(75, "Path/File access error");
}

bool saveList(Files& files, RandomSource& random, const std::string& folder, const OperatorList& list) {
  try {
    return files.replaceWhole(ownPath(folder), list.bytes(random));
  } catch (const std::bad_alloc&) {  // the file is made in memory first
    return false;
  }
}

}  // namespace pelvaro::operators
