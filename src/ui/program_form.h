// ProgramForm: what all forms of the program share: the colour scheme follows the system's colours, F1 shows the
// manual, and the window is moved by its surface. Each form applies the scheme at its own place in its load.
#pragma once

#include "ui/accessary.h"
#include "ui/colour_scheme.h"
#include "ui/controls/form.h"

namespace pelvaro {

class ProgramForm : public Form {
 public:
  using Form::Form;

 protected:
  void onColoursChanged() override { accessary::applyColourScheme(*this); }
  void onHelp() override { accessary::showHelp(services()); }
  void onMousePressed(MouseButton button, int x, int y) override {
    dragged_ = button == MouseButton::left;
    dragFromX_ = x;
    dragFromY_ = y;
  }
  void onMouseMoved(MouseButton, int x, int y) override {
    if (dragged_) moveBy(x - dragFromX_, y - dragFromY_);
  }
  void onMouseReleased(MouseButton, int, int) override { dragged_ = false; }

 private:
  bool dragged_ = false;  // the left button was pressed on the surface and is held
  int dragFromX_ = 0, dragFromY_ = 0;
};

}  // namespace pelvaro
