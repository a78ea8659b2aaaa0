// frmDriver: shows whether there is a driver for a brand, a model and a kind of link, and installs it. Opened from the
// connection editor.
#pragma once

#include <string>
#include <vector>

#include "drivers/installer.h"
#include "ui/controls/combo_box.h"
#include "ui/controls/control.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class frmDriver : public ProgramForm {
 public:
  frmDriver(Windows& windows, Services& services, FormGroup& group);

  // Copies the driver files of a folder behind the shared folder; see drivers/installer.h.
  void CopyDriverFiles(const std::string& folder, const std::string& kind) { installer_.CopyDriverFiles(folder, kind); }
  const std::string& commonPath() const { return installer_.commonPath; }
  const std::string& systemPath() const { return installer_.systemPath; }
  const std::string& windowsPath() const { return installer_.windowsPath; }

  std::vector<std::string> Combo5;  // the brand's rows, "V3x|04", beside the entries of Combo2; never shown

  Label captionLabel{*this, "captionLabel"};  // the title
  Label Label1{*this, "Label1"};              // "Brand"
  ComboBox Combo1{*this, "Combo1"};           // the brands
  Label Label2{*this, "Label2"};              // "Model"
  ComboBox Combo2{*this, "Combo2"};           // the brand's models
  Label Label3{*this, "Label3"};              // "Connection Type"
  ComboBox Combo3{*this, "Combo3"};           // "USB" or "Bluetooth"
  Label Label5{*this, "Label5"};              // "Driver Support"
  Label driverlbl{*this, "driverlbl"};        // "Yes" or "No"
  CommandButton Command1{*this, "Command1"};  // "Install"
  CommandButton cmdOK{*this, "cmdOK"};        // "OK": back to the editor
  CommandButton Command3{*this, "Command3"};  // "Exit"
  Mark Label4{*this, "Label4"};               // the close mark

 protected:
  void onLoad() override;
  void onUnload() override;
  void onEscape() override { unload(); }
  void onMousePressed(MouseButton button, int x, int y) override;
  void onMouseMoved(MouseButton button, int x, int y) override;
  void onMouseReleased(MouseButton button, int x, int y) override;

 private:
  void restore(const char* key, ComboBox& list);
  void save(const char* key, ComboBox& list);
  void brandChanged();
  void showSupport();
  void install();
  void finish(unsigned life);

  Windows& windows_;
  drivers::Installer installer_;
  unsigned lives_ = 0;             // how often the form was unloaded: tells one life of it from the next
  int originX_ = 0, originY_ = 0;  // where a mouse button went down; 0 is none
  bool dragging_ = false;
};

}  // namespace pelvaro
