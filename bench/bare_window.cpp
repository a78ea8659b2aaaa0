// The reference of the start-up and memory figures: a bare Win32 window and nothing else.
#include "platform/win32/windows_header.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = ::DefWindowProcA;
  windowClass.hInstance = instance;
  windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  windowClass.lpszClassName = "Pelvaro.Bare";
  ::RegisterClassA(&windowClass);
  const HWND window = ::CreateWindowExA(WS_EX_APPWINDOW, "Pelvaro.Bare", "Bare", WS_POPUP | WS_SYSMENU, 100, 100, 376,
                                        412, nullptr, nullptr, instance, nullptr);
  ::ShowWindow(window, SW_SHOW);
  ::UpdateWindow(window);
  MSG message;
  while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
  }
  return 0;
}
