#include "input.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <vector>

#include "window.h"

namespace input {
namespace {

struct NamedKey {
  const char* name;
  WORD key;
  bool extended;
};

const NamedKey namedKeys[] = {
    {"enter", VK_RETURN, false}, {"esc", VK_ESCAPE, false},   {"tab", VK_TAB, false},   {"space", VK_SPACE, false},
    {"up", VK_UP, true},         {"down", VK_DOWN, true},     {"left", VK_LEFT, true},  {"right", VK_RIGHT, true},
    {"home", VK_HOME, true},     {"end", VK_END, true},       {"pgup", VK_PRIOR, true}, {"pgdn", VK_NEXT, true},
    {"delete", VK_DELETE, true}, {"insert", VK_INSERT, true}, {"back", VK_BACK, false}, {"apps", VK_APPS, true},
    {"ctrl", VK_CONTROL, false}, {"shift", VK_SHIFT, false},  {"alt", VK_MENU, false},  {"f1", VK_F1, false},
    {"f2", VK_F2, false},        {"f3", VK_F3, false},        {"f4", VK_F4, false},     {"f5", VK_F5, false},
    {"f6", VK_F6, false},        {"f7", VK_F7, false},        {"f8", VK_F8, false},     {"f9", VK_F9, false},
    {"f10", VK_F10, false},      {"f11", VK_F11, false},      {"f12", VK_F12, false},
};

void send(INPUT& event) {
  if (SendInput(1, &event, sizeof event) != 1) throw Refused("the input is refused");
}

void mouse(DWORD flags, DWORD data = 0, DWORD time = 0) {
  INPUT event = {};
  event.type = INPUT_MOUSE;
  event.mi.dwFlags = flags;
  event.mi.mouseData = data;
  event.mi.time = time;  // of the event, for the system's own look at the clock 0
  send(event);
}

void key(WORD virtualKey, bool extended, bool up) {
  INPUT event = {};
  event.type = INPUT_KEYBOARD;
  event.ki.wVk = virtualKey;
  event.ki.wScan = static_cast<WORD>(MapVirtualKeyA(virtualKey, 0));
  event.ki.dwFlags = (extended ? KEYEVENTF_EXTENDEDKEY : 0) | (up ? KEYEVENTF_KEYUP : 0);
  send(event);
}

NamedKey lookUp(const std::string& name) {
  for (const NamedKey& known : namedKeys) {
    if (name == known.name) return known;
  }
  SHORT code = name.size() == 1 ? VkKeyScanA(name[0]) : static_cast<SHORT>(-1);
  if (code == -1) throw Refused("no key is named " + name);
  return {"", static_cast<WORD>(code & 0xFF), false};
}

// What the keyboard cannot say comes in as a character of its own.
void character(char c) {
  wchar_t wide = 0;
  MultiByteToWideChar(CP_ACP, 0, &c, 1, &wide, 1);
  for (DWORD up : {0ul, static_cast<DWORD>(KEYEVENTF_KEYUP)}) {
    INPUT event = {};
    event.type = INPUT_KEYBOARD;
    event.ki.wScan = wide;
    event.ki.dwFlags = KEYEVENTF_UNICODE | up;
    send(event);
  }
}

DWORD lastClick = 0;
POINT lastPlace = {-1000, -1000};

// Two clicks on one place would be taken for a double click when the second comes early.
void waitUntilSingle(POINT at) {
  if (abs(at.x - lastPlace.x) > GetSystemMetrics(SM_CXDOUBLECLK)) return;
  if (abs(at.y - lastPlace.y) > GetSystemMetrics(SM_CYDOUBLECLK)) return;
  while (GetTickCount() - lastClick <= GetDoubleClickTime()) Sleep(5);
}

// Until the window has answered and stood still for a moment, a second at most.
void waitUntilStill(HWND window) {
  RECT before = {};
  for (int same = 0, i = 0; same < 3 && i < 50 && IsWindow(window); ++i) {
    ask(window, WM_NULL);
    RECT now = screenRect(window);
    same = EqualRect(&before, &now) ? same + 1 : 0;
    before = now;
    Sleep(20);
  }
}

}  // namespace

POINT centre(const RECT& r) { return {(r.left + r.right) / 2, (r.top + r.bottom) / 2}; }

void move(POINT to) {
  const int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
  INPUT event = {};
  event.type = INPUT_MOUSE;
  event.mi.dx = (to.x * 65536 + width - 1) / width;  // rounded up, so that the pixel comes out exactly
  event.mi.dy = (to.y * 65536 + height - 1) / height;
  event.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  send(event);
}

void press(Button button, DWORD time) {
  mouse(button == Button::left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN, 0, time);
}

void release(Button button, DWORD time) {
  mouse(button == Button::left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP, 0, time);
}

void click(POINT at, Button button, int times) {
  waitUntilSingle(at);
  move(at);
  // Of one time, so that a busy machine does not make two single clicks of a double one.
  const DWORD time = GetTickCount();
  for (int i = 0; i < times; ++i) {
    press(button, time);
    release(button, time);
  }
  lastClick = GetTickCount();
  lastPlace = at;
}

void drag(POINT from, POINT to) {
  const int steps = 8;
  move(from);
  HWND dragged = GetAncestor(WindowFromPoint(from), GA_ROOT);
  press(Button::left);
  for (int i = 1; i <= steps; ++i) {
    move({from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps});
    Sleep(15);  // a hand's pace: a window that follows must see the pointer on the way
  }
  // It rests before it lets go. A window manager may have put the window back a little meanwhile, so it stirs once
  // more.
  waitUntilStill(dragged);
  move({to.x + 1, to.y});
  waitUntilStill(dragged);
  move(to);
  waitUntilStill(dragged);
  release(Button::left);
}

void wheel(int notches) { mouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(notches * WHEEL_DELTA)); }

void stroke(const std::string& name) {
  std::vector<NamedKey> keys;
  std::string rest = name;
  for (size_t plus; rest.size() > 1 && (plus = rest.find('+')) != std::string::npos && plus > 0;) {
    keys.push_back(lookUp(rest.substr(0, plus)));
    rest.erase(0, plus + 1);
  }
  keys.push_back(lookUp(rest));
  for (const NamedKey& k : keys) key(k.key, k.extended, false);
  std::for_each(keys.rbegin(), keys.rend(), [](const NamedKey& k) { key(k.key, k.extended, true); });
}

void type(const std::string& text) {
  for (char c : text) {
    SHORT code = VkKeyScanA(c);
    if (code == -1 || (code & 0x600) != 0) {  // no key, or one with control or alt
      character(c);
      continue;
    }
    const bool shift = (code & 0x100) != 0;
    const WORD virtualKey = static_cast<WORD>(code & 0xFF);
    if (shift) key(VK_SHIFT, false, false);
    key(virtualKey, false, false);
    key(virtualKey, false, true);
    if (shift) key(VK_SHIFT, false, true);
  }
}

}  // namespace input
