// The one practice line of a process: its folder, its lock, and the thread that lets time pass while something dials or
// is up. Used by the functions that rasapi32.dll exports, iphlpapi.dll's among them; a call starts the line when there
// is none yet.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>

#include "dial_line.h"
#include "win32/serial_port.h"

namespace pelvaro::line {

// The event that asks for the scenario and the phonebook to be read again.
constexpr char kReloadEvent[] = "PelvaroPracticeReload";

class Practice {
 public:
  Practice();
  ~Practice();
  Practice(const Practice&) = delete;
  Practice& operator=(const Practice&) = delete;

  // Runs a verb on the line, alone.
  template <class Verb>
  DWORD call(Verb verb) {
    const Lock lock(section_);
    start();
    const bool wasUp = line_->anythingUp();
    const DWORD result = verb(*line_);
    if (!wasUp && line_->anythingUp()) ::SetEvent(wake_);
    return result;
  }

  // Within a verb: takes what other programs have made of the phonebook.
  void takeChanges(DialLine& line);

  // The interface counters. Waits for no verb and no step: the program asks every second.
  DWORD getIfTable(void* table, std::uint32_t* size, bool sorted);

 private:
  struct Lock {
    explicit Lock(CRITICAL_SECTION& section) : section_(section) { ::EnterCriticalSection(&section_); }
    ~Lock() { ::LeaveCriticalSection(&section_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    CRITICAL_SECTION& section_;
  };

  void start();
  void reload();
  Phonebook readPhonebook();
  std::optional<Phonebook> changedPhonebook();
  bool savePhonebook(const Phonebook& book);
  Scenario readScenario();
  void tellPerson(const std::string& message);
  static std::uint64_t now();
  static DWORD WINAPI work(void* self);

  CRITICAL_SECTION section_;  // around the line, but for its counters
  SerialPorts ports_;
  std::unique_ptr<DialLine> line_;
  std::string folder_;
  std::optional<PhonebookFile> file_;
  HANDLE fileMutex_ = nullptr;  // shared by all programs with a practice line
  UINT dialEvent_ = 0;
  HANDLE wake_ = nullptr;
  HANDLE reload_ = nullptr;
  std::atomic<bool> started_ = false;
};

// The process's practice line.
Practice& practice();

}  // namespace pelvaro::line
