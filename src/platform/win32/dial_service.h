// The real dial-up service: rasapi32.dll of the system folder.
#pragma once

#include "platform/dial_service.h"
#include "platform/win32/system_library.h"

// Behind windows_header.h.
#include <ras.h>

namespace pelvaro::win32 {

class RasDialService : public DialService {
 public:
  std::uint32_t getEntryProperties(const char* phonebook, const char* entry, void* record,
                                   std::uint32_t* size) override;
  std::uint32_t setEntryProperties(const char* phonebook, const char* entry, void* record, std::uint32_t size) override;
  std::uint32_t enumEntries(const char* phonebook, void* records, std::uint32_t* size, std::uint32_t* count) override;
  std::uint32_t enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) override;
  std::uint32_t getEntryDialParams(const char* phonebook, void* params, std::int32_t* passwordSaved) override;
  std::uint32_t dial(const char* phonebook, void* params, std::uint32_t notifierType, std::uintptr_t notifier,
                     RasHandle* connection) override;
  std::uint32_t hangUp(RasHandle connection) override;
  std::uint32_t enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) override;
  std::uint32_t deleteEntry(const char* phonebook, const char* entry) override;
  std::uint32_t editPhonebookEntry(std::uintptr_t owner, const char* phonebook, const char* entry) override;
  std::uint32_t errorString(std::uint32_t code, char* text, std::uint32_t size) override;
  std::uint32_t formatMessage(std::uint32_t flags, std::uint32_t code, std::uint32_t language, char* text,
                              std::uint32_t size) override;

 private:
  SystemLibrary library_{"rasapi32.dll"};
  SystemFunction<decltype(&::RasGetEntryPropertiesA)> getEntryProperties_{library_, "RasGetEntryPropertiesA"};
  SystemFunction<decltype(&::RasSetEntryPropertiesA)> setEntryProperties_{library_, "RasSetEntryPropertiesA"};
  SystemFunction<decltype(&::RasEnumEntriesA)> enumEntries_{library_, "RasEnumEntriesA"};
  SystemFunction<decltype(&::RasEnumDevicesA)> enumDevices_{library_, "RasEnumDevicesA"};
  SystemFunction<decltype(&::RasGetEntryDialParamsA)> getEntryDialParams_{library_, "RasGetEntryDialParamsA"};
  SystemFunction<decltype(&::RasDialA)> dial_{library_, "RasDialA"};
  SystemFunction<decltype(&::RasHangUpA)> hangUp_{library_, "RasHangUpA"};
  SystemFunction<decltype(&::RasEnumConnectionsA)> enumConnections_{library_, "RasEnumConnectionsA"};
  SystemFunction<decltype(&::RasDeleteEntryA)> deleteEntry_{library_, "RasDeleteEntryA"};
  SystemFunction<decltype(&::RasEditPhonebookEntryA)> editPhonebookEntry_{library_, "RasEditPhonebookEntryA"};
  SystemFunction<decltype(&::RasGetErrorStringA)> errorString_{library_, "RasGetErrorStringA"};
};

}  // namespace pelvaro::win32
