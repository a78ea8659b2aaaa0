// The functions that rasapi32.dll exports, in the ANSI forms of <ras.h>: each hands its arguments to the practice line.
#include <windows.h>

#include <ras.h>

#include "platform/ras_layout.h"
#include "win32/practice.h"

using pelvaro::line::DialLine;
using pelvaro::line::practice;

namespace {

// Connections are small numbers; the service's handles are pointers of 32 bits.
std::uint32_t number(HRASCONN connection) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(connection));
}

std::uint32_t* number(DWORD* value) { return reinterpret_cast<std::uint32_t*>(value); }

}  // namespace

extern "C" {

DWORD WINAPI RasGetEntryPropertiesA(LPCSTR phonebook, LPCSTR entry, LPRASENTRYA record, LPDWORD size, LPBYTE, LPDWORD) {
  return practice().call(
      [&](DialLine& line) { return line.getEntryProperties(phonebook, entry, record, number(size)); });
}

DWORD WINAPI RasSetEntryPropertiesA(LPCSTR phonebook, LPCSTR entry, LPRASENTRYA record, DWORD size, LPBYTE, DWORD) {
  return practice().call([&](DialLine& line) { return line.setEntryProperties(phonebook, entry, record, size); });
}

DWORD WINAPI RasEnumEntriesA(LPCSTR, LPCSTR phonebook, LPRASENTRYNAMEA records, LPDWORD size, LPDWORD count) {
  return practice().call(
      [&](DialLine& line) { return line.enumEntries(phonebook, records, number(size), number(count)); });
}

DWORD WINAPI RasEnumDevicesA(LPRASDEVINFOA records, LPDWORD size, LPDWORD count) {
  return practice().call([&](DialLine& line) {
    // A driver may have been installed. Only when the size is asked for, so that the records then fit it.
    if (!records) practice().takeChanges(line);
    return line.enumDevices(records, number(size), number(count));
  });
}

DWORD WINAPI RasGetEntryDialParamsA(LPCSTR phonebook, LPRASDIALPARAMSA params, LPBOOL passwordSaved) {
  return practice().call([&](DialLine& line) {
    std::int32_t saved = 0;
    const DWORD result = line.getEntryDialParams(phonebook, params, passwordSaved ? &saved : nullptr);
    if (result == ERROR_SUCCESS && passwordSaved) *passwordSaved = saved;
    return result;
  });
}

DWORD WINAPI RasSetEntryDialParamsA(LPCSTR phonebook, LPRASDIALPARAMSA params, BOOL removePassword) {
  return practice().call(
      [&](DialLine& line) { return line.setEntryDialParams(phonebook, params, removePassword != FALSE); });
}

DWORD WINAPI RasDialA(LPRASDIALEXTENSIONS, LPCSTR phonebook, LPRASDIALPARAMSA params, DWORD notifierType,
                      LPVOID notifier, LPHRASCONN connection) {
  return practice().call([&](DialLine& line) {
    return line.dial(phonebook, params, notifierType, reinterpret_cast<std::uintptr_t>(notifier),
                     reinterpret_cast<std::uint32_t*>(connection));
  });
}

DWORD WINAPI RasHangUpA(HRASCONN connection) {
  return practice().call([&](DialLine& line) { return line.hangUp(number(connection)); });
}

DWORD WINAPI RasEnumConnectionsA(LPRASCONNA records, LPDWORD size, LPDWORD count) {
  return practice().call([&](DialLine& line) { return line.enumConnections(records, number(size), number(count)); });
}

DWORD WINAPI RasGetConnectStatusA(HRASCONN connection, LPRASCONNSTATUSA record) {
  return practice().call([&](DialLine& line) { return line.getConnectStatus(number(connection), record); });
}

DWORD WINAPI RasDeleteEntryA(LPCSTR phonebook, LPCSTR entry) {
  return practice().call([&](DialLine& line) { return line.deleteEntry(phonebook, entry); });
}

DWORD WINAPI RasValidateEntryNameA(LPCSTR phonebook, LPCSTR entry) {
  return practice().call([&](DialLine& line) { return line.validateEntryName(phonebook, entry); });
}

DWORD WINAPI RasEditPhonebookEntryA(HWND owner, LPCSTR phonebook, LPCSTR entry) {
  return practice().call([&](DialLine& line) {
    return line.editPhonebookEntry(reinterpret_cast<std::uintptr_t>(owner), phonebook, entry);
  });
}

DWORD WINAPI RasGetErrorStringA(UINT code, LPSTR text, DWORD size) {
  return practice().call([&](DialLine& line) { return line.errorString(code, text, size); });
}

// What GetIfTable of iphlpapi.dll leads to: the counters follow the line's connections.
DWORD WINAPI PracticeGetIfTable(LPVOID table, LPDWORD size, BOOL sorted) {
  return practice().getIfTable(table, number(size), sorted != FALSE);
}

// For scripts: "rundll32 rasapi32.dll,PracticeReload" lets a running line read its scenario and phonebook again.
void CALLBACK PracticeReload(HWND, HINSTANCE, LPSTR, int) {
  const HANDLE event = ::OpenEventA(EVENT_MODIFY_STATE, FALSE, pelvaro::line::kReloadEvent);
  if (!event) return;
  ::SetEvent(event);
  ::CloseHandle(event);
}

}  // extern "C"

static_assert(sizeof(HRASCONN) == 4, "the practice line stands in for the 32-bit service");
static_assert(sizeof(RASENTRYA) == pelvaro::ras::entry::kSizeToday);
static_assert(offsetof(RASCONNSTATUSA, szPhoneNumber) == 158 && sizeof(RASCONNSTATUSA) == 288);
static_assert(sizeof(RASENTRYNAMEA) == 532 && sizeof(RASCONNA) == 704 && sizeof(RASDEVINFOA) == 152);
