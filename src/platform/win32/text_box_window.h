// Text boxes, the password box among them. https://learn.microsoft.com/windows/win32/controls/edit-controls
#pragma once

#include "platform/win32/control_window.h"

namespace pelvaro::win32 {

class TextBoxWindow : public ControlWindow {
 public:
  TextBoxWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings);
  const std::string& text() override;
  HBRUSH ground(HDC dc) override;

 protected:
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam) override;

 private:
  void refuse();
  void pasteWithout(char refused);
  void drawFrame();
  void shrink(RECT& area) const;
};

}  // namespace pelvaro::win32
