// Where a form stands on the screen.
#include <algorithm>

#include "platform/win32/form_window.h"
#include "platform/win32/monitor.h"

namespace pelvaro::win32 {

namespace {

constexpr int kGap = 8;  // between windows that would cover each other, at 96 dpi

RECT areaOf(HWND window) {
  RECT area{};
  ::GetWindowRect(window, &area);
  return area;
}

LONG widthOf(const RECT& area) { return area.right - area.left; }
LONG heightOf(const RECT& area) { return area.bottom - area.top; }

void put(HWND window, LONG left, LONG top) {
  ::SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Inside the work area; of a window that is larger the upper left corner is seen.
void putWithin(HWND window, const RECT& wanted, const RECT& work) {
  put(window, std::max(work.left, std::min(wanted.left, work.right - widthOf(wanted))),
      std::max(work.top, std::min(wanted.top, work.bottom - heightOf(wanted))));
}

}  // namespace

// Over the middle of the main form, and below other forms that it would cover.
void FormWindow::placeFirst() {
  if (placed_) return;
  placed_ = true;
  const HWND main = screen_.mainWindow();
  const RECT work = monitorOf(main).rcWork;
  const RECT around = ::IsWindowVisible(main) && !::IsIconic(main) ? areaOf(main) : work;
  RECT wanted = areaOf(window_);
  ::OffsetRect(&wanted, (around.left + around.right - widthOf(wanted)) / 2 - wanted.left,
               (around.top + around.bottom - heightOf(wanted)) / 2 - wanted.top);
  for (const FormWindow* other : screen_.forms()) {
    if (other == this || other->window() == main || !::IsWindowVisible(other->window())) continue;
    const RECT taken = areaOf(other->window());
    RECT common{};
    const LONG below = taken.bottom + screen_.metrics().scaled(kGap);
    // Where there is no room below it stays over the middle.
    if (::IntersectRect(&common, &taken, &wanted) && below + heightOf(wanted) <= work.bottom) {
      ::OffsetRect(&wanted, 0, below - wanted.top);
    }
  }
  putWithin(window_, wanted, work);
}

void FormWindow::moveBy(int dx, int dy) {
  const RECT own = areaOf(window_);
  put(window_, own.left + dx, own.top + dy);
}

Place FormWindow::place() {
  const RECT own = areaOf(window_);
  POINT corner{own.left, own.top};
  if (::IsIconic(window_)) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    ::GetWindowPlacement(window_, &placement);
    // Which is counted from the corner of the work area.
    const MONITORINFO monitor = monitorOf(window_);
    corner = {placement.rcNormalPosition.left + monitor.rcWork.left - monitor.rcMonitor.left,
              placement.rcNormalPosition.top + monitor.rcWork.top - monitor.rcMonitor.top};
  }
  return {static_cast<int>(corner.x), static_cast<int>(corner.y)};
}

void FormWindow::moveTo(Place place) {
  RECT wanted = areaOf(window_);
  ::OffsetRect(&wanted, place.left - wanted.left, place.top - wanted.top);
  putWithin(window_, wanted, monitorOf(wanted).rcWork);
  placed_ = true;
}

}  // namespace pelvaro::win32
