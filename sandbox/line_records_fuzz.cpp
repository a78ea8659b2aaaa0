// Any bytes as the records that a program hands to the practice line: entries that it writes, dial parameters, buffers
// for what is listed. The line takes or refuses them; an entry that it took is given back, and its phonebook can be
// read again.
#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "bytes.h"
#include "codes.h"
#include "dial_line.h"
#include "memory_ports.h"

namespace {

using namespace pelvaro::line;

// The alternate numbers of an entry may lie so far behind its record.
constexpr std::size_t kReach = 65536 + 4096;
constexpr std::uint32_t kAlternate = pelvaro::ras::entry::kAlternateOffset.offset;

void check(bool holds) {
  if (!holds) std::abort();
}

// Hands out the input piece by piece: numbers of two bytes, lowest byte first, and pieces that begin with their size.
struct Input {
  std::string_view left;
  std::uint32_t number() {
    std::uint32_t value = 0;
    for (int shift = 0; shift < 16 && !left.empty(); shift += 8, left.remove_prefix(1)) {
      value |= static_cast<std::uint32_t>(static_cast<unsigned char>(left.front())) << shift;
    }
    return value;
  }
  std::string_view piece() {
    const std::string_view taken = left.substr(0, std::min<std::size_t>(number(), left.size()));
    left.remove_prefix(taken.size());
    return taken;
  }
};

// A buffer of `size` bytes that begins with the next piece of the input.
Bytes buffer(Input& input, std::size_t size) {
  const std::string_view piece = input.piece();
  Bytes bytes(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(std::min(piece.size(), size)));
  bytes.resize(size);
  return bytes;
}

void writeEntry(DialLine& line, Input& input, std::uint32_t structureSize) {
  const std::string name(input.piece());
  static Bytes room(kReach);  // made once: it is large
  const Bytes record = buffer(input, std::clamp<std::size_t>(input.number(), 4, 8192));
  std::copy(record.begin(), record.end(), room.begin());
  if (input.number() % 4 != 1) putNumber(room.data(), structureSize);
  if (line.setEntryProperties(nullptr, name.c_str(), room.data(), static_cast<std::uint32_t>(record.size())) == 0) {
    std::uint32_t size = 0;
    check(line.getEntryProperties(nullptr, name.c_str(), nullptr, &size) == 603 && size >= structureSize);
    Bytes back(size);
    putNumber(back.data(), structureSize);
    check(line.getEntryProperties(nullptr, name.c_str(), back.data(), &size) == 0 && size == back.size());
    putNumber(back.data() + kAlternate, 0);
    putNumber(room.data() + kAlternate, 0);
    check(std::equal(room.begin(), room.begin() + structureSize, back.begin()));
    check(size == structureSize || (back[size - 1] == 0 && back[size - 2] == 0));
  }
  std::fill_n(room.begin(), std::max<std::size_t>(record.size(), kAlternate + 4), std::uint8_t{0});
}

void checkParams(DialLine& line, Input& input) {
  constexpr auto& kSizes = pelvaro::ras::dial_params::kSizes;
  const std::uint32_t choice = input.number();
  Bytes params = buffer(input, kSizes[choice % std::size(kSizes)]);
  if (choice % 4 != 1) putNumber(params.data(), static_cast<std::uint32_t>(params.size()));
  if (getNumber(params.data()) != params.size()) putNumber(params.data(), 5);  // a size that is none
  std::int32_t saved = 0;
  line.setEntryDialParams(nullptr, params.data(), choice % 8 < 4);
  const std::uint32_t found = line.getEntryDialParams(nullptr, params.data(), &saved);
  std::uint32_t connection = 0;
  const std::uint32_t dialed = line.dial(nullptr, params.data(), pelvaro::ras::kNotifierWindow, 7, &connection);
  check((found == 0) == (dialed == 0));
  for (std::uint64_t now = 0; now < 20; ++now) line.step(now * 1000);
  Bytes status = buffer(input, 288);
  if (choice % 16 < 8) putNumber(status.data(), 288);
  line.getConnectStatus(connection, status.data());
  line.hangUp(connection);
}

void list(DialLine& line, Input& input) {
  using Enumeration = std::function<std::uint32_t(void*, std::uint32_t*, std::uint32_t*)>;
  const Enumeration all[] = {
      [&line](void* records, std::uint32_t* size, std::uint32_t* n) {
        return line.enumEntries(nullptr, records, size, n);
      },
      [&line](void* records, std::uint32_t* size, std::uint32_t* n) { return line.enumDevices(records, size, n); },
      [&line](void* records, std::uint32_t* size, std::uint32_t* n) { return line.enumConnections(records, size, n); },
      [&line](void* records, std::uint32_t* size, std::uint32_t* n) {
        *n = 0;
        return line.counters().getIfTable(records, size, true, 0);
      },
  };
  for (const Enumeration& verb : all) {
    auto size = static_cast<std::uint32_t>(input.number() % 8192);
    std::uint32_t count = 0;
    Bytes records = buffer(input, size);
    verb(records.empty() ? nullptr : records.data(), &size, &count);
  }
}

// Reads and deletes an entry by any name, with any buffer.
void checkNames(DialLine& line, Input& input) {
  const std::string name(input.piece());
  auto size = static_cast<std::uint32_t>(input.number() % 4096);
  Bytes record = buffer(input, size);
  line.getEntryProperties(nullptr, name.c_str(), record.empty() ? nullptr : record.data(), &size);
  const bool valid = line.validateEntryName(nullptr, name.c_str()) != kInvalidName;
  const bool deleted = line.deleteEntry(nullptr, name.c_str()) == 0;
  check(valid || !deleted);
}

// Every entry can be had in every size of a record.
void readEntries(DialLine& line, std::uint32_t structureSize) {
  for (const Entry& entry : line.phonebook().entries) {
    std::uint32_t size = 16384;
    Bytes record(size);
    putNumber(record.data(), structureSize);
    check(line.getEntryProperties(nullptr, entry.name.c_str(), record.data(), &size) == 0);
    check(size >= structureSize && getNumber(record.data()) == structureSize);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input{{reinterpret_cast<const char*>(data), size}};
  Scenario scenario;
  scenario.pace = 0;
  scenario.timeout = 1000;
  scenario.structureSize = kRecordSizes[input.number() % std::size(kRecordSizes)];
  scenario.connections = input.number() % 3;
  MemoryPorts ports;
  DialLine line(firstPhonebook(), scenario, ports, {});
  writeEntry(line, input, scenario.structureSize);
  writeEntry(line, input, scenario.structureSize);
  checkParams(line, input);
  list(line, input);
  checkNames(line, input);
  scenario.structureSize = kRecordSizes[input.number() % std::size(kRecordSizes)];
  line.setScenario(scenario);
  readEntries(line, scenario.structureSize);
  if (input.number() % 8 != 1) return 0;  // the text form has a fuzzer of its own
  std::string message;
  check(parsePhonebook(phonebookText(line.phonebook()), message).has_value());
  return 0;
}
