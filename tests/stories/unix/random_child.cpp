#include "../random_child.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace pelvaro {

namespace {

// Behind what a piece gave, when it has come to its end.
constexpr std::string_view kEnd = "\nthe end\n";

void write(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(file, text.data(), text.size());
    if (count < 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::string readAll(int file) {
  std::string text;
  char block[65536];
  for (;;) {
    const ssize_t count = ::read(file, block, sizeof block);
    if (count > 0) text.append(block, static_cast<std::size_t>(count));
    if (count == 0 || (count < 0 && errno != EINTR)) return text;
  }
}

}  // namespace

ChildsEnd inChild(const std::function<std::string()>& piece, unsigned seconds) {
  int pipe[2];
  if (::pipe(pipe) != 0) return {false, "no pipe"};
  std::fflush(nullptr);
  const pid_t parent = ::getpid();
  const pid_t child = ::fork();
  if (child < 0) return {false, "no child"};
  if (child == 0) {
    // Does not outlive the test; who asks for that too late has another parent by then.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(1);
    ::close(pipe[0]);
    ::dup2(pipe[1], STDOUT_FILENO);
    ::dup2(pipe[1], STDERR_FILENO);
    ::alarm(seconds);
    const std::string said = piece();
    write(pipe[1], said);
    write(pipe[1], kEnd);
    std::exit(0);  // which looks for leaks and keeps what the coverage counts
  }
  ::close(pipe[1]);
  ChildsEnd end{false, readAll(pipe[0])};
  ::close(pipe[0]);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFSIGNALED(status)) end.said += "\nended by signal " + std::to_string(WTERMSIG(status)) + "\n";
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && end.said.ends_with(kEnd)) {
    end.said.resize(end.said.size() - kEnd.size());
    end.whole = true;
  }
  return end;
}

bool childrenCanCrash() { return true; }

}  // namespace pelvaro
