// Form4: the credentials prompt that starts a dial. Its two boxes are what the dial is made with; it is hidden, not
// unloaded, by the dial, so that a retry finds them filled.
#pragma once

#include <optional>

#include "ui/controls/control.h"
#include "ui/controls/image.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class Form4 : public ProgramForm {
 public:
  Form4(Windows& windows, Services& services, FormGroup& group);

  Image Image1{*this, "Image1"};              // the picture
  Label Label1{*this, "Label1"};              // "User Name:"
  TextBox Text1{*this, "Text1"};              // user name
  Label Label2{*this, "Label2"};              // "Password:"
  TextBox Text2{*this, "Text2"};              // password
  CommandButton Command1{*this, "Command1"};  // OK: connect
  CommandButton Command2{*this, "Command2"};  // Cancel
  Mark Label3{*this, "Label3"};               // the close mark
  Label Label6{*this, "Label6"};              // the title

 protected:
  void onLoad() override;
  void onEscape() override { unload(); }
  void onMousePressed(MouseButton button, int x, int y) override;
  void onMouseMoved(MouseButton button, int x, int y) override;
  void onMouseReleased(MouseButton button, int x, int y) override;

 private:
  void accept();

  Windows& windows_;
  std::optional<int> PosX, PosY;  // where the mouse was pressed; empty at load
  bool userDown = false;          // the left button is held
};

}  // namespace pelvaro
