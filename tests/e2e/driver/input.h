// A hand at the mouse and the keyboard: what it does passes through the system's own input.
#pragma once
#include <windows.h>

#include <string>

namespace input {

enum class Button { left, right };

POINT centre(const RECT& r);
void move(POINT to);
void press(Button button, DWORD time = 0);  // the time of the event, 0 for now
void release(Button button, DWORD time = 0);
void click(POINT at, Button button, int times);
void drag(POINT from, POINT to);  // with the left button, in small steps
void wheel(int notches);          // positive: away from the user

// One stroke: "enter", "ctrl+a", "shift+tab", "x". Throws Refused for a name it does not know.
void stroke(const std::string& name);
void type(const std::string& text);

}  // namespace input
