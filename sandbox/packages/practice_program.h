// What the practice packages' programs do in place of installing anything: they write down how they were called, take
// their time, and add a modem to the practice line. Used by the installer and by the modem applet.
#pragma once

#include <string>

namespace pelvaro::line {

// One run of such a program, in the folder of the practice line:
// - "programs.txt" gets a line when it starts and one when it ends,
// - "installers.txt", when there is one, says what it does, by lines of its kind ("cable", "package", "applet"), a word
//   and a value:
//     package exit 3                     its exit code, usually 0
//     cable takes 700                    milliseconds, usually 0
//     applet adds COM9 A Third Modem     the modem that it adds to "phonebook.txt", or "nothing"
class PracticeProgram {
 public:
  // `path`: the program's own file; `usual`: the modem that it adds, "COM8 Siemens S65 USB Modem".
  PracticeProgram(const std::string& kind, std::string path, std::string usual);

  // Gives the exit code. A modem that is there already is not added twice.
  int run(const std::string& parameters);

 private:
  void readOrders(const std::string& kind);
  void addModem() const;

  std::string path_, modem_;
  int exitCode_ = 0;
  unsigned long takes_ = 0;
};

// The file that a module was loaded from; null is the program.
std::string fileOf(void* module);

}  // namespace pelvaro::line
