#include "devices/reply.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace pelvaro::devices {
namespace {

using namespace std::string_literals;

// Replies as a phone says them, and the line that names its maker.
const struct {
  const char* what;
  std::string reply;
  std::string line;
} kReplies[] = {
    {"with echo", "AT+cgmi\r\r\nNokia\r\n\r\nOK\r\n", "Nokia"},
    {"without echo", "\r\nSIEMENS\r\n\r\nOK\r\n", "SIEMENS"},
    {"cut behind the OK", "AT+cgmi\r\r\nNokia\r\n\r\nOK", "Nokia"},
    {"what was left of the greeting comes first", "\r\nAT+cgmi\r\r\nNokia\r\n\r\nOK\r\n", "Nokia"},
    {"a word before the name", "AT+cgmi\r\r\n+CGMI: \"Motorola CE, Copyright 2000\"\r\n\r\nOK\r\n",
     "+CGMI: \"Motorola CE, Copyright 2000\""},
    {"only the first name counts", "Acme Ltd\r\nNokia\r\nOK\r\n", "Acme Ltd"},
    {"lines without a letter are passed over", "\r\n \r\n12-34 +:\xC4\xE9\r\nNokia\r\nOK\r\n", "Nokia"},
    {"one small letter is enough", "1\r\n2 x\r\nNokia\r\nOK\r\n", "2 x"},
    {"a line with AT is passed over", "SATURN\r\nNokia\r\nOK\r\n", "Nokia"},
    {"also when the name itself has it", "SAMSUNG CORPORATION\r\nOK\r\n", "OK"},
    {"a line with OK is passed over", "NOKIA\r\nAcme\r\n", "Acme"},
    {"a line with ERROR is passed over", "+CME ERROR: 4\r\nAcme\r\nOK\r\n", "Acme"},
    {"the three words count in capitals only", "at ok error At Ok Error\r\nNokia\r\nOK\r\n", "at ok error At Ok Error"},
    {"echo and OK alone: the last line", "AT+cgmi\r\r\nOK\r\n", "OK"},
    {"NOKIA ends the wait and is the last line", "AT+cgmi\r\r\nNOKIA", "NOKIA"},
    {"NOKIA with its OK: the last line is OK", "AT+cgmi\r\r\nNOKIA\r\n\r\nOK\r\n", "OK"},
    {"error alone is a line like any other", "error", "error"},
    {"ERROR and then error", "\r\nERROR\r\nerror\r\n", "error"},
    {"only ERROR", "\r\nERROR\r\n", "ERROR"},
    {"nothing behind the last line end is no line", "OK\r\n", "OK"},
    {"blanks behind the last line end are no line", "OK\r\n   ", "OK"},
    {"a tab behind the last line end is one", "OK\r\n\t", "\t"},
    {"two line ends: the last line is empty", "OK\r\n\r\n", ""},
    {"blanks of the last line may be left", "OK  ", "OK  "},
    {"a lone CR ends no line", "AT+cgmi\rNokia\rOK\r", "AT+cgmi\rNokia\rOK\r"},
    {"a lone LF ends no line", "Acme\nNokia\nOK\n", "Acme\nNokia\nOK\n"},
    {"LF CR is no line end", "AT\n\rNokia\r\nx\r\n", "x"},
    {"CR CR LF leaves a CR", "Nokia\r\r\nOK\r\n", "Nokia\r"},
    {"NULs stay", "Nok\0ia\r\nOK\r\n"s, "Nok\0ia"s},
    {"two phones: the first one's lines are looked at first", "\r\nAcme\r\nOK\r\n\r\nNokia\r\nOK\r\n", "Acme"},
    {"two phones, the first without a name", "AT\r\r\nOK\r\nAT\r\r\nNokia\r\nOK\r\n", "Nokia"},
    {"garbage", "\xFF\x80~\x7F{\r\n\x01\x02OK", "\x01\x02OK"},
    {"blanks alone", "   ", ""},
    {"nothing", "", ""},
};

TEST(ManufacturerLine, OfAReplyInOnePiece) {
  for (const auto& row : kReplies) {
    Reply reply;
    reply.append(row.reply);
    EXPECT_EQ(reply.manufacturerLine(), row.line) << row.what;
  }
}

TEST(ManufacturerLine, IsTheSameHoweverTheReplyIsCut) {
  for (const auto& row : kReplies) {
    for (std::size_t size = 1; size <= row.reply.size(); ++size) {
      Reply reply;
      for (std::size_t at = 0; at < row.reply.size(); at += size) reply.append(row.reply.substr(at, size));
      EXPECT_EQ(reply.manufacturerLine(), row.line) << row.what << " by " << size;
    }
  }
}

TEST(ManufacturerLine, OfALineThatHasNotEndedMayChange) {
  Reply reply;
  reply.append("OK\r\nNo");
  EXPECT_EQ(reply.manufacturerLine(), "No");
  reply.append("kia ");
  EXPECT_EQ(reply.manufacturerLine(), "Nokia ");
  reply.append("ATlas\r\nAcme");
  EXPECT_EQ(reply.manufacturerLine(), "Acme");
}

TEST(ReplyEnd, IsOkInCapitalsOrErrorInSmallLettersAnywhere) {
  const struct {
    const char* text;
    bool ended, ok;
  } table[] = {
      {"", false, false},       {"AT\r\r\n", false, false}, {"O", false, false},         {"ok", false, false},
      {"Ok oK", false, false},  {"O K", false, false},      {"O\r\nK", false, false},    {"ERROR", false, false},
      {"Error", false, false},  {"erro r", false, false},   {"OK", true, true},          {"\r\nOK\r\n", true, true},
      {"NOKIA", true, true},    {"BROKEN", true, true},     {"error", true, false},      {"terrors", true, false},
      {"OK error", true, true}, {"error OK", true, true},   {"+CME error", true, false},
  };
  for (const auto& row : table) {
    Reply whole, piecemeal;
    whole.append(row.text);
    for (const char c : std::string_view(row.text)) piecemeal.append({&c, 1});
    for (const Reply* reply : {&whole, &piecemeal}) {
      EXPECT_EQ(reply->ended(), row.ended) << row.text;
      EXPECT_EQ(reply->saysOk(), row.ok) << row.text;
    }
  }
}

TEST(ReplyEnd, StaysWhateverFollows) {
  Reply reply;
  reply.append("OK\r\n");
  for (int i = 0; i < 1000; ++i) reply.append("noise without an end\r\n");
  EXPECT_TRUE(reply.ended());
}

// A phone that never stops talking: each figure is far over what a machine takes in a time that grows with the square.
TEST(Flood, OfSingleCharactersIsTakenInTimeThatGrowsEvenly) {
  const auto start = std::chrono::steady_clock::now();
  for (const char* noise : {"x", "\r", "e", "O", "1\r\n"}) {
    Reply reply;
    for (int i = 0; i < 300'000; ++i) reply.append(noise);
    EXPECT_FALSE(reply.ended());
    reply.append("OK");
    EXPECT_TRUE(reply.saysOk());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(Flood, OfLinesKeepsTheAnswer) {
  const std::string noise(4096, '7');
  Reply before, behind;
  behind.append("\r\nNokia\r\n");
  for (int i = 0; i < 10'000; ++i) {
    before.append(noise + "\r\n");
    behind.append(noise + "\r\n");
  }
  before.append("Nokia\r\nOK\r\n");
  EXPECT_EQ(before.manufacturerLine(), "Nokia");
  EXPECT_EQ(behind.manufacturerLine(), "Nokia");
}

TEST(Flood, WithoutALineEndKeepsOnlyItsEnd) {
  const std::string noise(4096, 'x');
  Reply reply;
  for (int i = 0; i < 10'000; ++i) reply.append(noise);
  EXPECT_LE(reply.manufacturerLine().size(), 131072u);
  EXPECT_GE(reply.manufacturerLine().size(), 65536u);
  reply.append(" Nokia OK\r\n");
  EXPECT_TRUE(reply.manufacturerLine().ends_with("x Nokia OK"));
}

TEST(Flood, OfALineTwiceTheBoundTheLastBytesAreKept) {
  Reply reply;
  reply.append("a" + std::string(131071, 'x'));
  EXPECT_EQ(reply.manufacturerLine().size(), 131072u);
  reply.append("x");
  EXPECT_EQ(reply.manufacturerLine(), std::string(65536, 'x'));
}

TEST(Flood, ALineUpToTheBoundIsKeptWhole) {
  const std::string line = "Nokia" + std::string(65536 - 5, 'x');
  Reply reply;
  reply.append(line.substr(0, 40000));
  reply.append(line.substr(40000) + "\r\nOK");
  EXPECT_EQ(reply.manufacturerLine(), line);
}

}  // namespace
}  // namespace pelvaro::devices
