// Form: one window of the program with its controls, made from a layout table. Loaded on first use, shown, hidden,
// unloaded. Without a screen it is a plain value that tests click.
#pragma once

#include <memory>
#include <vector>

#include "platform/control_peer.h"
#include "platform/event_loop.h"
#include "platform/services.h"

namespace pelvaro {

class Control;
class Form;
class Timer;

// The program's forms, as far as they must know of each other: which one is the active one among them.
struct FormGroup {
  Form* active = nullptr;
};

class Form : private FormEvents {
 public:
  Form(Services& services, FormGroup& group, const FormLayout& layout);
  ~Form() override;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  // Makes the form hidden, with its design values, and runs its load handler. Touching a control does so too.
  void load();
  // Runs the unload handler and forgets texts, lists and positions; the next load starts from the design values.
  void unload();
  bool loaded() const { return loaded_; }

  // Loads if needed, shows and activates.
  void show();
  // The same, then waits until the form is hidden; the program's other windows take no input meanwhile.
  void showModal();
  // Hides and keeps everything. Does nothing to a form that is not loaded.
  void hide();
  bool visible() const { return visible_; }

  void minimise();
  bool minimised() const { return minimised_; }
  void moveBy(int dx, int dy);
  // How far the form was moved since it was loaded, in pixels.
  int movedX() const { return movedX_; }
  int movedY() const { return movedY_; }

  // The colours of the surface.
  void setColours(Colours colours);
  Colours colours() const { return colours_; }

  // Where the loaded form is on the screens; putting it there, but always whole on a screen.
  Place place() { return peer_ ? peer_->place() : Place{}; }
  void moveTo(Place place) {
    if (peer_) peer_->moveTo(place);
  }
  // How the mouse pointer looks over the form; unloading makes it an arrow.
  void setPointer(Pointer pointer);
  Pointer pointer() const { return pointer_; }

  const FormLayout& layout() const { return layout_; }
  const std::vector<Control*>& controls() const { return controls_; }
  Services& services() { return services_; }

  // What a user can do to the form itself; a screen reports it, a test calls it.
  void activated() override;
  void closeRequested() override;
  void escapePressed() override;
  void helpRequested() override;
  void coloursChanged() override;
  void mousePressed(MouseButton button, int x, int y) override;
  void mouseMoved(MouseButton button, int x, int y) override;
  void mouseReleased(MouseButton button, int x, int y) override;

 protected:
  virtual void onLoad() {}
  virtual void onUnload() {}
  // The form became the active one among the program's own; coming back from another program does not count.
  virtual void onActivate() {}
  virtual void onClose() { unload(); }
  virtual void onEscape() {}
  virtual void onHelp() {}
  virtual void onColoursChanged() {}
  virtual void onMousePressed(MouseButton, int /*x*/, int /*y*/) {}
  virtual void onMouseMoved(MouseButton, int /*x*/, int /*y*/) {}
  virtual void onMouseReleased(MouseButton, int /*x*/, int /*y*/) {}

 private:
  friend class Control;
  friend class Timer;
  void add(Control& control) { controls_.push_back(&control); }
  void add(Timer& timer) { timers_.push_back(&timer); }
  void becameActive();
  void showPeer(bool modal);

  Services& services_;
  FormGroup& group_;
  const FormLayout& layout_;
  std::vector<Control*> controls_;
  std::vector<Timer*> timers_;
  std::shared_ptr<FormPeer> peer_;
  Colours colours_{0xFFFFFF, 0};
  Pointer pointer_ = Pointer::arrow;
  bool loaded_ = false;
  bool unloading_ = false;
  bool visible_ = false;
  bool showing_ = false;
  bool minimised_ = false;
  int movedX_ = 0;
  int movedY_ = 0;
};

}  // namespace pelvaro
