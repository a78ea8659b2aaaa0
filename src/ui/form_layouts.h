// The layout tables of the forms, in pixels at 96 dpi: what stands where, in tab order, with its design text.
// Grid: unit 4, margin 16, title strip 28 high; a label stands just before the box that it names.
#pragma once

#include "platform/control_peer.h"

namespace pelvaro::layouts {

extern const FormLayout kForm1;
extern const FormLayout kForm2;
extern const FormLayout kForm3;
extern const FormLayout kForm4;
extern const FormLayout kForm5;
extern const FormLayout kForm6;
extern const FormLayout kFrmDriver;
extern const FormLayout kFrmEdit;
extern const FormLayout kFrmStatus;

}  // namespace pelvaro::layouts
