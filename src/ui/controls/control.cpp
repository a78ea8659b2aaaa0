#include "ui/controls/control.h"

#include <cstdlib>

#include "ui/controls/form.h"

namespace pelvaro {

namespace {

// A name that is not in the table is a mistake of ours that no run can survive: the first test finds it.
const ControlLayout& row(const Form& form, std::string_view name) {
  for (const ControlLayout& candidate : form.layout().controls) {
    if (candidate.name == name) return candidate;
  }
  std::abort();
}

}  // namespace

Control::Control(Form& form, std::string_view name) : form_(form), layout_(row(form, name)) {
  form.add(*this);
  text_ = layout_.caption;
  visible_ = layout_.visible;
}

void Control::touch() { form_.load(); }

const std::string& Control::text() {
  touch();
  return peer_ ? peer_->text() : text_;
}

void Control::setText(std::string_view newText) {
  if (text() == newText) return;
  text_ = newText;
  if (peer_) peer_->setText(text_);
}

bool Control::visible() {
  touch();
  return visible_;
}

void Control::setVisible(bool visible) {
  touch();
  if (visible_ == visible) return;
  visible_ = visible;
  if (peer_) peer_->setVisible(visible);
}

bool Control::enabled() {
  touch();
  return enabled_;
}

void Control::setEnabled(bool enabled) {
  touch();
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  if (peer_) peer_->setEnabled(enabled);
}

void Control::setColours(Colours colours) {
  touch();
  if (colours_.background == colours.background && colours_.text == colours.text) return;
  colours_ = colours;
  if (peer_) peer_->setColours(colours);
}

void Control::focus() {
  touch();
  if (peer_) peer_->focus();
}

bool Control::takesClicks() const { return form_.loaded() && enabled_; }

void Control::clicked() {
  if (takesClicks()) raiseClick();
}

void Control::reset() {
  text_ = layout_.caption;
  visible_ = layout_.visible;
  enabled_ = true;
  colours_ = {0xFFFFFF, 0};
}

void Control::attach(std::shared_ptr<ControlPeer> peer) {
  reset();
  peer_ = std::move(peer);
}

void Control::detach() {
  peer_.reset();
  reset();
}

}  // namespace pelvaro
