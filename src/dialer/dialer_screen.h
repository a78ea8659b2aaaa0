// What the dialer sees of the windows, and what it does to them. Implemented by ui/, by a journal in tests.
#pragma once

#include <string>

#include "platform/dial_service.h"

namespace pelvaro {

struct DialerScreen {
  virtual ~DialerScreen() = default;

  // The tooltip of the main window's connect image; exactly "Connect" means that a toggle dials.
  virtual std::string connectTooltip() = 0;
  // The text of the main window's selected connection, empty when none is selected.
  virtual std::string selectedEntry() = 0;
  // The two boxes of the credentials prompt.
  virtual std::string userName() = 0;
  virtual std::string password() = 0;
  // The main window's public connection handle.
  virtual RasHandle connectionHandle() = 0;
  virtual void setConnectionHandle(RasHandle handle) = 0;
  // The main window's one-second traffic timer.
  virtual void enableTrafficTimer(bool on) = 0;
  // The status window: loads it if needed, never shows it.
  virtual void showProgress(const std::string& text) = 0;
  virtual void offerRetry() = 0;
  virtual void hideStatus() = 0;
  virtual void hidePrompt() = 0;
};

}  // namespace pelvaro
