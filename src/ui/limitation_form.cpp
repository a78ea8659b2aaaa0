#include "ui/limitation_form.h"

#include "base/numbers.h"
#include "base/runtime_error.h"
#include "monitor/limits.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

namespace {

constexpr const char* kInvalidInput = "Invalid Input. Please enter again.";
constexpr const char* kTimeRange = "The time limit can be 1 to 546 minutes. Please enter again.";
constexpr const char* kSizeRange = "The size limit can be 1 to 32767 KB. Please enter again.";
constexpr std::int16_t kSecondsPerMinute = 60;

// The 16-bit number that a box holds. Throws run-time error 6 when it does not fit.
std::int16_t number(TextBox& box) { return toInt16(leadingNumber(box.text())); }

}  // namespace

Form6::Form6(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kForm6), windows_(windows) {
  Option1.onClick = [this] { enableOne(Text1, Text2); };
  Option2.onClick = [this] { enableOne(Text2, Text1); };
  Command1.onClick = [this] { accept(); };
  Command2.onClick = [this] { unload(); };
  closeMark.onClick = [this] { unload(); };
}

void Form6::onLoad() {
  accessary::applyColourScheme(*this);
  Option1.choose();  // whichever limit is active
  const Form1& main = windows_.form1;
  if (main.requiredtime != 0) Text1.setText(std::to_string(main.requiredtime / kSecondsPerMinute));
  if (main.requiredbyte != 0) Text2.setText(std::to_string(main.requiredbyte));
}

void Form6::onColoursChanged() {
  ProgramForm::onColoursChanged();
  const bool size = Option2.checked();
  enableOne(size ? Text2 : Text1, size ? Text1 : Text2);
}

void Form6::enableOne(TextBox& one, TextBox& other) {
  accessary::enableBox(one, true, services().forms);
  accessary::enableBox(other, false, services().forms);
}

void Form6::accept() {
  const bool time = Option1.checked();
  const bool size = !time && Option2.checked();
  try {
    if ((time && setTime() == 0) || (size && setSize() == 0)) {
      services().dialogs.messageBox(kInvalidInput, kButtonsOk);
      if (!loaded()) return;  // it may have been closed meanwhile
      Text1.setText("");      // kept on purpose: this box, also when the other one was wrong
      (time ? Text1 : Text2).focus();
      return;
    }
  } catch (const RuntimeError&) {
    services().dialogs.messageBox(time ? kTimeRange : kSizeRange, kButtonsOk);
    if (loaded()) (time ? Text1 : Text2).focus();
    return;
  }
  windows_.form1.limitAsked = false;
  unload();
}

// Both give the number that was read and leave the other limit as it is. Kept on purpose: the limit is written before
// it is found to be 0.
std::int16_t Form6::setTime() {
  Form1& main = windows_.form1;
  const std::int16_t minutes = number(Text1);
  main.requiredtime = multiply16(minutes, kSecondsPerMinute);
  if (minutes == 0) return 0;
  main.settingflag = monitor::kTimeLimit;
  main.setSetting("Time", true);
  main.startTime = services().clock.secondsOfDay();
  main.Label12.setText(durationText(monitor::timeOfDay(main.requiredtime)));
  return minutes;
}

std::int16_t Form6::setSize() {
  Form1& main = windows_.form1;
  const std::int16_t kilobytes = number(Text2);
  main.requiredbyte = kilobytes;
  if (kilobytes == 0) return 0;
  main.Label12.setText(std::to_string(kilobytes) + " KB");
  main.settingflag = monitor::kSizeLimit;
  main.setSetting("Size", true);
  return kilobytes;
}

}  // namespace pelvaro
