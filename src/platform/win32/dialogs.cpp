#include "platform/win32/dialogs.h"

#include "platform/environment.h"

namespace pelvaro::win32 {

namespace {
HMENU asMenu(MenuHandle menu) { return reinterpret_cast<HMENU>(menu); }
}  // namespace

int SystemDialogs::messageBox(const std::string& text, std::uint32_t buttons) {
  const HWND owner = screen_.activeWindow();
  // The owner is disabled and enabled by the box itself, in time for the platform to activate it again.
  const std::vector<HWND> disabled = screen_.disableOthers(owner);
  const int answer = ::MessageBoxA(owner, text.c_str(), kApplicationTitle, buttons | MB_SETFOREGROUND);
  FormScreen::enable(disabled);
  unwindIfEnding();
  return answer;
}

MenuHandle SystemDialogs::createPopupMenu() { return reinterpret_cast<MenuHandle>(::CreatePopupMenu()); }

void SystemDialogs::appendMenu(MenuHandle menu, std::uint32_t flags, std::uint32_t identifier,
                               const std::string& caption) {
  ::AppendMenuA(asMenu(menu), flags, identifier, caption.c_str());
}

void SystemDialogs::cursorPosition(int& x, int& y) {
  POINT position{};
  ::GetCursorPos(&position);
  x = position.x;
  y = position.y;
}

std::uintptr_t SystemDialogs::foregroundWindow() { return reinterpret_cast<std::uintptr_t>(::GetForegroundWindow()); }

std::uint32_t SystemDialogs::trackPopupMenu(MenuHandle menu, std::uint32_t flags, int x, int y, std::uintptr_t owner) {
  const auto chosen = static_cast<std::uint32_t>(
      ::TrackPopupMenu(asMenu(menu), flags, x, y, 0, reinterpret_cast<HWND>(owner), nullptr));
  unwindIfEnding();
  return chosen;
}

// The program may have been ended beneath a box or a menu: whoever asked must not go on.
void SystemDialogs::unwindIfEnding() const {
  if (screen_.loop().ended()) throw ProgramEnded{};
}

void SystemDialogs::destroyMenu(MenuHandle menu) { ::DestroyMenu(asMenu(menu)); }

}  // namespace pelvaro::win32
