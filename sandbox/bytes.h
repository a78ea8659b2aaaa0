// Reading and writing numbers and fixed-width texts in the raw records of the dial-up service, and what the line's text
// files have in common. Used by the practice line only; where the fields lie is said by platform/ras_layout.h.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace pelvaro::line {

// The little-endian number at `at`.
inline std::uint32_t getNumber(const void* at) {
  std::uint32_t value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

// Puts a little-endian number at `at`.
inline void putNumber(void* at, std::uint32_t value) { std::memcpy(at, &value, sizeof value); }

// The text in a field of `width` bytes: up to its first NUL, or all of it when there is none.
inline std::string getText(const void* at, std::size_t width) {
  const char* text = static_cast<const char*>(at);
  return {text, std::find(text, text + width, '\0')};
}

// Fills a field of `width` bytes with a text and NULs; the last byte is always a NUL.
inline void putText(void* at, std::size_t width, std::string_view text) {
  std::memset(at, 0, width);
  if (!text.empty()) std::memcpy(at, text.data(), std::min(text.size(), width - 1));
}

// Capital letters of the plain alphabet made small, as names are compared and commands are matched.
inline std::string lowered(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

// The text without the blanks and tabs at its two ends.
inline std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The longest text in a file.
constexpr std::size_t kLongestText = 4096;

// The text with each "%XX" replaced by the byte of that number. False when a '%' is followed by anything else, and when
// the result is too long.
inline bool unescape(std::string_view text, std::string& result) {
  result.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      result += text[i];
      continue;
    }
    unsigned value = 0;
    const char* digits = text.data() + i + 1;
    if (text.size() - i < 3 || std::from_chars(digits, digits + 2, value, 16).ptr != digits + 2) return false;
    result += static_cast<char>(value);
    i += 2;
  }
  return result.size() <= kLongestText;
}

}  // namespace pelvaro::line
