// All forms on the screen: which there are, which of them is active, and which are kept from input.
#pragma once

#include <memory>
#include <vector>

#include "platform/control_peer.h"
#include "platform/win32/event_loop.h"
#include "platform/win32/screen_metrics.h"

namespace pelvaro::win32 {

class FormWindow;

// All forms that there are, in the order in which they were made; the first is the main one and owns the others.
class FormScreen : public FormFactory {
 public:
  explicit FormScreen(MessageLoop& loop) : loop_(loop) {}

  std::shared_ptr<FormPeer> createForm(const FormLayout& layout, FormEvents& events) override;
  Colour systemColour(int index) override { return ::GetSysColor(index); }
  bool highContrast() override { return metrics_.highContrast(); }

  ScreenMetrics& metrics() { return metrics_; }
  MessageLoop& loop() { return loop_; }
  HWND mainWindow() const;
  // The window that a message box belongs to: the active one of ours, else the main one.
  HWND activeWindow() const;
  // Keeps all forms but one (null for none) from input; gives those that took input until now.
  std::vector<HWND> disableOthers(HWND except);
  static void enable(const std::vector<HWND>& windows);
  const std::vector<FormWindow*>& forms() const { return forms_; }
  void forget(FormWindow* form);

 private:
  MessageLoop& loop_;
  ScreenMetrics metrics_;
  std::vector<FormWindow*> forms_;
};

}  // namespace pelvaro::win32
