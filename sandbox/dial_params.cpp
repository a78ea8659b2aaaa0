#include "dial_params.h"

#include "bytes.h"
#include "platform/ras_layout.h"

namespace pelvaro::line {
namespace {

namespace layout = ras::dial_params;

ras::Field nameField(const void* record) {
  return getNumber(record) == layout::kOldestSize ? layout::kOldestEntryName : layout::kEntryName;
}

}  // namespace

DialParams unpackDialParams(const void* record) {
  const auto* bytes = static_cast<const char*>(record);
  const auto name = nameField(record);
  DialParams params;
  params.entryName = getText(bytes + name.offset, name.width);
  const char* at = bytes + name.offset + name.width;
  const auto take = [&at](std::size_t width) {
    std::string text = getText(at, width);
    at += width;
    return text;
  };
  params.number = take(layout::kPhoneNumber);
  params.callbackNumber = take(layout::kCallbackNumber);
  params.user = take(layout::kUserName);
  params.password = take(layout::kPassword);
  params.domain = take(layout::kDomain);
  return params;
}

void putCredentials(void* record, const std::string& user, const std::string& password, const std::string& domain) {
  const auto name = nameField(record);
  char* at = static_cast<char*>(record) + name.offset + name.width + layout::kPhoneNumber + layout::kCallbackNumber;
  putText(at, layout::kUserName, user);
  putText(at + layout::kUserName, layout::kPassword, password);
  putText(at + layout::kUserName + layout::kPassword, layout::kDomain, domain);
}

}  // namespace pelvaro::line
