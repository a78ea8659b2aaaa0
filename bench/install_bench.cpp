// An installation of a package of twenty files beside the bare calls of the system that it makes, which take no time of
// their own here: what is left is the installer's. Native. Ends with 1 when a limit is missed.
#include <cstdio>

#include "alternating.h"
#include "drivers/installer.h"
#include "limits.h"
#include "platform/fake/fake_dialogs.h"
#include "platform/fake/fake_files.h"
#include "platform/fake/fake_processes.h"
#include "platform/fake/fake_system.h"
#include "platform/fake/headless_desktop.h"

namespace {

using namespace pelvaro;

constexpr int kRounds = 31;
constexpr const char* kPackage = "C:\\Programs\\corvanti\\common\\driver\\NK-A01";
constexpr const char* kDrivers = "C:\\WINDOWS\\SYSTEM32\\drivers\\";

struct Machine {
  fake::Journal journal;
  fake::FakeDialogs dialogs{journal};
  fake::FakeEnvironment environment;
  fake::HeadlessDesktop desktop;
  fake::FakeFiles files{journal};
  fake::FakeProcesses processes{journal};
  fake::FakeShutdown shutdown{journal};
  std::vector<std::string> systemFiles, informationFiles;

  Machine() {
    environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Programs"}};
    files.folders = {"C:\\WINDOWS\\SYSTEM32\\drivers"};
    for (char c = 'a'; c < 'a' + 10; ++c) {
      systemFiles.push_back(std::string(1, c) + ".sys");
      informationFiles.push_back(std::string(1, c) + ".inf");
    }
    for (const auto* names : {&systemFiles, &informationFiles}) {
      for (const std::string& name : *names) files.contents[std::string(kPackage) + "\\" + name] = "driver";
    }
    for (const std::string& name : systemFiles) files.contents[kDrivers + name] = "in use";
    dialogs.onMessage = [](const std::string&) { return kAnswerNo; };
  }
};

}  // namespace

int main() try {
  Machine machine;
  drivers::Installer installer(
      {machine.dialogs, machine.environment, machine.desktop, machine.files, machine.processes, machine.shutdown});
  installer.findFolders();
  const auto install = [&] {
    installer.install("06");
    machine.journal.take();
  };
  const std::string package = kPackage, from = package + "\\";
  const auto bare = [&] {
    machine.processes.start("C:\\Programs\\corvanti\\common\\driver\\PL-2303 Driver Installer.exe", kShowNormal);
    machine.files.namesIn(package, ".inf");
    machine.files.namesIn(package, ".sys");
    machine.desktop.yield();
    machine.files.isFolder(kDrivers);
    char name[255];
    for (const std::string& file : machine.systemFiles) {
      machine.files.isFile(kDrivers + file);
      machine.files.shortPathName(kDrivers + file, name, sizeof name);
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
