// Services that hand every call to others, but for those that Faults plans to fail: what the system's functions give
// then, by the numbers of winerror.h and raserror.h. What cannot fail is handed on uncounted.
#pragma once

#include <algorithm>
#include <charconv>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>

#include "base/bytes.h"
#include "base/runtime_error.h"
#include "platform/dial_event_window.h"
#include "platform/dial_service.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/event_loop.h"
#include "platform/fake/faults.h"
#include "platform/files.h"
#include "platform/interface_table.h"
#include "platform/processes.h"
#include "platform/ras_layout.h"
#include "platform/registry.h"
#include "platform/serial_port.h"
#include "platform/services.h"
#include "platform/settings.h"
#include "platform/shutdown.h"
#include "platform/telephony.h"

namespace pelvaro::fake {

// The outcome of a call that lets events run: the user ends the program meanwhile.
inline constexpr const char* kProgramEnds = "the program ends";
// Of one that gives no number.
inline constexpr const char* kFails = "fails";

// The verbs of all calls that can fail.
inline constexpr std::string_view kVerbs[] = {
    // DialService
    "RasGetEntryProperties", "RasGetEntryProperties (size)", "RasSetEntryProperties", "RasEnumEntries",
    "RasEnumDevices", "RasEnumDevices (size)", "RasGetEntryDialParams", "RasDial", "RasHangUp", "RasEnumConnections",
    "RasDeleteEntry", "RasEditPhonebookEntry", "RasGetErrorString", "FormatMessage",
    // DialEventWindow
    "CreateWindow", "RegisterWindowMessage", "SetWindowLong",
    // Dialogs
    "MessageBox", "CreatePopupMenu", "AppendMenu", "GetCursorPos", "GetForegroundWindow", "TrackPopupMenu",
    // EventLoop
    "yield", "a modal wait",
    // Environment
    "GetModuleFileName", "GetEnvironmentVariable", "GetLocaleInfo",
    // Files
    "is a file", "read a file", "replace a file", "is a folder", "CreateDirectory", "FindFirstFile", "SHFileOperation",
    "GetShortPathName", "MoveFileEx",
    // InterfaceTable
    "GetIfTable", "GetIfTable (size)",
    // Processes
    "CreateProcess (no wait)", "ShellExecute", "CreateProcess", "WaitForSingleObject", "GetExitCodeProcess",
    // Registry
    "RegOpenKeyEx", "RegEnumKeyEx",
    // SerialPort
    "CreateFile (may be opened)", "open a port", "write to a port", "read from a port",
    // Settings
    "read a setting", "store a setting",
    // Shutdown
    "OpenProcessToken", "LookupPrivilegeValue", "AdjustTokenPrivileges", "ExitWindowsEx",
    // Telephony
    "tapiRequestMakeCall"};

// One of them; another does not compile.
class Verb {
 public:
  consteval Verb(const char* name) : name_(name) {
    if (std::find(std::begin(kVerbs), std::end(kVerbs), name) == std::end(kVerbs)) throw "not one of kVerbs";
  }
  const char* name() const { return name_; }

 private:
  const char* name_;
};

// What a breaking service has in common with the others: the one behind it, and the plan.
template <typename Service>
class Breaking : public Service {
 public:
  Breaking(Service& service, Faults& planned) : real(service), faults_(planned) {}

 protected:
  Service& real;

  std::string_view at(Verb verb, std::initializer_list<const char*> outcomes) {
    return faults_.at(verb.name(), outcomes);
  }
  bool fails(Verb verb) { return !at(verb, {kFails}).empty(); }
  // The number that an outcome begins with.
  static std::uint32_t code(std::string_view outcome) {
    std::uint32_t number = 0;
    std::from_chars(outcome.data(), outcome.data() + outcome.size(), number);
    return number;
  }

 private:
  Faults& faults_;
};

struct BreakingDialService : Breaking<DialService> {
  using Breaking::Breaking;
  static constexpr std::uint32_t kAbsurd = 0xFFFFFFFF;

  std::uint32_t getEntryProperties(const char* phonebook, const char* entry, void* record,
                                   std::uint32_t* size) override {
    const std::string_view outcome =
        record ? at("RasGetEntryProperties", {"5", "8", "87", "603", "621", "623", "632", "0 and nothing read"})
               : at("RasGetEntryProperties (size)",
                    {"5", "8", "87", "621", "623", "632", "603 and no size", "603 and 4 GB"});
    if (outcome.empty()) return real.getEntryProperties(phonebook, entry, record, size);
    if (outcome == "603 and 4 GB") *size = kAbsurd;
    return code(outcome);
  }
  std::uint32_t setEntryProperties(const char* phonebook, const char* entry, void* record,
                                   std::uint32_t size) override {
    const std::string_view outcome =
        at("RasSetEntryProperties", {"5", "8", "87", "123", "603", "621", "623", "624", "632", "624 though written"});
    const bool done = outcome.empty() || outcome.ends_with("written");
    const std::uint32_t result = done ? real.setEntryProperties(phonebook, entry, record, size) : 0;
    return outcome.empty() ? result : code(outcome);
  }
  std::uint32_t enumEntries(const char* phonebook, void* records, std::uint32_t* size, std::uint32_t* count) override {
    return enumerate("RasEnumEntries", size, count, [&] { return real.enumEntries(phonebook, records, size, count); });
  }
  // One variable may be both size and count: the last one written stays.
  std::uint32_t enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) override {
    return enumerate(records ? Verb("RasEnumDevices") : Verb("RasEnumDevices (size)"), size, count,
                     [&] { return real.enumDevices(records, size, count); });
  }
  std::uint32_t getEntryDialParams(const char* phonebook, void* params, std::int32_t* passwordSaved) override {
    const std::string_view outcome =
        at("RasGetEntryDialParams", {"0 and nothing read", "5", "8", "87", "603", "621", "623", "632"});
    return outcome.empty() ? real.getEntryDialParams(phonebook, params, passwordSaved) : code(outcome);
  }
  // A dial that has begun has a handle, also when it is refused then.
  std::uint32_t dial(const char* phonebook, void* params, std::uint32_t notifierType, std::uintptr_t notifier,
                     RasHandle* connection) override {
    const std::string_view outcome = at(
        "RasDial", {"5", "8", "87", "600", "621", "623", "632", "633", "797", "633 with a handle", "0 and no handle"});
    if (!outcome.empty() && !outcome.ends_with("handle")) return code(outcome);
    const std::uint32_t result = real.dial(phonebook, params, notifierType, notifier, connection);
    if (outcome == "0 and no handle") *connection = 0;
    return outcome.empty() ? result : code(outcome);
  }
  std::uint32_t hangUp(RasHandle connection) override {
    const std::string_view outcome = at("RasHangUp", {"6", "8", "668", "6 though hung up"});
    const bool done = outcome.empty() || outcome.ends_with("hung up");
    const std::uint32_t result = done ? real.hangUp(connection) : 0;
    return outcome.empty() ? result : code(outcome);
  }
  std::uint32_t enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) override {
    return enumerate("RasEnumConnections", size, count, [&] { return real.enumConnections(records, size, count); });
  }
  std::uint32_t deleteEntry(const char* phonebook, const char* entry) override {
    const std::string_view outcome = at("RasDeleteEntry", {"5", "621", "623", "623 though deleted"});
    const bool done = outcome.empty() || outcome.ends_with("deleted");
    const std::uint32_t result = done ? real.deleteEntry(phonebook, entry) : 0;
    return outcome.empty() ? result : code(outcome);
  }
  std::uint32_t editPhonebookEntry(std::uintptr_t owner, const char* phonebook, const char* entry) override {
    const std::string_view outcome = at("RasEditPhonebookEntry", {"87", "602", "621", "623"});
    return outcome.empty() ? real.editPhonebookEntry(owner, phonebook, entry) : code(outcome);
  }
  std::uint32_t errorString(std::uint32_t number, char* text, std::uint32_t size) override {
    const std::string_view outcome = at("RasGetErrorString", {"8", "87", "603", "0 without an end"});
    if (outcome == "0 without an end") std::fill_n(text, size, '%');
    return outcome.empty() ? real.errorString(number, text, size) : code(outcome);
  }
  std::uint32_t formatMessage(std::uint32_t flags, std::uint32_t number, std::uint32_t language, char* text,
                              std::uint32_t size) override {
    return at("FormatMessage", {"0"}).empty() ? real.formatMessage(flags, number, language, text, size) : 0;
  }

 private:
  std::uint32_t enumerate(Verb verb, std::uint32_t* size, std::uint32_t* count,
                          const std::function<std::uint32_t()>& call) {
    const std::string_view outcome =
        at(verb, {"5", "8", "50", "87", "603", "603 and 4 GB", "621", "632", "0 and 4 billion", "0 and none"});
    if (outcome.empty()) return call();
    if (outcome == "603 and 4 GB") *size = kAbsurd;
    if (outcome == "0 and 4 billion") call(), *count = kAbsurd;
    if (outcome == "0 and none") *count = 0;
    return code(outcome);
  }
};

// Knows what a hook may be taken from.
struct BreakingDialEventWindow : Breaking<DialEventWindow> {
  using Breaking::Breaking;
  // Called when the message has no number of its own: the service takes the other one then.
  std::function<void()> onFallback;
  int misuses = 0;  // a procedure put back that no hook gave

  WindowHandle create() override { return fails("CreateWindow") ? 0 : real.create(); }
  void destroy(WindowHandle window) override {
    hooked_.erase(window);
    real.destroy(window);
  }
  std::uint32_t registerMessage(const char* name) override {
    if (!fails("RegisterWindowMessage")) return real.registerMessage(name);
    if (onFallback) onFallback();
    return 0;
  }
  WindowProcedure hook(WindowHandle window, MessageHook& hook) override {
    if (fails("SetWindowLong")) return 0;
    const WindowProcedure previous = real.hook(window, hook);
    if (previous != 0) hooked_.insert(window);
    return previous;
  }
  void restore(WindowHandle window, WindowProcedure previous) override {
    if (hooked_.erase(window) == 0 || previous == 0) ++misuses;
    real.restore(window, previous);
  }
  std::intptr_t callPrevious(WindowProcedure previous, WindowHandle window, std::uint32_t number, std::uintptr_t wParam,
                             std::intptr_t lParam) override {
    if (previous == 0) ++misuses;
    return real.callPrevious(previous, window, number, wParam, lParam);
  }

 private:
  std::set<WindowHandle> hooked_;
};

// How the program is ended from inside a call.
using Ending = std::function<void()>;

// What has no more to give than "it did not work".
struct BreakingDialogs : Breaking<Dialogs> {
  using Breaking::Breaking;
  Ending end;
  std::set<MenuHandle> menus;  // that are there now

  int messageBox(const std::string& text, std::uint32_t buttons) override {
    const std::string_view outcome = at("MessageBox", {"0", kProgramEnds});
    if (outcome.empty()) return real.messageBox(text, buttons);
    unwind(outcome);
    return 0;
  }
  MenuHandle createPopupMenu() override {
    if (fails("CreatePopupMenu")) return 0;
    const MenuHandle menu = real.createPopupMenu();
    menus.insert(menu);
    return menu;
  }
  void appendMenu(MenuHandle menu, std::uint32_t flags, std::uint32_t identifier, const std::string& caption) override {
    if (!fails("AppendMenu")) real.appendMenu(menu, flags, identifier, caption);
  }
  void cursorPosition(int& x, int& y) override {
    if (fails("GetCursorPos")) {
      x = y = 0;
    } else {
      real.cursorPosition(x, y);
    }
  }
  std::uintptr_t foregroundWindow() override { return fails("GetForegroundWindow") ? 0 : real.foregroundWindow(); }
  std::uint32_t trackPopupMenu(MenuHandle menu, std::uint32_t flags, int x, int y, std::uintptr_t owner) override {
    const std::string_view outcome = at("TrackPopupMenu", {"0", "4294967295", kProgramEnds});
    if (outcome.empty()) return menu == 0 ? 0 : real.trackPopupMenu(menu, flags, x, y, owner);
    unwind(outcome);
    return code(outcome);
  }
  void destroyMenu(MenuHandle menu) override {
    if (menus.erase(menu) > 0) real.destroyMenu(menu);
  }

 private:
  void unwind(std::string_view outcome) {
    if (outcome != kProgramEnds) return;
    end();
    throw ProgramEnded{};
  }
};

struct BreakingEventLoop : Breaking<EventLoop> {
  using Breaking::Breaking;
  Ending endProgram;

  void yield() override {
    if (!at("yield", {kProgramEnds}).empty()) endProgram();
    real.yield();
  }
  void runUntil(const std::function<bool()>& done) override {
    if (!at("a modal wait", {kProgramEnds}).empty()) endProgram();
    real.runUntil(done);
  }
  void end() override { real.end(); }
};

struct BreakingEnvironment : Breaking<Environment> {
  using Breaking::Breaking;
  std::string programFolder() override { return fails("GetModuleFileName") ? std::string() : real.programFolder(); }
  std::string variable(const std::string& name) override {
    return fails("GetEnvironmentVariable") ? std::string() : real.variable(name);
  }
  NumberStyle numberStyle() override { return fails("GetLocaleInfo") ? NumberStyle{"", ""} : real.numberStyle(); }
};

struct BreakingFiles : Breaking<Files> {
  using Breaking::Breaking;
  Ending end;

  bool isFile(const std::string& path) override { return !fails("is a file") && real.isFile(path); }
  std::optional<std::string> readWhole(const std::string& path) override {
    return fails("read a file") ? std::nullopt : real.readWhole(path);
  }
  bool replaceWhole(const std::string& path, std::string_view bytes) override {
    return !fails("replace a file") && real.replaceWhole(path, bytes);
  }
  bool isFolder(const std::string& path) override { return !fails("is a folder") && real.isFolder(path); }
  bool makeFolder(const std::string& path) override { return !fails("CreateDirectory") && real.makeFolder(path); }
  std::vector<std::string> namesIn(const std::string& folder, const std::string& ending) override {
    return fails("FindFirstFile") ? std::vector<std::string>() : real.namesIn(folder, ending);
  }
  void shellCopy(const std::string& from, const std::string& to, std::uint32_t flags) override {
    const std::string_view outcome = at("SHFileOperation", {kFails, kProgramEnds});
    if (outcome.empty()) return real.shellCopy(from, to, flags);
    if (outcome == kFails) return;
    end();
    throw ProgramEnded{};
  }
  std::size_t shortPathName(const std::string& path, char* buffer, std::size_t size) override {
    const std::string_view outcome = at("GetShortPathName", {"0", "70000", "254 and no end"});
    if (outcome.empty()) return real.shortPathName(path, buffer, size);
    if (outcome == "254 and no end") std::fill_n(buffer, size, 'x');
    return code(outcome);
  }
  bool moveFileEx(const std::string& from, const std::string& to, std::uint32_t flags) override {
    return !fails("MoveFileEx") && real.moveFileEx(from, to, flags);
  }
};

struct BreakingInterfaceTable : Breaking<InterfaceTable> {
  using Breaking::Breaking;
  std::uint32_t getIfTable(void* table, std::uint32_t* size, bool sorted) override {
    const std::string_view outcome =
        table ? at("GetIfTable", {"5", "50", "87", "122 and larger", "232", "0 and 4 billion"})
              : at("GetIfTable (size)", {"50", "232", "122 and 4 GB", "122 and 1"});
    if (outcome.empty()) return real.getIfTable(table, size, sorted);
    if (outcome == "122 and larger") *size += 860;
    if (outcome == "122 and 4 GB") *size = 0xFFFFFFFF;
    if (outcome == "122 and 1") *size = 1;
    if (outcome == "0 and 4 billion") {
      const std::uint32_t room = *size;
      real.getIfTable(table, size, sorted);
      put32({static_cast<std::uint8_t*>(table), room}, 0, 0xFFFFFFFF);
    }
    return code(outcome);
  }
};

struct BreakingProcesses : Breaking<Processes> {
  using Breaking::Breaking;
  bool start(const std::string& commandLine, std::uint16_t windowStyle) override {
    return !fails("CreateProcess (no wait)") && real.start(commandLine, windowStyle);
  }
  bool open(const std::string& document) override { return !fails("ShellExecute") && real.open(document); }
  bool create(const std::string& commandLine, bool inheritHandles, std::uint32_t flags,
              ProgramHandles& handles) override {
    if (!fails("CreateProcess")) return real.create(commandLine, inheritHandles, flags, handles);
    handles = {};
    return false;
  }
  std::uint32_t waitFor(ProcessHandle process, std::uint32_t milliseconds) override {
    const std::string_view outcome = at("WaitForSingleObject", {"4294967295", "258", "128"});
    return outcome.empty() ? real.waitFor(process, milliseconds) : code(outcome);
  }
  bool exitCode(ProcessHandle process, std::uint32_t& exit) override {
    return !fails("GetExitCodeProcess") && real.exitCode(process, exit);
  }
  void close(ProcessHandle handle) override { real.close(handle); }
};

struct BreakingRegistry : Breaking<Registry> {
  using Breaking::Breaking;
  RegistryKey openLocalMachine(const std::string& path, bool view64) override {
    return fails("RegOpenKeyEx") ? 0 : real.openLocalMachine(path, view64);
  }
  bool enumerateKey(RegistryKey key, std::uint32_t index, std::string& name) override {
    return !fails("RegEnumKeyEx") && real.enumerateKey(key, index, name);
  }
  void close(RegistryKey key) override { real.close(key); }
};

struct BreakingSerialPort : Breaking<SerialPort> {
  using Breaking::Breaking;
  bool isOpen = false;

  bool canOpen(const std::string& deviceName) override {
    const std::string_view outcome = at("CreateFile (may be opened)", {kFails, "can, though it cannot"});
    return outcome.empty() ? real.canOpen(deviceName) : outcome != kFails;
  }
  void open(int number, const std::string& settings) override {
    const std::string_view outcome = at("open a port", {"8002", "8005", "8021", "380"});
    if (!outcome.empty()) throw RuntimeError(static_cast<int>(code(outcome)), "planned");
    real.open(number, settings);
    isOpen = true;
  }
  void close() override {
    isOpen = false;
    real.close();
  }
  void write(std::string_view text) override {
    const std::string_view outcome = at("write to a port", {"8018", "8020", "lost"});
    if (outcome == "lost") return;
    if (!outcome.empty()) throw RuntimeError(static_cast<int>(code(outcome)), "planned");
    real.write(text);
  }
  std::string read() override {
    const std::string_view outcome = at("read from a port", {"8018", "8020", "lost", "4096 of noise"});
    if (outcome.starts_with('8')) throw RuntimeError(static_cast<int>(code(outcome)), "planned");
    std::string text = real.read();
    if (outcome == "lost") text.clear();
    if (outcome == "4096 of noise") text.assign(4096, '\xFF');
    return text;
  }
};

struct BreakingSettings : Breaking<Settings> {
  using Breaking::Breaking;
  std::string get(const std::string& section, const std::string& key) override {
    const std::string_view outcome = at("read a setting", {"none", "longest"});
    if (outcome == "longest") return std::string(kLongestSetting, '9');
    return outcome.empty() ? real.get(section, key) : std::string();
  }
  bool save(const std::string& section, const std::string& key, const std::string& value) override {
    return !fails("store a setting") && real.save(section, key, value);
  }
};

struct BreakingShutdown : Breaking<Shutdown> {
  using Breaking::Breaking;
  TokenHandle openOwnToken(std::uint32_t access) override {
    return fails("OpenProcessToken") ? 0 : real.openOwnToken(access);
  }
  bool lookupPrivilege(const std::string& system, const std::string& name,
                       std::array<std::uint32_t, 2>& identifier) override {
    return !fails("LookupPrivilegeValue") && real.lookupPrivilege(system, name, identifier);
  }
  bool adjustPrivileges(TokenHandle token, bool disableAll, const PrivilegeRecord& record,
                        std::uint32_t bufferLength) override {
    return !fails("AdjustTokenPrivileges") && real.adjustPrivileges(token, disableAll, record, bufferLength);
  }
  bool exitWindows(std::uint32_t flags, std::uint32_t reason) override {
    return !fails("ExitWindowsEx") && real.exitWindows(flags, reason);
  }
};

struct BreakingTelephony : Breaking<Telephony> {
  using Breaking::Breaking;
  std::int32_t requestMakeCall(const std::string& number, const std::string& application,
                               const std::string& calledParty, const std::string& comment) override {
    const std::string_view outcome = at("tapiRequestMakeCall", {"4294967295", "4294967294", "4294967292"});
    if (!outcome.empty()) return static_cast<std::int32_t>(code(outcome));
    return real.requestMakeCall(number, application, calledParty, comment);
  }
};

// The whole set over another one. The clock, random numbers and the windows of the screen cannot fail.
struct BreakingServices {
  BreakingServices(const Services& real, Faults& faults)
      : ras(real.ras, faults),
        dialWindow(real.dialWindow, faults),
        dialogs(real.dialogs, faults),
        environment(real.environment, faults),
        files(real.files, faults),
        loop(real.loop, faults),
        interfaces(real.interfaces, faults),
        processes(real.processes, faults),
        registry(real.registry, faults),
        serial(real.serial, faults),
        settings(real.settings, faults),
        shutdown(real.shutdown, faults),
        telephony(real.telephony, faults),
        services{.clock = real.clock,
                 .ras = ras,
                 .dialWindow = dialWindow,
                 .dialogs = dialogs,
                 .environment = environment,
                 .files = files,
                 .loop = loop,
                 .forms = real.forms,
                 .interfaces = interfaces,
                 .processes = processes,
                 .random = real.random,
                 .registry = registry,
                 .serial = serial,
                 .settings = settings,
                 .shutdown = shutdown,
                 .telephony = telephony} {}
  BreakingServices(const BreakingServices&) = delete;
  BreakingServices& operator=(const BreakingServices&) = delete;

  // How the program is ended from inside a call.
  void setEnding(const Ending& end) { dialogs.end = files.end = loop.endProgram = end; }

  BreakingDialService ras;
  BreakingDialEventWindow dialWindow;
  BreakingDialogs dialogs;
  BreakingEnvironment environment;
  BreakingFiles files;
  BreakingEventLoop loop;
  BreakingInterfaceTable interfaces;
  BreakingProcesses processes;
  BreakingRegistry registry;
  BreakingSerialPort serial;
  BreakingSettings settings;
  BreakingShutdown shutdown;
  BreakingTelephony telephony;
  Services services;
};

}  // namespace pelvaro::fake
