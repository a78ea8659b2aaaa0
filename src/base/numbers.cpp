#include "base/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "base/runtime_error.h"
#include "base/text.h"

namespace pelvaro {

namespace {

template <typename Integer>
Integer fitting(double whole) {
  // Written so that "not a number" does not fit either.
  if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max())) {
    throw RuntimeError(6, "Overflow");
  }
  return static_cast<Integer>(whole);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t digitsFrom(std::string_view text, std::size_t at) {
  while (at < text.size() && isDigit(text[at])) ++at;
  return at;
}

// The number at the text's beginning, behind blanks, and where it ends: 0 and 0 when there is none.
double scanNumber(std::string_view text, std::size_t& end) {
  const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
  std::size_t at = begin;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  const std::size_t whole = at;
  at = digitsFrom(text, at);
  std::size_t digits = at - whole;
  if (at < text.size() && text[at] == '.') {
    const std::size_t decimals = digitsFrom(text, at + 1);
    digits += decimals - at - 1;
    at = decimals;
  }
  end = 0;
  if (digits == 0) return 0;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
    const std::size_t last = digitsFrom(text, exponent);
    if (last > exponent) at = last;
  }
  end = at;
  // The program never leaves the C locale, so the point is a point.
  return std::strtod(std::string(text.substr(begin, at - begin)).c_str(), nullptr);
}

// The number that the text is from end to end, blanks around it aside.
double wholeNumber(std::string_view text) {
  std::size_t end = 0;
  const double value = scanNumber(text, end);
  if (end == 0 || !trimmed(text.substr(end)).empty()) throw RuntimeError(13, "Type mismatch");
  return value;
}

}  // namespace

std::int32_t add32(std::int32_t a, std::int32_t b) { return fitting<std::int32_t>(static_cast<double>(a) + b); }
std::int32_t subtract32(std::int32_t a, std::int32_t b) { return fitting<std::int32_t>(static_cast<double>(a) - b); }
std::int16_t multiply16(std::int16_t a, std::int16_t b) { return fitting<std::int16_t>(static_cast<double>(a) * b); }

std::int16_t toInt16(double value) { return fitting<std::int16_t>(std::rint(value)); }
std::int32_t toInt32(double value) { return fitting<std::int32_t>(std::rint(value)); }
std::int32_t roundedForText(double value) { return fitting<std::int32_t>(std::round(value)); }

double leadingNumber(std::string_view text) {
  std::size_t end = 0;
  return scanNumber(text, end);
}

std::uint8_t toByte(std::string_view text) { return fitting<std::uint8_t>(std::rint(wholeNumber(text))); }
std::int16_t toInt16(std::string_view text) { return toInt16(wholeNumber(text)); }

std::string grouped(std::int32_t value, const NumberStyle& style) {
  char digits[16];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value);
  std::string_view left(digits, static_cast<std::size_t>(end - digits));
  const bool negative = left.starts_with('-');
  if (negative) left.remove_prefix(1);
  std::string result;
  std::size_t size = 0;
  bool forEver = false;
  for (std::size_t at = 0; at < style.groups.size() || forEver; at += 2) {
    if (at < style.groups.size()) {
      const char digit = style.groups[at];
      if (digit > '0' && digit <= '9') {
        size = static_cast<std::size_t>(digit - '0');
      } else {
        forEver = true;  // the last size goes on
      }
    }
    if (size == 0 || left.size() <= size) break;
    result.insert(0, left.substr(left.size() - size)).insert(0, style.separator);
    left.remove_suffix(size);
  }
  result.insert(0, left);
  if (negative) result.insert(0, 1, '-');
  return result;
}

std::string durationText(int seconds) {
  std::string text;
  for (const int part : {seconds / 3600, seconds / 60 % 60, seconds % 60}) {
    if (!text.empty()) text += ':';
    if (part < 10) text += '0';
    text += std::to_string(part);
  }
  return text;
}

}  // namespace pelvaro
