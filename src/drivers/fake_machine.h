// A machine without Windows for the installer of drivers: its folders, a package, and a user who says No to a restart.
#pragma once

#include <string>

#include "drivers/installer.h"
#include "platform/fake/fake_dialogs.h"
#include "platform/fake/fake_files.h"
#include "platform/fake/fake_processes.h"
#include "platform/fake/fake_system.h"
#include "platform/fake/headless_desktop.h"

namespace pelvaro::drivers {

struct FakeMachine {
  static constexpr const char* kPackage = "C:\\Programs\\corvanti\\common\\driver\\NK-A01\\";  // of the code "06"
  static constexpr const char* kDrivers = "C:\\WINDOWS\\SYSTEM32\\drivers\\";

  fake::Journal journal;
  fake::FakeDialogs dialogs{journal};
  fake::FakeEnvironment environment;
  fake::HeadlessDesktop desktop;
  fake::FakeFiles files{journal};
  fake::FakeProcesses processes{journal};
  fake::FakeShutdown shutdown{journal};
  Installer installer{{dialogs, environment, desktop, files, processes, shutdown}};

  FakeMachine() {
    environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Programs"}};
    files.folders = {"C:\\WINDOWS\\SYSTEM32\\drivers"};
    dialogs.onMessage = [](const std::string&) { return kAnswerNo; };
    installer.findFolders();
  }
};

}  // namespace pelvaro::drivers
