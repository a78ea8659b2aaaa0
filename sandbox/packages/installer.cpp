// A driver's installer that installs nothing. By its name it is that of the cable or that of a package.
#include <windows.h>

#include "packages/practice_program.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  using pelvaro::line::PracticeProgram;
  const std::string path = pelvaro::line::fileOf(nullptr);
  const bool cable = path.substr(path.rfind('\\') + 1).starts_with("PL-2303");
  PracticeProgram program(cable ? "cable" : "package", path,
                          cable ? "COM8 Siemens S65 USB Modem" : "COM9 Sony Ericsson K700 USB Modem");
  return program.run(::GetCommandLineA());
}
