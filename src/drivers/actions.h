// What is done to install the driver of each code: a list of steps, which the installer carries out in order.
#pragma once

#include <span>
#include <string_view>

namespace pelvaro::drivers {

enum class Deed {
  startProgram,         // without waiting for it
  copySystemFiles,      // the ".sys" files of a folder
  copyFiles,            // its ".sys" and ".inf" files, and the question whether to restart
  copyFilesOfNt,        // the same, on the NT family of Windows only
  copyFilesOfOthers,    // the same, on other systems only
  runPackageInstaller,  // a program, waited for
  offerRestart,         // the question whether to restart, which asks for the phone afterwards
  tellToPlugIn,
  startModemApplet,  // without waiting for it
};

struct Step {
  Deed deed;
  std::string_view where = {};  // the folder or program, behind the shared folder
};

// The steps of a driver code; none for a code that no model has.
std::span<const Step> stepsOf(std::string_view code);

}  // namespace pelvaro::drivers
