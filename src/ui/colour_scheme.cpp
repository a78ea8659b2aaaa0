#include "ui/colour_scheme.h"

#include <algorithm>
#include <cmath>

#include "ui/controls/control.h"
#include "ui/controls/form.h"

namespace pelvaro {

namespace {

constexpr Colour kNavy = 0x800000;
constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kInputText = 0x1A1A1A;
constexpr Colour kPaleBlue = 0xF8E4D8;  // RGB 216 228 248
constexpr double kReadable = 4.5;

// Colours of the system, 0x80000000 and an index of GetSysColor.
constexpr int kInactiveCaptionText = 0x13;
constexpr int kWindow = 5, kWindowText = 8, kButtonFace = 15, kButtonText = 18;

double linear(Colour channel) {
  const double c = (channel & 0xFF) / 255.0;
  return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(Colour colour) {
  return 0.2126 * linear(colour) + 0.7152 * linear(colour >> 8) + 0.0722 * linear(colour >> 16);
}

}  // namespace

double contrastRatio(Colour one, Colour other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

Colour readableGround(Colour system, Colour text) {
  return contrastRatio(system, text) >= kReadable ? system : kPaleBlue;
}

namespace {

Colours inputColours(FormFactory& screen) {
  if (screen.highContrast()) return {screen.systemColour(kWindow), screen.systemColour(kWindowText)};
  return {kWhite, kInputText};
}

}  // namespace

void accessary::enableBox(Control& box, bool enabled, FormFactory& screen) {
  Colours colours = inputColours(screen);
  if (!enabled && !screen.highContrast()) colours.background = screen.systemColour(kButtonFace);
  box.setEnabled(enabled);
  box.setColours(colours);
}

void accessary::applyColourScheme(Form& form) {
  FormFactory& screen = form.services().forms;
  Colours surface{readableGround(screen.systemColour(kInactiveCaptionText), kNavy), kNavy};
  Colours button{kWhite, kNavy};
  const Colours input = inputColours(screen);
  if (screen.highContrast()) {
    surface = input;
    button = {screen.systemColour(kButtonFace), screen.systemColour(kButtonText)};
  }
  form.setColours(surface);
  for (Control* control : form.controls()) {
    switch (control->layout().kind) {
      case ControlKind::commandButton: control->setColours(button); break;
      case ControlKind::textBox:
      case ControlKind::passwordBox:
      case ControlKind::comboBox: control->setColours(input); break;
      case ControlKind::listView: control->setColours({input.background, surface.text}); break;
      default: control->setColours(surface); break;
    }
  }
}

}  // namespace pelvaro
