// frmStatus: the window "Connection" that shows how a dial goes and offers to cancel it or, after a failure, to retry.
#pragma once

#include "ui/controls/control.h"
#include "ui/controls/image.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class frmStatus : public ProgramForm {
 public:
  frmStatus(Windows& windows, Services& services, FormGroup& group);

  // The progress text of a dial. Loads the form if needed, never shows it.
  void showProgress(const std::string& text);
  // The button reads "Retry" from now on, until the form is unloaded.
  void offerRetry();

  Label captionLabel{*this, "captionLabel"};  // the title
  Image Image1{*this, "Image1"};              // dialing or failed
  Label Label1{*this, "Label1"};              // the progress text
  CommandButton Command1{*this, "Command1"};  // "cancel" or "Retry": its caption is its state
  Mark closeMark{*this, "closeMark"};

 protected:
  void onLoad() override;
  void onUnload() override;
  void onEscape() override { unload(); }

 private:
  void cancelOrRetry();

  Windows& windows_;
};

}  // namespace pelvaro
