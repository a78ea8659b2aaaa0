// Files, each read or written as a whole.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

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
};

}  // namespace pelvaro
