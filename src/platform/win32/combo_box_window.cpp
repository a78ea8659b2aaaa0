#include "platform/win32/combo_box_window.h"

#include <string>
#include <utility>

#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

constexpr int kArrowSize = 16, kArrowRight = 4;  // at 96 dpi; the arrow stands in a square
constexpr UINT kListClosed = WM_APP + 10;        // to the box itself: its list has closed with a row taken

}  // namespace

ComboBoxWindow::ComboBoxWindow(const ControlLayout& layout, ControlEvents& events,
                               const ControlSurroundings& surroundings)
    : ControlWindow(layout, events, surroundings) {
  create("COMBOBOX", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP);
  useFont();
  // The platform makes the box higher than it is told, by an amount of its own.
  const RECT place = metrics_.scaled(layout.place);
  const LONG height = place.bottom - place.top;
  constexpr auto kBox = static_cast<WPARAM>(-1);
  ::SendMessageA(window_, CB_SETITEMHEIGHT, kBox, height);
  ::SendMessageA(window_, CB_SETITEMHEIGHT, kBox, 2 * height - client().bottom);
  list_.emplace(window_, events_, metrics_, colours_);
}

void ComboBoxWindow::setRowCount(int count) {
  auto row = static_cast<int>(::SendMessageA(window_, CB_GETCOUNT, 0, 0));
  if (count < row) {
    ::SendMessageA(window_, CB_RESETCONTENT, 0, 0);
    row = 0;
  }
  for (; row < count; ++row) {
    const std::string text(events_.cellText(row, 0));
    ::SendMessageA(window_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
}

void ComboBoxWindow::command(WORD notification) {
  switch (notification) {
    case CBN_SELCHANGE: choose(); break;
    case CBN_DROPDOWN:
      chosen_ = platformsRow();
      taken_ = false;
      list_->fit();
      break;
    case CBN_SELENDOK: taken_ = true; break;
    case CBN_SELENDCANCEL: taken_ = false; break;
    case CBN_CLOSEUP:
      repaint();
      if (platformsRow() == chosen_) break;
      if (taken_) {
        ::PostMessageA(window_, kListClosed, 0, 0);  // after a click the platform tells of the choice by itself
      } else {
        selectRow(chosen_);
      }
      break;
    default: break;
  }
}

void ComboBoxWindow::choose() {
  chosen_ = platformsRow();
  repaint();
  loop_.guarded([this] { events_.clicked(); });
}

LRESULT ComboBoxWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  switch (number) {
    case WM_ERASEBKGND: return 1;
    case WM_PAINT:
    case WM_PRINTCLIENT: drawNow(reinterpret_cast<HDC>(wParam)); return 0;
    case WM_CTLCOLORLISTBOX: return reinterpret_cast<LRESULT>(ground(reinterpret_cast<HDC>(wParam)));
    case WM_MOUSEMOVE: hover(true); break;
    case kFormShown:
      if (wParam && !hasTooltip()) offerTooltip();
      return 0;
    case WM_MOUSELEAVE: hover(false); break;
    case kListClosed:
      // By a key, with a row under the pointer: the platform takes it and says nothing.
      if (!dropped() && platformsRow() != chosen_) choose();
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE: repaint(); break;
    case WM_SYSKEYDOWN:
      if (wParam != VK_F4) break;  // with Alt it is for the form; some systems' boxes would keep it to themselves
      return ::DefWindowProcA(window_, number, wParam, lParam);
    case CB_SETCURSEL:
    case CB_SELECTSTRING:
    case CB_RESETCONTENT: {
      const LRESULT result = passOnUnseen(number, wParam, lParam);  // the platform would draw at once
      chosen_ = platformsRow();
      return result;
    }
    default: break;
  }
  return passOn(number, wParam, lParam);
}

// The platform has rows drawn, and at times the text in the box, which is drawn with all around it.
void ComboBoxWindow::draw(DRAWITEMSTRUCT& item) {
  if (item.CtlType == ODT_COMBOBOX && !(item.itemState & ODS_COMBOBOXEDIT)) {
    list_->drawRow(item);
  } else {
    drawBox(item.hDC);
  }
}

RECT ComboBoxWindow::textPlace() const {
  const RECT area = client();
  return {scaled(kComboPadding), 0, area.right - scaled(kArrowRight) - scaled(kArrowSize), area.bottom};
}

// The whole entry, where it is cut.
std::string ComboBoxWindow::tooltip() {
  if (dropped() || selectedRow() < 0) return {};
  const RECT place = textPlace();
  std::string text(events_.cellText(selectedRow(), 0));
  const HDC dc = ::GetDC(window_);
  const LONG width = textWidth(dc, text, metrics_.font());
  ::ReleaseDC(window_, dc);
  return width > place.right - place.left ? text : "";
}

void ComboBoxWindow::drawBox(HDC target) {
  const RECT area = client();
  const Canvas canvas(target, area);
  const HDC dc = canvas.dc();
  const bool contrast = metrics_.highContrast();
  COLORREF face = colours_.background;
  COLORREF edge = palette::kEdge;
  COLORREF ink = colours_.text;
  COLORREF arrow = palette::kText;
  int width = metrics_.lineWidth();
  if (!enabled()) {
    face = palette::kDisabledInput;
    edge = palette::kHairline;
    ink = arrow = palette::kMuted;
  } else if (hovered_ || dropped()) {
    face = palette::kButtonHover;
    edge = palette::kAccent;
  }
  if (focused()) {
    edge = palette::kAccent;
    width = metrics_.ringWidth();
  }
  if (contrast) {
    face = colours_.background;
    ink = arrow = enabled() ? colours_.text : ::GetSysColor(COLOR_GRAYTEXT);
    edge = focused() ? ::GetSysColor(COLOR_HIGHLIGHT) : ink;
    if (hovered_ || focused()) width = metrics_.ringWidth();
  }
  fill(dc, area, face);
  frame(dc, area, edge, width);
  const LONG size = scaled(kArrowSize);
  const RECT place = textPlace();
  const LONG left = place.right;
  const LONG top = (area.bottom - size) / 2;
  arrowDown(dc, {left, top, left + size, top + size}, arrow);
  const bool chosen = selectedRow() >= 0;
  if (!chosen && !contrast) ink = palette::kMuted;
  paintText(dc, chosen ? events_.cellText(selectedRow(), 0) : layout_.caption, place, metrics_.font(), ink,
            DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
}

}  // namespace pelvaro::win32
