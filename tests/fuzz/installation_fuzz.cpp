// Any lines as what an installation meets: a driver code, a row of the catalogue, the folders that the environment
// names, and the names of a package's files. Files go from the package into the system's two folders and nowhere else;
// programs come from the package folder or are the system's own.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/runtime_error.h"
#include "drivers/catalogue.h"
#include "drivers/installer.h"
#include "drivers/start_program.h"
#include "input.h"
#include "platform/fake/fake_dialogs.h"
#include "platform/fake/fake_event_loop.h"
#include "platform/fake/fake_files.h"
#include "platform/fake/fake_processes.h"
#include "platform/fake/fake_system.h"

namespace {

using namespace pelvaro;

// A folder of the given files; each copy is looked at.
struct PackageFiles : fake::FakeFiles {
  using FakeFiles::FakeFiles;
  std::vector<std::string> names;
  std::string package, drivers, information;  // folders
  std::vector<std::string> namesIn(const std::string& folder, const std::string& ending) override {
    package = folder;
    std::vector<std::string> found;
    std::copy_if(names.begin(), names.end(), std::back_inserter(found),
                 [&ending](const std::string& name) { return lowered(name).ends_with(ending); });
    return found;
  }
  // Every other file of the system is there already.
  bool isFile(const std::string& path) override { return path.size() % 2 == 0; }
  void shellCopy(const std::string& from, const std::string& to, std::uint32_t flags) override {
    check(flags == 0 || flags == 0x100);
    check(from.starts_with(package + "\\"));
    const std::string name = from.substr(package.size() + 1);
    check(to == drivers + name || to == information + name);
  }
  std::size_t shortPathName(const std::string& path, char* buffer, std::size_t size) override {
    path.copy(buffer, size);
    return path.size();
  }
};

void checkPrograms(const fake::Journal& journal, const drivers::Installer& installer) {
  for (const std::string& line : journal.lines()) {
    if (line.starts_with("Start ")) {
      check(line.ends_with(drivers::kModemApplet) || line.find(installer.commonPath) != std::string::npos);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view left(reinterpret_cast<const char*>(data), size);
  const std::string code = takeLine(left), row = takeLine(left);
  const std::string_view model = drivers::modelOf(row), rowCode = drivers::codeOf(row);
  check(model.size() == row.size() - std::min<std::size_t>(row.size(), 3));
  check(rowCode.find('|') == std::string_view::npos && rowCode.size() <= row.size());

  fake::Journal journal;
  fake::FakeDialogs dialogs(journal);
  fake::FakeEnvironment environment;
  fake::FakeEventLoop loop(journal);
  PackageFiles files(journal);
  fake::FakeProcesses processes(journal);
  fake::FakeShutdown shutdown(journal);
  for (const char* name : {"os", "windir", "programfiles"}) environment.variables[name] = takeLine(left);
  processes.missing = takeLine(left) == "no program";
  files.noNewFolders = takeLine(left) == "no folder";
  const bool restart = takeLine(left) == "yes";
  dialogs.onMessage = [restart](const std::string&) { return restart ? kAnswerYes : kAnswerOk; };
  while (!left.empty()) files.names.push_back(takeLine(left));

  drivers::Installer installer({dialogs, environment, loop, files, processes, shutdown});
  installer.findFolders();
  files.drivers = installer.systemPath + "\\drivers\\";
  files.information = installer.windowsPath + "\\inf\\";
  if (files.names.size() % 2 == 0) files.folders.insert(installer.systemPath);
  try {
    installer.install(code);
  } catch (const RuntimeError& error) {
    check((error.number() == 53 && processes.missing) ||
          ((error.number() == 75 || error.number() == 76) && files.noNewFolders));
  } catch (const ProgramEnded&) {
    check(restart && loop.ended);
  }
  check(processes.openHandles == 0);
  checkPrograms(journal, installer);
  return 0;
}
