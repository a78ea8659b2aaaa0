// The stand-in iphlpapi.dll as a program meets it, handing over to the stand-in rasapi32.dll. PELVARO_IPHLPAPI and
// PELVARO_RASAPI32 name the DLLs. Wine must have been told to take rasapi32.dll as it is, see CMakeLists.txt.
// What needs a phone runs only when a phone exchange has one on COM5.
#include <gtest/gtest.h>
#include <winsock2.h>

#include <windows.h>

#include <iphlpapi.h>
#include <ras.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <future>
#include <string>
#include <vector>

#include "platform/if_table_layout.h"

namespace {

namespace layout = pelvaro::if_table;

static_assert(offsetof(MIB_IFTABLE, dwNumEntries) == layout::kCount);
static_assert(offsetof(MIB_IFTABLE, table) == layout::kFirstRow);
static_assert(sizeof(MIB_IFROW) == layout::kRowSize);
static_assert(offsetof(MIB_IFROW, dwIndex) == layout::kIndex);
static_assert(offsetof(MIB_IFROW, dwType) == layout::kType);
static_assert(offsetof(MIB_IFROW, dwMtu) == layout::kMtu);
static_assert(offsetof(MIB_IFROW, dwSpeed) == layout::kSpeed);
static_assert(offsetof(MIB_IFROW, dwAdminStatus) == layout::kAdminStatus);
static_assert(offsetof(MIB_IFROW, dwOperStatus) == layout::kOperStatus);
static_assert(offsetof(MIB_IFROW, dwInOctets) == layout::kInOctets);
static_assert(offsetof(MIB_IFROW, dwOutOctets) == layout::kOutOctets);
static_assert(offsetof(MIB_IFROW, dwDescrLen) == layout::kDescriptionLength);
static_assert(offsetof(MIB_IFROW, bDescr) == layout::kDescription);
static_assert(MIB_IF_TYPE_ETHERNET == layout::kEthernet && MIB_IF_TYPE_PPP == layout::kPpp);
static_assert(MIB_IF_TYPE_LOOPBACK == layout::kLoopback);

constexpr DWORD kLongest = 10000;  // milliseconds that anything is waited for

// The two DLLs, with a practice folder of their own. iphlpapi.dll is loaded from a copy under another name, or Wine
// would take its own; rasapi32.dll must keep its name, because the forwarder looks for it by name.
struct Stand {
  HMODULE rasapi32 = nullptr, iphlpapi = nullptr;
  std::string folder;

  Stand() {
    char temporary[MAX_PATH];
    ::GetTempPathA(sizeof temporary, temporary);
    folder = std::string(temporary) + "practice_counters_test";
    ::CreateDirectoryA(folder.c_str(), nullptr);
    ::DeleteFileA((folder + "\\phonebook.txt").c_str());
    writeScenario("");
    ::SetEnvironmentVariableA("PELVARO_PRACTICE", folder.c_str());
    const char *line = std::getenv("PELVARO_RASAPI32"), *counters = std::getenv("PELVARO_IPHLPAPI");
    if (!line || !counters) return;
    const std::string copy = folder + "\\practice_counters.dll";
    ::CopyFileA(counters, copy.c_str(), FALSE);
    rasapi32 = ::LoadLibraryA(line);
    iphlpapi = ::LoadLibraryA(copy.c_str());
  }

  void writeScenario(const std::string& words) const {
    std::ofstream(folder + "\\scenario.txt") << "pace 20\ntimeout 3000\nreceivedAtStart 4294960000\n" << words;
  }
};

const Stand& stand() {
  static const Stand instance;
  return instance;
}

template <class Function>
Function* get(HMODULE module, const char* name) {
  FARPROC found = ::GetProcAddress(module, name);
  EXPECT_NE(found, nullptr) << name;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}
template <class Function>
Function* ras(const char* name) {
  return get<Function>(stand().rasapi32, name);
}

class Iphlpapi : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(stand().rasapi32, nullptr) << "PELVARO_RASAPI32";
    ASSERT_NE(stand().iphlpapi, nullptr) << "PELVARO_IPHLPAPI";
    ASSERT_NE(::GetProcAddress(stand().rasapi32, "PracticeGetIfTable"), nullptr) << "Wine took its own rasapi32.dll";
    getIfTable_ = get<decltype(::GetIfTable)>(stand().iphlpapi, "GetIfTable");
    ASSERT_NE(getIfTable_, nullptr);
  }

  // The rows as the program reads them: first the size, then the table.
  std::vector<MIB_IFROW> rows() {
    ULONG size = 0;
    EXPECT_EQ(getIfTable_(nullptr, &size, TRUE), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    std::vector<char> bytes(size);
    auto* table = reinterpret_cast<MIB_IFTABLE*>(bytes.data());
    EXPECT_EQ(getIfTable_(table, &size, TRUE), static_cast<DWORD>(NO_ERROR));
    EXPECT_EQ(size, offsetof(MIB_IFTABLE, table) + table->dwNumEntries * sizeof(MIB_IFROW));
    return {table->table, table->table + table->dwNumEntries};
  }
  MIB_IFROW moving() { return rows().at(1); }

  template <class Condition>
  static bool waitUntil(Condition condition) {
    for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < kLongest; ::Sleep(20))
      if (condition()) return true;
    return false;
  }

  // Lets the line read another scenario and waits until it is seen.
  template <class Condition>
  static void changeScenario(const std::string& words, Condition seen) {
    stand().writeScenario(words);
    ras<void CALLBACK(HWND, HINSTANCE, LPSTR, int)>("PracticeReload")(nullptr, nullptr, nullptr, 0);
    EXPECT_TRUE(waitUntil(seen)) << words;
  }

  decltype(&::GetIfTable) getIfTable_ = nullptr;
};

TEST_F(Iphlpapi, GivesTheRowsOfThePracticeLine) {
  const std::vector<MIB_IFROW> all = rows();
  ASSERT_EQ(all.size(), 3u);
  const char* descriptions[] = {"Loopback", "Practice Ethernet", "Idle Ethernet"};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(all[i].dwIndex, i + 1);
    EXPECT_EQ(all[i].dwType, static_cast<DWORD>(i == 0 ? MIB_IF_TYPE_LOOPBACK : MIB_IF_TYPE_ETHERNET));
    EXPECT_EQ(all[i].dwAdminStatus, static_cast<DWORD>(MIB_IF_ADMIN_STATUS_UP));
    EXPECT_EQ(all[i].dwOperStatus, static_cast<DWORD>(MIB_IF_OPER_STATUS_OPERATIONAL));
    EXPECT_EQ(all[i].dwDescrLen, std::strlen(descriptions[i]));
    EXPECT_STREQ(reinterpret_cast<const char*>(all[i].bDescr), descriptions[i]);
  }
  EXPECT_EQ(all[0].dwInOctets, 7000000u);
  EXPECT_EQ(all[2].dwOutOctets, 8000000u);
}

TEST_F(Iphlpapi, PassesEveryArgumentOn) {
  EXPECT_EQ(getIfTable_(nullptr, nullptr, FALSE), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
  ULONG size = 4 + 3 * 860 - 1;
  std::vector<char> bytes(size + 1);
  auto* table = reinterpret_cast<MIB_IFTABLE*>(bytes.data());
  EXPECT_EQ(getIfTable_(table, &size, FALSE), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(size, bytes.size());
  EXPECT_EQ(getIfTable_(table, &size, FALSE), static_cast<DWORD>(NO_ERROR));
  EXPECT_EQ(table->table[0].dwIndex, 3u) << "not sorted";
}

TEST_F(Iphlpapi, AReloadChangesTheScenario) {
  ULONG size = 0;
  const auto result = [&] { return getIfTable_(nullptr, &size, TRUE); };
  const DWORD before = moving().dwOutOctets;
  changeScenario("fail getIfTable 50\n", [&] { return result() == ERROR_NOT_SUPPORTED; });
  changeScenario("ethernet off\n", [&] { return result() == ERROR_INSUFFICIENT_BUFFER; });
  EXPECT_EQ(rows().size(), 1u);
  changeScenario("sentAtStart 1234\n", [&] { return rows().size() == 3; });
  EXPECT_EQ(moving().dwOutOctets, before + 1234);
  changeScenario("", [&] { return moving().dwOutOctets == before; });
}

// A change of the phonebook holds the line while another program has the file, five seconds at most.
TEST_F(Iphlpapi, DoesNotWaitForTheLine) {
  using namespace std::chrono_literals;
  rows();  // there is a line by now
  const HANDLE file = ::OpenMutexA(SYNCHRONIZE, FALSE, "PelvaroPracticePhonebook");
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(::WaitForSingleObject(file, kLongest), WAIT_OBJECT_0);
  auto change = std::async(std::launch::async,
                           [] { return ras<decltype(::RasDeleteEntryA)>("RasDeleteEntryA")(nullptr, "Work"); });
  std::future<DWORD> poll;
  do {  // until the line does not answer
    poll = std::async(std::launch::async, [] { return ras<decltype(::RasHangUpA)>("RasHangUpA")(nullptr); });
  } while (poll.wait_for(100ms) == std::future_status::ready && change.wait_for(0ms) != std::future_status::ready);
  EXPECT_EQ(rows().size(), 3u);
  ::ReleaseMutex(file);
  ::CloseHandle(file);
  EXPECT_EQ(change.get(), 0u) << "it waited so long that it gave up";
  EXPECT_EQ(poll.get(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
}

TEST_F(Iphlpapi, OctetsMoveWhileAConnectionIsUp) {
  const HANDLE port =
      ::CreateFileA("\\\\.\\COM5", 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (port == INVALID_HANDLE_VALUE) GTEST_SKIP() << "no phone on COM5";
  ::CloseHandle(port);
  EXPECT_EQ(moving().dwInOctets, 4294960000u);
  const HWND window = ::CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  RASDIALPARAMSA params{};
  params.dwSize = sizeof params;
  std::snprintf(params.szEntryName, sizeof params.szEntryName, "Corvanti-Office");
  std::snprintf(params.szUserName, sizeof params.szUserName, "guest");
  std::snprintf(params.szPassword, sizeof params.szPassword, "practice");
  HRASCONN connection = nullptr;
  ASSERT_EQ(ras<decltype(::RasDialA)>("RasDialA")(nullptr, nullptr, &params, 0xFFFFFFFF, window, &connection), 0u);
  EXPECT_TRUE(waitUntil([&] { return moving().dwInOctets < 4294960000u; })) << "until they have wrapped";
  RASCONNSTATUSA status{};
  status.dwSize = sizeof status;
  EXPECT_EQ(ras<decltype(::RasGetConnectStatusA)>("RasGetConnectStatusA")(connection, &status), 0u);
  EXPECT_EQ(status.rasconnstate, RASCS_Connected);
  const MIB_IFROW row = moving();
  EXPECT_LT(row.dwInOctets - 4294960000u - 5 * row.dwOutOctets, 5u) << "five times as many come as go";
  EXPECT_EQ(ras<decltype(::RasHangUpA)>("RasHangUpA")(connection), 0u);
  const DWORD stopped = moving().dwInOctets;
  ::Sleep(300);
  EXPECT_EQ(moving().dwInOctets, stopped);
  ::DestroyWindow(window);
}

}  // namespace
