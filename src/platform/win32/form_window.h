// A form on the screen: a borderless window drawn in the program's own look, its controls and its timers.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/control_peer.h"
#include "platform/win32/form_screen.h"

namespace pelvaro::win32 {

class FormWindow : public FormPeer, public std::enable_shared_from_this<FormWindow> {
 public:
  FormWindow(FormScreen& screen, const FormLayout& layout, FormEvents& events);
  ~FormWindow() override;
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  std::shared_ptr<ControlPeer> createControl(const ControlLayout& layout, ControlEvents& events) override;
  std::unique_ptr<TimerPeer> createTimer(TimerEvents& events) override;
  void setColours(Colours colours) override;
  void destroy() override;
  void show(bool modal) override;
  void hide() override;
  void moveBy(int dx, int dy) override;
  void minimise() override;
  void setPointer(Pointer pointer) override;
  Place place() override;
  void moveTo(Place place) override;

  HWND window() const { return window_; }

 private:
  friend class WindowTimer;
  static LRESULT CALLBACK procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam);
  LRESULT message(UINT number, WPARAM wParam, LPARAM lParam);
  LRESULT notified(NMHDR& header);
  void mouse(UINT number, WPARAM wParam, LPARAM lParam);
  void activation(bool active);
  void command(WPARAM wParam, LPARAM lParam);
  void paint();
  void placeFirst();
  void endModal();
  void tellControls(bool shown);
  HWND child(const char* name) const;
  HWND tooltips();

  FormScreen& screen_;
  const FormLayout& layout_;
  FormEvents& events_;
  HWND window_ = nullptr;
  HWND tooltips_ = nullptr;                             // made when a control first asks for it
  std::string tip_;                                     // what they say now
  std::vector<std::pair<HWND, const char*>> children_;  // with their names
  HWND lastFocus_ = nullptr;
  HWND before_ = nullptr;  // the one of our windows that was active when this form was shown
  Colours colours_{0xFFFFFF, 0};
  HCURSOR pointer_ = nullptr;  // none: the usual ones
  bool inOptions_ = false;     // the control made last is an option button
  bool placed_ = false;
  bool shown_ = false;  // by us; the platform hides and shows what a minimised main form owns
  bool pressed_ = false;
  std::vector<HWND> disabled_;  // what this form disabled while it is modal
  std::vector<TimerEvents*> timers_;
};

}  // namespace pelvaro::win32
