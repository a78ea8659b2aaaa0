// How a list is drawn: its rows, its ground and its frame.
#include <algorithm>

#include "platform/win32/list_view_window.h"
#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

constexpr int kIconLeft = 7, kIconSize = 16, kTextLeft = 31;

}  // namespace

// Every row covers its ground itself, so that nothing is drawn twice and nothing flickers.
void ListViewWindow::eraseBelowRows(HDC dc) {
  RECT area = client();
  const auto count = static_cast<int>(::SendMessageA(window_, LVM_GETITEMCOUNT, 0, 0));
  RECT last{};
  if (count > 0) {
    last = rowPlace(count - 1);
    area.top = std::min(area.bottom, std::max(area.top, last.bottom));
  }
  fill(dc, area, colours_.background);
  if (!header_ || last.right >= area.right) return;
  // Of the rows the platform has those parts drawn that the columns cover.
  fill(dc, {last.right, 0, area.right, area.top}, colours_.background);
  if (const int row = selectedRow(); row >= 0) drawRowGround(dc, row, rowPlace(row));
}

RECT ListViewWindow::rowPlace(int row) const {
  RECT place{LVIR_BOUNDS, 0, 0, 0};
  ::SendMessageA(window_, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
  return place;
}

LRESULT ListViewWindow::drawRow(NMLVCUSTOMDRAW& drawing) {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const int row = static_cast<int>(drawing.nmcd.dwItemSpec);
  const RECT area = rowPlace(row);
  RECT seen = area;
  if (header_) {
    seen.left = 0;
    seen.right = client().right;
  }
  const Canvas canvas(drawing.nmcd.hdc, seen);
  drawCells(canvas.dc(), row, area, drawRowGround(canvas.dc(), row, area));
  return CDRF_SKIPDEFAULT;
}

// Also of the part of a row that no column covers. Gives the colour of its texts.
COLORREF ListViewWindow::drawRowGround(HDC dc, int row, const RECT& area) {
  RECT whole = area;
  if (header_) whole.right = std::max(area.right, client().right);
  const bool contrast = metrics_.highContrast();
  const bool selected = ::SendMessageA(window_, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
  COLORREF ground = colours_.background;
  COLORREF ink = colours_.text;
  if (selected) ground = focused() ? palette::kSelected : palette::kSelectedIdle;
  if (selected && contrast) {
    ground = ::GetSysColor(COLOR_HIGHLIGHT);
    ink = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
  }
  fill(dc, whole, ground);
  if (selected && !contrast) frame(dc, whole, palette::kSelectedEdge, metrics_.lineWidth());
  return ink;
}

void ListViewWindow::drawCells(HDC dc, int row, const RECT& area, COLORREF ink) {
  if (picture_ != Picture::none) {
    const LONG left = area.left + scaled(kIconLeft);
    paintPicture(dc, metrics_, picture_, {left, area.top, left + scaled(kIconSize), area.bottom}, false, ink);
  }
  const LONG right = client().right;
  for (int i = 0; i < (header_ ? header_->columnCount() : 1); ++i) {
    RECT place = area;
    if (header_) {
      const RECT column = header_->column(i);
      place.left = area.left + column.left;
      place.right = area.left + column.right;
    }
    if (place.right <= 0 || place.left >= std::min(place.right, right)) continue;
    place.left += scaled(header_ && (i > 0 || picture_ == Picture::none) ? kCellLeft : kTextLeft);
    place.right -= scaled(kCellRight);
    paintText(dc, events_.cellText(row, i), place, metrics_.font(), ink, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
  }
}

void ListViewWindow::drawFrame() {
  RECT whole{};
  ::GetWindowRect(window_, &whole);
  ::OffsetRect(&whole, -whole.left, -whole.top);
  COLORREF edge = focused() ? palette::kAccent : palette::kEdge;
  if (metrics_.highContrast()) edge = focused() ? ::GetSysColor(COLOR_HIGHLIGHT) : colours_.text;
  const HDC dc = ::GetWindowDC(window_);
  if (!focused()) frame(dc, whole, colours_.background, metrics_.ringWidth());
  frame(dc, whole, edge, focused() ? metrics_.ringWidth() : metrics_.lineWidth());
  if (constexpr LONG kBoth = WS_HSCROLL | WS_VSCROLL; (::GetWindowLongA(window_, GWL_STYLE) & kBoth) == kBoth) {
    // Where the scroll bars meet the platform may miss a strip, having been given less room than it thinks.
    const RECT inner = client();
    const LONG ring = metrics_.ringWidth();
    fill(dc, {ring + inner.right, ring + inner.bottom, whole.right - ring, whole.bottom - ring},
         ::GetSysColor(COLOR_BTNFACE));
  }
  ::ReleaseDC(window_, dc);
}

}  // namespace pelvaro::win32
