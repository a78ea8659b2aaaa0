#include "phone.h"

#include <gtest/gtest.h>

namespace pelvaro::line {
namespace {

PhoneTable tableOf(std::string_view text) {
  std::string message;
  auto table = parsePhoneTable(text, message);
  EXPECT_TRUE(table) << message;
  return table ? *table : PhoneTable();
}

constexpr char kTable[] = "# a phone\nAT+CGMI => Maker | OK\nAT+CGDCONT=* => OK\nAT+CMUTE =>\n";

struct Talk {
  const char* in;
  const char* out;
};

TEST(PhoneTable, DamageIsNamedWithItsLine) {
  std::string message;
  EXPECT_FALSE(parsePhoneTable("echo on\nAT OK\n", message));
  EXPECT_EQ(message, "line 2: expected 'COMMAND => reply | reply', 'echo on' or 'pace 5'");
  const std::string longLine = "AT => " + std::string(1019, 'x');
  const std::string cases[][2] = {
      {"=> OK", "line 1: expected 'COMMAND => reply | reply', 'echo on' or 'pace 5'"},
      {"pace", "line 1: expected 'COMMAND => reply | reply', 'echo on' or 'pace 5'"},
      {"pace 1001", "line 1: a pace is 0 to 1000 milliseconds"},
      {"pace -1", "line 1: a pace is 0 to 1000 milliseconds"},
      {"pace 5 ms", "line 1: a pace is 0 to 1000 milliseconds"},
      {"\n\nAT => %4", "line 3: a '%' needs two hexadecimal digits"},
      {"AT => %", "line 1: a '%' needs two hexadecimal digits"},
      {"AT => a | %G0", "line 1: a '%' needs two hexadecimal digits"},
      {longLine, "line 1: longer than 1024 characters"},
  };
  for (const auto& [text, expected] : cases) {
    message.clear();
    EXPECT_FALSE(parsePhoneTable(text, message)) << text;
    EXPECT_EQ(message, expected);
  }
  EXPECT_TRUE(parsePhoneTable(longLine.substr(1), message));
}

TEST(PhoneTable, SaysEveryByteAndBlankLines) {
  const PhoneTable table = tableOf("echo off\npace 7\nAT => | %00%ff%7C%25 | %20a%20 | |\n");
  EXPECT_EQ(table.pace, 7u);
  Phone phone(table);
  const std::string middle = {'\0', '\xFF', '|', '%'};
  EXPECT_EQ(phone.feed("AT\r"), "\r\n\r\n\r\n" + middle + "\r\n\r\n a \r\n\r\n\r\n");
}

TEST(Phone, AnswersCommandsWithTheirEcho) {
  constexpr Talk kTalks[] = {
      {"AT\r", "AT\r\r\nOK\r\n"},
      {"AT\r\n", "AT\r\r\nOK\r\n"},
      {"at\r", "at\r\r\nOK\r\n"},
      {"AT+cgmi\r\n", "AT+cgmi\r\r\nMaker\r\n\r\nOK\r\n"},
      {"AT+CGDCONT=1,\"IP\",\"apn\"\r", "AT+CGDCONT=1,\"IP\",\"apn\"\r\r\nOK\r\n"},
      {"AT+CMUTE\r", "AT+CMUTE\r"},
      {"AT+XYZ\r", "AT+XYZ\r\r\nERROR\r\n"},
      {"+++ATZ\r", "ATZ\r\r\nOK\r\n"},
      {"hello\r", ""},
      {"\r\n\r\n", ""},
      {"AT", ""},
  };
  for (const Talk& talk : kTalks) {
    Phone phone(tableOf(kTable));
    EXPECT_EQ(phone.feed(talk.in), talk.out) << talk.in;
  }
}

TEST(Phone, ACommandMayArriveInPieces) {
  Phone phone(tableOf(kTable));
  EXPECT_EQ(phone.feed("A"), "");
  EXPECT_EQ(phone.feed("T"), "");
  EXPECT_EQ(phone.feed("\r"), "AT\r\r\nOK\r\n");
}

TEST(Phone, TheEchoCanBeSwitchedOff) {
  Phone phone(tableOf(kTable));
  EXPECT_EQ(phone.feed("ATE0\r"), "ATE0\r\r\nOK\r\n");
  EXPECT_EQ(phone.feed("AT\r"), "\r\nOK\r\n");
  EXPECT_EQ(phone.feed("ATZ\r"), "ATZ\r\r\nOK\r\n") << "a reset brings the phone's own habit back";
  Phone quiet(tableOf("echo off\n"));
  EXPECT_EQ(quiet.feed("AT\r"), "\r\nOK\r\n");
}

TEST(Phone, ACallLeadsThroughTheLogin) {
  Phone phone(tableOf("echo off\n"));
  EXPECT_EQ(phone.feed("ATDT*99#\r"), "\r\nCONNECT 115200\r\n\r\nlogin?\r\n");
  EXPECT_EQ(phone.number(), "*99#");
  EXPECT_EQ(phone.feed("guest\r"), "\r\npassword?\r\n");
  EXPECT_TRUE(phone.awaitsPassword());
  EXPECT_EQ(phone.feed("practice\r"), "\r\nwelcome\r\n");
  EXPECT_TRUE(phone.online());
  EXPECT_EQ(phone.feed("AT\r"), "") << "this is data now";
  EXPECT_EQ(phone.feed("+++"), "\r\nOK\r\n");
  EXPECT_FALSE(phone.online());
  EXPECT_EQ(phone.feed("ATH\r"), "\r\nOK\r\n");
}

TEST(Phone, ADroppedLineEndsTheCallWithoutAWord) {
  Phone phone(tableOf("echo off\n"));
  phone.feed("ATD1\rguest\rpractice\r");
  ASSERT_TRUE(phone.online());
  EXPECT_EQ(phone.feed("\x04"), "");
  EXPECT_FALSE(phone.online());
  EXPECT_EQ(phone.feed("half a comm\x04"
                       "AT\r"),
            "\r\nOK\r\n");
}

TEST(Phone, NoCarrierSaidEndsTheCall) {
  Phone phone(tableOf("echo off\n"));
  phone.feed("ATD1\rguest\rpractice\r");
  EXPECT_EQ(phone.say("RING"), "\r\nRING\r\n");
  EXPECT_TRUE(phone.online());
  EXPECT_EQ(phone.say("NO CARRIER"), "\r\nNO CARRIER\r\n");
  EXPECT_FALSE(phone.online());
}

TEST(Phone, TheNetworkLetsInOnlyWhomItKnows) {
  Phone phone(tableOf("echo off\n"));
  phone.switches().user = "anna";
  phone.switches().password = "secret";
  phone.feed("ATD1\rguest\r");
  EXPECT_EQ(phone.feed("practice\r"), "\r\ndenied\r\n");
  phone.feed(
      "\x04"
      "ATD1\ranna\r");
  EXPECT_EQ(phone.feed("secret\r"), "\r\nwelcome\r\n");
}

TEST(Phone, SwitchesAndSpecialNumbersDecideACall) {
  struct Case {
    const char* answer;
    const char* number;
    const char* out;
  };
  constexpr Case kCases[] = {{"busy", "1", "\r\nBUSY\r\n"},
                             {"noanswer", "1", "\r\nNO ANSWER\r\n"},
                             {"nocarrier", "1", "\r\nNO CARRIER\r\n"},
                             {"nodialtone", "1", "\r\nNO DIALTONE\r\n"},
                             {"error", "1", "\r\nERROR\r\n"},
                             {"silent", "1", ""},
                             {"mute", "1", ""},
                             {"connect", "676", "\r\nBUSY\r\n"},
                             {"connect", "*99*678#", "\r\nNO ANSWER\r\n"},
                             {"connect", "679", "\r\nNO CARRIER\r\n"},
                             {"connect", "680", "\r\nNO DIALTONE\r\n"},
                             {"connect", "692", "\r\nERROR\r\n"},
                             {"connect", "638", ""},
                             {"connect", "718", "\r\nCONNECT 115200\r\n"},
                             {"connect", "629", "\r\nCONNECT 115200\r\n\r\nNO CARRIER\r\n"}};
  for (const Case& c : kCases) {
    Phone phone(tableOf("echo off\n"));
    phone.switches().answer = parseAnswer(c.answer).value();
    EXPECT_STREQ(answerName(phone.switches().answer), c.answer);
    EXPECT_EQ(phone.feed(std::string("ATD") + c.number + "\r"), c.out) << c.answer << ' ' << c.number;
  }
  EXPECT_FALSE(parseAnswer("perhaps"));
}

TEST(Phone, AMutePhoneAnswersNoCommand) {
  Phone phone(tableOf(kTable));
  phone.switches().answer = Answer::kMute;
  EXPECT_EQ(phone.feed("AT\rAT+CGMI\rATZ\r"), "");
}

TEST(Phone, EndlessTextIsForgotten) {
  Phone phone(tableOf(kTable));
  for (int i = 0; i < 10000; ++i) EXPECT_EQ(phone.feed("xxxxxxxxxxxxxxxx"), "");
  phone.feed("\r");
  EXPECT_EQ(phone.feed("AT\r"), "AT\r\r\nOK\r\n");
}

TEST(Phone, ATableGoesBeforeWhatEveryPhoneCan) {
  Phone phone(tableOf("echo off\nATH => GONE | OK\nATD* => NO CARRIER\nATZ =>\n"));
  EXPECT_EQ(phone.feed("ATH\r"), "\r\nGONE\r\n\r\nOK\r\n");
  EXPECT_EQ(phone.feed("ATD1\r"), "\r\nNO CARRIER\r\n");
  EXPECT_EQ(phone.number(), "");
  phone.feed("ATE1\r");
  EXPECT_EQ(phone.feed("ATZ\r"), "") << "and still brings the phone's own habit back";
}

}  // namespace
}  // namespace pelvaro::line
