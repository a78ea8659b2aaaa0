// A window with one of everything that the driver can drive, for the driver's own test: borderless, moved by its
// surface, with a button that asks a question, an edit, a list with a popup menu, and a label that tells what happened
// last.
#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <string>

namespace {

POINT pressed;  // where the surface was taken hold of
HWND form, told, edit, list, tip;

void tell(const std::string& what) { SetWindowTextA(told, what.c_str()); }

HWND control(const char* windowClass, const char* name, const char* text, DWORD style, RECT r) {
  static int nextId = 100;
  HWND h = CreateWindowExA(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, r.left, r.top, r.right, r.bottom, form,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(nextId++)), GetModuleHandleA(nullptr), nullptr);
  SetPropA(h, "ControlName", reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(GlobalAddAtomA(name))));
  SendMessageA(h, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
  return h;
}

void fillList() {
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
  const char* rows[][2] = {{"Alpha", "1"}, {"Beta \xE9\"", "2"}, {"Gamma", "3"}};
  for (int i = 0; i < 2; ++i) {
    LVCOLUMNA column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = 120;
    column.pszText = const_cast<char*>(i == 0 ? "Name" : "Number");
    SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
  }
  for (int i = 0; i < 3; ++i) {
    LVITEMA item = {};
    item.mask = LVIF_TEXT;
    item.iItem = i;
    item.pszText = const_cast<char*>(rows[i][0]);
    SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    item.iSubItem = 1;
    item.pszText = const_cast<char*>(rows[i][1]);
    SendMessageA(list, LVM_SETITEMTEXTA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
  }
}

void create() {
  told = control("Static", "toldlbl", "ready", 0, {16, 16, 300, 20});
  control("Button", "Command1", "Ask", WS_TABSTOP, {16, 44, 80, 28});
  control("Button", "Command2(1)", "Minimise", WS_TABSTOP, {104, 44, 80, 28});
  control("Button", "Check1", "Check", WS_TABSTOP | BS_AUTOCHECKBOX, {200, 44, 100, 28});
  edit = control("Edit", "Text1", "", WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, {16, 84, 200, 24});
  HWND combo = control("ComboBox", "Combo1", "", WS_TABSTOP | CBS_DROPDOWNLIST, {228, 84, 100, 200});
  for (const char* item : {"one", "two"}) SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
  list = control(WC_LISTVIEWA, "ListView1", "", WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                 {16, 120, 312, 120});
  fillList();
  tip = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP, 0, 0, 0, 0, form, nullptr, nullptr, nullptr);
  TOOLINFOA tool = {};
  tool.cbSize = TTTOOLINFOA_V1_SIZE;
  tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
  tool.hwnd = form;
  tool.uId = reinterpret_cast<UINT_PTR>(GetDlgItem(form, 101));
  tool.lpszText = const_cast<char*>("Asks a question");
  SendMessageA(tip, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
}

void popUp() {
  HMENU menu = CreatePopupMenu();
  AppendMenuA(menu, MF_STRING, 1, "First");
  AppendMenuA(menu, MF_STRING, 2, "Second");
  POINT p;
  GetCursorPos(&p);
  int choice = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, p.x, p.y, 0, form, nullptr);
  DestroyMenu(menu);
  tell("menu " + std::to_string(choice));
}

void ask() {
  tell("asking");
  int answer = MessageBoxA(form, "Go on?", "Selftest", MB_YESNO | MB_ICONQUESTION);
  tell(answer == IDYES ? "yes" : "no");
}

void follow(POINT pointer) {
  RECT r;
  GetWindowRect(form, &r);
  UINT flags = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;
  SetWindowPos(form, nullptr, r.left + pointer.x - pressed.x, r.top + pointer.y - pressed.y, 0, 0, flags);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_COMMAND:
      if (LOWORD(w) == 101 && HIWORD(w) == BN_CLICKED) ask();
      if (LOWORD(w) == 102 && HIWORD(w) == BN_CLICKED) ShowWindow(window, SW_MINIMIZE);
      if (LOWORD(w) == 105 && HIWORD(w) == CBN_SELCHANGE) tell("combo");
      return 0;
    case WM_NOTIFY:
      if (reinterpret_cast<NMHDR*>(l)->hwndFrom == list && reinterpret_cast<NMHDR*>(l)->code == NM_RCLICK) popUp();
      return 0;
    case WM_LBUTTONDOWN:
      pressed = {GET_X_LPARAM(l), GET_Y_LPARAM(l)};
      SetCapture(window);
      return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == window) follow({GET_X_LPARAM(l), GET_Y_LPARAM(l)});
      return 0;
    case WM_LBUTTONUP: ReleaseCapture(); return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcA(window, message, w, l);
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  WNDCLASSA windowClass = {};
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = instance;
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = CreateSolidBrush(RGB(216, 228, 248));
  windowClass.lpszClassName = "Pelvaro.Selftest";
  RegisterClassA(&windowClass);
  form = CreateWindowExA(0, "Pelvaro.Selftest", "Selftest", WS_POPUP | WS_MINIMIZEBOX, 200, 150, 344, 256, nullptr,
                         nullptr, instance, nullptr);
  create();
  ShowWindow(form, SW_SHOW);
  SetFocus(edit);
  for (MSG message; GetMessageA(&message, nullptr, 0, 0) > 0;) {
    if (IsDialogMessageA(form, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return 0;
}
