#include "app/only_one.h"

namespace pelvaro::app {

namespace {

constexpr const char* kMutex = "Local\\Pelvaro.OnlyOne";
constexpr const char* kMainClass = "Pelvaro.Form1";
constexpr int kTries = 40;
constexpr DWORD kPause = 50;  // milliseconds

}  // namespace

OnlyOne::OnlyOne()
    : mutex_(::CreateMutexA(nullptr, FALSE, kMutex)), first_(!mutex_ || ::GetLastError() != ERROR_ALREADY_EXISTS) {}

OnlyOne::~OnlyOne() {
  if (mutex_) ::CloseHandle(mutex_);
}

bool OnlyOne::showTheFirst() {
  for (int i = 0; i < kTries; ++i) {
    const HWND main = ::FindWindowA(kMainClass, nullptr);
    if (main && ::IsWindowVisible(main)) {
      // Asked of the other program, which may be busy; nobody waits for it.
      if (::IsIconic(main)) ::ShowWindowAsync(main, SW_RESTORE);
      ::SetForegroundWindow(::GetLastActivePopup(main));
      return true;
    }
    ::Sleep(kPause);
  }
  return false;
}

}  // namespace pelvaro::app
