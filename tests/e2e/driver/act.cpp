// Commands that act: the mouse, the keyboard, and messages where a test must not depend on either.
#include <windows.h>

#include <commctrl.h>

#include "command.h"
#include "input.h"
#include "list_view.h"
#include "window.h"

namespace {

using input::Button;

POINT point(const Arguments& a, size_t i) { return {number(a[i]), number(a[i + 1])}; }

// "left", "right" or "double"
void clickAs(const std::string& how, POINT where) {
  if (how != "left" && how != "right" && how != "double") throw Refused("click is left, right or double: " + how);
  input::click(where, how == "right" ? Button::right : Button::left, how == "double" ? 2 : 1);
}

Button button(const Arguments& a) { return optional(a, 0, "left") == "right" ? Button::right : Button::left; }

HWND needReachable(const std::string& window, const std::string& name) {
  HWND control = needControl(window, name);
  if (!IsWindowVisible(control)) throw Refused(name + " is not visible in " + window);
  if (IsIconic(GetAncestor(control, GA_ROOT))) throw Refused(window + " is minimised");
  return control;
}

void move(const Arguments& a, Json& answer) { answer.boolean((input::move(point(a, 0)), true)); }

void press(const Arguments& a, Json& answer) { answer.boolean((input::press(button(a)), true)); }

void release(const Arguments& a, Json& answer) { answer.boolean((input::release(button(a)), true)); }

void click(const Arguments& a, Json& answer) {
  clickAs(optional(a, 2, "left"), input::centre(screenRect(needReachable(a[0], a[1]))));
  answer.boolean(true);
}

void clickAt(const Arguments& a, Json& answer) {
  clickAs(optional(a, 2, "left"), point(a, 0));
  answer.boolean(true);
}

void hover(const Arguments& a, Json& answer) {
  POINT p = input::centre(screenRect(needReachable(a[0], a[1])));
  input::move({p.x - 2, p.y});
  input::move(p);
  answer.boolean(true);
}

void drag(const Arguments& a, Json& answer) {
  input::drag(point(a, 0), point(a, 2));
  answer.boolean(true);
}

void dragBy(const Arguments& a, Json& answer) {
  POINT from = input::centre(screenRect(needReachable(a[0], a[1]))), by = point(a, 2);
  input::drag(from, {from.x + by.x, from.y + by.y});
  answer.boolean(true);
}

void wheel(const Arguments& a, Json& answer) { answer.boolean((input::wheel(number(a[0])), true)); }

void keys(const Arguments& a, Json& answer) {
  for (const std::string& name : a) input::stroke(name);
  answer.boolean(true);
}

void type(const Arguments& a, Json& answer) { answer.boolean((input::type(a[0]), true)); }

void listClick(const Arguments& a, Json& answer) {
  RECT r = list_view::rowRect(needReachable(a[0], a[1]), number(a[2]));
  clickAs(optional(a, 3, "left"), {r.left + 12 < r.right ? r.left + 12 : r.left + 2, (r.top + r.bottom) / 2});
  answer.boolean(true);
}

void listSelect(const Arguments& a, Json& answer) {
  HWND view = needControl(a[0], a[1]);
  list_view::select(view, number(a[2]));
  answer.number(list_view::selectedRow(view));
}

// A choice as a user makes it, told to the owner of the box as well.
void comboSelect(const Arguments& a, Json& answer) {
  HWND box = needControl(a[0], a[1]), owner = GetParent(box);
  ask(box, CB_SETCURSEL, static_cast<WPARAM>(number(a[2])));
  PostMessageA(owner, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(box), CBN_SELCHANGE), reinterpret_cast<LPARAM>(box));
  answer.number(ask(box, CB_GETCURSEL));
}

// Posted: a handler may open a message box, and a sent message would wait for its end.
void push(const Arguments& a, Json& answer) { answer.boolean(PostMessageA(needControl(a[0], a[1]), BM_CLICK, 0, 0)); }

void setText(const Arguments& a, Json& answer) {
  answer.number(ask(needControl(a[0], a[1]), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(a[2].c_str())));
}

WPARAM word(const Arguments& a, size_t i) { return static_cast<WPARAM>(number(optional(a, i, "0"))); }

void post(const Arguments& a, Json& answer) {
  HWND control = needControl(a[0], a[1]);
  answer.boolean(PostMessageA(control, static_cast<UINT>(number(a[2])), word(a, 3), static_cast<LPARAM>(word(a, 4))));
}

void sendNow(const Arguments& a, Json& answer) {
  HWND control = needControl(a[0], a[1]);
  answer.number(ask(control, static_cast<UINT>(number(a[2])), word(a, 3), static_cast<LPARAM>(word(a, 4))));
}

// Presses a button of the message box in front, by its number: 1 OK, 2 Cancel, 4 Retry, 6 Yes, 7 No.
void answerBox(const Arguments& a, Json& answer) {
  for (HWND box : topLevels("#32770")) {
    if (!IsWindowVisible(box) || !IsWindowEnabled(box)) continue;
    HWND pushed = GetDlgItem(box, number(a[0]));
    if (!pushed) throw Refused("the box \"" + windowText(box) + "\" has no button " + a[0]);
    answer.boolean(PostMessageA(pushed, BM_CLICK, 0, 0));
    return;
  }
  throw Refused("no message box is open");
}

void activate(const Arguments& a, Json& answer) { answer.boolean(SetForegroundWindow(needWindow(a[0]))); }

void close(const Arguments& a, Json& answer) { answer.boolean(PostMessageA(needWindow(a[0]), WM_CLOSE, 0, 0)); }

const Command table[] = {
    {"move", "X Y", 2, move},
    {"press", "[left|right]", 0, press},
    {"release", "[left|right]", 0, release},
    {"click", "WINDOW CONTROL [left|right|double]", 2, click},
    {"click-at", "X Y [left|right|double]", 2, clickAt},
    {"hover", "WINDOW CONTROL", 2, hover},
    {"drag", "X Y TO-X TO-Y", 4, drag},
    {"drag-by", "WINDOW CONTROL DX DY", 4, dragBy},
    {"wheel", "NOTCHES", 1, wheel},
    {"keys", "KEY...", 1, keys},
    {"type", "TEXT", 1, type},
    {"list-click", "WINDOW CONTROL ROW [left|right|double]", 3, listClick},
    {"list-select", "WINDOW CONTROL ROW", 3, listSelect},
    {"combo-select", "WINDOW CONTROL ROW", 3, comboSelect},
    {"push", "WINDOW CONTROL", 2, push},
    {"set-text", "WINDOW CONTROL TEXT", 3, setText},
    {"post", "WINDOW CONTROL MESSAGE [WPARAM] [LPARAM]", 3, post},
    {"send", "WINDOW CONTROL MESSAGE [WPARAM] [LPARAM]", 3, sendNow},
    {"answer", "BUTTON", 1, answerBox},
    {"activate", "WINDOW", 1, activate},
    {"close", "WINDOW", 1, close},
};

}  // namespace

std::span<const Command> actCommands() { return table; }
