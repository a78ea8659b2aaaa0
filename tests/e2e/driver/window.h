// Windows and controls of another process: finding them by class and control name, describing them.
#pragma once
#include <windows.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "json.h"

// A command that cannot be carried out; its text is the answer.
struct Refused : std::runtime_error {
  using std::runtime_error::runtime_error;
};

std::string className(HWND window);
std::string controlName(HWND window);  // the window property "ControlName"; "" when there is none
std::string windowText(HWND window);   // by WM_GETTEXT, so that controls answer too
RECT screenRect(HWND window);
bool isGone(HWND window);

constexpr UINT kAnswerTime = 10000;  // milliseconds that an answer is waited for

// A message to another process; throws Refused when it does not answer.
LRESULT ask(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0);

std::vector<HWND> topLevels(const std::string& classPrefix);
std::vector<HWND> childrenOf(HWND window);

// WINDOW is a handle ("0x10050") or a class name: a visible window of that class before a hidden one.
HWND findWindow(const std::string& window);  // null when there is none
HWND needWindow(const std::string& window);
// CONTROL is a control name, "#12" a control's number, a handle, or "" for the window itself.
HWND findControl(HWND window, const std::string& control);
HWND needControl(const std::string& window, const std::string& control);

void describe(Json& json, HWND window);     // a control
void describeTop(Json& json, HWND window);  // a top-level window
