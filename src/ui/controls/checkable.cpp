#include "ui/controls/checkable.h"

#include "ui/controls/form.h"

namespace pelvaro {

bool Checkable::checked() {
  touch();
  if (peer()) checked_ = peer()->checked();
  return checked_;
}

void Checkable::setMark(bool mark) {
  if (checked() == mark) return;
  checked_ = mark;
  if (peer()) peer()->setChecked(mark);
}

void Checkable::reset() {
  Control::reset();
  checked_ = false;
}

void OptionButton::choose() {
  setMark(true);
  for (Control* control : form().controls()) {
    auto* other = dynamic_cast<OptionButton*>(control);
    if (other && other != this) other->setMark(false);
  }
  raiseClick();
}

// On a screen the mark is there, but the system leaves out options that are disabled or hidden when it clears the
// others.
void OptionButton::clicked() {
  if (takesClicks()) choose();
}

void CheckBox::setChecked(bool checked) {
  setMark(checked);
  raiseClick();
}

// On a screen the system changes the mark before it reports the click.
void CheckBox::click() {
  if (takesClicks() && visible()) setChecked(!checked());
}

}  // namespace pelvaro
