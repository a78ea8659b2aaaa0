// Form5: the splash with the animation. When it is activated while the shared text is "Connect" it connects or hangs
// up; otherwise it only shows that text.
#pragma once

#include "ui/controls/animation.h"
#include "ui/controls/timer.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class Form5 : public ProgramForm {
 public:
  Form5(Windows& windows, Services& services, FormGroup& group);

  // Shows the splash modally and takes it away when its activation has done its work.
  void showUntilActivated();
  // Puts the shared text on the splash.
  void showSharedText();

  Label captionLabel{*this, "captionLabel"};  // the title
  Animation Animation1{*this, "Animation1"};  // "loading.avi"
  Label textLabel{*this, "textLabel"};        // the shared text, nothing while that is "Connect"
  Mark closeMark{*this, "closeMark"};
  Timer Timer1{*this, {.interval = 1000, .enabled = false}};  // has no handler

 protected:
  void onLoad() override;
  void onActivate() override;
  void onClose() override { dismiss(); }
  void onEscape() override { dismiss(); }

 private:
  void dismiss();

  Windows& windows_;
  bool untilActivated_ = false;
};

}  // namespace pelvaro
