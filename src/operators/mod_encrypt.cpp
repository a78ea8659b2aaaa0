#include "operators/mod_encrypt.h"

#include <algorithm>
#include <cstdlib>

#include "base/numbers.h"
#include "base/runtime_error.h"
#include "base/text.h"

namespace pelvaro::modEncrypt {

namespace {

constexpr int kFirstShiftedDown = 127;  // from this code on, the distance already added
// Keys that suit a text come up at least every tenth time.
constexpr int kMostDraws = 1000;

struct Keys {
  int first, last;
  int distance() const { return std::abs(first - last); }
};

int draw(RandomSource& random, int most) {
  // Stored, so that a processor with wider registers rounds the product as all others do.
  const volatile double product = random.next() * most;
  return toInt16(product);
}

Keys drawKeys(RandomSource& random) {
  const int first = draw(random, kLargestFirstKey);
  return {first, draw(random, kLargestLastKey)};
}

int codeOf(char c) { return static_cast<unsigned char>(c); }
char character(int code) { return static_cast<char>(static_cast<unsigned char>(code)); }

// Other keys, with which the text comes back: no character is left out, and none becomes a blank that the trimming
// would take. The last ones drawn when there seem to be none, the given ones when there cannot be any.
Keys suitableKeys(Keys keys, std::string_view text, RandomSource& random) {
  int smallest = 255;
  for (const char c : text) smallest = std::min(smallest, codeOf(c));
  const auto suit = [&] { return smallest > keys.distance() && codeOf(text.front()) + keys.distance() != ' '; };
  for (int draws = 1; smallest > 0 && draws < kMostDraws && !suit(); ++draws) keys = drawKeys(random);
  return keys;
}

// Writes the scrambled line and gives its end.
char* scrambleLine(char* out, std::string_view text, const Keys& keys) {
  const int distance = keys.distance();
  const char up = character(kShiftedUp + distance), down = character(kShiftedDown + distance);
  *out++ = character(keys.first);
  for (const char c : text) {
    const int code = codeOf(c);
    if (code + distance >= kFirstShiftedDown) {
      *out++ = character(code - distance);
      *out++ = down;
    } else if (code - distance < 1) {
      // Kept on purpose: the character itself is not written, and what follows falls out of step.
      *out++ = character(kLost + distance);
    } else {
      *out++ = character(code + distance);
      *out++ = up;
    }
  }
  *out++ = character(keys.last);
  return out;
}

// Writes the text of a body; gives its end, or null when a code lies outside 0 to 255.
char* unscrambleTo(char* out, std::string_view body, int distance) {
  const int up = kShiftedUp + distance, down = kShiftedDown + distance;
  const char* at = body.data();
  for (const char* const end = at + body.size() / 2 * 2; at != end; at += 2) {
    const int code = codeOf(at[0]), marker = codeOf(at[1]);
    if (marker == up && code >= distance) {
      *out++ = character(code - distance);
    } else if (marker == down && code + distance <= 255) {
      *out++ = character(code + distance);
    } else if (marker == up || marker == down || marker < distance) {
      return nullptr;
    }
  }
  return out;
}

}  // namespace

void appendScrambled(std::string_view text, RandomSource& random, std::string& to) {
  const std::size_t before = to.size();
  to.resize(before + 2 * text.size() + 2);
  const Keys first = drawKeys(random);
  char* end = scrambleLine(to.data() + before, text, first);
  // Mostly nothing was lost, so it is looked for only now.
  if (end != to.data() + to.size() || to[before + 1] == ' ') {
    end = scrambleLine(to.data() + before, text, suitableKeys(first, text, random));
  }
  to.resize(static_cast<std::size_t>(end - to.data()));
}

void appendUnscrambled(std::string_view line, std::string& to) {
  if (line.size() < 2) return;  // nothing lies between the first character and the last
  const int distance = std::abs(codeOf(line.front()) - codeOf(line.back()));
  const std::string_view body = trimmed(line.substr(1, line.size() - 2));
  const std::size_t before = to.size();
  to.resize(before + body.size() / 2);
  const char* end = unscrambleTo(to.data() + before, body, distance);
  to.resize(end ? static_cast<std::size_t>(end - to.data()) : before);
  if (!end) throw RuntimeError(5, "Invalid procedure call or argument");
}

std::string Scramble(std::string_view text, RandomSource& random) {
  std::string line;
  appendScrambled(text, random, line);
  return line;
}

std::string Unscramble(std::string_view line) {
  std::string text;
  appendUnscrambled(line, text);
  return text;
}

}  // namespace pelvaro::modEncrypt
