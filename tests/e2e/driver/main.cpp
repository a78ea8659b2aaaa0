// Drives the windows of another program for a test run. Reads one command a line from standard input, its words
// separated by tabs (\t \n \r \\ stand for themselves inside a word), texts in the ANSI code page. Answers each with
// one line of JSON: {"ok":true,"value":...} or {"ok":false,"error":"..."}. Ends at the end of the input.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "command.h"
#include "window.h"

std::string optional(const Arguments& arguments, size_t i, const char* otherwise) {
  return i < arguments.size() ? arguments[i] : otherwise;
}

int number(const std::string& argument) {
  char* end = nullptr;
  long value = std::strtol(argument.c_str(), &end, 10);
  if (argument.empty() || *end != '\0') throw Refused("not a number: " + argument);
  return static_cast<int>(value);
}

namespace {

bool readLine(std::string& line) {
  line.clear();
  for (int c; (c = std::getchar()) != EOF;) {
    if (c == '\n') return true;
    if (c != '\r') line += static_cast<char>(c);
  }
  return !line.empty();
}

Arguments split(const std::string& line) {
  Arguments words(1);
  for (size_t i = 0; i < line.size(); ++i) {
    char c = line[i];
    if (c == '\t') {
      words.emplace_back();
      continue;
    }
    if (c == '\\' && i + 1 < line.size()) {
      c = line[++i];
      c = c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
    }
    words.back() += c;
  }
  return words;
}

void carryOut(Arguments words, Json& answer) {
  const std::string name = words.front();
  words.erase(words.begin());
  for (auto table : {lookCommands(), actCommands(), waitCommands(), registryCommands(), accessCommands()}) {
    for (const Command& command : table) {
      if (name != command.name) continue;
      if (words.size() < command.least) throw Refused("usage: " + name + " " + command.usage);
      answer.object().key("ok").boolean(true).key("value");
      command.run(words, answer);
      answer.end('}');
      return;
    }
  }
  throw Refused("no command is named " + name);
}

std::string answerTo(const std::string& line) {
  Json answer;
  try {
    carryOut(split(line), answer);
    return answer.str();
  } catch (const std::exception& e) {
    Json refusal;
    refusal.object().key("ok").boolean(false).key("error").text(e.what()).end('}');
    return refusal.str();
  }
}

}  // namespace

int main() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  for (std::string line; readLine(line);) {
    if (line.empty()) continue;
    std::string answer = answerTo(line) + "\n";
    std::fwrite(answer.data(), 1, answer.size(), stdout);
    std::fflush(stdout);
  }
}
