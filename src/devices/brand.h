// From a manufacturer's text to a brand word, and from that to the names of the modem driver keys. Text in, value out.
// Used by the probe and, as its public methods of the same names, by the connection editor.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pelvaro::devices {

// Codes 65 to 90 and 97 to 122 alone: no letter of another alphabet, no accent.
constexpr bool isCapitalLetter(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isSmallLetter(char c) { return c >= 'a' && c <= 'z'; }

// The letters a to z of the text, in order. Everything else goes: capitals, digits, blanks, bytes over 127.
std::string lettersOnly(std::string_view text);

// The brand word for a manufacturer's text in any case; a maker without one keeps the text unchanged.
std::string formatBrand(std::string_view text);

// The brand of a phone whose reply names its maker in this line.
std::string brandOfLine(std::string_view line);

// Whether a key's name contains the brand as well as the device's name, all in lower case. No brand fits no key.
bool keyFits(const std::vector<std::string>& modemKeys, const std::string& brand, const std::string& deviceName);

// The first key's name, in lower case, that contains the text as it is written; empty when none does.
std::string GetDevicesBrand(const std::vector<std::string>& modemKeys, std::string_view text);

}  // namespace pelvaro::devices
