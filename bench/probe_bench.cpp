// The check of a modem device on the system's serial ports. Ends with 1 when a limit is missed.
//   probe_bench absent   no port from COM3 to COM16 exists
//   probe_bench phone    a Nokia on COM5 that answers at once, beside the bare dialogue in the same run
//   probe_bench silent   a port among them on which nobody answers
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "devices/probe.h"
#include "limits.h"
#include "platform/win32/event_loop.h"
#include "platform/win32/serial_port.h"

namespace {

using namespace pelvaro;

const std::vector<std::string> kKeys = {"Samsung D500 USB Modem", "Siemens S65 Modem", "Nokia 6230 USB Modem"};
constexpr const char* kDevice = "Nokia 6230";

double milliseconds(const std::function<void()>& what) {
  LARGE_INTEGER begin, end, frequency;
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&begin);
  what();
  ::QueryPerformanceCounter(&end);
  return 1e3 * static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Writes a command and polls until the answer is there: on every pass the pending messages, then a read that gives at
// once what has come.
bool ask(HANDLE port, const char* command, std::string& answer) {
  DWORD count = 0;
  ::WriteFile(port, command, static_cast<DWORD>(std::strlen(command)), &count, nullptr);
  for (int i = 0; i < 5001; ++i) {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
    char block[4096];
    if (!::ReadFile(port, block, sizeof block, &count, nullptr)) return false;
    answer.append(block, count);
    if (answer.find("OK") != std::string::npos) return true;
  }
  return false;
}

// Open, two commands, close: what a check cannot do without.
bool bareDialogue() {
  const HANDLE port = ::CreateFileA("\\\\.\\COM5", GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (port == INVALID_HANDLE_VALUE) return false;
  DCB state{};
  state.DCBlength = sizeof state;
  COMMTIMEOUTS timeouts{};
  timeouts.ReadIntervalTimeout = MAXDWORD;
  std::string greeting, maker;
  const bool answered = ::GetCommState(port, &state) && ::BuildCommDCBA("115200,N,8,1", &state) &&
                        ::SetCommState(port, &state) && ::SetCommTimeouts(port, &timeouts) &&
                        ::PurgeComm(port, PURGE_RXCLEAR) && ask(port, "AT\r\n", greeting) &&
                        ask(port, "AT+cgmi\r\n", maker) && maker.find("Nokia") != std::string::npos;
  ::CloseHandle(port);
  return answered;
}

}  // namespace

int main(int count, char** arguments) {
  const std::string what = count == 2 ? arguments[1] : "";
  win32::SystemSerialPort port;
  win32::MessageLoop loop;
  devices::Probe probe(port, loop);
  bool found = false;
  const auto check = [&] { found = probe.validateDevice(kDevice, kKeys); };
  Limits limits;
  if (what == "absent") {
    std::vector<double> times(31);
    for (double& time : times) time = milliseconds(check);
    limits.judge(
        !found && *std::max_element(times.begin(), times.end()) < 10,
        {"check of 14 absent ports, the slowest of 31", text("%.2f ms", *std::max_element(times.begin(), times.end())),
         text("median %.2f ms", median(times)), "", "below 10 ms"});
  } else if (what == "phone") {
    std::vector<double> ours, reference;
    bool answered = true;
    for (int i = 0; i < 101; ++i) {  // alternately, so that both see the same machine
      reference.push_back(milliseconds([&] { answered = bareDialogue() && answered; }));
      ours.push_back(milliseconds(check));
      answered = found && answered;
    }
    const double ratio = median(ours) / median(reference);
    limits.judge(answered, {"the phone answers every check", answered ? "yes" : "no", "", "", "yes"});
    limits.judgeRatio(
        ratio, 1.50,
        {"phone found", text("%.2f ms", median(ours)), text("bare dialogue %.2f ms", median(reference)), "", ""});
  } else if (what == "silent") {
    const double time = milliseconds(check);
    limits.judge(time < 60'000, {"check with a silent port, 5,001 polls", text("%.0f ms", time), "", "", "a minute"});
  } else {
    return std::fprintf(stderr, "usage: probe_bench absent | phone | silent\n"), 2;
  }
  return limits.exitCode();
}
