// The system's files.
#pragma once

#include "platform/files.h"

namespace pelvaro::win32 {

struct SystemFiles : Files {
  bool isFile(const std::string& path) override;
  std::optional<std::string> readWhole(const std::string& path) override;
  bool replaceWhole(const std::string& path, std::string_view bytes) override;
  bool isFolder(const std::string& path) override;
  bool makeFolder(const std::string& path) override;
  std::vector<std::string> namesIn(const std::string& folder, const std::string& ending) override;
  void shellCopy(const std::string& from, const std::string& to, std::uint32_t flags) override;
  std::size_t shortPathName(const std::string& path, char* buffer, std::size_t size) override;
  bool moveFileEx(const std::string& from, const std::string& to, std::uint32_t flags) override;
};

}  // namespace pelvaro::win32
