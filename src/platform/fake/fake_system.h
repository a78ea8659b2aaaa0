// The small services for tests: clock, environment, registry, shutdown and telephony, planted and journalled.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/fake/journal.h"
#include "platform/registry.h"
#include "platform/shutdown.h"
#include "platform/telephony.h"

namespace pelvaro::fake {

struct FakeClock : Clock {
  int time = 12 * 3600;  // of day, in seconds
  int secondsOfDay() override { return time; }
};

struct FakeEnvironment : Environment {
  std::string folder = "C:\\Pelvaro";
  NumberStyle style;
  std::map<std::string, std::string> variables;  // by name in lower case
  std::string programFolder() override { return folder; }
  NumberStyle numberStyle() override { return style; }
  std::string variable(const std::string& name) override {
    const auto found = variables.find(lowered(name));
    return found == variables.end() ? std::string() : found->second;
  }
};

struct FakeShutdown : Shutdown {
  explicit FakeShutdown(Journal& log) : journal(log) {}

  Journal& journal;
  TokenHandle token = 81;
  std::array<std::uint32_t, 2> luid{19, 0};

  TokenHandle openOwnToken(std::uint32_t access) override {
    journal.add("OpenProcessToken " + std::to_string(access));
    return token;
  }
  bool lookupPrivilege(const std::string& system, const std::string& name,
                       std::array<std::uint32_t, 2>& identifier) override {
    journal.add("LookupPrivilegeValue '" + system + "' " + name);
    identifier = luid;
    return true;
  }
  bool adjustPrivileges(TokenHandle of, bool disableAll, const PrivilegeRecord& record,
                        std::uint32_t bufferLength) override {
    journal.add("AdjustTokenPrivileges " + std::to_string(of) + " " + std::to_string(disableAll) + " " +
                std::to_string(record.count) + ":" + std::to_string(record.identifier[0]) + "," +
                std::to_string(record.identifier[1]) + "," + std::to_string(record.attributes) + " " +
                std::to_string(bufferLength));
    return true;
  }
  bool exitWindows(std::uint32_t flags, std::uint32_t reason) override {
    journal.add("ExitWindowsEx " + std::to_string(flags) + " " + std::to_string(reason));
    return true;
  }
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
