#include "app/command_line.h"

#include <string>

#include "base/text.h"
#include "platform/environment.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::app {

namespace {

constexpr const char* kVersion = "Pelvaro " PELVARO_VERSION "\r\n";
constexpr const char* kUsage =
    "pelvaro            opens the window with the connections\r\n"
    "pelvaro /version   tells the version\r\n"
    "pelvaro /?         tells this\r\n";

bool writeTo(HANDLE output, const std::string& text) {
  DWORD written = 0;
  return ::WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void say(const std::string& text, UINT icon) {
  const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
  if (output && output != INVALID_HANDLE_VALUE && writeTo(output, text)) return;
  constexpr DWORD kParent = static_cast<DWORD>(-1);  // ATTACH_PARENT_PROCESS
  if (::AttachConsole(kParent)) {
    const HANDLE console =
        ::CreateFileA("CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    const bool written = console != INVALID_HANDLE_VALUE && writeTo(console, "\r\n" + text);
    if (console != INVALID_HANDLE_VALUE) ::CloseHandle(console);
    ::FreeConsole();
    if (written) return;
  }
  ::MessageBoxA(nullptr, text.c_str(), kApplicationTitle, MB_OK | icon);
}

}  // namespace

std::optional<int> answerCommandLine(std::string_view commandLine) {
  std::string word = lowered(trimmed(commandLine));
  if (word.empty()) return std::nullopt;
  const std::size_t start = word.find_first_not_of("/-");
  word.erase(0, start == std::string::npos ? word.size() : start);
  if (word == "version") {
    say(kVersion, MB_ICONINFORMATION);
    return 0;
  }
  if (word == "?" || word == "h" || word == "help") {
    say(kUsage, MB_ICONINFORMATION);
    return 0;
  }
  say(kUsage, MB_ICONWARNING);
  return 2;
}

}  // namespace pelvaro::app
