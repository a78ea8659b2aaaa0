// The text form of the phonebook: both directions, from value to text and back, without any file.
#include <charconv>
#include <cstdio>

#include "bytes.h"
#include "phonebook_file.h"

namespace pelvaro::line {
namespace {

constexpr char kHead[] =
    "; The phonebook of the practice line. Written whole by every change; keep its passwords practice ones.\n"
    "; A byte that is no plain character is written %XX. 'bytes OFFSET = HEX' holds what the readable lines do not "
    "say.\n";
constexpr std::size_t kBytesInLine = 32;
constexpr std::string_view kSpecial = "%[]=;";  // they mean something outside of texts
constexpr char kDigits[] = "0123456789ABCDEF";

std::string escaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const bool edgeBlank = c == ' ' && (i == 0 || i + 1 == text.size());
    if (c < 0x20 || c > 0x7E || kSpecial.find(static_cast<char>(c)) != std::string_view::npos || edgeBlank) {
      result += '%';
      result += kDigits[c >> 4];
      result += kDigits[c & 15];
    } else {
      result += static_cast<char>(c);
    }
  }
  return result;
}

template <class Number>
bool parseNumber(std::string_view text, Number& value, int base) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  return error == std::errc() && end == text.data() + text.size();
}

bool parseHex(std::string_view text, Bytes& bytes) {
  bytes.clear();
  if (text.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    std::uint8_t value = 0;
    if (!parseNumber(text.substr(i, 2), value, 16)) return false;
    bytes.push_back(value);
  }
  return true;
}

std::string hex(const std::uint8_t* bytes, std::size_t count) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) {
    result += kDigits[bytes[i] >> 4];
    result += kDigits[bytes[i] & 15];
  }
  return result;
}

void addLine(std::string& text, std::string_view key, std::string_view value) {
  text.append(key).append(" = ").append(value).append("\n");
}

void addEntry(std::string& text, const Entry& entry) {
  text += "\n[entry " + escaped(entry.name) + "]\n";
  const ReadableFields fields = readableFields(entry.record);
  addLine(text, "number", escaped(fields.number));
  addLine(text, "device", escaped(fields.device));
  addLine(text, "suffix", escaped(fields.suffix));
  char options[16];
  std::snprintf(options, sizeof options, "%08X", static_cast<unsigned>(fields.options));
  addLine(text, "options", options);
  addLine(text, "size", std::to_string(entry.record.size()));
  addLine(text, "user", escaped(entry.user));
  addLine(text, "password", escaped(entry.password));
  addLine(text, "password saved", entry.passwordSaved ? "yes" : "no");
  addLine(text, "domain", escaped(entry.domain));
  if (!entry.alternate.empty()) addLine(text, "alternate", hex(entry.alternate.data(), entry.alternate.size()));
  const Bytes base = recordOf(entry.record.size(), fields);
  for (std::size_t i = 0; i < base.size();) {
    if (base[i] == entry.record[i]) {
      ++i;
      continue;
    }
    std::size_t count = 1;
    while (count < kBytesInLine && i + count < base.size() && base[i + count] != entry.record[i + count]) ++count;
    addLine(text, "bytes " + std::to_string(i), hex(entry.record.data() + i, count));
    i += count;
  }
}

// One entry while its lines are read: the record is made when all are known.
struct Draft {
  Entry entry;
  ReadableFields fields;
  std::size_t size = kRecordSizes[std::size(kRecordSizes) - 1];
  std::vector<std::pair<std::size_t, Bytes>> patches;
};

bool finish(Draft& draft, Phonebook& book) {
  draft.entry.record = recordOf(draft.size, draft.fields);
  for (const auto& [offset, bytes] : draft.patches) {
    if (offset < 4 || offset > draft.size || bytes.size() > draft.size - offset) return false;
    std::copy(bytes.begin(), bytes.end(), draft.entry.record.begin() + static_cast<std::ptrdiff_t>(offset));
  }
  book.entries.push_back(std::move(draft.entry));
  return true;
}

bool readEntryLine(Draft& draft, std::string_view key, std::string_view value) {
  if (key == "number") return unescape(value, draft.fields.number);
  if (key == "device") return unescape(value, draft.fields.device);
  if (key == "suffix") return unescape(value, draft.fields.suffix);
  if (key == "user") return unescape(value, draft.entry.user);
  if (key == "password") return unescape(value, draft.entry.password);
  if (key == "domain") return unescape(value, draft.entry.domain);
  if (key == "options") return parseNumber(value, draft.fields.options, 16);
  if (key == "size") return parseNumber(value, draft.size, 10) && isRecordSize(draft.size);
  if (key == "alternate") return parseHex(value, draft.entry.alternate) && draft.entry.alternate.size() <= kLongestText;
  if (key == "password saved") {
    draft.entry.passwordSaved = value == "yes";
    return value == "yes" || value == "no";
  }
  constexpr std::string_view kBytes = "bytes ";
  if (!key.starts_with(kBytes)) return false;
  auto& [offset, bytes] = draft.patches.emplace_back();
  return parseNumber(trimmed(key.substr(kBytes.size())), offset, 10) && parseHex(value, bytes);
}

// A device line: "modem = COM5 Nokia 6230 USB Modem".
bool readDevice(Phonebook& book, std::string_view key, std::string_view value) {
  const auto blank = value.find(' ');
  if (key.empty() || blank == std::string_view::npos) return false;
  Device device;
  if (!unescape(key, device.type) || !unescape(value.substr(0, blank), device.port)) return false;
  if (!unescape(trimmed(value.substr(blank)), device.name)) return false;
  if (device.port.find(' ') != std::string::npos) return false;
  book.devices.push_back(std::move(device));
  return true;
}

// Takes the text line by line. Each step gives what is wrong with its line, null when nothing is.
struct Reader {
  enum Section { kNowhere, kDevices, kEntry, kEnd };
  Phonebook book;
  Draft draft;
  Section section = kNowhere;

  const char* takeLine(std::string_view line) {
    if (line.empty() || line.front() == ';') return nullptr;
    if (section == kEnd) return "there is text behind the end";
    if (line.front() == '[') return takeHeading(line);
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) return "'=' is missing";
    const std::string_view key = trimmed(line.substr(0, equals)), value = trimmed(line.substr(equals + 1));
    const bool understood = section == kDevices ? readDevice(book, key, value)
                            : section == kEntry ? readEntryLine(draft, key, value)
                                                : false;
    return understood ? nullptr : "this line is not understood";
  }

  const char* takeHeading(std::string_view line) {
    if (line.back() != ']') return "a section's name must end with ']'";
    if (section == kEntry && !finish(draft, book)) return "the entry before has bytes outside its record";
    if (book.entries.size() > kMostEntries) return "there are too many entries";
    draft = Draft();
    constexpr std::string_view kEntryHead = "entry ";
    const std::string_view name = line.substr(1, line.size() - 2);
    section = name == "devices" ? kDevices : name == "end" ? kEnd : name.starts_with(kEntryHead) ? kEntry : kNowhere;
    if (section == kNowhere) return "this section is not known";
    if (section == kEntry && !unescape(name.substr(kEntryHead.size()), draft.entry.name))
      return "this name is not understood";
    return nullptr;
  }
};

}  // namespace

std::string phonebookText(const Phonebook& book) {
  std::string text = kHead;
  text += "\n[devices]\n";
  for (const Device& device : book.devices)
    addLine(text, escaped(device.type), escaped(device.port) + " " + escaped(device.name));
  for (const Entry& entry : book.entries)
    if (!entry.temporary) addEntry(text, entry);
  text += "\n[end]\n";
  return text;
}

std::optional<Phonebook> parsePhonebook(std::string_view text, std::string& message) {
  Reader reader;
  int number = 0;
  const char* wrong = nullptr;
  while (!text.empty() && !wrong) {
    ++number;
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    wrong = reader.takeLine(trimmed(line));
  }
  if (!wrong && reader.section != Reader::kEnd) wrong = "the end is missing";
  if (!wrong) return std::move(reader.book);
  message = "line " + std::to_string(number) + ": " + wrong;
  return std::nullopt;
}

}  // namespace pelvaro::line
