#include "drivers/mod_replace_files.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "base/text.h"

namespace pelvaro::modReplaceFiles {

namespace {

constexpr std::uint32_t kReplaceAtRestart = 1 | 4;  // MOVEFILE_REPLACE_EXISTING, MOVEFILE_DELAY_UNTIL_REBOOT
constexpr std::size_t kShortNameSize = 165;
// Kept on purpose: the system is told of more room than the name is read from. The room is there.
constexpr std::size_t kShortNameRoom = 255;
constexpr std::size_t kIniSize = 32768;
constexpr std::string_view kLineEnd = "\r\n";

// What is kept of a "WinInit.ini": up to its first NUL. Nothing when it fills the whole buffer, which then has no end.
std::string_view kept(std::string_view bytes) {
  const std::string_view start = bytes.substr(0, kIniSize);
  const std::size_t end = start.find('\0');
  if (end != std::string_view::npos) return start.substr(0, end);
  return start.size() < kIniSize ? start : std::string_view{};
}

// Kept on purpose: the line goes to the end of the file, whatever section stands there, and names no source: the
// system deletes the destination.
void deleteByIni(Files& files, const std::string& path, const std::string& destination) {
  std::string text = "[Rename]\r\n";
  // Read before anything else: only a file that is neither read nor there is made anew.
  const std::optional<std::string> bytes = files.readWhole(path);
  if (!bytes && files.isFile(path)) return;
  if (bytes) {
    text = kept(*bytes);
    if (!text.ends_with(kLineEnd)) text += kLineEnd;
  }
  files.replaceWhole(path, text + "NUL=" + destination + std::string(kLineEnd));
}

}  // namespace

void ReplaceFileAtRestart(const System& system, const std::string& destination, const std::string& source,
                          bool endProgram) {
  const std::string d = GetShortName(system.files, destination);
  const std::string s = GetShortName(system.files, source);
  if (system.environment.variable("OS") == "Windows_NT") {
    system.files.moveFileEx(s, d, kReplaceAtRestart);
  } else {
    deleteByIni(system.files, system.environment.variable("WinDir") + "\\WinInit.ini", d);
  }
  if (!endProgram) return;
  system.loop.end();
  throw ProgramEnded{};
}

std::string GetShortName(Files& files, const std::string& path) {
  std::array<char, kShortNameRoom> buffer{};
  const std::size_t length = files.shortPathName(path, buffer.data(), kShortNameRoom);
  const std::string_view name(buffer.data(), std::min(length, kShortNameSize));
  return std::string(upToNul(name));
}

}  // namespace pelvaro::modReplaceFiles
