#include "packages/practice_program.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <utility>

#include "phonebook_file.h"
#include "win32/practice_folder.h"

namespace pelvaro::line {
namespace {

// As the program that started this one has asked for it.
std::string windowStyle() {
  STARTUPINFOA info{};
  info.cb = sizeof info;
  ::GetStartupInfoA(&info);
  return info.dwFlags & STARTF_USESHOWWINDOW ? std::to_string(info.wShowWindow) : "none";
}

std::string currentFolder() {
  char folder[MAX_PATH] = "";
  ::GetCurrentDirectoryA(sizeof folder, folder);
  return folder;
}

}  // namespace

PracticeProgram::PracticeProgram(const std::string& kind, std::string path, std::string usual)
    : path_(std::move(path)), modem_(std::move(usual)) {
  readOrders(kind);
}

void PracticeProgram::readOrders(const std::string& kind) {
  std::ifstream file(practiceFolder() + "\\installers.txt");
  for (std::string whose, word, value; file >> whose >> word && std::getline(file >> std::ws, value);) {
    if (value.ends_with('\r')) value.pop_back();
    if (whose != kind) continue;
    if (word == "exit") exitCode_ = std::atoi(value.c_str());
    if (word == "takes") takes_ = std::strtoul(value.c_str(), nullptr, 10);
    if (word == "adds") modem_ = value;
  }
}

int PracticeProgram::run(const std::string& parameters) {
  const std::string journal = practiceFolder() + "\\programs.txt";
  ::CreateDirectoryA(practiceFolder().c_str(), nullptr);
  append(journal, "started | " + path_ + " | " + parameters + " | show " + windowStyle() + " | in " + currentFolder());
  ::Sleep(takes_);
  addModem();
  append(journal, "ended | " + path_ + " | " + std::to_string(exitCode_));
  return exitCode_;
}

void PracticeProgram::addModem() const {
  const auto blank = modem_.find(' ');
  if (blank == std::string::npos) return;  // "nothing"
  const Device modem{.name = modem_.substr(blank + 1), .type = "modem", .port = modem_.substr(0, blank)};
  const FileLock lock(phonebookMutex());
  if (!lock.held) return;
  PhonebookFile file(practiceFolder() + "\\phonebook.txt");
  Phonebook book = file.reread().value_or(firstPhonebook());  // a damaged one is not replaced
  if (std::find(book.devices.begin(), book.devices.end(), modem) != book.devices.end()) return;
  book.devices.push_back(modem);
  file.save(book);
}

std::string fileOf(void* module) {
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(static_cast<HMODULE>(module), path, sizeof path);
  return path;
}

}  // namespace pelvaro::line
