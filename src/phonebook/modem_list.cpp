#include "phonebook/modem_list.h"

#include <algorithm>
#include <vector>

#include "base/bytes.h"
#include "base/text.h"
#include "phonebook/entry_properties.h"
#include "platform/ras_layout.h"

namespace pelvaro::Module1 {

namespace {

namespace lay = ras::device;

// More bytes than any system lists devices in; a larger count is cut.
constexpr std::uint32_t kMostBytes = 1 << 20;

std::string textField(ConstBytes record, ras::Field field) {
  return std::string(trimmed(BytesToString(from(record, field.offset), field.width)));
}

}  // namespace

void FillModemList(DialService& ras, Dialogs& dialogs, DeviceFilter& filter,
                   const std::function<void(const std::string&)>& add) {
  std::uint32_t size = 0;
  std::uint32_t count = 0;
  ras.enumDevices(nullptr, &size, &count);
  size = std::min(size, kMostBytes);

  std::vector<std::uint8_t> buffer(std::max<std::size_t>(size, lay::kRecordSize));
  put32(buffer, lay::kSize.offset, lay::kRecordSize);
  // Kept on purpose: one variable is both the size and the count of this call; the count of the first one is used.
  const std::uint32_t result = ras.enumDevices(buffer.data(), &size, &size);
  if (result != 0) {
    dialogs.messageBox(std::to_string(result), kButtonsOk);
    return;
  }
  const std::size_t devices = std::min<std::size_t>(count, buffer.size() / lay::kRecordSize);
  for (std::size_t i = 0; i < devices; ++i) {
    const ConstBytes record = ConstBytes(buffer).subspan(i * lay::kRecordSize, lay::kRecordSize);
    if (!contains(lowered(textField(record, lay::kType)), "modem")) continue;
    const std::string name = textField(record, lay::kName);
    if (!filter.wanted() || filter.validateDevice(name)) add(name);
  }
}

}  // namespace pelvaro::Module1
