// The colour scheme that every form applies at load, and the guard that keeps its text readable.
#pragma once

#include "platform/control_peer.h"

namespace pelvaro {

class Control;
class Form;

// The contrast ratio of two colours, 1 to 21 (WCAG 2.1, relative luminance).
double contrastRatio(Colour one, Colour other);

// The system's colour when `text` stays readable on it (4.5 : 1), else the program's pale blue.
Colour readableGround(Colour system, Colour text);

namespace accessary {

// Form, labels, option buttons and check boxes: ground of system colour 19, text 0x800000. Command buttons: ground
// 0xFFFFFF. With a high-contrast scheme the system's window, button and text colours win.
void applyColourScheme(Form& form);

// Enables a text box with its ground white, or disables it with the ground of the system's button faces. With a
// high-contrast scheme the system's window colour stays.
void enableBox(Control& box, bool enabled, FormFactory& screen);

}  // namespace accessary
}  // namespace pelvaro
