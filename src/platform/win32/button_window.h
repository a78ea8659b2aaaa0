// Buttons: command buttons, large picture buttons and the title strip's marks. An owner-drawn button control.
// https://learn.microsoft.com/windows/win32/controls/buttons
#pragma once

#include "platform/win32/control_window.h"

namespace pelvaro::win32 {

class ButtonWindow : public ControlWindow {
 public:
  ButtonWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings);
  void command(WORD notification) override;
  void draw(DRAWITEMSTRUCT& item) override;

  // The button that Enter presses is drawn with a strong edge.
  void setDefault(bool isDefault) { default_ = isDefault; }

 protected:
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam) override;

 private:
  bool isPicture() const { return layout_.kind == ControlKind::pictureButton; }
  bool isMark() const { return layout_.kind == ControlKind::closeMark || layout_.kind == ControlKind::minimiseMark; }
  void drawMark(HDC dc, const RECT& area, bool pressed);
  void drawFace(HDC dc, const RECT& area, bool pressed);
  void drawContent(HDC dc, RECT area, COLORREF colour);
  void textChanged();

  bool default_ = false;
};

}  // namespace pelvaro::win32
