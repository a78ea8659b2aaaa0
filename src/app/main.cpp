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

// The system loads DLLs by name for its own use, and would look beside the program first. They come from the system
// folder alone, where the system can do that (from Windows 7 with its updates), and never from the current folder. Both
// functions are asked for by name: the first Windows XP has neither.
void useSystemFolderOnly() {
  constexpr DWORD kSystemFolder = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32
  using SetDefaultDllDirectories = BOOL(WINAPI*)(DWORD);
  using SetDllDirectory = BOOL(WINAPI*)(LPCSTR);
  const HMODULE kernel = ::GetModuleHandleA("kernel32.dll");
  const auto find = [kernel](const char* name) { return reinterpret_cast<void*>(::GetProcAddress(kernel, name)); };
  if (const auto set = reinterpret_cast<SetDefaultDllDirectories>(find("SetDefaultDllDirectories"))) set(kSystemFolder);
  if (const auto set = reinterpret_cast<SetDllDirectory>(find("SetDllDirectoryA"))) set("");
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int) {
  useSystemFolderOnly();
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
