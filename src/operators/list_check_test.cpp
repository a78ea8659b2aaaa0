#include "operators/list_check.h"

#include <gtest/gtest.h>

#include <vector>

#include "operators/mod_encrypt.h"

namespace pelvaro::operators {
namespace {

using namespace std::string_literals;
using Faults = std::vector<std::string>;

constexpr const char* kGood = "a,b,c,d,e,f,g,h,i,j,k";

Faults faultsOf(std::string_view bytes) {
  Faults faults;
  checkList(bytes,
            [&](std::size_t line, const std::string& what) { faults.push_back(std::to_string(line) + " " + what); });
  return faults;
}

std::string scrambled(std::string_view text) {
  SeededRandom random(1);
  return modEncrypt::Scramble(text, random) + "\r\n";
}

// A line by itself, as a record behind a good header.
Faults faultsOfLine(const std::string& line) { return faultsOf(scrambled(kGood) + line + "\r\n"); }
// The eleven fields, each empty or a letter, with a distance of 2.
std::string pairs() { return "C-.-.-.-.-.-.-.-.-.-.-"; }

TEST(CheckList, FindsNothingInAGoodList) {
  EXPECT_EQ(faultsOf(scrambled(kGood) + scrambled(kGood)), Faults());
  EXPECT_EQ(checkList(scrambled(kGood) + scrambled(kGood), [](auto...) {}), 1u);
  EXPECT_EQ(faultsOfLine("\2" + pairs() + "\0"s), Faults());
  EXPECT_EQ(faultsOf(scrambled(kGood) + scrambled("a city,b c,d,e,f,g,h,i,j,k,l")), Faults()) << "with blanks";
}

TEST(CheckList, MissesTheHeaderOfAnEmptyFile) {
  EXPECT_EQ(faultsOf(""), Faults{"1 the header is missing"});
  EXPECT_EQ(checkList("", [](auto...) {}), 0u) << "records";
}

TEST(CheckList, NamesALastLineThatIsNotEnded) {
  EXPECT_EQ(faultsOf(scrambled(kGood) + "\2" + pairs() + "\0"s), Faults{"2 not ended by CR LF"});
}

TEST(CheckList, NamesEmptyLinesAndSingleCharacters) {
  EXPECT_EQ(faultsOfLine(""), Faults{"2 empty line"});
  EXPECT_EQ(faultsOfLine("x"), Faults{"2 a single character: the keys are missing"});
}

TEST(CheckList, OfTwoKeysAloneMissesTheFields) {
  const Faults faults = faultsOfLine("\2\1");
  ASSERT_FALSE(faults.empty());
  EXPECT_EQ(faults.front(), "2 1 field, not 11");
}

TEST(CheckList, NamesALineThatCannotBeUnscrambled) {
  EXPECT_EQ(faultsOfLine("\x0A\x09"
                         "5\0"s),
            Faults{"2 cannot be unscrambled (run-time error 5, Invalid procedure call or argument)"});
}

TEST(CheckList, NamesKeysThatNobodyDraws) {
  EXPECT_EQ(faultsOfLine("\x0B" + pairs() + "\x09"),
            Faults{"2 the key characters are 11 and 9, not 0 to 10 and 0 to 5"});
  EXPECT_EQ(faultsOfLine("\x04" + pairs() + "\x06"),
            Faults{"2 the key characters are 4 and 6, not 0 to 10 and 0 to 5"});
  EXPECT_EQ(faultsOfLine("\x0A"
                         "F010101010101010101010\x05"),
            Faults())
      << "the largest ones";
}

TEST(CheckList, NamesWhatIsLeftOutWithoutAWord) {
  EXPECT_EQ(faultsOfLine("\2  " + pairs() + "\0"s), Faults{"2 blanks around the scrambled text are not read"});
  EXPECT_EQ(faultsOfLine("\2" + pairs() + "xxyy\0"s), Faults{"2 characters without a marker are lost: 2"});
  EXPECT_EQ(faultsOfLine("\2" + pairs() + "xx\0"s), Faults{"2 characters without a marker are lost: 1"});
  EXPECT_EQ(faultsOfLine("\2" + pairs() + "x\0"s),
            Faults{"2 one character too many at the end, or the line is out of step"});
}

TEST(CheckList, CountsFields) {
  EXPECT_EQ(faultsOf(scrambled("a")), Faults{"1 1 field, not 11"});
  EXPECT_EQ(faultsOfLine("\2C-.-\0"s), Faults{"2 2 fields, not 11"});
  EXPECT_EQ(faultsOfLine("\2" + pairs() + ".-\0"s), Faults{"2 12 fields, not 11"});
}

TEST(CheckList, WantsACountryOrCityAndNoControlCharacters) {
  EXPECT_EQ(faultsOf(scrambled(kGood) + scrambled(",b,c,d,e,f,g,h,i,j,k")), Faults{"2 no country or city"});
  EXPECT_EQ(faultsOf(scrambled(kGood) + scrambled("a\t,b,c,d,e,f,g,h,i,j,k")),
            Faults{"2 control character 9 in the text"});
  EXPECT_EQ(faultsOf(scrambled(",b,c,d,e,f,g,h,i,j,k")), Faults()) << "a heading may be empty";
}

}  // namespace
}  // namespace pelvaro::operators
