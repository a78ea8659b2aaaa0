#include "phonebook/dial_params.h"

#include "base/bytes.h"
#include "phonebook/entry_properties.h"
#include "platform/ras_layout.h"

namespace pelvaro::Module1 {

namespace {

namespace lay = ras::dial_params;

bool oldest(std::size_t size) { return size == lay::kOldestSize; }

std::vector<std::uint8_t> emptyRecord(std::size_t size) {
  std::vector<std::uint8_t> buffer(size);
  put32(buffer, lay::kSize.offset, static_cast<std::uint32_t>(size));
  return buffer;
}

}  // namespace

std::uint32_t GetEntryDialParams(DialService& ras, std::vector<std::uint8_t>& buffer, const char* phonebook,
                                 const std::string& entryName, bool& passwordSaved) {
  std::uint32_t result = 0;
  std::int32_t saved = 0;
  for (const std::size_t size : lay::kSizes) {
    wipe(buffer.data(), buffer.size());
    buffer = emptyRecord(size);
    CopyStringToBytes(from(Bytes(buffer), lay::kEntryName.offset), entryName,
                      oldest(size) ? lay::kOldestAskedName : lay::kAskedName);
    result = ras.getEntryDialParams(phonebook, buffer.data(), &saved);
    if (result == 0) break;  // any other result, 623 included, goes on to the next size
  }
  passwordSaved = saved != 0;
  return result;
}

std::uint32_t acceptedDialParamsSize(DialService& ras) {
  for (const std::size_t size : lay::kSizes) {
    std::vector<std::uint8_t> buffer = emptyRecord(size);
    std::int32_t saved = 0;
    // 623 says that the size was taken and only the empty name was not found.
    if (ras.getEntryDialParams(nullptr, buffer.data(), &saved) == ras::kErrorCannotFindPhonebookEntry) {
      return static_cast<std::uint32_t>(size);
    }
  }
  return 0;
}

std::vector<std::uint8_t> packDialParams(const DialRecord& record, std::uint32_t size) {
  std::vector<std::uint8_t> buffer = emptyRecord(size);
  std::size_t offset = lay::kEntryName.offset;
  const auto put = [&](const std::string& text, std::size_t width) {
    CopyStringToBytes(from(Bytes(buffer), offset), text, width);
    offset += width;
  };
  put(record.EntryName, oldest(size) ? lay::kOldestEntryName.width : lay::kEntryName.width);
  put(record.PhoneNumber, lay::kPhoneNumber);
  put(record.CallbackNumber, lay::kCallbackNumber);
  put(record.UserName, lay::kUserName);
  put(record.Password, lay::kPassword);
  put(record.Domain, lay::kDomain);
  return buffer;
}

}  // namespace pelvaro::Module1
