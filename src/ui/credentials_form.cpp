#include "ui/credentials_form.h"

#include "dialer/connect.h"
#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

Form4::Form4(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kForm4), windows_(windows) {
  Command1.onClick = [this] { accept(); };
  Command2.onClick = [this] { unload(); };
  Label3.onClick = [this] { unload(); };
}

void Form4::onLoad() {
  PosX.reset();
  PosY.reset();
  userDown = false;
  accessary::applyColourScheme(*this);
}

void Form4::accept() {
  windows_.setMode("Connect");
  windows_.statusForm.show();
  services().loop.yield();
  connect::ToggleConnection(windows_.dial, windows_.dialForm);
}

void Form4::onMousePressed(MouseButton button, int x, int y) {
  PosX = x;
  PosY = y;
  userDown = button == MouseButton::left;
}

void Form4::onMouseMoved(MouseButton button, int x, int y) {
  if (button == MouseButton::left && userDown && PosX && PosY) moveBy(x - *PosX, y - *PosY);
}

void Form4::onMouseReleased(MouseButton, int, int) { userDown = false; }

}  // namespace pelvaro
