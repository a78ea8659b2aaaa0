#include "platform/win32/control_window.h"

#include <unordered_map>

#include "platform/win32/accessible_window.h"
#include "platform/win32/control_names.h"

namespace pelvaro::win32 {

namespace {
// Identifiers only tell a control's messages apart; 1 and 2 are taken by Enter and Esc.
constexpr int kFirstIdentifier = 100;
int g_nextIdentifier = kFirstIdentifier;

// The controls that there are, by their windows. Kept here and not on the windows, where every look would ask the
// system; only the user-interface thread comes here.
std::unordered_map<HWND, ControlWindow*>& controls() {
  static std::unordered_map<HWND, ControlWindow*> map;
  return map;
}
}  // namespace

ControlWindow::ControlWindow(const ControlLayout& layout, ControlEvents& events,
                             const ControlSurroundings& surroundings)
    : layout_(layout),
      events_(events),
      form_(surroundings.form),
      formEvents_(surroundings.formEvents),
      metrics_(surroundings.metrics),
      loop_(surroundings.loop),
      tooltips_(surroundings.tooltips),
      text_(layout.caption),
      picture_(layout.picture) {}

ControlWindow::~ControlWindow() {
  // What the tooltip has hooked to the window is given back only with the tool, while the window is there.
  if (window_ && hasTooltip_) tellTooltip(TTM_DELTOOLA, nullptr);
  if (window_) ::DestroyWindow(window_);  // our procedure forgets it at its last message
  if (brush_) ::DeleteObject(brush_);
}

void ControlWindow::create(const char* windowClass, DWORD style) {
  const RECT place = metrics_.scaled(layout_.place);
  // A label sends nothing and needs no identifier.
  const bool silent = layout_.kind == ControlKind::label || layout_.kind == ControlKind::picture;
  if (++g_nextIdentifier > 0x7FFF) g_nextIdentifier = kFirstIdentifier;
  window_ = ::CreateWindowExA(0, windowClass, layout_.caption, WS_CHILD | style, place.left, place.top,
                              place.right - place.left, place.bottom - place.top, form_,
                              reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(silent ? 0 : g_nextIdentifier)),
                              ::GetModuleHandleA(nullptr), nullptr);
  nameControl(window_, layout_.name);
  controls()[window_] = this;
  platformProcedure_ = reinterpret_cast<WNDPROC>(static_cast<ULONG_PTR>(::SetWindowLongA(
      window_, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(&ControlWindow::procedure)))));
}

void ControlWindow::useFont() { ::SendMessageA(window_, WM_SETFONT, reinterpret_cast<WPARAM>(metrics_.font()), FALSE); }

ControlWindow* ControlWindow::of(HWND window) {
  const auto found = controls().find(window);
  return found == controls().end() ? nullptr : found->second;
}

LRESULT CALLBACK ControlWindow::procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
  ControlWindow* self = of(window);
  if (!self) return ::DefWindowProcA(window, number, wParam, lParam);
  // An event may unload the form and with it this object; it lives until the message is done.
  const std::shared_ptr<ControlWindow> keep = self->weak_from_this().lock();
  if (number == WM_NCDESTROY) {
    unnameControl(window);
    controls().erase(window);
    const WNDPROC platform = self->platformProcedure_;
    self->window_ = nullptr;
    return ::CallWindowProcA(platform, window, number, wParam, lParam);
  }
  if (number == WM_SETTEXT) {
    // Before it is passed on: some controls draw the new text at once.
    const auto* text = reinterpret_cast<const char*>(lParam);
    self->text_ = text ? text : "";
  }
  if (number == kFormShown) self->formShown_ = wParam != 0;
  if (number == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT) {
    if (const LRESULT answer = accessibleAnswer(*self, wParam)) return answer;
  }
  if (number == WM_SETFOCUS) ::SendMessageA(self->form_, kFocusTaken, 0, reinterpret_cast<LPARAM>(window));
  return self->message(number, wParam, lParam);
}

LRESULT ControlWindow::passOn(UINT number, WPARAM wParam, LPARAM lParam) {
  if (!window_) return 0;
  return ::CallWindowProcA(platformProcedure_, window_, number, wParam, lParam);
}

LRESULT ControlWindow::passOnUnseen(UINT number, WPARAM wParam, LPARAM lParam) {
  const bool seen = visible();
  if (seen) ::DefWindowProcA(window_, WM_SETREDRAW, FALSE, 0);
  const LRESULT result = passOn(number, wParam, lParam);
  if (seen && window_) ::DefWindowProcA(window_, WM_SETREDRAW, TRUE, 0);  // which would show a hidden one
  if (window_) repaint();
  return result;
}

void ControlWindow::drawNow(HDC given) {
  PAINTSTRUCT painting;
  DRAWITEMSTRUCT item{};
  item.hDC = given ? given : ::BeginPaint(window_, &painting);
  draw(item);
  if (!given) ::EndPaint(window_, &painting);
}

void ControlWindow::hover(bool over) {
  if (hovered_ == over) return;
  hovered_ = over;
  TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, window_, 0};
  if (over) ::TrackMouseEvent(&track);
  repaint();
}

void ControlWindow::offerTooltip() { tellTooltip(TTM_ADDTOOLA, LPSTR_TEXTCALLBACKA); }

void ControlWindow::tellTooltip(UINT message, char* text) {
  if (message == TTM_ADDTOOLA) hasTooltip_ = true;
  TOOLINFOA tool{};
  tool.cbSize = TTTOOLINFOA_V2_SIZE;
  tool.hwnd = form_;
  tool.uId = reinterpret_cast<UINT_PTR>(window_);
  tool.lpszText = text;
  if (layout_.kind == ControlKind::label && !layout_.clickable) {
    tool.rect = metrics_.scaled(layout_.place);  // it lets the mouse through to the form, which passes it on
  } else {
    tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
  }
  ::SendMessageA(tooltips_(), message, 0, reinterpret_cast<LPARAM>(&tool));
}

std::string ControlWindow::accessibleName() const {
  std::string spoken = layout_.spoken ? layout_.spoken : "";
  switch (layout_.kind) {
    case ControlKind::label: return text_.empty() ? spoken : text_;
    case ControlKind::textBox:
    case ControlKind::passwordBox:
    case ControlKind::comboBox: {
      if (layout_.spoken) return spoken;
      const ControlWindow* before = of(::GetWindow(window_, GW_HWNDPREV));
      return before && before->kind() == ControlKind::label ? before->accessibleName() : "";
    }
    default: return layout_.spoken ? spoken : text_;
  }
}

LRESULT ControlWindow::message(UINT number, WPARAM wParam, LPARAM lParam) { return passOn(number, wParam, lParam); }

void ControlWindow::setText(const std::string& text) { ::SetWindowTextA(window_, text.c_str()); }

// A control that can no longer hold the focus hands it on; the keyboard would reach nobody otherwise.
void ControlWindow::passFocusOn() const {
  if (!focused()) return;
  const HWND next = ::GetNextDlgTabItem(form_, window_, FALSE);
  if (next && next != window_) ::SetFocus(next);
}

void ControlWindow::setVisible(bool visible) {
  if (!visible) passFocusOn();
  ::ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
}

void ControlWindow::setEnabled(bool enabled) {
  if (!enabled) passFocusOn();
  ::EnableWindow(window_, enabled);
  repaint();
}

void ControlWindow::setColours(Colours colours) {
  colours_ = colours;
  if (brush_) ::DeleteObject(brush_);
  brush_ = ::CreateSolidBrush(colours.background);
  if (formShown_) ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
}

void ControlWindow::setPicture(Picture picture, Look look) {
  picture_ = picture;
  look_ = look;
  repaint();
}

void ControlWindow::focus() { ::SetFocus(window_); }

HBRUSH ControlWindow::ground(HDC dc) {
  ::SetBkColor(dc, colours_.background);
  ::SetTextColor(dc, colours_.text);
  return brush_;
}

COLORREF ControlWindow::formColour() const {
  return static_cast<COLORREF>(::SendMessageA(form_, kAskFormColour, 0, 0));
}

RECT ControlWindow::client() const {
  RECT area{};
  ::GetClientRect(window_, &area);
  return area;
}

}  // namespace pelvaro::win32
