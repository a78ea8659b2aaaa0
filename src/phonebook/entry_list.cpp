#include "phonebook/entry_list.h"

#include <algorithm>
#include <cstring>

#include "base/bytes.h"
#include "base/text.h"
#include "platform/ras_layout.h"

namespace pelvaro {

namespace {

constexpr std::uint32_t kMost = 256;              // entries shown, connections looked at
constexpr std::uint32_t kLargestList = 16 << 20;  // bytes; a service that names more is not believed

std::vector<std::uint8_t> entryBuffer(std::uint32_t size) {
  std::vector<std::uint8_t> buffer(size);
  for (std::size_t i = 0; i + ras::entry_name::kRecordSize <= size; i += ras::entry_name::kRecordSize) {
    put32(buffer, i, ras::entry_name::kRecordSize);
  }
  return buffer;
}

}  // namespace

std::vector<std::string> listEntries(DialService& ras) {
  constexpr std::uint32_t record = ras::entry_name::kRecordSize;
  std::uint32_t size = record * kMost;
  std::uint32_t count = 0;
  std::vector<std::uint8_t> buffer = entryBuffer(size);
  std::uint32_t result = ras.enumEntries(nullptr, buffer.data(), &size, &count);
  if (result == ras::kErrorBufferTooSmall && size > buffer.size() && size <= kLargestList) {
    // More than 256 entries: once more with the size that the service names.
    buffer = entryBuffer(size);
    count = 0;
    result = ras.enumEntries(nullptr, buffer.data(), &size, &count);
  }
  std::vector<std::string> names;
  if (result != 0) return names;
  count = std::min({count, kMost, static_cast<std::uint32_t>(buffer.size() / record)});
  names.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const ConstBytes name =
        ConstBytes(buffer).subspan(i * record + ras::entry_name::kName.offset, ras::entry_name::kName.width);
    names.emplace_back(upToNul(asText(name)));
  }
  return names;
}

ActiveConnections::ActiveConnections(DialService& ras) : ras_(ras), buffer_(ras::connection::kRecordSize * kMost) {}

bool ActiveConnections::isUp(std::string_view entryName) {
  constexpr std::size_t record = ras::connection::kRecordSize;
  constexpr ras::Field field = ras::connection::kEntryName;
  if (entryName.size() > field.width) return false;
  auto size = static_cast<std::uint32_t>(buffer_.size());
  std::uint32_t count = 0;
  put32(buffer_, 0, record);  // only the first record's size is looked at
  if (ras_.enumConnections(buffer_.data(), &size, &count) != 0) return false;
  count = std::min(count, kMost);
  // Names mostly differ in their last byte or in the one behind it, so those are looked at first.
  const std::size_t length = entryName.size();
  if (length == 0) return false;
  const auto last = static_cast<std::uint8_t>(entryName.back());
  const std::uint8_t* name = buffer_.data() + field.offset;
  for (std::size_t i = 0; i < count; ++i, name += record) {
    if (name[length - 1] != last) continue;
    if (length != field.width && name[length] != 0) continue;
    if (std::memcmp(name, entryName.data(), length) == 0) return true;
  }
  return false;
}

}  // namespace pelvaro
