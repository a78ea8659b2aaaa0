#include "exchange.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <system_error>

#include "bytes.h"
#include "speech.h"

namespace pelvaro::line {
namespace fs = std::filesystem;

// A port: with a phone on it, or occupied by nobody in particular (no phone).
struct Exchange::Line {
  std::string table;
  std::unique_ptr<Pty> pty;
  std::unique_ptr<Phone> phone;
  Speech speech{0};
};

namespace {

constexpr std::uint32_t kLongestWait = 250;

// "com5" and "COM5" are COM5; ports from COM3 to COM16 can have a phone. Empty for anything else.
std::string portName(std::string_view text) {
  const std::string name = lowered(text);
  int number = 0;
  if (!name.starts_with("com")) return {};
  const auto [end, error] = std::from_chars(name.data() + 3, name.data() + name.size(), number);
  if (error != std::errc() || end != name.data() + name.size() || number < 3 || number > 16) return {};
  return "COM" + std::to_string(number);
}

// The first word of `rest`, which is taken away.
std::string takeWord(std::string_view& rest) {
  rest = trimmed(rest);
  const auto end = std::min(rest.find(' '), rest.size());
  std::string word(rest.substr(0, end));
  rest = trimmed(rest.substr(end));
  return word;
}

// What is said, on one line that can be read.
std::string shown(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    if (c == kLineDropped)
      text += "(line dropped) ";
    else if (c == '\r')
      text += text.empty() || text.back() == ' ' ? "" : " ";
    else if (c != '\n')
      text += c < 0x20 || c > 0x7E ? '?' : c;
  }
  return std::string(trimmed(text));
}

}  // namespace

Exchange::Exchange(fs::path links, fs::path tables, std::function<void(const std::string&)> print)
    : links_(std::move(links)), tables_(std::move(tables)), print_(std::move(print)) {}

Exchange::~Exchange() {
  std::error_code ignored;
  for (const auto& [port, line] : lines_) fs::remove(linkOf(port), ignored);
}

bool Exchange::command(std::string_view text) {
  std::string_view rest = text;
  const std::string verb = takeWord(rest);
  understood_ = true;
  if (verb.empty()) return true;
  if (verb == "quit") return false;
  if (verb == "status") {
    understood_ = status();
    return true;
  }
  const std::string port = portName(takeWord(rest));
  if (port.empty()) {
    understood_ = refuse("not understood: " + std::string(trimmed(text)));
    return true;
  }
  if (verb == "plug")
    understood_ = plug(port, std::string(rest));
  else if (verb == "unplug")
    understood_ = unplug(port);
  else if (verb == "occupy")
    understood_ = occupy(port);
  else if (verb == "answer")
    understood_ = answer(port, std::string(rest));
  else if (verb == "say")
    understood_ = say(port, std::string(rest));
  else if (verb == "login") {
    const std::string user = takeWord(rest);
    understood_ = login(port, user, std::string(rest));
  } else {
    understood_ = refuse("not understood: " + std::string(trimmed(text)));
  }
  return true;
}

std::vector<int> Exchange::descriptors() const {
  std::vector<int> all;
  for (const auto& [port, line] : lines_)
    if (line->pty) all.push_back(line->pty->descriptor());
  return all;
}

int Exchange::serve(std::uint64_t nowMs) {
  std::uint32_t wait = kLongestWait;
  for (const auto& [port, line] : lines_) {
    if (!line->pty) continue;
    listen(port, *line);
    line->pty->write(line->speech.take(nowMs));
    if (line->speech.speaking()) wait = std::min(wait, line->speech.pace());
  }
  return static_cast<int>(wait);
}

void Exchange::listen(const std::string& port, Line& line) {
  const std::string heard = line.pty->read();
  if (heard.empty()) return;
  const bool atPassword = line.phone->awaitsPassword();
  const std::string said = line.phone->feed(heard);
  if (heard.find(kLineDropped) != std::string::npos) {
    line.speech.clear();
    line.pty->forget();
  }
  line.speech.add(said);
  print_(port + " < " + (atPassword ? "(a password)" : shown(heard)));
  if (!said.empty()) print_(port + " > " + shown(said));
}

Exchange::Line* Exchange::plugged(const std::string& port) {
  const auto found = lines_.find(port);
  if (found != lines_.end() && found->second->phone) return found->second.get();
  refuse("no phone is plugged into " + port);
  return nullptr;
}

bool Exchange::plug(const std::string& port, const std::string& table) {
  if (table.empty() || table.find('/') != std::string::npos) return refuse("which phone is it? plug COM5 nokia");
  std::ifstream file(tables_ / (table + ".phone"), std::ios::binary);
  if (!file) return refuse("there is no " + table + ".phone in " + tables_.string());
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  std::string message;
  auto parsed = parsePhoneTable(text, message);
  if (!parsed) return refuse(table + ".phone, " + message);
  auto line = std::make_unique<Line>();
  line->table = table;
  try {
    line->pty = std::make_unique<Pty>();
  } catch (const std::system_error& error) {
    return refuse(error.what());
  }
  line->phone = std::make_unique<Phone>(std::move(*parsed));
  line->speech = Speech(line->phone->pace());
  if (!placeLink(port, line->pty->path())) return false;
  print_(port + " plugged " + table + " " + line->pty->path());
  lines_[port] = std::move(line);
  return true;
}

bool Exchange::unplug(const std::string& port) {
  if (!lines_.contains(port)) return refuse("nothing is plugged into " + port);
  std::error_code ignored;
  fs::remove(linkOf(port), ignored);
  lines_.erase(port);
  print_(port + " unplugged");
  return true;
}

// A folder in the port's place is refused by Wine in the way in which a port in use is refused by Windows.
bool Exchange::occupy(const std::string& port) {
  if (!placeLink(port, "/")) return false;
  lines_[port] = std::make_unique<Line>();
  print_(port + " occupied");
  return true;
}

bool Exchange::answer(const std::string& port, const std::string& name) {
  Line* line = plugged(port);
  const auto parsed = parseAnswer(name);
  if (!line) return false;
  if (!parsed) return refuse("not an answer: " + name);
  line->phone->switches().answer = *parsed;
  print_(port + " answers " + name);
  return true;
}

bool Exchange::login(const std::string& port, const std::string& user, const std::string& password) {
  Line* line = plugged(port);
  if (!line) return false;
  line->phone->switches().user = user;
  line->phone->switches().password = password;
  print_(port + " lets in " + user);
  return true;
}

bool Exchange::say(const std::string& port, const std::string& text) {
  Line* line = plugged(port);
  if (!line) return false;
  line->speech.add(line->phone->say(text));
  print_(port + " > " + text);
  return true;
}

bool Exchange::status() {
  for (const auto& [port, line] : lines_) {
    if (!line->phone) {
      print_(port + " occupied");
      continue;
    }
    const Phone& phone = *line->phone;
    std::string text = port + " " + line->table + " " + line->pty->path() + " answer=";
    text.append(answerName(phone.switches().answer))
        .append(phone.number().empty() ? " idle"
                : phone.online()       ? " online "
                                       : " calling ");
    print_(text.append(phone.number()));
  }
  if (lines_.empty()) print_("nothing is plugged in");
  return true;
}

bool Exchange::refuse(const std::string& reason) {
  print_("refused: " + reason);
  return false;
}

fs::path Exchange::linkOf(const std::string& port) const { return links_ / lowered(port); }

// Makes the port's link, in one step in place of the one before.
bool Exchange::placeLink(const std::string& port, const fs::path& target) {
  const fs::path fresh = links_ / (lowered(port) + ".new");
  std::error_code error;
  fs::remove(fresh, error);
  fs::create_symlink(target, fresh, error);
  if (!error) fs::rename(fresh, linkOf(port), error);
  return error ? refuse("cannot make " + linkOf(port).string() + ": " + error.message()) : true;
}

}  // namespace pelvaro::line
