#include "ui/driver_form.h"

#include "base/numbers.h"
#include "base/runtime_error.h"
#include "drivers/catalogue.h"
#include "platform/dialogs.h"
#include "platform/settings.h"
#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

namespace {

constexpr const char* kNothingChosen = "No items selected";
constexpr const char* kNoDriver = "No driver available. Please manually install the driver.";
constexpr const char* kUnplug = "Please remove cable before installing driver.";
constexpr const char* kOtherRow = "---Other---";
constexpr const char* kOtherModel = "# Other Model #";
constexpr const char* kSection = "setting";
constexpr int kOther = 0;      // in the list of models
constexpr int kBluetooth = 1;  // in the list of connection types

}  // namespace

frmDriver::frmDriver(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kFrmDriver),
      windows_(windows),
      installer_({services.dialogs, services.environment, services.loop, services.files, services.processes,
                  services.shutdown}) {
  Combo1.onClick = [this] { brandChanged(); };
  Combo2.onClick = [this] { showSupport(); };
  Combo3.onClick = [this] { showSupport(); };
  Command1.onClick = [this] { install(); };
  cmdOK.onClick = [this] {
    windows_.form2.show();
    hide();
  };
  Command3.onClick = [this] { unload(); };
  Label4.onClick = [this] { unload(); };
}

void frmDriver::onLoad() {
  accessary::applyColourScheme(*this);
  originX_ = originY_ = 0;
  dragging_ = false;
  installer_.findFolders();
  for (const char* type : {"USB", "Bluetooth"}) Combo3.add(type);
  for (const std::string_view brand : drivers::brands()) Combo1.add(brand);
  Combo1.select(0);
  Combo3.select(0);
  restore("brand", Combo1);
  restore("model", Combo2);
  restore("type", Combo3);
}

void frmDriver::onUnload() {
  ++lives_;
  Combo5.clear();
}

// A setting that is missing, not a number or not a place in the list changes nothing. "-1" is one: nothing is selected.
void frmDriver::restore(const char* key, ComboBox& list) {
  try {
    list.select(toInt16(services().settings.get(kSection, key)));
  } catch (const RuntimeError&) {  // the choice made so far stays
  }
}

// A choice that cannot be stored is made anew next time.
void frmDriver::save(const char* key, ComboBox& list) {
  services().settings.save(kSection, key, std::to_string(list.selected()));
}

// Entry for entry, the models and their rows stand at the same place.
void frmDriver::brandChanged() {
  Combo5 = drivers::codedRows(Combo1.selected());
  Combo5.insert(Combo5.begin(), kOtherRow);
  Combo2.clear();
  Combo2.add(kOtherModel);
  for (std::size_t i = 1; i < Combo5.size(); ++i) Combo2.add(drivers::modelOf(Combo5[i]));
  Combo2.select(kOther);
}

void frmDriver::showSupport() {
  const bool none = Combo3.selected() == kBluetooth || Combo2.selected() == kOther;
  driverlbl.setText(none ? "No" : "Yes");
}

void frmDriver::install() {
  const unsigned life = lives_;
  setPointer(Pointer::hourglass);
  save("brand", Combo1);
  save("model", Combo2);
  save("type", Combo3);
  if (Combo1.selected() < 0 || Combo2.selected() < 0) {
    services().dialogs.messageBox(kNothingChosen, kButtonsOk);
    finish(life);
    return;
  }
  if (Combo2.selected() == kOther) {
    services().dialogs.messageBox(kNoDriver, kButtonsOk);
    return;  // kept on purpose: the pointer stays an hourglass
  }
  services().dialogs.messageBox(kUnplug, kButtonsOk);
  if (lives_ != life) return;  // it may have been closed meanwhile
  const std::string model = Combo2.text();
  std::string code;
  for (std::size_t i = 1; i < Combo5.size() && code.empty(); ++i) {
    if (drivers::modelOf(Combo5[i]) == model) code = drivers::codeOf(Combo5[i]);
  }
  installer_.install(code);
  finish(life);
}

// The window may have been closed, and opened anew, while the installation asked or let events run.
void frmDriver::finish(unsigned life) {
  if (lives_ == life) setPointer(Pointer::arrow);
  windows_.form2.refillDevices();
  if (lives_ == life) unload();
}

// Kept on purpose: any button begins a drag, and one that began at the very edge, at 0, moves nothing.
void frmDriver::onMousePressed(MouseButton, int x, int y) {
  originX_ = x;
  originY_ = y;
  dragging_ = true;
}

void frmDriver::onMouseMoved(MouseButton button, int x, int y) {
  if (button != MouseButton::left || !dragging_ || originX_ == 0 || originY_ == 0) return;
  moveBy(x - originX_, y - originY_);
}

void frmDriver::onMouseReleased(MouseButton, int, int) { dragging_ = false; }

}  // namespace pelvaro
