// The program: its command line, its files and streams.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "commands.h"
#include "platform/files.h"
#include "system_calls.h"

namespace {

using namespace pelvaro;
using namespace pelvaro::operators;

constexpr const char* kHelp =
    "Operator list files of Pelvaro as CSV and back.\n"
    "\n"
    "  operators to-csv [-o OUT] [FILE]               a list file as CSV\n"
    "  operators from-csv [--seed N] [-o OUT] [FILE]  CSV as a list file; the same bytes for the same N\n"
    "  operators check [FILE]                         says line by line what is wrong with a list file\n"
    "  operators --help                               this text\n"
    "\n"
    "Reads FILE, or standard input without one or with \"-\"; behind \"--\" its name may begin with \"-\". Writes to\n"
    "standard output, or makes OUT, which stays as it was when something is wrong. The first line holds the column\n"
    "titles. Text is not converted: a list holds Windows-1252, and so does the CSV. CSV lines end with LF; CR LF is\n"
    "read as well, and empty lines are passed over. Every row has 11 fields, and no field holds a comma.\n"
    "\n"
    "Exit code: 0 fine, 1 something is wrong with the input, 2 wrong usage or a file that cannot be read or written.\n";

struct Options {
  std::string command;
  std::string file = "-", output = "-";
  std::optional<std::uint32_t> seed;
  bool help = false;
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
  bool file = false, optionsEnd = false;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    const bool option = !optionsEnd && word.size() > 1 && word.front() == '-';
    if (option && (word == "--help" || word == "-h")) {
      options.help = true;
      return options;
    }
    if (option && word == "--") {
      optionsEnd = true;
    } else if (option && word == "--seed") {
      if (++i == count || !(options.seed = number(words[i]))) wrong = "--seed needs a number from 0 to 4294967295";
    } else if (option && word == "-o") {
      if (++i == count) {
        wrong = "-o needs a file";
      } else {
        options.output = words[i];
      }
    } else if (option) {
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
  } else if (options.output != "-" && options.command == "check") {
    wrong = "-o is for to-csv and from-csv";
  }
  return wrong.empty() ? std::optional(options) : std::nullopt;
}

struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != stdin) std::fclose(file);
  }
};

// The bytes of the input, or what is wrong.
std::optional<std::string> readAll(const std::string& path, std::string& wrong) {
  wrong = "cannot read " + path;
  const std::unique_ptr<std::FILE, FileCloser> file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
  if (!file) return std::nullopt;
  std::string bytes;
  char block[1 << 16];
  while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
    bytes.append(block, count);
    if (bytes.size() > kLargestFile) {
      wrong = path + " is larger than " + std::to_string(kLargestFile >> 20) + " MB";
      return std::nullopt;
    }
  }
  if (std::ferror(file.get())) return std::nullopt;
  return bytes;
}

bool write(std::string_view bytes, std::FILE* file) {
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

// The whole file or none: it is written beside its place first.
bool writeFile(std::string_view bytes, const std::string& path) {
  const std::string fresh = path + ".new";
  std::FILE* file = std::fopen(fresh.c_str(), "wb");
  if (!file) return false;
  const bool written = write(bytes, file);
  if (std::fclose(file) == 0 && written && moveOver(fresh, path)) return true;
  std::remove(fresh.c_str());
  return false;
}

int end(const Outcome& outcome) {
  const bool written = write(outcome.output, stdout);
  write(outcome.message + (written ? "" : "operators: cannot write\n"), stderr);
  return static_cast<int>(written ? outcome.exit : Exit::failed);
}
int fail(const std::string& what) { return end({Exit::failed, {}, "operators: " + what + "\n"}); }

Outcome run(const Options& options, const std::string& input) {
  if (options.command == "to-csv") return toCsv(input);
  if (options.command == "check") return check(input);
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  SeededRandom random(options.seed.value_or(static_cast<std::uint32_t>(now)));
  return fromCsv(input, random);
}

int run(int count, char** words) {
  std::string wrong;
  const auto options = read(count, words, wrong);
  if (!options) return fail(wrong + " (operators --help)");
  if (options->help) return end({Exit::fine, kHelp, {}});
  const auto input = readAll(options->file, wrong);
  if (!input) return fail(wrong);
  const Outcome outcome = run(*options, *input);
  if (outcome.exit != Exit::fine || options->output == "-") return end(outcome);
  return writeFile(outcome.output, options->output) ? static_cast<int>(Exit::fine)
                                                    : fail("cannot write " + options->output);
}

}  // namespace

int main(int count, char** words) {
  useByteStreams();
  try {
    return run(count, words);
  } catch (const std::bad_alloc&) {
    return std::fputs("operators: not enough memory\n", stderr), static_cast<int>(Exit::failed);
  }
}
