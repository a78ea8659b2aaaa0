// Files in memory for tests, with planted contents and failures. All but the questions what is there is journalled.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "base/text.h"
#include "platform/event_loop.h"
#include "platform/fake/journal.h"
#include "platform/files.h"

namespace pelvaro::fake {

struct FakeFiles : Files {
  explicit FakeFiles(Journal& log) : journal(log) {}

  Journal& journal;
  std::map<std::string, std::string> contents;          // by path, case included
  std::set<std::string> folders, readOnly, unreadable;  // paths
  bool diskFull = false;

  bool isFile(const std::string& path) override { return contents.count(path) > 0; }
  std::optional<std::string> readWhole(const std::string& path) override {
    journal.add("ReadFile " + path);
    const auto file = contents.find(path);
    if (file == contents.end() || unreadable.count(path) || file->second.size() > kLargestFile) return std::nullopt;
    return file->second;
  }
  bool replaceWhole(const std::string& path, std::string_view bytes) override {
    journal.add("ReplaceFile " + path);
    if (diskFull || folders.count(path) || readOnly.count(path)) return false;
    contents[path] = bytes;
    return true;
  }

  bool noNewFolders = false;
  std::function<void()> onCopy;    // what happens while the shell asks
  std::function<bool()> ended;     // whether the program was ended meanwhile
  std::set<std::string> nameless;  // paths that the system has no short name for

  bool isFolder(const std::string& path) override { return folders.count(withoutSlash(path)) > 0; }
  bool makeFolder(const std::string& path) override {
    journal.add("CreateDirectory " + path);
    return !noNewFolders && folders.insert(withoutSlash(path)).second;
  }
  std::vector<std::string> namesIn(const std::string& folder, const std::string& ending) override {
    journal.add("FindFiles " + folder + "\\*" + ending);
    std::vector<std::string> names;
    for (const auto& [path, bytes] : contents) {
      const auto slash = path.rfind('\\');
      if (path.substr(0, slash) == folder && lowered(path).ends_with(ending)) names.push_back(path.substr(slash + 1));
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return lowered(a) < lowered(b); });
    return names;
  }
  void shellCopy(const std::string& from, const std::string& to, std::uint32_t flags) override {
    journal.add("SHFileOperation copy " + std::to_string(flags) + " " + from + " -> " + to);
    if (const auto file = contents.find(from); file != contents.end()) contents[to] = file->second;
    if (onCopy) onCopy();
    if (ended && ended()) throw ProgramEnded{};
  }
  // The short name of "C:\\a\\b" is "C:\\a\\b~1".
  std::size_t shortPathName(const std::string& path, char* buffer, std::size_t size) override {
    journal.add("GetShortPathName " + std::to_string(size) + " " + path);
    if (nameless.count(path) || !contents.count(path)) return 0;
    const std::string name = path + "~1";
    if (name.size() >= size) return name.size() + 1;
    std::copy_n(name.c_str(), name.size() + 1, buffer);
    return name.size();
  }
  bool moveFileEx(const std::string& from, const std::string& to, std::uint32_t flags) override {
    journal.add("MoveFileEx " + std::to_string(flags) + " " + from + " -> " + to);
    return true;
  }

 private:
  static std::string withoutSlash(const std::string& path) {
    return path.ends_with('\\') ? path.substr(0, path.size() - 1) : path;
  }
};

}  // namespace pelvaro::fake
