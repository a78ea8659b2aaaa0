// What all native controls share: a child window of the platform's own class whose procedure is subclassed, its name
// for scripts, its colours, and the guard around its events. One derived class a native control.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/control_peer.h"
#include "platform/win32/event_loop.h"
#include "platform/win32/screen_metrics.h"

namespace pelvaro::win32 {

// A message to a form's window: gives the colour of its surface.
constexpr UINT kAskFormColour = WM_APP + 1;
// A message to a form's window: a control of it (lParam) has taken the focus.
constexpr UINT kFocusTaken = WM_APP + 2;
// A message to a form's controls: the form was shown (wParam 1) or hidden (0).
constexpr UINT kFormShown = WM_APP + 3;

// What a control needs of the screen and of the form that it lies on.
struct ControlSurroundings {
  HWND form;
  FormEvents& formEvents;
  ScreenMetrics& metrics;
  MessageLoop& loop;
  std::function<HWND()> tooltips;  // the form's tooltip control, made when it is first asked for
};

class ControlWindow : public ControlPeer, public std::enable_shared_from_this<ControlWindow> {
 public:
  ~ControlWindow() override;
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  const std::string& text() override { return text_; }
  void setText(const std::string& text) override;
  void setVisible(bool visible) override;
  void setEnabled(bool enabled) override;
  void setColours(Colours colours) override;
  void setPicture(Picture picture, Look look) override;
  void focus() override;

  // What the form hands on of the control's notifications. Give a result where one is asked for.
  virtual void command(WORD /*notification*/) {}
  virtual LRESULT notified(NMHDR& /*header*/) { return 0; }
  virtual void draw(DRAWITEMSTRUCT& /*item*/) {}
  // The ground brush for WM_CTLCOLOR..., with the colours set in `dc`.
  virtual HBRUSH ground(HDC dc);

  HWND window() const { return window_; }
  ControlKind kind() const { return layout_.kind; }
  // What a screen reader calls the control.
  std::string accessibleName() const;
  // What the form's tooltip says over the control, for kinds that ask for it by offerTooltip(); nothing when empty.
  virtual std::string tooltip() { return {}; }
  // The control that a window belongs to, null for others.
  static ControlWindow* of(HWND window);

 protected:
  ControlWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings);

  // Makes the window and takes its procedure over. Called by the constructor of each kind.
  void create(const char* windowClass, DWORD style);
  // For kinds whose text the platform draws.
  void useFont();
  // A message to the control. The default passes it on to the platform's procedure.
  virtual LRESULT message(UINT number, WPARAM wParam, LPARAM lParam);
  LRESULT passOn(UINT number, WPARAM wParam, LPARAM lParam);
  // The same for a message on which the platform's procedure would draw at once and in its own look.
  LRESULT passOnUnseen(UINT number, WPARAM wParam, LPARAM lParam);
  // Answers WM_PAINT and WM_PRINTCLIENT with draw(); they may bring a device context.
  void drawNow(HDC given);
  // For kinds that look different under the pointer: it moves over the control, or has left it.
  void hover(bool over);
  // From now on the form asks for tooltip() when the pointer rests over the control.
  void offerTooltip();
  // Tells the form's tooltip control about this one.
  void tellTooltip(UINT message, char* text);
  bool hasTooltip() const { return hasTooltip_; }
  // Draws anew soon; on a form that is not shown there is nothing to draw yet.
  void repaint() const {
    if (formShown_) ::InvalidateRect(window_, nullptr, FALSE);
  }
  bool focused() const { return ::GetFocus() == window_; }
  bool enabled() const { return ::IsWindowEnabled(window_) != FALSE; }
  // By itself, whatever the form is.
  bool visible() const { return (::GetWindowLongA(window_, GWL_STYLE) & WS_VISIBLE) != 0; }
  int scaled(int length) const { return metrics_.scaled(length); }
  RECT client() const;
  // The colour of the form's surface.
  COLORREF formColour() const;

  const ControlLayout& layout_;
  ControlEvents& events_;
  const HWND form_;
  FormEvents& formEvents_;
  ScreenMetrics& metrics_;
  MessageLoop& loop_;
  const std::function<HWND()> tooltips_;
  bool hasTooltip_ = false;
  HWND window_ = nullptr;
  std::string text_;  // what WM_GETTEXT gives, kept in step by watching WM_SETTEXT
  Colours colours_{0xFFFFFF, 0};
  Picture picture_;
  Look look_ = Look::normal;
  bool hovered_ = false;

 private:
  void passFocusOn() const;
  static LRESULT CALLBACK procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam);

  WNDPROC platformProcedure_ = nullptr;
  bool formShown_ = false;
  HBRUSH brush_ = nullptr;
};

// Makes the native control of a layout row.
std::shared_ptr<ControlWindow> createControlWindow(const ControlLayout& layout, ControlEvents& events,
                                                   const ControlSurroundings& surroundings);

}  // namespace pelvaro::win32
