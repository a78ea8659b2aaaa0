// Combo boxes: the platform's drop-down lists, which keep their entries and selection and answer scripts and screen
// readers by themselves, drawn here. https://learn.microsoft.com/windows/win32/controls/combo-boxes
#pragma once

#include <optional>

#include "platform/win32/combo_box_list.h"
#include "platform/win32/control_window.h"

namespace pelvaro::win32 {

class ComboBoxWindow : public ControlWindow {
 public:
  ComboBoxWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings);
  void setRowCount(int count) override;
  int selectedRow() override { return dropped() ? chosen_ : platformsRow(); }
  void selectRow(int row) override { ::SendMessageA(window_, CB_SETCURSEL, static_cast<WPARAM>(row), 0); }
  void command(WORD notification) override;
  void draw(DRAWITEMSTRUCT& item) override;
  std::string tooltip() override;

 protected:
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam) override;

 private:
  bool dropped() const { return ::SendMessageA(window_, CB_GETDROPPEDSTATE, 0, 0) != 0; }
  int platformsRow() const { return static_cast<int>(::SendMessageA(window_, CB_GETCURSEL, 0, 0)); }
  void choose();
  RECT textPlace() const;
  void drawBox(HDC target);

  std::optional<ComboBoxList> list_;
  int chosen_ = -1;     // the selected row while the list is down: the platform's follows the pointer there
  bool taken_ = false;  // the list is closing with its row taken, not given up
};

}  // namespace pelvaro::win32
