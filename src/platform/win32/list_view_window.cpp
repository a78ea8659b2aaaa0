#include "platform/win32/list_view_window.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace pelvaro::win32 {

namespace {

constexpr int kRowHeight = 24;
constexpr int kSideStep = 24;  // an arrow key scrolls the columns so far

}  // namespace

ListViewWindow::ListViewWindow(const ControlLayout& layout, ControlEvents& events,
                               const ControlSurroundings& surroundings)
    : ControlWindow(layout, events, surroundings) {
  const DWORD columns = layout.headings ? LVS_NOSORTHEADER | WS_CLIPCHILDREN : LVS_NOCOLUMNHEADER;
  create(WC_LISTVIEWA, LVS_REPORT | LVS_SINGLESEL | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS |
                           WS_BORDER | WS_TABSTOP | columns);
  if (layout.headings) header_.emplace(window_, metrics_, colours_);
  useFont();
  ::SendMessageA(window_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
  ::SetWindowPos(window_, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  rowHeight_ = ::ImageList_Create(1, scaled(kRowHeight) - 1, ILC_COLOR, 1, 0);
  ::SendMessageA(window_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(rowHeight_));
  if (header_) return;
  LVCOLUMNA column{};
  ::SendMessageA(window_, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
}

ListViewWindow::~ListViewWindow() {
  if (window_) ::SendMessageA(window_, LVM_SETIMAGELIST, LVSIL_SMALL, 0);
  ::ImageList_Destroy(rowHeight_);
}

void ListViewWindow::setColours(Colours colours) {
  ControlWindow::setColours(colours);
  ::SendMessageA(window_, LVM_SETBKCOLOR, 0, static_cast<LPARAM>(colours.background));
  ::SendMessageA(window_, LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(colours.background));
  ::SendMessageA(window_, LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(colours.text));
  if (header_) header_->repaint();
}

void ListViewWindow::setColumns(std::span<const ListColumn> columns) {
  if (!header_) return;
  header_->setColumns(columns);
  repaint();
}

void ListViewWindow::setRowCount(int count) {
  // The control draws its scroll bar at once when it learns of a count: it is told only of a new one.
  if (count != ::SendMessageA(window_, LVM_GETITEMCOUNT, 0, 0)) {
    fitColumn(::GetSystemMetrics(SM_CXVSCROLL));  // room for a scroll bar that may come, so that no other one does
    ::SendMessageA(window_, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOINVALIDATEALL);
    fitColumn(0);  // and then all that is left: a click anywhere in a row is a click on it
  }
  repaint();
}

void ListViewWindow::fitColumn(int spare) {
  if (header_) return;
  // What the window has now, less the room that is wanted unless the scroll bar has it already.
  const bool scrolls = (::GetWindowLongA(window_, GWL_STYLE) & WS_VSCROLL) != 0;
  ::SendMessageA(window_, LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(client().right - (scrolls ? 0 : spare), 0));
}

int ListViewWindow::selectedRow() {
  if (!selectedKnown_) {
    selected_ = static_cast<int>(
        ::SendMessageA(window_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), MAKELPARAM(LVNI_SELECTED, 0)));
    selectedKnown_ = true;
  }
  return selected_;
}

void ListViewWindow::selectRow(int row) {
  ours_ = true;
  LVITEMA item{};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  ::SendMessageA(window_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
  if (row >= 0) {
    item.state = item.stateMask;
    ::SendMessageA(window_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    ::SendMessageA(window_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  }
  ours_ = false;
}

void ListViewWindow::reportClick() {
  reported_ = true;
  unreported_ = false;
  loop_.guarded([this] { events_.itemClicked(); });
}

void ListViewWindow::released(MouseButton button, int x, int y) {
  rightPressed_ = false;
  loop_.guarded([&] { events_.mouseReleased(button, x, y); });
}

// The right button's release will not come (a drag, or something else took the mouse). The row that it selected counts
// as clicked, without the menu.
void ListViewWindow::rightPressLost() {
  if (!rightPressed_) return;
  const bool unreported = unreported_;
  released(MouseButton::right, 0, 0);
  if (unreported && window_) reportClick();
}

// The row that begins with a text, from a start row on and then from the first: what typing a letter looks for. It is
// looked for in the first column that is seen.
LRESULT ListViewWindow::findRow(UINT flags, std::string_view wanted, int start) const {
  constexpr LRESULT kNotFound = -1;
  if (!(flags & (LVFI_STRING | LVFI_PARTIAL)) || wanted.empty()) return kNotFound;
  const auto count = static_cast<int>(::SendMessageA(window_, LVM_GETITEMCOUNT, 0, 0));
  const bool part = (flags & LVFI_PARTIAL) != 0;
  const int column = header_ ? header_->firstSeen() : 0;
  for (int i = 0; i < count; ++i) {
    const int row = (std::max(start, 0) + i) % count;
    const std::string cell(events_.cellText(row, column));
    if (!part && cell.size() != wanted.size()) continue;
    if (cell.size() >= wanted.size() &&
        ::CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, cell.data(), static_cast<int>(wanted.size()),
                         wanted.data(), static_cast<int>(wanted.size())) == CSTR_EQUAL) {
      return row;
    }
  }
  return kNotFound;
}

void ListViewWindow::reportActivation() {
  if (selectedRow() >= 0) loop_.guarded([this] { events_.itemActivated(); });
}

// Enter activates the selected row; without one it is left to the form's default button.
bool ListViewWindow::wantsEnter(const MSG* asked) {
  return asked && asked->message == WM_KEYDOWN && asked->wParam == VK_RETURN && selectedRow() >= 0;
}

LRESULT ListViewWindow::notified(NMHDR& header) {
  selectedKnown_ = false;
  switch (header.code) {
    case static_cast<UINT>(LVN_GETDISPINFOA): giveText(reinterpret_cast<NMLVDISPINFOA&>(header).item); return 0;
    case static_cast<UINT>(NM_CUSTOMDRAW): return drawRow(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    case static_cast<UINT>(LVN_ITEMCHANGED): {
      const auto& change = reinterpret_cast<NMLISTVIEW&>(header);
      const bool selected = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
      if (header_) {
        repaint();  // the platform would draw a row as far as its columns go
      } else if (change.iItem >= 0 && ((change.uNewState ^ change.uOldState) & LVIS_SELECTED)) {
        const RECT row = rowPlace(change.iItem);  // the platform leaves out what lies before the icon
        ::InvalidateRect(window_, &row, FALSE);
      }
      if (selected && change.iItem >= 0 && !ours_) {
        if (rightPressed_) {
          unreported_ = true;  // reported at the release, with the menu
        } else {
          reportClick();
        }
      }
      return 0;
    }
    case static_cast<UINT>(NM_CLICK):
    case static_cast<UINT>(NM_RCLICK): {
      // The platform reports a click at the button's release, and the release itself not at all. The row may have been
      // selected before: it counts all the same.
      const auto& click = reinterpret_cast<NMITEMACTIVATE&>(header);
      if (click.iItem >= 0 && !reported_) reportClick();
      const bool right = header.code == static_cast<UINT>(NM_RCLICK);
      if (window_) released(right ? MouseButton::right : MouseButton::left, click.ptAction.x, click.ptAction.y);
      return 0;
    }
    case static_cast<UINT>(LVN_ITEMACTIVATE):
      activated_ = holding_;
      if (!holding_) reportActivation();
      return 0;
    case static_cast<UINT>(LVN_BEGINRDRAG): rightPressLost(); return 0;
    case static_cast<UINT>(LVN_ODFINDITEMA): {
      const auto& asked = reinterpret_cast<NMLVFINDITEMA&>(header);
      return findRow(asked.lvfi.flags, asked.lvfi.psz ? asked.lvfi.psz : "", asked.iStart);
    }
    case static_cast<UINT>(LVN_ODFINDITEMW): {  // some systems ask in wide letters whatever the window is
      const auto& asked = reinterpret_cast<NMLVFINDITEMW&>(header);
      char wanted[300] = "";
      if (asked.lvfi.psz) ::WideCharToMultiByte(CP_ACP, 0, asked.lvfi.psz, -1, wanted, sizeof wanted, nullptr, nullptr);
      return findRow(asked.lvfi.flags, wanted, asked.iStart);
    }
    default: return 0;
  }
}

LRESULT ListViewWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  const int x = GET_X_LPARAM(lParam);
  const int y = GET_Y_LPARAM(lParam);
  selectedKnown_ = false;
  switch (number) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN: {
      const bool right = number == WM_RBUTTONDOWN;
      reported_ = unreported_ = false;
      rightPressed_ = right;
      loop_.guarded([&] { events_.mousePressed(right ? MouseButton::right : MouseButton::left, x, y); });
      break;
    }
    case WM_GETDLGCODE: {
      const LRESULT wanted = passOn(number, wParam, lParam);
      return wantsEnter(reinterpret_cast<const MSG*>(lParam)) ? wanted | DLGC_WANTMESSAGE : wanted;
    }
    case WM_KEYDOWN:
      if (!header_ || (wParam != VK_LEFT && wParam != VK_RIGHT)) break;
      scrollSideways(wParam == VK_LEFT ? -scaled(kSideStep) : scaled(kSideStep));
      return 0;
    case WM_CHAR:
      if (wParam == VK_RETURN) return 0;  // no row begins with it
      break;
    case WM_NOTIFY:
      if (header_ && header_->refuses(*reinterpret_cast<NMHDR*>(lParam))) return TRUE;
      break;
    case WM_CANCELMODE: rightPressLost(); break;
    case WM_LBUTTONUP: released(MouseButton::left, x, y); break;
    case WM_RBUTTONUP: released(MouseButton::right, x, y); break;
    case WM_CONTEXTMENU:
      if (lParam == -1) openMenuByKeyboard();
      return 0;
    case WM_NCCALCSIZE: {
      // Room for the ring of the focus, so that it covers no row.
      const LRESULT result = passOn(number, wParam, lParam);
      auto& area = *reinterpret_cast<RECT*>(lParam);
      ::InflateRect(&area, 1 - metrics_.ringWidth(), 1 - metrics_.ringWidth());
      return result;
    }
    case WM_ERASEBKGND: eraseBelowRows(reinterpret_cast<HDC>(wParam)); return 1;
    case WM_NCPAINT: {
      const LRESULT result = passOn(number, wParam, lParam);
      drawFrame();
      return result;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
      const LRESULT result = passOn(number, wParam, lParam);
      if (window_) {
        drawFrame();
        repaint();
      }
      return result;
    }
    default: break;
  }
  if (number != WM_LBUTTONDBLCLK && number != WM_KEYDOWN) return passOn(number, wParam, lParam);
  holding_ = true;
  const LRESULT result = passOn(number, wParam, lParam);
  holding_ = false;
  if (std::exchange(activated_, false) && window_) reportActivation();
  return result;
}

// By key, which not every system's list does by itself.
void ListViewWindow::scrollSideways(int distance) {
  if (!(::GetWindowLongA(window_, GWL_STYLE) & WS_HSCROLL)) return;
  passOn(LVM_SCROLL, static_cast<WPARAM>(distance), 0);
}

// The menu key does what a right click on the selected row does.
void ListViewWindow::openMenuByKeyboard() {
  if (selectedRow() < 0) return;
  loop_.guarded([this] { events_.mousePressed(MouseButton::right, 0, 0); });
  reportClick();
  if (window_) released(MouseButton::right, 0, 0);
}

void ListViewWindow::giveText(LVITEMA& item) {
  if (item.mask & LVIF_IMAGE) item.iImage = I_IMAGENONE;
  if (!(item.mask & LVIF_TEXT) || item.cchTextMax < 1) return;
  std::string_view cell = events_.cellText(item.iItem, item.iSubItem);
  const auto length = std::min(cell.size(), static_cast<std::size_t>(item.cchTextMax - 1));
  std::memcpy(item.pszText, cell.data(), length);
  item.pszText[length] = '\0';
}

}  // namespace pelvaro::win32
