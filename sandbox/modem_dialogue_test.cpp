#include "modem_dialogue.h"

#include <gtest/gtest.h>

#include <utility>

namespace pelvaro::line {
namespace {

using Result = ModemDialogue::Result;

// A port whose other end is the test.
struct ScriptedPort : Port {
  std::string written, waiting;
  bool works = true;
  bool write(std::string_view bytes) override {
    written += bytes;
    return works;
  }
  std::string read() override { return std::exchange(waiting, {}); }
  bool gone() override { return !works; }
};

struct ModemDialogueTest : testing::Test {
  // One more turn of the call after the phone has said something; gives what was written to that.
  std::string afterSaying(const char* said) {
    port.waiting += said;
    port.written.clear();
    result = dialogue.connect(now, 100);
    return port.written;
  }
  ScriptedPort port;
  ModemDialogue dialogue{port, {"*99#", "internet", "guest", "practice"}};
  Result result = Result::kWaiting;
  std::uint64_t now = 0;
};

TEST_F(ModemDialogueTest, SendsItsCommandsOneAfterTheOther) {
  EXPECT_EQ(afterSaying(""),
            "\x04"
            "ATZ\r");
  EXPECT_EQ(afterSaying(""), "") << "nothing is sent before the answer";
  EXPECT_EQ(afterSaying("ATZ\r\r\nOK\r\n"), "AT+CGDCONT=1,\"IP\",\"internet\"\r");
  EXPECT_EQ(afterSaying("\r\nO"), "");
  EXPECT_EQ(afterSaying("K\r\n"), "ATD*99#\r");
  EXPECT_EQ(afterSaying("OK\r\nRING\r\n"), "");
  EXPECT_EQ(result, Result::kWaiting);
  EXPECT_EQ(afterSaying("CONNECT 9600\r\n"), "");
  EXPECT_EQ(result, Result::kDone);
}

TEST_F(ModemDialogueTest, WithoutAnAccessPointTheNumberFollowsAtOnce) {
  ModemDialogue other(port, {"1\r2\"3", "", "", ""});
  other.connect(0, 100);
  port.waiting = "OK\r\n";
  port.written.clear();
  other.connect(0, 100);
  EXPECT_EQ(port.written, "ATD123\r") << "control characters and quotes stay out of a command";
}

TEST_F(ModemDialogueTest, EveryFinalReplyHasItsCode) {
  for (const auto& [said, code] : {std::pair{"BUSY", 676u},
                                   {"NO ANSWER", 678u},
                                   {"NO CARRIER", 679u},
                                   {"NO DIALTONE", 680u},
                                   {"NO DIAL TONE", 680u},
                                   {"VOICE", 677u},
                                   {"ERROR", 692u}}) {
    ScriptedPort other;
    ModemDialogue call(other, {"1", "", "", ""});
    call.connect(0, 100);
    other.waiting = std::string("OK\r\n");
    call.connect(0, 100);
    other.waiting = std::string("\r\n") + said + "\r\n";
    EXPECT_EQ(call.connect(0, 100), Result::kFailed);
    EXPECT_EQ(call.error(), code) << said;
  }
}

TEST_F(ModemDialogueTest, SilenceEndsItAfterTheTimeout) {
  afterSaying("");
  now = 99;
  afterSaying("");
  EXPECT_EQ(result, Result::kWaiting);
  now = 100;
  afterSaying("");
  EXPECT_EQ(result, Result::kFailed);
  EXPECT_EQ(dialogue.error(), 692u) << "a modem that does not react";
}

TEST_F(ModemDialogueTest, AnUnansweredCallIs678) {
  afterSaying("");
  afterSaying("OK\r\n");
  afterSaying("OK\r\n");
  now = 100;
  afterSaying("");
  EXPECT_EQ(dialogue.error(), 678u);
}

TEST_F(ModemDialogueTest, APortThatCannotBeWrittenIsDisconnected) {
  port.works = false;
  afterSaying("");
  EXPECT_EQ(result, Result::kFailed);
  EXPECT_EQ(dialogue.error(), 619u);
}

TEST_F(ModemDialogueTest, LogsInWhenAsked) {
  port.waiting = "login?\r\n";
  EXPECT_EQ(dialogue.logIn(0, 100), Result::kWaiting);
  EXPECT_EQ(port.written, "guest\r");
  port.written.clear();
  port.waiting = "\r\npassword?\r\n";
  EXPECT_EQ(dialogue.logIn(50, 100), Result::kWaiting);
  EXPECT_EQ(port.written, "practice\r");
  EXPECT_EQ(dialogue.logIn(149, 100), Result::kWaiting);
  port.waiting = "welcome\r\n";
  EXPECT_EQ(dialogue.logIn(149, 100), Result::kDone);
}

TEST_F(ModemDialogueTest, AFailedLoginHasItsCode) {
  for (const auto& [said, code] : {std::pair{"denied\r\n", 691u}, {"NO CARRIER\r\n", 629u}, {"", 718u}}) {
    ScriptedPort other;
    ModemDialogue call(other, {"1", "", "", ""});
    EXPECT_EQ(call.logIn(0, 100), Result::kWaiting);
    other.waiting = said;
    EXPECT_EQ(call.logIn(100, 100), Result::kFailed);
    EXPECT_EQ(call.error(), code);
  }
}

TEST_F(ModemDialogueTest, APasswordThatReadsLikeAReplyIsNoEcho) {
  ModemDialogue call(port, {"1", "", "login?", "welcome"});
  port.waiting = "login?\r\n";
  call.logIn(0, 100);
  port.waiting = "password?\r\n";
  call.logIn(0, 100);
  port.waiting = "welcome\r\n";
  EXPECT_EQ(call.logIn(0, 100), Result::kDone);
}

TEST_F(ModemDialogueTest, EndlessTextWithoutALineIsForgotten) {
  afterSaying("");
  for (int i = 0; i < 1000; ++i) afterSaying("xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx");
  EXPECT_EQ(result, Result::kWaiting);
  EXPECT_EQ(afterSaying("\r\nOK\r\n"), "AT+CGDCONT=1,\"IP\",\"internet\"\r");
}

TEST_F(ModemDialogueTest, TheEndOfALineThatWasCutIsNoReply) {
  afterSaying("");
  afterSaying(std::string(5000, 'x').c_str());
  EXPECT_EQ(afterSaying("OK\r\n"), "");
  EXPECT_EQ(dialogue.waiting(), 0u);
  EXPECT_EQ(afterSaying("OK\r\n"), "AT+CGDCONT=1,\"IP\",\"internet\"\r");
}

TEST_F(ModemDialogueTest, ANetworkThatAsksForEverEndsAfterTheTimeout) {
  int steps = 0;
  for (Result login = Result::kWaiting; login == Result::kWaiting && steps < 1000; ++steps) {
    port.waiting = "login?\r\npassword?\r\n";
    login = dialogue.logIn(now += 10, 100);
  }
  EXPECT_LT(steps, 20);
  EXPECT_EQ(dialogue.error(), 718u);
  EXPECT_EQ(port.written, "guest\rpractice\r");
}

TEST_F(ModemDialogueTest, AFloodOfTextIsNotKept) {
  std::string flood;
  while (flood.size() < 1000000) flood += "CONNECT\r\nlogin?\r\nOK\r\n";
  port.waiting = flood;
  dialogue.connect(0, 100);
  for (int i = 0; i < 10; ++i) {
    port.waiting = flood;
    if (i < 4)
      dialogue.connect(0, 100);
    else
      dialogue.logIn(0, 100);
    EXPECT_LE(dialogue.waiting(), 4096u);
  }
}

// A port that has something to say whenever it is asked.
struct EndlessPort : ScriptedPort {
  std::string read() override { return "RING\r\n"; }
};

TEST_F(ModemDialogueTest, APhoneThatNeverStopsTalkingDoesNotHoldUpAStep) {
  EndlessPort endless;
  ModemDialogue call(endless, {"1", "", "", ""});
  call.connect(0, 100);
  EXPECT_EQ(call.connect(50, 100), Result::kWaiting);
  EXPECT_EQ(call.connect(100, 100), Result::kFailed);
  EXPECT_EQ(call.logIn(0, 100), Result::kWaiting);
  EXPECT_TRUE(call.stillUp());
}

}  // namespace
}  // namespace pelvaro::line
