// ProgramForm: what all forms of the program share: the colour scheme follows the system's colours. Each form applies
// it at its own place in its load.
#pragma once

#include "ui/colour_scheme.h"
#include "ui/controls/form.h"

namespace pelvaro {

class ProgramForm : public Form {
 public:
  using Form::Form;

 protected:
  void onColoursChanged() override { accessary::applyColourScheme(*this); }
};

}  // namespace pelvaro
