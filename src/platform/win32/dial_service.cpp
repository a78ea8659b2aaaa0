#include "platform/win32/dial_service.h"

namespace pelvaro::win32 {

namespace {

constexpr DWORD kMissing = ERROR_PROC_NOT_FOUND;

LPDWORD asDword(std::uint32_t* number) { return reinterpret_cast<LPDWORD>(number); }

}  // namespace

std::uint32_t RasDialService::getEntryProperties(const char* phonebook, const char* entry, void* record,
                                                 std::uint32_t* size) {
  return getEntryProperties_.call(kMissing, phonebook, entry, static_cast<LPRASENTRYA>(record), asDword(size), nullptr,
                                  nullptr);
}

std::uint32_t RasDialService::setEntryProperties(const char* phonebook, const char* entry, void* record,
                                                 std::uint32_t size) {
  return setEntryProperties_.call(kMissing, phonebook, entry, static_cast<LPRASENTRYA>(record), size, nullptr, 0);
}

std::uint32_t RasDialService::enumEntries(const char* phonebook, void* records, std::uint32_t* size,
                                          std::uint32_t* count) {
  return enumEntries_.call(kMissing, nullptr, phonebook, static_cast<LPRASENTRYNAMEA>(records), asDword(size),
                           asDword(count));
}

std::uint32_t RasDialService::enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) {
  return enumDevices_.call(kMissing, static_cast<LPRASDEVINFOA>(records), asDword(size), asDword(count));
}

std::uint32_t RasDialService::getEntryDialParams(const char* phonebook, void* params, std::int32_t* passwordSaved) {
  return getEntryDialParams_.call(kMissing, phonebook, static_cast<LPRASDIALPARAMSA>(params),
                                  reinterpret_cast<LPBOOL>(passwordSaved));
}

std::uint32_t RasDialService::dial(const char* phonebook, void* params, std::uint32_t notifierType,
                                   std::uintptr_t notifier, RasHandle* connection) {
  return dial_.call(kMissing, nullptr, phonebook, static_cast<LPRASDIALPARAMSA>(params), notifierType,
                    reinterpret_cast<LPVOID>(notifier), reinterpret_cast<LPHRASCONN>(connection));
}

std::uint32_t RasDialService::hangUp(RasHandle connection) {
  return hangUp_.call(kMissing, reinterpret_cast<HRASCONN>(connection));
}

std::uint32_t RasDialService::enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) {
  return enumConnections_.call(kMissing, static_cast<LPRASCONNA>(records), asDword(size), asDword(count));
}

std::uint32_t RasDialService::deleteEntry(const char* phonebook, const char* entry) {
  return deleteEntry_.call(kMissing, phonebook, entry);
}

std::uint32_t RasDialService::editPhonebookEntry(std::uintptr_t owner, const char* phonebook, const char* entry) {
  return editPhonebookEntry_.call(kMissing, reinterpret_cast<HWND>(owner), phonebook, entry);
}

std::uint32_t RasDialService::errorString(std::uint32_t code, char* text, std::uint32_t size) {
  return errorString_.call(kMissing, code, text, size);
}

std::uint32_t RasDialService::formatMessage(std::uint32_t flags, std::uint32_t code, std::uint32_t language, char* text,
                                            std::uint32_t size) {
  return ::FormatMessageA(flags, nullptr, code, language, text, size, nullptr);
}

}  // namespace pelvaro::win32
