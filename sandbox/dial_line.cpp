#include "dial_line.h"

#include <algorithm>

#include "bytes.h"
#include "codes.h"
#include "connection.h"
#include "error_texts.h"

namespace pelvaro::line {
namespace {

// RASENTRYNAMEA and RASCONNA as they are since Windows 2000: longer, with the same beginning.
constexpr std::uint32_t kLongNameRecord = 532, kLongConnectionRecord = 704;

// Answers an enumeration from records that are laid out ready. With `asked` longer than a record the rest is zero.
template <class Record>
std::uint32_t giveRecords(const std::vector<Record>& from, void* records, std::size_t asked, std::uint32_t room) {
  auto* to = static_cast<std::uint8_t*>(records);
  const std::size_t count = std::min<std::size_t>(from.size(), room / asked);
  if (count == 0) return kSuccess;
  if (asked == sizeof(Record)) {
    std::memcpy(to, from.data(), count * sizeof(Record));
    return kSuccess;
  }
  std::memset(to, 0, count * asked);
  for (std::size_t i = 0; i < count; ++i, to += asked) {
    std::memcpy(to, from[i].data(), sizeof(Record));
    putNumber(to, static_cast<std::uint32_t>(asked));
  }
  return kSuccess;
}

}  // namespace

DialLine::DialLine(Phonebook book, Scenario scenario, PortOpener& ports, LineCallbacks callbacks)
    : book_(std::move(book)), ports_(ports), callbacks_(std::move(callbacks)) {
  setScenario(std::move(scenario));
}

DialLine::~DialLine() {
  for (const auto& connection : connections_) connection->release();
}

void DialLine::setScenario(Scenario scenario) {
  scenario_ = std::move(scenario);
  counters_.setScenario(scenario_, now_);
  setPhonebook(std::move(book_));
}

void DialLine::setPhonebook(Phonebook book) {
  book_ = std::move(book);
  std::erase_if(book_.entries, [](const Entry& entry) { return entry.temporary; });
  addTemporaryEntries();
  layNames();
  layConnections();
}

std::uint32_t DialLine::enumEntries(const char* phonebook, void* records, std::uint32_t* size, std::uint32_t* count) {
  if (const auto code = planted("enumEntries")) return code;
  if (!size || !count) return kInvalidParameter;
  if (!isDefault(phonebook)) return kCannotOpenPhonebook;
  const std::uint32_t room = *size;
  std::uint32_t asked = kLongNameRecord;
  if (records && room >= sizeof(std::uint32_t)) {
    asked = getNumber(records);
    if (asked != ras::entry_name::kRecordSize && asked != kLongNameRecord) return kInvalidSize;
    // Every record that will be filled must say its size.
    for (std::size_t i = 1; i < names_.size() && (i + 1) * asked <= room; ++i)
      if (getNumber(static_cast<const std::uint8_t*>(records) + i * asked) != asked) return kInvalidSize;
  }
  const auto needed = static_cast<std::uint32_t>(names_.size() * asked);
  *size = needed;
  *count = static_cast<std::uint32_t>(names_.size());
  if (records) giveRecords(names_, records, asked, room);  // what there is room for
  return room < needed || (!records && needed) ? kBufferTooSmall : kSuccess;
}

std::uint32_t DialLine::enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) {
  if (const auto code = planted("enumDevices")) return done("enumDevices", "", code);
  if (!size || !count) return done("enumDevices", "", kInvalidParameter);
  const std::uint32_t room = *size;
  constexpr std::uint32_t kAsked = ras::device::kRecordSize;
  if (records && room >= sizeof(std::uint32_t) && getNumber(records) != kAsked)
    return done("enumDevices", "", kInvalidSize);
  const auto needed = static_cast<std::uint32_t>(deviceRecords_.size() * kAsked);
  *size = needed;
  *count = static_cast<std::uint32_t>(deviceRecords_.size());  // last: it may be the same variable
  if (room < needed || (!records && needed)) return done("enumDevices", "", kBufferTooSmall);
  if (records) giveRecords(deviceRecords_, records, kAsked, room);
  return done("enumDevices", "", kSuccess);
}

std::uint32_t DialLine::enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) {
  if (const auto code = planted("enumConnections")) return code;
  if (!size || !count) return kInvalidParameter;
  const std::uint32_t room = *size;
  std::uint32_t asked = kLongConnectionRecord;
  if (records && room >= sizeof(std::uint32_t)) {
    asked = getNumber(records);
    if (asked != ras::connection::kRecordSize && asked != kLongConnectionRecord) return kInvalidSize;
  }
  const auto needed = static_cast<std::uint32_t>(connectionRecords_.size() * asked);
  *size = needed;
  *count = static_cast<std::uint32_t>(connectionRecords_.size());
  if (room < needed || (!records && needed)) return kBufferTooSmall;
  return records ? giveRecords(connectionRecords_, records, asked, room) : kSuccess;
}

std::uint32_t DialLine::errorString(std::uint32_t code, char* text, std::uint32_t size) {
  if (const auto result = planted("errorString")) return result;
  const char* found = errorText(code);
  if (!text || !found) return kInvalidParameter;
  const std::size_t length = std::strlen(found);
  if (size <= length) return kBufferTooSmall;
  std::memcpy(text, found, length + 1);
  return kSuccess;
}

std::uint32_t DialLine::planted(const char* verb) { return takePlanted(scenario_.failures, verb); }

std::uint32_t DialLine::done(const char* verb, const std::string& arguments, std::uint32_t result) {
  note(std::string(verb) + " " + arguments + (arguments.empty() ? "-> " : " -> ") + std::to_string(result));
  return result;
}

void DialLine::note(const std::string& text) {
  if (scenario_.journal && callbacks_.journal) callbacks_.journal(text);
}

const Device* DialLine::findDevice(std::string_view name) const {
  for (const Device& device : book_.devices)
    if (device.name == name) return &device;
  return nullptr;
}

void DialLine::addTemporaryEntries() {
  while (book_.entries.size() < scenario_.entries) {
    Entry entry;
    entry.name = "Extra " + std::to_string(book_.entries.size() + 1);
    const std::string device = book_.devices.empty() ? std::string() : book_.devices.front().name;
    entry.record = freshRecord(scenario_.structureSize, {"*99#", device, "", 0});
    entry.temporary = true;
    book_.entries.push_back(std::move(entry));
  }
}

void DialLine::layNames() {
  names_.assign(book_.entries.size(), {});
  for (std::size_t i = 0; i < names_.size(); ++i) {
    putNumber(names_[i].data(), ras::entry_name::kRecordSize);
    putText(names_[i].data() + ras::entry_name::kName.offset, ras::entry_name::kName.width, book_.entries[i].name);
  }
  deviceRecords_.assign(book_.devices.size(), {});
  for (std::size_t i = 0; i < deviceRecords_.size(); ++i) {
    putNumber(deviceRecords_[i].data(), ras::device::kRecordSize);
    putText(deviceRecords_[i].data() + ras::device::kType.offset, ras::device::kType.width, book_.devices[i].type);
    putText(deviceRecords_[i].data() + ras::device::kName.offset, ras::device::kName.width, book_.devices[i].name);
  }
}

void DialLine::layConnections() {
  connectionRecords_.clear();
  const auto add = [this](std::uint32_t handle, const std::string& entry, const std::string& type,
                          const std::string& device) {
    ConnectionRecord& record = connectionRecords_.emplace_back();
    namespace layout = ras::connection;
    putNumber(record.data(), layout::kRecordSize);
    putNumber(record.data() + layout::kHandle.offset, handle);
    putText(record.data() + layout::kEntryName.offset, layout::kEntryName.width, entry);
    putText(record.data() + layout::kDeviceType.offset, layout::kDeviceType.width, type);
    putText(record.data() + layout::kDeviceName.offset, layout::kDeviceName.width, device);
  };
  for (std::uint32_t i = 1; i <= scenario_.connections; ++i)
    add(i, "Extra " + std::to_string(i), "modem", "Extra Modem");
  for (const auto& c : connections_)
    if (c->phase == Connection::Phase::kUp || (scenario_.listDialing && c->phase == Connection::Phase::kDialing))
      add(c->handle, c->entryName, c->deviceType, c->deviceName);
}

// Whether the default phonebook is meant, the only one there is.
bool DialLine::isDefault(const char* phonebook) { return !phonebook || !*phonebook; }

}  // namespace pelvaro::line
