#include "ui/main_form.h"

#include "base/bytes.h"
#include "base/numbers.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "monitor/limits.h"
#include "phonebook/dial_params.h"
#include "phonebook/entry_properties.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/settings.h"
#include "platform/telephony.h"
#include "ui/accessary.h"
#include "ui/button_pictures.h"
#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

namespace {

constexpr std::string_view kConnected = "Status: Connected.";
constexpr std::string_view kDisconnected = "Status: Disconnected.";
constexpr std::string_view kConnect = "Connect";
constexpr std::string_view kHangUp = "Hang Up";
// Beside the key of the settings, which holds nothing else.
constexpr const char* kPlaceSection = "Window";
constexpr const char* kPlaceKey = "Form1";
constexpr int kTickInterval = 1000;
constexpr const char* kNearLimit = "You are about to reach limit, disconnect now?";
constexpr const char* kSizePassed = "You have reached size limit. Reconnect?";
constexpr const char* kTimePassed = "Timeout, reconnect?";

// Puts a label's text together in a buffer that is kept, so that a second in which nothing changes allocates nothing.
void put(Label& label, std::string& buffer, std::string_view caption, std::string_view figure, std::string_view unit) {
  buffer.assign(caption).append(figure).append(unit);
  label.setText(buffer);
}

// Runs one step of the start-up; a run-time error in it is ignored and the next step runs.
template <typename Step>
void ignoringErrors(Step step) {
  try {
    step();
  } catch (const RuntimeError&) {
  }
}

}  // namespace

Form1::Form1(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kForm1),
      windows_(windows),
      connections_(services.ras),
      traffic_(services.interfaces) {
  wireButtons();
  Image2.onClick = [this] { connectOrHangUp(); };
  Image1.onClick = [this] {
    windows_.form2.open(false);
    refreshList();
  };
  Image3.onClick = [this] { windows_.form6.show(); };
  Label3.onClick = [this] { unload(); };
  Label6.onClick = [this] { minimise(); };
  Timer1.onTick = [this] { poll(); };
  Timer2.onTick = [this] { tick(); };
  ListView1.onMouseDown = [this](MouseButton button, int, int) { rightClick_ = button == MouseButton::right; };
  ListView1.onMouseUp = [this](MouseButton, int, int) { rightClick_ = false; };
  ListView1.onItemClick = [this] { itemClicked(); };
  ListView1.onActivate = [this] {
    if (Image2.toolTipText() == kConnect && Image2.enabled()) connectOrHangUp();
  };
}

void Form1::wireButtons() {
  const auto wire = [](Image& image, auto& list, auto first) {
    image.onMouseDown = [&image, &list, first] { showPicture(image, list, first() + 2); };
    image.onMouseMove = [&image, &list, first] {
      if (image.look() != Look::pressed) showPicture(image, list, first() + 1);
    };
    image.onMouseUp = [&image, &list, first] { showPicture(image, list, first()); };
  };
  wire(Image1, kButtonPictures, [] { return kAddFirst; });
  wire(Image2, kButtonPictures, [this] { return connectPictures(); });
  wire(Image3, kLimitPictures, [] { return kLimitsFirst; });
}

int Form1::connectPictures() { return Image2.toolTipText() == kHangUp ? kHangUpFirst : kConnectFirst; }

void Form1::normalPictures() {
  showPicture(Image1, kButtonPictures, kAddFirst);
  showPicture(Image2, kButtonPictures, connectPictures());
  showPicture(Image3, kLimitPictures, kLimitsFirst);
}

void Form1::onLoad() {
  dragging_ = rightClick_ = false;
  ignoringErrors([this] {
    normalPictures();
    Image2.setEnabled(false);
  });
  ignoringErrors([this] { modemKeys = accessary::modemKeyNames(services().registry); });
  ignoringErrors([this] { accessary::applyColourScheme(*this); });
  ignoringErrors([this] { restorePlace(); });
  requiredbyte = 0;
  requiredtime = 0;
  ignoringErrors([this] { Timer1.ticked(); });
  ignoringErrors([this] {
    Timer2.setInterval(kTickInterval);
    Timer2.setEnabled(true);
  });
  ignoringErrors([this] { updateTraffic(true); });
  ignoringErrors([this] { refreshList(); });
}

void Form1::onUnload() {
  const Place at = place();
  // Where it was is no loss when it cannot be kept.
  services().settings.save(kPlaceSection, kPlaceKey, std::to_string(at.left) + "," + std::to_string(at.top));
  services().loop.end();
}

// Where the window was left, if that is kept; what is no place is passed over.
void Form1::restorePlace() {
  const std::string kept = services().settings.get(kPlaceSection, kPlaceKey);
  const auto comma = kept.find(',');
  if (comma == std::string::npos) return;
  const std::string_view text = kept;
  moveTo({toInt16(text.substr(0, comma)), toInt16(text.substr(comma + 1))});
}

void Form1::poll() {
  // Anything may be gone after the yield that the timer began with: the selection is read now.
  // A copy, for the call may let events run; its memory is kept, so that nothing is allocated.
  wanted_ = ListView1.selectedText();
  const bool up = connections_.isUp(wanted_);
  statuslbl.setText(up ? kConnected : kDisconnected);
  if (statuslbl.text() == kDisconnected) {
    Image2.setToolTipText(kConnect);
    Timer2.setEnabled(false);
  } else {
    Image2.setToolTipText(kHangUp);
    Timer2.setEnabled(true);
  }
  const int family = connectPictures();
  if (Image2.picture() != kButtonPictures[family - 1].picture) {
    Image2.setPicture(kButtonPictures[family - 1].picture, Image2.look());
  }
  Image4.setPicture(up ? Picture::connected : Picture::disconnected);
  if (requiredbyte < 1 && requiredtime < 1) setSetting("", false);
}

void Form1::updateTraffic(bool baseline) {
  traffic_.update(baseline, services().environment.numberStyle());
  put(Label1, line_, "Total bytes received: ", std::to_string(traffic_.receivedKb()), " KB");
  put(Label2, line_, "Total bytes transmitted: ", std::to_string(traffic_.sentKb()), " KB");
  put(Label5, line_, "Upload rate: ", traffic_.uploadRate(), "");
  put(Label4, line_, "Download rate: ", traffic_.downloadRate(), "");
}

void Form1::tick() {
  tickCounter = add32(tickCounter, 1);
  updateTraffic(false);
  if (requiredbyte <= 0 && requiredtime <= 0) return;
  if (settingflag == monitor::kSizeLimit) {
    const std::int32_t used = traffic_.receivedKb();
    put(Label10, line_, "", std::to_string(used), " KB");
    const monitor::Reach reach = monitor::reach(used, requiredbyte);
    if (reach == monitor::Reach::passed) return limitPassed(kSizePassed);
    if (reach == monitor::Reach::close) {
      put(Label7, line_, "size remained: ", std::to_string(subtract32(requiredbyte, used)), " KB");
      if (askedToDisconnect()) return disconnectNow();
    }
  } else if (settingflag == monitor::kTimeLimit) {
    Label10.setText(durationText(monitor::elapsedSeconds(startTime, services().clock.secondsOfDay())));
    const monitor::Reach reach = monitor::reach(tickCounter, requiredtime);
    if (reach == monitor::Reach::passed) return limitPassed(kTimePassed);
    if (reach == monitor::Reach::close) {
      put(Label7, line_, "Time left: ", std::to_string(subtract32(requiredtime, tickCounter)), " Second(s)");
      if (askedToDisconnect()) return disconnectNow();
      return;
    }
  }
  services().loop.yield();
}

// Near a limit: true when the user wants to disconnect now; after a "No" there is no further question.
bool Form1::askedToDisconnect() {
  if (limitAsked) return false;
  if (services().dialogs.messageBox(kNearLimit, kButtonsYesNo) == kAnswerYes) return true;
  limitAsked = true;
  return false;
}

void Form1::disconnectNow() {
  Label7.setText("");
  connectOrHangUp();
  services().loop.yield();
  Timer2.setEnabled(false);
}

void Form1::limitPassed(const char* question) {
  disconnectNow();
  if (services().dialogs.messageBox(question, kButtonsYesNo) == kAnswerYes) connectOrHangUp();
}

void Form1::setSetting(std::string_view text, bool visible) {
  for (Label* label : {&Label9, &Label10, &Label11, &Label12}) label->setVisible(visible);
  Label9.setText(std::string(text).append(" elapse"));
  Label11.setText(std::string(text).append(" remain"));
}

void Form1::refreshList() { ListView1.setItems(listEntries(services().ras)); }

void Form1::itemClicked() {
  Image2.setEnabled(true);
  showPicture(Image2, kButtonPictures, connectPictures());
  readSelectedEntry();
  if (rightClick_) popupMenu();
}

// The entry's details and saved parameters are read and, so far, not shown.
void Form1::readSelectedEntry() {
  const std::string name = ListView1.selectedText();
  RasEntryRecord record;
  Module1::GetEntryProperties(services().ras, name, record);
  std::vector<std::uint8_t> params;
  bool passwordSaved = false;
  Module1::GetEntryDialParams(services().ras, params, nullptr, name, passwordSaved);
  wipe(params.data(), params.size());
}

void Form1::popupMenu() {
  constexpr std::uint32_t kEdit = 1, kDelete = 2;
  const std::uint32_t chosen = accessary::popupMenu(services().dialogs, {"Edit", "Delete"});
  // The menu takes the release of the button for itself; without this the next arrow key would open it again.
  rightClick_ = false;
  if (chosen == kEdit) windows_.form2.open(true);
  if (chosen == kDelete) deleteSelected();
}

void Form1::deleteSelected() {
  const int row = ListView1.selectedRow();
  const std::string name = ListView1.selectedText();
  services().ras.deleteEntry(nullptr, name.c_str());  // the result does not matter
  ListView1.removeItem(row);
}

void Form1::connectOrHangUp() {
  if (Image2.toolTipText() == kConnect) {
    windows_.form4.show();
  } else {
    windows_.setMode("Connect");
    windows_.form5.showUntilActivated();
  }
}

void Form1::CallPhone(const std::string& phoneNumber, const std::string& calledParty) {
  const std::string number(trimmed(phoneNumber));
  const std::string party(trimmed(calledParty));
  if (number.empty()) return;
  const std::string question = "About to call " + party + " at phone number " + number + "\r\nDo it?";
  if (services().dialogs.messageBox(question, kButtonsYesNo) != kAnswerYes) return;
  services().telephony.requestMakeCall(number, kApplicationTitle, party, "");
}

void Form1::EditEntry(const std::string& entryName, const std::string& phonebook) {
  services().ras.editPhonebookEntry(0, phonebook.c_str(), entryName.c_str());
}

void Form1::onMousePressed(MouseButton, int x, int y) {
  dragging_ = true;
  dragX_ = static_cast<float>(x);
  dragY_ = static_cast<float>(y);
}

void Form1::onMouseMoved(MouseButton, int x, int y) {
  normalPictures();
  if (dragging_) moveBy(x - static_cast<int>(dragX_), y - static_cast<int>(dragY_));
}

void Form1::onMouseReleased(MouseButton, int, int) { dragging_ = false; }

}  // namespace pelvaro
