// Form2: the connection editor. It takes a connection's name, number, access point, name servers and modem, writes them
// as a phonebook entry, and can ask the attached phone which of the modems it is.
#pragma once

#include <cstdint>
#include <string>

#include "devices/probe.h"
#include "ui/controls/checkable.h"
#include "ui/controls/combo_box.h"
#include "ui/controls/image.h"
#include "ui/controls/timer.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class Form2 : public ProgramForm {
 public:
  Form2(Windows& windows, Services& services, FormGroup& group);

  // Prepares and shows the editor for a new connection or, with `modify`, for the one selected in the main window.
  void open(bool modify);
  // Fills the boxes from the connection selected in the main window.
  void getDetail();
  // Empties the list of modems and fills it anew; nothing is selected afterwards. Loads the editor if need be.
  void refillDevices() { fillDevices(); }
  // Ends the asking of phones that is under way, as though none answered.
  void stopProbe();

  // Device detection, on the port and with the main window's modem keys; see devices/.
  bool COMAvailableVB(std::int16_t number) { return probe_.COMAvailableVB(number); }
  bool OpenCOMPort(std::int16_t number) { return probe_.OpenCOMPort(number); }
  bool validateDevice(const std::string& deviceName);
  const std::string& brand() const { return probe_.brand(); }  // of the last probe
  static std::string formatBrand(const std::string& text);
  std::string GetDevicesBrand(const std::string& text) const;

  const std::string Text6 = "Corvanti-";                           // what every entry's name begins with; never shown
  Label captionLabel{*this, "captionLabel"};                       // the title
  Mark Label7{*this, "Label7"};                                    // the close mark
  Label Label2{*this, "Label2"};                                   // "Connection Name"
  TextBox Text1{*this, "Text1"};                                   // the name without what it begins with
  Label numberLabel{*this, "numberLabel"};                         // "Server or Dialup Number"
  TextBox Text2{*this, "Text2"};                                   // the number
  Label apnLabel{*this, "apnLabel"};                               // "APN"
  TextBox Text3{*this, "Text3"};                                   // the access point
  OptionButton Option1{*this, "Option1"};                          // name servers from the network
  Label Label10{*this, "Label10"};                                 // "Auto Detect"
  OptionButton Option2{*this, "Option2"};                          // name servers as typed below
  Label Label11{*this, "Label11"};                                 // "Use address below"
  Label primaryLabel{*this, "primaryLabel"};                       // "Primary DNS"
  TextBox Text4{*this, "Text4"};                                   // the first name server
  Label secondaryLabel{*this, "secondaryLabel"};                   // "Secondary DNS"
  TextBox Text5{*this, "Text5"};                                   // the second name server
  Label typeLabel{*this, "typeLabel"};                             // "Connection Type"
  ComboBox Combo3{*this, "Combo3"};                                // "USB" or "Bluetooth"
  Image Image1{*this, "Image1"};                                   // the cable
  Image Image2{*this, "Image2"};                                   // driver installation, or advice for Bluetooth
  Label Label1{*this, "Label1"};                                   // "Device"
  ComboBox Combo1{*this, "Combo1"};                                // the modems
  CheckBox Check1{*this, "Check1"};                                // list only the modem whose phone answers
  Label Label8{*this, "Label8"};                                   // "Validate Device"
  CommandButton Command4{*this, "Command4"};                       // "Add Device Manually"
  CommandButton Command2{*this, "Command2"};                       // "List of Operators"
  CommandButton Command1{*this, "Command1"};                       // "Add Now" or "Modify": its caption is its state
  CommandButton Command3{*this, "Command3"};                       // "Cancel"
  Timer Timer1{*this, {.interval = 100, .enabled = true}};         // keeps the write button's state
  Timer timerRefresh{*this, {.interval = 100, .enabled = false}};  // follows what the user adds to the modems

 protected:
  void onLoad() override;
  void onUnload() override;
  void onEscape() override { unload(); }
  void onColoursChanged() override;

 private:
  struct Filter;
  void prepare();
  bool fillDevices();
  void validateChanged();
  void refreshDevices();
  void addDeviceManually();
  void driverOrAdvice();
  void chooseAddresses(bool typed);
  void typeChanged();
  void updateWriteButton();
  const char* caption() const;
  void write();

  Windows& windows_;
  devices::Probe probe_;
  bool modify_ = false;       // the selected connection is edited, not a new one added
  std::string previousName_;  // the entry's whole name as it was when the editor opened
  int savedDeviceCount_ = 0;  // how many modems there were when one was to be added by hand
  unsigned lives_ = 0;        // how often the form was unloaded: tells one life of it from the next
  unsigned stops_ = 0;        // how often the asking of phones was ended
};

}  // namespace pelvaro
