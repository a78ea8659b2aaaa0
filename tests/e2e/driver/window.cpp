#include "window.h"

#include <cstdlib>

namespace {

BOOL CALLBACK gather(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

bool isHandle(const std::string& name) { return name.compare(0, 2, "0x") == 0; }

HWND toHandle(const std::string& name) {
  HWND window = reinterpret_cast<HWND>(std::strtoul(name.c_str(), nullptr, 16));
  return IsWindow(window) ? window : nullptr;
}

void rectangle(Json& json, const RECT& r) {
  json.key("rect").array().number(r.left).number(r.top).number(r.right).number(r.bottom).end(']');
}

std::string handleText(HWND window) {
  char text[16];
  wsprintfA(text, "0x%x", static_cast<unsigned>(reinterpret_cast<ULONG_PTR>(window)));
  return text;
}

}  // namespace

std::string className(HWND window) {
  char name[256] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

std::string controlName(HWND window) {
  char name[256] = "";
  auto atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(GetPropA(window, "ControlName")));
  if (atom != 0) GlobalGetAtomNameA(atom, name, sizeof name);
  return name;
}

LRESULT ask(HWND window, UINT message, WPARAM w, LPARAM l) {
  DWORD_PTR result = 0;
  if (!SendMessageTimeoutA(window, message, w, l, SMTO_ABORTIFHUNG, kAnswerTime, &result))
    throw Refused("no answer from " + className(window) + " " + controlName(window));
  return static_cast<LRESULT>(result);
}

std::string windowText(HWND window) {
  for (auto length = ask(window, WM_GETTEXTLENGTH);; length = 2 * length + 64) {
    // With room to spare: a text that has grown since it was measured fills the block and is asked for again.
    std::string text(static_cast<size_t>(length < 0 ? 0 : length) + 16, '\0');
    const auto got = ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    if (got + 1 >= static_cast<LRESULT>(text.size())) continue;
    text.resize(static_cast<size_t>(got < 0 ? 0 : got));
    return text;
  }
}

RECT screenRect(HWND window) {
  RECT r = {};
  GetWindowRect(window, &r);
  return r;
}

bool isGone(HWND window) { return !IsWindow(window) || !IsWindowVisible(window); }

std::vector<HWND> topLevels(const std::string& classPrefix) {
  std::vector<HWND> all, some;
  EnumWindows(gather, reinterpret_cast<LPARAM>(&all));
  for (HWND window : all) {
    if (className(window).compare(0, classPrefix.size(), classPrefix) == 0) some.push_back(window);
  }
  return some;
}

std::vector<HWND> childrenOf(HWND window) {
  std::vector<HWND> all;
  EnumChildWindows(window, gather, reinterpret_cast<LPARAM>(&all));
  return all;
}

HWND findWindow(const std::string& window) {
  if (isHandle(window)) return toHandle(window);
  HWND hidden = nullptr;
  for (HWND candidate : topLevels(window)) {
    if (lstrcmpiA(className(candidate).c_str(), window.c_str()) != 0) continue;
    if (IsWindowVisible(candidate)) return candidate;
    if (!hidden) hidden = candidate;
  }
  return hidden;
}

HWND needWindow(const std::string& window) {
  HWND found = findWindow(window);
  if (!found) throw Refused("no window " + window);
  return found;
}

HWND findControl(HWND window, const std::string& control) {
  if (control.empty()) return window;
  if (isHandle(control)) return toHandle(control);
  for (HWND child : childrenOf(window)) {
    if (control[0] == '#' ? GetDlgCtrlID(child) == std::atoi(control.c_str() + 1) : controlName(child) == control)
      return child;
  }
  return nullptr;
}

HWND needControl(const std::string& window, const std::string& control) {
  HWND found = findControl(needWindow(window), control);
  if (!found) throw Refused("no control " + control + " in " + window);
  return found;
}

void describe(Json& json, HWND window) {
  json.object().key("handle").text(handleText(window)).key("class").text(className(window));
  json.key("name").text(controlName(window)).key("id").number(GetDlgCtrlID(window));
  json.key("text").text(windowText(window));
  json.key("visible").boolean(IsWindowVisible(window)).key("enabled").boolean(IsWindowEnabled(window));
  rectangle(json, screenRect(window));
  json.key("style").number(static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)));
  json.key("parent").text(controlName(GetParent(window))).end('}');
}

void describeTop(Json& json, HWND window) {
  HWND owner = GetWindow(window, GW_OWNER);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  json.object().key("handle").text(handleText(window)).key("class").text(className(window));
  json.key("title").text(windowText(window)).key("process").number(process);
  json.key("visible").boolean(IsWindowVisible(window)).key("enabled").boolean(IsWindowEnabled(window));
  json.key("minimised").boolean(IsIconic(window)).key("foreground").boolean(GetForegroundWindow() == window);
  rectangle(json, screenRect(window));
  json.key("owner").text(owner ? className(owner) : "").end('}');
}
