#include "random_world.h"

#include <algorithm>
#include <set>

namespace pelvaro {

std::uint32_t WatchedDialService::dial(const char* phonebook, void* params, std::uint32_t notifierType,
                                       std::uintptr_t notifier, RasHandle* connection) {
  const std::string entry = lowered(line::unpackDialParams(params).entryName);
  const auto& entries = line_.phonebook().entries;
  const bool exists = std::any_of(entries.begin(), entries.end(),
                                  [&entry](const line::Entry& there) { return lowered(there.name) == entry; });
  if (windows.empty() || windows.back() != notifier) windows.push_back(notifier);
  if (onDial) onDial(entry, exists);
  return LineDialService::dial(phonebook, params, notifierType, notifier, connection);
}

RandomWorld::RandomWorld()
    : watched{.clock = clock,
              .ras = dialService,
              .dialWindow = desktop,
              .dialogs = dialogs,
              .environment = environment,
              .files = files,
              .loop = desktop,
              .forms = desktop,
              .interfaces = interfaces,
              .processes = processes,
              .random = random,
              .registry = registry,
              .serial = probePort,
              .settings = settings,
              .shutdown = shutdown,
              .telephony = telephony} {
  environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Programs"}};
  registry.plainView = {"Nokia 6230 USB Modem", "Samsung D500 USB Modem"};
  files.contents["C:\\Pelvaro\\Default.DAT"] = smallOperatorList();
  files.folders = {"C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM32"};
  for (const char* file : {"MT\\a.sys", "MT\\win2k\\b.inf", "NK-A01\\c.sys", "SS-A01\\d.sys", "SE-A01\\e.inf"}) {
    files.contents[std::string("C:\\Programs\\corvanti\\common\\driver\\") + file] = "driver";
  }
  ports.setClock([this] { return desktop.now(); });
}

bool RandomWorld::mayReport(const std::string& number) const {
  std::set<std::string> numbers;
  if (probePort.pulled) numbers.insert("8020");  // while the phone was asked who made it
  if (writesNoAddress) numbers.insert({"6", "9", "13"});
  if (files.noNewFolders) numbers.insert("75");         // no folder for the drivers
  if (!files.unreadable.empty()) numbers.insert("75");  // no operator list
  if (processes.missing) numbers.insert("53");
  return numbers.count(number) == 1;
}

}  // namespace pelvaro
