// Option buttons and check boxes: the platform's automatic ones, which keep their mark and answer scripts and screen
// readers by themselves, drawn here. https://learn.microsoft.com/windows/win32/controls/button-types-and-styles
#pragma once

#include "platform/win32/control_window.h"

namespace pelvaro::win32 {

class OptionWindow : public ControlWindow {
 public:
  OptionWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings);
  bool checked() override { return ::SendMessageA(window_, BM_GETCHECK, 0, 0) == BST_CHECKED; }
  void setChecked(bool checked) override { ::SendMessageA(window_, BM_SETCHECK, checked ? BST_CHECKED : 0, 0); }
  void command(WORD notification) override;
  void draw(DRAWITEMSTRUCT& item) override;

 protected:
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam) override;

 private:
  bool isOption() const { return layout_.kind == ControlKind::optionButton; }
  void chooseNext(bool back);
  void placeTabStop();
  void drawMark(HDC dc, const RECT& box, COLORREF ink);
};

}  // namespace pelvaro::win32
