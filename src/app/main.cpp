// The program: makes the real services, the main window and the message loop, and reports the run-time error that
// nobody handled.
#include "app/command_line.h"
#include "app/only_one.h"
#include "platform/environment.h"
#include "platform/win32/system_services.h"
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

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int) {
  useNoCurrentFolder();
  if (const auto code = app::answerCommandLine(commandLine)) return *code;
  const app::OnlyOne only;
  if (!only.first() && app::OnlyOne::showTheFirst()) return 0;
  useCommonControls();
  win32::SystemServices system;
  win32::MessageLoop& loop = system.loop;
  loop.onError = [](const RuntimeError& error) {
    ::MessageBoxA(nullptr, error.report().c_str(), kApplicationTitle,
                  MB_OK | MB_ICONSTOP | MB_TASKMODAL | MB_SETFOREGROUND);
  };
  Windows windows(system.services);
  loop.guarded([&] { windows.form1.show(); });
  loop.run();
  return 0;
}
