#include "ui/accessary.h"

#include "base/text.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/processes.h"

namespace pelvaro::accessary {

namespace {

constexpr std::uint32_t kMenuText = 0;
constexpr std::uint32_t kMenuSeparator = 2048;
constexpr std::uint32_t kTrackFlags = 386;  // TPM_RETURNCMD, TPM_NONOTIFY, TPM_RIGHTBUTTON

constexpr const char* kDeviceSpecific = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Unimodem\\DeviceSpecific";
constexpr std::uint32_t kMostKeys = 100'000;  // a registry that lists more is not believed

constexpr const char* kNoManual =
    "The manual is the file manual.html beside the program. It cannot be shown here.\n\n"
    "Add makes a connection, Connect dials the chosen one, Hang Up ends it, Limits sets a limit of time or size.\n"
    "The menu of the list (right click) edits and deletes.";

struct OpenMenu {
  explicit OpenMenu(Dialogs& d) : dialogs(d), handle(d.createPopupMenu()) {}
  ~OpenMenu() { dialogs.destroyMenu(handle); }
  OpenMenu(const OpenMenu&) = delete;
  OpenMenu& operator=(const OpenMenu&) = delete;
  Dialogs& dialogs;
  MenuHandle handle;
};

struct OpenKey {
  OpenKey(Registry& r, const std::string& path, bool view64) : registry(r), handle(r.openLocalMachine(path, view64)) {}
  ~OpenKey() {
    if (handle != 0) registry.close(handle);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  Registry& registry;
  RegistryKey handle;
};

std::vector<std::string> subKeys(Registry& registry, bool view64) {
  std::vector<std::string> names;
  const OpenKey key(registry, kDeviceSpecific, view64);
  if (key.handle == 0) return names;
  std::string name;
  for (std::uint32_t i = 0; i < kMostKeys && registry.enumerateKey(key.handle, i, name); ++i) names.push_back(name);
  return names;
}

}  // namespace

std::uint32_t popupMenu(Dialogs& dialogs, const std::vector<std::string>& captions) {
  int x = 0;
  int y = 0;
  dialogs.cursorPosition(x, y);
  const OpenMenu menu(dialogs);
  std::uint32_t identifier = 0;
  for (const std::string& caption : captions) {
    ++identifier;
    const bool separator = trimmed(caption) == "-";
    dialogs.appendMenu(menu.handle, separator ? kMenuSeparator : kMenuText, identifier, caption);
  }
  return dialogs.trackPopupMenu(menu.handle, kTrackFlags, x, y, dialogs.foregroundWindow());
}

std::vector<std::string> modemKeyNames(Registry& registry) {
  std::vector<std::string> names = subKeys(registry, false);
  return names.empty() ? subKeys(registry, true) : names;
}

void showHelp(Services& services) {
  const std::string manual = services.environment.programFolder() + "\\manual.html";
  if (services.files.isFile(manual) && services.processes.open(manual)) return;
  services.dialogs.messageBox(kNoManual, kButtonsOk);
}

}  // namespace pelvaro::accessary
