// phone_exchange: puts simulated phones on the serial ports of a Wine prefix and takes commands about them, by lines on
// its input and from a named pipe. Ends on "quit", on SIGTERM or SIGINT, or with the process it was started for.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "exchange.h"

namespace {

namespace fs = std::filesystem;
using pelvaro::line::Exchange;

volatile sig_atomic_t stopped = 0;
void stop(int) { stopped = 1; }

struct Options {
  fs::path prefix, control, phones;
  pid_t with = 0;
  std::vector<std::string> plugs;  // "COM5 nokia"
};

constexpr char kUsage[] =
    "phone_exchange --prefix DIR [--phones DIR] [--control FIFO] [--with-pid PID] [COM5=nokia ...]\n"
    "commands: plug COM5 nokia | unplug COM5 | occupy COM5 | say COM5 TEXT | login COM5 USER PASSWORD |\n"
    "          answer COM5 connect|busy|noanswer|nocarrier|nodialtone|error|silent|mute | status | quit\n";

std::optional<Options> parse(int count, char** words) {
  Options options;
  options.phones = fs::read_symlink("/proc/self/exe").parent_path() / "phones";
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    const auto equals = word.find('=');
    if (!word.starts_with("--") && equals != std::string::npos) {
      options.plugs.push_back(word.substr(0, equals) + " " + word.substr(equals + 1));
      continue;
    }
    if (i + 1 == count) return std::nullopt;
    const char* value = words[++i];
    if (word == "--prefix")
      options.prefix = value;
    else if (word == "--phones")
      options.phones = value;
    else if (word == "--control")
      options.control = value;
    else if (word == "--with-pid")
      options.with = static_cast<pid_t>(std::atol(value));
    else
      return std::nullopt;
  }
  return options.prefix.empty() ? std::nullopt : std::optional(options);
}

// Cuts what has arrived into lines; an unfinished one stays for the next time.
struct CommandInput {
  int descriptor;
  std::string waiting = {};

  // False when the exchange is to end. `ended` tells that no more will come.
  bool serve(Exchange& exchange, bool& ended) {
    char block[1024];
    const ssize_t count = ::read(descriptor, block, sizeof block);
    ended = count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
    if (count > 0) waiting.append(block, static_cast<std::size_t>(count));
    for (auto end = waiting.find('\n'); end != std::string::npos; end = waiting.find('\n')) {
      const std::string line = waiting.substr(0, end);
      waiting.erase(0, end + 1);
      if (!exchange.command(line)) return false;
    }
    if (waiting.size() > 4096) waiting.clear();
    return true;
  }
};

std::uint64_t now() {
  using namespace std::chrono;
  return static_cast<std::uint64_t>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void print(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

void run(Exchange& exchange, const Options& options) {
  std::vector<CommandInput> inputs{{STDIN_FILENO}};
  if (!options.control.empty()) {
    ::mkfifo(options.control.c_str(), 0600);
    // Opened for both so that it does not end when a writer closes it.
    const int descriptor = ::open(options.control.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
      print("refused: cannot open " + options.control.string());
    else
      inputs.push_back({descriptor});
  }
  int wait = 0;
  while (!stopped && (options.with == 0 || ::kill(options.with, 0) == 0 || errno == EPERM)) {
    const std::vector<int> phones = exchange.descriptors();
    std::vector<pollfd> waited;
    waited.reserve(inputs.size() + phones.size());
    for (const CommandInput& input : inputs) waited.push_back({input.descriptor, POLLIN, 0});
    for (const int descriptor : phones) waited.push_back({descriptor, POLLIN, 0});
    if (::poll(waited.data(), waited.size(), wait) < 0) continue;
    for (std::size_t i = inputs.size(); i-- > 0;) {
      if (waited[i].revents == 0) continue;
      bool ended = false;
      if (!inputs[i].serve(exchange, ended)) return;
      if (ended) inputs.erase(inputs.begin() + static_cast<std::ptrdiff_t>(i));
    }
    wait = exchange.serve(now());
  }
}

}  // namespace

int main(int count, char** words) {
  const auto options = parse(count, words);
  if (!options) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  const fs::path links = options->prefix / "dosdevices";
  if (!fs::is_directory(links)) {
    std::fprintf(stderr, "phone_exchange: %s is no folder of a Wine prefix\n", links.c_str());
    return 1;
  }
  struct sigaction action = {};
  action.sa_handler = stop;
  ::sigaction(SIGTERM, &action, nullptr);
  ::sigaction(SIGINT, &action, nullptr);
  ::sigaction(SIGHUP, &action, nullptr);
  ::signal(SIGPIPE, SIG_IGN);
  {
    Exchange exchange(links, options->phones, print);
    for (const std::string& plug : options->plugs) {
      exchange.command("plug " + plug);
      if (!exchange.understood()) return 1;
    }
    print("ready");
    run(exchange, *options);
  }
  if (!options->control.empty()) ::unlink(options->control.c_str());
  print("ended");
  return 0;
}
