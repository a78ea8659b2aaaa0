// The program's dial-up service played by the practice line: for whole-program tests without Windows.
#pragma once

#include "dial_line.h"
#include "platform/dial_service.h"

namespace pelvaro::line {

// Hands every verb to the line. The line must outlive it; who owns the line calls its step().
class LineDialService : public DialService {
 public:
  explicit LineDialService(DialLine& line) : line_(line) {}

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
  // Knows the texts of a few system codes; takes FORMAT_MESSAGE_FROM_SYSTEM only.
  std::uint32_t formatMessage(std::uint32_t flags, std::uint32_t code, std::uint32_t language, char* text,
                              std::uint32_t size) override;

 private:
  DialLine& line_;
};

}  // namespace pelvaro::line
