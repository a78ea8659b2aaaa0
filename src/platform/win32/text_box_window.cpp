#include "platform/win32/text_box_window.h"

#include <algorithm>
#include <cstring>

#include "base/bytes.h"
#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {
constexpr int kSidePadding = 6;  // between the frame's outer edge and the text, at 96 dpi

// The text on the clipboard, in the ANSI code page; of several lines the first, as the platform pastes into one line.
std::string clipboardText(HWND owner) {
  std::string text;
  if (!::OpenClipboard(owner)) return text;
  if (const HANDLE data = ::GetClipboardData(CF_TEXT)) {
    if (const auto* bytes = static_cast<const char*>(::GlobalLock(data))) {
      text.assign(bytes, strnlen(bytes, ::GlobalSize(data)));
      ::GlobalUnlock(data);
    }
  }
  ::CloseClipboard();
  text.resize(std::min(text.size(), text.find_first_of("\r\n")));
  return text;
}

}  // namespace

TextBoxWindow::TextBoxWindow(const ControlLayout& layout, ControlEvents& events,
                             const ControlSurroundings& surroundings)
    : ControlWindow(layout, events, surroundings) {
  const DWORD masked = layout.kind == ControlKind::passwordBox ? ES_PASSWORD : 0;
  const DWORD right = layout.style == TextStyle::right ? ES_RIGHT : 0;
  create("EDIT", ES_AUTOHSCROLL | WS_TABSTOP | masked | right);
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

HBRUSH TextBoxWindow::ground(HDC dc) {
  if (enabled()) return ControlWindow::ground(dc);
  const HBRUSH brush = ControlWindow::ground(dc);
  ::SetTextColor(dc, metrics_.highContrast() ? ::GetSysColor(COLOR_GRAYTEXT) : palette::kMuted);
  return brush;
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
  fill(dc, whole, colours_.background);
  COLORREF edge = enabled() ? palette::kEdge : palette::kHairline;
  if (focused()) edge = palette::kAccent;
  if (contrast) edge = focused() ? ::GetSysColor(COLOR_HIGHLIGHT) : colours_.text;
  frame(dc, whole, edge, focused() ? metrics_.ringWidth() : metrics_.lineWidth());
  ::ReleaseDC(window_, dc);
}

// As the platform refuses a letter where a number is wanted: it beeps and says why beside the box.
void TextBoxWindow::refuse() {
  ::MessageBeep(MB_OK);
  std::wstring why;
  for (const char* c = layout_.refusal; c && *c; ++c) why += static_cast<wchar_t>(*c);
  EDITBALLOONTIP tip{sizeof tip, L"", why.c_str(), TTI_NONE};
  ::SendMessageW(window_, EM_SHOWBALLOONTIP, 0, reinterpret_cast<LPARAM>(&tip));
}

void TextBoxWindow::pasteWithout(char refused) {
  std::string text = clipboardText(window_);
  std::erase(text, refused);
  ::SendMessageA(window_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
  refuse();
}

LRESULT TextBoxWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  switch (number) {
    case WM_NCCALCSIZE: shrink(*reinterpret_cast<RECT*>(lParam)); return 0;
    case WM_NCPAINT: drawFrame(); return 0;
    case WM_CHAR:
      if (layout_.refused == 0 || static_cast<char>(wParam) != layout_.refused) break;
      refuse();
      return 0;
    case WM_KEYDOWN:  // not every system pastes by message when Shift and Insert are pressed
      if (layout_.refused == 0 || wParam != VK_INSERT || ::GetKeyState(VK_SHIFT) >= 0) break;
      if (::GetKeyState(VK_CONTROL) < 0) break;
      ::SendMessageA(window_, WM_PASTE, 0, 0);
      return 0;
    case WM_PASTE:
      if (layout_.refused == 0 || clipboardText(window_).find(layout_.refused) == std::string::npos) break;
      pasteWithout(layout_.refused);
      return 0;
    case WM_NCHITTEST: return HTCLIENT;  // a click on the padding belongs to the text
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
      const LRESULT result = passOn(number, wParam, lParam);
      if (window_) drawFrame();
      return result;
    }
    case WM_ENABLE:  // kept from the platform, which would draw the text of a disabled box in a colour of its own
      ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
      return 0;
    default: break;
  }
  return passOn(number, wParam, lParam);
}

}  // namespace pelvaro::win32
