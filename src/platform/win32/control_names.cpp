#include "platform/win32/control_names.h"

namespace pelvaro::win32 {

namespace {
constexpr const char* kProperty = "ControlName";
}  // namespace

void nameControl(HWND window, const char* name) {
  const ATOM atom = ::GlobalAddAtomA(name);
  if (atom != 0) ::SetPropA(window, kProperty, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(atom)));
}

void unnameControl(HWND window) {
  const auto atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(::RemovePropA(window, kProperty)));
  if (atom != 0) ::GlobalDeleteAtom(atom);
}

}  // namespace pelvaro::win32
