#include "dialer/dial_form.h"

#include <utility>
#include <vector>

#include "base/bytes.h"
#include "phonebook/dial_params.h"
#include "phonebook/ras_error_text.h"
#include "platform/ras_layout.h"

namespace pelvaro {

namespace {

// A buffer or record that may hold a password: overwritten when it goes.
struct SecretBytes {
  std::vector<std::uint8_t> bytes;
  ~SecretBytes() { wipe(bytes.data(), bytes.size()); }
};
struct SecretRecord : DialRecord {
  ~SecretRecord() { wipe(Password); }
};

}  // namespace

void frmDial::load() {
  if (!loaded()) window_ = context_.windows.create();
  // Also a window of before that could not be hooked: without the hook every dial would be deaf.
  if (hook_.hookedWindow() != window_) hook_.install(window_);
}

void frmDial::unload() {
  if (!loaded()) return;
  hook_.remove();
  context_.windows.destroy(std::exchange(window_, 0));
}

WindowHandle frmDial::window() {
  load();
  return window_;
}

RasHandle frmDial::VBAsyncronousDial(const char* phonebook, const std::string& entryName) {
  load();
  context_.connected = false;
  context_.lastDialResult.clear();
  context_.loop.yield();

  SecretBytes params;
  bool passwordSaved = false;
  if (Module1::GetEntryDialParams(context_.ras, params.bytes, phonebook, entryName, passwordSaved) != 0) return 0;

  SecretRecord record;
  record.EntryName = context_.screen.selectedEntry();
  record.UserName = context_.screen.userName();
  record.Password = context_.screen.password();
  if (const std::uint32_t size = Module1::acceptedDialParamsSize(context_.ras)) {
    wipe(params.bytes.data(), params.bytes.size());
    params.bytes = Module1::packDialParams(record, size);
  }

  lngHConn = 0;
  lastResult = context_.ras.dial(phonebook, params.bytes.data(), ras::kNotifierWindow, window(), &lngHConn);
  context_.connected = lastResult == 0;
  context_.lastDialResult = std::to_string(lastResult);
  if (lastResult != 0) Module1::RasErrorText(context_.ras, static_cast<std::int32_t>(lastResult));  // not shown
  return lngHConn;
}

}  // namespace pelvaro
