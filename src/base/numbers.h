// Rules for numbers: checked 16-bit and 32-bit arithmetic, the two ways of rounding, the number that a text begins
// with, and numbers and times of day as texts. A result that does not fit throws run-time error 6, "Overflow".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pelvaro {

std::int32_t add32(std::int32_t a, std::int32_t b);
std::int32_t subtract32(std::int32_t a, std::int32_t b);
std::int16_t multiply16(std::int16_t a, std::int16_t b);

// A conversion to a whole number: halves go to the even neighbour.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);

// What formatting without decimals does: halves go away from zero.
std::int32_t roundedForText(double value);

// The decimal number that the text begins with, behind blanks: sign, digits, point, exponent. 0 when there is none;
// infinite when it is too large for a double.
double leadingNumber(std::string_view text);

// The text as a number from 0 to 255, or as a 16-bit one, halves to the even neighbour. A text that is not a number
// from end to end, blanks around it aside, throws run-time error 13, "Type mismatch".
std::uint8_t toByte(std::string_view text);
std::int16_t toInt16(std::string_view text);

// How numbers are grouped: the separator, and the group sizes from the right as the system writes them ("3;0": threes
// for ever, "3;2;0": a three, then twos, "3": one three, "0": none). Windows SDK: LOCALE_STHOUSAND, LOCALE_SGROUPING.
struct NumberStyle {
  std::string separator = ",";
  std::string groups = "3;0";
};

// "-4,194,303".
std::string grouped(std::int32_t value, const NumberStyle& style);

// "HH:MM:SS" of a number of seconds, two digits each at least.
std::string durationText(int seconds);

}  // namespace pelvaro
