// A second probe that runs from inside a yield of the first one.
#include <gtest/gtest.h>

#include <algorithm>

#include "devices/probe.h"
#include "platform/fake/fake_event_loop.h"
#include "platform/fake/fake_serial_port.h"

namespace pelvaro::devices {
namespace {

using fake::Lines;
using fake::phoneThatSays;

const std::vector<std::string> kKeys = {"Nokia 6230 USB Modem", "Samsung D500 USB Modem"};

struct SecondProbe : testing::Test {
  fake::Journal journal;
  fake::FakeSerialPort port{journal};
  fake::FakeEventLoop loop{journal};
  Probe probe{port, loop};

  SecondProbe() {
    port.lines[5].phone = phoneThatSays({{"AT\r\n", "AT\r\r\nOK\r\n"}, {"AT+cgmi\r\n", "\r\nNokia\r\n\r\nOK\r\n"}});
  }

  // Runs something once, in the yield that comes after so many others.
  void inYield(int number, std::function<void()> event) {
    loop.onYield = [this, left = number, event = std::move(event)]() mutable {
      if (--left != 0) return;
      const auto once = std::move(event);
      loop.onYield = nullptr;
      once();
    };
  }
  bool validate(const std::string& device = "Nokia 6230") { return probe.validateDevice(device, kKeys); }
  Lines said() {
    Lines lines = journal.take();
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("CanOpen") || line == "Yield"; });
    return lines;
  }
};

TEST_F(SecondProbe, BeforeTheOpeningDisturbsNothing) {
  bool second = false;
  inYield(1, [&] { second = validate(); });
  EXPECT_TRUE(validate());
  EXPECT_TRUE(second);
  EXPECT_EQ(port.number, 0);
}

TEST_F(SecondProbe, DuringTheGreetingMakesThatOneFalseAndTheFirstGoesOnWithTheNextPort) {
  port.lines[9].phone = port.lines[5].phone;
  bool second = false;
  inYield(2, [&] { second = validate(); });
  EXPECT_TRUE(validate());
  EXPECT_TRUE(second);
  EXPECT_EQ(said(), (Lines{"Open 5 115200,N,8,1", "Write AT\r\n", "Close 5", "Open 5 115200,N,8,1", "Write AT\r\n",
                           "Write AT+cgmi\r\n", "Close 5", "Open 9 115200,N,8,1", "Write AT\r\n", "Write AT+cgmi\r\n",
                           "Close 9"}));
}

TEST_F(SecondProbe, DuringTheWaitForTheMakerEndsTheFirstWithFalse) {
  port.lines[9].phone = port.lines[5].phone;
  bool second = false;
  inYield(3, [&] { second = validate(); });
  EXPECT_FALSE(validate()) << "no other port is tried";
  EXPECT_TRUE(second);
  EXPECT_EQ(port.number, 0);
  const Lines lines = said();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Close 5"), 2) << "once by the second, once for it";
  EXPECT_EQ(lines.back(), "Close 5");
}

TEST_F(SecondProbe, ThatFindsNoPortStillEndsTheFirstWithFalse) {
  inYield(3, [&] {
    const auto cable = std::exchange(port.lines, {});
    EXPECT_FALSE(validate());
    port.lines = cable;
  });
  const int readsBefore = port.reads;
  EXPECT_FALSE(validate());
  EXPECT_EQ(port.reads, readsBefore + 1) << "the greeting's";
}

TEST_F(SecondProbe, ThatLeavesItsPortOpenIsNotReadOrClosedByTheFirst) {
  port.lines[9].phone = port.lines[5].phone;
  inYield(3, [&] { EXPECT_TRUE(probe.OpenCOMPort(9)); });
  EXPECT_FALSE(validate());
  EXPECT_EQ(port.number, 9);
  EXPECT_EQ(port.reads, 2) << "one of each greeting";
}

TEST_F(SecondProbe, OfTheSamePortIsNotReadByTheFirst) {
  inYield(3, [&] { EXPECT_TRUE(probe.OpenCOMPort(5)); });
  EXPECT_FALSE(validate());
  EXPECT_EQ(port.number, 5);
  EXPECT_EQ(port.lines[5].arrived, "");
  EXPECT_EQ(port.reads, 2);
}

TEST_F(SecondProbe, ThatOpensAPortBeforeTheFirstOneDoesMakesItFalse) {
  port.lines[9].phone = port.lines[5].phone;
  inYield(1, [&] { EXPECT_TRUE(probe.OpenCOMPort(9)); });
  EXPECT_FALSE(probe.OpenCOMPort(5));
  EXPECT_EQ(port.number, 9);
}

TEST_F(SecondProbe, KeepsItsBrand) {
  inYield(3, [&] { validate(); });
  EXPECT_FALSE(validate());
  EXPECT_EQ(probe.brand(), "nokia");
}

TEST_F(SecondProbe, ThatEndsTheProgramEndsBoth) {
  inYield(3, [&] {
    inYield(3, [&] { loop.ended = true; });
    EXPECT_THROW(validate(), ProgramEnded);
  });
  EXPECT_THROW(validate(), ProgramEnded);
  EXPECT_EQ(port.number, 0);
}

TEST_F(SecondProbe, AndAThirdOne) {
  bool third = false;
  inYield(3, [&] {
    inYield(3, [&] { third = validate(); });
    EXPECT_FALSE(validate());
  });
  EXPECT_FALSE(validate());
  EXPECT_TRUE(third);
  EXPECT_EQ(port.number, 0);
}

TEST_F(SecondProbe, CancellingEndsTheCheckAtAnyYieldAndTriesNoOtherPort) {
  port.lines[9].phone = port.lines[5].phone;
  for (int number = 1; number <= 3; ++number) {
    journal.take();
    inYield(number, [&] { probe.cancel(); });
    EXPECT_FALSE(validate()) << number;
    EXPECT_EQ(port.number, 0) << number;
    for (const std::string& line : said()) EXPECT_FALSE(line.starts_with("Open 9")) << number;
  }
  EXPECT_TRUE(validate()) << "the next check runs as ever";
}

TEST_F(SecondProbe, CancellingEndsTheOuterCheckTooWhenAnInnerOneWasUnderWay) {
  port.lines[5].phone = phoneThatSays({{"AT\r\n", "OK\r\n"}});  // never says who made it
  bool second = true;
  inYield(3, [&] {
    inYield(4, [&] { probe.cancel(); });
    second = validate();
  });
  EXPECT_FALSE(validate());
  EXPECT_FALSE(second);
  EXPECT_EQ(port.number, 0);
}

}  // namespace
}  // namespace pelvaro::devices
