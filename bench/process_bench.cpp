// Whole-process measures under Windows or Wine, the program beside a bare window in the same run: time from the start
// to the first visible window, peak memory, and the processor's time while idle. Ends with 1 when a limit is missed.
//   process_bench start PROGRAM BARE
//   process_bench idle PROGRAM SECONDS
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
  // User and kernel time so far, in milliseconds.
  double processorTime() const {
    FILETIME created{}, exited{}, kernel{}, user{};
    ::GetProcessTimes(process.hProcess, &created, &exited, &kernel, &user);
    const auto time = [](const FILETIME& f) {
      return static_cast<double>((static_cast<unsigned long long>(f.dwHighDateTime) << 32) | f.dwLowDateTime) / 10000.0;
    };
    return time(kernel) + time(user);
  }
};

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void measureStart(Limits& limits, const char* program, const char* bare) {
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
  if (!allCame) return limits.judge(false, "every start must show its window within 20 s and stay");
  const double ratio = median(ours) / median(reference);
  limits.judge(ratio <= 1.50, "first window: %.1f ms, bare window %.1f ms, ratio %.2f (at most 1.50)", median(ours),
               median(reference), ratio);
  limits.judge(ourPeak - referencePeak <= 7.0,
               "peak memory: %.1f MiB, bare window %.1f MiB, difference %.1f (at most 7.0)", ourPeak, referencePeak,
               ourPeak - referencePeak);
}

void measureIdle(Limits& limits, const char* program, int seconds) {
  const Started idle(program, "Pelvaro.Form1");
  ::Sleep(2000);
  const double before = idle.processorTime();
  ::Sleep(static_cast<DWORD>(seconds) * 1000);
  const double used = idle.processorTime() - before;
  if (!idle.shown || !idle.running())
    return limits.judge(false, "the program must show its window within 20 s and stay");
  const double percent = used / (10.0 * seconds);
  limits.judge(percent < 0.300, "idle: %.0f ms of processor time in %d s, %.3f %% of a core (below 0.300)", used,
               seconds, percent);
}

}  // namespace

int main(int count, char** arguments) {
  const std::string what = count == 4 ? arguments[1] : "";
  if (what != "start" && what != "idle")
    return std::fprintf(stderr, "usage: process_bench start PROGRAM BARE | idle PROGRAM SECONDS\n"), 2;
  Limits limits;
  if (what == "idle")
    measureIdle(limits, arguments[2], std::max(1, std::atoi(arguments[3])));
  else
    measureStart(limits, arguments[2], arguments[3]);
  return limits.exitCode();
}
