#include "commands.h"

#include <gtest/gtest.h>

namespace pelvaro::operators {
namespace {

using namespace std::string_literals;

constexpr const char* kCsv =
    "Country/ City,Operator,APN,User Name,Password,Primary DNS,Secondary DNS,Plan,Network,Notes,More\n"
    "Austria,A1,a1.net,ppp@a1plus.at,ppp,194.48.124.200,,,,,\n"
    "Belgium,\"the \"\"best\"\"\",x,[blank],,,,,,,\xE9\n";

Outcome madeFrom(std::string_view csv, std::uint32_t seed = 1) {
  SeededRandom random(seed);
  return fromCsv(csv, random);
}
std::string faultOf(std::string_view csv) {
  const Outcome outcome = madeFrom(csv);
  EXPECT_EQ(outcome.exit, outcome.message.empty() ? Exit::fine : Exit::faulty);
  EXPECT_EQ(outcome.output.empty(), !outcome.message.empty()) << "a faulty list is not written";
  return outcome.message;
}

TEST(FromCsv, AndBackIsTheSame) {
  const Outcome list = madeFrom(kCsv);
  EXPECT_EQ(list.exit, Exit::fine);
  EXPECT_EQ(list.message, "");
  const Outcome csv = toCsv(list.output);
  EXPECT_EQ(csv.exit, Exit::fine);
  EXPECT_EQ(csv.output, kCsv);
}

TEST(FromCsv, GivesTheSameBytesForTheSameSeed) {
  EXPECT_EQ(madeFrom(kCsv, 7).output, madeFrom(kCsv, 7).output);
  EXPECT_NE(madeFrom(kCsv, 7).output, madeFrom(kCsv, 8).output);
  EXPECT_EQ(madeFrom("a,,,,,,,,,,\n", 1).output, "\4b,-,-,-,-,-,-,-,-,-,-,\5\r\n") << "on every system";
}

TEST(FromCsv, TakesCrLfToo) {
  EXPECT_EQ(toCsv(madeFrom("a,b,c,d,e,f,g,h,i,j,k\r\n").output).output, "a,b,c,d,e,f,g,h,i,j,k\n");
}

TEST(FromCsv, RefusesWhatAListCannotHoldAndNamesTheLine) {
  EXPECT_EQ(faultOf("a,b,c,d,e,f,g,h,i,j,k\n\n\"a,a\",b,c,d,e,f,g,h,i,j,k\n"),
            "line 3: a comma in the field \"a,a\"\n");
  EXPECT_EQ(faultOf("a\na,b,c,d,e,f,g,h,i,j,k,\n"), "line 1: 1 field, not 11\nline 2: 12 fields, not 11\n");
  EXPECT_EQ(faultOf("a\0,b,c,d,e,f,g,h,i,j,k\n"s), "line 1: a character that a list cannot hold\n");
  EXPECT_EQ(faultOf("\"a"), "line 1: a quote that is not closed\n");
  EXPECT_EQ(faultOf("\n"), "line 1: the header is missing\n");
  EXPECT_EQ(faultOf("\"\"\na,b,c,d,e,f,g,h,i,j,k\n"), "line 1: 1 field, not 11\n");
}

TEST(FromCsv, ShowsOfAFieldWhatAMessageTakes) {
  const std::string field = "a\0b\x1B\r\n\x7F,\xE9"s, start = "a?b????,\xE9";
  EXPECT_EQ(faultOf("\"" + field + "\",b,c,d,e,f,g,h,i,j,k\nx\n"),
            "line 1: a comma in the field \"" + start + "\"\nline 3: 1 field, not 11\n");
  EXPECT_EQ(faultOf("\"" + field + std::string(31, 'x') + "\",b,c,d,e,f,g,h,i,j,k\n"),
            "line 1: a comma in the field \"" + start + std::string(31, 'x') + "\"\n");
  EXPECT_EQ(faultOf("\"" + field + std::string(1'000'000, 'x') + "\",b,c,d,e,f,g,h,i,j,k\n"),
            "line 1: a comma in the field \"" + start + std::string(31, 'x') + "...\"\n");
}

TEST(FromCsv, RefusesAByteOrderMarkInTheFirstRowAlone) {
  const std::string refused = "line 1: a byte order mark: this is UTF-8, not Windows-1252\n";
  EXPECT_EQ(faultOf("\xEF\xBB\xBF"s + kCsv), refused);
  EXPECT_EQ(faultOf("\xEF\xBB\xBF"), refused);
  EXPECT_EQ(faultOf("\"\xEF\xBB\xBF\"\n"), refused);
  EXPECT_EQ(faultOf(kCsv + "\xEF\xBB\xBF,b,c,d,e,f,g,h,i,j,k\n"s), "");
}

TEST(FromCsv, NamesTheFirstThousandFaultsAndCountsTheOthers) {
  std::string csv;
  for (int i = 0; i < 3000; ++i) csv += "x\n";
  const std::string faults = faultOf(csv);
  EXPECT_TRUE(faults.ends_with("line 1000: 1 field, not 11\nand 2000 more\n"));
  EXPECT_EQ(faultOf(std::string(1'000'000, ',')), "line 1: 1000001 fields, not 11\n");
  EXPECT_TRUE(faultOf(csv.substr(0, 2000)).ends_with("line 1000: 1 field, not 11\n"));
}

TEST(ToCsv, FillsUpShortRecordsButNotTheHeaderAndKeepsLongOnes) {
  EXPECT_EQ(toCsv("\2c-.-\0\r\n\2c-\0\r\n\r\n"s).output, "a,\na,,,,,,,,,,\n,,,,,,,,,,\n");
  EXPECT_EQ(toCsv("\2c-\0\r\n\2.-.-.-.-.-.-.-.-.-.-.-c-\0"s).output, "a\n,,,,,,,,,,,a\n");
  EXPECT_EQ(toCsv("").output, "");
}

TEST(ToCsv, WritesAnEmptyHeaderSoThatARecordIsNotTakenForIt) {
  const std::string records = madeFrom(kCsv).output;
  for (const char* line : {"\r\n", "\4\4\r\n"}) {
    const Outcome csv = toCsv(line + records);
    EXPECT_EQ(csv.output, "\"\"\n"s + kCsv);
    EXPECT_EQ(faultOf(csv.output), "line 1: 1 field, not 11\n");
  }
}

TEST(ToCsv, StopsAtADamagedLineAndNamesIt) {
  const Outcome outcome = toCsv(
      "\2c-\0\r\n\x0A\x09"
      "5\0\r\n"s);
  EXPECT_EQ(outcome.exit, Exit::faulty);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.message, "line 2: cannot be unscrambled\n");
}

TEST(Check, SaysWhatIsWrongAndHowManyRecordsThereAre) {
  const Outcome good = check(madeFrom(kCsv).output);
  EXPECT_EQ(good.exit, Exit::fine);
  EXPECT_EQ(good.output, "2 records, nothing wrong\n");
  const Outcome bad = check(madeFrom(kCsv).output + "\2c-\0"s);
  EXPECT_EQ(bad.exit, Exit::faulty);
  EXPECT_EQ(bad.output, "line 4: 1 field, not 11\nline 4: not ended by CR LF\n3 records, 2 things wrong\n");
  EXPECT_EQ(check("").output, "line 1: the header is missing\n0 records, 1 thing wrong\n");
}

TEST(Check, NamesTheFirstThousandFaultsAndCountsTheOthers) {
  std::string list;
  for (int i = 0; i < 5001; ++i) list += "x\r\n";
  EXPECT_TRUE(
      check(list).output.ends_with("line 1000: a single character: the keys are missing\nand 4001 more\n"
                                   "5000 records, 5001 things wrong\n"));
}

}  // namespace
}  // namespace pelvaro::operators
