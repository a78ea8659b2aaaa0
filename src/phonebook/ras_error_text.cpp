#include "phonebook/ras_error_text.h"

#include "base/text.h"

namespace pelvaro::Module1 {

namespace {
constexpr std::int32_t kFirstRasError = 601;
constexpr std::uint32_t kTextSize = 512;
constexpr std::uint32_t kFormatMessageFromSystem = 0x1000;  // winbase.h
}  // namespace

std::string RasErrorText(DialService& ras, std::int32_t code) {
  std::string text(kTextSize, '\0');
  const auto number = static_cast<std::uint32_t>(code);
  if (code < kFirstRasError) {
    ras.formatMessage(kFormatMessageFromSystem, number, 0, text.data(), kTextSize);
  } else {
    ras.errorString(number, text.data(), kTextSize);
  }
  return std::string(upToNul(text));
}

}  // namespace pelvaro::Module1
