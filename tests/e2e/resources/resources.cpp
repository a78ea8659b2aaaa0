// Counts what another program holds, for runs that must not need more and more: kernel handles, threads, GDI objects,
// windows, USER objects and memory. Reads one command a line from standard input, its words separated by tabs, and
// answers as the driver does. Ends at the end of the input.
//   count CLASS   of the program that has a top-level window of this class
//   make KIND N   so many objects of a kind, or kilobytes of memory, instead of those made before; for trying the count
// Started with an argument it has a window of that class, so that another one can count it.
// Wine keeps no count of GDI and USER objects for others. The GDI objects stand in a table of their program, which is
// read. USER objects of all programs have numbers out of one table, and numbers that are free are given out before the
// table grows: how many are taken is found out by taking all free ones.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

// Behind windows.h.
#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "../driver/json.h"

namespace {

struct OpenProcessHandle {
  explicit OpenProcessHandle(DWORD process)
      : handle(::OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process)) {
    if (!handle) throw std::runtime_error("the program cannot be opened");
  }
  ~OpenProcessHandle() { ::CloseHandle(handle); }
  OpenProcessHandle(const OpenProcessHandle&) = delete;
  OpenProcessHandle& operator=(const OpenProcessHandle&) = delete;
  HANDLE handle;
};

DWORD processOf(const std::string& windowClass) {
  DWORD process = 0;
  if (const HWND window = ::FindWindowA(windowClass.c_str(), nullptr)) ::GetWindowThreadProcessId(window, &process);
  if (process == 0) throw std::runtime_error("no window of class " + windowClass);
  return process;
}

// A list of the system, in a buffer that grows until it fits.
std::vector<std::uint8_t> systemList(SYSTEM_INFORMATION_CLASS kind) {
  constexpr NTSTATUS kTooSmall = static_cast<NTSTATUS>(0xC0000004);
  for (std::size_t room = 1 << 18;; room *= 2) {
    std::vector<std::uint8_t> list(room);
    const NTSTATUS status = ::NtQuerySystemInformation(kind, list.data(), static_cast<ULONG>(room), nullptr);
    if (status == 0) return list;
    if (status != kTooSmall || room > (1 << 26)) throw std::runtime_error("the system does not give its list");
  }
}

// The count in the list of programs is only that of the room that there is for handles: the handles themselves are
// counted.
long long handlesOf(DWORD process) {
  struct Entry {
    std::uint32_t process;
    std::uint8_t type, flags;
    std::uint16_t handle;
    std::uint32_t object, access;
  };
  const auto list = systemList(static_cast<SYSTEM_INFORMATION_CLASS>(16));  // SystemHandleInformation
  const std::uint32_t count = *reinterpret_cast<const std::uint32_t*>(list.data());
  const auto* first = reinterpret_cast<const Entry*>(list.data() + sizeof count);
  return std::count_if(first, first + count, [process](const Entry& e) { return e.process == process; });
}

long long threadsOf(DWORD process) {
  const auto list = systemList(SystemProcessInformation);
  for (const std::uint8_t* at = list.data();;) {
    const auto* one = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(at);
    if (reinterpret_cast<ULONG_PTR>(one->UniqueProcessId) == process) return one->NumberOfThreads;
    if (one->NextEntryOffset == 0) throw std::runtime_error("the system does not list the program");
    at += one->NextEntryOffset;
  }
}

// The table of GDI objects hangs on the environment block of its program.
long long gdiObjects(HANDLE process) {
  struct Entry {  // as Wine has it
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type, flags;  // no type: the entry is free
    std::uint64_t user;
  };
  constexpr std::size_t kEntries = 65536, kPlace = 0x94;
  PROCESS_BASIC_INFORMATION basic{};
  std::uint32_t table = 0;
  std::vector<Entry> entries(kEntries);
  if (::NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0 ||
      !::ReadProcessMemory(process, reinterpret_cast<const char*>(basic.PebBaseAddress) + kPlace, &table, sizeof table,
                           nullptr) ||
      !::ReadProcessMemory(process, reinterpret_cast<const void*>(table), entries.data(), kEntries * sizeof(Entry),
                           nullptr))
    throw std::runtime_error("the table of GDI objects cannot be read");
  return std::count_if(entries.begin(), entries.end(), [](const Entry& e) { return e.type != 0; });
}

struct Windows {
  DWORD process;
  long long count = 0;

  void look(HWND window) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner == process) ++count;
  }
  static BOOL CALLBACK child(HWND window, LPARAM parameter) {
    reinterpret_cast<Windows*>(parameter)->look(window);
    return TRUE;
  }
  static BOOL CALLBACK top(HWND window, LPARAM parameter) {
    ::EnumChildWindows(window, &child, parameter);
    return child(window, parameter);
  }
};

long long windowsOf(DWORD process) {
  Windows windows{process};
  ::EnumWindows(&Windows::top, reinterpret_cast<LPARAM>(&windows));
  for (HWND window = nullptr; (window = ::FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr));)
    Windows::top(window, reinterpret_cast<LPARAM>(&windows));
  return windows.count;
}

// The USER objects (windows, menus, icons, hooks) of all programs.
class UserTable {
 public:
  long long taken() {
    constexpr int kRunAtFirst = 512;  // so many new highest numbers one after the other: nothing is free any more
    std::vector<HMENU> mine;
    const int enough = highest_ == 0 ? kRunAtFirst : 1;
    for (int run = 0; run < enough;) {
      const HMENU menu = ::CreateMenu();
      if (!menu) throw std::runtime_error("no USER object can be made");
      mine.push_back(menu);
      const unsigned place = (static_cast<unsigned>(reinterpret_cast<ULONG_PTR>(menu)) & 0xFFFF) / 2;
      if (place > highest_) {
        highest_ = place;
        ++run;
      } else {
        run = 0;
      }
    }
    for (const HMENU menu : mine) ::DestroyMenu(menu);
    return static_cast<long long>(highest_) + 1 - kFirst - static_cast<long long>(mine.size());
  }

 private:
  static constexpr long long kFirst = 0x20 / 2;  // the lowest number is 0x20
  unsigned highest_ = 0;
};

void count(const std::string& windowClass, UserTable& table, Json& answer) {
  const DWORD id = processOf(windowClass);
  const OpenProcessHandle process(id);
  PROCESS_MEMORY_COUNTERS memory{};
  ::GetProcessMemoryInfo(process.handle, &memory, sizeof memory);
  answer.object();
  answer.key("handles").number(handlesOf(id)).key("threads").number(threadsOf(id));
  answer.key("gdi").number(gdiObjects(process.handle)).key("windows").number(windowsOf(id));
  answer.key("user").number(table.taken());
  answer.key("private").number(static_cast<long long>(memory.PagefileUsage / 1024)).end('}');
}

// What is made so that it can be counted.
class Made {
 public:
  void make(const std::string& kind, int number) {
    const auto found = kinds().find(kind);
    if (found == kinds().end()) throw std::runtime_error("no kind is named " + kind);
    for (const auto& free : free_) free();
    free_.clear();
    for (int i = 0; i < number; ++i) free_.push_back(found->second());
  }

 private:
  using Free = std::function<void()>;
  static const std::map<std::string, std::function<Free()>>& kinds() {
    static const std::map<std::string, std::function<Free()>> kinds = {
        {"brush", [] { return [made = ::CreateSolidBrush(0x123456)] { ::DeleteObject(made); }; }},
        {"font",
         [] {
           return [made = ::CreateFontA(12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Tahoma")] { ::DeleteObject(made); };
         }},
        {"context", [] { return [made = ::CreateCompatibleDC(nullptr)] { ::DeleteDC(made); }; }},
        {"bitmap", [] { return [made = ::CreateBitmap(16, 16, 1, 32, nullptr)] { ::DeleteObject(made); }; }},
        {"event", [] { return [made = ::CreateEventA(nullptr, TRUE, FALSE, nullptr)] { ::CloseHandle(made); }; }},
        {"menu", [] { return [made = ::CreatePopupMenu()] { ::DestroyMenu(made); }; }},
        {"icon",
         [] {
           const BYTE bits[128] = {};
           return [made = ::CreateIcon(nullptr, 32, 32, 1, 1, bits, bits)] { ::DestroyIcon(made); };
         }},
        {"window",
         [] {
           return [made = ::CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                                            nullptr)] { ::DestroyWindow(made); };
         }},
        {"kilobyte",
         [] {
           auto* made = static_cast<volatile char*>(std::calloc(1024, 1));
           for (int i = 0; made && i < 1024; ++i) made[i] = static_cast<char>(i);
           return [made] { std::free(const_cast<char*>(made)); };
         }},
    };
    return kinds;
  }
  std::vector<Free> free_;
};

// A window, never seen, by which another one of these finds this program.
void showAs(const char* windowClass) {
  WNDCLASSA own{};
  own.lpfnWndProc = &::DefWindowProcA;
  own.lpszClassName = windowClass;
  ::RegisterClassA(&own);
  ::CreateWindowExA(0, windowClass, "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
}

std::vector<std::string> wordsOf(std::string line) {
  std::vector<std::string> words(1);
  for (const char c : line) {
    if (c == '\t') words.emplace_back();
    if (c != '\t' && c != '\r' && c != '\n') words.back() += c;
  }
  words.resize(std::max<std::size_t>(words.size(), 3));
  return words;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  if (argumentCount > 1) showAs(arguments[1]);
  UserTable table;
  Made made;
  char line[512];
  while (std::fgets(line, sizeof line, stdin)) {
    const std::vector<std::string> words = wordsOf(line);
    Json answer;
    try {
      answer.object().key("ok").boolean(true).key("value");
      if (words[0] == "count") {
        count(words[1], table, answer);
      } else if (words[0] == "make") {
        made.make(words[1], std::atoi(words[2].c_str()));
        answer.null();
      } else {
        throw std::runtime_error("no command is named " + words[0]);
      }
      answer.end('}');
    } catch (const std::exception& e) {
      answer = Json();
      answer.object().key("ok").boolean(false).key("error").text(e.what()).end('}');
    }
    std::puts(answer.str().c_str());
    std::fflush(stdout);
  }
}
