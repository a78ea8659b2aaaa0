#include "line_dial_service.h"

#include <cstring>

#include "error_texts.h"

namespace pelvaro::line {

std::uint32_t LineDialService::getEntryProperties(const char* phonebook, const char* entry, void* record,
                                                  std::uint32_t* size) {
  return line_.getEntryProperties(phonebook, entry, record, size);
}
std::uint32_t LineDialService::setEntryProperties(const char* phonebook, const char* entry, void* record,
                                                  std::uint32_t size) {
  return line_.setEntryProperties(phonebook, entry, record, size);
}
std::uint32_t LineDialService::enumEntries(const char* phonebook, void* records, std::uint32_t* size,
                                           std::uint32_t* count) {
  return line_.enumEntries(phonebook, records, size, count);
}
std::uint32_t LineDialService::enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) {
  return line_.enumDevices(records, size, count);
}
std::uint32_t LineDialService::getEntryDialParams(const char* phonebook, void* params, std::int32_t* passwordSaved) {
  return line_.getEntryDialParams(phonebook, params, passwordSaved);
}
std::uint32_t LineDialService::dial(const char* phonebook, void* params, std::uint32_t notifierType,
                                    std::uintptr_t notifier, RasHandle* connection) {
  return line_.dial(phonebook, params, notifierType, notifier, connection);
}
std::uint32_t LineDialService::hangUp(RasHandle connection) { return line_.hangUp(connection); }
std::uint32_t LineDialService::enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) {
  return line_.enumConnections(records, size, count);
}
std::uint32_t LineDialService::deleteEntry(const char* phonebook, const char* entry) {
  return line_.deleteEntry(phonebook, entry);
}
std::uint32_t LineDialService::editPhonebookEntry(std::uintptr_t owner, const char* phonebook, const char* entry) {
  return line_.editPhonebookEntry(owner, phonebook, entry);
}
std::uint32_t LineDialService::errorString(std::uint32_t code, char* text, std::uint32_t size) {
  return line_.errorString(code, text, size);
}

std::uint32_t LineDialService::formatMessage(std::uint32_t flags, std::uint32_t code, std::uint32_t, char* text,
                                             std::uint32_t size) {
  constexpr std::uint32_t kFromSystem = 0x1000;  // FORMAT_MESSAGE_FROM_SYSTEM
  const char* found = flags == kFromSystem ? systemText(code) : nullptr;
  if (!text || !found) return 0;
  const std::size_t length = std::strlen(found);
  if (size <= length) return 0;
  std::memcpy(text, found, length + 1);
  return static_cast<std::uint32_t>(length);
}

}  // namespace pelvaro::line
