// The animation: the platform's control for films without sound, its ground keyed out.
// https://learn.microsoft.com/windows/win32/controls/animation-control-reference
#pragma once

#include "platform/win32/control_window.h"

namespace pelvaro::win32 {

class AnimationWindow : public ControlWindow {
 public:
  AnimationWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings)
      : ControlWindow(layout, events, surroundings) {
    create(ANIMATE_CLASSA, ACS_CENTER | ACS_TRANSPARENT);
  }

  void playFile(const std::string& path) override {
    constexpr UINT kForEver = static_cast<UINT>(-1);
    if (::SendMessageA(window_, ACM_OPENA, 0, reinterpret_cast<LPARAM>(path.c_str()))) {
      ::SendMessageA(window_, ACM_PLAY, kForEver, MAKELPARAM(0, 0xFFFF));
    }
  }
};

}  // namespace pelvaro::win32
