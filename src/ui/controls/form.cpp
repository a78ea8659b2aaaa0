#include "ui/controls/form.h"

#include <utility>

#include "ui/controls/control.h"
#include "ui/controls/timer.h"

namespace pelvaro {

Form::Form(Services& services, FormGroup& group, const FormLayout& layout)
    : services_(services), group_(group), layout_(layout) {}

Form::~Form() {
  if (group_.active == this) group_.active = nullptr;
}

void Form::load() {
  if (loaded_) return;
  loaded_ = true;
  visible_ = minimised_ = false;
  movedX_ = movedY_ = 0;
  peer_ = services_.forms.createForm(layout_, *this);
  // In the order of the layout table, which is the order of the tabulator key.
  for (const ControlLayout& row : layout_.controls) {
    for (Control* control : controls_) {
      if (&control->layout() == &row) control->attach(peer_ ? peer_->createControl(row, *control) : nullptr);
    }
  }
  for (Timer* timer : timers_) timer->attach(peer_ ? peer_->createTimer(*timer) : nullptr);
  onLoad();
}

void Form::unload() {
  if (!loaded_ || unloading_) return;
  unloading_ = true;
  hide();
  onUnload();
  for (Timer* timer : timers_) timer->detach();
  for (Control* control : controls_) control->detach();
  if (peer_) peer_->destroy();
  peer_.reset();
  pointer_ = Pointer::arrow;
  loaded_ = unloading_ = false;
}

void Form::showPeer(bool modal) {
  load();
  if (!loaded_) return;  // its load may have unloaded it
  visible_ = true;
  minimised_ = false;
  showing_ = true;
  if (const std::shared_ptr<FormPeer> keep = peer_) keep->show(modal);  // messages are served in there
  showing_ = false;
  becameActive();
}

void Form::show() { showPeer(false); }

void Form::showModal() {
  if (group_.active == this) group_.active = nullptr;  // a modal showing activates anew, also when it is up already
  showPeer(true);
  services_.loop.runUntil([this] { return !visible_; });
}

void Form::hide() {
  if (!loaded_ || !visible_) return;
  visible_ = false;
  if (group_.active == this) group_.active = nullptr;
  if (peer_) peer_->hide();
}

void Form::minimise() {
  minimised_ = true;
  if (peer_) peer_->minimise();
}

void Form::moveBy(int dx, int dy) {
  movedX_ += dx;
  movedY_ += dy;
  if (peer_) peer_->moveBy(dx, dy);
}

void Form::setColours(Colours colours) {
  colours_ = colours;
  if (peer_) peer_->setColours(colours);
}

void Form::setPointer(Pointer pointer) {
  pointer_ = pointer;
  if (peer_) peer_->setPointer(pointer);
}

void Form::becameActive() {
  if (!visible_ || group_.active == this) return;
  group_.active = this;
  onActivate();
}

void Form::activated() {
  if (!showing_) becameActive();
}

void Form::closeRequested() {
  if (loaded_) onClose();
}

void Form::escapePressed() {
  if (loaded_) onEscape();
}

void Form::helpRequested() {
  if (loaded_) onHelp();
}

void Form::coloursChanged() {
  if (loaded_) onColoursChanged();
}

void Form::mousePressed(MouseButton button, int x, int y) { onMousePressed(button, x, y); }
void Form::mouseMoved(MouseButton button, int x, int y) { onMouseMoved(button, x, y); }
void Form::mouseReleased(MouseButton button, int x, int y) { onMouseReleased(button, x, y); }

}  // namespace pelvaro
