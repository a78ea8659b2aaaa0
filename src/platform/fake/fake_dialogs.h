// Message boxes and menus for tests: journalled, answered by what the test has planted.
#pragma once

#include <functional>
#include <vector>

#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/fake/journal.h"

namespace pelvaro::fake {

struct FakeDialogs : Dialogs {
  explicit FakeDialogs(Journal& log) : journal(log) {}

  Journal& journal;
  std::function<int(const std::string& text)> onMessage;  // the user's answer; OK or Yes when there is none
  std::function<std::uint32_t()> onMenu;                  // the chosen identifier; none by default
  std::function<bool()> ending;                           // whether the program was ended beneath a box or menu
  std::vector<std::string> captions;                      // of the last menu
  int menus = 0;                                          // there now

  int messageBox(const std::string& text, std::uint32_t buttons) override {
    journal.add("MessageBox " + std::to_string(buttons) + " " + text);
    const int answer = onMessage ? onMessage(text) : 0;
    if (ending && ending()) throw ProgramEnded{};
    if (answer != 0) return answer;
    return buttons == kButtonsYesNo ? kAnswerYes : kAnswerOk;
  }
  MenuHandle createPopupMenu() override {
    captions.clear();
    ++menus;
    return 11;
  }
  void appendMenu(MenuHandle, std::uint32_t flags, std::uint32_t identifier, const std::string& caption) override {
    journal.add("AppendMenu " + std::to_string(flags) + " " + std::to_string(identifier) + " " + caption);
    captions.push_back(caption);
  }
  void cursorPosition(int& x, int& y) override { x = 100, y = 200; }
  std::uintptr_t foregroundWindow() override { return 77; }
  std::uint32_t trackPopupMenu(MenuHandle, std::uint32_t flags, int x, int y, std::uintptr_t owner) override {
    journal.add("TrackPopupMenu " + std::to_string(flags) + " " + std::to_string(x) + " " + std::to_string(y) + " " +
                std::to_string(owner));
    const std::uint32_t chosen = onMenu ? onMenu() : 0;
    if (ending && ending()) throw ProgramEnded{};
    return chosen;
  }
  void destroyMenu(MenuHandle) override {
    journal.add("DestroyMenu");
    --menus;
  }
};

}  // namespace pelvaro::fake
