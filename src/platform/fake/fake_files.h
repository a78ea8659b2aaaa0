// Files in memory for tests, with planted contents and failures; reads and replacements are journalled.
#pragma once

#include <map>
#include <set>

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
};

}  // namespace pelvaro::fake
