// The installation of a driver: carries out the steps of a driver code. Used by the driver window.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drivers/actions.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "platform/shutdown.h"

namespace pelvaro::drivers {

// What the installation asks of the system.
struct InstallerSystem {
  Dialogs& dialogs;
  Environment& environment;
  EventLoop& loop;
  Files& files;
  Processes& processes;
  Shutdown& shutdown;
};

class Installer {
 public:
  explicit Installer(const InstallerSystem& system) : system_(system) {}

  // Asks the environment for the three folders below. A variable that is not set counts as empty.
  void findFolders();
  std::string commonPath;   // the shared folder, whose "driver" folder holds the packages
  std::string systemPath;   // where "drivers" lies
  std::string windowsPath;  // where "inf" lies

  // Carries out the steps of a driver code in order; nothing for a code that no model has. Throws run-time error 53
  // when a program cannot be started, and ProgramEnded when the user agrees to a restart.
  void install(std::string_view code);

  // Copies the ".sys" files of a folder into the system's "drivers" folder and, unless `kind` is "sys", its ".inf"
  // files into "inf"; then asks whether to restart. The folder is one behind the shared folder and begins with "\". A
  // ".sys" file that is there already is replaced at the next restart. A missing folder has no files. Throws run-time
  // error 75 or 76 when there is no "drivers" folder and none can be made.
  void CopyDriverFiles(const std::string& folder, std::string_view kind);

  std::vector<std::string> File1;  // the ".inf" files of the last folder, by name
  std::vector<std::string> File2;  // its ".sys" files

 private:
  void carryOut(const Step& step);
  void restartIfAgreed(const char* question);
  bool isNt();

  InstallerSystem system_;
};

}  // namespace pelvaro::drivers
