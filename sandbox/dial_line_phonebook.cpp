// The practice line's phonebook: entries written, read and deleted, and what is saved for dialing them.
#include <algorithm>

#include "bytes.h"
#include "codes.h"
#include "dial_line.h"
#include "dial_params.h"

namespace pelvaro::line {
namespace {

constexpr std::size_t kLongestName = 256;
constexpr char kForbidden[] = "|<>?*\\/:\"";
constexpr std::size_t kMostAlternateBytes = 4000;
constexpr std::size_t kFarthestAlternate = 65536;

// A name that an entry may have: not only blanks, at most 256 characters, no leading dot, none of |<>?*\/:" in it.
bool isValidName(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName && name.front() != '.' &&
         name.find_first_not_of(' ') != std::string_view::npos &&
         name.find_first_of(kForbidden) == std::string_view::npos;
}

// The alternate numbers of a record that is being set. A list inside the buffer ends with two NULs; behind the
// buffer's end only a single text can be told, which is read up to its NUL.
Bytes alternateNumbers(const std::uint8_t* record, std::size_t size, std::size_t structureSize, bool& valid) {
  const std::size_t offset = getNumber(record + ras::entry::kAlternateOffset.offset);
  valid = offset == 0 || (offset >= structureSize && offset <= kFarthestAlternate);
  if (offset == 0 || !valid) return {};
  Bytes numbers;
  for (std::size_t i = 0; numbers.size() < kMostAlternateBytes; ++i) {
    const std::uint8_t c = record[offset + i];
    const bool inside = offset + i + 1 < size;
    numbers.push_back(c);
    if (c == 0 && (!inside || numbers.size() == 1 || record[offset + i + 1] == 0)) break;
  }
  if (numbers.size() == 1) return {};  // an empty text
  numbers.push_back(0);                // the list's own end
  return numbers;
}

}  // namespace

std::uint32_t DialLine::getEntryProperties(const char* phonebook, const char* entry, void* record,
                                           std::uint32_t* size) {
  constexpr char kVerb[] = "getEntryProperties";
  const std::string arguments = entry ? std::string("entry=") + entry : "no entry";
  if (const auto code = planted(kVerb)) return done(kVerb, arguments, code);
  if (!size) return done(kVerb, arguments, kInvalidParameter);
  if (!isDefault(phonebook)) return done(kVerb, arguments, kCannotOpenPhonebook);
  const std::uint32_t structure = scenario_.structureSize;
  Bytes found;  // a null or empty name stands for a new entry
  if (!entry || !*entry) {
    found = freshRecord(structure, {});
  } else if (const Entry* known = findEntry(entry)) {
    found = resized(known->record, structure);
    if (!known->alternate.empty()) {
      putNumber(found.data() + ras::entry::kAlternateOffset.offset, structure);
      found.insert(found.end(), known->alternate.begin(), known->alternate.end());
    }
  } else {
    return done(kVerb, arguments, kCannotFindEntry);
  }
  const std::uint32_t given = *size;
  if (record && given >= sizeof(std::uint32_t) && getNumber(record) != structure)
    return done(kVerb, arguments, kInvalidSize);
  *size = static_cast<std::uint32_t>(found.size());
  if (!record || given < found.size()) return done(kVerb, arguments, kBufferTooSmall);
  std::memcpy(record, found.data(), found.size());
  return done(kVerb, arguments, kSuccess);
}

std::uint32_t DialLine::setEntryProperties(const char* phonebook, const char* entry, const void* record,
                                           std::uint32_t size) {
  constexpr char kVerb[] = "setEntryProperties";
  const std::string arguments = entry ? std::string("entry=") + entry : "no entry";
  if (const auto code = planted(kVerb)) return done(kVerb, arguments, code);
  if (!entry || !record) return done(kVerb, arguments, kInvalidParameter);
  if (!isDefault(phonebook)) return done(kVerb, arguments, kCannotOpenPhonebook);
  const std::uint32_t structure = scenario_.structureSize;
  if (size < structure || getNumber(record) != structure) return done(kVerb, arguments, kInvalidSize);
  if (!isValidName(entry)) return done(kVerb, arguments, kInvalidName);
  const auto* bytes = static_cast<const std::uint8_t*>(record);
  bool valid = false;
  Bytes alternate = alternateNumbers(bytes, size, structure, valid);
  if (!valid) return done(kVerb, arguments, kInvalidParameter);

  Phonebook before = beginChange();
  Entry* target = findEntry(entry);
  if (!target && book_.entries.size() >= kMostEntries) return done(kVerb, arguments, kCannotWritePhonebook);
  if (!target) {
    target = &book_.entries.emplace_back();
    target->name = entry;
  }
  target->record.assign(bytes, bytes + structure);
  putNumber(target->record.data() + ras::entry::kAlternateOffset.offset, 0);
  target->alternate = std::move(alternate);
  target->temporary = false;
  return done(kVerb, arguments, keepPhonebook(before) ? kSuccess : kCannotWritePhonebook);
}

std::uint32_t DialLine::getEntryDialParams(const char* phonebook, void* params, std::int32_t* passwordSaved) {
  constexpr char kVerb[] = "getEntryDialParams";
  if (const auto code = planted(kVerb)) return done(kVerb, "", code);
  if (!params || !passwordSaved) return done(kVerb, "", kInvalidParameter);
  if (!isDefault(phonebook)) return done(kVerb, "", kCannotOpenPhonebook);
  if (!acceptsParams(getNumber(params))) return done(kVerb, "size=" + std::to_string(getNumber(params)), kInvalidSize);
  const std::string name = unpackDialParams(params).entryName;
  const Entry* entry = name.empty() ? nullptr : findEntry(name);
  if (!entry) return done(kVerb, "entry=" + name, kCannotFindEntry);
  putCredentials(params, entry->user, entry->passwordSaved ? kMaskedPassword : "", entry->domain);
  *passwordSaved = entry->passwordSaved;
  return done(kVerb, "entry=" + name, kSuccess);
}

std::uint32_t DialLine::setEntryDialParams(const char* phonebook, const void* params, bool removePassword) {
  constexpr char kVerb[] = "setEntryDialParams";
  if (const auto code = planted(kVerb)) return done(kVerb, "", code);
  if (!params) return done(kVerb, "", kInvalidParameter);
  if (!isDefault(phonebook)) return done(kVerb, "", kCannotOpenPhonebook);
  if (!acceptsParams(getNumber(params))) return done(kVerb, "", kInvalidSize);
  const DialParams given = unpackDialParams(params);
  const std::string arguments = "entry=" + given.entryName + " user=" + given.user;
  Phonebook before = beginChange();
  Entry* entry = given.entryName.empty() ? nullptr : findEntry(given.entryName);
  if (!entry) return done(kVerb, arguments, kCannotFindEntry);
  entry->user = given.user;
  entry->domain = given.domain;
  if (removePassword)
    entry->password.clear();
  else if (given.password != kMaskedPassword)
    entry->password = given.password;
  entry->passwordSaved = !removePassword;
  return done(kVerb, arguments, keepPhonebook(before) ? kSuccess : kCannotWritePhonebook);
}

std::uint32_t DialLine::deleteEntry(const char* phonebook, const char* entry) {
  constexpr char kVerb[] = "deleteEntry";
  const std::string arguments = entry ? std::string("entry=") + entry : "no entry";
  if (const auto code = planted(kVerb)) return done(kVerb, arguments, code);
  if (!entry) return done(kVerb, arguments, kInvalidParameter);
  if (!isDefault(phonebook)) return done(kVerb, arguments, kCannotOpenPhonebook);
  Phonebook before = beginChange();
  const Entry* found = findEntry(entry);
  if (!found) return done(kVerb, arguments, kCannotFindEntry);
  book_.entries.erase(book_.entries.begin() + (found - book_.entries.data()));
  return done(kVerb, arguments, keepPhonebook(before) ? kSuccess : kCannotWritePhonebook);
}

std::uint32_t DialLine::validateEntryName(const char* phonebook, const char* entry) {
  if (const auto code = planted("validateEntryName")) return code;
  if (!entry) return kInvalidParameter;
  if (!isDefault(phonebook)) return kCannotOpenPhonebook;
  if (!isValidName(entry)) return kInvalidName;
  return findEntry(entry) ? kAlreadyExists : kSuccess;
}

std::uint32_t DialLine::editPhonebookEntry(std::uintptr_t, const char* phonebook, const char* entry) {
  const std::string arguments = entry ? std::string("entry=") + entry : "no entry";
  if (const auto code = planted("editPhonebookEntry")) return done("editPhonebookEntry", arguments, code);
  if (!isDefault(phonebook)) return done("editPhonebookEntry", arguments, kCannotOpenPhonebook);
  if (!entry) return done("editPhonebookEntry", arguments, kInvalidParameter);
  return done("editPhonebookEntry", arguments, findEntry(entry) ? kSuccess : kCannotFindEntry);
}

// Names differ by more than the case of their letters.
Entry* DialLine::findEntry(std::string_view name) {
  const std::string wanted = lowered(name);
  for (Entry& entry : book_.entries)
    if (lowered(entry.name) == wanted) return &entry;
  return nullptr;
}

bool DialLine::acceptsParams(std::uint32_t size) const {
  const auto& sizes = scenario_.dialParamsSizes;
  return std::find(sizes.begin(), sizes.end(), size) != sizes.end();
}

// Takes what other programs have made of the phonebook. Gives the phonebook as it is before the change.
Phonebook DialLine::beginChange() {
  if (callbacks_.reread)
    if (auto fresh = callbacks_.reread()) setPhonebook(std::move(*fresh));
  return book_;
}

// Saves the changed phonebook; when that fails the one before is put back.
bool DialLine::keepPhonebook(Phonebook& before) {
  const bool kept = !callbacks_.save || callbacks_.save(book_);
  if (!kept) book_ = std::move(before);
  layNames();
  return kept;
}

}  // namespace pelvaro::line
