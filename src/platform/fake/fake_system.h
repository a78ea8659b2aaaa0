// The small services for tests: clock, environment, registry and telephony, planted and journalled.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/fake/journal.h"
#include "platform/registry.h"
#include "platform/telephony.h"

namespace pelvaro::fake {

struct FakeClock : Clock {
  int time = 12 * 3600;  // of day, in seconds
  int secondsOfDay() override { return time; }
};

struct FakeEnvironment : Environment {
  std::string folder = "C:\\Pelvaro";
  NumberStyle style;
  std::string programFolder() override { return folder; }
  NumberStyle numberStyle() override { return style; }
};

struct FakeRegistry : Registry {
  explicit FakeRegistry(Journal& log) : journal(log) {}

  Journal& journal;
  std::vector<std::string> plainView, view64;  // the sub-keys of the one key that is asked for
  bool plainMissing = false, view64Missing = true;
  int open = 0;  // keys that are open now

  RegistryKey openLocalMachine(const std::string& path, bool sixtyFour) override {
    journal.add("RegOpenKey " + path + (sixtyFour ? " 64" : ""));
    if (sixtyFour ? view64Missing : plainMissing) return 0;
    ++open;
    return sixtyFour ? 64 : 32;
  }
  bool enumerateKey(RegistryKey key, std::uint32_t index, std::string& name) override {
    const auto& names = key == 64 ? view64 : plainView;
    if (index >= names.size()) return false;
    name = names[index];
    return true;
  }
  void close(RegistryKey) override { --open; }
};

struct FakeTelephony : Telephony {
  explicit FakeTelephony(Journal& log) : journal(log) {}

  Journal& journal;
  std::int32_t requestMakeCall(const std::string& number, const std::string& application,
                               const std::string& calledParty, const std::string& comment) override {
    journal.add("tapiRequestMakeCall " + number + "|" + application + "|" + calledParty + "|" + comment);
    return 0;
  }
};

}  // namespace pelvaro::fake
