// The user's settings: texts, by section and key. The case of sections and keys does not count.
#pragma once

#include <cstddef>
#include <string>

namespace pelvaro {

// A longer text counts as absent: half a path would be another path.
constexpr std::size_t kLongestSetting = 4096;

struct Settings {
  virtual ~Settings() = default;
  // The text of a setting, up to its first NUL; empty when there is none.
  virtual std::string get(const std::string& section, const std::string& key) = 0;
  // False when it could not be stored.
  virtual bool save(const std::string& section, const std::string& key, const std::string& value) = 0;
};

}  // namespace pelvaro
