#include "operators/operator_list.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "operators/list_lines.h"
#include "operators/mod_encrypt.h"
#include "platform/fake/fake_random.h"

namespace pelvaro::operators {
namespace {

using namespace std::string_literals;
using Views = std::vector<std::string_view>;

// The bytes of a list file with these lines.
std::string fileOf(const std::vector<std::string>& lines) {
  SeededRandom random(1);
  std::string bytes;
  for (const auto& line : lines) bytes += modEncrypt::Scramble(line, random) + "\r\n";
  return bytes;
}

std::vector<std::string> linesOf(const OperatorList& list) {
  SeededRandom random(2);
  std::vector<std::string> lines;
  const std::string bytes = list.bytes(random);
  for (std::size_t at = 0; at < bytes.size();) {
    const auto end = bytes.find("\r\n", at);
    lines.push_back(modEncrypt::Unscramble(std::string_view(bytes).substr(at, end - at)));
    at = end + 2;
  }
  return lines;
}

TEST(OperatorList, TakesTheFirstLineAsHeaderAndEveryOtherAsARecord) {
  const OperatorList list(fileOf({"Country/ City,Operator,APN", "Austria,A1,a1.net,u,p,1.1.1.1,2.2.2.2,,,,x"}));
  EXPECT_EQ(list.header(), "Country/ City,Operator,APN");
  EXPECT_EQ(list.headings(), (Views{"Country/ City", "Operator", "APN"}));
  ASSERT_EQ(list.size(), 1u);
  const Record record = list.record(0);
  EXPECT_EQ(Views(record.fields.begin(), record.fields.end()),
            (Views{"Austria", "A1", "a1.net", "u", "p", "1.1.1.1", "2.2.2.2", "", "", "", "x"}));
  EXPECT_EQ(record.rest, "");
}

TEST(OperatorList, OfAnEmptyFileHasNoHeaderAndNoRecord) {
  const OperatorList list("");
  EXPECT_EQ(list.header(), "");
  EXPECT_TRUE(list.headings().empty());
  EXPECT_EQ(list.size(), 0u);
  EXPECT_TRUE(list.places().empty());
  EXPECT_EQ(linesOf(list), std::vector<std::string>{""});
}

TEST(OperatorList, WithAHeaderAloneHasNoRecord) { EXPECT_EQ(OperatorList(fileOf({"a,b"})).size(), 0u); }

TEST(OperatorList, TakesAnEmptyLineAsARecord) {
  const OperatorList list(fileOf({"h"}) + "\r\n" + fileOf({"", "Austria"}));
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list.field(0, 0), "");
  EXPECT_EQ(list.field(1, 10), "");
  EXPECT_EQ(list.field(2, 0), "Austria");
  EXPECT_EQ(list.places(), (Views{"", "Austria"}));
}

TEST(OperatorList, TakesAnEmptyFirstLineAsTheHeader) {
  const OperatorList list("\r\n" + fileOf({"Austria"}));
  EXPECT_EQ(list.header(), "");
  EXPECT_EQ(list.size(), 1u);
}

TEST(OperatorList, CountsALastLineWithoutCrLf) {
  std::string bytes = fileOf({"h", "Austria,A1"});
  bytes.resize(bytes.size() - 2);
  EXPECT_EQ(OperatorList(bytes).field(0, 1), "A1");
  EXPECT_EQ(OperatorList(fileOf({"h"}) + "\r\n").size(), 1u) << "an empty line, not the end";
}

TEST(OperatorList, EndsLinesAtCrLfOnlySoThatKeysMayBeNulAndLf) {
  // LF and NUL as first key, NUL as last one; a lone CR and a lone LF inside.
  const OperatorList list("\0h+\0\r\n\nK5\0\r\n\nL5\0\r\n\2\r-\n-\0\r\n"s);
  EXPECT_EQ(list.header(), "h");
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list.field(0, 0), "A");
  EXPECT_EQ(list.field(1, 0), "B");
  EXPECT_EQ(list.field(2, 0), "\x0B\x08");
  EXPECT_EQ(OperatorList("\2C-\n-\0"s).size(), 0u) << "LF alone ends no line";
}

TEST(ListLines, EndWhereverACrLfStandsAndNowhereElse) {
  const std::string alphabet = "\r\nx";
  for (int number = 0; number < 3 * 3 * 3 * 3 * 3 * 3 * 3; ++number) {
    std::string bytes;
    for (int left = number; left > 0; left /= 3) bytes += alphabet[static_cast<std::size_t>(left % 3)];
    ListLines lines(bytes);
    std::string joined;
    while (lines.next()) {
      EXPECT_EQ(lines.line().find("\r\n"), std::string_view::npos);
      joined += lines.line();
      if (lines.ended()) joined += "\r\n";
    }
    EXPECT_EQ(joined, bytes);
  }
}

TEST(OperatorList, KeepsFieldsWithLineEndsInThem) {
  const OperatorList list(fileOf({"h", "a\r\nb,\r\n"}));
  EXPECT_EQ(list.field(0, 0), "a\r\nb");
  EXPECT_EQ(list.field(0, 1), "\r\n");
}

TEST(OperatorList, ADamagedLineIsARuntimeError) {
  try {
    OperatorList(fileOf({"h", "Austria"}) +
                 "\x0A\x09"
                 "5\0\r\n"s);
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 5);
  }
}

TEST(OperatorList, FillsUpAShortRecordAndSavesItWithAllElevenFields) {
  const OperatorList list(fileOf({"h", "Austria,A1", ""}));
  EXPECT_EQ(list.field(0, 1), "A1");
  EXPECT_EQ(list.field(0, 2), "");
  EXPECT_EQ(linesOf(list), (std::vector<std::string>{"h", "Austria,A1,,,,,,,,,", ",,,,,,,,,,"}));
}

TEST(OperatorList, KeepsWhatALongRecordHasBehindItsEleventhField) {
  const std::string line = "Austria,1,2,3,4,5,6,7,8,9,10,eleven,,twelve,";
  OperatorList list(fileOf({"h", line}));
  EXPECT_EQ(list.field(0, 10), "10");
  EXPECT_EQ(list.record(0).rest, ",eleven,,twelve,");
  EXPECT_EQ(linesOf(list).at(1), line);
  list.setField(0, 10, "ten");
  EXPECT_EQ(linesOf(list).at(1), "Austria,1,2,3,4,5,6,7,8,9,ten,eleven,,twelve,");
}

TEST(OperatorList, WritesTheHeaderBackUnchanged) {
  for (const char* header : {"", "a", "a,", ",", "a,b,c,d,e,f,g,h,i,j,k,l,m"}) {
    EXPECT_EQ(linesOf(OperatorList(fileOf({header, "x"}))).at(0), header);
  }
}

TEST(OperatorList, KeepsBlanksAndBlankMarksAsTheyAre) {
  const std::string line = "  Austria , A1,[blank],,,,,,,,";
  EXPECT_EQ(linesOf(OperatorList(fileOf({"h", line}))).at(1), line);
}

TEST(OperatorList, SavesAnEditedRecordInItsPlace) {
  OperatorList list(fileOf({"h", "a,1", "b,2", "a,3"}));
  list.setField(1, 2, "internet");
  list.setField(1, 10, "last");
  list.setField(1, 2, list.field(1, 2).substr(0, 5));
  EXPECT_EQ(list.field(1, 2), "inter");
  EXPECT_EQ(linesOf(list), (std::vector<std::string>{"h", "a,1,,,,,,,,,", "b,2,inter,,,,,,,,last", "a,3,,,,,,,,,"}));
}

TEST(OperatorList, AsksForTheMemoryOfASavedFileOnce) {
  std::vector<std::string> lines{"h"};
  for (int i = 0; i < 10'000; ++i) lines.emplace_back();
  OperatorList list(fileOf(lines));
  SeededRandom random(1);
  EXPECT_EQ(list.bytes(random).capacity(), list.bytes(random).size());
  list.setField(1, 1, std::string(500'000, 'x'));
  EXPECT_EQ(list.bytes(random).capacity(), list.bytes(random).size());
}

TEST(OperatorList, AnEditedFieldWithACommaFallsIntoTwoOnTheNextLoad) {
  OperatorList list(fileOf({"h", "a,1,2"}));
  list.setField(0, 1, "x,y");
  EXPECT_EQ(list.field(0, 1), "x,y");
  EXPECT_EQ(list.field(0, 2), "2");
  SeededRandom random(1);
  const OperatorList again(list.bytes(random));
  EXPECT_EQ(again.field(0, 1), "x");
  EXPECT_EQ(again.field(0, 2), "y");
  EXPECT_EQ(again.field(0, 3), "2");
}

TEST(OperatorList, ThePlaceOfARecordCannotBeChanged) {
  OperatorList list(fileOf({"h", "a"}));
  EXPECT_THROW(list.setField(0, 0, "b"), std::out_of_range);
  EXPECT_THROW(list.setField(0, 11, "b"), std::out_of_range);
  EXPECT_THROW(list.setField(1, 1, "b"), std::out_of_range);
  EXPECT_THROW(list.record(1), std::out_of_range);
}

TEST(OperatorList, NamesEachPlaceOnceInTheOrderOfFirstAppearance) {
  const OperatorList list(fileOf({"h", "b,1", "a,2", "b,3", "B,4", "a,5", "", "b"}));
  EXPECT_EQ(list.places(), (Views{"b", "a", "B", ""}));
  EXPECT_EQ(list.rowsOf("b"), (std::vector<std::size_t>{0, 2, 6}));
  EXPECT_EQ(list.rowsOf("B"), (std::vector<std::size_t>{3}));
  EXPECT_EQ(list.rowsOf(""), (std::vector<std::size_t>{5}));
  EXPECT_TRUE(list.rowsOf("c").empty());
}

TEST(OperatorList, StaysItselfWhenItIsMoved) {
  OperatorList list(fileOf({"h", "a,1"}));
  list.setField(0, 2, "x");
  const OperatorList moved = std::move(list);
  EXPECT_EQ(moved.header(), "h");
  EXPECT_EQ(moved.field(0, 1), "1");
  EXPECT_EQ(moved.field(0, 2), "x");
}

TEST(OperatorList, ALargeListIsReadInLineWithItsSize) {
  std::vector<std::string> lines{"h"};
  for (int i = 0; i < 20'000; ++i) lines.push_back("place " + std::to_string(i % 5000) + ",operator");
  const OperatorList list(fileOf(lines));
  EXPECT_EQ(list.places().size(), 5000u);
  EXPECT_EQ(list.rowsOf("place 4999"), (std::vector<std::size_t>{4999, 9999, 14999, 19999}));
}

TEST(SplitFields, OfNothingIsOneEmptyField) {
  EXPECT_EQ(splitFields(""), Views{""});
  EXPECT_EQ(splitFields(","), (Views{"", ""}));
  EXPECT_EQ(splitFields("a,,b"), (Views{"a", "", "b"}));
}

}  // namespace
}  // namespace pelvaro::operators
