// What a screen reader is told: the platform's accessible object of a control of another process.
#include <initguid.h>

#include <windows.h>

#include <oleacc.h>

#include "command.h"
#include "window.h"

namespace {

std::string narrow(const wchar_t* wide) {
  if (!wide) return "";
  const int size = WideCharToMultiByte(CP_ACP, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide, -1, text.data(), size, nullptr, nullptr);
  text.resize(static_cast<size_t>(size - 1));
  return text;
}

VARIANT itself() {
  VARIANT child = {};
  child.vt = VT_I4;
  child.lVal = CHILDID_SELF;
  return child;
}

// A text that the object gives, null when it has none.
using Property = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);
void property(Json& answer, const char* key, IAccessible* object, Property get) {
  BSTR text = nullptr;
  answer.key(key);
  if ((object->*get)(itself(), &text) == S_OK && text) {
    answer.text(narrow(text));
  } else {
    answer.null();
  }
  SysFreeString(text);
}

// The names that oleacc has for a role and for the bits of a state.
std::string roleName(DWORD role) {
  wchar_t name[100] = L"";
  GetRoleTextW(role, name, 100);
  return narrow(name);
}

void states(Json& answer, DWORD bits) {
  answer.array();
  for (DWORD bit = 1; bit != 0; bit <<= 1) {
    wchar_t name[100] = L"";
    if ((bits & bit) && GetStateTextW(bit, name, 100) > 0) answer.text(narrow(name));
  }
  answer.end(']');
}

using Number = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, VARIANT*);
DWORD numberOf(IAccessible* object, Number get) {
  VARIANT value = {};
  if ((object->*get)(itself(), &value) != S_OK || value.vt != VT_I4) return 0;
  return static_cast<DWORD>(value.lVal);
}

void accessible(const Arguments& a, Json& answer) {
  HWND control = needControl(a[0], a[1]);
  static const HRESULT ready = CoInitialize(nullptr);
  IAccessible* object = nullptr;
  if (FAILED(ready) || AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                                  reinterpret_cast<void**>(&object)) != S_OK)
    throw Refused("no accessible object of " + a[1]);
  const DWORD role = numberOf(object, &IAccessible::get_accRole);
  answer.object();
  property(answer, "name", object, &IAccessible::get_accName);
  answer.key("role").text(roleName(role)).key("state");
  states(answer, numberOf(object, &IAccessible::get_accState));
  property(answer, "value", object, &IAccessible::get_accValue);
  property(answer, "shortcut", object, &IAccessible::get_accKeyboardShortcut);
  property(answer, "action", object, &IAccessible::get_accDefaultAction);
  answer.end('}');
  object->Release();
}

const Command table[] = {
    {"accessible", "WINDOW CONTROL", 2, accessible},
};

}  // namespace

std::span<const Command> accessCommands() { return table; }
