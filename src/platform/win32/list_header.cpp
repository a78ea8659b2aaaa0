#include "platform/win32/list_header.h"

#include <algorithm>

#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

constexpr int kHeight = 24;  // at 96 dpi, without the rule below

}  // namespace

ListHeader::ListHeader(HWND list, ScreenMetrics& metrics, const Colours& colours)
    : list_(list), metrics_(metrics), colours_(colours) {
  // Some systems make the header with the first column only.
  LVCOLUMNA column{};
  ::SendMessageA(list_, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
  window_ = reinterpret_cast<HWND>(::SendMessageA(list_, LVM_GETHEADER, 0, 0));
  // A column follows the pointer while it is made wider, or the platform would draw a line of its own.
  ::SetWindowLongA(window_, GWL_STYLE, ::GetWindowLongA(window_, GWL_STYLE) | HDS_FULLDRAG);
  ::SetWindowLongA(window_, GWL_USERDATA, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(this)));
  // Wide, as the list speaks to it.
  platformProcedure_ = reinterpret_cast<WNDPROC>(static_cast<ULONG_PTR>(
      ::SetWindowLongW(window_, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(&ListHeader::procedure)))));
}

ListHeader::~ListHeader() {
  if (!window_) return;
  ::SetWindowLongW(window_, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(platformProcedure_)));
}

void ListHeader::setColumns(std::span<const ListColumn> columns) {
  while (::SendMessageA(list_, LVM_DELETECOLUMN, 0, 0)) {
  }
  columns_.clear();
  int left = 0;
  for (const ListColumn& column : columns) {
    columns_.push_back({column.heading, column.width > 0});
    LVCOLUMNA inserted{};
    inserted.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    inserted.iSubItem = columnCount() - 1;
    inserted.pszText = columns_.back().heading.data();
    // The edges are scaled, not the widths, so that roundings do not add up.
    inserted.cx = metrics_.scaled(left + column.width) - metrics_.scaled(left);
    left += column.width;
    ::SendMessageA(list_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(inserted.iSubItem),
                   reinterpret_cast<LPARAM>(&inserted));
  }
  repaint();
}

int ListHeader::firstSeen() const {
  const auto found = std::find_if(columns_.begin(), columns_.end(), [](const Column& column) { return column.seen; });
  return found == columns_.end() ? 0 : static_cast<int>(found - columns_.begin());
}

RECT ListHeader::column(int index) const {
  RECT place{};
  ::SendMessageA(window_, HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
  return place;
}

bool ListHeader::refuses(const NMHDR& header) const {
  if (header.hwndFrom != window_) return false;
  const auto& change = reinterpret_cast<const NMHEADERA&>(header);
  switch (header.code) {
    case static_cast<UINT>(HDN_BEGINTRACKA):
    case static_cast<UINT>(HDN_BEGINTRACKW): break;
    case static_cast<UINT>(HDN_ITEMCHANGINGA):
    case static_cast<UINT>(HDN_ITEMCHANGINGW):
      if (!change.pitem || !(change.pitem->mask & HDI_WIDTH) || change.pitem->cxy <= 0) return false;
      break;
    default: return false;
  }
  return change.iItem >= 0 && change.iItem < columnCount() && !columns_[static_cast<std::size_t>(change.iItem)].seen;
}

LRESULT CALLBACK ListHeader::procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<ListHeader*>(static_cast<ULONG_PTR>(::GetWindowLongA(window, GWL_USERDATA)));
  return self->message(window, number, wParam, lParam);
}

LRESULT ListHeader::message(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
  switch (number) {
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: {
      PAINTSTRUCT painting;
      draw(::BeginPaint(window, &painting));
      ::EndPaint(window, &painting);
      return 0;
    }
    case WM_PRINTCLIENT: draw(reinterpret_cast<HDC>(wParam)); return 0;
    case HDM_LAYOUT: return layOut(*reinterpret_cast<HDLAYOUT*>(lParam), wParam);
    case WM_NCDESTROY: window_ = nullptr; break;
    default: break;
  }
  return ::CallWindowProcW(platformProcedure_, window, number, wParam, lParam);
}

// The list asks how high the header is and puts its rows below it.
LRESULT ListHeader::layOut(HDLAYOUT& layout, WPARAM wParam) {
  const LONG top = layout.prc->top;
  const LRESULT result =
      ::CallWindowProcW(platformProcedure_, window_, HDM_LAYOUT, wParam, reinterpret_cast<LPARAM>(&layout));
  layout.pwpos->cy = metrics_.scaled(kHeight) + metrics_.lineWidth();
  layout.prc->top = top + layout.pwpos->cy;
  return result;
}

void ListHeader::draw(HDC target) const {
  RECT area{};
  ::GetClientRect(window_, &area);
  const Canvas canvas(target, area);
  const HDC dc = canvas.dc();
  const bool contrast = metrics_.highContrast();
  const COLORREF rule = contrast ? colours_.text : palette::kHairline;
  const LONG bottom = area.bottom - metrics_.lineWidth();
  fill(dc, area, contrast ? colours_.background : palette::kTint);
  fill(dc, {area.left, bottom, area.right, area.bottom}, rule);
  for (int i = 0; i < columnCount(); ++i) {
    const RECT place = column(i);
    if (place.left >= place.right) continue;
    const RECT text{place.left + metrics_.scaled(kCellLeft), area.top, place.right - metrics_.scaled(kCellRight),
                    bottom};
    paintText(dc, columns_[static_cast<std::size_t>(i)].heading, text, metrics_.font(), colours_.text,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
    fill(dc, {place.right - metrics_.lineWidth(), area.top, place.right, bottom}, rule);
  }
}

}  // namespace pelvaro::win32
