// All windows of the program, the dialer that they share and the text that they pass to each other. Forms reach each
// other's controls through it. One object a program.
#pragma once

#include <string>

#include "dialer/dial_context.h"
#include "dialer/dial_form.h"
#include "ui/connection_form.h"
#include "ui/credentials_form.h"
#include "ui/driver_form.h"
#include "ui/limitation_form.h"
#include "ui/main_form.h"
#include "ui/operators_form.h"
#include "ui/record_form.h"
#include "ui/splash_form.h"
#include "ui/status_form.h"

namespace pelvaro {

struct Windows : private DialerScreen {
  explicit Windows(Services& services);

  // The shared action text: "Connect" makes the splash connect or hang up when it is activated.
  const std::string& mode() const { return mode_; }
  void setMode(const std::string& text);

  Form1 form1;
  Form2 form2;
  Form3 form3;
  Form4 form4;
  Form5 form5;
  Form6 form6;
  frmDriver driverForm;
  frmEdit recordForm;
  frmStatus statusForm;
  DialContext dial;
  frmDial dialForm;

 private:
  std::string connectTooltip() override { return form1.Image2.toolTipText(); }
  std::string selectedEntry() override { return form1.ListView1.selectedText(); }
  std::string userName() override { return form4.Text1.text(); }
  std::string password() override { return form4.Text2.text(); }
  RasHandle connectionHandle() override { return form1.p_iConnID; }
  void setConnectionHandle(RasHandle handle) override { form1.p_iConnID = handle; }
  void enableTrafficTimer(bool on) override { form1.Timer2.setEnabled(on); }
  void showProgress(const std::string& text) override { statusForm.showProgress(text); }
  void offerRetry() override { statusForm.offerRetry(); }
  void hideStatus() override { statusForm.hide(); }
  void hidePrompt() override { form4.hide(); }

  FormGroup group_;
  std::string mode_;
};

}  // namespace pelvaro
