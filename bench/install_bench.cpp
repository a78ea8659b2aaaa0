// An installation of a package of twenty files beside the bare calls of the system that it makes, which take no time of
// their own here: what is left is the installer's. Native. Ends with 1 when a limit is missed.
#include <cstdio>

#include "alternating.h"
#include "drivers/fake_machine.h"
#include "limits.h"

namespace {

using namespace pelvaro;

constexpr int kRounds = 31;

struct Machine : drivers::FakeMachine {
  std::vector<std::string> systemFiles, informationFiles;

  Machine() {
    for (char c = 'a'; c < 'a' + 10; ++c) {
      systemFiles.push_back(std::string(1, c) + ".sys");
      informationFiles.push_back(std::string(1, c) + ".inf");
    }
    for (const auto* names : {&systemFiles, &informationFiles}) {
      for (const std::string& name : *names) files.contents[kPackage + name] = "driver";
    }
    for (const std::string& name : systemFiles) files.contents[kDrivers + name] = "in use";
  }
};

}  // namespace

int main() try {
  Machine machine;
  const auto install = [&] {
    machine.installer.install("06");
    machine.journal.take();
  };
  const std::string from = Machine::kPackage, to = Machine::kDrivers;
  const std::string package = from.substr(0, from.size() - 1);
  const auto bare = [&] {
    machine.processes.start("C:\\Programs\\corvanti\\common\\driver\\PL-2303 Driver Installer.exe", kShowNormal);
    machine.files.namesIn(package, ".inf");
    machine.files.namesIn(package, ".sys");
    machine.desktop.yield();
    machine.files.isFolder(to);
    char name[255];
    for (const std::string& file : machine.systemFiles) {
      machine.files.isFile(to + file);
      machine.files.shortPathName(to + file, name, sizeof name);
      machine.files.shortPathName(from + file, name, sizeof name);
      machine.files.moveFileEx("s", "d", 5);
    }
    for (const std::string& file : machine.informationFiles) machine.files.shellCopy(from + file, file, 256);
    machine.dialogs.messageBox("?", kButtonsYesNo);
    machine.processes.start("applet", kShowMinimised);
    machine.journal.take();
  };
  Limits limits;
  const auto [ours, calls] = alternating(kRounds, install, bare);
  limits.judge(ours - calls < 5000,
               {"installing a package of 20 files", text("%.0f us", ours), text("its bare calls %.0f us", calls),
                text("+%.0f us", ours - calls), "below +5000 us"});
  return limits.exitCode();
} catch (...) {
  std::fputs("it broke off\n", stderr);
  return 2;
}
