// Image: a picture on a form, or a large picture button. A button's tooltip is its text, which is also what a screen
// reader speaks; its picture is one of an image list's (button_pictures.h), swapped by mouse handlers.
#pragma once

#include "ui/controls/control.h"

namespace pelvaro {

class Image : public Control {
 public:
  using Control::Control;

  const std::string& toolTipText() { return text(); }
  void setToolTipText(std::string_view text) { setText(text); }

  void setPicture(Picture picture, Look look = Look::normal);
  Picture picture() const { return picture_; }
  Look look() const { return look_; }

  std::function<void()> onMouseDown;
  std::function<void()> onMouseMove;
  std::function<void()> onMouseUp;

 protected:
  void reset() override;

 private:
  void mousePressed(MouseButton button, int x, int y) override;
  void mouseMoved(MouseButton button, int x, int y) override;
  void mouseReleased(MouseButton button, int x, int y) override;

  Picture picture_ = Picture::none;
  Look look_ = Look::normal;
};

}  // namespace pelvaro
