#include "random_user.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pelvaro {

namespace {

constexpr int kDeepest = 4;  // steps inside each other
constexpr const char* kNear = "You are about to reach limit, disconnect now?";

bool canBePressed(const ControlLayout& layout) {
  switch (layout.kind) {
    case ControlKind::label: return layout.clickable;
    case ControlKind::picture:
    case ControlKind::animation: return false;
    default: return true;
  }
}

std::string nameOf(const Form& form, const Control& control) {
  return std::string(form.layout().name) + '.' + control.layout().name;
}

}  // namespace

std::vector<Form*> formsOf(Windows& w) {
  return {&w.form1, &w.form2, &w.form3, &w.form4, &w.form5, &w.form6, &w.driverForm, &w.recordForm, &w.statusForm};
}

// Counts for as long as something is under way, however it ends.
struct RandomUser::Inside {
  explicit Inside(int& depth) : depth_(depth) { ++depth_; }
  ~Inside() { --depth_; }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;
  int& depth_;
};

const Kinds& RandomUser::kinds() {
  static const Kinds table = [] {
    Kinds kinds;
    for (const Deed& deed : deeds()) kinds.push_back(deed.kind);
    return kinds;
  }();
  return table;
}

std::vector<std::string> RandomUser::everythingToPress() {
  RandomWorld world;
  Windows windows(world.watched);
  std::vector<std::string> names;
  for (const Form* form : formsOf(windows)) {
    for (const Control* control : form->controls()) {
      if (canBePressed(control->layout())) names.push_back(nameOf(*form, *control));
    }
  }
  return names;
}

Lived RandomUser::live() {
  taken_.assign(deeds().size(), 0);
  try {
    begin();
    while (!over()) {
      take(plan_[at_++]);
      world_->desktop.advance(std::exchange(pause_, 0) + (dice_.oneIn(10) ? dice_.pick(500) : dice_.pick(60)));
      if (world_->desktop.ended()) {
        finish();
        begin();
      } else {
        checkAtRest();
      }
    }
    finish();
  } catch (const std::exception& error) {
    fail(std::string("an exception: ") + error.what());
  }
  windows_.reset();
  world_.reset();
  lived_.tally["rests while connected"] = connectedRests_;
  for (std::size_t kind = 0; kind < taken_.size(); ++kind) {
    if (taken_[kind] > 0) lived_.tally[std::string("step ") + kinds()[kind].name] = taken_[kind];
  }
  return std::move(lived_);
}

// ---- a life of the program ----

void RandomUser::begin() {
  depth_ = boxes_ = 0;
  followUpWaits_ = saidNo_ = false;
  scenario_ = World::quickScenario();
  scenario_.pace = 20;
  world_ = std::make_unique<RandomWorld>();
  world_->line.setScenario(scenario_);
  world_->dialogs.onMessage = [this](const std::string& question) { return answer(question); };
  world_->dialogs.onMenu = [this] { return chooseFromMenu(); };
  world_->files.onCopy = [this] {
    if (dice_.oneIn(8)) letOthersAct(100);
  };
  world_->probePort.onOpen = [this] { sendFollowUp(); };
  world_->dialService.onDial = [this](const std::string& entry, bool exists) {
    if (!exists) fail("a dial of an entry that is not there: " + entry);
  };
  windows_ = std::make_unique<Windows>(world_->watched);
  world_->desktop.guarded([this] { windows_->form1.show(); });
}

void RandomUser::finish() {
  for (const auto& [control, times] : pressed_) lived_.tally["pressed " + control] += times;
  pressed_.clear();
  const fake::HeadlessDesktop& desktop = world_->desktop;
  if (desktop.ended()) {
    const std::string report = desktop.reported.empty() ? "" : desktop.reported.front();
    const std::string number = report.substr(0, report.find("':")).substr(report.find('\'') + 1);
    if (!report.empty() && !world_->mayReport(number)) fail("the program reported: " + report);
    if (report.empty() && !world_->mayEnd) fail("the program ended of its own accord");
    ++lived_.tally["ended " + (report.empty() ? std::string("by the user") : "with error " + number)];
  }
  windows_.reset();
  if (desktop.hiddenWindows() != 0) fail("a dial window outlives the program");
  if (desktop.hooks() != 0) fail("a hook outlives the program");
  if (desktop.formsVisible() != 0) fail("a window outlives the program");
  if (world_->probePort.isOpen()) fail("a port outlives the program");
}

void RandomUser::take(const Step& step) {
  const Inside inside(depth_);
  const Dice diceBefore = std::exchange(dice_, Dice(step.seed));
  const bool scriptBefore = std::exchange(byScript_, dice_.oneIn(12));
  sendFollowUp();
  bool ran = false, did = true;
  world_->desktop.guarded([&] {
    ran = true;
    did = (this->*deeds()[step.kind].act)();
  });
  if (ran && did) {
    ++taken_[step.kind];
    ++lived_.events;
  }
  byScript_ = scriptBefore;
  if (depth_ > 1) dice_ = diceBefore;
  if (alsoCheck) fail(alsoCheck(kinds()[step.kind].name));
  checkAlways();
}

// ---- what happens inside a step ----

// While a step goes on, for it asks, waits or looks for phones, the next ones come.
void RandomUser::sendFollowUp() {
  if (std::exchange(followUpWaits_, true)) return;
  world_->desktop.postIn(20 + dice_.pick(60), [this] { followUp(); });
}

bool RandomUser::underWay() const {
  return depth_ > 0 || world_->probePort.isOpen() || world_->desktop.modalWaits() > 0;
}

void RandomUser::followUp() {
  followUpWaits_ = false;
  if (!underWay()) return;
  if (over() || depth_ >= kDeepest) {
    unwind();
  } else {
    take(plan_[at_++]);
  }
  if (underWay()) sendFollowUp();
}

// Ends what waits for the user.
void RandomUser::unwind() {
  if (windows_->form3.visible()) windows_->form3.closeRequested();
  if (windows_->form5.visible()) windows_->form5.closeRequested();
  if (world_->probePort.isOpen()) windows_->form2.stopProbe();
}

void RandomUser::letOthersAct(int milliseconds) {
  if (over() || depth_ >= kDeepest) return;
  const Inside inside(depth_);
  sendFollowUp();
  world_->desktop.advance(dice_.pick(milliseconds));
}

int RandomUser::answer(const std::string& question) {
  if (question == kNear && saidNo_) fail("asked again near the limit after a No");
  if (question.find("Please enter again.") != std::string::npos) ++refusedLimits_;
  {
    const Inside box(boxes_);
    letOthersAct(dice_.oneIn(3) ? 3000 : 100);
  }
  const std::string beginning = question.substr(0, 40);
  const bool restart = question.starts_with("Restart");
  if (!restart && !question.ends_with('?')) {
    ++lived_.tally["read: " + beginning];
    return kAnswerOk;
  }
  const bool yes = restart ? dice_.oneIn(20) : dice_.oneIn(2);
  ++lived_.tally[std::string("answered ") + (yes ? "Yes: " : "No: ") + beginning];
  if (restart && yes) world_->mayEnd = true;
  if (question == kNear && !yes) saidNo_ = true;
  return yes ? kAnswerYes : kAnswerNo;
}

std::uint32_t RandomUser::chooseFromMenu() {
  letOthersAct(dice_.oneIn(3) ? 300 : 30);
  const int chosen = dice_.pick(static_cast<int>(world_->dialogs.captions.size()) + 1);
  ++lived_.tally["chose from a menu: " +
                 (chosen == 0 ? "nothing" : world_->dialogs.captions[static_cast<std::size_t>(chosen) - 1])];
  return static_cast<std::uint32_t>(chosen);
}

// ---- what must always hold ----

void RandomUser::fail(std::string what) {
  if (what.empty() || !lived_.failure.empty()) return;
  lived_.failure = std::move(what);
  lived_.steps = at_;
}

void RandomUser::checkAlways() {
  const int hooks = world_->desktop.hooks();
  if (world_->desktop.hiddenWindows() > 1) fail("more than one hidden dial window");
  if (hooks < 0 || hooks > 1) fail("hooks in place: " + std::to_string(hooks));
  if (world_->registry.open < 0 || world_->processes.openHandles < 0) fail("a handle is closed twice");
}

void RandomUser::checkAtRest() { fail(brokenAtRest()); }

// What must hold whenever nothing is under way.
std::string RandomUser::brokenAtRest() {
  RandomWorld& world = *world_;
  Windows& windows = *windows_;
  Form1& main = windows.form1;
  if (depth_ != 0 || boxes_ != 0) return "something is still under way";
  if (world.desktop.modalWaits() != 0) return "a wait for a modal window is left";
  if (world.desktop.formsKeptFromInput() != 0) return "a window is left without input";
  if ((world.desktop.hiddenWindows() == 1) != windows.dialForm.loaded()) return "a dial window without its form";
  if ((world.desktop.hooks() == 1) != windows.dialForm.loaded()) return "a dial window without its hook";
  if (world.probePort.isOpen()) return "a port is open though no phone is asked";
  if (world.dialogs.menus != 0) return "a menu is left";
  if (world.registry.open != 0) return "a key of the registry is open";
  if (world.processes.openHandles != 0) return "a handle of a program is open";
  if (!main.visible()) return "the main window is gone";
  if (windows.form5.visible()) return "the splash is left behind";
  int visible = 0;
  for (const Form* form : formsOf(windows)) visible += form->visible() ? 1 : 0;
  if (visible != world.desktop.formsVisible()) return "a window is on the screen that is not the program's";
  const std::string& tooltip = main.Image2.toolTipText();
  if (tooltip == "Hang Up") ++connectedRests_;
  if (tooltip != "Connect" && tooltip != "Hang Up") return "the connect button says: " + tooltip;
  if (windows.statusForm.loaded()) {
    const std::string& caption = windows.statusForm.Command1.text();
    if (caption != "cancel" && caption != "Retry") return "the status window's button says: " + caption;
  }
  if (main.requiredbyte < 1 && main.requiredtime < 1 && main.Label12.visible() && main.Timer1.enabled()) {
    world.desktop.advance(50);
    if (main.requiredbyte < 1 && main.requiredtime < 1 && main.Label12.visible()) return "limit labels without a limit";
  }
  if (main.requiredtime > 32760 || main.requiredbyte > 32767) return "a limit is beyond its range";
  if (!main.Label1.text().starts_with("Total bytes received: ")) return "the traffic reads: " + main.Label1.text();
  if (windows.form6.loaded()) {
    Form6& limits = windows.form6;
    if (limits.Option1.checked() == limits.Option2.checked()) return "both limits or none are chosen";
    if (limits.Option1.checked() != limits.Text1.enabled()) return "the box of the limit that is not chosen is open";
  }
  return {};
}

// ---- pressing ----

void RandomUser::countPress(const Form& form, const Control& control) { ++pressed_[nameOf(form, control)]; }

// What the user's mouse and keyboard reach at this moment.
bool RandomUser::reachable(const Form& form) const {
  if (byScript_) return form.loaded();
  return form.visible() && boxes_ == 0 && !world_->desktop.keptFromInput(form.layout());
}

bool RandomUser::pressAny(Form& form) {
  const auto& controls = form.controls();
  for (int tries = 0; tries < 6; ++tries) {
    Control& control = *controls[static_cast<std::size_t>(dice_.pick(static_cast<int>(controls.size())))];
    if (canBePressed(control.layout())) return press(form, control);
  }
  return false;
}

bool RandomUser::press(Form& form, Control& control) {
  if (!reachable(form) || !control.visible() || !control.enabled()) return false;
  auto& main = windows_->form1;
  if (&control == &main.Label3) {
    if (!dice_.oneIn(20)) return false;
    world_->mayEnd = true;
  }
  countPress(form, control);
  if (auto* list = dynamic_cast<ListView*>(&control)) return pressList(*list);
  if (auto* box = dynamic_cast<ComboBox*>(&control)) {
    if (box->count() == 0) return false;
    if (byScript_) {
      box->select(dice_.pick(box->count() + 1) - 1);
    } else {
      box->chooseItem(dice_.pick(box->count()));
    }
    return true;
  }
  const ControlKind kind = control.layout().kind;
  if (kind == ControlKind::textBox || kind == ControlKind::passwordBox) {
    type(form, control);
    return true;
  }
  if (&control == &windows_->form2.Command1) world_->writesNoAddress = hasNoAddress();
  if (&control == &windows_->form6.Command1) return acceptLimit();
  ControlEvents& mouse = control;
  if (kind == ControlKind::pictureButton) mouse.mousePressed(MouseButton::left, 5, 5);
  if (kind == ControlKind::pictureButton) mouse.mouseReleased(MouseButton::left, 5, 5);
  control.click();
  world_->writesNoAddress = false;
  return true;
}

bool RandomUser::pressList(ListView& list) {
  if (list.count() == 0) return false;
  ControlEvents& mouse = list;
  const int row = dice_.pick(list.count());
  const int how = dice_.pick(8);
  if (how == 0) {
    list.activateRow(row);
    return true;
  }
  const MouseButton button = how == 1 ? MouseButton::right : MouseButton::left;
  mouse.mousePressed(button, 5, 5);
  list.chooseRow(row);
  mouse.mouseReleased(button, 5, 5);
  return true;
}

void RandomUser::type(Form& form, Control& box) {
  static constexpr const char* kWords[] = {"Office", "Home",    "Garden", "guest", "practice", "internet", "*99#",
                                           "*98#",   "1",       "2",      "50",    "546",      "547",      "0",
                                           "-3",     "32767",   "99999",  "1e9",   "abc",      "",         " ",
                                           "a/b",    "[blank]", "x y",    "-",     "10.0.0.1", "1.2.3.4.5"};
  static constexpr const char* kAddresses[] = {"", "-", "10.0.0.1", "1.2.3.4.5", "192.0.2.1"};
  const Form2& editor = windows_->form2;
  const bool address = &box == &editor.Text4 || &box == &editor.Text5;
  box.setText(address && !dice_.oneIn(30) ? dice_.of(kAddresses) : dice_.of(kWords));
  if (box.layout().kind == ControlKind::passwordBox && &form == &windows_->form4 && dice_.oneIn(2)) {
    box.setText(line::kPracticePassword);
  }
}

// Whether writing the entry ends the program, as it may: with an address that is none.
bool RandomUser::hasNoAddress() {
  static constexpr std::string_view kNoError[] = {"", "-", "10.0.0.1", "1.2.3.4.5", "192.0.2.1", "192.0.2.2"};
  Form2& editor = windows_->form2;
  if (!editor.Option2.checked() || editor.Text2.text().empty()) return false;
  const auto ends = [](TextBox& box) {
    return std::find(std::begin(kNoError), std::end(kNoError), box.text()) == std::end(kNoError);
  };
  return ends(editor.Text4) || ends(editor.Text5);
}

// A limit that is taken without a word is a new one.
bool RandomUser::acceptLimit() {
  Form6& limits = windows_->form6;
  const int refused = refusedLimits_;
  limits.Command1.click();
  if (refusedLimits_ == refused && !limits.loaded()) saidNo_ = false;
  return true;
}

Form* RandomUser::anyForm() {
  const std::vector<Form*> forms = formsOf(*windows_);
  for (int tries = 0; tries < 6; ++tries) {
    Form* form = forms[static_cast<std::size_t>(dice_.pick(static_cast<int>(forms.size())))];
    if (reachable(*form)) return form;
  }
  return nullptr;
}

}  // namespace pelvaro
