// What screen readers are told of a control. The platform tells them by itself, from the window's class and text and
// from the label before it; where that is not the control's name and role, the program tells them.
// https://learn.microsoft.com/windows/win32/winauto/wm-getobject
#pragma once

#include "platform/win32/control_window.h"

namespace pelvaro::win32 {

// The answer to a client's WM_GETOBJECT for the control itself (OBJID_CLIENT); 0 leaves it to the platform.
LRESULT accessibleAnswer(ControlWindow& control, WPARAM wParam);

}  // namespace pelvaro::win32
