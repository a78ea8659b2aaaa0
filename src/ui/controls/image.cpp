#include "ui/controls/image.h"

namespace pelvaro {

void Image::setPicture(Picture picture, Look look) {
  touch();
  if (picture_ == picture && look_ == look) return;
  picture_ = picture;
  look_ = look;
  if (peer()) peer()->setPicture(picture, look);
}

void Image::reset() {
  Control::reset();
  picture_ = layout().picture;
  look_ = Look::normal;
}

void Image::mousePressed(MouseButton, int, int) {
  if (onMouseDown) onMouseDown();
}

void Image::mouseMoved(MouseButton, int, int) {
  if (onMouseMove) onMouseMove();
}

void Image::mouseReleased(MouseButton, int, int) {
  if (onMouseUp) onMouseUp();
}

}  // namespace pelvaro
