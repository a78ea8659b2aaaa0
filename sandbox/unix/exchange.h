// The phones of the practice line on real serial ports: plugging them, carrying their talk, taking a person's commands.
// Used by the phone_exchange program, which owns the waiting.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "phone.h"
#include "pty.h"

namespace pelvaro::line {

class Exchange {
 public:
  // `links` is the folder that gets a link "com5" for COM5, `tables` holds the "*.phone" files, `print` gets one
  // line for everything that happens.
  Exchange(std::filesystem::path links, std::filesystem::path tables, std::function<void(const std::string&)> print);
  // Takes its links away.
  ~Exchange();
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  // Carries out a line: plug, unplug, occupy, answer, login, say, status, quit. False when the line asks to end.
  bool command(std::string_view line);
  // The phones' descriptors, for poll().
  std::vector<int> descriptors() const;
  // Lets every phone hear what was written to it and say what it has to say by now. Gives how many milliseconds the
  // next call can wait when nothing is written meanwhile.
  int serve(std::uint64_t nowMs);
  // Whether the last command was carried out.
  bool understood() const { return understood_; }

 private:
  struct Line;
  void listen(const std::string& port, Line& line);
  Line* plugged(const std::string& port);
  bool plug(const std::string& port, const std::string& table);
  bool unplug(const std::string& port);
  bool occupy(const std::string& port);
  bool answer(const std::string& port, const std::string& name);
  bool login(const std::string& port, const std::string& user, const std::string& password);
  bool say(const std::string& port, const std::string& text);
  bool status();
  bool refuse(const std::string& reason);
  std::filesystem::path linkOf(const std::string& port) const;
  bool placeLink(const std::string& port, const std::filesystem::path& target);

  std::filesystem::path links_, tables_;
  std::function<void(const std::string&)> print_;
  std::map<std::string, std::unique_ptr<Line>> lines_;  // by port, in capitals
  bool understood_ = true;
};

}  // namespace pelvaro::line
