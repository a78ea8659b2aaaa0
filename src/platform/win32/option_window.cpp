#include "platform/win32/option_window.h"

#include <algorithm>
#include <vector>

#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

// At 96 dpi. The mark stands in a square at the left edge; without the focus it leaves a rim of it free for the ring.
constexpr int kMarkSize = 16, kMarkRim = 1, kDotInset = 4, kMarkRadius = 2, kCaptionLeft = 24, kFocusLeft = 20;

bool isMarked(HWND window) { return ::SendMessageA(window, BM_GETCHECK, 0, 0) == BST_CHECKED; }

}  // namespace

OptionWindow::OptionWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings)
    : ControlWindow(layout, events, surroundings) {
  create("BUTTON", WS_TABSTOP | (isOption() ? BS_AUTORADIOBUTTON : BS_AUTOCHECKBOX));
  if (isOption()) placeTabStop();
}

void OptionWindow::command(WORD notification) {
  if (notification == BN_CLICKED) loop_.guarded([this] { events_.clicked(); });
}

// The tabulator key stops at the marked option of the form, at the first one while none is marked. The platform only
// looks at the one whose mark changes, and would leave no stop when the last mark goes.
void OptionWindow::placeTabStop() {
  std::vector<HWND> options;
  for (HWND w = ::GetWindow(form_, GW_CHILD); w; w = ::GetWindow(w, GW_HWNDNEXT)) {
    if (::SendMessageA(w, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) options.push_back(w);
  }
  const bool none = std::none_of(options.begin(), options.end(), isMarked);
  for (const HWND option : options) {
    const bool stop = none ? option == options.front() : isMarked(option);
    const LONG style = ::GetWindowLongA(option, GWL_STYLE);
    ::SetWindowLongA(option, GWL_STYLE, stop ? style | WS_TABSTOP : style & ~WS_TABSTOP);
  }
}

// An arrow key goes to the next option of the group and chooses it.
void OptionWindow::chooseNext(bool back) {
  const HWND next = ::GetNextDlgGroupItem(form_, window_, back);
  ::SetFocus(next);
  if (!isMarked(next)) ::SendMessageA(next, BM_CLICK, 0, 0);
}

LRESULT OptionWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  switch (number) {
    case WM_ERASEBKGND: return 1;
    case WM_PAINT:
    case WM_PRINTCLIENT: drawNow(reinterpret_cast<HDC>(wParam)); return 0;
    case WM_MOUSEMOVE: hover(true); break;
    case WM_MOUSELEAVE: hover(false); break;
    // Kept from the platform, which would choose an option that gets the focus by whatever way, as though the user had
    // clicked it. Its arrow keys may rest on that, so they are handled here.
    case WM_SETFOCUS: repaint(); return 0;
    case WM_GETDLGCODE:  // with a key's message; without one the platform looks for option buttons by the plain answer
      return passOn(number, wParam, lParam) | (isOption() && lParam ? DLGC_WANTARROWS : 0);
    case WM_KEYDOWN:
      if (!isOption() || wParam < VK_LEFT || wParam > VK_DOWN) break;
      chooseNext(wParam == VK_LEFT || wParam == VK_UP);
      return 0;
    case BM_CLICK:  // by a script; the platform changes the mark of a disabled one too
      if (enabled()) break;
      return 0;
    // The platform draws at once on these.
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_UPDATEUISTATE:
    case BM_SETSTATE:
    case BM_SETSTYLE:
    case BM_SETCHECK: {
      const LRESULT result = passOnUnseen(number, wParam, lParam);
      if (number == BM_SETCHECK && isOption()) placeTabStop();
      return result;
    }
    default: break;
  }
  return passOn(number, wParam, lParam);
}

void OptionWindow::draw(DRAWITEMSTRUCT& item) {
  const RECT area = client();
  const Canvas canvas(item.hDC, area);
  const HDC dc = canvas.dc();
  fill(dc, area, colours_.background);
  COLORREF ink = colours_.text;
  if (!enabled()) ink = metrics_.highContrast() ? ::GetSysColor(COLOR_GRAYTEXT) : palette::kMuted;
  const LONG size = std::min<LONG>(scaled(kMarkSize), area.bottom);
  const LONG top = (area.bottom - size) / 2;
  drawMark(dc, {0, top, size, top + size}, ink);
  RECT caption = area;
  caption.left = scaled(kFocusLeft);
  if (caption.left >= area.right) return;  // a label beside it shows the caption
  if (focused()) dotted(dc, caption, ink);
  caption.left = scaled(kCaptionLeft);
  paintText(dc, text_, caption, metrics_.font(), ink, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
}

void OptionWindow::drawMark(HDC dc, const RECT& box, COLORREF ink) {
  const bool contrast = metrics_.highContrast();
  COLORREF face = palette::kWhite;
  COLORREF edge = palette::kEdge;
  int width = metrics_.lineWidth();
  if (contrast) {
    face = colours_.background;
    edge = ink;
    if (hovered_) width = 2;
  } else if (!enabled()) {
    edge = palette::kHairline;
  } else if (::SendMessageA(window_, BM_GETSTATE, 0, 0) & BST_PUSHED) {
    face = palette::kButtonPressed;
    edge = palette::kText;
  } else if (hovered_) {
    face = palette::kButtonHover;
    edge = palette::kAccent;
  }
  RECT outer = box;
  if (focused()) {
    edge = contrast ? ::GetSysColor(COLOR_HIGHLIGHT) : palette::kText;
    width = metrics_.ringWidth();
  } else {
    ::InflateRect(&outer, -scaled(kMarkRim), -scaled(kMarkRim));
  }
  if (isOption()) {
    RECT dot = box;
    ::InflateRect(&dot, -scaled(kDotInset), -scaled(kDotInset));
    discFace(dc, outer, face, edge, width);
    if (checked()) disc(dc, dot, ink);
  } else {
    roundFace(dc, outer, scaled(kMarkRadius), face, edge, width);
    if (checked()) tick(dc, box, ink);
  }
}

}  // namespace pelvaro::win32
