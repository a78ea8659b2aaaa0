// The user's settings for tests, planted; what is saved is journalled.
#pragma once

#include <map>
#include <utility>

#include "base/text.h"
#include "platform/fake/journal.h"
#include "platform/settings.h"

namespace pelvaro::fake {

struct FakeSettings : Settings {
  explicit FakeSettings(Journal& log) : journal(log) {}

  Journal& journal;
  bool broken = false;  // nothing can be stored

  std::string get(const std::string& section, const std::string& key) override {
    const auto found = values_.find({lowered(section), lowered(key)});
    return found == values_.end() ? std::string() : found->second;
  }
  bool save(const std::string& section, const std::string& key, const std::string& value) override {
    journal.add("SaveSetting " + section + "\\" + key + "=" + value);
    if (!broken) plant(section, key, value);
    return !broken;
  }
  void plant(const std::string& section, const std::string& key, const std::string& value) {
    values_[{lowered(section), lowered(key)}] = value;
  }

 private:
  std::map<std::pair<std::string, std::string>, std::string> values_;
};

}  // namespace pelvaro::fake
