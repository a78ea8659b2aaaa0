#include "phonebook_file.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "codes.h"

namespace pelvaro::line {
namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

constexpr std::size_t kLargestFile = 64u << 20;
constexpr int kMostKeptAside = 99;

Entry firstEntry(const char* name, const char* number, const Device& device, bool saved) {
  Entry entry;
  entry.name = name;
  constexpr std::uint32_t kOptions = 0x3D2D011C;
  entry.record = freshRecord(kRecordSizes[std::size(kRecordSizes) - 1], {number, device.name, "internet", kOptions});
  if (saved) {
    entry.user = kPracticeUser;
    entry.password = kPracticePassword;
    entry.passwordSaved = true;
  }
  return entry;
}

// Moves a damaged file to the first free name "x.damaged", "x.damaged2", ...; gives the name, empty when that failed.
std::string keptAside(const std::string& path) {
  for (int n = 1; n <= kMostKeptAside; ++n) {
    const std::string aside = path + ".damaged" + (n == 1 ? "" : std::to_string(n));
    std::error_code error;
    if (std::filesystem::status(aside, error).type() != std::filesystem::file_type::not_found) continue;
    std::filesystem::rename(path, aside, error);
    return error ? std::string() : aside;
  }
  return {};
}

}  // namespace

Phonebook firstPhonebook() {
  Phonebook book;
  book.devices = {{"Nokia 6230 USB Modem", "modem", "COM5"}, {"Samsung D500 USB Modem", "modem", "COM7"}};
  book.entries = {firstEntry("Corvanti-Office", "*99#", book.devices[0], true),
                  firstEntry("Corvanti-Home", "*99***1#", book.devices[1], true),
                  firstEntry("Work", "*99#", book.devices[0], false)};
  return book;
}

std::optional<std::string> readFile(const std::string& path) {
  const File file(std::fopen(path.c_str(), "rb"));
  if (!file) return std::nullopt;
  std::string text;
  char block[4096];
  while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
    text.append(block, count);
    if (text.size() > kLargestFile) return std::nullopt;
  }
  if (std::ferror(file.get())) return std::nullopt;
  return text;
}

bool replaceFile(const std::string& path, std::string_view text) {
  const std::string fresh = path + ".new";
  File file(std::fopen(fresh.c_str(), "wb"));
  if (!file) return false;
  if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) return false;
  if (std::fclose(file.release()) != 0) return false;
  std::error_code error;
  std::filesystem::rename(fresh, path, error);
  return !error;
}

LoadedPhonebook PhonebookFile::load() {
  std::string text, cause;
  known_ = look(text);
  if (!known_)
    return {firstPhonebook(), "The phonebook " + path_ +
                                  " cannot be read. The line starts with a fresh one; changes are not kept until it "
                                  "can be read."};
  if (!known_->exists) return {firstPhonebook(), {}};
  if (auto book = parsePhonebook(text, cause)) return {std::move(*book), {}};
  const std::string aside = keptAside(path_);
  known_ = aside.empty() ? std::nullopt : std::optional(Stamp());
  return {firstPhonebook(), "The phonebook " + path_ + " is damaged: " + cause + ". " +
                                (aside.empty() ? "It could not be kept aside. The line starts with a fresh one; "
                                                 "changes are not kept until it is out of the way."
                                               : "It is kept as " + aside + ". The line starts with a fresh one.")};
}

std::optional<Phonebook> PhonebookFile::reread() {
  std::string text, ignored;
  const auto now = look(text);
  if (!now || now == known_) return std::nullopt;
  std::optional<Phonebook> book;
  if (now->exists && !(book = parsePhonebook(text, ignored))) return std::nullopt;  // damaged: save() will refuse
  known_ = now;
  return book;
}

bool PhonebookFile::save(const Phonebook& book) {
  std::string text;
  const auto now = look(text);
  if (!now || now != known_) return false;
  text = phonebookText(book);
  if (!replaceFile(path_, text)) return false;
  known_ = stampOf(text);
  return true;
}

PhonebookFile::Stamp PhonebookFile::stampOf(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return {true, text.size(), hash};
}

// Reads the file into `text`. Nothing when it cannot be told what lies there, or when it cannot be read.
std::optional<PhonebookFile::Stamp> PhonebookFile::look(std::string& text) const {
  std::error_code error;
  if (std::filesystem::status(path_, error).type() == std::filesystem::file_type::not_found) return Stamp();
  auto found = readFile(path_);
  if (!found) return std::nullopt;
  text = std::move(*found);
  return stampOf(text);
}

}  // namespace pelvaro::line
