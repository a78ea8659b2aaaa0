#include "platform/win32/combo_box_list.h"

#include <algorithm>

#include "platform/win32/monitor.h"
#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

constexpr int kRowHeight = 24, kWidest = 480;  // at 96 dpi
constexpr int kMostRows = 12;                  // that it shows at once
constexpr int kEdge = 1;                       // pixels, as the platform has it

}  // namespace

ComboBoxList::ComboBoxList(HWND box, ControlEvents& events, ScreenMetrics& metrics, const Colours& colours)
    : box_(box), events_(events), metrics_(metrics), colours_(colours) {
  ::SendMessageA(box_, CB_SETITEMHEIGHT, 0, metrics_.scaled(kRowHeight));
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  ::GetComboBoxInfo(box_, &info);
  window_ = info.hwndList;
  ::SetWindowLongA(window_, GWL_USERDATA, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(this)));
  // Wide, as the box speaks to it, so that texts pass as they are.
  platformProcedure_ = reinterpret_cast<WNDPROC>(static_cast<ULONG_PTR>(::SetWindowLongW(
      window_, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(&ComboBoxList::procedure)))));
}

ComboBoxList::~ComboBoxList() {
  if (!window_) return;
  ::SetWindowLongW(window_, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(platformProcedure_)));
}

void ComboBoxList::fit() {
  const int count = rowCount();
  const int widest = metrics_.scaled(kWidest);
  const int scrollBar = count > kMostRows ? ::GetSystemMetrics(SM_CXVSCROLL) : 0;
  const int around = 2 * metrics_.scaled(kComboPadding) + scrollBar;
  int width = 0;
  const HDC dc = ::GetDC(box_);
  for (int row = 0; row < count && width < widest; ++row) {
    width = std::max(width, around + static_cast<int>(textWidth(dc, events_.cellText(row, 0), metrics_.font())));
  }
  ::ReleaseDC(box_, dc);
  // The platform takes the width of the box where that is more, and the list's height from that of the box.
  const int rows = std::clamp(count, 1, kMostRows);
  RECT box{};
  ::GetClientRect(box_, &box);
  ::SendMessageA(box_, CB_SETMINVISIBLE, static_cast<WPARAM>(rows), 0);
  ::SetWindowPos(box_, nullptr, 0, 0, box.right, box.bottom + rows * metrics_.scaled(kRowHeight) + 2 * kEdge,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
  ::SendMessageA(box_, CB_SETDROPPEDWIDTH, 1, 0);  // some systems make it no narrower than it was before
  ::SendMessageA(box_, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min({width, widest, roomToTheRight()})), 0);
}

// From the box's left edge to that of the screen.
int ComboBoxList::roomToTheRight() const {
  RECT box{};
  ::GetWindowRect(box_, &box);
  return std::max(0, static_cast<int>(monitorOf(box_).rcWork.right - box.left));
}

LRESULT CALLBACK ComboBoxList::procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<ComboBoxList*>(static_cast<ULONG_PTR>(::GetWindowLongA(window, GWL_USERDATA)));
  return self->message(number, wParam, lParam);
}

LRESULT ComboBoxList::message(UINT number, WPARAM wParam, LPARAM lParam) {
  const HWND window = window_;  // an event may take the box and with it this object
  const WNDPROC platform = platformProcedure_;
  switch (number) {
    case WM_ERASEBKGND: eraseBelowRows(reinterpret_cast<HDC>(wParam)); return 1;
    case WM_NCPAINT: {
      const LRESULT result = ::CallWindowProcW(platform, window, number, wParam, lParam);
      const HDC dc = ::GetWindowDC(window);
      drawEdge(dc);
      ::ReleaseDC(window, dc);
      return result;
    }
    case WM_PRINT: {  // while the system moves it into view
      const LRESULT result = ::CallWindowProcW(platform, window, number, wParam, lParam);
      if (lParam & PRF_NONCLIENT) drawEdge(reinterpret_cast<HDC>(wParam));
      return result;
    }
    case WM_NCDESTROY: window_ = nullptr; break;
    default: break;
  }
  return ::CallWindowProcW(platform, window, number, wParam, lParam);
}

// Every row covers its ground itself, so that nothing is drawn twice and nothing flickers.
void ComboBoxList::eraseBelowRows(HDC dc) const {
  RECT area{}, last{};
  ::GetClientRect(window_, &area);
  if (const int count = rowCount(); count > 0) {
    ::SendMessageA(window_, LB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
    area.top = std::min(area.bottom, last.bottom);
  }
  fill(dc, area, colours_.background);
}

// Over that of the platform, which has a colour of its own.
void ComboBoxList::drawEdge(HDC dc) const {
  RECT whole{};
  ::GetWindowRect(window_, &whole);
  ::OffsetRect(&whole, -whole.left, -whole.top);
  frame(dc, whole, metrics_.highContrast() ? colours_.text : palette::kEdge, kEdge);
}

void ComboBoxList::drawRow(const DRAWITEMSTRUCT& item) {
  if (item.itemID >= static_cast<UINT>(rowCount())) return;  // the platform has the focus of an empty list drawn
  const Canvas canvas(item.hDC, item.rcItem);
  const HDC dc = canvas.dc();
  COLORREF ground = colours_.background;
  COLORREF ink = colours_.text;
  if (item.itemState & ODS_SELECTED) {
    const bool contrast = metrics_.highContrast();
    ground = contrast ? ::GetSysColor(COLOR_HIGHLIGHT) : palette::kSelected;
    if (contrast) ink = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
  }
  fill(dc, item.rcItem, ground);
  RECT place = item.rcItem;
  ::InflateRect(&place, kEdge - metrics_.scaled(kComboPadding), 0);
  paintText(dc, events_.cellText(static_cast<int>(item.itemID), 0), place, metrics_.font(), ink,
            DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
}

}  // namespace pelvaro::win32
