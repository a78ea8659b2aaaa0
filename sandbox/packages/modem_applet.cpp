// The system's applet for adding a modem: MODEM.CPL with one page, "Modems", that adds a modem without a question.
#include <windows.h>
// Behind windows.h.
#include <cpl.h>

#include <cstring>

#include "packages/practice_program.h"

namespace {

HINSTANCE self = nullptr;

void addModem() {
  pelvaro::line::PracticeProgram program("applet", pelvaro::line::fileOf(self), "COM10 Motorola V3 USB Modem");
  program.run(::GetCommandLineA());
}

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD, LPVOID) {
  self = module;
  return TRUE;
}

LONG CALLBACK CPlApplet(HWND, UINT message, LPARAM, LPARAM answer) {
  switch (message) {
    case CPL_INIT:
    case CPL_GETCOUNT: return 1;  // ready, with one page
    case CPL_INQUIRE:
      *reinterpret_cast<CPLINFO*>(answer) = {CPL_DYNAMIC_RES, CPL_DYNAMIC_RES, CPL_DYNAMIC_RES, 0};
      break;
    case CPL_NEWINQUIRE: {
      auto& page = *reinterpret_cast<NEWCPLINFOA*>(answer);
      page = {};
      page.dwSize = sizeof page;
      std::strcpy(page.szName, "Modems");
      break;
    }
    case CPL_STARTWPARMSA:
    case CPL_STARTWPARMSW: addModem(); return TRUE;
    case CPL_DBLCLK: addModem(); break;
    default: break;
  }
  return 0;
}

}  // extern "C"
