#include "operators/mod_encrypt.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "platform/fake/fake_random.h"

namespace pelvaro::modEncrypt {
namespace {

using namespace std::string_literals;

// Scrambles with given keys; others are drawn when these do not suit.
std::string scrambledWith(int first, int last, std::string_view text) {
  fake::FakeRandom random;
  random.planted = {first / 10.0, last / 5.0};
  return Scramble(text, random);
}

// Scrambles with the same keys at every draw, whatever comes of it.
struct StubbornRandom : RandomSource {
  StubbornRandom(int a, int b) : first(a / 10.0), last(b / 5.0) {}
  double first, last;
  int drawn = 0;
  double next() override { return drawn++ % 2 == 0 ? first : last; }
};
std::string scrambledOnlyWith(int first, int last, std::string_view text) {
  StubbornRandom random(first, last);
  return Scramble(text, random);
}

int errorOf(std::string_view line) {
  try {
    Unscramble(line);
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.description(), "Invalid procedure call or argument");
    return error.number();
  }
  return 0;
}

TEST(Scramble, WritesKeysAroundPairsOfCharacterAndMarker) {
  EXPECT_EQ(scrambledWith(3, 1, "Ab"),
            "\x03"
            "C-d-\x01"s);
  EXPECT_EQ(scrambledWith(1, 3, "Ab"),
            "\x01"
            "C-d-\x03"s)
      << "the distance has no sign";
  EXPECT_EQ(scrambledWith(10, 0, "A"), "\x0AK5\0"s);
}

TEST(Scramble, WithEqualKeysWritesEveryCharacterUnchanged) {
  EXPECT_EQ(scrambledWith(4, 4, "a~\x7F\xFF"),
            "\x04"
            "a+~+\x7F-\xFF-\x04"s);
  EXPECT_EQ(scrambledWith(0, 0, "x"), "\0x+\0"s);
}

TEST(Scramble, ShiftsDownFromTheCodeThatWouldReach127) {
  EXPECT_EQ(scrambledWith(2, 0, "|"), "\x02~-\0"s) << "124 + 2 is below";
  EXPECT_EQ(scrambledWith(2, 0, "}"), "\x02{/\0"s) << "125 + 2 is not";
  EXPECT_EQ(scrambledWith(10, 0, "t"), "\x0A~5\0"s);
  EXPECT_EQ(scrambledWith(10, 0, "u"), "\x0Ak7\0"s);
  EXPECT_EQ(scrambledWith(10, 0, "\xFF\x80"),
            "\x0A\xF5"
            "7v7\0"s);
}

TEST(Scramble, OfNothingIsTheKeysAlone) { EXPECT_EQ(scrambledWith(7, 2, ""), "\x07\x02"); }

TEST(Scramble, RoundsBothKeysHalvesToTheEvenOne) {
  const struct {
    double first, last;
    std::string keys;
  } table[] = {{0.05, 0.1, "\0\0"s}, {0.15, 0.3, "\2\2"s},  {0.25, 0.5, "\2\2"s},   {0.35, 0.7, "\4\4"s},
               {0.45, 0.9, "\4\4"s}, {0.75, 0.0, "\x8\0"s}, {0.95, 0.99, "\xA\5"s}, {0.949, 0.101, "\x9\1"s}};
  for (const auto& row : table) {
    fake::FakeRandom random;
    random.planted = {row.first, row.last};
    EXPECT_EQ(Scramble("", random), row.keys) << row.first;
    EXPECT_EQ(random.drawn, 2);
  }
}

TEST(Scramble, ReachesEveryPairOfKeysAndTheOuterOnesHalfAsOften) {
  SeededRandom random(5);
  int count[11][6] = {};
  for (int i = 0; i < 100'000; ++i) {
    const std::string keys = Scramble("", random);
    ++count[static_cast<int>(keys.at(0))][static_cast<int>(keys.at(1))];
  }
  for (int first = 0; first <= 10; ++first) {
    for (int last = 0; last <= 5; ++last) {
      const double expected = 2000.0 * (first % 10 == 0 ? 0.5 : 1) * (last % 5 == 0 ? 0.5 : 1);
      EXPECT_NEAR(count[first][last], expected, expected * 0.25) << first << " " << last;
    }
  }
}

TEST(Scramble, LosesAControlCharacterUpToTheDistanceAndWritesOnlyTheMarker) {
  EXPECT_EQ(scrambledOnlyWith(9, 0, "a\tb"), "\x09j43k4\0"s);
  EXPECT_EQ(scrambledOnlyWith(10, 0, "\x0A"),
            "\x0A"
            "4\0"s);
  EXPECT_EQ(scrambledOnlyWith(10, 0, "\x0B"),
            "\x0A\x15"
            "5\0"s)
      << "the first one that is kept";
  EXPECT_EQ(scrambledOnlyWith(1, 1, "\0"s), "\x01*\x01"s) << "a NUL with any keys";
}

TEST(Scramble, DrawsTheKeysAgainForATabAtADistanceOf9) {
  fake::FakeRandom random;
  random.planted = {0.9, 0, 1, 0, 0.8, 0};
  EXPECT_EQ(Scramble("a\tb", random),
            "\x08i3\x11"
            "3j3\0"s);
  EXPECT_EQ(random.drawn, 6);
}

TEST(AppendScrambled, LeavesWhatIsThereAlsoWhenItDrawsTheKeysAgain) {
  fake::FakeRandom random;
  random.planted = {0.9, 0, 0.8, 0};
  std::string lines = "a line\r\n";
  appendScrambled("a\tb", random, lines);
  EXPECT_EQ(lines,
            "a line\r\n\x08i3\x11"
            "3j3\0"s);
}

TEST(Scramble, DrawsTheKeysAgainForATextWhoseFirstCharacterWouldBecomeABlank) {
  EXPECT_EQ(Unscramble(scrambledOnlyWith(4, 4, " x")), "") << "what would come of it";
  EXPECT_EQ(Unscramble(scrambledWith(4, 4, " x")), " x");
  EXPECT_EQ(Unscramble(scrambledWith(1, 0, "\x1Fx")), "\x1Fx");
  EXPECT_EQ(scrambledWith(4, 4, "x "), "\x04x+ +\x04") << "one at the end has its marker behind it";
  EXPECT_EQ(scrambledWith(4, 4, "\x1Fx"), "\x04\x1F+x+\x04");
}

TEST(Scramble, EndsWithTextsThatNoKeysSuit) {
  fake::FakeRandom random;
  EXPECT_EQ(Scramble("a\0b"s, random).size(), 7u);
  EXPECT_EQ(random.drawn, 2) << "a NUL is lost anyway";
  // The second character needs equal keys, the first one others.
  Scramble(" \x01", random);
  EXPECT_LE(random.drawn, 2 + 2 * 1000);
  EXPECT_EQ(scrambledOnlyWith(4, 4, " "), "\x04 +\x04");
}

TEST(Unscramble, GivesBackEveryPrintableTextWithAllKeys) {
  std::string all;
  for (int c = 32; c < 256; ++c) all += static_cast<char>(c);
  for (int first = 0; first <= 10; ++first) {
    for (int last = 0; last <= 5; ++last) {
      EXPECT_EQ(Unscramble(scrambledWith(first, last, "A" + all)), "A" + all);
      EXPECT_EQ(scrambledWith(first, last, "A" + all).substr(0, 1), std::string(1, static_cast<char>(first)));
      for (const char a : all) {
        for (const char b : {' ', 'a', '~', '\x7F', '\xFF', a}) {
          const std::string one(1, a), two{a, b};
          ASSERT_EQ(Unscramble(scrambledWith(first, last, one)), one);
          ASSERT_EQ(Unscramble(scrambledWith(first, last, two)), two);
        }
      }
    }
  }
}

TEST(Unscramble, GivesBackEveryTextWithoutNulUnlessKeysOneWayAndTheOtherWouldBeNeeded) {
  SeededRandom random(3);
  for (int i = 0; i < 20'000; ++i) {
    std::string text("x");
    while (random.next() < 0.9) text += static_cast<char>(1 + static_cast<int>(random.next() * 255));
    ASSERT_EQ(Unscramble(Scramble(text, random)), text);
  }
}

TEST(Unscramble, AfterALostTabReadsTheRestOutOfStep) {
  EXPECT_EQ(Unscramble(scrambledOnlyWith(9, 0, "a\tb")), "a");
  EXPECT_EQ(Unscramble(scrambledOnlyWith(9, 0, "\t+++++")), "*++++") << "here characters happen to be markers";
}

TEST(Unscramble, OfKeysAloneOneCharacterOrNothingIsEmpty) {
  EXPECT_EQ(Unscramble("\x03\x01"), "");
  EXPECT_EQ(Unscramble("\0\0"s), "");
  EXPECT_EQ(Unscramble("\x03"), "");
  EXPECT_EQ(Unscramble(""), "");
  EXPECT_EQ(Unscramble("\x03   \x01"), "");
}

TEST(Unscramble, LeavesOutATrailingOddCharacter) {
  EXPECT_EQ(Unscramble("\x02"
                       "C-z\0"s),
            "A");
  EXPECT_EQ(Unscramble("\x02z\0"s), "");
  EXPECT_EQ(Unscramble("\xFFz\0"s), "") << "no error either: there is no marker";
}

TEST(Unscramble, LeavesOutPairsWithAnotherMarker) {
  EXPECT_EQ(Unscramble("\x02"
                       "C-xxD-\0"s),
            "AB");
}

TEST(Unscramble, TrimsTheBodyOfBlanksOnly) {
  EXPECT_EQ(Unscramble("\x02  C-  \0"s), "A");
  EXPECT_EQ(Unscramble("\x04 +x+\x04"), "") << "the leading blank of a text with equal keys, and the rest out of step";
  EXPECT_EQ(Unscramble("\x04\t+x+\x04"), "\tx");
  EXPECT_EQ(Unscramble("\x04\0+x+\x04"s), "\0x"s);
}

TEST(Unscramble, ACodeOutside0To255IsARuntimeError) {
  EXPECT_EQ(errorOf("\x0A\x09"
                    "5\0"s),
            5)
      << "9 - 10";
  EXPECT_EQ(errorOf("\x0A\x0A"
                    "5\0"s),
            0);
  EXPECT_EQ(errorOf("\x0A\xF6"
                    "7\0"s),
            5)
      << "246 + 10";
  EXPECT_EQ(errorOf("\x0A\xF5"
                    "7\0"s),
            0);
  EXPECT_EQ(errorOf("\x0Ax\x09\0"s), 5) << "the marker, 9 - 10";
  EXPECT_EQ(errorOf("\x0Ax\x0A\0"s), 0);
}

TEST(Unscramble, TakesAnyCodesAsKeys) {
  EXPECT_EQ(Unscramble("CF.A"), "") << "the marker is 46 - 2, a comma";
  EXPECT_EQ(Unscramble("CF-A"), "D");
  EXPECT_EQ(Unscramble("\xD4\xFF\xFF\0"s), "\x2B") << "a distance of 212 and the marker 43 + 212";
}

TEST(AppendUnscrambled, LeavesTheTextAsItWasOnAnError) {
  std::string text = "kept";
  EXPECT_THROW(appendUnscrambled("\x0AK5\x09"
                                 "5\0"s,
                                 text),
               RuntimeError);
  EXPECT_EQ(text, "kept");
  appendUnscrambled("\x0AK5\0"s, text);
  EXPECT_EQ(text, "keptA");
}

}  // namespace
}  // namespace pelvaro::modEncrypt
