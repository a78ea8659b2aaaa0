#include "win32/practice.h"

#include <chrono>

#include "codes.h"
#include "win32/practice_folder.h"

namespace pelvaro::line {
namespace {

constexpr DWORD kWhileDialing = 5, kWhileUp = 100;  // milliseconds between two steps

DWORD WINAPI showMessage(void* text) {
  const std::unique_ptr<std::string> message(static_cast<std::string*>(text));
  ::MessageBoxA(nullptr, message->c_str(), "Practice line", MB_OK | MB_ICONWARNING | MB_SETFOREGROUND);
  return 0;
}

}  // namespace

Practice::Practice() { ::InitializeCriticalSection(&section_); }

// Runs while the process ends: the other threads are gone by now, perhaps in the middle of a step. Only when none was,
// the calls are ended, so that the phones are free for the next program.
Practice::~Practice() {
  if (!::TryEnterCriticalSection(&section_)) {
    static_cast<void>(line_.release());
    return;
  }
  line_.reset();
}

void Practice::start() {
  if (started_) return;
  HMODULE self = nullptr;  // the thread below runs until the process ends, so the DLL stays too
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const char*>(&Practice::work), &self);
  folder_ = practiceFolder();
  ::CreateDirectoryA(folder_.c_str(), nullptr);
  file_.emplace(folder_ + "\\phonebook.txt");
  fileMutex_ = phonebookMutex();
  dialEvent_ = ::RegisterWindowMessageA("RasDialEvent");
  if (dialEvent_ == 0) dialEvent_ = ras::kDialEventFallback;
  LineCallbacks callbacks;
  callbacks.notify = [this](std::uintptr_t window, std::uint32_t state, std::uint32_t error) {
    ::PostMessageA(reinterpret_cast<HWND>(window), dialEvent_, state, static_cast<LPARAM>(error));
  };
  callbacks.reread = [this] { return changedPhonebook(); };
  callbacks.save = [this](const Phonebook& book) { return savePhonebook(book); };
  callbacks.journal = [this](const std::string& text) { append(folder_ + "\\journal.txt", text); };
  line_ = std::make_unique<DialLine>(readPhonebook(), readScenario(), ports_, std::move(callbacks));
  if (::GetFileAttributesA((folder_ + "\\phonebook.txt").c_str()) == INVALID_FILE_ATTRIBUTES)
    savePhonebook(line_->phonebook());
  wake_ = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  reload_ = ::CreateEventA(nullptr, FALSE, FALSE, kReloadEvent);
  if (const HANDLE thread = ::CreateThread(nullptr, 0, work, this, 0, nullptr)) ::CloseHandle(thread);
  started_ = true;
}

DWORD Practice::getIfTable(void* table, std::uint32_t* size, bool sorted) {
  if (!started_) call([](DialLine&) { return kSuccess; });
  return line_->counters().getIfTable(table, size, sorted, now());
}

DWORD WINAPI Practice::work(void* self) {
  auto& practice = *static_cast<Practice*>(self);
  const HANDLE events[] = {practice.reload_, practice.wake_};
  for (DWORD wait = INFINITE;;) {
    const bool reloads = ::WaitForMultipleObjects(2, events, FALSE, wait) == WAIT_OBJECT_0;
    const Lock lock(practice.section_);
    if (reloads) practice.reload();
    practice.line_->step(practice.now());
    wait = practice.line_->dialing() ? kWhileDialing : practice.line_->anythingUp() ? kWhileUp : INFINITE;
  }
}

void Practice::reload() {
  line_->setScenario(readScenario());
  line_->setPhonebook(readPhonebook());
}

// Mostly nothing.
std::optional<Phonebook> Practice::changedPhonebook() {
  const FileLock lock(fileMutex_);
  return lock.held ? file_->reread() : std::nullopt;
}

void Practice::takeChanges(DialLine& line) {
  if (auto changed = changedPhonebook()) line.setPhonebook(std::move(*changed));
}

Phonebook Practice::readPhonebook() {
  const FileLock lock(fileMutex_);
  LoadedPhonebook loaded = file_->load();
  if (!loaded.message.empty()) tellPerson(loaded.message);
  return std::move(loaded.book);
}

// Without the lock another program's change could come between the look at the file and its replacing.
bool Practice::savePhonebook(const Phonebook& book) {
  const FileLock lock(fileMutex_);
  return lock.held && file_->save(book);
}

Scenario Practice::readScenario() {
  const std::string path = folder_ + "\\scenario.txt";
  const auto text = readFile(path);
  if (!text) return {};
  std::string message;
  if (auto scenario = parseScenario(*text, message)) return std::move(*scenario);
  tellPerson("The scenario " + path + " is left out: " + message + ".");
  return {};
}

// On a thread of its own: the program that called must go on.
void Practice::tellPerson(const std::string& message) {
  auto text = std::make_unique<std::string>(message);
  const HANDLE thread = ::CreateThread(nullptr, 0, showMessage, text.get(), 0, nullptr);
  if (!thread) return;
  static_cast<void>(text.release());
  ::CloseHandle(thread);
}

// Milliseconds that do not wrap.
std::uint64_t Practice::now() {
  using std::chrono::milliseconds, std::chrono::steady_clock;
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

Practice& practice() {
  static Practice instance;
  return instance;
}

}  // namespace pelvaro::line
