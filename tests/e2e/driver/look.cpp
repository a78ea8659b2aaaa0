// Commands that only look: windows, controls, lists, the focus, the screen.
#include <windows.h>

#include <commctrl.h>

#include "command.h"
#include "list_view.h"
#include "window.h"

namespace {

void ping(const Arguments&, Json& answer) { answer.text("pong"); }

void windows(const Arguments& a, Json& answer) {
  answer.array();
  for (HWND window : topLevels(optional(a, 0, "Pelvaro."))) describeTop(answer, window);
  answer.end(']');
}

// Message boxes on the screen: the caption, the text, the buttons by number.
void boxes(const Arguments&, Json& answer) {
  answer.array();
  for (HWND box : topLevels("#32770")) {
    if (!IsWindowVisible(box)) continue;
    answer.object().key("caption").text(windowText(box)).key("text");
    HWND text = GetDlgItem(box, 0xFFFF);
    answer.text(text ? windowText(text) : "").key("buttons").array();
    for (HWND child : childrenOf(box)) {
      if (lstrcmpiA(className(child).c_str(), "Button") != 0) continue;
      answer.object().key("id").number(GetDlgCtrlID(child)).key("text").text(windowText(child)).end('}');
    }
    answer.end(']').key("window");
    describeTop(answer, box);
    answer.end('}');
  }
  answer.end(']');
}

void children(const Arguments& a, Json& answer) {
  answer.array();
  for (HWND child : childrenOf(needWindow(a[0]))) describe(answer, child);
  answer.end(']');
}

void control(const Arguments& a, Json& answer) { describe(answer, needControl(a[0], a[1])); }

void text(const Arguments& a, Json& answer) { answer.text(windowText(needControl(a[0], a[1]))); }

void checked(const Arguments& a, Json& answer) { answer.number(ask(needControl(a[0], a[1]), BM_GETCHECK)); }

// Asked in wide characters: the system does not convert the answer of another process's box.
std::string comboItem(HWND box, WPARAM row) {
  auto length = ask(box, CB_GETLBTEXTLEN, row);
  std::wstring wide(static_cast<size_t>(length < 0 ? 0 : length) + 1, L'\0');
  DWORD_PTR got = 0;
  auto where = reinterpret_cast<LPARAM>(wide.data());
  if (!SendMessageTimeoutW(box, CB_GETLBTEXT, row, where, SMTO_ABORTIFHUNG, kAnswerTime, &got))
    throw Refused("no answer");
  const int bytes = WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
  std::string item(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, item.data(), bytes, nullptr, nullptr);
  item.resize(static_cast<size_t>(bytes - 1));
  return item;
}

void combo(const Arguments& a, Json& answer) {
  HWND box = needControl(a[0], a[1]);
  answer.object().key("text").text(windowText(box)).key("selected").number(ask(box, CB_GETCURSEL));
  answer.key("items").array();
  auto count = ask(box, CB_GETCOUNT);
  for (LRESULT i = 0; i < count; ++i) answer.text(comboItem(box, static_cast<WPARAM>(i)));
  answer.end(']').end('}');
}

void describeList(HWND view, int most, Json& answer) {
  const int rows = list_view::rowCount(view), columns = list_view::columnCount(view);
  answer.object().key("count").number(rows).key("columns").number(columns);
  answer.key("selected").number(list_view::selectedRow(view)).key("rows").array();
  for (int row = 0; row < rows && row < most; ++row) {
    answer.array();
    for (int column = 0; column < columns; ++column) answer.text(list_view::itemText(view, row, column));
    answer.end(']');
  }
  answer.end(']').end('}');
}

// A list that becomes shorter while it is described is described again.
void list(const Arguments& a, Json& answer) {
  HWND view = needControl(a[0], a[1]);
  const int most = number(optional(a, 2, "1000"));
  const Json before = answer;
  for (int tries = 1;; ++tries) {
    try {
      return describeList(view, most, answer);
    } catch (const Refused&) {
      if (tries == 10) throw;
      answer = before;
      Sleep(10);
    }
  }
}

void listItem(const Arguments& a, Json& answer) {
  answer.text(list_view::itemText(needControl(a[0], a[1]), number(a[2]), number(optional(a, 3, "0"))));
}

void listRect(const Arguments& a, Json& answer) {
  RECT r = list_view::rowRect(needControl(a[0], a[1]), number(a[2]));
  answer.array().number(r.left).number(r.top).number(r.right).number(r.bottom).end(']');
}

void named(Json& answer, const char* key, HWND window) {
  std::string name;
  for (HWND w = window; w && name.empty(); w = GetAncestor(w, GA_PARENT)) name = controlName(w);
  answer.key(key).text(window ? className(window) : "");
  answer.key((std::string(key) + "Control").c_str()).text(name);
}

// Who has the keyboard. A part of a control (the edit of a combo box) goes by the name of the control.
void focus(const Arguments&, Json& answer) {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  HWND foreground = GetForegroundWindow();
  GetGUIThreadInfo(foreground ? GetWindowThreadProcessId(foreground, nullptr) : 0, &info);
  answer.object().key("foreground").text(foreground ? className(foreground) : "");
  answer.key("active").text(info.hwndActive ? className(info.hwndActive) : "");
  named(answer, "focus", info.hwndFocus);
  named(answer, "capture", info.hwndCapture);
  answer.key("menu").boolean((info.flags & GUI_INMENUMODE) != 0).end('}');
}

void visibleOf(const char* windowClass, Json& answer) {
  answer.array();
  for (HWND window : topLevels(windowClass)) {
    if (IsWindowVisible(window)) describeTop(answer, window);
  }
  answer.end(']');
}

void tooltips(const Arguments&, Json& answer) { visibleOf(TOOLTIPS_CLASSA, answer); }

void menus(const Arguments&, Json& answer) { visibleOf("#32768", answer); }

void pixel(const Arguments& a, Json& answer) {
  HDC screen = GetDC(nullptr);
  COLORREF c = GetPixel(screen, number(a[0]), number(a[1]));
  ReleaseDC(nullptr, screen);
  if (c == CLR_INVALID) throw Refused("no pixel can be read there");
  answer.array().number(GetRValue(c)).number(GetGValue(c)).number(GetBValue(c)).end(']');
}

void systemColour(const Arguments& a, Json& answer) {
  COLORREF c = GetSysColor(number(a[0]));
  answer.array().number(GetRValue(c)).number(GetGValue(c)).number(GetBValue(c)).end(']');
}

void pointer(const Arguments&, Json& answer) {
  POINT p = {};
  GetCursorPos(&p);
  answer.array().number(p.x).number(p.y).end(']');
}

// Which pointer the screen shows: a number that is the same for the same pointer of the same program.
void pointerShape(const Arguments&, Json& answer) {
  CURSORINFO info = {};
  info.cbSize = sizeof info;
  if (!GetCursorInfo(&info)) throw Refused("the pointer cannot be seen");
  answer.number(static_cast<long long>(reinterpret_cast<ULONG_PTR>(info.hCursor)));
}

// What lies under a point of the screen.
void at(const Arguments& a, Json& answer) {
  HWND window = WindowFromPoint({number(a[0]), number(a[1])});
  if (!window) throw Refused("no window there");
  describe(answer, window);
}

const Command table[] = {
    {"ping", "", 0, ping},
    {"windows", "[CLASS-PREFIX]", 0, windows},
    {"boxes", "", 0, boxes},
    {"children", "WINDOW", 1, children},
    {"control", "WINDOW CONTROL", 2, control},
    {"text", "WINDOW CONTROL", 2, text},
    {"checked", "WINDOW CONTROL", 2, checked},
    {"combo", "WINDOW CONTROL", 2, combo},
    {"list", "WINDOW CONTROL [MOST]", 2, list},
    {"list-item", "WINDOW CONTROL ROW [COLUMN]", 3, listItem},
    {"list-rect", "WINDOW CONTROL ROW", 3, listRect},
    {"focus", "", 0, focus},
    {"tooltips", "", 0, tooltips},
    {"menus", "", 0, menus},
    {"pixel", "X Y", 2, pixel},
    {"system-colour", "INDEX", 1, systemColour},
    {"pointer", "", 0, pointer},
    {"pointer-shape", "", 0, pointerShape},
    {"at", "X Y", 2, at},
};

}  // namespace

std::span<const Command> lookCommands() { return table; }
