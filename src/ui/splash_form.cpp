#include "ui/splash_form.h"

#include <utility>

#include "dialer/connect.h"
#include "platform/environment.h"
#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

Form5::Form5(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kForm5), windows_(windows) {
  closeMark.onClick = [this] { dismiss(); };
}

void Form5::onLoad() {
  accessary::applyColourScheme(*this);
  showSharedText();
  Animation1.play(services().environment.programFolder() + "\\loading.avi");
}

void Form5::showSharedText() { textLabel.setText(windows_.mode() == "Connect" ? "" : windows_.mode()); }

void Form5::onActivate() {
  if (windows_.mode() == "Connect") {
    connect::ToggleConnection(windows_.dial, windows_.dialForm);
    windows_.statusForm.hide();
    windows_.form4.hide();
  }
  if (std::exchange(untilActivated_, false)) hide();
}

// By the user, who does not want to wait for the phones that are being asked.
void Form5::dismiss() {
  windows_.form2.stopProbe();
  hide();
}

void Form5::showUntilActivated() {
  untilActivated_ = true;
  showModal();
}

}  // namespace pelvaro
