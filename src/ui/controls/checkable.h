// OptionButton and CheckBox: the controls that carry a check mark. Scripts set marks by message and without an event,
// so a handler reads the mark from the control.
#pragma once

#include "ui/controls/control.h"

namespace pelvaro {

// What both share: the mark.
class Checkable : public Control {
 public:
  using Control::Control;

  // The mark as the screen has it.
  bool checked();

 protected:
  // Raises nothing.
  void setMark(bool mark);
  void reset() override;

 private:
  bool checked_ = false;
};

// One of the options of a form, all of which are one group.
class OptionButton : public Checkable {
 public:
  using Checkable::Checkable;

  // Chooses this option in code, which takes the mark from the others and raises the click as a user's choice does,
  // also when it is chosen already.
  void choose();

 private:
  void clicked() override;
};

class CheckBox : public Checkable {
 public:
  using Checkable::Checkable;

  // Sets the mark in code and raises the click as a user does, also when nothing changes.
  void setChecked(bool checked);
  void click() override;
};

}  // namespace pelvaro
