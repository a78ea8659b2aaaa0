// What a random user does in the windows, and the table of all kinds of steps.
#include <cstdlib>

#include "random_user.h"

namespace pelvaro {

const std::vector<RandomUser::Deed>& RandomUser::deeds() {
  using U = RandomUser;
  static const std::vector<Deed> table = {
      {{"main", 60}, &U::useMain},
      {{"editor", 60}, &U::useEditor},
      {{"picker", 30}, &U::usePicker},
      {{"record", 25}, &U::useRecord},
      {{"prompt", 25}, &U::usePrompt},
      {{"splash", 10}, &U::useSplash},
      {{"limits", 30}, &U::useLimits},
      {{"status", 15}, &U::useStatus},
      {{"drivers", 40}, &U::useDrivers},
      {{"sign-in", 30}, &U::signIn},
      {{"stay-connected", 15}, &U::stayConnected},
      {{"hang-up", 8}, &U::hangUp},
      {{"cancel-or-retry", 12}, &U::cancelOrRetry},
      {{"set-limit", 12}, &U::setLimit},
      {{"near-limit", 15}, &U::comeNearLimit},
      {{"write-entry", 20}, &U::writeEntry},
      {{"menu", 12}, &U::openMenu},
      {{"escape", 8}, &U::pressEscape},
      {{"enter", 10}, &U::pressEnter},
      {{"f1", 4}, &U::pressF1},
      {{"alt-f4", 5}, &U::pressAltF4},
      {{"activate", 10}, &U::activate},
      {{"drag", 6}, &U::drag},
      {{"hover", 8}, &U::hover},
      {{"minimise", 2}, &U::minimise},
      {{"recolour", 3}, &U::recolour},
      {{"plug-in", 20}, &U::plugIn},
      {{"unplug", 4}, &U::unplug},
      {{"occupy", 4}, &U::occupy},
      {{"phone-speaks", 6}, &U::phoneSpeaks},
      {{"network-answers", 8}, &U::networkAnswers},
      {{"dial-event", 15}, &U::dialEvent},
      {{"late-dial-event", 8}, &U::lateDialEvent},
      {{"strange-message", 3}, &U::strangeMessage},
      {{"counters-move", 30}, &U::moveCounters},
      {{"counters-fail", 4}, &U::failCounters},
      {{"service-fails", 12}, &U::failService},
      {{"files-fail", 3}, &U::failFiles},
      {{"programs-fail", 3}, &U::failPrograms},
      {{"settings-fail", 2}, &U::failSettings},
      {{"service-changes", 3}, &U::changeService},
      {{"system-changes", 3}, &U::changeSystem},
      {{"other-program", 10}, &U::otherProgram},
      {{"script", 8}, &U::runScript},
      {{"wait", 40}, &U::wait},
      {{"long-wait", 1}, &U::waitLong},
  };
  return table;
}

// ---- any control of a window, or the way to it ----

bool RandomUser::useMain() { return pressAny(windows_->form1); }

bool RandomUser::useEditor() {
  if (reachable(windows_->form2)) return pressAny(windows_->form2);
  return press(windows_->form1, windows_->form1.Image1);
}

bool RandomUser::usePicker() {
  if (reachable(windows_->form3)) return pressAny(windows_->form3);
  if (!reachable(windows_->form2)) return false;
  return press(windows_->form2, windows_->form2.Command2);
}

bool RandomUser::useRecord() {
  if (reachable(windows_->recordForm)) return pressAny(windows_->recordForm);
  Form3& picker = windows_->form3;
  if (!reachable(picker) || picker.ListView2.count() == 0) return false;
  picker.ListView2.chooseRow(dice_.pick(picker.ListView2.count()));
  return press(picker, picker.Command3);
}

bool RandomUser::usePrompt() {
  if (reachable(windows_->form4)) return pressAny(windows_->form4);
  return press(windows_->form1, windows_->form1.Image2);
}

bool RandomUser::useSplash() { return reachable(windows_->form5) && pressAny(windows_->form5); }

bool RandomUser::useLimits() {
  if (reachable(windows_->form6)) return pressAny(windows_->form6);
  return press(windows_->form1, windows_->form1.Image3);
}

bool RandomUser::useStatus() { return reachable(windows_->statusForm) && pressAny(windows_->statusForm); }

bool RandomUser::useDrivers() {
  if (reachable(windows_->driverForm)) return pressAny(windows_->driverForm);
  return reachable(windows_->form2) && press(windows_->form2, windows_->form2.Image2);
}

// ---- what takes several presses ----

bool RandomUser::signIn() {
  Form1& main = windows_->form1;
  Form4& prompt = windows_->form4;
  if (!reachable(main) || main.ListView1.count() == 0) return false;
  main.ListView1.chooseRow(dice_.pick(main.ListView1.count()));
  if (main.Image2.toolTipText() != "Connect") return true;
  press(main, main.Image2);
  if (!reachable(prompt)) return true;
  prompt.Text1.setText(line::kPracticeUser);
  prompt.Text2.setText(dice_.oneIn(6) ? "wrong" : line::kPracticePassword);
  press(prompt, prompt.Command1);
  pause_ = dice_.pick(800);
  return true;
}

// Phones, network and service are well, and the user connects and has nothing else in mind for a moment.
bool RandomUser::stayConnected() {
  Form1& main = windows_->form1;
  if (main.Image2.toolTipText() == "Hang Up") return false;
  mendEverything();
  if (reachable(windows_->statusForm)) windows_->statusForm.closeRequested();
  for (int row = 0; reachable(main) && row < main.ListView1.count(); ++row) {
    if (dice_.oneIn(2)) main.ListView1.chooseRow(row);
  }
  if (!reachable(main) || !main.Image2.enabled() || !press(main, main.Image2)) return true;
  Form4& prompt = windows_->form4;
  if (!reachable(prompt)) return true;
  prompt.Text1.setText(line::kPracticeUser);
  prompt.Text2.setText(line::kPracticePassword);
  press(prompt, prompt.Command1);
  pause_ = 800;
  return true;
}

bool RandomUser::hangUp() {
  Form1& main = windows_->form1;
  return reachable(main) && main.Image2.toolTipText() == "Hang Up" && press(main, main.Image2);
}

bool RandomUser::cancelOrRetry() {
  frmStatus& status = windows_->statusForm;
  return reachable(status) && press(status, status.Command1);
}

bool RandomUser::setLimit() {
  static constexpr const char* kLimits[] = {"1", "1", "2", "50", "200", "546", "547", "0", "-3", "", "32767", "99999"};
  Form6& limits = windows_->form6;
  if (!reachable(limits) && !press(windows_->form1, windows_->form1.Image3)) return false;
  if (!reachable(limits)) return true;
  const bool time = dice_.oneIn(2);
  press(limits, time ? limits.Option1 : limits.Option2);
  if (!reachable(limits)) return true;
  (time ? limits.Text1 : limits.Text2).setText(dice_.of(kLimits));
  press(limits, limits.Command1);
  return true;
}

// A limit of size that is far; then what has been received comes near it, and mostly past it.
bool RandomUser::comeNearLimit() {
  Form1& main = windows_->form1;
  Form6& limits = windows_->form6;
  if (!reachable(limits) && !press(main, main.Image3)) return false;
  press(limits, limits.Option2);
  if (!reachable(limits)) return true;
  const std::uint32_t used =
      static_cast<std::uint32_t>(std::atoi(main.Label1.text().c_str() + sizeof "Total bytes received:"));
  limits.Text2.setText(std::to_string(used + used / 2 + 20));
  press(limits, limits.Command1);
  const auto receive = [this](std::uint32_t kilobytes) { world_->interfaces.rows[1].received += kilobytes * 1024; };
  world_->desktop.postIn(300, [=] { receive(used / 4 + 17); });
  if (!dice_.oneIn(3)) world_->desktop.postIn(3500, [=] { receive(used / 4 + 20); });
  pause_ = 1500;
  return true;
}

bool RandomUser::writeEntry() {
  static constexpr const char* kNames[] = {"Office", "Home", "Garden", "Garden", " ", "", "a/b"};
  static constexpr const char* kAddresses[] = {"", "-", "10.0.0.1", "1.2.3.4.5"};
  Form2& editor = windows_->form2;
  if (!reachable(editor)) return false;
  editor.Text1.setText(dice_.of(kNames));
  editor.Text2.setText(dice_.oneIn(4) ? " " : "*99#");
  editor.Text3.setText("apn");
  editor.Text4.setText(dice_.of(kAddresses));
  editor.Text5.setText(dice_.of(kAddresses));
  press(editor, editor.Command1);
  return true;
}

bool RandomUser::openMenu() {
  Form1& main = windows_->form1;
  Form3& picker = windows_->form3;
  const bool inPicker = reachable(picker);
  if (!inPicker && !reachable(main)) return false;
  ListView& list = inPicker ? picker.ListView2 : main.ListView1;
  if (list.count() == 0) return false;
  ControlEvents& mouse = list;
  mouse.mousePressed(MouseButton::right, 5, 5);
  list.chooseRow(dice_.pick(list.count()));
  return true;
}

// ---- the keyboard, and what windows are told by the system ----

bool RandomUser::pressEscape() {
  Form* form = anyForm();
  if (form) form->escapePressed();
  return form != nullptr;
}

// The default button; in a list its selected row is activated.
bool RandomUser::pressEnter() {
  Form* form = anyForm();
  if (!form) return false;
  if (const char* button = form->layout().defaultButton) {
    for (Control* control : form->controls()) {
      if (std::string_view(control->layout().name) == button) return press(*form, *control);
    }
  }
  for (Control* control : form->controls()) {
    if (dynamic_cast<ListView*>(control)) {
      static_cast<ControlEvents&>(*control).itemActivated();
      return true;
    }
  }
  return false;
}

bool RandomUser::pressF1() {
  Form* form = anyForm();
  if (form) form->helpRequested();
  return form != nullptr;
}

bool RandomUser::pressAltF4() {
  Form* form = anyForm();
  if (!form) return false;
  if (form == &windows_->form1) {
    if (!dice_.oneIn(5)) return false;
    world_->mayEnd = true;
  }
  form->closeRequested();
  return true;
}

bool RandomUser::activate() {
  Form* form = anyForm();
  if (form && form->visible()) form->activated();
  return form != nullptr;
}

bool RandomUser::drag() {
  Form* form = anyForm();
  if (!form) return false;
  const MouseButton button = dice_.oneIn(4) ? MouseButton::right : MouseButton::left;
  form->mousePressed(button, dice_.pick(50), dice_.pick(50));
  form->mouseMoved(button, dice_.pick(50), dice_.pick(50));
  if (!dice_.oneIn(4)) form->mouseReleased(button, 5, 5);
  return true;
}

bool RandomUser::hover() {
  Form* form = anyForm();
  if (!form) return false;
  form->mouseMoved(MouseButton::none, dice_.pick(50), dice_.pick(50));
  for (Control* control : form->controls()) {
    if (auto* image = dynamic_cast<Image*>(control); image && dice_.oneIn(2)) {
      ControlEvents& mouse = *image;
      mouse.mouseMoved(MouseButton::none, 5, 5);
      if (dice_.oneIn(4)) mouse.mousePressed(MouseButton::left, 5, 5);
    }
  }
  return true;
}

bool RandomUser::minimise() {
  if (!reachable(windows_->form1)) return false;
  windows_->form1.minimise();
  return true;
}

bool RandomUser::recolour() {
  world_->desktop.contrast = dice_.oneIn(3);
  world_->desktop.systemColours[19] = dice_.oneIn(2) ? 0xF8E4D8 : 0x101010;
  for (Form* form : formsOf(*windows_)) form->coloursChanged();
  return true;
}

}  // namespace pelvaro
