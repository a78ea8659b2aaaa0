// Any bytes as the "WinInit.ini" of the older family of Windows, as a short name and as saved choices. What stands in
// front of the file's first NUL is kept, one line is added, nothing else; a choice is a place in its list or nothing.
#include <algorithm>
#include <cstdlib>

#include "base/numbers.h"
#include "base/runtime_error.h"
#include "drivers/mod_replace_files.h"
#include "input.h"
#include "platform/fake/fake_files.h"
#include "platform/fake/fake_system.h"
#include "platform/fake/headless_desktop.h"

namespace {

using namespace pelvaro;

struct NamingFiles : fake::FakeFiles {
  using FakeFiles::FakeFiles;
  std::string name;
  std::size_t shortPathName(const std::string&, char* buffer, std::size_t size) override {
    std::copy_n(name.data(), std::min(name.size(), size), buffer);
    return name.size();
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t length) {
  const std::string input(reinterpret_cast<const char*>(data), length);
  fake::Journal journal;
  NamingFiles files(journal);
  fake::FakeEnvironment environment;
  fake::HeadlessDesktop desktop;
  files.name = input.substr(0, input.empty() ? 0 : static_cast<unsigned char>(input[0]));
  std::string ini = input;
  if (!input.empty() && input.back() == '!') {  // large files are seldom found by chance
    while (ini.size() < 32760) ini += ini;
  }
  files.contents["\\WinInit.ini"] = ini;
  modReplaceFiles::ReplaceFileAtRestart({files, environment, desktop}, "d", "s", false);
  const std::string& after = files.contents["\\WinInit.ini"];
  const std::string name = modReplaceFiles::GetShortName(files, "d");
  check(name.size() <= 165 && name.find('\0') == std::string::npos);
  const std::string line = "NUL=" + name + "\r\n";
  check(after.ends_with("\r\n" + line));
  const std::string kept = after.substr(0, after.size() - line.size());
  check(kept.find('\0') == std::string::npos && kept.size() <= 32769);
  check(kept == "\r\n" || ini.starts_with(kept) || ini.starts_with(kept.substr(0, kept.size() - 2)));
  try {
    toInt16(input);
  } catch (const RuntimeError& error) {
    check(error.number() == 13 || error.number() == 6);
  }
  return 0;
}
