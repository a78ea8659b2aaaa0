// The program: makes the real services, the main window and the message loop, and reports the run-time error that
// nobody handled.
#include "platform/environment.h"
#include "platform/services.h"
#include "platform/win32/clock.h"
#include "platform/win32/dial_event_window.h"
#include "platform/win32/dial_service.h"
#include "platform/win32/dialogs.h"
#include "platform/win32/environment.h"
#include "platform/win32/event_loop.h"
#include "platform/win32/files.h"
#include "platform/win32/form_window.h"
#include "platform/win32/interface_table.h"
#include "platform/win32/processes.h"
#include "platform/win32/random_source.h"
#include "platform/win32/registry.h"
#include "platform/win32/serial_port.h"
#include "platform/win32/settings.h"
#include "platform/win32/telephony.h"
#include "ui/windows.h"

namespace {

using namespace pelvaro;

void useCommonControls() {
  INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_ANIMATE_CLASS | ICC_BAR_CLASSES};
  ::InitCommonControlsEx(&classes);
}

// No DLL is taken from the current folder. By name: the first Windows XP does not have it.
void useNoCurrentFolder() {
  using SetDllDirectory = BOOL(WINAPI*)(LPCSTR);
  const FARPROC found = ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "SetDllDirectoryA");
  if (const auto set = reinterpret_cast<SetDllDirectory>(reinterpret_cast<void*>(found))) set("");
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  useNoCurrentFolder();
  useCommonControls();
  win32::SystemClock clock;
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
  win32::SystemFiles files;
  win32::SystemInterfaceTable interfaces;
  win32::SystemProcesses processes;
  win32::SystemRandom random;
  win32::SystemRegistry registry;
  win32::SystemSerialPort serial;
  win32::SystemSettings settings;
  win32::SystemTelephony telephony;
  Services services{clock,      ras,       dialWindow, dialogs,  environment, files,    loop,     screen,
                    interfaces, processes, random,     registry, serial,      settings, telephony};
  Windows windows(services);
  loop.guarded([&] { windows.form1.show(); });
  loop.run();
  return 0;
}
