// Whole-process measures under Windows or Wine, the program beside a bare window in the same run: time from the start
// to the first visible window, and peak memory. Ends with 1 when a limit is missed.
//   process_bench PROGRAM BARE CORES     CORES: words for the table
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/win32/windows_header.h"

// Behind windows_header.h.
#include <psapi.h>

#include "limits.h"

namespace {

using pelvaro::Limits;
using pelvaro::median;
using pelvaro::text;

struct Wanted {
  DWORD process;
  const char* windowClass;
  HWND found;
};

BOOL CALLBACK look(HWND window, LPARAM parameter) {
  auto& wanted = *reinterpret_cast<Wanted*>(parameter);
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  char name[64] = "";
  ::GetClassNameA(window, name, sizeof name);
  if (process != wanted.process || !::IsWindowVisible(window) || std::string(name) != wanted.windowClass) return TRUE;
  wanted.found = window;
  return FALSE;
}

struct Started {
  PROCESS_INFORMATION process{};
  double milliseconds = -1;
  bool shown = false;  // whether its window came

  Started(const char* program, const char* windowClass) {
    std::string command = std::string("\"") + program + "\"";
    STARTUPINFOA info{};
    info.cb = sizeof info;
    LARGE_INTEGER begin, end, frequency;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&begin);
    if (!::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &info, &process))
      return;
    Wanted wanted{process.dwProcessId, windowClass, nullptr};
    do {
      ::EnumWindows(&look, reinterpret_cast<LPARAM>(&wanted));
      ::QueryPerformanceCounter(&end);
      milliseconds =
          1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart);
      if (!wanted.found) ::Sleep(1);
    } while (!wanted.found && milliseconds < 20000);
    shown = wanted.found != nullptr;
  }
  ~Started() {
    ::TerminateProcess(process.hProcess, 0);
    ::WaitForSingleObject(process.hProcess, 5000);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;

  double peakMib() const {
    PROCESS_MEMORY_COUNTERS counters{};
    ::GetProcessMemoryInfo(process.hProcess, &counters, sizeof counters);
    return static_cast<double>(counters.PeakWorkingSetSize) / (1024.0 * 1024.0);
  }
  bool running() const { return ::WaitForSingleObject(process.hProcess, 0) == WAIT_TIMEOUT; }
};

void measureStart(Limits& limits, const char* program, const char* bare, const char* cores) {
  std::vector<double> ours, reference;
  double ourPeak = 0, referencePeak = 0;
  bool allCame = true;
  for (int i = 0; i < 21; ++i) {  // alternately, so that both see the same machine
    {
      const Started one(bare, "Pelvaro.Bare");
      reference.push_back(one.milliseconds);
      ::Sleep(300);
      referencePeak = std::max(referencePeak, one.peakMib());
      allCame = allCame && one.shown && one.running();
    }
    const Started one(program, "Pelvaro.Form1");
    ours.push_back(one.milliseconds);
    ::Sleep(300);
    ourPeak = std::max(ourPeak, one.peakMib());
    allCame = allCame && one.shown && one.running();
  }
  if (!allCame) return limits.judge(false, {"every start shows its window within 20 s and stays", "no", "", "", "all"});
  const double ratio = median(ours) / median(reference);
  limits.judgeRatio(ratio, 1.50,
                    {std::string("first window, ") + cores, text("%.1f ms", median(ours)),
                     text("bare window %.1f ms", median(reference)), "", ""});
  limits.judge(ourPeak - referencePeak <= 7.0,
               {std::string("peak memory, ") + cores, text("%.1f MiB", ourPeak),
                text("bare window %.1f MiB", referencePeak), text("+%.1f MiB", ourPeak - referencePeak), "+7.0 MiB"});
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) return std::fprintf(stderr, "usage: process_bench PROGRAM BARE CORES\n"), 2;
  Limits limits;
  measureStart(limits, arguments[1], arguments[2], arguments[3]);
  return limits.exitCode();
}
