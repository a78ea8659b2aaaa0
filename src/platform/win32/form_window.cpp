#include "platform/win32/form_window.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/win32/button_window.h"
#include "platform/win32/control_names.h"
#include "platform/win32/paint.h"
#include "platform/win32/resource_ids.h"

namespace pelvaro::win32 {

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CLIPCHILDREN | WS_SYSMENU;
constexpr int kWidestTip = 480;

MouseButton heldButton(WPARAM keys) {
  switch (keys & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON)) {
    case MK_LBUTTON: return MouseButton::left;
    case MK_RBUTTON: return MouseButton::right;
    default: return MouseButton::none;  // or several
  }
}

FormWindow* formOf(HWND window) {
  return reinterpret_cast<FormWindow*>(static_cast<ULONG_PTR>(::GetWindowLongA(window, GWL_USERDATA)));
}

}  // namespace

// One timer of a form. Its identifier is its place in the form's list, counted from 1.
class WindowTimer : public TimerPeer {
 public:
  WindowTimer(FormWindow& form, TimerEvents& events) : form_(form) {
    form_.timers_.push_back(&events);
    identifier_ = form_.timers_.size();
  }
  ~WindowTimer() override {
    stop();
    form_.timers_[identifier_ - 1] = nullptr;
  }
  void start(int milliseconds) override {
    ::SetTimer(form_.window_, identifier_, static_cast<UINT>(milliseconds), nullptr);
  }
  void stop() override { ::KillTimer(form_.window_, identifier_); }
  void tickSoon() override { ::PostMessageA(form_.window_, kTickSoon, identifier_, 0); }

 private:
  FormWindow& form_;
  UINT_PTR identifier_;
};

FormWindow::FormWindow(FormScreen& screen, const FormLayout& layout, FormEvents& events)
    : screen_(screen), layout_(layout), events_(events) {
  const std::string className = std::string("Pelvaro.") + layout.name;
  WNDCLASSEXA windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = &FormWindow::procedure;
  windowClass.hInstance = ::GetModuleHandleA(nullptr);
  windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  const HWND owner = screen.mainWindow();
  // The windows that the main one owns have no button on the taskbar.
  if (!owner) windowClass.hIcon = ::LoadIconA(windowClass.hInstance, MAKEINTRESOURCEA(PELVARO_ICON_APPLICATION));
  windowClass.lpszClassName = className.c_str();
  ::RegisterClassExA(&windowClass);  // fails harmlessly when it is registered already

  const RECT size = screen.metrics().scaled(Rect96{0, 0, layout.width, layout.height});
  // The main form in the middle of the screen; the others are placed when they are first shown.
  POINT middle{};
  placed_ = owner == nullptr;
  if (placed_) {
    RECT work{};
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    middle = {std::max(work.left, (work.left + work.right - size.right) / 2),
              std::max(work.top, (work.top + work.bottom - size.bottom) / 2)};
  }
  window_ = ::CreateWindowExA(WS_EX_CONTROLPARENT | (owner ? 0 : WS_EX_APPWINDOW), className.c_str(), layout.title,
                              kStyle | (owner ? 0 : WS_MINIMIZEBOX), middle.x, middle.y, size.right, size.bottom, owner,
                              nullptr, windowClass.hInstance, nullptr);
  ::SetWindowLongA(window_, GWL_USERDATA, static_cast<LONG>(reinterpret_cast<ULONG_PTR>(this)));
}

HWND FormWindow::tooltips() {
  if (tooltips_) return tooltips_;
  tooltips_ = ::CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_NOPREFIX, 0, 0, 0, 0, window_,
                                nullptr, ::GetModuleHandleA(nullptr), nullptr);
  ::SendMessageA(tooltips_, TTM_SETMAXTIPWIDTH, 0, screen_.metrics().scaled(kWidestTip));
  return tooltips_;
}

FormWindow::~FormWindow() { destroy(); }

void FormWindow::destroy() {
  endModal();
  screen_.forget(this);
  const HWND window = std::exchange(window_, nullptr);
  if (!window) return;
  ::SetWindowLongA(window, GWL_USERDATA, 0);
  ::DestroyWindow(window);
}

std::shared_ptr<ControlPeer> FormWindow::createControl(const ControlLayout& layout, ControlEvents& events) {
  auto control = createControlWindow(
      layout, events, {window_, events_, screen_.metrics(), screen_.loop(), [this] { return tooltips(); }});
  children_.emplace_back(control->window(), layout.name);
  // A run of option buttons is a group: it begins with the first and ends before the control behind it.
  const bool option = layout.kind == ControlKind::optionButton;
  if (std::exchange(inOptions_, option) != option) {
    ::SetWindowLongA(control->window(), GWL_STYLE, ::GetWindowLongA(control->window(), GWL_STYLE) | WS_GROUP);
  }
  if (layout_.defaultButton && std::strcmp(layout.name, layout_.defaultButton) == 0) {
    if (auto* button = dynamic_cast<ButtonWindow*>(control.get())) button->setDefault(true);
  }
  return control;
}

std::unique_ptr<TimerPeer> FormWindow::createTimer(TimerEvents& events) {
  return std::make_unique<WindowTimer>(*this, events);
}

void FormWindow::setColours(Colours colours) {
  colours_ = colours;
  if (::IsWindowVisible(window_)) ::InvalidateRect(window_, nullptr, TRUE);
}

HWND FormWindow::child(const char* name) const {
  for (const auto& [window, controlName] : children_) {
    if (name && std::strcmp(controlName, name) == 0) return window;
  }
  return nullptr;
}

void FormWindow::show(bool modal) {
  placeFirst();
  if (!shown_) before_ = screen_.activeWindow();
  if (modal && disabled_.empty()) disabled_ = screen_.disableOthers(window_);
  if (::IsIconic(window_)) ::ShowWindow(window_, SW_RESTORE);
  const bool fresh = !lastFocus_;
  if (fresh) lastFocus_ = child(layout_.firstFocus);
  ::ShowWindow(window_, SW_SHOW);
  if (::GetForegroundWindow() != window_) ::SetForegroundWindow(window_);
  if (lastFocus_ && ::GetActiveWindow() == window_) ::SetFocus(lastFocus_);
  // A box that gets the focus first is filled anew by typing, as with the tabulator key.
  if (fresh && lastFocus_ && (::SendMessageA(lastFocus_, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)) {
    ::SendMessageA(lastFocus_, EM_SETSEL, 0, -1);
  }
  shown_ = true;
  tellControls(true);
  ::RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void FormWindow::endModal() {
  // Before the form goes, so that the system activates one of our own windows and not another program's.
  FormScreen::enable(disabled_);
  disabled_.clear();
}

void FormWindow::hide() {
  endModal();
  shown_ = false;
  // Back to the window that it was opened from; the platform would choose the owner, which is always the main form.
  if (::GetActiveWindow() == window_ && before_ != window_ && ::IsWindowVisible(before_) &&
      ::IsWindowEnabled(before_)) {
    ::SetActiveWindow(before_);
  }
  ::ShowWindow(window_, SW_HIDE);
  tellControls(false);
  lastFocus_ = nullptr;
}

void FormWindow::tellControls(bool shown) {
  for (const auto& [window, name] : children_) ::SendMessageA(window, kFormShown, shown, 0);
}

void FormWindow::setPointer(Pointer pointer) {
  pointer_ = pointer == Pointer::hourglass ? ::LoadCursorA(nullptr, IDC_WAIT) : nullptr;
  // A pointer that rests over the form is shown anew only when it is asked for.
  POINT place{};
  ::GetCursorPos(&place);
  if (const HWND under = ::WindowFromPoint(place); under == window_ || ::IsChild(window_, under)) {
    ::PostMessageA(under, WM_SETCURSOR, reinterpret_cast<WPARAM>(under), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  }
}

void FormWindow::minimise() { ::ShowWindow(window_, SW_MINIMIZE); }

LRESULT CALLBACK FormWindow::procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
  FormWindow* self = formOf(window);
  if (!self) return ::DefWindowProcA(window, number, wParam, lParam);
  const std::shared_ptr<FormWindow> keep = self->weak_from_this().lock();  // an event may unload the form
  if (number == WM_NCDESTROY) {                                            // the system takes it, with the main form
    self->window_ = nullptr;
    return ::DefWindowProcA(window, number, wParam, lParam);
  }
  return self->message(number, wParam, lParam);
}

LRESULT FormWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  switch (number) {
    case WM_ERASEBKGND: return 1;
    case WM_SETCURSOR:  // controls ask their form first
      if (!pointer_) break;
      ::SetCursor(pointer_);
      return TRUE;
    case WM_PAINT: paint(); return 0;
    case kFocusTaken: lastFocus_ = reinterpret_cast<HWND>(lParam); return 0;
    case kAskFormColour: return static_cast<LRESULT>(colours_.background);
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_CAPTURECHANGED: mouse(number, wParam, lParam); return 0;
    case WM_TIMER:
    case kTickSoon:
      if (wParam >= 1 && wParam <= timers_.size() && timers_[wParam - 1]) {
        const auto handler = [&] { timers_[wParam - 1]->ticked(); };
        number == WM_TIMER ? screen_.loop().tick(handler) : screen_.loop().guarded(handler);
      }
      return 0;
    case WM_COMMAND: command(wParam, lParam); return 0;
    case WM_NOTIFY: return notified(*reinterpret_cast<NMHDR*>(lParam));
    case WM_DRAWITEM:
      if (auto& item = *reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
          ControlWindow* control = ControlWindow::of(item.hwndItem)) {
        control->draw(item);
      }
      return TRUE;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORBTN:
      if (ControlWindow* control = ControlWindow::of(reinterpret_cast<HWND>(lParam))) {
        if (const HBRUSH ground = control->ground(reinterpret_cast<HDC>(wParam)))
          return reinterpret_cast<LRESULT>(ground);
      }
      break;
    case WM_SETFOCUS:
      // The platform gives the focus to the form itself after it was minimised.
      if (lastFocus_) ::SetFocus(lastFocus_);
      return 0;
    case WM_SHOWWINDOW:
      // When the main form is restored the platform shows what it hid with it, though we may have hidden it since.
      if (wParam && lParam == SW_PARENTOPENING && !shown_) return 0;
      break;
    case WM_ACTIVATE: activation(LOWORD(wParam) != WA_INACTIVE); return 0;
    case DM_GETDEFID:
      if (const HWND button = child(layout_.defaultButton)) return MAKELRESULT(::GetDlgCtrlID(button), DC_HASDEFID);
      return 0;
    case WM_SYSCOMMAND:
      // The Alt key alone: there is no menu bar, and the platform would draw over the form in looking for it.
      if ((wParam & 0xFFF0) == SC_KEYMENU && lParam == 0) return 0;
      break;
    // F1, from whatever control it was pressed in.
    case WM_HELP: screen_.loop().guarded([this] { events_.helpRequested(); }); return TRUE;
    case WM_CLOSE: screen_.loop().guarded([this] { events_.closeRequested(); }); return 0;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
      for (const auto& [control, name] : children_) ::SendMessageA(control, number, wParam, lParam);
      ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
      screen_.loop().guarded([this] { events_.coloursChanged(); });
      return 0;
    default: break;
  }
  return window_ ? ::DefWindowProcA(window_, number, wParam, lParam) : 0;
}

LRESULT FormWindow::notified(NMHDR& header) {
  if (header.code == static_cast<UINT>(TTN_GETDISPINFOA) && header.hwndFrom == tooltips_) {
    // Which control it is about, as that has told them.
    ControlWindow* under = ControlWindow::of(reinterpret_cast<HWND>(header.idFrom));
    tip_ = under ? under->tooltip() : "";
    reinterpret_cast<NMTTDISPINFOA&>(header).lpszText = tip_.data();
    return 0;
  }
  ControlWindow* control = ControlWindow::of(header.hwndFrom);
  if (!control) return 0;
  const std::shared_ptr<ControlWindow> keep = control->weak_from_this().lock();
  return control->notified(header);
}

void FormWindow::command(WPARAM wParam, LPARAM lParam) {
  if (lParam == 0) {
    if (LOWORD(wParam) == IDCANCEL) screen_.loop().guarded([this] { events_.escapePressed(); });
    return;
  }
  // Enter asks for the default button even while that is disabled.
  const HWND sender = reinterpret_cast<HWND>(lParam);
  ControlWindow* control = ::IsWindowEnabled(sender) ? ControlWindow::of(sender) : nullptr;
  if (!control) return;
  const std::shared_ptr<ControlWindow> keep = control->weak_from_this().lock();
  control->command(HIWORD(wParam));
}

void FormWindow::mouse(UINT number, WPARAM wParam, LPARAM lParam) {
  if (tooltips_) {  // told here: a tooltip control that hooks the form would see, and slow, every tick of its timers
    MSG message{window_, number, wParam, lParam, static_cast<DWORD>(::GetMessageTime()), {}};
    ::SendMessageA(tooltips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
  }
  const int x = GET_X_LPARAM(lParam);
  const int y = GET_Y_LPARAM(lParam);
  const bool left = number == WM_LBUTTONDOWN || number == WM_LBUTTONUP;
  const MouseButton button = left ? MouseButton::left : MouseButton::right;
  screen_.loop().guarded([&] {
    switch (number) {
      case WM_LBUTTONDOWN:
      case WM_RBUTTONDOWN:
        pressed_ = true;
        ::SetCapture(window_);
        events_.mousePressed(button, x, y);
        break;
      case WM_MOUSEMOVE: events_.mouseMoved(heldButton(wParam), x, y); break;
      case WM_CAPTURECHANGED:  // something else took the mouse: the release will not come
        if (std::exchange(pressed_, false)) events_.mouseReleased(MouseButton::none, 0, 0);
        break;
      default:
        pressed_ = false;
        ::ReleaseCapture();
        events_.mouseReleased(button, x, y);
        break;
    }
  });
}

void FormWindow::activation(bool active) {
  if (!active) {
    if (tooltips_) ::SendMessageA(tooltips_, TTM_POP, 0, 0);
    return;
  }
  if (lastFocus_ && ::IsWindow(lastFocus_) && !::IsIconic(window_)) ::SetFocus(lastFocus_);
  screen_.loop().guarded([this] { events_.activated(); });
}

void FormWindow::paint() {
  PAINTSTRUCT painting;
  const HDC dc = ::BeginPaint(window_, &painting);
  RECT area{};
  ::GetClientRect(window_, &area);
  const ScreenMetrics& metrics = screen_.metrics();
  const bool contrast = metrics.highContrast();
  fill(dc, area, colours_.background);
  for (const Rect96& rule : layout_.rules) {
    RECT line = metrics.scaled(rule);
    if (rule.height <= 1) line.bottom = line.top + metrics.lineWidth();
    fill(dc, line, contrast ? colours_.text : palette::kHairline);
  }
  frame(dc, area, contrast ? colours_.text : palette::kEdge, metrics.lineWidth());
  ::EndPaint(window_, &painting);
}

}  // namespace pelvaro::win32
