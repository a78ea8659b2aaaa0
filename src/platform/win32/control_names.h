// The name of a control as the code has it, kept on its window for screen readers and test drivers: the property
// "ControlName" holds a global atom.
#pragma once

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

void nameControl(HWND window, const char* name);
// Gives the atom back; to be called before the window goes.
void unnameControl(HWND window);

}  // namespace pelvaro::win32
