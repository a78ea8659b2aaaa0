#include "drivers/installer.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "drivers/dec.h"
#include "drivers/mod_replace_files.h"
#include "drivers/mod_wait.h"
#include "drivers/start_program.h"

namespace pelvaro::drivers {

namespace {

constexpr const char* kRestartForPhone =
    "Restart is needed to take effect. Are you sure to restart now? Please connect the phone after restart.";
constexpr const char* kRestartForModem =
    "Restart is needed to take effect. Are you sure to restart now? Please manually add the modem after restart.";
constexpr const char* kPlugIn = "Please plug in the cable now & install the modem.";
constexpr const char* kPackageArguments = " /lm /d /se  /EL /f /sa /Q";  // with its two blanks
constexpr const char* kSystemFilesOnly = "sys";
constexpr std::uint32_t kSimpleProgress = 0x100;  // FOF_SIMPLEPROGRESS

}  // namespace

void Installer::findFolders() {
  Environment& environment = system_.environment;
  windowsPath = environment.variable("windir");
  systemPath = windowsPath + (environment.variable("OS").empty() ? "\\SYSTEM" : "\\SYSTEM32");
  commonPath = environment.variable("ProgramFiles") + "\\corvanti\\common";
}

void Installer::install(std::string_view code) {
  for (const Step& step : stepsOf(code)) carryOut(step);
}

void Installer::carryOut(const Step& step) {
  const std::string where(step.where);
  switch (step.deed) {
    case Deed::startProgram: startProgram(system_.processes, commonPath + where, kShowNormal); break;
    case Deed::copySystemFiles: CopyDriverFiles(where, kSystemFilesOnly); break;
    case Deed::copyFiles: CopyDriverFiles(where, {}); break;
    case Deed::copyFilesOfNt:
      if (isNt()) CopyDriverFiles(where, {});
      break;
    case Deed::copyFilesOfOthers:
      if (!isNt()) CopyDriverFiles(where, {});
      break;
    case Deed::runPackageInstaller:
      // Kept on purpose: the path is not quoted, though it has blanks, and nobody looks at the exit code.
      modWait::RunAndWait(system_.processes, commonPath + where + kPackageArguments);
      break;
    case Deed::offerRestart: restartIfAgreed(kRestartForPhone); break;
    case Deed::tellToPlugIn: system_.dialogs.messageBox(kPlugIn, kButtonsOk); break;
    case Deed::startModemApplet: startProgram(system_.processes, kModemApplet, kShowMinimised); break;
  }
}

bool Installer::isNt() { return system_.environment.variable("OS") == "Windows_NT"; }

void Installer::restartIfAgreed(const char* question) {
  if (system_.dialogs.messageBox(question, kButtonsYesNo) != kAnswerYes) return;
  dec::RestartWindows(system_.shutdown);
  system_.loop.end();
  throw ProgramEnded{};
}

void Installer::CopyDriverFiles(const std::string& folder, std::string_view kind) {
  Files& files = system_.files;
  const std::string package = commonPath + folder;
  const std::string from = package + "\\";
  File1 = files.namesIn(package, ".inf");
  File2 = files.namesIn(package, ".sys");
  // Another installation may begin in the yield and while the shell asks.
  const std::vector<std::string> systemFiles = File2, informationFiles = File1;
  system_.loop.yield();

  const std::string drivers = systemPath + "\\drivers\\";
  if (!files.isFolder(drivers) && !files.makeFolder(drivers)) {
    if (!files.isFolder(systemPath)) throw RuntimeError(76, "Path not found");
    throw RuntimeError(75, "Path/File access error");
  }
  std::uint32_t flags = 0;
  for (const std::string& name : systemFiles) {
    flags = kSimpleProgress;
    const std::string source = from + name;
    if (files.isFile(drivers + name)) {
      modReplaceFiles::ReplaceFileAtRestart({system_.files, system_.environment, system_.loop}, drivers + name, source,
                                            false);
    } else {
      files.shellCopy(source, drivers + name, flags);
    }
  }
  if (kind == kSystemFilesOnly) return;
  // Kept on purpose: the flags are those that the files before have left.
  const std::string inf = windowsPath + "\\inf\\";
  for (const std::string& name : informationFiles) {
    files.shellCopy(from + name, inf + name, flags);
  }
  // The folder alone is looked at, not where it lies.
  restartIfAgreed(contains(lowered(folder), "mt") ? kRestartForPhone : kRestartForModem);
}

}  // namespace pelvaro::drivers
