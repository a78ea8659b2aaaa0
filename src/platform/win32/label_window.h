// Labels and resting pictures: a static control that is drawn here. It lets the mouse through, so that the form is
// moved by it too, unless the layout makes it clickable.
// https://learn.microsoft.com/windows/win32/controls/static-controls
#pragma once

#include "platform/win32/control_window.h"

namespace pelvaro::win32 {

class LabelWindow : public ControlWindow {
 public:
  LabelWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings);
  void command(WORD notification) override;
  void draw(DRAWITEMSTRUCT& item) override;
  std::string tooltip() override;

 protected:
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam) override;

 private:
  bool isCuttable() const;
  HFONT font() const;
  void drawText(HDC dc, RECT area);
  void drawFigure(HDC dc, const RECT& area);
};

}  // namespace pelvaro::win32
