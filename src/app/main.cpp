// The program: makes the real services, the main window and the message loop, and reports the run-time error that
// nobody handled.
#include "platform/environment.h"
#include "platform/services.h"
#include "platform/win32/dial_event_window.h"
#include "platform/win32/dial_service.h"
#include "platform/win32/dialogs.h"
#include "platform/win32/environment.h"
#include "platform/win32/event_loop.h"
#include "platform/win32/form_window.h"
#include "platform/win32/registry.h"
#include "platform/win32/telephony.h"
#include "ui/windows.h"

namespace {

using namespace pelvaro;

void useCommonControls() {
  INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_ANIMATE_CLASS | ICC_BAR_CLASSES};
  ::InitCommonControlsEx(&classes);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  ::SetDllDirectoryA("");  // no DLL is taken from the current folder
  useCommonControls();
  win32::MessageLoop loop;
  loop.onError = [](const RuntimeError& error) {
    ::MessageBoxA(nullptr, error.report().c_str(), kApplicationTitle,
                  MB_OK | MB_ICONSTOP | MB_TASKMODAL | MB_SETFOREGROUND);
  };
  win32::RasDialService ras;
  win32::HiddenDialWindow dialWindow(loop);
  win32::FormScreen screen(loop);
  win32::SystemDialogs dialogs(screen);
  win32::SystemEnvironment environment;
  win32::SystemRegistry registry;
  win32::SystemTelephony telephony;
  Services services{ras, dialWindow, dialogs, environment, loop, screen, registry, telephony};
  Windows windows(services);
  loop.guarded([&] { windows.form1.show(); });
  loop.run();
  return 0;
}
