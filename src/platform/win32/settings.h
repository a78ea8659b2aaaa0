// The user's settings in the registry: a value of text for each key, under "Software", the program's title, the
// section.
#pragma once

#include "platform/settings.h"

namespace pelvaro::win32 {

struct SystemSettings : Settings {
  std::string get(const std::string& section, const std::string& key) override;
  bool save(const std::string& section, const std::string& key, const std::string& value) override;
};

}  // namespace pelvaro::win32
