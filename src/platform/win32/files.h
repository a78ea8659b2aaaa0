// The system's files.
#pragma once

#include "platform/files.h"

namespace pelvaro::win32 {

struct SystemFiles : Files {
  bool isFile(const std::string& path) override;
  std::optional<std::string> readWhole(const std::string& path) override;
  bool replaceWhole(const std::string& path, std::string_view bytes) override;
};

}  // namespace pelvaro::win32
