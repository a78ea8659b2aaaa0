// Commands that wait for a condition, with a limit in milliseconds. Reaching the limit is an error that says what was
// there instead.
#include <windows.h>

#include "command.h"
#include "window.h"

namespace {

template <typename Condition>
void waitUntil(const std::string& limit, Json& answer, Condition condition, std::string (*instead)(const Arguments&),
               const Arguments& a) {
  const DWORD begin = GetTickCount(), most = static_cast<DWORD>(number(limit));
  while (!condition()) {
    if (GetTickCount() - begin >= most) throw Refused(instead(a));
    Sleep(5);
  }
  answer.number(GetTickCount() - begin);
}

bool hasState(const std::string& window, const std::string& state) {
  HWND w = findWindow(window);
  if (state == "gone") return !w;
  if (state == "hidden") return !w || !IsWindowVisible(w);
  if (!w) return false;
  if (state == "exists") return true;
  if (state == "visible") return IsWindowVisible(w);
  if (state == "enabled") return IsWindowVisible(w) && IsWindowEnabled(w);
  if (state == "disabled") return !IsWindowEnabled(w);
  if (state == "minimised") return IsIconic(w);
  if (state == "restored") return IsWindowVisible(w) && !IsIconic(w);
  if (state == "foreground") return GetForegroundWindow() == w;
  throw Refused("a window has no state " + state);
}

std::string windowNow(const Arguments& a) {
  HWND w = findWindow(a[0]);
  std::string now = !w ? "gone" : !IsWindowVisible(w) ? "hidden" : IsIconic(w) ? "minimised" : "visible";
  if (w && !IsWindowEnabled(w)) now += ", disabled";
  HWND front = GetForegroundWindow();
  return a[0] + " is not " + a[1] + " but " + now + "; in front: " + (front ? className(front) : "nothing");
}

void waitWindow(const Arguments& a, Json& answer) {
  waitUntil(
      a[2], answer, [&] { return hasState(a[0], a[1]); }, windowNow, a);
}

std::string textNow(const Arguments& a) {
  HWND w = findWindow(a[0]), control = w ? findControl(w, a[1]) : nullptr;
  return "the text of " + a[0] + " " + a[1] + " is not \"" + a[2] + "\" but " +
         (control ? "\"" + windowText(control) + "\"" : "the control is not there");
}

void waitText(const Arguments& a, Json& answer) {
  auto reached = [&] {
    HWND w = findWindow(a[0]), control = w ? findControl(w, a[1]) : nullptr;
    return control && windowText(control) == a[2];
  };
  waitUntil(a[3], answer, reached, textNow, a);
}

std::string controlNow(const Arguments& a) { return a[0] + " " + a[1] + " does not become " + a[2]; }

void waitControl(const Arguments& a, Json& answer) {
  auto reached = [&] {
    HWND w = findWindow(a[0]), control = w ? findControl(w, a[1]) : nullptr;
    if (!control) return a[2] == "hidden";
    if (a[2] == "visible") return IsWindowVisible(control) != FALSE;
    if (a[2] == "hidden") return IsWindowVisible(control) == FALSE;
    if (a[2] == "enabled") return IsWindowEnabled(control) != FALSE;
    if (a[2] == "disabled") return IsWindowEnabled(control) == FALSE;
    throw Refused("a control has no state " + a[2]);
  };
  waitUntil(a[3], answer, reached, controlNow, a);
}

bool visibleOne(const char* windowClass) {
  for (HWND window : topLevels(windowClass)) {
    if (IsWindowVisible(window)) return true;
  }
  return false;
}

std::string shownNow(const Arguments&) {
  HWND front = GetForegroundWindow();
  return std::string("it does not come; in front: ") + (front ? className(front) + " " + windowText(front) : "nothing");
}

// Of a kind of windows without a name: at least one is on the screen, or ("gone") none is.
void waitShown(const char* windowClass, const Arguments& a, Json& answer) {
  const bool wanted = optional(a, 1, "visible") != "gone";
  waitUntil(
      a[0], answer, [&] { return visibleOne(windowClass) == wanted; }, shownNow, a);
}

void waitBox(const Arguments& a, Json& answer) { waitShown("#32770", a, answer); }

void waitMenu(const Arguments& a, Json& answer) { waitShown("#32768", a, answer); }

void waitTooltip(const Arguments& a, Json& answer) { waitShown("tooltips_class32", a, answer); }

const Command table[] = {
    {"wait-window", "WINDOW STATE MS", 3, waitWindow},
    {"wait-text", "WINDOW CONTROL TEXT MS", 4, waitText},
    {"wait-control", "WINDOW CONTROL visible|hidden|enabled|disabled MS", 4, waitControl},
    {"wait-box", "MS [gone]", 1, waitBox},
    {"wait-menu", "MS [gone]", 1, waitMenu},
    {"wait-tooltip", "MS [gone]", 1, waitTooltip},
};

}  // namespace

std::span<const Command> waitCommands() { return table; }
