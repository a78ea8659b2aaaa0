// The reversible scrambling of a line of the operator list: a key character, pairs of a shifted character and a marker,
// a key character. It hides nothing from anybody who looks; it keeps the file from being edited by hand.
#pragma once

#include <string>
#include <string_view>

#include "platform/random_source.h"

namespace pelvaro::modEncrypt {

// The largest key characters, at the line's beginning and at its end.
constexpr int kLargestFirstKey = 10;
constexpr int kLargestLastKey = 5;
// The markers, before the distance of the keys is added to them.
constexpr char kShiftedUp = '+';
constexpr char kShiftedDown = '-';
constexpr char kLost = '*';

// The text scrambled, with keys drawn from `random`: another result each time. Keys with which the text would not come
// back are drawn again, a bounded number of times. A NUL is lost with any keys; then the first ones stand.
std::string Scramble(std::string_view text, RandomSource& random);

// The text of a scrambled line. Throws run-time error 5 when a code lies outside 0 to 255. Kept on purpose: what no
// marker belongs to is left out without a word, and an empty line is an empty text.
std::string Unscramble(std::string_view line);

// The same, appended to a text; `to` is as it was when an error is thrown.
void appendScrambled(std::string_view text, RandomSource& random, std::string& to);
void appendUnscrambled(std::string_view line, std::string& to);

}  // namespace pelvaro::modEncrypt
