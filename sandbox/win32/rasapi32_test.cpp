// The stand-in DLL as a program meets it: loaded at run time, dialing for a message-only window. PELVARO_RASAPI32 names
// the DLL ("rasapi32.dll" when unset). What needs a phone runs only when a phone exchange has one on COM5 and COM7.
#include <gtest/gtest.h>
#include <windows.h>

#include <ras.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

struct Functions {
  HMODULE module = nullptr;
  template <class Function>
  Function* get(const char* name) const {
    FARPROC found = ::GetProcAddress(module, name);
    EXPECT_NE(found, nullptr) << name;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
  }
};

// The DLL, started in a folder of its own. It is loaded from a copy under another name, or Wine would take its own.
const Functions& ras() {
  static const Functions functions = [] {
    char folder[MAX_PATH];
    ::GetTempPathA(sizeof folder, folder);
    const std::string practice = std::string(folder) + "practice_line_test";
    ::CreateDirectoryA(practice.c_str(), nullptr);
    for (const char* file : {"\\phonebook.txt", "\\journal.txt"}) ::DeleteFileA((practice + file).c_str());
    std::ofstream(practice + "\\scenario.txt") << "pace 20\ntimeout 3000\njournal on\n";
    ::SetEnvironmentVariableA("PELVARO_PRACTICE", practice.c_str());
    const char* path = std::getenv("PELVARO_RASAPI32");
    const std::string copy = practice + "\\practice_line.dll";
    if (path) ::CopyFileA(path, copy.c_str(), FALSE);
    return Functions{::LoadLibraryA(path ? copy.c_str() : "rasapi32.dll")};
  }();
  return functions;
}

bool phonesThere() {
  const HANDLE port =
      ::CreateFileA("\\\\.\\COM5", 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (port == INVALID_HANDLE_VALUE) return false;
  ::CloseHandle(port);
  return true;
}

// Fills a text field of a record.
template <std::size_t N>
void put(char (&field)[N], const char* text) {
  std::snprintf(field, N, "%s", text);
}

struct Event {
  WPARAM state;
  LPARAM error;
};

class Rasapi32 : public testing::Test {
 protected:
  Rasapi32() {
    window_ = ::CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    message_ = ::RegisterWindowMessageA("RasDialEvent");
  }
  ~Rasapi32() override {
    if (connection_) hangUp();
    ::DestroyWindow(window_);
  }

  DWORD dial(const char* entry, const char* password = "practice") {
    RASDIALPARAMSA params{};
    params.dwSize = sizeof params;
    put(params.szEntryName, entry);
    put(params.szUserName, "guest");
    put(params.szPassword, password);
    connection_ = nullptr;
    return ras().get<decltype(::RasDialA)>("RasDialA")(nullptr, nullptr, &params, 0xFFFFFFFF, window_, &connection_);
  }

  DWORD hangUp() {
    const DWORD result = ras().get<decltype(::RasHangUpA)>("RasHangUpA")(connection_);
    connection_ = nullptr;
    return result;
  }

  // The events until the one that ends the dial, at most ten seconds.
  std::vector<Event> events() {
    std::vector<Event> result;
    for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < 10000;) {
      MSG message;
      while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message != message_) continue;
        EXPECT_EQ(message.hwnd, window_);
        result.push_back({message.wParam, message.lParam});
        if (message.lParam != 0 || message.wParam >= RASCS_Connected) return result;
      }
      ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    }
    ADD_FAILURE() << "the dial did not end";
    return result;
  }

  DWORD connections() {
    RASCONNA records[8] = {};
    records[0].dwSize = sizeof records[0];
    DWORD size = sizeof records, count = 99;
    EXPECT_EQ(ras().get<decltype(::RasEnumConnectionsA)>("RasEnumConnectionsA")(records, &size, &count), 0u);
    return count;
  }

  HWND window_;
  UINT message_;
  HRASCONN connection_ = nullptr;
};

TEST_F(Rasapi32, ListsTheFirstEntriesAndModems) {
  RASENTRYNAMEA names[8];
  for (RASENTRYNAMEA& name : names) name.dwSize = sizeof name;
  DWORD size = sizeof names, count = 0;
  ASSERT_EQ(ras().get<decltype(::RasEnumEntriesA)>("RasEnumEntriesA")(nullptr, nullptr, names, &size, &count), 0u);
  ASSERT_EQ(count, 3u);
  EXPECT_STREQ(names[0].szEntryName, "Corvanti-Office");
  RASDEVINFOA devices[4];
  devices[0].dwSize = sizeof devices[0];
  size = sizeof devices;
  ASSERT_EQ(ras().get<decltype(::RasEnumDevicesA)>("RasEnumDevicesA")(devices, &size, &size), 0u);
  EXPECT_EQ(size, 2u) << "size and count in one variable";
  EXPECT_STREQ(devices[0].szDeviceName, "Nokia 6230 USB Modem");
}

TEST_F(Rasapi32, WritesReadsAndDeletesAnEntry) {
  RASENTRYA record{};
  record.dwSize = sizeof record;
  put(record.szLocalPhoneNumber, "*99#");
  put(record.szDnsSuffix, "apn.example");
  ASSERT_EQ(ras().get<decltype(::RasSetEntryPropertiesA)>("RasSetEntryPropertiesA")(nullptr, "New", &record,
                                                                                    sizeof record, nullptr, 0),
            0u);
  RASENTRYA read{};
  read.dwSize = sizeof read;
  DWORD size = sizeof read;
  const auto get = ras().get<decltype(::RasGetEntryPropertiesA)>("RasGetEntryPropertiesA");
  ASSERT_EQ(get(nullptr, "New", &read, &size, nullptr, nullptr), 0u);
  EXPECT_STREQ(read.szDnsSuffix, "apn.example");
  ASSERT_EQ(ras().get<decltype(::RasDeleteEntryA)>("RasDeleteEntryA")(nullptr, "New"), 0u);
  EXPECT_EQ(get(nullptr, "New", &read, &size, nullptr, nullptr), 623u);
}

TEST_F(Rasapi32, APhonebookThatAnotherProgramHoldsIsNotReplaced) {
  RASENTRYA record{};
  record.dwSize = sizeof record;
  const auto set = [&record] {
    return ras().get<decltype(::RasSetEntryPropertiesA)>("RasSetEntryPropertiesA")(nullptr, "Held", &record,
                                                                                   sizeof record, nullptr, 0);
  };
  ASSERT_EQ(set(), 0u);
  char path[MAX_PATH];
  ::GetEnvironmentVariableA("PELVARO_PRACTICE", path, sizeof path);
  const HANDLE held = ::CreateFileA((std::string(path) + "\\phonebook.txt").c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_EQ(set(), 624u);
  ::CloseHandle(held);
  EXPECT_EQ(set(), 0u);
  EXPECT_EQ(ras().get<decltype(::RasDeleteEntryA)>("RasDeleteEntryA")(nullptr, "Held"), 0u);
}

TEST_F(Rasapi32, AChangeByAnotherProgramIsKept) {
  RASENTRYA record{};
  record.dwSize = sizeof record;
  const auto set = ras().get<decltype(::RasSetEntryPropertiesA)>("RasSetEntryPropertiesA");
  ASSERT_EQ(set(nullptr, "Ours", &record, sizeof record, nullptr, 0), 0u);
  char path[MAX_PATH];
  ::GetEnvironmentVariableA("PELVARO_PRACTICE", path, sizeof path);
  const std::string file = std::string(path) + "\\phonebook.txt";
  std::string text{std::istreambuf_iterator<char>(std::ifstream(file, std::ios::binary).rdbuf()), {}};
  const auto name = text.find("[entry Ours]");
  ASSERT_NE(name, std::string::npos);
  text.replace(name, 12, "[entry Theirs]");
  std::ofstream(file, std::ios::binary) << text;
  ASSERT_EQ(set(nullptr, "Ours", &record, sizeof record, nullptr, 0), 0u);
  const auto remove = ras().get<decltype(::RasDeleteEntryA)>("RasDeleteEntryA");
  EXPECT_EQ(remove(nullptr, "Theirs"), 0u);
  EXPECT_EQ(remove(nullptr, "Ours"), 0u);
}

TEST_F(Rasapi32, AModemThatAnotherProgramHasAddedIsListed) {
  char path[MAX_PATH];
  ::GetEnvironmentVariableA("PELVARO_PRACTICE", path, sizeof path);
  const std::string file = std::string(path) + "\\phonebook.txt";
  const auto list = ras().get<decltype(::RasEnumDevicesA)>("RasEnumDevicesA");
  DWORD size = 0, count = 0;
  list(nullptr, &size, &count);
  const DWORD before = count;
  const std::string text{std::istreambuf_iterator<char>(std::ifstream(file, std::ios::binary).rdbuf()), {}};
  std::string changed = text;
  changed.replace(changed.find("[devices]"), 9, "[devices]\nmodem = COM9 A Third Modem");
  std::ofstream(file, std::ios::binary) << changed;
  RASDEVINFOA devices[8] = {};
  devices[0].dwSize = sizeof devices[0];
  size = sizeof devices;
  EXPECT_EQ(list(devices, &size, &count), 0u);
  EXPECT_EQ(count, before) << "the records fit the size that was asked for before";
  EXPECT_EQ(list(nullptr, &size, &count), 603u);
  EXPECT_EQ(count, before + 1);
  std::ofstream(file, std::ios::binary) << text;
  list(nullptr, &size, &count);
  EXPECT_EQ(count, before);
}

TEST_F(Rasapi32, NullPointersAreRefused) {
  DWORD size = 0;
  EXPECT_EQ(ras().get<decltype(::RasEnumEntriesA)>("RasEnumEntriesA")(nullptr, nullptr, nullptr, nullptr, &size), 87u);
  EXPECT_EQ(ras().get<decltype(::RasEnumConnectionsA)>("RasEnumConnectionsA")(nullptr, &size, nullptr), 87u);
  EXPECT_EQ(ras().get<decltype(::RasGetEntryDialParamsA)>("RasGetEntryDialParamsA")(nullptr, nullptr, nullptr), 87u);
  EXPECT_EQ(ras().get<decltype(::RasDialA)>("RasDialA")(nullptr, nullptr, nullptr, 0, nullptr, nullptr), 87u);
  EXPECT_EQ(ras().get<decltype(::RasHangUpA)>("RasHangUpA")(nullptr), 6u);
}

TEST_F(Rasapi32, DialsThroughThePhoneAndHangsUp) {
  if (!phonesThere()) GTEST_SKIP() << "no phone on COM5";
  ASSERT_EQ(dial("Work"), 0u);
  std::vector<WPARAM> states;
  for (const Event& event : events()) {
    EXPECT_EQ(event.error, 0);
    states.push_back(event.state);
  }
  EXPECT_EQ(states, (std::vector<WPARAM>{0, 1, 2, 3, 4, 5, 14, 18, 21, 0x2000}));
  EXPECT_EQ(connections(), 1u);
  RASCONNSTATUSA status{};
  status.dwSize = sizeof status;
  EXPECT_EQ(ras().get<decltype(::RasGetConnectStatusA)>("RasGetConnectStatusA")(connection_, &status), 0u);
  EXPECT_EQ(status.rasconnstate, RASCS_Connected);
  EXPECT_EQ(hangUp(), 0u);
  EXPECT_EQ(connections(), 0u);
}

TEST_F(Rasapi32, DialsAgainAtOnceAfterAHangUp) {
  if (!phonesThere()) GTEST_SKIP() << "no phone on COM5";
  for (int i = 0; i < 5; ++i) {
    ASSERT_EQ(dial("Work"), 0u);
    EXPECT_EQ(events().back().state, 0x2000u);
    EXPECT_EQ(hangUp(), 0u);
  }
}

TEST_F(Rasapi32, TwoConnectionsAreUpAtOnce) {
  if (!phonesThere()) GTEST_SKIP() << "no phone on COM5";
  ASSERT_EQ(dial("Work"), 0u);
  ASSERT_EQ(events().back().state, 0x2000u);
  const HRASCONN first = connection_;
  ASSERT_EQ(dial("Corvanti-Home"), 0u);
  ASSERT_EQ(events().back().state, 0x2000u);
  EXPECT_EQ(connections(), 2u);
  EXPECT_EQ(hangUp(), 0u);
  connection_ = first;
  EXPECT_EQ(hangUp(), 0u);
  EXPECT_EQ(connections(), 0u);
}

TEST_F(Rasapi32, AWrongPasswordIsReported) {
  if (!phonesThere()) GTEST_SKIP() << "no phone on COM5";
  ASSERT_EQ(dial("Work", "wrong"), 0u);
  const Event last = events().back();
  EXPECT_EQ(last.state, static_cast<WPARAM>(RASCS_Authenticate));
  EXPECT_EQ(last.error, 691);
}

TEST_F(Rasapi32, AModemWithoutAPortIsReported) {
  RASENTRYA record{};
  record.dwSize = sizeof record;
  put(record.szDeviceName, "Nowhere Modem");
  ASSERT_EQ(ras().get<decltype(::RasSetEntryPropertiesA)>("RasSetEntryPropertiesA")(nullptr, "Nowhere", &record,
                                                                                    sizeof record, nullptr, 0),
            0u);
  ASSERT_EQ(dial("Nowhere"), 0u);
  const Event last = events().back();
  EXPECT_EQ(last.state, static_cast<WPARAM>(RASCS_OpenPort));
  EXPECT_EQ(last.error, 797);
}

// PELVARO_CONTROL names the pipe that the exchange takes its commands from.
TEST_F(Rasapi32, APulledCableEndsTheConnection) {
  const char* pipe = std::getenv("PELVARO_CONTROL");
  if (!phonesThere() || !pipe) GTEST_SKIP() << "no phone on COM5, or no pipe to its exchange";
  ASSERT_EQ(dial("Work"), 0u);
  ASSERT_EQ(events().back().state, 0x2000u);
  ASSERT_EQ(connections(), 1u);
  std::ofstream(pipe, std::ios::binary) << "unplug COM5\n";
  for (const DWORD start = ::GetTickCount(); connections() != 0 && ::GetTickCount() - start < 5000;) ::Sleep(20);
  EXPECT_EQ(connections(), 0u);
  EXPECT_EQ(hangUp(), 6u);
  ASSERT_EQ(dial("Work"), 0u);
  EXPECT_EQ(events().back().error, 797);
  EXPECT_EQ(hangUp(), 0u);
  std::ofstream(pipe, std::ios::binary) << "plug COM5 nokia\n";
  for (const DWORD start = ::GetTickCount(); !phonesThere() && ::GetTickCount() - start < 5000;) ::Sleep(20);
  ASSERT_EQ(dial("Work"), 0u);
  EXPECT_EQ(events().back().state, 0x2000u);
}

}  // namespace
