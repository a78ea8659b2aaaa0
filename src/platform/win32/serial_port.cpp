#include "platform/win32/serial_port.h"

#include "base/runtime_error.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

namespace {

// The longest that a write waits for a device that takes nothing, in milliseconds.
constexpr DWORD kWriteTime = 200;

RuntimeError invalidPort() { return {8002, "Invalid port number"}; }
RuntimeError portInUse() { return {8005, "Port already open"}; }
RuntimeError notOpen() { return {8018, "Operation valid only when the port is open"}; }
RuntimeError cannotRead() { return {8020, "Error reading comm device"}; }
RuntimeError cannotWrite() { return {8020, "Error writing comm device"}; }
RuntimeError cannotConfigure() { return {8021, "Internal error retrieving device control block for the port"}; }
RuntimeError invalidSettings() { return {380, "Invalid property value"}; }

// The handle that CreateFile gave, or none.
Handle owned(HANDLE handle) { return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle); }

void configure(HANDLE port, const std::string& settings) {
  DCB state{};
  state.DCBlength = sizeof state;
  if (!::GetCommState(port, &state)) throw cannotConfigure();
  // This form of settings also raises DTR and RTS and switches flow control off. A port without those wires ignores it.
  if (!::BuildCommDCBA(settings.c_str(), &state)) throw invalidSettings();
  // Whatever another program has left behind: every byte counts, and an error on the line stops nothing.
  state.fDsrSensitivity = FALSE;
  state.fNull = FALSE;
  state.fErrorChar = FALSE;
  state.fAbortOnError = FALSE;
  COMMTIMEOUTS timeouts{};
  timeouts.ReadIntervalTimeout = MAXDWORD;  // with the other two 0: a read gives at once what is there
  timeouts.WriteTotalTimeoutConstant = kWriteTime;
  if (!::SetCommState(port, &state) || !::SetCommTimeouts(port, &timeouts)) throw cannotConfigure();
  // What was said before is no answer to us.
  ::PurgeComm(port, PURGE_RXCLEAR);
}

}  // namespace

void HandleCloser::operator()(void* handle) const { ::CloseHandle(handle); }

bool SystemSerialPort::canOpen(const std::string& deviceName) {
  return owned(::CreateFileA(deviceName.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) != nullptr;
}

void SystemSerialPort::open(int number, const std::string& settings) {
  if (port_) throw portInUse();
  const std::string name = "\\\\.\\COM" + std::to_string(number);
  Handle port = owned(::CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!port) {
    const DWORD error = ::GetLastError();
    throw error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ? portInUse() : invalidPort();
  }
  configure(port.get(), settings);
  port_ = std::move(port);
}

// What the device does not take in time is lost, as on a wire with nobody at its end.
void SystemSerialPort::write(std::string_view text) {
  if (!port_) throw notOpen();
  DWORD written = 0;
  if (!::WriteFile(port_.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr)) throw cannotWrite();
}

// The state tells how much is waiting and, unlike an empty read, fails once the device is gone.
std::string SystemSerialPort::read() {
  if (!port_) throw notOpen();
  DWORD errors = 0;
  COMSTAT state{};
  if (!::ClearCommError(port_.get(), &errors, &state)) throw cannotRead();
  std::string text(state.cbInQue, '\0');
  DWORD count = 0;
  if (!text.empty() && !::ReadFile(port_.get(), text.data(), state.cbInQue, &count, nullptr)) throw cannotRead();
  text.resize(count);
  return text;
}

}  // namespace pelvaro::win32
