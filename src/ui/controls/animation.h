// Animation: plays a film without sound, over and over.
#pragma once

#include "ui/controls/control.h"

namespace pelvaro {

class Animation : public Control {
 public:
  using Control::Control;

  // Opens the file and plays it until the form goes. A file that cannot be played leaves the place empty.
  void play(const std::string& path) {
    touch();
    file_ = path;
    if (peer()) peer()->playFile(path);
  }
  const std::string& file() const { return file_; }

 protected:
  void reset() override {
    Control::reset();
    file_.clear();
  }

 private:
  std::string file_;
};

}  // namespace pelvaro
