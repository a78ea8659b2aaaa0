#include "pty.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace pelvaro::line {

Pty::Pty() {
  master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  char name[128];
  if (master_ >= 0 && ::grantpt(master_) == 0 && ::unlockpt(master_) == 0 &&
      ::ptsname_r(master_, name, sizeof name) == 0) {
    path_ = name;
    slave_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
  }
  termios settings;
  if (slave_ >= 0 && ::tcgetattr(slave_, &settings) == 0) {
    ::cfmakeraw(&settings);
    if (::tcsetattr(slave_, TCSANOW, &settings) == 0) return;
  }
  const int error = errno;
  if (slave_ >= 0) ::close(slave_);
  if (master_ >= 0) ::close(master_);
  throw std::system_error(error, std::generic_category(), "no pseudo-terminal");
}

Pty::~Pty() {
  ::close(slave_);
  ::close(master_);
}

std::string Pty::read() {
  std::string bytes;
  char block[1024];
  for (;;) {
    const ssize_t count = ::read(master_, block, sizeof block);
    if (count <= 0) return bytes;
    bytes.append(block, static_cast<std::size_t>(count));
    if (bytes.size() >= 65536) return bytes;
  }
}

void Pty::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(master_, bytes.data(), bytes.size());
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void Pty::forget() { ::tcflush(slave_, TCIFLUSH); }

}  // namespace pelvaro::line
