#include "entry_record.h"

#include <algorithm>
#include <iterator>

#include "bytes.h"
#include "platform/ras_layout.h"

namespace pelvaro::line {
namespace {

namespace layout = ras::entry;

// The width of the device name, which decides where everything behind it lies.
std::size_t deviceWidth(std::size_t recordSize) {
  return recordSize == layout::kOldestSize ? layout::kOldestDeviceName : layout::kDeviceName.width;
}

std::string textAt(const Bytes& record, std::size_t offset, std::size_t width) {
  if (offset >= record.size()) return {};
  return getText(record.data() + offset, std::min(width, record.size() - offset));
}

// Fills the field up to its last byte, as the program does; the record is zero before.
void layText(Bytes& record, std::size_t offset, std::size_t width, const std::string& text) {
  if (offset >= record.size()) return;
  const std::size_t count = std::min({width, record.size() - offset, text.size()});
  std::copy_n(text.begin(), count, record.begin() + static_cast<std::ptrdiff_t>(offset));
}

}  // namespace

bool isRecordSize(std::size_t size) {
  return std::find(std::begin(kRecordSizes), std::end(kRecordSizes), size) != std::end(kRecordSizes);
}

ReadableFields readableFields(const Bytes& record) {
  ReadableFields fields;
  fields.number = textAt(record, layout::kLocalPhoneNumber.offset, layout::kLocalPhoneNumber.width);
  fields.device = textAt(record, layout::kDeviceName.offset, deviceWidth(record.size()));
  fields.options = getNumber(record.data() + layout::kOptions.offset);
  if (record.size() >= layout::kWithOptions2)
    fields.suffix = textAt(record, layout::kDnsSuffix.offset, layout::kDnsSuffix.width);
  return fields;
}

Bytes recordOf(std::size_t size, const ReadableFields& fields) {
  Bytes record(size);
  putNumber(record.data(), static_cast<std::uint32_t>(size));
  putNumber(record.data() + layout::kOptions.offset, fields.options);
  layText(record, layout::kLocalPhoneNumber.offset, layout::kLocalPhoneNumber.width, fields.number);
  layText(record, layout::kDeviceName.offset, deviceWidth(size), fields.device);
  if (size >= layout::kWithOptions2)
    layText(record, layout::kDnsSuffix.offset, layout::kDnsSuffix.width, fields.suffix);
  return record;
}

Bytes freshRecord(std::size_t size, const ReadableFields& fields) {
  constexpr std::uint32_t kIp = 4, kPpp = 1, kPhone = 1, kOptionalEncryption = 3;  // RASNP_Ip RASFP_Ppp RASET_Phone
  Bytes record = recordOf(size, fields);
  putNumber(record.data() + layout::kNetProtocols.offset, kIp);
  putNumber(record.data() + layout::kFramingProtocol.offset, kPpp);
  layText(record, layout::kDeviceType.offset, layout::kDeviceType.width, "modem");
  if (size >= layout::kEncryptionType.offset + layout::kEncryptionType.width) {
    putNumber(record.data() + layout::kType.offset, kPhone);
    putNumber(record.data() + layout::kEncryptionType.offset, kOptionalEncryption);
  }
  return record;
}

Bytes resized(const Bytes& record, std::size_t size) {
  if (record.size() == size) return record;
  // The oldest layout lies differently behind the shorter device name: the name and the rest move on their own.
  const std::size_t name = layout::kDeviceName.offset;
  const std::size_t from = name + deviceWidth(record.size()), to = name + deviceWidth(size);
  const std::size_t nameCount = std::min(from, to) - name;
  const std::size_t rest = std::min(record.size() - from, size - to);
  Bytes result(size);
  std::copy_n(record.begin(), name + nameCount, result.begin());
  std::copy_n(record.begin() + static_cast<std::ptrdiff_t>(from), rest,
              result.begin() + static_cast<std::ptrdiff_t>(to));
  putNumber(result.data(), static_cast<std::uint32_t>(size));
  putNumber(result.data() + layout::kAlternateOffset.offset, 0);
  return result;
}

}  // namespace pelvaro::line
