#include "phone.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace pelvaro::line {
namespace {

PhoneTable tableOf(std::string_view text) {
  std::string message;
  auto table = parsePhoneTable(text, message);
  EXPECT_TRUE(table) << message;
  return table ? *table : PhoneTable();
}

PhoneTable makerTable(const std::string& name) {
  std::ifstream file(std::filesystem::path(PELVARO_PHONES) / (name + ".phone"), std::ios::binary);
  EXPECT_TRUE(file) << name;
  return tableOf(std::string{std::istreambuf_iterator<char>(file), {}});
}

constexpr char kTable[] = "# a phone\nAT+CGMI => Maker | OK\nAT+CGDCONT=* => OK\nAT+CMUTE =>\n";

struct Talk {
  const char* in;
  const char* out;
};

TEST(PhoneTable, DamageIsNamedWithItsLine) {
  std::string message;
  EXPECT_FALSE(parsePhoneTable("echo on\nAT OK\n", message));
  EXPECT_EQ(message, "line 2: expected 'COMMAND => reply | reply' or 'echo on'");
  EXPECT_FALSE(parsePhoneTable("=> OK", message));
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

TEST(Phone, EveryMakersTableNamesItsMaker) {
  constexpr Talk kMakers[] = {{"nokia", "Nokia"},
                              {"samsung", "SAMSUNG ELECTRONICS CO."},
                              {"ericsson", "Sony Ericsson"},
                              {"siemens", "SIEMENS"},
                              {"motorola", "+CGMI: \"Motorola CE, Copyright 2000\""}};
  for (const Talk& maker : kMakers) {
    Phone phone(makerTable(maker.in));
    phone.feed("ATE0\r");
    EXPECT_EQ(phone.feed("AT+CGMI\r"), std::string("\r\n") + maker.out + "\r\n\r\nOK\r\n");
    EXPECT_EQ(phone.feed("AT+CGDCONT=1,\"IP\",\"internet\"\r"), "\r\nOK\r\n");
  }
}

}  // namespace
}  // namespace pelvaro::line
