// Which native control each kind of control is.
#include "platform/win32/animation_window.h"
#include "platform/win32/button_window.h"
#include "platform/win32/label_window.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/text_box_window.h"

namespace pelvaro::win32 {

namespace {

std::shared_ptr<ControlWindow> createHidden(const ControlLayout& layout, ControlEvents& events,
                                            const ControlSurroundings& surroundings) {
  switch (layout.kind) {
    case ControlKind::label:
    case ControlKind::picture: return std::make_shared<LabelWindow>(layout, events, surroundings);
    case ControlKind::pictureButton:
    case ControlKind::closeMark:
    case ControlKind::minimiseMark:
    case ControlKind::commandButton: return std::make_shared<ButtonWindow>(layout, events, surroundings);
    case ControlKind::textBox:
    case ControlKind::passwordBox: return std::make_shared<TextBoxWindow>(layout, events, surroundings);
    case ControlKind::listView: return std::make_shared<ListViewWindow>(layout, events, surroundings);
    case ControlKind::animation: return std::make_shared<AnimationWindow>(layout, events, surroundings);
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<ControlWindow> createControlWindow(const ControlLayout& layout, ControlEvents& events,
                                                   const ControlSurroundings& surroundings) {
  // Seen only when all is set: a control that can be seen draws at every step.
  auto control = createHidden(layout, events, surroundings);
  if (layout.visible) control->setVisible(true);
  return control;
}

}  // namespace pelvaro::win32
