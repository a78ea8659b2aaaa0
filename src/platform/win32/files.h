// The system's files.
#pragma once

#include "platform/files.h"
#include "platform/win32/event_loop.h"

namespace pelvaro::win32 {

class SystemFiles : public Files {
 public:
  // With the loop that tells whether the program is ending; without one it never is.
  explicit SystemFiles(const MessageLoop* loop = nullptr) : loop_(loop) {}

  bool isFile(const std::string& path) override;
  std::optional<std::string> readWhole(const std::string& path) override;
  bool replaceWhole(const std::string& path, std::string_view bytes) override;
  bool isFolder(const std::string& path) override;
  bool makeFolder(const std::string& path) override;
  std::vector<std::string> namesIn(const std::string& folder, const std::string& ending) override;
  void shellCopy(const std::string& from, const std::string& to, std::uint32_t flags) override;
  std::size_t shortPathName(const std::string& path, char* buffer, std::size_t size) override;
  bool moveFileEx(const std::string& from, const std::string& to, std::uint32_t flags) override;

 private:
  const MessageLoop* loop_;
};

}  // namespace pelvaro::win32
