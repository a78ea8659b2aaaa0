// What the phones, the network, the services and other programs do around a random user.
#include "phonebook/entry_properties.h"
#include "random_user.h"

namespace pelvaro {

namespace {

constexpr const char* kPorts[] = {"COM4", "COM5", "COM5", "COM7", "COM7", "COM9"};

line::PhoneTable table(const char* text) {
  std::string message;
  return *line::parsePhoneTable(text, message);
}

// Phones of several makers, the first a good one; some say nothing to one question or to all, some speak slowly or
// nonsense.
const std::vector<line::PhoneTable>& tables() {
  static const std::vector<line::PhoneTable> all = {
      table("AT+CGMI => Nokia | OK\nAT+CGDCONT=* => OK\n"),
      table("AT+CGMI => SAMSUNG | OK\nAT+CGDCONT=* => OK\n"),
      table("AT+CGMI => Acme Ltd | OK\nAT+CGDCONT=* => OK\n"),
      table("AT+CGMI => ERROR\nAT+CGDCONT=* => OK\n"),
      table("AT+CGMI =>\nAT+CGDCONT=* => OK\n"),
      table("AT =>\nAT+CGDCONT=* => OK\n"),
      table("pace 5\nAT+CGMI => Nokia | OK\nAT+CGDCONT=* => OK\n"),
      table("echo off\nAT => %80%FE%00%07 | OK\nAT+CGMI => %00%FF%807#%1B | q%00%C3%28Zz%9F | OK\n"),
  };
  return all;
}

const line::PhoneTable& anyTable(Dice& dice) { return tables()[dice.oneIn(2) ? 0 : dice.roll() % tables().size()]; }

}  // namespace

void RandomUser::mendEverything() {
  for (const char* port : kPorts) world_->ports.occupy(port, false);
  for (const char* port : {"COM5", "COM7"}) plug(port, tables()[0]);
  line::Phonebook book = world_->line.phonebook();
  book.devices = line::firstPhonebook().devices;
  if (book.entries.empty()) book = line::firstPhonebook();
  world_->line.setPhonebook(std::move(book));
  scenario_.pace = 20;
  scenario_.end = line::kConnected;
  scenario_.failures.clear();
  world_->line.setScenario(scenario_);
  world_->interfaces.failure = 0;
  world_->interfaces.claimedSize = 0;
  world_->interfaces.rows[1].type = 6;
}

// In place of the one before.
line::Phone& RandomUser::plug(const std::string& port, const line::PhoneTable& table) {
  world_->probePort.noteUnplugged(port);
  return world_->ports.plug(port, table);
}

bool RandomUser::plugIn() {
  plug(dice_.of(kPorts), anyTable(dice_));
  return true;
}

bool RandomUser::unplug() {
  const std::string port = dice_.of(kPorts);
  world_->probePort.noteUnplugged(port);
  world_->ports.unplug(port);
  return true;
}

bool RandomUser::occupy() {
  const std::string port = dice_.of(kPorts);
  world_->ports.occupy(port, true);
  world_->desktop.postIn(dice_.pick(2000), [this, port] { world_->ports.occupy(port, false); });
  return true;
}

bool RandomUser::phoneSpeaks() {
  world_->ports.say(dice_.of(kPorts), dice_.of({"NO CARRIER", "RING", "OK", "ERROR", ""}));
  return true;
}

// A phone in the place of another, with what its network will say to a call.
bool RandomUser::networkAnswers() {
  using enum line::Answer;
  line::Phone& phone = plug(dice_.oneIn(2) ? "COM5" : "COM7", anyTable(dice_));
  phone.switches().answer = dice_.of({kConnect, kConnect, kConnect, kConnect, kConnect, kBusy, kNoAnswer, kNoCarrier,
                                      kNoDialtone, kError, kSilent, kMute});
  return true;
}

// A notification that no dial has sent: any state, with an error or without.
bool RandomUser::dialEvent() {
  if (world_->dialService.windows.empty()) return false;
  static constexpr std::uint32_t kStates[] = {0, 1, 2, 3, 4, 5, 14, 18, 21, 0x1000, 0x2000, 0x2001, 0x1005, 0xFFFFFFFF};
  static constexpr std::intptr_t kErrors[] = {0, 0, 0, 619, 633, 676, 691, 797, -1};
  world_->desktop.postMessage(world_->dialService.windows.back(), world_->desktop.registeredMessage, dice_.of(kStates),
                              dice_.of(kErrors));
  return true;
}

// One that arrives behind the hang-up, at the window of the dial or at one of before.
bool RandomUser::lateDialEvent() {
  const auto& windows = world_->dialService.windows;
  if (windows.empty()) return false;
  const std::uintptr_t window = windows[static_cast<std::size_t>(dice_.pick(static_cast<int>(windows.size())))];
  const std::uint32_t state = dice_.of({0x2000u, 0x2001u, 5u, 0x1000u});
  const std::intptr_t error = dice_.of({0, 0, 691, 619});
  const auto send = [this, window, state, error] {
    world_->desktop.postMessage(window, world_->desktop.registeredMessage, state, error);
  };
  world_->desktop.postIn(dice_.pick(300), send);
  if (dice_.oneIn(2)) hangUp();
  if (dice_.oneIn(2)) cancelOrRetry();
  return true;
}

bool RandomUser::strangeMessage() {
  const std::uintptr_t window = world_->dialService.windows.empty() ? 501 : world_->dialService.windows.back();
  world_->desktop.postMessage(window, dice_.roll(), dice_.roll(), static_cast<std::intptr_t>(dice_.roll()));
  return true;
}

bool RandomUser::moveCounters() {
  auto& row = world_->interfaces.rows[1];
  row.received += dice_.roll() % (dice_.oneIn(10) ? 0xFFFFFFFFu : 60'000u);
  row.sent += dice_.roll() % 30'000u;
  return true;
}

bool RandomUser::failCounters() {
  world_->interfaces.failure = dice_.oneIn(2) ? 5 : 0;
  world_->interfaces.rows[1].type = dice_.oneIn(3) ? 23 : 6;
  world_->interfaces.claimedSize = dice_.oneIn(4) ? 4 : 0;
  return true;
}

bool RandomUser::failService() {
  static constexpr const char* kVerbs[] = {"getEntryProperties",
                                           "setEntryProperties",
                                           "enumEntries",
                                           "enumDevices",
                                           "getEntryDialParams",
                                           "dial",
                                           "hangUp",
                                           "enumConnections",
                                           "deleteEntry",
                                           "editPhonebookEntry",
                                           "errorString"};
  static constexpr std::uint32_t kCodes[] = {5, 6, 8, 87, 123, 603, 621, 623, 632, 668};
  scenario_.failures = {{dice_.of(kVerbs), dice_.of(kCodes), 1 + static_cast<std::uint32_t>(dice_.pick(4))}};
  world_->line.setScenario(scenario_);
  scenario_.failures.clear();
  return true;
}

// For a while the disk is full, no folder can be made, or a list cannot be read; the last two may end the program.
bool RandomUser::failFiles() {
  auto& files = world_->files;
  files.diskFull = dice_.oneIn(2);
  files.noNewFolders = dice_.oneIn(4);
  if (dice_.oneIn(4)) files.unreadable.insert(dice_.of({"C:\\Pelvaro\\Default.DAT", "C:\\Pelvaro\\Default2.DAT"}));
  world_->desktop.postIn(dice_.pick(3000), [&files] {
    files.diskFull = files.noNewFolders = false;
    files.unreadable.clear();
  });
  return true;
}

// For a while no program can be started, which ends ours, as it may.
bool RandomUser::failPrograms() {
  auto& processes = world_->processes;
  processes.missing = dice_.oneIn(4);
  processes.unstartable = dice_.oneIn(2);
  world_->desktop.postIn(dice_.pick(3000), [&processes] { processes.missing = processes.unstartable = false; });
  return true;
}

bool RandomUser::failSettings() {
  world_->settings.broken = dice_.oneIn(2);
  for (const char* key : {"brand", "model", "type"}) {
    if (dice_.oneIn(3)) world_->settings.plant("setting", key, dice_.of({"", "0", "1", "2", "-1", "99", "abc", "1e9"}));
  }
  return true;
}

bool RandomUser::changeService() {
  scenario_.pace = dice_.of({0u, 20u, 20u, 100u, 400u});
  scenario_.timeout = dice_.of({500u, 5000u});
  scenario_.end = dice_.of({0x2000u, 0x2000u, 0x2000u, 0x1000u, 0x2001u});
  scenario_.listDialing = dice_.oneIn(2);
  scenario_.entries = dice_.oneIn(8) ? 12 : 0;
  world_->line.setScenario(scenario_);
  return true;
}

bool RandomUser::changeSystem() {
  auto& variables = world_->environment.variables;
  variables["os"] = dice_.of({"Windows_NT", "Windows_NT", "Other", ""});
  world_->timeAtStart = dice_.pick(86400);
  world_->files.folders = {"C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM", "C:\\WINDOWS\\SYSTEM32"};
  return true;
}

// Another program writes an entry, deletes one or has other modems.
bool RandomUser::otherProgram() {
  static constexpr const char* kNames[] = {"Corvanti-Office", "Corvanti-Home", "Corvanti-Garden", "Work"};
  const char* name = dice_.of(kNames);
  if (dice_.oneIn(5)) {
    world_->line.deleteEntry(nullptr, name);
    return true;
  }
  if (dice_.oneIn(6)) {
    line::Phonebook book = world_->line.phonebook();
    book.devices = line::firstPhonebook().devices;
    if (dice_.oneIn(2)) book.devices.pop_back();
    if (dice_.oneIn(4)) book.devices.clear();
    world_->line.setPhonebook(std::move(book));
    return true;
  }
  EntryChoices choices;
  choices.number = "*99#";
  choices.device = dice_.oneIn(2) ? "Nokia 6230 USB Modem" : "Samsung D500 USB Modem";
  Module1::SetEntryProperties(world_->ras, name, editorRecord(choices));
  return true;
}

// By message or by a call from outside, whatever is open.
bool RandomUser::runScript() {
  Windows& w = *windows_;
  switch (dice_.pick(5)) {
    case 0: w.form1.CallPhone(dice_.of({"5551234", "", " "}), "Ann"); return true;
    case 1: w.form1.EditEntry("Work", ""); return true;
    case 2: w.form1.refreshList(); return true;
    case 3: w.form1.ListView1.selectRow(dice_.pick(5) - 1); return true;
    default:
      byScript_ = true;
      Form* form = anyForm();
      return form && pressAny(*form);
  }
}

bool RandomUser::wait() {
  pause_ = dice_.pick(dice_.oneIn(10) ? 5000 : 500);
  return true;
}

bool RandomUser::waitLong() {
  pause_ = 10'000 + dice_.pick(15'000);
  return true;
}

}  // namespace pelvaro
