#include "devices/probe.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/fake/fake_event_loop.h"
#include "platform/fake/fake_serial_port.h"

namespace pelvaro::devices {
namespace {

using fake::Lines;
using fake::phoneThatSays;

const std::vector<std::string> kKeys = {"Nokia 6230 USB Modem", "Samsung D500 USB Modem", "Siemens S65 Modem"};

fake::Phone phoneOf(const std::string& maker) {
  return phoneThatSays({{"AT\r\n", "AT\r\r\nOK\r\n"}, {"AT+cgmi\r\n", "AT+cgmi\r\r\n" + maker + "\r\n\r\nOK\r\n"}});
}

struct ProbeTest : testing::Test {
  fake::Journal journal;
  fake::FakeSerialPort port{journal};
  fake::FakeEventLoop loop{journal};
  Probe probe{port, loop};

  void plug(int number, fake::Phone phone) { port.lines[number] = {.phone = std::move(phone)}; }
  bool validate(const std::string& device) { return probe.validateDevice(device, kKeys); }
  // A journal without the questions whether ports can be opened and without the yields.
  static Lines talk(Lines lines) {
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("CanOpen") || line == "Yield"; });
    return lines;
  }
  Lines said() { return talk(journal.take()); }
};

using COMAvailableVB = ProbeTest;
using OpenCOMPort = ProbeTest;
using ValidateDevice = ProbeTest;

TEST_F(COMAvailableVB, AsksForTheDeviceNameWithTheNumberInDecimal) {
  plug(4, {});
  plug(16, {});
  const struct {
    std::int16_t number;
    const char* name;
    bool expected;
  } table[] = {{3, "3", false}, {4, "4", true},    {10, "10", false},      {16, "16", true},
               {0, "0", false}, {-1, "-1", false}, {32767, "32767", false}};
  for (const auto& row : table) {
    EXPECT_EQ(probe.COMAvailableVB(row.number), row.expected) << row.number;
    EXPECT_EQ(journal.take(), (Lines{"CanOpen \\\\.\\COM" + std::string(row.name)}));
  }
}

TEST_F(OpenCOMPort, YieldsOpensSaysAtAndLeavesThePortOpen) {
  plug(12, phoneOf("Nokia"));
  EXPECT_TRUE(probe.OpenCOMPort(12));
  EXPECT_EQ(journal.take(), (Lines{"Yield", "Open 12 115200,N,8,1", "Write AT\r\n", "Yield"}));
  EXPECT_EQ(port.number, 12);
}

TEST_F(OpenCOMPort, ClosesAPortThatIsStillOpenFirst) {
  plug(4, phoneOf("Nokia"));
  plug(5, phoneOf("Nokia"));
  probe.OpenCOMPort(4);
  journal.take();
  EXPECT_TRUE(probe.OpenCOMPort(5));
  EXPECT_EQ(journal.take(), (Lines{"Close 4", "Yield", "Open 5 115200,N,8,1", "Write AT\r\n", "Yield"}));
}

TEST_F(OpenCOMPort, ASilentPhoneIsGivenUpAfter5001Polls) {
  plug(5, {});
  EXPECT_FALSE(probe.OpenCOMPort(5));
  EXPECT_EQ(port.reads, 5001);
  const Lines lines = journal.take();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Yield"), 1 + 5001);
  EXPECT_EQ(port.number, 5) << "it is not closed here";
}

TEST_F(OpenCOMPort, AnAnswerInTheLastPollCounts) {
  for (const bool inTime : {true, false}) {
    plug(5, {});
    port.reads = 0;
    loop.onYield = [&, inTime] {
      if (port.reads == (inTime ? 5000 : 5001)) port.lines[5].arrived = "OK";
    };
    EXPECT_EQ(probe.OpenCOMPort(5), inTime);
    EXPECT_EQ(port.reads, 5001);
  }
}

TEST_F(OpenCOMPort, EndsAtOkOrErrorAndOnlyOkIsTrue) {
  const struct {
    const char* answer;
    bool expected;
    int reads;
  } table[] = {
      {"AT\r\r\nOK\r\n", true, 1}, {"OK", true, 1},       {"NOKIA", true, 1},
      {"error", false, 1},         {"error OK", true, 1}, {"\r\nERROR\r\n", false, 5001},
      {"ok", false, 5001},         {"+CME", false, 5001}, {"\xFF\x80garbage", false, 5001},
  };
  for (const auto& row : table) {
    plug(5, phoneThatSays({{"AT\r\n", row.answer}}));
    port.reads = 0;
    EXPECT_EQ(probe.OpenCOMPort(5), row.expected) << row.answer;
    EXPECT_EQ(port.reads, row.reads) << row.answer;
  }
}

TEST_F(OpenCOMPort, TheAnswerMayComeOneCharacterAtATime) {
  plug(5, phoneOf("Nokia"));
  port.lines[5].piece = 1;
  EXPECT_TRUE(probe.OpenCOMPort(5));
  EXPECT_EQ(port.reads, 7) << "AT CR CR LF O K";
  EXPECT_EQ(port.lines[5].arrived, "\r\n") << "what follows is not read";
}

TEST_F(OpenCOMPort, AnErrorOfThePortIsFalse) {
  EXPECT_FALSE(probe.OpenCOMPort(5)) << "there is no such port";
  plug(5, phoneOf("Nokia"));
  port.lines[5].openError = RuntimeError(8005, "Port already open");
  EXPECT_FALSE(probe.OpenCOMPort(5));
  EXPECT_EQ(port.number, 0);
  EXPECT_FALSE(probe.OpenCOMPort(-1));
}

TEST_F(OpenCOMPort, APortThatVanishesBeforeTheGreetingIsFalse) {
  plug(5, [&](std::string_view) -> std::string { throw RuntimeError(8020, "Error writing comm device"); });
  EXPECT_FALSE(probe.OpenCOMPort(5));
}

TEST_F(OpenCOMPort, APortThatVanishesBehindTheGreetingIsFalse) {
  plug(5, {});
  loop.onYield = [&] {
    if (port.reads == 100) port.unplug(5);
  };
  EXPECT_FALSE(probe.OpenCOMPort(5));
  EXPECT_EQ(port.reads, 101);
}

TEST_F(ValidateDevice, ProbesPorts3To16InOrder) {
  for (const int number : {1, 2, 17, 18}) plug(number, phoneOf("Nokia"));
  Lines expected;
  for (int number = 3; number <= 16; ++number) expected.push_back("CanOpen \\\\.\\COM" + std::to_string(number));
  EXPECT_FALSE(validate("Nokia 6230"));
  EXPECT_EQ(journal.take(), expected);
}

TEST_F(ValidateDevice, AsksTheMakerAndClosesThePort) {
  plug(5, phoneOf("Nokia"));
  EXPECT_TRUE(validate("Nokia 6230"));
  EXPECT_EQ(journal.take(),
            (Lines{"CanOpen \\\\.\\COM3", "CanOpen \\\\.\\COM4", "CanOpen \\\\.\\COM5", "Yield", "Open 5 115200,N,8,1",
                   "Write AT\r\n", "Yield", "Write AT+cgmi\r\n", "Yield", "Close 5"}));
  EXPECT_EQ(probe.brand(), "nokia");
}

TEST_F(ValidateDevice, EndsAtTheFirstPhoneThatFits) {
  plug(4, phoneOf("Acme Ltd"));
  plug(5, phoneOf("Acme Ltd"));
  plug(3, phoneOf("Samsung"));
  EXPECT_TRUE(validate("Samsung D500"));
  EXPECT_EQ(said(), (Lines{"Open 3 115200,N,8,1", "Write AT\r\n", "Write AT+cgmi\r\n", "Close 3"}));
}

TEST_F(ValidateDevice, GoesOnBehindAPhoneThatDoesNotFitWithItsPortClosed) {
  plug(4, phoneOf("1"));
  plug(16, phoneOf("2"));
  EXPECT_FALSE(validate("Nokia 6230 X"));
  const Lines lines = journal.take();
  const Lines between = {"Close 4", "CanOpen \\\\.\\COM5"};
  EXPECT_NE(std::search(lines.begin(), lines.end(), between.begin(), between.end()), lines.end());
  EXPECT_EQ(talk(lines), (Lines{"Open 4 115200,N,8,1", "Write AT\r\n", "Write AT+cgmi\r\n", "Close 4",
                                "Open 16 115200,N,8,1", "Write AT\r\n", "Write AT+cgmi\r\n", "Close 16"}));
}

TEST_F(ValidateDevice, EveryMakersPhone) {
  const struct {
    const char *reply, *device, *brand;
    bool expected;
  } table[] = {
      {"AT+cgmi\r\r\nSony Ericsson\r\n\r\nOK\r\n", "K700", "ericsson", false},
      {"AT+cgmi\r\r\nNokia\r\n\r\nOK\r\n", "Nokia 6230", "nokia", true},
      {"\r\nSAMSUNG ELECTRONICS CO.\r\n\r\nOK\r\n", "SAMSUNG D500", "samsung", true},
      {"\r\nSIEMENS\r\n\r\nOK\r\n", "siemens s65", "siemens", true},
      {"\r\nSIEMENS\r\n\r\nOK\r\n", "Nokia 6230", "siemens", false},
      {"Acme Ltd\r\nOK\r\n", "Nokia 6230", "acmeltd", false},
      {"AT+cgmi\r\r\nOK\r\n", "Nokia 6230", "ok", true},
      {"NOKIA\r\n\r\nOK\r\n", "Nokia 6230", "ok", true},
      {"error", "Nokia 6230", "error", false},
      {"+CME ERROR: 4\r\nerror", "Nokia 6230", "error", false},
      {"123\r\nOKOK12\r\n", "Nokia 6230", "okok", false},
      {"OK\r\n123\r\n", "Nokia 6230", "", false},
      {"sony\r\nOK\r\n", "Nokia 6230", "", false},
  };
  for (const auto& row : table) {
    plug(5, phoneThatSays({{"AT\r\n", "OK"}, {"AT+cgmi\r\n", row.reply}}));
    EXPECT_EQ(validate(row.device), row.expected) << row.reply;
    EXPECT_EQ(probe.brand(), row.brand) << row.reply;
    EXPECT_EQ(port.number, 0);
  }
}

TEST_F(ValidateDevice, WhatArrivesBehindTheGreetingsOkIsReadWithTheMaker) {
  plug(5, phoneThatSays({{"AT\r\n", "OKSiemens\r\n"}, {"AT+cgmi\r\n", "Nokia\r\nOK\r\n"}}));
  port.lines[5].piece = 2;
  EXPECT_TRUE(validate("Siemens S65"));
  EXPECT_EQ(probe.brand(), "siemens");
}

TEST_F(ValidateDevice, ASecondOkOfTheGreetingEndsTheWaitForTheMaker) {
  plug(5, phoneThatSays({{"AT\r\n", "OKOK\r\n"}, {"AT+cgmi\r\n", "Nokia\r\nOK\r\n"}}));
  port.lines[5].piece = 2;
  EXPECT_FALSE(validate("Samsung"));
  EXPECT_EQ(probe.brand(), "ok");
}

TEST_F(ValidateDevice, WaitsForTheMakerWithoutLimit) {
  plug(5, phoneThatSays({{"AT\r\n", "OK"}, {"AT+cgmi\r\n", "\r\nERROR\r\n"}}));
  loop.onYield = [&] {
    if (port.reads == 20'000) port.lines[5].arrived = "\r\nNokia\r\nOK\r\n";
  };
  EXPECT_TRUE(validate("Nokia 6230")) << "ERROR ends no answer";
  EXPECT_EQ(port.reads, 20'001);
}

TEST_F(ValidateDevice, TheMakerMayComeOneCharacterAtATime) {
  plug(5, phoneOf("Nokia"));
  port.lines[5].piece = 1;
  EXPECT_TRUE(validate("Nokia 6230"));
}

TEST_F(ValidateDevice, TheFirstPhonesLinesAreLookedAtFirstAgain) {
  plug(4, phoneOf("Siemens"));
  plug(6, phoneOf("Nokia"));
  EXPECT_FALSE(validate("Nokia 6230"));
  EXPECT_EQ(probe.brand(), "siemens");
}

TEST_F(ValidateDevice, ASecondPhonesAnswerCountsAsEndedAtTheFirstPoll) {
  plug(4, phoneOf("1"));
  plug(6, phoneThatSays({{"AT\r\n", "OK"}}));  // answers no second command
  port.reads = 0;
  EXPECT_FALSE(validate("Samsung"));
  EXPECT_EQ(port.reads, 4) << "two on each port";
  EXPECT_EQ(probe.brand(), "ok");
}

TEST_F(ValidateDevice, ASecondPhoneIsFoundBehindOneWithoutAName) {
  plug(4, phoneOf("1"));
  plug(6, phoneOf("Samsung"));
  EXPECT_TRUE(validate("Samsung D500"));
  EXPECT_EQ(said().back(), "Close 6");
}

TEST_F(ValidateDevice, EveryCallBeginsWithAnEmptyReply) {
  plug(4, phoneOf("Siemens"));
  EXPECT_FALSE(validate("Nokia 6230"));
  port.lines.clear();
  plug(6, phoneOf("Nokia"));
  EXPECT_TRUE(validate("Nokia 6230"));
}

TEST_F(ValidateDevice, TheBrandIsOfTheLastPhoneAskedAndStays) {
  plug(5, phoneOf("Nokia"));
  validate("Nokia 6230");
  port.lines.clear();
  EXPECT_FALSE(validate("Nokia 6230"));
  EXPECT_EQ(probe.brand(), "nokia") << "nobody was asked";
  plug(5, phoneOf("12"));
  plug(6, {});
  EXPECT_FALSE(validate("Samsung"));
  EXPECT_EQ(probe.brand(), "ok") << "a silent phone is not asked";
}

TEST_F(ValidateDevice, ABusyPortIsPassedOver) {
  plug(4, phoneOf("Samsung"));
  port.lines[4].available = false;
  plug(5, phoneOf("Samsung"));
  port.lines[5].openError = RuntimeError(8005, "Port already open");
  plug(6, phoneOf("Nokia"));
  EXPECT_TRUE(validate("Nokia 6230"));
  EXPECT_EQ(said(),
            (Lines{"Open 5 115200,N,8,1", "Open 6 115200,N,8,1", "Write AT\r\n", "Write AT+cgmi\r\n", "Close 6"}));
}

TEST_F(ValidateDevice, ASilentPortStaysOpenUntilTheNextOneOrTheEnd) {
  plug(4, {});
  plug(9, {});
  EXPECT_FALSE(validate("Nokia 6230"));
  Lines lines = journal.take();
  std::erase(lines, "Yield");
  const Lines expected = {"CanOpen \\\\.\\COM9", "Close 4", "Open 9 115200,N,8,1"};
  EXPECT_NE(std::search(lines.begin(), lines.end(), expected.begin(), expected.end()), lines.end());
  EXPECT_EQ(lines.back(), "Close 9");
}

TEST_F(ValidateDevice, AVanishedPortBehindTheGreetingIsARunTimeErrorAndClosed) {
  plug(5, phoneThatSays({{"AT\r\n", "OK"}}));
  loop.onYield = [&] {
    if (port.reads != 1000) return;
    port.unplug(5);
    plug(5, phoneOf("Nokia"));  // in again at once: a new opening would be needed
  };
  EXPECT_THROW(validate("Nokia 6230"), RuntimeError);
  EXPECT_EQ(said().back(), "Close 5");
  EXPECT_EQ(port.number, 0);
}

TEST_F(ValidateDevice, APortThatTakesNoSecondCommandIsARunTimeErrorAndClosed) {
  plug(5, [](std::string_view written) -> std::string {
    if (written == "AT\r\n") return "OK";
    throw RuntimeError(8020, "Error writing comm device");
  });
  EXPECT_THROW(validate("Nokia 6230"), RuntimeError);
  EXPECT_EQ(said().back(), "Close 5");
}

TEST_F(ValidateDevice, APortThatVanishesDuringTheGreetingIsPassedOver) {
  plug(4, {});
  plug(5, phoneOf("Nokia"));
  loop.onYield = [&] {
    if (port.reads == 10) port.unplug(4);
  };
  EXPECT_TRUE(validate("Nokia 6230"));
}

TEST_F(ValidateDevice, ThePortIsClosedWhenTheProgramEndsInAnyPoll) {
  for (int yields = 1; yields <= 4; ++yields) {
    plug(5, phoneThatSays({{"AT\r\n", "OK"}}));
    int left = yields;
    loop.ended = false;
    loop.onYield = [&] { loop.ended = --left == 0; };
    EXPECT_THROW(validate("Nokia 6230"), ProgramEnded) << yields;
    EXPECT_EQ(port.number, 0) << yields;
  }
}

TEST_F(ValidateDevice, APortLeftOpenByAnEarlierGreetingIsClosed) {
  plug(20, phoneOf("Nokia"));
  probe.OpenCOMPort(20);
  EXPECT_FALSE(validate("Nokia 6230"));
  EXPECT_EQ(said().back(), "Close 20");
}

}  // namespace
}  // namespace pelvaro::devices
