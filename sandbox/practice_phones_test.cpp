#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "practice_phone.h"

namespace pelvaro::line {
namespace {

using namespace std::string_literals;

// What a phone says, its echo left out, to "AT" and to the question who made it.
struct Answers {
  const char* phone;
  std::string greeting, maker;
};
const std::string kOk = "\r\nOK\r\n";
const Answers kPhones[] = {
    {"nokia", kOk, "\r\nNokia\r\n" + kOk},
    {"samsung", kOk, "\r\nSAMSUNG ELECTRONICS CO.\r\n" + kOk},
    {"ericsson", kOk, "\r\nSony Ericsson\r\n" + kOk},
    {"siemens", kOk, "\r\nSIEMENS\r\n" + kOk},
    {"motorola", kOk, "\r\n+CGMI: \"Motorola CE, Copyright 2000\"\r\n" + kOk},
    {"ericsson_old", "\r\n\r\n\r\nERICSSON T39\r\n\r\n\r\n" + kOk + "\r\n\r\n",
     "\r\n\r\n\r\n\r\n\r\nEricsson Mobile Communications AB\r\n\r\n\r\n" + kOk + "\r\n\r\n"},
    {"nokia_capitals", kOk, "\r\nNOKIA\r\n" + kOk},
    {"gipsy_soft", kOk, "\r\nGipsy Soft\r\n" + kOk},
    {"acme", kOk, "\r\nAcme Ltd\r\n" + kOk},
    {"slow", kOk, "\r\nSIEMENS\r\n" + kOk},
    {"only_ok", kOk, kOk},
    {"error", kOk, "\r\nERROR\r\n"},
    {"small_error", kOk, "\r\nerror\r\n"},
    {"garbage", "\r\n\x80\xFE\0\a\r\n"s + kOk, "\r\n\0\xFF\x80\x37#\x1B\r\n\r\nq\0\xC3(Zz\x9F\r\n"s + kOk},
    {"no_maker", kOk, ""},
    {"silent", "", ""},
};

TEST(PracticePhones, EachAnswersAsItsTableSaysWithAndWithoutItsEcho) {
  for (const Answers& answers : kPhones) {
    PhoneTable table = practicePhone(answers.phone);
    table.echo = false;
    Phone quiet(table);
    EXPECT_EQ(quiet.feed("AT\r\n"), answers.greeting) << answers.phone;
    EXPECT_EQ(quiet.feed("AT+cgmi\r\n"), answers.maker) << answers.phone;
    table.echo = true;
    Phone loud(table);
    EXPECT_EQ(loud.feed("AT\r\n"), "AT\r" + answers.greeting) << answers.phone;
    EXPECT_EQ(loud.feed("AT+cgmi\r\n"), "AT+cgmi\r" + answers.maker) << answers.phone;
  }
}

TEST(PracticePhones, ThoseThatEchoAndThoseThatAreSlowAreKnown) {
  const std::set<std::string> quiet = {"siemens", "nokia_capitals", "slow", "garbage", "silent"};
  for (const Answers& answers : kPhones) {
    const PhoneTable table = practicePhone(answers.phone);
    EXPECT_EQ(table.echo, !quiet.contains(answers.phone)) << answers.phone;
    EXPECT_EQ(table.pace, answers.phone == "slow"s ? 1u : 0u) << answers.phone;
  }
}

TEST(PracticePhones, AllButTheSilentOneCanBeDialed) {
  for (const Answers& answers : kPhones) {
    if (answers.phone == "silent"s) continue;
    Phone phone(practicePhone(answers.phone));
    phone.feed("ATE0\r");
    EXPECT_TRUE(phone.feed("AT+CGDCONT=1,\"IP\",\"internet\"\r").find(kOk) != std::string::npos) << answers.phone;
    phone.feed("ATD*99#\rguest\rpractice\r");
    EXPECT_TRUE(phone.online()) << answers.phone;
  }
}

TEST(PracticePhones, NothingBringsTheSilentOneToSpeak) {
  Phone phone(practicePhone("silent"));
  EXPECT_EQ(phone.feed("AT\rATZ\rATE1\rATD*99#\rATH\r+++\x04\rAT\r"), "");
  EXPECT_EQ(phone.number(), "");
}

TEST(PracticePhones, NoneIsForgottenHere) {
  std::set<std::string> known, found;
  for (const Answers& answers : kPhones) known.insert(std::string(answers.phone) + ".phone");
  for (const auto& file : std::filesystem::directory_iterator(PELVARO_PHONES))
    found.insert(file.path().filename().string());
  EXPECT_EQ(found, known);
}

}  // namespace
}  // namespace pelvaro::line
