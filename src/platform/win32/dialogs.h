// Message boxes and popup menus of the system.
#pragma once

#include "platform/dialogs.h"
#include "platform/win32/form_screen.h"

namespace pelvaro::win32 {

class SystemDialogs : public Dialogs {
 public:
  explicit SystemDialogs(FormScreen& screen) : screen_(screen) {}

  int messageBox(const std::string& text, std::uint32_t buttons) override;
  MenuHandle createPopupMenu() override;
  void appendMenu(MenuHandle menu, std::uint32_t flags, std::uint32_t identifier, const std::string& caption) override;
  void cursorPosition(int& x, int& y) override;
  std::uintptr_t foregroundWindow() override;
  std::uint32_t trackPopupMenu(MenuHandle menu, std::uint32_t flags, int x, int y, std::uintptr_t owner) override;
  void destroyMenu(MenuHandle menu) override;

 private:
  void unwindIfEnding() const;

  FormScreen& screen_;
};

}  // namespace pelvaro::win32
