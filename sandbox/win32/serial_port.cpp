#include "win32/serial_port.h"

#include <windows.h>

#include "codes.h"

namespace pelvaro::line {
namespace {

constexpr DWORD kLookEvery = 100;  // milliseconds between two looks whether the port is still there

class SerialPort : public Port {
 public:
  SerialPort(HANDLE handle, std::string path) : handle_(handle), path_(std::move(path)) {}
  ~SerialPort() override { ::CloseHandle(handle_); }
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;

  // 115200 8N1; a read gives at once what is there.
  bool setUp() {
    DCB state{};
    state.DCBlength = sizeof state;
    COMMTIMEOUTS timeouts{};
    timeouts.ReadIntervalTimeout = MAXDWORD;
    return ::GetCommState(handle_, &state) && ::BuildCommDCBA("baud=115200 parity=N data=8 stop=1", &state) &&
           ::SetCommState(handle_, &state) && ::SetCommTimeouts(handle_, &timeouts) &&
           ::PurgeComm(handle_, PURGE_RXCLEAR);
  }

  bool write(std::string_view bytes) override {
    DWORD written = 0;
    if (!::WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) gone_ = true;
    return !gone_ && written == bytes.size();
  }

  std::string read() override {
    char block[1024];
    DWORD count = 0;
    if (!::ReadFile(handle_, block, sizeof block, &count, nullptr)) gone_ = true;
    return {block, count};
  }

  // A pulled cable takes the port's name away and makes the open handle useless; either tells.
  bool gone() override {
    const DWORD now = ::GetTickCount();
    if (gone_ || now - looked_ < kLookEvery) return gone_;
    looked_ = now;
    DWORD errors = 0;
    if (!::ClearCommError(handle_, &errors, nullptr)) return gone_ = true;
    const HANDLE again =
        ::CreateFileA(path_.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (again != INVALID_HANDLE_VALUE)
      ::CloseHandle(again);
    else
      gone_ = ::GetLastError() == ERROR_FILE_NOT_FOUND || ::GetLastError() == ERROR_PATH_NOT_FOUND;
    return gone_;
  }

 private:
  HANDLE handle_;
  std::string path_;
  DWORD looked_ = ::GetTickCount();
  bool gone_ = false;
};

std::uint32_t codeOf(DWORD error) {
  if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return kDeviceNotFound;
  if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION) return kPortNotAvailable;
  return kPortOrDevice;
}

}  // namespace

std::unique_ptr<Port> SerialPorts::open(const std::string& name, std::uint32_t& error) {
  const std::string path = "\\\\.\\" + name;
  const HANDLE handle =
      ::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    error = codeOf(::GetLastError());
    return nullptr;
  }
  auto port = std::make_unique<SerialPort>(handle, path);
  if (port->setUp()) return port;
  error = kPortOrDevice;
  return nullptr;
}

}  // namespace pelvaro::line
