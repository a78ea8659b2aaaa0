// Message boxes and popup menus. Used by every layer above that has something to ask or to say; all of them let the
// program's other events run while they are open, and throw ProgramEnded when it was ended meanwhile.
#pragma once

#include <cstdint>
#include <string>

namespace pelvaro {

// Buttons of a message box (MB_OK, MB_YESNO) and what it gives back (IDOK, IDYES, IDNO).
constexpr std::uint32_t kButtonsOk = 0;
constexpr std::uint32_t kButtonsYesNo = 4;
constexpr int kAnswerOk = 1;
constexpr int kAnswerYes = 6;
constexpr int kAnswerNo = 7;

using MenuHandle = std::uintptr_t;

struct Dialogs {
  virtual ~Dialogs() = default;

  // A modal box with the application's title. Gives the button's number.
  virtual int messageBox(const std::string& text, std::uint32_t buttons) = 0;

  // CreatePopupMenu.
  virtual MenuHandle createPopupMenu() = 0;
  // AppendMenuA; flag 0 is a text, 2048 a separator.
  virtual void appendMenu(MenuHandle menu, std::uint32_t flags, std::uint32_t identifier,
                          const std::string& caption) = 0;
  // GetCursorPos.
  virtual void cursorPosition(int& x, int& y) = 0;
  // GetForegroundWindow.
  virtual std::uintptr_t foregroundWindow() = 0;
  // TrackPopupMenu. With the flag 256 it gives the chosen identifier, 0 for none.
  virtual std::uint32_t trackPopupMenu(MenuHandle menu, std::uint32_t flags, int x, int y, std::uintptr_t owner) = 0;
  // DestroyMenu.
  virtual void destroyMenu(MenuHandle menu) = 0;
};

}  // namespace pelvaro
