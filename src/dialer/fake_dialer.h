// The dialer among fakes: its screen as a journal, the services, and the form that the tests dial with.
#pragma once

#include <gtest/gtest.h>

#include "dialer/connect.h"
#include "dialer/dial_form.h"
#include "dialer/dialer_screen.h"
#include "platform/fake/fake_dial_event_window.h"
#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_event_loop.h"

namespace pelvaro::fake {

// What the tests plant is read as it is at that moment; what the dialer does to the windows is journalled.
struct FakeScreen : DialerScreen {
  explicit FakeScreen(Journal& log) : journal(log) {}

  Journal& journal;
  std::string tooltip = "Connect";
  std::string selected = "Corvanti-Home";
  std::string user = "user";
  std::string pass = "pass";
  RasHandle handle = 0;  // p_iConnID

  std::string connectTooltip() override { return tooltip; }
  std::string selectedEntry() override { return selected; }
  std::string userName() override { return user; }
  std::string password() override { return pass; }
  RasHandle connectionHandle() override { return handle; }
  void setConnectionHandle(RasHandle value) override {
    journal.add("p_iConnID " + std::to_string(value));
    handle = value;
  }
  void enableTrafficTimer(bool on) override { journal.add(on ? "Timer2 on" : "Timer2 off"); }
  void showProgress(const std::string& text) override { journal.add("progress " + text); }
  void offerRetry() override { journal.add("Retry"); }
  void hideStatus() override { journal.add("hide frmStatus"); }
  void hidePrompt() override { journal.add("hide Form4"); }
};

struct DialerTest : testing::Test {
  Journal journal;
  FakeDialService ras{journal};
  FakeDialEventWindow windows{journal};
  FakeEventLoop loop{journal};
  FakeScreen screen{journal};
  DialContext context{ras, windows, loop, screen};
  frmDial form{context};
};

}  // namespace pelvaro::fake
