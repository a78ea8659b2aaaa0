#include "platform/win32/text_box_window.h"

#include "base/bytes.h"
#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {
constexpr int kSidePadding = 6;  // between the frame's outer edge and the text, at 96 dpi
}  // namespace

TextBoxWindow::TextBoxWindow(const ControlLayout& layout, ControlEvents& events,
                             const ControlSurroundings& surroundings)
    : ControlWindow(layout, events, surroundings) {
  const DWORD masked = layout.kind == ControlKind::passwordBox ? ES_PASSWORD : 0;
  create("EDIT", ES_AUTOHSCROLL | WS_TABSTOP | masked);
  useFont();
  // The frame is drawn around a smaller client area.
  ::SetWindowPos(window_, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  ::SendMessageA(window_, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
}

const std::string& TextBoxWindow::text() {
  const int length = ::GetWindowTextLengthA(window_);
  wipe(text_);  // it may have been a password
  text_.resize(static_cast<std::size_t>(length));
  if (length == 0) return text_;
  // The platform writes a terminator behind the text; a std::string has room for one.
  const int copied = ::GetWindowTextA(window_, text_.data(), length + 1);
  text_.resize(static_cast<std::size_t>(copied < 0 ? 0 : copied));
  return text_;
}

void TextBoxWindow::shrink(RECT& area) const {
  const LONG above = ((area.bottom - area.top) - metrics_.fontHeight() + 1) / 2;  // as labels centre their text
  area.left += scaled(kSidePadding);
  area.right -= scaled(kSidePadding);
  area.top += above;
  area.bottom = area.top + metrics_.fontHeight();
}

void TextBoxWindow::drawFrame() {
  RECT whole{};
  ::GetWindowRect(window_, &whole);
  ::OffsetRect(&whole, -whole.left, -whole.top);
  RECT inner = whole;
  shrink(inner);
  const HDC dc = ::GetWindowDC(window_);
  ::ExcludeClipRect(dc, inner.left, inner.top, inner.right, inner.bottom);
  const bool contrast = metrics_.highContrast();
  fill(dc, whole, enabled() ? colours_.background : palette::kDisabledInput);
  COLORREF edge = enabled() ? palette::kEdge : palette::kHairline;
  if (focused()) edge = palette::kAccent;
  if (contrast) edge = focused() ? ::GetSysColor(COLOR_HIGHLIGHT) : colours_.text;
  frame(dc, whole, edge, focused() ? metrics_.ringWidth() : metrics_.lineWidth());
  ::ReleaseDC(window_, dc);
}

LRESULT TextBoxWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  switch (number) {
    case WM_NCCALCSIZE: shrink(*reinterpret_cast<RECT*>(lParam)); return 0;
    case WM_NCPAINT: drawFrame(); return 0;
    case WM_NCHITTEST: return HTCLIENT;  // a click on the padding belongs to the text
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE: {
      const LRESULT result = passOn(number, wParam, lParam);
      if (window_) drawFrame();
      return result;
    }
    default: return passOn(number, wParam, lParam);
  }
}

}  // namespace pelvaro::win32
