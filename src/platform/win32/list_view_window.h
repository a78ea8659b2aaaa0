// Lists: the platform's list view in report view. The rows stay above; the control asks for what it shows. Without
// headings there is one column, as wide as the list.
// https://learn.microsoft.com/windows/win32/controls/list-view-controls-overview
#pragma once

#include <optional>

#include "platform/win32/control_window.h"
#include "platform/win32/list_header.h"

namespace pelvaro::win32 {

class ListViewWindow : public ControlWindow {
 public:
  ListViewWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings);
  ~ListViewWindow() override;
  void setColours(Colours colours) override;
  void setRowCount(int count) override;
  int selectedRow() override;
  void selectRow(int row) override;
  void setColumns(std::span<const ListColumn> columns) override;
  LRESULT notified(NMHDR& header) override;

 protected:
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam) override;

 private:
  void reportClick();
  void fitColumn(int spare);
  void rightPressLost();
  LRESULT findRow(UINT flags, std::string_view wanted, int start) const;
  void released(MouseButton button, int x, int y);
  void reportActivation();
  void scrollSideways(int distance);
  bool wantsEnter(const MSG* asked);
  LRESULT drawRow(NMLVCUSTOMDRAW& drawing);
  RECT rowPlace(int row) const;
  COLORREF drawRowGround(HDC dc, int row, const RECT& area);
  void drawCells(HDC dc, int row, const RECT& area, COLORREF ink);
  void giveText(LVITEMA& item);
  void drawFrame();
  void eraseBelowRows(HDC dc);
  void openMenuByKeyboard();

  std::optional<ListHeader> header_;
  HIMAGELIST rowHeight_ = nullptr;  // an empty list whose only purpose is to make the rows as high as they are
  // The selected row as the control last told it. Any message may change it, and between messages nothing can: a poll
  // that asks twenty times a second mostly costs no message.
  int selected_ = -1;
  bool selectedKnown_ = false;
  bool ours_ = false;          // a selection that we make ourselves raises nothing
  bool rightPressed_ = false;  // a right click is reported at its release
  bool unreported_ = false;    // the right press has selected a row and the click is still to be reported
  bool reported_ = false;      // this press has raised its click already
  // An activation waits until the platform's procedure is done with the click or the key: the form often goes in it.
  bool holding_ = false;
  bool activated_ = false;
};

}  // namespace pelvaro::win32
