// The practice line itself: a dial-up service with phonebook, modems and connections, in memory and on one thread.
// Wrapped by rasapi32.dll (win32/) and by LineDialService for tests without Windows. Its owner calls step() to let time
// pass.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "counters.h"
#include "modem_dialogue.h"
#include "phonebook_file.h"
#include "platform/ras_layout.h"
#include "port.h"
#include "scenario.h"

namespace pelvaro::line {

// What the line tells its owner. Each may be empty.
struct LineCallbacks {
  // A dial has reached a state, or failed in it. May call the line's verbs and step().
  std::function<void(std::uintptr_t window, std::uint32_t state, std::uint32_t error)> notify;
  // Before a change of the phonebook: what it has become elsewhere, for the change to be made in; mostly nothing.
  std::function<std::optional<Phonebook>()> reread;
  // Keeps the changed phonebook; false when that failed, and the change is then taken back.
  std::function<bool(const Phonebook&)> save;
  // A call or a notification in words, never with a password. Called only while the scenario's journal is on.
  std::function<void(const std::string& text)> journal;
};

class DialLine {
 public:
  // `ports` must outlive the line.
  DialLine(Phonebook book, Scenario scenario, PortOpener& ports, LineCallbacks callbacks);
  ~DialLine();
  DialLine(const DialLine&) = delete;
  DialLine& operator=(const DialLine&) = delete;

  // Takes a new scenario; dials under way go on with it.
  void setScenario(Scenario scenario);
  // Takes another phonebook; connections stay.
  void setPhonebook(Phonebook book);
  const Phonebook& phonebook() const { return book_; }

  // Lets dials and connections go on. Every dial moves by one state at most.
  void step(std::uint64_t nowMs);
  // Whether a dial is under way (step() soon) or only connections are up (step() now and then).
  bool dialing() const;
  bool anythingUp() const { return !connections_.empty(); }
  // The time of the last step.
  std::uint64_t now() const { return now_; }
  // The interface counters, which follow the connections. They alone may be asked from any thread.
  Counters& counters() { return counters_; }

  // The verbs: arguments, records and results of the service's functions of the same names.
  std::uint32_t getEntryProperties(const char* phonebook, const char* entry, void* record, std::uint32_t* size);
  std::uint32_t setEntryProperties(const char* phonebook, const char* entry, const void* record, std::uint32_t size);
  std::uint32_t enumEntries(const char* phonebook, void* records, std::uint32_t* size, std::uint32_t* count);
  std::uint32_t enumDevices(void* records, std::uint32_t* size, std::uint32_t* count);
  std::uint32_t getEntryDialParams(const char* phonebook, void* params, std::int32_t* passwordSaved);
  std::uint32_t setEntryDialParams(const char* phonebook, const void* params, bool removePassword);
  std::uint32_t dial(const char* phonebook, const void* params, std::uint32_t notifierType, std::uintptr_t notifier,
                     std::uint32_t* connection);
  std::uint32_t hangUp(std::uint32_t connection);
  std::uint32_t enumConnections(void* records, std::uint32_t* size, std::uint32_t* count);
  std::uint32_t getConnectStatus(std::uint32_t connection, void* record);
  std::uint32_t deleteEntry(const char* phonebook, const char* entry);
  std::uint32_t validateEntryName(const char* phonebook, const char* entry);
  std::uint32_t editPhonebookEntry(std::uintptr_t owner, const char* phonebook, const char* entry);
  std::uint32_t errorString(std::uint32_t code, char* text, std::uint32_t size);

 private:
  struct Connection;
  struct Event {
    std::uint32_t connection;
    std::uintptr_t window;
    std::uint32_t state, error;
  };
  using NameRecord = std::array<std::uint8_t, ras::entry_name::kRecordSize>;
  using ConnectionRecord = std::array<std::uint8_t, ras::connection::kRecordSize>;
  using DeviceRecord = std::array<std::uint8_t, ras::device::kRecordSize>;

  std::uint32_t planted(const char* verb);
  std::uint32_t done(const char* verb, const std::string& arguments, std::uint32_t result);
  void note(const std::string& text);

  static bool isDefault(const char* phonebook);
  Entry* findEntry(std::string_view name);
  const Device* findDevice(std::string_view name) const;
  bool acceptsParams(std::uint32_t size) const;
  Phonebook beginChange();
  bool keepPhonebook(Phonebook& before);
  void addTemporaryEntries();
  void layNames();
  void layConnections();

  Connection* findConnection(std::uint32_t handle);
  bool portTaken(const Connection& by) const;
  void advance(Connection& connection, std::uint64_t nowMs);
  bool stateDone(Connection& connection, std::uint64_t nowMs);
  void enter(Connection& connection, std::size_t position, std::uint64_t nowMs);
  void fail(Connection& connection, std::uint32_t error);
  void countTraffic();
  bool openPort(Connection& connection);
  void forgetOldestFailed();
  void tell(const Connection& connection, std::uint32_t state, std::uint32_t error);

  Phonebook book_;
  Scenario scenario_;
  PortOpener& ports_;
  LineCallbacks callbacks_;
  std::vector<std::unique_ptr<Connection>> connections_;
  std::deque<Event> events_;  // what is still to be told
  std::uint32_t lastHandle_ = 0x10000;
  std::uint64_t now_ = 0;
  Counters counters_;
  // What the enumerations give, laid out when something changes so that asking is only copying.
  std::vector<NameRecord> names_;
  std::vector<ConnectionRecord> connectionRecords_;
  std::vector<DeviceRecord> deviceRecords_;
};

}  // namespace pelvaro::line
