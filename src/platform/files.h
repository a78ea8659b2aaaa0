// Files: read and written as a whole, listed, copied by the shell, moved at the next restart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelvaro {

// A larger file is not read.
constexpr std::size_t kLargestFile = std::size_t{64} << 20;

struct Files {
  virtual ~Files() = default;
  // Whether a file lies at the path: not nothing, not a folder.
  virtual bool isFile(const std::string& path) = 0;
  // The bytes of the file; nothing when it is missing, a folder, not readable or too large.
  virtual std::optional<std::string> readWhole(const std::string& path) = 0;
  // Puts the bytes in the place of the file, or makes it: a new file is written beside it and then takes its place in
  // one step, so that a kill at any moment leaves the old bytes or the new ones. False when that failed (a folder lies
  // there, the file is read-only, the disk is full); then the old file is as it was and nothing is left beside it.
  virtual bool replaceWhole(const std::string& path, std::string_view bytes) = 0;

  // Whether a folder lies at the path; a backslash at its end does not count.
  virtual bool isFolder(const std::string& path) = 0;
  // Makes a folder in one that is there.
  virtual bool makeFolder(const std::string& path) = 0;
  // The names of a folder's files of one kind (".sys"), sorted without regard to case, hidden and system files left
  // out; none when there is no such folder.
  virtual std::vector<std::string> namesIn(const std::string& folder, const std::string& ending) = 0;
  // SHFileOperationA: copies one file, without an owner window. The shell itself asks and reports, and lets events run
  // meanwhile. Throws ProgramEnded when the program was ended then.
  virtual void shellCopy(const std::string& from, const std::string& to, std::uint32_t flags) = 0;
  // GetShortPathNameA: the length of the name, or what room it needs, or 0.
  virtual std::size_t shortPathName(const std::string& path, char* buffer, std::size_t size) = 0;
  // MoveFileExA.
  virtual bool moveFileEx(const std::string& from, const std::string& to, std::uint32_t flags) = 0;
};

}  // namespace pelvaro
