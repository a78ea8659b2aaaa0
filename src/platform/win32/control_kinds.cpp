// Which native control each kind of control is.
#include "platform/win32/animation_window.h"
#include "platform/win32/button_window.h"
#include "platform/win32/combo_box_window.h"
#include "platform/win32/label_window.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/option_window.h"
#include "platform/win32/text_box_window.h"

namespace pelvaro::win32 {

namespace {

std::shared_ptr<ControlWindow> create(const ControlLayout& layout, ControlEvents& events,
                                      const ControlSurroundings& surroundings) {
  switch (layout.kind) {
    case ControlKind::label:
    case ControlKind::picture: return std::make_shared<LabelWindow>(layout, events, surroundings);
    case ControlKind::pictureButton:
    case ControlKind::closeMark:
    case ControlKind::minimiseMark:
    case ControlKind::commandButton: return std::make_shared<ButtonWindow>(layout, events, surroundings);
    case ControlKind::optionButton:
    case ControlKind::checkBox: return std::make_shared<OptionWindow>(layout, events, surroundings);
    case ControlKind::textBox:
    case ControlKind::passwordBox: return std::make_shared<TextBoxWindow>(layout, events, surroundings);
    case ControlKind::comboBox: return std::make_shared<ComboBoxWindow>(layout, events, surroundings);
    case ControlKind::listView: return std::make_shared<ListViewWindow>(layout, events, surroundings);
    case ControlKind::animation: return std::make_shared<AnimationWindow>(layout, events, surroundings);
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<ControlWindow> createControlWindow(const ControlLayout& layout, ControlEvents& events,
                                                   const ControlSurroundings& surroundings) {
  auto control = create(layout, events, surroundings);
  // By its style and at the end: the form is not on the screen yet, and a control that is shown earlier, or by a call,
  // has the system work on it for nothing.
  if (layout.visible) {
    const LONG style = ::GetWindowLongA(control->window(), GWL_STYLE);
    ::SetWindowLongA(control->window(), GWL_STYLE, style | WS_VISIBLE);
  }
  return control;
}

}  // namespace pelvaro::win32
