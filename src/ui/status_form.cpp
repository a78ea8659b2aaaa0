#include "ui/status_form.h"

#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

frmStatus::frmStatus(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kFrmStatus), windows_(windows) {
  Command1.onClick = [this] { cancelOrRetry(); };
  closeMark.onClick = [this] { unload(); };
}

void frmStatus::onLoad() { accessary::applyColourScheme(*this); }

void frmStatus::onUnload() { windows_.form4.hide(); }

void frmStatus::showProgress(const std::string& text) {
  Label1.setText(text);
  Image1.setPicture(Picture::dialing);
}

void frmStatus::offerRetry() {
  Command1.setText("Retry");
  Image1.setPicture(Picture::failed);
}

void frmStatus::cancelOrRetry() {
  if (Command1.text() != "cancel") {
    // Kept on purpose: the handle is not handed to the main window, whose "Hang Up" does not end this connection.
    const std::string entryName = windows_.form1.ListView1.selectedText();
    windows_.dialForm.VBAsyncronousDial(nullptr, entryName);
    return;
  }
  services().ras.hangUp(windows_.dialForm.lngHConn);
  windows_.dialForm.unload();
  hide();
  windows_.form4.hide();
}

}  // namespace pelvaro
