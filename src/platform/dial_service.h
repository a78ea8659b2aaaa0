// The system's dial-up service (RAS) as the program calls it: one verb a rasapi32 function, raw buffers in and out.
// Implemented over rasapi32.dll in win32/, by a journal in fake/, and by the practice line for whole-program tests.
#pragma once

#include <cstdint>

namespace pelvaro {

// An HRASCONN: a pointer of the 32-bit service, carried as a number. Zero is "none".
using RasHandle = std::uint32_t;

// Every verb takes and gives what the function of the same name (ANSI form) takes and gives: zero-terminated ANSI
// texts or null, sizes in bytes, records laid out as ras_layout.h says. Results are the function's own codes, 0 for
// success. No verb throws.
struct DialService {
  virtual ~DialService() = default;

  // RasGetEntryPropertiesA, the two device-information arguments null.
  virtual std::uint32_t getEntryProperties(const char* phonebook, const char* entry, void* record,
                                           std::uint32_t* size) = 0;
  // RasSetEntryPropertiesA, device information null and 0.
  virtual std::uint32_t setEntryProperties(const char* phonebook, const char* entry, void* record,
                                           std::uint32_t size) = 0;
  // RasEnumEntriesA, the reserved argument null.
  virtual std::uint32_t enumEntries(const char* phonebook, void* records, std::uint32_t* size,
                                    std::uint32_t* count) = 0;
  // RasEnumDevicesA. `size` and `count` may be the same variable.
  virtual std::uint32_t enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) = 0;
  // RasGetEntryDialParamsA. `passwordSaved` receives a BOOL.
  virtual std::uint32_t getEntryDialParams(const char* phonebook, void* params, std::int32_t* passwordSaved) = 0;
  // RasDialA without extensions. `notifier` is what `notifierType` says: a window handle for 0xFFFFFFFF.
  virtual std::uint32_t dial(const char* phonebook, void* params, std::uint32_t notifierType, std::uintptr_t notifier,
                             RasHandle* connection) = 0;
  // RasHangUpA.
  virtual std::uint32_t hangUp(RasHandle connection) = 0;
  // RasEnumConnectionsA.
  virtual std::uint32_t enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) = 0;
  // RasDeleteEntryA.
  virtual std::uint32_t deleteEntry(const char* phonebook, const char* entry) = 0;
  // RasEditPhonebookEntryA. `owner` is a window handle or 0.
  virtual std::uint32_t editPhonebookEntry(std::uintptr_t owner, const char* phonebook, const char* entry) = 0;
  // RasGetErrorStringA. `size` is in characters, the terminator included.
  virtual std::uint32_t errorString(std::uint32_t code, char* text, std::uint32_t size) = 0;
  // FormatMessageA without a source and without inserts. Gives the number of characters stored, 0 when there is no
  // message.
  virtual std::uint32_t formatMessage(std::uint32_t flags, std::uint32_t code, std::uint32_t language, char* text,
                                      std::uint32_t size) = 0;
};

}  // namespace pelvaro
