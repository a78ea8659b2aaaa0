#include "ui/connection_form.h"

#include "base/bytes.h"
#include "base/numbers.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "devices/brand.h"
#include "drivers/start_program.h"
#include "phonebook/dial_params.h"
#include "phonebook/entry_properties.h"
#include "phonebook/modem_list.h"
#include "phonebook/ras_error_text.h"
#include "platform/dialogs.h"
#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

namespace {

constexpr const char* kNoModem = "--No Modem detect--";
constexpr const char* kEnterNumber = "Please enter the dialup number.";
constexpr const char* kFillInName = "Please fill in the name";
constexpr const char* kBluetoothAdvice = "Please manually add the device for bluetooth connection.";
constexpr const char* kAddNow = "Add Now";
constexpr const char* kModify = "Modify";
constexpr int kUsb = 0;  // in the list of connection types

std::string dotted(const Ip4& address) {
  std::string text;
  for (const std::uint8_t part : address) {
    if (!text.empty()) text += '.';
    text += std::to_string(part);
  }
  return text;
}

// The address that a box holds; an empty one and "-" are none. Its first four pieces are converted, a fifth is not
// looked at. Throws the run-time error of the conversion.
Ip4 address(std::string_view text) {
  Ip4 result{};
  if (text.empty() || text == "-") return result;
  bool more = true;
  for (std::uint8_t& part : result) {
    if (!more) throw RuntimeError(9, "Subscript out of range");
    const auto dot = text.find('.');
    part = toByte(text.substr(0, dot));
    more = dot != std::string_view::npos;
    if (more) text.remove_prefix(dot + 1);
  }
  return result;
}

}  // namespace

// The editor's say in one filling of the list; none any more when the form has gone meanwhile.
struct Form2::Filter : DeviceFilter {
  explicit Filter(Form2& form) : form_(form), life_(form.lives_), stops_(form.stops_) {}
  bool alive() const { return form_.lives_ == life_; }
  bool wanted() override { return alive() && form_.Check1.checked(); }
  bool validateDevice(const std::string& name) override { return form_.stops_ == stops_ && form_.validateDevice(name); }
  Form2& form_;
  const unsigned life_, stops_;
};

Form2::Form2(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kForm2), windows_(windows), probe_(services.serial, services.loop) {
  Option1.onClick = [this] { chooseAddresses(false); };
  Option2.onClick = [this] { chooseAddresses(true); };
  Label10.onClick = [this] { Option1.click(); };
  Label11.onClick = [this] { Option2.click(); };
  Label8.onClick = [this] { Check1.click(); };
  Combo3.onClick = [this] { typeChanged(); };
  Combo1.onClick = [this] { timerRefresh.setEnabled(false); };
  Check1.onClick = [this] { validateChanged(); };
  Image2.onMouseDown = [this] { Image2.setPicture(Picture::driver, Look::pressed); };
  Image2.onMouseMove = [this] {
    if (Image2.look() != Look::pressed) Image2.setPicture(Picture::driver, Look::hover);
  };
  Image2.onMouseUp = [this] { Image2.setPicture(Picture::driver, Look::normal); };
  Image2.onClick = [this] { driverOrAdvice(); };
  Command1.onClick = [this] { write(); };
  Command2.onClick = [this] {
    windows_.form3.initialize();
    windows_.form3.showModal();
  };
  Command3.onClick = [this] { unload(); };
  Command4.onClick = [this] { addDeviceManually(); };
  Label7.onClick = [this] { unload(); };
  Timer1.onTick = [this] { updateWriteButton(); };
  timerRefresh.onTick = [this] { refreshDevices(); };
}

void Form2::open(bool modify) {
  modify_ = modify;
  if (loaded()) {
    prepare();
  } else {
    load();
  }
  if (loaded()) show();  // it may have been closed meanwhile
}

void Form2::onLoad() {
  for (const char* type : {"USB", "Bluetooth"}) Combo3.add(type);
  prepare();
}

void Form2::onUnload() {
  ++lives_;
  stopProbe();
}

void Form2::stopProbe() {
  ++stops_;
  probe_.cancel();
}

void Form2::prepare() {
  accessary::applyColourScheme(*this);
  Option1.choose();
  windows_.setMode("Get Device");
  const unsigned life = lives_;
  windows_.form5.show();
  const bool filled = lives_ == life && fillDevices();
  windows_.form5.hide();
  if (!filled) return;
  if (Combo1.count() > 0) Combo1.select(0);
  Command1.setText(caption());
  if (modify_) {
    getDetail();
    previousName_ = Text6 + Text1.text();
  }
  Combo3.select(kUsb);
}

// Empties the list and fills it with the modems. False when the form was unloaded meanwhile: nothing of it may be
// touched then, for that would load it again.
bool Form2::fillDevices() {
  Filter filter(*this);
  Combo1.clear();
  Module1::FillModemList(services().ras, services().dialogs, filter, [&](const std::string& name) {
    if (filter.alive()) Combo1.add(name);
  });
  return filter.alive();
}

bool Form2::validateDevice(const std::string& deviceName) {
  return probe_.validateDevice(deviceName, windows_.form1.modemKeys);
}

std::string Form2::formatBrand(const std::string& text) { return devices::formatBrand(text); }

std::string Form2::GetDevicesBrand(const std::string& text) const {
  return devices::GetDevicesBrand(windows_.form1.modemKeys, text);
}

void Form2::getDetail() {
  const unsigned life = lives_;
  const std::string name = windows_.form1.ListView1.selectedText();
  RasEntryRecord record;
  Module1::GetEntryProperties(services().ras, name, record);
  std::vector<std::uint8_t> params;  // read and not shown
  bool passwordSaved = false;
  Module1::GetEntryDialParams(services().ras, params, nullptr, name, passwordSaved);
  wipe(params.data(), params.size());
  if (lives_ != life) return;

  Combo1.setText(record.DeviceName);
  std::string shown = name;
  if (const auto at = shown.find(Text6); at != std::string::npos) shown.erase(at, Text6.size());
  Text1.setText(shown);
  Text2.setText(record.LocalPhoneNumber);
  Text4.setText(dotted(record.DnsAddress));
  Text5.setText(dotted(record.DnsAddress));  // kept on purpose: the primary address once more
  Text3.setText(record.DnsSuffix);
}

void Form2::chooseAddresses(bool typed) {
  for (TextBox* box : {&Text4, &Text5}) accessary::enableBox(*box, typed, services().forms);
}

void Form2::onColoursChanged() {
  ProgramForm::onColoursChanged();
  chooseAddresses(Option2.checked());
}

void Form2::typeChanged() {
  const bool usb = Combo3.selected() == kUsb;
  for (Control* control : std::initializer_list<Control*>{&Label8, &Check1, &Command4, &Image1, &Image2}) {
    control->setVisible(usb);
  }
}

void Form2::validateChanged() {
  if (!fillDevices()) return;
  if (Combo1.count() == 0) Combo1.add(kNoModem);
  Combo1.select(0);
}

// Ten times a second, until the user has added or removed a modem.
void Form2::refreshDevices() {
  if (!fillDevices()) return;
  if (Combo1.count() == savedDeviceCount_) return;
  if (Combo1.count() > 0) Combo1.select(0);
  timerRefresh.setEnabled(false);
}

void Form2::addDeviceManually() {
  drivers::startProgram(services().processes, drivers::kModemApplet, kShowMinimised);
  savedDeviceCount_ = Combo1.count();
  timerRefresh.setEnabled(true);
}

// Hidden for Bluetooth, so the advice is reached by a message only.
void Form2::driverOrAdvice() {
  if (Combo3.selected() == kUsb) {
    windows_.driverForm.show();
    return;
  }
  const unsigned life = lives_;
  services().dialogs.messageBox(kBluetoothAdvice, kButtonsOk);
  if (lives_ == life) addDeviceManually();
}

void Form2::updateWriteButton() {
  const bool incomplete = Combo1.text() == kNoModem || Text1.text().empty() || Text2.text().empty() ||
                          Text3.text().empty() || Combo1.selected() < 0;
  Command1.setEnabled(!incomplete);
  Command1.setText(caption());
}

const char* Form2::caption() const { return modify_ ? kModify : kAddNow; }

void Form2::write() {
  if (Text2.text().empty()) {
    services().dialogs.messageBox(kEnterNumber, kButtonsOk);
    return;
  }
  EntryChoices choices;
  choices.automaticAddress = !Option2.checked();
  choices.number = trimmed(Text2.text());
  choices.device = Combo1.text();
  choices.accessPoint = trimmed(Text3.text());
  if (!choices.automaticAddress) {
    choices.dns = address(Text4.text());
    choices.dnsAlt = address(Text5.text());
  }
  if (trimmed(Text1.text()).empty()) {
    services().dialogs.messageBox(kFillInName, kButtonsOk);
    return;
  }
  const unsigned life = lives_;
  services().loop.yield();
  if (lives_ != life) return;
  const std::string name = Text6 + Text1.text();
  const bool renamed = Command1.text() == kModify && previousName_ != name;
  const std::uint32_t result = Module1::SetEntryProperties(services().ras, name, editorRecord(choices));
  if (result != 0) {
    services().dialogs.messageBox(Module1::RasErrorText(services().ras, static_cast<std::int32_t>(result)), kButtonsOk);
    return;
  }
  // Only now that the new one is there. Kept on purpose: names are compared with their case, though the service may
  // not.
  if (renamed) services().ras.deleteEntry(nullptr, previousName_.c_str());
  stopProbe();  // a hidden editor keeps no port that the new connection may want
  hide();
  windows_.form1.refreshList();
}

}  // namespace pelvaro
