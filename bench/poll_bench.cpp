// The state poll, the traffic tick and the refill of the list on the real controls, each beside the bare calls of the
// system in the same run, with 256 entries and 256 connections; how many heap allocations a poll and a tick make, how
// often a control is painted for one change, how long the driver window takes to open. Ends with 1 when a limit is
// missed.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "dial_line.h"
#include "limits.h"
#include "line_dial_service.h"
#include "memory_ports.h"
#include "platform/win32/system_services.h"
#include "ui/windows.h"

namespace {
long g_allocations = 0;
}  // namespace

void* operator new(std::size_t size) {
  ++g_allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using namespace pelvaro;

double microseconds(const std::function<void()>& what, int times) {
  LARGE_INTEGER begin, end, frequency;
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&begin);
  for (int i = 0; i < times; ++i) what();
  ::QueryPerformanceCounter(&end);
  return 1e6 * static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart) / times;
}

// The median of many short turns, taken alternately so that both see the same machine.
void compare(const std::function<void()>& ours, const std::function<void()>& reference, int times, double& ourTime,
             double& referenceTime) {
  std::vector<double> a, b;
  for (int i = 0; i < 31; ++i) {
    b.push_back(microseconds(reference, times));
    a.push_back(microseconds(ours, times));
  }
  std::sort(a.begin(), a.end());
  std::sort(b.begin(), b.end());
  ourTime = a[a.size() / 2];
  referenceTime = b[b.size() / 2];
}

int g_paints = 0;
HWND g_watched = nullptr;
LRESULT CALLBACK countPaints(int code, WPARAM wParam, LPARAM lParam) {
  const auto& message = *reinterpret_cast<CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && message.message == WM_PAINT && message.hwnd == g_watched) ++g_paints;
  return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

HWND childOf(const char* form, const char* name) {
  const ATOM wanted = ::GlobalFindAtomA(name);
  HWND child = ::GetWindow(::FindWindowA(form, nullptr), GW_CHILD);
  while (child && static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(::GetPropA(child, "ControlName"))) != wanted) {
    child = ::GetWindow(child, GW_HWNDNEXT);
  }
  return child;
}

// How often a control is painted for a change and whatever it brings.
int paintsOf(HWND control, win32::MessageLoop& loop, const std::function<void()>& change) {
  loop.yield();
  g_watched = control;
  const HHOOK hook = ::SetWindowsHookExA(WH_CALLWNDPROC, &countPaints, nullptr, ::GetCurrentThreadId());
  ::UpdateWindow(control);
  g_paints = 0;
  change();
  ::UpdateWindow(control);
  loop.yield();
  ::UpdateWindow(control);
  ::UnhookWindowsHookEx(hook);
  return g_paints;
}

}  // namespace

int main() {
  ::InitCommonControls();
  line::Scenario scenario;
  scenario.entries = 256;
  scenario.connections = 256;
  line::MemoryPorts ports;
  line::DialLine line(line::firstPhonebook(), scenario, ports, {});
  line::LineDialService ras(line);
  win32::SystemServices system(&ras);
  win32::MessageLoop& loop = system.loop;
  Windows windows(system.services);
  Form1& main = windows.form1;
  main.show();
  loop.yield();
  main.ListView1.selectRow(200);
  main.Timer1.onTick();

  std::vector<std::uint8_t> buffer(412 * 256);
  const auto bareConnections = [&] {
    put32(buffer, 0, 412);
    auto size = static_cast<std::uint32_t>(buffer.size());
    std::uint32_t count = 0;
    ras.enumConnections(buffer.data(), &size, &count);
  };
  Limits limits;
  double poll = 0, bare = 0;
  compare([&] { main.Timer1.onTick(); }, bareConnections, 50, poll, bare);
  limits.judgeRatio(
      poll / bare, 1.20,
      {"one poll, 256 entries and connections", text("%.2f us", poll), text("bare enumeration %.2f us", bare), "", ""});
  const long before = g_allocations;
  for (int i = 0; i < 1000; ++i) main.Timer1.onTick();
  const long allocations = g_allocations - before;
  limits.judge(allocations == 0, {"heap allocations in 1,000 polls", text("%ld", allocations), "", "", "none"});

  std::vector<std::uint8_t> table(1 << 20);
  const auto bareTable = [&] {
    std::uint32_t size = 0;
    system.services.interfaces.getIfTable(nullptr, &size, true);
    system.services.interfaces.getIfTable(table.data(), &size, true);
  };
  main.requiredbyte = 1 << 30;  // far away, so that every label is written
  main.settingflag = 1;
  double tick = 0, bareTwo = 0;
  compare([&] { main.Timer2.onTick(); }, bareTable, 20, tick, bareTwo);
  limits.judgeRatio(
      tick / bareTwo, 1.20,
      {"one tick with a limit", text("%.2f us", tick), text("its two bare GetIfTable %.2f us", bareTwo), "", ""});
  // Ticks in which a counter moves write labels; those in which nothing changes on the screen allocate nothing.
  long quiet = 0, quietAllocations = 0;
  for (int i = 0; i < 1000; ++i) {
    const std::string shown = main.Label1.text() + main.Label2.text() + main.Label4.text() + main.Label5.text();
    const long atTick = g_allocations;
    main.Timer2.onTick();
    const long made = g_allocations - atTick;
    if (shown != main.Label1.text() + main.Label2.text() + main.Label4.text() + main.Label5.text()) continue;
    ++quiet;
    quietAllocations += made;
  }
  limits.judge(quiet > 0 && quietAllocations == 0,
               {text("heap allocations in %ld ticks that change nothing shown", quiet), text("%ld", quietAllocations),
                "", "", "none"});

  std::vector<std::uint8_t> names(264 * 256);
  const auto bareEntries = [&] {
    for (std::size_t i = 0; i < names.size(); i += 264) put32(names, i, 264);
    auto size = static_cast<std::uint32_t>(names.size());
    std::uint32_t count = 0;
    ras.enumEntries(nullptr, names.data(), &size, &count);
  };
  double refill = 0, listing = 0;
  compare(
      [&] {
        main.refreshList();
        loop.yield();  // the repaint
      },
      bareEntries, 3, refill, listing);
  limits.judge(refill - listing < 5000, {"refilling 256 rows with its repaint", text("%.2f ms", refill / 1000),
                                         text("bare listing %.2f ms", listing / 1000),
                                         text("+%.2f ms", (refill - listing) / 1000), "below +5.00 ms"});

  const HWND list = childOf("Pelvaro.Form1", "ListView1");
  const int refills = paintsOf(list, loop, [&] { main.refreshList(); });
  limits.judge(refills == 1, {"repaints of the list in one refill", text("%d", refills), "", "", "one"});

  const double opening = microseconds(
      [&] {
        windows.driverForm.show();
        loop.yield();
      },
      1);
  const double bareForm = microseconds(
      [&] {
        windows.form6.show();
        loop.yield();
      },
      1);
  limits.judge(opening < 100'000,
               {"opening the driver window, painted", text("%.1f ms", opening / 1000),
                text("the limits dialog %.1f ms", bareForm / 1000), text("%.2f", opening / bareForm), "below 100 ms"});
  const HWND models = childOf("Pelvaro.frmDriver", "Combo2");
  const int brands = paintsOf(models, loop, [&] { windows.driverForm.Combo1.select(2); });
  limits.judge(brands == 1, {"repaints of the models in one change of the brand", text("%d", brands), "", "", "one"});
  return limits.exitCode();
}
