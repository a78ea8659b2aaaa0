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
    if (::SendMessageA(window_, ACM_OPENA, 0, reinterpret_cast<LPARAM>(path.c_str()))) play();
  }

 protected:
  // A film that nobody sees costs nothing: it stands while the form is hidden.
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam) override {
    if (number != kFormShown) return passOn(number, wParam, lParam);
    if (wParam) {
      play();
    } else {
      passOn(ACM_STOP, 0, 0);
    }
    return 0;
  }

 private:
  void play() {
    constexpr auto kForEver = static_cast<WPARAM>(-1);
    ::SendMessageA(window_, ACM_PLAY, kForEver, MAKELPARAM(0, 0xFFFF));
  }
};

}  // namespace pelvaro::win32
