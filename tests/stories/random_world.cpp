#include "random_world.h"

#include <algorithm>

#include "operators/mod_encrypt.h"

namespace pelvaro {

namespace {

std::string listFile() {
  fake::FakeRandom random;
  std::string bytes;
  for (const char* line : {"Country/ City,Operator,APN,User Name,Password,Primary DNS,Secondary DNS,Plan,A,B,C",
                           "Lisbon,Norline,internet,[blank],[blank],192.0.2.1,,,,,", "Porto,Telvira,data,guest,,,,,,,",
                           "Lisbon,Marisol,marisol,,,,,,,,"}) {
    bytes += modEncrypt::Scramble(line, random) + "\r\n";
  }
  return bytes;
}

}  // namespace

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
  static const std::string list = listFile();
  environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}, {"programfiles", "C:\\Programs"}};
  registry.plainView = {"Nokia 6230 USB Modem", "Samsung D500 USB Modem"};
  files.contents["C:\\Pelvaro\\Default.DAT"] = list;
  files.folders = {"C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM32"};
  for (const char* file : {"MT\\a.sys", "MT\\win2k\\b.inf", "NK-A01\\c.sys", "SS-A01\\d.sys", "SE-A01\\e.inf"}) {
    files.contents[std::string("C:\\Programs\\corvanti\\common\\driver\\") + file] = "driver";
  }
  ports.setClock([this] { return desktop.now(); });
}

}  // namespace pelvaro
