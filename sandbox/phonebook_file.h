// The practice line's phonebook: its value, its text form, and keeping it in a file that is old or new but never half.
// Used by the DLL wrapping (load, save) and by the dial line (the value).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "entry_record.h"

namespace pelvaro::line {

// A modem that the line offers, and the serial port that its phone is on.
struct Device {
  std::string name;
  std::string type;
  std::string port;
  bool operator==(const Device&) const = default;
};

// A connection with what is saved for dialing it.
struct Entry {
  std::string name;
  Bytes record;     // one of kRecordSizes long, dwSize says the same
  Bytes alternate;  // the alternate numbers with all their NULs, empty when there are none
  std::string user;
  std::string password;
  std::string domain;
  bool passwordSaved = false;
  bool temporary = false;  // made by the scenario; never saved
  bool operator==(const Entry&) const = default;
};

struct Phonebook {
  std::vector<Device> devices;
  std::vector<Entry> entries;
  bool operator==(const Phonebook&) const = default;
};

// More entries than this are not kept.
constexpr std::size_t kMostEntries = 4096;

// What the line offers when it is started for the first time: two modems and three entries.
Phonebook firstPhonebook();

// The text form. Every byte of every record comes back by parsePhonebook(); temporary entries are left out.
std::string phonebookText(const Phonebook& book);

// Reads the text form. Nothing, and a message that names the line, when the text is damaged.
std::optional<Phonebook> parsePhonebook(std::string_view text, std::string& message);

// A phonebook as it was found, and what a person has to be told about it (mostly nothing).
struct LoadedPhonebook {
  Phonebook book;
  std::string message;
};

// The file of a phonebook that other programs may change too. It replaces only what it has read or written itself.
class PhonebookFile {
 public:
  explicit PhonebookFile(std::string path) : path_(std::move(path)) {}

  // Reads the file. A missing one gives the first phonebook. So does a damaged one, which is kept aside as "*.damaged",
  // and one that cannot be read, which stays where it is; what could not be moved or read is never replaced.
  LoadedPhonebook load();
  // Before a change: the phonebook as others have left it since it was last read or written here; mostly nothing.
  std::optional<Phonebook> reread();
  // Replaces the file. False when that failed, or when something else lies there than was last read or written here.
  bool save(const Phonebook& book);

 private:
  // What lies at the path. A missing file has size and hash 0.
  struct Stamp {
    bool exists = false;
    std::size_t size = 0;
    std::uint64_t hash = 0;
    bool operator==(const Stamp&) const = default;
  };
  static Stamp stampOf(std::string_view text);
  std::optional<Stamp> look(std::string& text) const;

  std::string path_;
  std::optional<Stamp> known_;  // what may be replaced; none: nothing may
};

// Replaces the file whole: a kill at any moment leaves the old text or the new one. False when that failed.
bool replaceFile(const std::string& path, std::string_view text);

// The whole file, or nothing when it cannot be read.
std::optional<std::string> readFile(const std::string& path);

}  // namespace pelvaro::line
