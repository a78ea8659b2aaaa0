#include "platform/win32/accessible_window.h"

#include <objbase.h>
#include <oleauto.h>
// Behind those.
#include <oleacc.h>

#include "platform/win32/system_library.h"

namespace pelvaro::win32 {

namespace {

// Nothing of it is loaded before a client asks for the first time.
struct System {
  SystemLibrary oleacc{"oleacc.dll"};
  SystemLibrary ole32{"ole32.dll"};
  SystemLibrary oleaut32{"oleaut32.dll"};
  SystemFunction<HRESULT(WINAPI*)(HWND, LONG, REFIID, void**)> createStandard{oleacc, "CreateStdAccessibleObject"};
  SystemFunction<LRESULT(WINAPI*)(REFIID, WPARAM, IUnknown*)> lresultFromObject{oleacc, "LresultFromObject"};
  SystemFunction<HRESULT(WINAPI*)(void*)> initialize{ole32, "CoInitialize"};
  SystemFunction<BSTR(WINAPI*)(const OLECHAR*, UINT)> allocate{oleaut32, "SysAllocStringLen"};
  SystemFunction<HRESULT(WINAPI*)(VARIANTARG*)> clear{oleaut32, "VariantClear"};

  // The calls of other processes then come in as messages, on this thread.
  const HRESULT initialized = initialize.call(E_FAIL, nullptr);
};

System& system() {
  static System functions;
  return functions;
}

LONG roleOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::label: return ROLE_SYSTEM_STATICTEXT;
    case ControlKind::picture: return ROLE_SYSTEM_GRAPHIC;
    case ControlKind::pictureButton:
    case ControlKind::closeMark:
    case ControlKind::minimiseMark:
    case ControlKind::commandButton: return ROLE_SYSTEM_PUSHBUTTON;
    case ControlKind::optionButton: return ROLE_SYSTEM_RADIOBUTTON;
    case ControlKind::checkBox: return ROLE_SYSTEM_CHECKBUTTON;
    case ControlKind::textBox:
    case ControlKind::passwordBox: return ROLE_SYSTEM_TEXT;
    case ControlKind::comboBox: return ROLE_SYSTEM_COMBOBOX;
    case ControlKind::listView: return ROLE_SYSTEM_LIST;
    case ControlKind::animation: return ROLE_SYSTEM_ANIMATION;
  }
  return ROLE_SYSTEM_CLIENT;
}

std::wstring wide(const std::string& text) {
  std::wstring result(text.size(), L'\0');
  const auto size = static_cast<int>(text.size());
  result.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), size, result.data(), size)));
  return result;
}

HRESULT give(const std::string& text, BSTR* result) {
  const std::wstring letters = wide(text);
  *result = system().allocate.call(nullptr, letters.data(), static_cast<UINT>(letters.size()));
  return *result ? S_OK : E_OUTOFMEMORY;
}

VARIANT itself() {
  VARIANT child{};
  child.vt = VT_I4;
  child.lVal = CHILDID_SELF;
  return child;
}

bool isItself(const VARIANT& child) { return child.vt == VT_I4 && child.lVal == CHILDID_SELF; }

// The interfaces of COM have no virtual destructor; an object goes in its own Release().
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Stands before the platform's object of a control and answers for it what that gets wrong. Clients may keep it longer
// than there is a window.
class AccessibleControl final : public IAccessible {
 public:
  AccessibleControl(HWND window, IAccessible* platforms) : window_(window), platforms_(platforms) {}
  AccessibleControl(const AccessibleControl&) = delete;
  AccessibleControl& operator=(const AccessibleControl&) = delete;

  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override {
    if (!isItself(child)) return platforms_->get_accName(child, name);
    const ControlWindow* control = ControlWindow::of(window_);
    return control ? give(control->accessibleName(), name) : CO_E_OBJNOTCONNECTED;
  }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
    const ControlWindow* control = ControlWindow::of(window_);
    if (!isItself(child) || !control) return platforms_->get_accRole(child, role);
    *role = VARIANT{};
    role->vt = VT_I4;
    role->lVal = roleOf(control->kind());
    return S_OK;
  }
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
    const HRESULT result = platforms_->get_accState(child, state);
    ControlWindow* control = ControlWindow::of(window_);
    if (result != S_OK || !isItself(child) || state->vt != VT_I4 || !control) return result;
    switch (control->kind()) {
      case ControlKind::optionButton:
      case ControlKind::checkBox:
        if (control->checked()) state->lVal |= STATE_SYSTEM_CHECKED;
        break;
      case ControlKind::label:
      case ControlKind::picture:
      case ControlKind::animation: state->lVal = (state->lVal & ~STATE_SYSTEM_FOCUSABLE) | STATE_SYSTEM_READONLY; break;
      default: break;
    }
    return result;
  }
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
    const ControlWindow* control = ControlWindow::of(window_);
    if (!isItself(child) || !control || control->kind() != ControlKind::comboBox) {
      return platforms_->get_accValue(child, value);
    }
    std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(window_)), '\0');
    ::GetWindowTextA(window_, text.data(), static_cast<int>(text.size() + 1));
    return give(text, value);
  }

  STDMETHODIMP QueryInterface(REFIID wanted, void** result) override {
    const bool known = wanted == __uuidof(IUnknown) || wanted == __uuidof(IDispatch) || wanted == __uuidof(IAccessible);
    *result = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // All else is the platform's.
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return platforms_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return platforms_->GetTypeInfo(index, locale, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    return platforms_->GetIDsOfNames(reserved, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong) override {
    return platforms_->Invoke(id, reserved, locale, flags, parameters, result, exception, wrong);
  }
  STDMETHODIMP get_accParent(IDispatch** parent) override { return platforms_->get_accParent(parent); }
  STDMETHODIMP get_accChildCount(LONG* count) override { return platforms_->get_accChildCount(count); }
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** result) override {
    return platforms_->get_accChild(child, result);
  }
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* text) override {
    return platforms_->get_accDescription(child, text);
  }
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* text) override { return platforms_->get_accHelp(child, text); }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override {
    return platforms_->get_accHelpTopic(file, child, topic);
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* text) override {
    return platforms_->get_accKeyboardShortcut(child, text);
  }
  STDMETHODIMP get_accFocus(VARIANT* child) override { return platforms_->get_accFocus(child); }
  STDMETHODIMP get_accSelection(VARIANT* children) override { return platforms_->get_accSelection(children); }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* text) override {
    return platforms_->get_accDefaultAction(child, text);
  }
  STDMETHODIMP accSelect(LONG flags, VARIANT child) override { return platforms_->accSelect(flags, child); }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override {
    return platforms_->accLocation(left, top, width, height, child);
  }
  STDMETHODIMP accNavigate(LONG where, VARIANT start, VARIANT* end) override {
    return platforms_->accNavigate(where, start, end);
  }
  STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override {
    return platforms_->accHitTest(left, top, child);
  }
  STDMETHODIMP accDoDefaultAction(VARIANT child) override { return platforms_->accDoDefaultAction(child); }
  STDMETHODIMP put_accName(VARIANT child, BSTR text) override { return platforms_->put_accName(child, text); }
  STDMETHODIMP put_accValue(VARIANT child, BSTR text) override { return platforms_->put_accValue(child, text); }

 private:
  ~AccessibleControl() { platforms_->Release(); }

  const HWND window_;
  IAccessible* const platforms_;
  ULONG references_ = 1;
};

// Whether the platform's object has the control's name and role.
bool isRight(IAccessible& platforms, const ControlWindow& control) {
  VARIANT role{};
  if (platforms.get_accRole(itself(), &role) != S_OK || role.vt != VT_I4 || role.lVal != roleOf(control.kind())) {
    return false;
  }
  VARIANT name{};
  name.vt = VT_BSTR;
  const std::wstring wanted = wide(control.accessibleName());
  const bool right =
      platforms.get_accName(itself(), &name.bstrVal) == S_OK ? name.bstrVal && wanted == name.bstrVal : wanted.empty();
  system().clear.call(E_FAIL, &name);
  return right;
}

}  // namespace

LRESULT accessibleAnswer(ControlWindow& control, WPARAM wParam) {
  IAccessible* platforms = nullptr;
  if (FAILED(system().initialized) ||
      system().createStandard.call(E_FAIL, control.window(), OBJID_CLIENT, __uuidof(IAccessible),
                                   reinterpret_cast<void**>(&platforms)) != S_OK) {
    return 0;
  }
  if (isRight(*platforms, control)) {
    platforms->Release();
    return 0;
  }
  auto* const object = new AccessibleControl(control.window(), platforms);
  const LRESULT answer = system().lresultFromObject.call(0, __uuidof(IAccessible), wParam, object);
  object->Release();
  return answer;
}

}  // namespace pelvaro::win32
