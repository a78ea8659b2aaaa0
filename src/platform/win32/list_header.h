// The columns of a list and their headings: the header that the platform's list view has, drawn in the program's look.
// https://learn.microsoft.com/windows/win32/controls/header-controls
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/control_peer.h"
#include "platform/win32/screen_metrics.h"

namespace pelvaro::win32 {

class ListHeader {
 public:
  ListHeader(HWND list, ScreenMetrics& metrics, const Colours& colours);
  ~ListHeader();
  ListHeader(const ListHeader&) = delete;
  ListHeader& operator=(const ListHeader&) = delete;

  // Gives the list other columns.
  void setColumns(std::span<const ListColumn> columns);
  int columnCount() const { return static_cast<int>(columns_.size()); }
  // The first column that is seen, 0 when there is none.
  int firstSeen() const;
  // Where a column lies from the left edge of a row, its width 0 when it is not to be seen.
  RECT column(int index) const;
  // Whether a notification of the header asks for what is refused: that a column which is not to be seen is opened.
  bool refuses(const NMHDR& header) const;
  void repaint() const { ::InvalidateRect(window_, nullptr, FALSE); }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam);
  LRESULT message(HWND window, UINT number, WPARAM wParam, LPARAM lParam);
  LRESULT layOut(HDLAYOUT& layout, WPARAM wParam);
  void draw(HDC target) const;

  const HWND list_;
  ScreenMetrics& metrics_;
  const Colours& colours_;
  HWND window_ = nullptr;
  WNDPROC platformProcedure_ = nullptr;
  struct Column {
    std::string heading;
    bool seen;
  };
  std::vector<Column> columns_;
};

// Between the edge of a cell and its text, at 96 dpi.
constexpr int kCellLeft = 8, kCellRight = 6;

}  // namespace pelvaro::win32
