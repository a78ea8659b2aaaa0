// The list that a combo box drops down: a window of the platform's own beside the box. It draws and scrolls as the
// platform has it do, but for its edge, its rows and its size. Used by the combo box alone.
#pragma once

#include "platform/control_peer.h"
#include "platform/win32/screen_metrics.h"

namespace pelvaro::win32 {

// From the edge of a box, and of its list, to the text, at 96 dpi: that of text boxes.
constexpr int kComboPadding = 6;

class ComboBoxList {
 public:
  // `colours` are those of the box at any time.
  ComboBoxList(HWND box, ControlEvents& events, ScreenMetrics& metrics, const Colours& colours);
  ~ComboBoxList();
  ComboBoxList(const ComboBoxList&) = delete;
  ComboBoxList& operator=(const ComboBoxList&) = delete;

  // Before it drops down: as wide as its longest entry, as high as its rows.
  void fit();
  int roomToTheRight() const;
  void drawRow(const DRAWITEMSTRUCT& item);

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam);
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam);
  int rowCount() const { return static_cast<int>(::SendMessageA(box_, CB_GETCOUNT, 0, 0)); }
  void eraseBelowRows(HDC dc) const;
  void drawEdge(HDC dc) const;

  const HWND box_;
  ControlEvents& events_;
  ScreenMetrics& metrics_;
  const Colours& colours_;
  HWND window_ = nullptr;
  WNDPROC platformProcedure_ = nullptr;
};

}  // namespace pelvaro::win32
