#include "exchange.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <random>

namespace pelvaro::line {
namespace {

namespace fs = std::filesystem;

class ExchangeTest : public testing::Test {
 protected:
  ExchangeTest() {
    fs::create_directories(folder_ / "links");
    std::ofstream(folder_ / "nokia.phone") << "AT+CGMI => Nokia | OK\n";
    std::ofstream(folder_ / "slow.phone") << "echo off\npace 5\n";
    std::ofstream(folder_ / "noisy.phone") << "echo off\nAT => %00%FF%1B\n";
    std::ofstream(folder_ / "broken.phone") << "what\n";
    exchange_.emplace(folder_ / "links", folder_, [this](const std::string& text) { printed_.push_back(text); });
  }
  ~ExchangeTest() override {
    exchange_.reset();
    EXPECT_TRUE(fs::is_empty(folder_ / "links")) << "the links go with the exchange";
    fs::remove_all(folder_);
  }

  // Opens the port as a program does.
  int open(const std::string& link = "com5") {
    const int port = ::open((folder_ / "links" / link).c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GE(port, 0) << link;
    return port;
  }
  static std::string read(int port) {
    char block[1024];
    const ssize_t count = ::read(port, block, sizeof block);
    return count > 0 ? std::string(block, static_cast<std::size_t>(count)) : std::string();
  }
  // Writes to the open port and gives what the phone says to it at once.
  std::string talkOn(int port, const std::string& text) {
    EXPECT_EQ(::write(port, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    exchange_->serve(now_);
    return read(port);
  }
  std::string talk(const std::string& text, const std::string& link = "com5") {
    const int port = open(link);
    std::string said = talkOn(port, text);
    ::close(port);
    return said;
  }

  bool does(const std::string& command) {
    EXPECT_TRUE(exchange_->command(command));
    return exchange_->understood();
  }

  fs::path folder_ = fs::path(testing::TempDir()) / ("exchange_" + std::to_string(std::random_device()()));
  std::uint64_t now_ = 1000;
  std::vector<std::string> printed_;
  std::optional<Exchange> exchange_;
};

TEST_F(ExchangeTest, APluggedPhoneAnswersOnItsPort) {
  ASSERT_TRUE(does("plug COM5 nokia"));
  EXPECT_EQ(talk("AT+CGMI\r\n"), "AT+CGMI\r\r\nNokia\r\n\r\nOK\r\n");
  EXPECT_EQ(exchange_->descriptors().size(), 1u);
}

TEST_F(ExchangeTest, APhoneAnswersAgainAfterItsPortWasClosed) {
  ASSERT_TRUE(does("plug com5 nokia"));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(talk("AT\r"), "AT\r\r\nOK\r\n");
}

TEST_F(ExchangeTest, WhatNobodyReadIsForgottenWhenTheLineIsDropped) {
  ASSERT_TRUE(does("plug COM5 nokia"));
  ASSERT_TRUE(does("say COM5 LEFT OVER"));
  EXPECT_EQ(talk("\x04"
                 "AT\r"),
            "AT\r\r\nOK\r\n");
}

TEST_F(ExchangeTest, APulledPhonesPortIsGone) {
  ASSERT_TRUE(does("plug COM5 nokia"));
  ASSERT_TRUE(does("unplug COM5"));
  EXPECT_FALSE(fs::exists(fs::symlink_status(folder_ / "links" / "com5")));
  EXPECT_FALSE(does("unplug COM5"));
}

TEST_F(ExchangeTest, EveryPortCanBePluggedUnpluggedAndPluggedAgain) {
  for (const int times : {1, 2}) {
    for (int number = 3; number <= 16; ++number) {
      const std::string port = std::to_string(number);
      ASSERT_TRUE(does("plug COM" + port + " nokia"));
      EXPECT_EQ(talk("AT\r", "com" + port), "AT\r\r\nOK\r\n") << port << ", plugged " << times;
    }
    EXPECT_EQ(exchange_->descriptors().size(), 14u);
    for (int number = 3; number <= 16; ++number) {
      ASSERT_TRUE(does("unplug COM" + std::to_string(number)));
      EXPECT_EQ(exchange_->descriptors().size(), static_cast<std::size_t>(16 - number));
    }
    EXPECT_TRUE(fs::is_empty(folder_ / "links"));
  }
}

TEST_F(ExchangeTest, APortThatIsOpenWhenItsPhoneIsPulledIsDeadAndHarmsNoOther) {
  ASSERT_TRUE(does("plug COM5 nokia"));
  ASSERT_TRUE(does("plug COM12 nokia"));
  const int pulled = open();
  EXPECT_EQ(talkOn(pulled, "AT\r"), "AT\r\r\nOK\r\n");
  EXPECT_EQ(::write(pulled, "AT", 2), 2) << "half a command";
  ASSERT_TRUE(does("unplug COM5"));
  EXPECT_EQ(::write(pulled, "\r", 1), -1);
  EXPECT_EQ(read(pulled), "");
  EXPECT_EQ(talk("AT\r", "com12"), "AT\r\r\nOK\r\n");

  ASSERT_TRUE(does("plug COM5 nokia"));
  EXPECT_EQ(::write(pulled, "AT\r", 3), -1) << "the phone is on another cable now";
  EXPECT_EQ(talk("AT\r"), "AT\r\r\nOK\r\n");
  ::close(pulled);
  EXPECT_EQ(talk("AT\r"), "AT\r\r\nOK\r\n");
}

TEST_F(ExchangeTest, ASlowPhoneSaysAByteInItsTime) {
  ASSERT_TRUE(does("plug COM5 slow"));
  const int port = open();
  std::string heard = talkOn(port, "AT\r");
  EXPECT_EQ(heard, "\r");
  EXPECT_EQ(exchange_->serve(now_ + 4), 5);
  EXPECT_EQ(read(port), "") << "it is not yet time";
  int wait = 5;
  for (int i = 0; i < 100 && wait == 5; ++i) {
    wait = exchange_->serve(now_ += 5);
    const std::string byte = read(port);
    EXPECT_EQ(byte.size(), 1u);
    heard += byte;
  }
  EXPECT_EQ(heard, "\r\nOK\r\n");
  EXPECT_EQ(wait, 250) << "it has said everything";

  EXPECT_EQ(talkOn(port, "AT\r"), "") << "the last byte was a moment ago";
  EXPECT_EQ(talkOn(port, "\x04"), "");
  EXPECT_EQ(exchange_->serve(now_ += 5), 250) << "a dropped line silences it";
  EXPECT_EQ(read(port), "");
  ::close(port);
}

TEST_F(ExchangeTest, OnlyPlainCharactersArePrinted) {
  ASSERT_TRUE(does("plug COM5 noisy"));
  EXPECT_EQ(talk("AT\r").size(), 7u);
  EXPECT_EQ(printed_.back(), "COM5 > ???");
}

TEST_F(ExchangeTest, CommandsChangeAPhone) {
  ASSERT_TRUE(does("plug COM5 nokia"));
  EXPECT_TRUE(does("answer COM5 busy"));
  EXPECT_EQ(talk("ATD1\r"), "ATD1\r\r\nBUSY\r\n");
  EXPECT_TRUE(does("answer COM5 connect"));
  EXPECT_TRUE(does("login COM5 anna secret"));
  talk("ATD1\r");
  talk("anna\r");
  EXPECT_EQ(talk("secret\r"), "\r\nwelcome\r\n");
  EXPECT_TRUE(does("status"));
  EXPECT_NE(printed_.back().find("online 1"), std::string::npos) << printed_.back();
  for (const std::string& text : printed_) EXPECT_EQ(text.find("secret"), std::string::npos) << text;
}

TEST_F(ExchangeTest, AnOccupiedPortIsNoPhone) {
  EXPECT_TRUE(does("occupy COM5"));
  EXPECT_TRUE(fs::is_directory(folder_ / "links" / "com5"));
  EXPECT_FALSE(does("say COM5 RING"));
  EXPECT_TRUE(does("plug COM5 nokia"));
  EXPECT_EQ(talk("AT\r"), "AT\r\r\nOK\r\n");
}

TEST_F(ExchangeTest, WhatIsNotUnderstoodIsRefusedAndNothingElse) {
  for (const char* line :
       {"plug", "plug COM2 nokia", "plug COM17 nokia", "plug COM5", "plug COM5 acme", "plug COM5 broken",
        "plug COM5 ../nokia", "plug COM5x nokia", "answer COM5 busy", "dance COM5", "unplug COM5"}) {
    EXPECT_FALSE(does(line)) << line;
    EXPECT_EQ(printed_.back().find("refused: "), 0u) << printed_.back();
  }
  ASSERT_TRUE(does("plug COM5 nokia"));
  EXPECT_FALSE(does("answer COM5 perhaps"));
  EXPECT_TRUE(does(""));
}

TEST_F(ExchangeTest, QuitEndsIt) { EXPECT_FALSE(exchange_->command("quit")); }

}  // namespace
}  // namespace pelvaro::line
