// Control: what all controls of a form share: a text, a place in the layout, visible and enabled, colours, a click.
// The kinds with more to them derive from it (list_view.h, combo_box.h, image.h, checkable.h, animation.h).
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/control_peer.h"

namespace pelvaro {

class Form;

class Control : public ControlEvents {
 public:
  // `name` is the control's row in the form's layout.
  Control(Form& form, std::string_view name);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // The text as the screen has it. Loads the form if needed.
  virtual const std::string& text();
  // Writes the text; nothing happens on the screen when it has that text already.
  virtual void setText(std::string_view text);

  bool visible();
  void setVisible(bool visible);
  bool enabled();
  void setEnabled(bool enabled);
  void setColours(Colours colours);
  Colours colours() const { return colours_; }
  void focus();

  const ControlLayout& layout() const { return layout_; }

  // The user's click, as a test makes it: does nothing while disabled or not visible.
  virtual void click() {
    if (visible_) clicked();
  }
  std::function<void()> onClick;

 protected:
  // Loads the form if needed: touching a control of an unloaded form loads it.
  void touch();
  ControlPeer* peer() { return peer_.get(); }
  const Form& form() const { return form_; }
  // Hidden ones do: a script's message reaches them.
  bool takesClicks() const;
  // The click, as a screen reports it.
  void clicked() override;
  void raiseClick() const {
    if (onClick) onClick();
  }
  // Back to the design values; called when the form is loaded and when it is unloaded.
  virtual void reset();

 private:
  friend class Form;
  void attach(std::shared_ptr<ControlPeer> peer);
  void detach();

  Form& form_;
  const ControlLayout& layout_;
  std::shared_ptr<ControlPeer> peer_;
  std::string text_;
  bool visible_ = true;
  bool enabled_ = true;
  Colours colours_{0xFFFFFF, 0};
};

// Kinds that need no more than that.
using Label = Control;
using TextBox = Control;
using CommandButton = Control;
using Mark = Control;

}  // namespace pelvaro
