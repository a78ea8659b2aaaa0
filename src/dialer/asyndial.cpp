#include "dialer/asyndial.h"

#include "dialer/dial_form.h"
#include "phonebook/ras_error_text.h"
#include "platform/ras_layout.h"

namespace pelvaro::asyndial {

namespace {

// RASCS_ values (ras.h) that end a dial.
constexpr std::uint32_t kInteractive = 0x1000;
constexpr std::uint32_t kConnected = 0x2000;
constexpr std::uint32_t kDisconnected = 0x2001;

constexpr const char* kFailed = "Fail to connect";

// The hang-up and the texts of a dial that came to nothing. The handle is always hung up, so that no port stays open.
void fail(DialContext& context, frmDial& form) {
  context.lastHangUpResult = context.ras.hangUp(form.lngHConn);
  context.screen.showProgress(kFailed);
  context.screen.offerRetry();
}

}  // namespace

const char* progressText(std::uint32_t state) {
  switch (state) {
    case 0: return "Opening port...";
    case 1: return "Port opened...";
    case 2: return "Connecting device...";
    case 3: return "Device connected...";
    case 5: return "Checking username and password...";
    case 21: return "Logging on the network...";
    case kInteractive: return "Connect successfully.";  // kept on purpose: not RASCS_Connected
    default: return nullptr;
  }
}

void OnRasDialEvent(DialContext& context, frmDial& form, std::uint32_t state, std::uint32_t error) {
  if (const char* text = progressText(state)) context.screen.showProgress(text);
  if (state == kConnected || state == kInteractive) {
    context.screen.enableTrafficTimer(true);
    form.unload();
    context.screen.hideStatus();
    context.screen.hidePrompt();
  }
  if (state == kDisconnected) {
    context.screen.enableTrafficTimer(false);
    form.unload();
    context.screen.hidePrompt();
    fail(context, form);
  }
  // Kept on purpose: whatever the state was, so that a disconnection with an error hangs up twice.
  if (error != 0) {
    context.screen.enableTrafficTimer(false);
    Module1::RasErrorText(context.ras, static_cast<std::int32_t>(error));  // not shown
    form.unload();
    fail(context, form);
  }
}

void RasDialEventHook::install(WindowHandle window) {
  remove();
  previous_ = context_.windows.hook(window, *this);
  // A window that could not be hooked has nothing to be given back: a procedure of 0 would take it down.
  if (previous_ != 0) hookedWindow_ = window;
  if (context_.dialEventMessage == 0) context_.dialEventMessage = context_.windows.registerMessage("RasDialEvent");
  if (context_.dialEventMessage == 0) context_.dialEventMessage = ras::kDialEventFallback;
}

void RasDialEventHook::remove() {
  if (hookedWindow_ == 0) return;
  context_.windows.restore(hookedWindow_, previous_);
  hookedWindow_ = 0;
}

std::intptr_t RasDialEventHook::message(WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                                        std::intptr_t lParam) {
  // The handler may unload the form and with it this hook: what is needed afterwards is taken before.
  const WindowProcedure previous = previous_;
  DialEventWindow& windows = context_.windows;
  if (number == context_.dialEventMessage) {
    OnRasDialEvent(context_, form_, static_cast<std::uint32_t>(wParam), static_cast<std::uint32_t>(lParam));
  }
  return windows.callPrevious(previous, window, number, wParam, lParam);
}

}  // namespace pelvaro::asyndial
