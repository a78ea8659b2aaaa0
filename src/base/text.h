// Rules for texts. Texts are bytes of the ANSI code page; only blanks (code 32) are ever trimmed.
#pragma once

#include <string>
#include <string_view>

namespace pelvaro {

// The text without its leading and trailing blanks. Tabs, line ends and NULs stay.
std::string_view trimmed(std::string_view text);

// The text up to its first NUL.
std::string_view upToNul(std::string_view text);

// The text with the letters A to Z in lower case; every other byte stays as it is.
std::string lowered(std::string_view text);

// Whether `part` occurs in `text`, bytes compared exactly.
bool contains(std::string_view text, std::string_view part);

}  // namespace pelvaro
