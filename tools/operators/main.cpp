// The program: its command line, its files and streams.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "byte_streams.h"
#include "commands.h"
#include "platform/files.h"

namespace {

using namespace pelvaro;
using namespace pelvaro::operators;

constexpr const char* kHelp =
    "Operator list files of Pelvaro as CSV and back.\n"
    "\n"
    "  operators to-csv [FILE]               a list file as CSV\n"
    "  operators from-csv [--seed N] [FILE]  CSV as a list file; the same bytes for the same N\n"
    "  operators check [FILE]                says line by line what is wrong with a list file\n"
    "  operators --help                      this text\n"
    "\n"
    "Reads FILE, or standard input without one or with \"-\", and writes to standard output. The first line holds the\n"
    "column titles. Text is not converted: a list holds Windows-1252, and so does the CSV. CSV lines end with LF;\n"
    "CR LF is read as well, and empty lines are passed over. Every row has 11 fields, and no field holds a comma.\n"
    "\n"
    "Exit code: 0 fine, 1 something is wrong with the input, 2 wrong usage or a file that cannot be read or written.\n";

struct Options {
  std::string command;
  std::string file = "-";
  std::optional<std::uint32_t> seed;
};

std::optional<std::uint32_t> number(const char* text) {
  std::uint32_t value = 0;
  const char* end = text + std::strlen(text);
  const auto [stop, error] = std::from_chars(text, end, value);
  if (error != std::errc() || stop != end || stop == text) return std::nullopt;
  return value;
}

// The command line, or what is wrong with it.
std::optional<Options> read(int count, char** words, std::string& wrong) {
  Options options;
  bool file = false;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    if (word == "--seed") {
      if (++i == count || !(options.seed = number(words[i]))) wrong = "--seed needs a number from 0 to 4294967295";
    } else if (word.size() > 1 && word.front() == '-') {
      wrong = "unknown option " + word;
    } else if (options.command.empty()) {
      options.command = word;
    } else if (!file) {
      file = true;
      options.file = word;
    } else {
      wrong = "more than one file";
    }
    if (!wrong.empty()) return std::nullopt;
  }
  if (options.command != "to-csv" && options.command != "from-csv" && options.command != "check") {
    wrong = options.command.empty() ? "a command is missing" : "unknown command " + options.command;
  } else if (options.seed && options.command != "from-csv") {
    wrong = "--seed is for from-csv";
  }
  return wrong.empty() ? std::optional(options) : std::nullopt;
}

struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != stdin) std::fclose(file);
  }
};

std::optional<std::string> readAll(const std::string& path) {
  const std::unique_ptr<std::FILE, FileCloser> file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
  if (!file) return std::nullopt;
  std::string bytes;
  char block[1 << 16];
  while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
    bytes.append(block, count);
    if (bytes.size() > kLargestFile) return std::nullopt;
  }
  if (std::ferror(file.get())) return std::nullopt;
  return bytes;
}

int end(const Outcome& outcome) {
  std::fputs(outcome.message.c_str(), stderr);
  if (std::fwrite(outcome.output.data(), 1, outcome.output.size(), stdout) != outcome.output.size() ||
      std::fflush(stdout) != 0) {
    std::fputs("operators: cannot write\n", stderr);
    return static_cast<int>(Exit::usage);
  }
  return static_cast<int>(outcome.exit);
}

Outcome run(const Options& options, const std::string& input) {
  if (options.command == "to-csv") return toCsv(input);
  if (options.command == "check") return check(input);
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  SeededRandom random(options.seed.value_or(static_cast<std::uint32_t>(now)));
  return fromCsv(input, random);
}

}  // namespace

int main(int count, char** words) {
  useByteStreams();
  if (count == 2 && (std::strcmp(words[1], "--help") == 0 || std::strcmp(words[1], "-h") == 0)) {
    return end({Exit::fine, kHelp, {}});
  }
  std::string wrong;
  const auto options = read(count, words, wrong);
  if (!options) return end({Exit::usage, {}, "operators: " + wrong + " (operators --help)\n"});
  const auto input = readAll(options->file);
  if (!input) return end({Exit::usage, {}, "operators: cannot read " + options->file + "\n"});
  return end(run(*options, *input));
}
