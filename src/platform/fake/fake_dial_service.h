// A dial-up service that journals its calls and answers what the test has planted: a function a verb, success by
// default.
#pragma once

#include <functional>

#include "base/bytes.h"
#include "platform/dial_service.h"
#include "platform/fake/journal.h"

namespace pelvaro::fake {

inline std::string quoted(const char* text) { return text ? "\"" + std::string(text) + "\"" : "null"; }

struct FakeDialService : DialService {
  explicit FakeDialService(Journal& log) : journal(log) {}

  Journal& journal;
  std::function<std::uint32_t(const char* entry, void* record, std::uint32_t* size)> onGetEntry;
  std::function<std::uint32_t(const char* entry, void* record, std::uint32_t size)> onSetEntry;
  std::function<std::uint32_t(void*, std::uint32_t*, std::uint32_t*)> onEnumEntries;
  std::function<std::uint32_t(void*, std::uint32_t*, std::uint32_t*)> onEnumDevices;
  std::function<std::uint32_t(void* params, std::int32_t* saved)> onDialParams;
  std::function<std::uint32_t(void* params, RasHandle* connection)> onDial;
  std::function<std::uint32_t(RasHandle)> onHangUp;
  std::function<std::uint32_t(void*, std::uint32_t*, std::uint32_t*)> onEnumConnections;
  std::string messageText;  // what formatMessage and errorString give

  std::uint32_t getEntryProperties(const char* phonebook, const char* entry, void* record,
                                   std::uint32_t* size) override {
    journal.add("RasGetEntryProperties " + quoted(phonebook) + " " + quoted(entry) + (record ? " buffer " : " null ") +
                std::to_string(*size));
    return onGetEntry ? onGetEntry(entry, record, size) : 0;
  }
  std::uint32_t setEntryProperties(const char* phonebook, const char* entry, void* record,
                                   std::uint32_t size) override {
    journal.add("RasSetEntryProperties " + quoted(phonebook) + " " + quoted(entry) + " " + std::to_string(size));
    return onSetEntry ? onSetEntry(entry, record, size) : 0;
  }
  std::uint32_t enumEntries(const char* phonebook, void* records, std::uint32_t* size, std::uint32_t* count) override {
    journal.add("RasEnumEntries " + quoted(phonebook) + " " + std::to_string(*size));
    return onEnumEntries ? onEnumEntries(records, size, count) : 0;
  }
  std::uint32_t enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) override {
    journal.add(std::string("RasEnumDevices ") + (records ? "buffer " : "null ") + std::to_string(*size) +
                (size == count ? " same" : ""));
    return onEnumDevices ? onEnumDevices(records, size, count) : 0;
  }
  std::uint32_t getEntryDialParams(const char* phonebook, void* params, std::int32_t* saved) override {
    const auto* bytes = static_cast<const std::uint8_t*>(params);
    journal.add("RasGetEntryDialParams " + quoted(phonebook) + " " + std::to_string(get32({bytes, 4}, 0)) + " " +
                quoted(reinterpret_cast<const char*>(bytes + 4)));
    return onDialParams ? onDialParams(params, saved) : 0;
  }
  std::uint32_t dial(const char* phonebook, void* params, std::uint32_t notifierType, std::uintptr_t notifier,
                     RasHandle* connection) override {
    journal.add("RasDial " + quoted(phonebook) + " " + std::to_string(notifierType) + " " + std::to_string(notifier) +
                " " + std::to_string(*connection));
    return onDial ? onDial(params, connection) : 0;
  }
  std::uint32_t hangUp(RasHandle connection) override {
    journal.add("RasHangUp " + std::to_string(connection));
    return onHangUp ? onHangUp(connection) : 0;
  }
  std::uint32_t enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) override {
    journal.add("RasEnumConnections " + std::to_string(*size));
    return onEnumConnections ? onEnumConnections(records, size, count) : 0;
  }
  std::uint32_t deleteEntry(const char* phonebook, const char* entry) override {
    journal.add("RasDeleteEntry " + quoted(phonebook) + " " + quoted(entry));
    return 0;
  }
  std::uint32_t editPhonebookEntry(std::uintptr_t owner, const char* phonebook, const char* entry) override {
    journal.add("RasEditPhonebookEntry " + std::to_string(owner) + " " + quoted(phonebook) + " " + quoted(entry));
    return 0;
  }
  std::uint32_t errorString(std::uint32_t code, char* text, std::uint32_t size) override {
    journal.add("RasGetErrorString " + std::to_string(code) + " " + std::to_string(size));
    messageText.copy(text, size);
    return 0;
  }
  std::uint32_t formatMessage(std::uint32_t flags, std::uint32_t code, std::uint32_t language, char* text,
                              std::uint32_t size) override {
    journal.add("FormatMessage " + std::to_string(flags) + " " + std::to_string(code) + " " + std::to_string(language) +
                " " + std::to_string(size));
    return static_cast<std::uint32_t>(messageText.copy(text, size));
  }
};

}  // namespace pelvaro::fake
